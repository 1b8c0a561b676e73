// Curves to 3D polylines, in the direction of their source. A precision below
// 1 turns the approximation off: the classes that need it don't convert.
#include "ConversionSteps.h"
#include "convert/PolylineConversion.h"
#include "oddata/Port.h"

namespace zarvel {
namespace {

using platform::EntityClass;

void appendVertices(ObjectId polyline, const std::vector<Point3d>& points) {
  for (const Point3d& p : points) {
    // The polyline is the module's own and a 3D one: a vertex always goes on.
    platform::ignoreStatus(geometry().appendVertex(polyline, p));
  }
}

// The result of the approximation, or of a spline's own toPolyline, as the
// new polyline: one in a plane parallel to XY gives its points to a 3D
// polyline of the module's, a 3D one is the polyline itself.
Built asPolyline3d(ObjectId result, bool inModelSpace) {
  if (result.isNull()) return {};
  if (geometry().entityClass(result) != EntityClass::LwPolyline) return {result, inModelSpace};
  const ObjectId polyline = geometry().newPolyline3d();
  const std::vector<Point3d> points = takeVertices(result, inModelSpace);
  if (polyline.isNull()) return {};
  appendVertices(polyline, points);
  return {polyline};
}

Built fromVertices(ObjectId source) {
  const ObjectId polyline = geometry().newPolyline3d();
  if (polyline.isNull()) return {};
  appendVertices(polyline, geometry().vertices(source));
  return {polyline};
}

Built build(ObjectId source, EntityClass kind, int precision) {
  switch (kind) {
    case EntityClass::Line:
      return fromVertices(source);
    case EntityClass::LwPolyline: {
      const Built built = fromVertices(source);
      if (!built.empty()) setClosed(built.id, geometry().isClosed(source));
      return built;
    }
    case EntityClass::Arc:
    case EntityClass::Circle:
    case EntityClass::Ellipse: {
      if (precision < 1) return {};
      const Built built = asPolyline3d(approximate(source, precision), false);
      // A partial ellipse closes too.
      if (!built.empty() && kind != EntityClass::Arc) setClosed(built.id, true);
      return built;
    }
    case EntityClass::Spline: {
      if (precision < 1) return {};
      const Built built =
          asPolyline3d(appendAtOnce(geometry().toPolyline(source, precision)), true);
      if (!built.empty()) setClosed(built.id, geometry().isClosed(source));
      return built;
    }
    case EntityClass::Point:
    case EntityClass::Polyline2d:
    case EntityClass::Polyline3d:
    case EntityClass::Mline:
    case EntityClass::Text:
    case EntityClass::MText:
    case EntityClass::BlockReference:
    case EntityClass::Attribute:
    case EntityClass::AttributeDefinition:
    case EntityClass::Solid3d:
    case EntityClass::Region:
    case EntityClass::Hatch:
    case EntityClass::Unknown:
      return {};
  }
  return {};
}

}  // namespace

ObjectId convertTo3dPolyline(ObjectId entity, int precision) {
  // An entity that won't open has the class Unknown, which converts to nothing.
  const Built built = build(entity, geometry().entityClass(entity), precision);
  return built.empty() ? ObjectId() : finishConversion(built, entity);
}

}  // namespace zarvel
