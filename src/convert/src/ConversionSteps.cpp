// The steps both polyline conversions take, on either kind of result.
#include "ConversionSteps.h"

#include "oddata/OdAccess.h"
#include "oddata/Port.h"

namespace zarvel {

platform::EntityGeometry& geometry() {
  return port().geometry();
}

ObjectId approximate(ObjectId curve, int precision) {
  const ObjectId spline = geometry().spline(curve);
  if (spline.isNull()) return ObjectId();
  const ObjectId result = geometry().toPolyline(spline, precision);
  geometry().release(spline);
  return result;
}

ObjectId appendAtOnce(ObjectId curve) {
  if (curve.isNull()) return ObjectId();
  const ObjectId appended = geometry().appendToModelSpace(curve);
  if (appended.isNull()) geometry().release(curve);
  return appended;
}

std::vector<Point3d> takeVertices(ObjectId curve, bool inModelSpace) {
  std::vector<Point3d> points = geometry().vertices(curve);
  if (inModelSpace) {
    // The entity stood in model space for a moment only, within this command;
    // left behind, it would still carry no records, and nothing counts it.
    platform::ignoreStatus(port().drawing().eraseEntity(curve));
  } else {
    geometry().release(curve);
  }
  return points;
}

void setClosed(ObjectId polyline, bool closed) {
  platform::ignoreStatus(geometry().setClosed(polyline, closed));
}

ObjectId finishConversion(const Built& built, ObjectId source) {
  ObjectId id = built.id;
  if (!built.inModelSpace) {
    id = geometry().appendToModelSpace(built.id);
    if (id.isNull()) {
      geometry().release(built.id);
      return ObjectId();
    }
  }
  // The source opened a moment ago and the polyline is new: what fails to
  // copy leaves the polyline with the host's defaults, as a property the host
  // does not keep would.
  platform::ignoreStatus(port().drawing().copyEntityProperties(id, source));
  copyClassification(id, source);
  copyRecords(id, source, getODContainer(), false);
  return id;
}

}  // namespace zarvel
