// The pieces an entity's path in the XY plane is cut into for intersections:
// points, segments, conic arcs (circles in XY among them) and splines, each
// running over a local parameter from 0 to 1.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

#include "IntersectSpline.h"
#include "host/db/Database.h"
#include "platform/Geometry.h"

namespace host::geometry {

struct Box2 {
  double x0 = std::numeric_limits<double>::infinity();
  double y0 = std::numeric_limits<double>::infinity();
  double x1 = -std::numeric_limits<double>::infinity();
  double y1 = -std::numeric_limits<double>::infinity();

  void add(double x, double y);
  void add(const Box2& other);
  bool meets(const Box2& other, double margin) const {
    return x0 <= other.x1 + margin && other.x0 <= x1 + margin && y0 <= other.y1 + margin &&
           other.y0 <= y1 + margin;
  }
  double diagonal() const;
};

// A piece as points along it, close enough to the piece for finding where it
// may meet another.
struct Flat {
  std::vector<double> params;
  std::vector<Point3d> points;
  double tolerance = 0.0;
};

struct Piece {
  enum class Kind : std::uint8_t { Point, Segment, Conic, Spline };
  Kind kind = Kind::Point;
  // Point: p0. Segment: p0 to p1.
  Point3d p0;
  Point3d p1;
  // Conic: c + u cos t + v sin t, with t = t0 + s sweep (the sweep signed).
  Point3d c;
  Point3d u;
  Point3d v;
  double t0 = 0.0;
  double sweep = 0.0;
  // A conic whose shadow in XY is a circle: its radius, the XY angle at s = 0
  // and the signed sweep of that angle.
  bool circle = false;
  double radius = 0.0;
  double angle0 = 0.0;
  double sweepXY = 0.0;
  const SplineCurve* spline = nullptr;
  // The points at s = 0 and 1, asked for often enough to keep.
  Point3d first;
  Point3d last;
  Box2 box;
  mutable std::unique_ptr<Flat> flat;  // made when first needed

  Point3d at(double s) const;
  Point3d velocity(double s) const;  // by s
  // A conic or spline whose ends meet has no ends to speak of.
  bool closedLoop() const;
  // The points along the piece, made once.
  const Flat& flattened(double tolerance) const;
};

struct Shape {
  std::vector<Piece> pieces;
  std::vector<std::unique_ptr<SplineCurve>> splines;
  Box2 box;
};

// The entity's pieces; nothing for an entity with no geometry.
Shape shapeOf(const Database& db, const Entity& entity, double tolerance);

// Plain square roots: the library's hypot guards against overflow that
// drawing coordinates never reach, at several times the cost.
inline double normXY(double x, double y) {
  return std::sqrt(x * x + y * y);
}
inline double distanceXY(const Point3d& a, const Point3d& b) {
  return normXY(a.x - b.x, a.y - b.y);
}

}  // namespace host::geometry
