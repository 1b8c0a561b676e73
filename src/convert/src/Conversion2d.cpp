// Curves to lightweight polylines. Each vertex goes in at index 0, in front
// of those before it, so the polyline runs against its source: a reader that
// follows the direction of the data sees the reversal, and it stays.
#include <numeric>

#include "ConversionSteps.h"
#include "convert/PolylineConversion.h"
#include "oddata/Port.h"

namespace zarvel {
namespace {

using platform::EntityClass;

void addVerticesReversed(ObjectId polyline, const std::vector<Point3d>& points) {
  for (const Point3d& p : points) {
    // The polyline is the module's own and lightweight: a vertex always goes in.
    platform::ignoreStatus(geometry().addVertexAt(polyline, 0, {p.x, p.y}));
  }
}

double meanZ(const std::vector<Point3d>& points) {
  if (points.empty()) return 0.0;
  const double sum = std::accumulate(points.begin(), points.end(), 0.0,
                                     [](double s, const Point3d& p) { return s + p.z; });
  return sum / static_cast<double>(points.size());
}

void setElevation(ObjectId polyline, double elevation) {
  // A lightweight polyline the module built or appended itself takes it.
  platform::ignoreStatus(geometry().setElevation(polyline, elevation));
}

// A line's ends or a 3D polyline's vertices, at their mean height (for a
// line, half the sum of its two), closed as a 3D polyline is.
Built fromVertices(ObjectId source, EntityClass kind) {
  const ObjectId polyline = geometry().newPolyline();
  if (polyline.isNull()) return {};
  const std::vector<Point3d> points = geometry().vertices(source);
  addVerticesReversed(polyline, points);
  setElevation(polyline, meanZ(points));
  if (kind == EntityClass::Polyline3d) setClosed(polyline, geometry().isClosed(source));
  return {polyline};
}

// An arc, circle or ellipse through its spline, at the height of its centre;
// a result that leaves the plane gives its X and Y to a polyline of the
// module's, one in the plane becomes the polyline itself.
Built fromConic(ObjectId source, int precision) {
  const ObjectId result = approximate(source, precision);
  if (result.isNull()) return {};
  Built built{result};
  if (geometry().entityClass(result) == EntityClass::Polyline3d) {
    // The empty polyline the vertices go to is made only when it is needed.
    const std::vector<Point3d> points = takeVertices(result, false);
    built.id = geometry().newPolyline();
    if (built.empty()) return {};
    addVerticesReversed(built.id, points);
  }
  setElevation(built.id, geometry().center(source).value_or(Point3d{}).z);
  return built;
}

// A spline's own polyline, closed as the spline is; one that leaves the plane
// gives its points to a polyline at their mean height.
Built fromSpline(ObjectId source, int precision) {
  const ObjectId appended = appendAtOnce(geometry().toPolyline(source, precision));
  if (appended.isNull()) return {};
  Built built{appended, true};
  if (geometry().entityClass(appended) == EntityClass::Polyline3d) {
    const ObjectId polyline = geometry().newPolyline();
    const std::vector<Point3d> points = takeVertices(appended, true);
    if (polyline.isNull()) return {};
    addVerticesReversed(polyline, points);
    setElevation(polyline, meanZ(points));
    built = {polyline, false};
  }
  setClosed(built.id, geometry().isClosed(source));
  return built;
}

}  // namespace

ObjectId convertTo2dPolyline(ObjectId entity, int precision) {
  // An entity that won't open has the class Unknown, which converts to nothing.
  const EntityClass kind = geometry().entityClass(entity);
  Built built;
  switch (kind) {
    case EntityClass::Line:
    case EntityClass::Polyline3d:
      built = fromVertices(entity, kind);
      break;
    case EntityClass::Arc:
    case EntityClass::Circle:
    case EntityClass::Ellipse:
      built = fromConic(entity, precision);
      break;
    case EntityClass::Spline:
      built = fromSpline(entity, precision);
      break;
    case EntityClass::Point:
    case EntityClass::LwPolyline:
    case EntityClass::Polyline2d:
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
      break;
  }
  return built.empty() ? ObjectId() : finishConversion(built, entity);
}

}  // namespace zarvel
