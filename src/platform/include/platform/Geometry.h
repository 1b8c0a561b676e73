// Plain geometric value types shared by the module and its hosts.
#pragma once

namespace platform {

struct Point3d {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;

  friend bool operator==(const Point3d& a, const Point3d& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z;
  }
  friend bool operator!=(const Point3d& a, const Point3d& b) { return !(a == b); }
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
