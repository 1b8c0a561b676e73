// Extents, distances and window tests of the entity kinds the command line
// can draw. Bulged polyline segments are treated as true arcs.
#include "geometry/EntityGeometry.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace host {
namespace {

struct Box {
  double x0, y0, x1, y1;
  bool contains(double x, double y) const { return x >= x0 && x <= x1 && y >= y0 && y <= y1; }
};

Box boxOf(const Point3d& a, const Point3d& b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

double distanceToSegment(double px, double py, double ax, double ay, double bx, double by) {
  const double dx = bx - ax;
  const double dy = by - ay;
  const double len2 = dx * dx + dy * dy;
  double t = len2 > 0 ? ((px - ax) * dx + (py - ay) * dy) / len2 : 0.0;
  t = std::clamp(t, 0.0, 1.0);
  return std::hypot(px - (ax + t * dx), py - (ay + t * dy));
}

bool segmentsCross(double ax, double ay, double bx, double by, double cx, double cy, double dx,
                   double dy) {
  auto orient = [](double px, double py, double qx, double qy, double rx, double ry) {
    const double v = (qx - px) * (ry - py) - (qy - py) * (rx - px);
    return (v > 0) - (v < 0);
  };
  const int o1 = orient(ax, ay, bx, by, cx, cy);
  const int o2 = orient(ax, ay, bx, by, dx, dy);
  const int o3 = orient(cx, cy, dx, dy, ax, ay);
  const int o4 = orient(cx, cy, dx, dy, bx, by);
  return o1 != o2 && o3 != o4;
}

bool segmentTouchesBox(double ax, double ay, double bx, double by, const Box& box) {
  if (box.contains(ax, ay) || box.contains(bx, by)) return true;
  const double xs[] = {box.x0, box.x1, box.x1, box.x0};
  const double ys[] = {box.y0, box.y0, box.y1, box.y1};
  for (int i = 0; i < 4; ++i) {
    const int j = (i + 1) % 4;
    if (segmentsCross(ax, ay, bx, by, xs[i], ys[i], xs[j], ys[j])) return true;
  }
  return false;
}

// A polyline as points, its bulged segments divided finely enough for picking
// and window tests.
std::vector<Point3d> polylinePoints(const LwPolylineEntity& pl) {
  std::vector<Point3d> points;
  const std::size_t n = pl.vertices.size();
  if (n == 0) return points;
  const std::size_t segments = pl.closed ? n : n - 1;
  points.push_back({pl.vertices[0].x, pl.vertices[0].y, pl.elevation});
  for (std::size_t i = 0; i < segments; ++i) {
    const LwVertex& a = pl.vertices[i];
    const LwVertex& b = pl.vertices[(i + 1) % n];
    const double chord = std::hypot(b.x - a.x, b.y - a.y);
    if (a.bulge != 0.0 && chord > 0.0) {
      // The bulge is the tangent of a quarter of the included angle; the centre
      // lies off the chord's midpoint by chord * (1 - b^2) / (4b), to the left
      // of the chord's direction.
      const double angle = 4.0 * std::atan(a.bulge);
      const double offset = chord * (1.0 - a.bulge * a.bulge) / (4.0 * a.bulge);
      const double cx = (a.x + b.x) / 2 - (b.y - a.y) / chord * offset;
      const double cy = (a.y + b.y) / 2 + (b.x - a.x) / chord * offset;
      const double radius = std::hypot(a.x - cx, a.y - cy);
      const double start = std::atan2(a.y - cy, a.x - cx);
      const int steps = 32;
      for (int s = 1; s < steps; ++s) {
        const double t = start + angle * s / steps;
        points.push_back({cx + radius * std::cos(t), cy + radius * std::sin(t), pl.elevation});
      }
    }
    points.push_back({b.x, b.y, pl.elevation});
  }
  return points;
}

// The corners of a text's box: baseline from the insertion point, as wide as
// its characters, as high as its height, turned by its rotation.
std::vector<Point3d> textCorners(const TextEntity& entity) {
  const TextData& t = entity.data;
  const double width = 0.6 * t.height * static_cast<double>(std::max<std::size_t>(t.text.size(), 1));
  const double c = std::cos(t.rotation);
  const double s = std::sin(t.rotation);
  std::vector<Point3d> corners;
  for (auto [u, v] : {std::pair{0.0, 0.0}, {width, 0.0}, {width, t.height}, {0.0, t.height}}) {
    corners.push_back({t.position.x + u * c - v * s, t.position.y + u * s + v * c, t.position.z});
  }
  return corners;
}

double distanceToPath(const std::vector<Point3d>& pts, bool closed, const Point3d& p) {
  if (pts.empty()) return std::numeric_limits<double>::infinity();
  double best = std::hypot(p.x - pts[0].x, p.y - pts[0].y);
  const std::size_t n = pts.size();
  const std::size_t segments = closed ? n : n - 1;
  for (std::size_t i = 0; i < segments; ++i) {
    const Point3d& a = pts[i];
    const Point3d& b = pts[(i + 1) % n];
    best = std::min(best, distanceToSegment(p.x, p.y, a.x, a.y, b.x, b.y));
  }
  return best;
}

bool pathTouchesBox(const std::vector<Point3d>& pts, bool closed, const Box& box) {
  if (pts.size() == 1) return box.contains(pts[0].x, pts[0].y);
  const std::size_t n = pts.size();
  const std::size_t segments = closed ? n : n - 1;
  for (std::size_t i = 0; i < segments; ++i) {
    const Point3d& a = pts[i];
    const Point3d& b = pts[(i + 1) % n];
    if (segmentTouchesBox(a.x, a.y, b.x, b.y, box)) return true;
  }
  return false;
}

}  // namespace

platform::Extents entityExtents(const Entity& entity) {
  platform::Extents e;
  switch (entity.kind()) {
    case EntityKind::Point: e.add(static_cast<const PointEntity&>(entity).position); break;
    case EntityKind::Line: {
      const auto& l = static_cast<const LineEntity&>(entity);
      e.add(l.start);
      e.add(l.end);
      break;
    }
    case EntityKind::Circle: {
      const auto& c = static_cast<const CircleEntity&>(entity);
      e.add(Point3d{c.center.x - c.radius, c.center.y - c.radius, c.center.z});
      e.add(Point3d{c.center.x + c.radius, c.center.y + c.radius, c.center.z});
      break;
    }
    case EntityKind::LwPolyline:
      for (const Point3d& p : polylinePoints(static_cast<const LwPolylineEntity&>(entity))) e.add(p);
      break;
    case EntityKind::Text:
      for (const Point3d& p : textCorners(static_cast<const TextEntity&>(entity))) e.add(p);
      break;
    default:
      break;
  }
  return e;
}

double distanceXY(const Entity& entity, const Point3d& p) {
  switch (entity.kind()) {
    case EntityKind::Point: {
      const Point3d& q = static_cast<const PointEntity&>(entity).position;
      return std::hypot(p.x - q.x, p.y - q.y);
    }
    case EntityKind::Line: {
      const auto& l = static_cast<const LineEntity&>(entity);
      return distanceToSegment(p.x, p.y, l.start.x, l.start.y, l.end.x, l.end.y);
    }
    case EntityKind::Circle: {
      const auto& c = static_cast<const CircleEntity&>(entity);
      return std::fabs(std::hypot(p.x - c.center.x, p.y - c.center.y) - c.radius);
    }
    case EntityKind::LwPolyline: {
      const auto& pl = static_cast<const LwPolylineEntity&>(entity);
      return distanceToPath(polylinePoints(pl), pl.closed, p);
    }
    case EntityKind::Text: {
      const auto corners = textCorners(static_cast<const TextEntity&>(entity));
      const platform::Extents box = entityExtents(entity);
      if (p.x >= box.min.x && p.x <= box.max.x && p.y >= box.min.y && p.y <= box.max.y) return 0.0;
      return distanceToPath(corners, true, p);
    }
    default:
      break;
  }
  return std::numeric_limits<double>::infinity();
}

bool touchesBoxXY(const Entity& entity, const Point3d& corner1, const Point3d& corner2) {
  const Box box = boxOf(corner1, corner2);
  switch (entity.kind()) {
    case EntityKind::Point: {
      const Point3d& q = static_cast<const PointEntity&>(entity).position;
      return box.contains(q.x, q.y);
    }
    case EntityKind::Line: {
      const auto& l = static_cast<const LineEntity&>(entity);
      return segmentTouchesBox(l.start.x, l.start.y, l.end.x, l.end.y, box);
    }
    case EntityKind::Circle: {
      const auto& c = static_cast<const CircleEntity&>(entity);
      // The nearest and farthest points of the box from the centre bracket the radius.
      const double nx = std::clamp(c.center.x, box.x0, box.x1);
      const double ny = std::clamp(c.center.y, box.y0, box.y1);
      const double nearest = std::hypot(nx - c.center.x, ny - c.center.y);
      const double fx = std::max(std::fabs(box.x0 - c.center.x), std::fabs(box.x1 - c.center.x));
      const double fy = std::max(std::fabs(box.y0 - c.center.y), std::fabs(box.y1 - c.center.y));
      return nearest <= c.radius && std::hypot(fx, fy) >= c.radius;
    }
    case EntityKind::LwPolyline: {
      const auto& pl = static_cast<const LwPolylineEntity&>(entity);
      return pathTouchesBox(polylinePoints(pl), pl.closed, box);
    }
    case EntityKind::Text: {
      const auto corners = textCorners(static_cast<const TextEntity&>(entity));
      const platform::Extents e = entityExtents(entity);
      // A box wholly inside the text also touches it.
      if (box.x0 >= e.min.x && box.x1 <= e.max.x && box.y0 >= e.min.y && box.y1 <= e.max.y) {
        return true;
      }
      return pathTouchesBox(corners, true, box);
    }
    default:
      break;
  }
  return false;
}

}  // namespace host
