// Plain geometric value types shared by the module and its hosts.
#pragma once

#include <cmath>
#include <vector>

namespace platform {

// How close two points or directions must be to count as equal, by default.
struct Tolerance {
  double equalVector = 1e-12;
  double equalPoint = 1e-10;
};
inline constexpr Tolerance kGlobalTolerance{};

struct Point3d {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  friend bool operator==(const Point3d& a, const Point3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
  friend bool operator!=(const Point3d& a, const Point3d& b) { return !(a == b); }
};

// The area of the polygon the points make in the XY plane, closed by the
// chord from the last point to the first.
inline double planArea(const std::vector<Point3d>& points) {
  double twice = 0.0;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const Point3d& a = points[i];
    const Point3d& b = points[(i + 1) % points.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return std::fabs(twice) / 2.0;
}

// A point of the XY plane, for what looks at a drawing from above.
struct Point2d {
  double x = 0.0;
  double y = 0.0;

  double distanceTo(const Point2d& other) const { return std::hypot(x - other.x, y - other.y); }
  bool isEqualTo(const Point2d& other, const Tolerance& tol = kGlobalTolerance) const {
    return distanceTo(other) <= tol.equalPoint;
  }
};

// An axis-aligned box. An empty box has min above max.
struct Extents {
  Point3d min{1.0, 1.0, 1.0};
  Point3d max{-1.0, -1.0, -1.0};

  bool isEmpty() const { return min.x > max.x || min.y > max.y || min.z > max.z; }
  void add(const Point3d& p) {
    if (isEmpty()) {
      min = max = p;
      return;
    }
    if (p.x < min.x) min.x = p.x;
    if (p.y < min.y) min.y = p.y;
    if (p.z < min.z) min.z = p.z;
    if (p.x > max.x) max.x = p.x;
    if (p.y > max.y) max.y = p.y;
    if (p.z > max.z) max.z = p.z;
  }
  void add(const Extents& e) {
    if (e.isEmpty()) return;
    add(e.min);
    add(e.max);
  }
};

}  // namespace platform
