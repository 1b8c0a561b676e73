// Measures of entities by exact class, through the port's geometry.
#include "values/Measures.h"

#include <cmath>
#include <optional>

#include "oddata/Port.h"

namespace zarvel {
namespace {

using platform::EntityClass;
using platform::EntityGeometry;
using platform::ObjectId;
using platform::Point3d;

// How near its ends must meet for an outline to have an area.
constexpr double kClosingTolerance = 0.0001;

double pathLength(const PointList3d& points) {
  double length = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) length += distance3d(points[i - 1], points[i]);
  return length;
}

// A polyline that is closed, or whose ends meet within the tolerance; a
// multiline of three points or more whose ends meet. No other class.
bool isClosedCurve(EntityGeometry& geometry, ObjectId entity, EntityClass kind, double tolerance) {
  if (kind == EntityClass::LwPolyline || kind == EntityClass::Polyline3d) {
    if (geometry.isClosed(entity)) return true;
    const std::optional<Point3d> start = geometry.startPoint(entity);
    const std::optional<Point3d> end = geometry.endPoint(entity);
    return start && end && distance3d(*start, *end) <= tolerance;
  }
  if (kind == EntityClass::Mline) {
    const PointList3d points = vertexList(entity);
    return points.size() >= 3 && distance3d(points.front(), points.back()) <= tolerance;
  }
  return false;
}

// The vertices' chords, and the closing one of a closed polyline.
double chordLength(EntityGeometry& geometry, ObjectId polyline) {
  PointList3d points = geometry.vertices(polyline);
  if (geometry.isClosed(polyline) && !points.empty()) points.push_back(points.front());
  return pathLength(points);
}

Measures outlineMeasures(EntityGeometry& geometry, ObjectId entity, EntityClass kind) {
  PointList3d points = vertexList(entity);
  Measures m;
  if (isClosedCurve(geometry, entity, kind, kClosingTolerance)) m.area = platform::planArea(points);
  if (kind == EntityClass::Polyline3d && geometry.isClosed(entity) && !points.empty()) {
    points.push_back(points.front());
  }
  m.length = pathLength(points);
  return m;
}

}  // namespace


Measures measuresOf(ObjectId entity) {
  EntityGeometry& geometry = port().geometry();
  const EntityClass kind = geometry.entityClass(entity);
  Measures m;
  if (kind == EntityClass::Line) {
    m.length = pathLength(geometry.vertices(entity));
  } else if (kind == EntityClass::LwPolyline) {
    m.length = chordLength(geometry, entity);
    m.area = geometry.area(entity).value_or(0.0);
  } else if (kind == EntityClass::Polyline3d || kind == EntityClass::Mline) {
    m = outlineMeasures(geometry, entity, kind);
  } else if (kind == EntityClass::Solid3d) {
    m.volume = geometry.volume(entity).value_or(0.0);
  }
  return m;
}

}  // namespace zarvel
