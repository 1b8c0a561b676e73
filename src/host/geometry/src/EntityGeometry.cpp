// Picking and crossing windows, on top of the geometry library: curves by
// their own shape, everything else by its extents.
#include "host/geometry/EntityGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/geometry/Curves.h"
#include "host/geometry/Extents.h"
#include "host/geometry/Intersections.h"

namespace host {
namespace {

double distanceToBox(const platform::Extents& box, const Point3d& p) {
  const double dx = std::max({box.min.x - p.x, 0.0, p.x - box.max.x});
  const double dy = std::max({box.min.y - p.y, 0.0, p.y - box.max.y});
  return std::hypot(dx, dy);
}

bool overlapsXY(const platform::Extents& a, double x0, double y0, double x1, double y1) {
  return a.min.x <= x1 && a.max.x >= x0 && a.min.y <= y1 && a.max.y >= y0;
}

}  // namespace

double distanceXY(const Database& db, const Entity& entity, const Point3d& point) {
  if (entity.kind() == EntityKind::Point) {
    const Point3d& q = static_cast<const PointEntity&>(entity).position;
    return std::hypot(point.x - q.x, point.y - q.y);
  }
  if (geometry::isCurve(entity)) {
    // Distance in XY: where the pick meets the curve along the view direction.
    if (auto nearest = geometry::nearestPointInPlan(entity, point)) return nearest->distance;
  }
  const platform::Extents box = geometry::extentsOf(db, entity);
  if (box.isEmpty()) return std::numeric_limits<double>::infinity();
  return distanceToBox(box, point);
}

bool touchesBoxXY(const Database& db, const Entity& entity, const Point3d& corner1,
                  const Point3d& corner2) {
  const double x0 = std::min(corner1.x, corner2.x);
  const double x1 = std::max(corner1.x, corner2.x);
  const double y0 = std::min(corner1.y, corner2.y);
  const double y1 = std::max(corner1.y, corner2.y);
  const platform::Extents box = geometry::extentsOf(db, entity);
  if (box.isEmpty() || !overlapsXY(box, x0, y0, x1, y1)) return false;
  // Wholly inside, or (for what is no curve) its box reaching in.
  if (box.min.x >= x0 && box.max.x <= x1 && box.min.y >= y0 && box.max.y <= y1) return true;
  if (!geometry::isCurve(entity)) return true;
  // A curve whose ends or any point lie inside, or that crosses the window's edges.
  if (auto start = geometry::startPoint(entity)) {
    if (start->x >= x0 && start->x <= x1 && start->y >= y0 && start->y <= y1) return true;
  }
  LwPolylineEntity window;
  window.vertices = {{x0, y0, 0.0}, {x1, y0, 0.0}, {x1, y1, 0.0}, {x0, y1, 0.0}};
  window.closed = true;
  return !geometry::intersectXY(db, entity, window).empty();
}

}  // namespace host
