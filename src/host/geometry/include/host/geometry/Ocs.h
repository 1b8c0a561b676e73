// The object coordinate system of planar entities: arcs, circles, polylines,
// texts and block references keep their points in the plane of their normal,
// with axes chosen by the arbitrary axis rule, and the geometry turns them
// into world coordinates here.
#pragma once

#include <cmath>

#include "platform/Geometry.h"

namespace host::geometry {

using platform::Point3d;

inline Point3d cross(const Point3d& a, const Point3d& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double dot(const Point3d& a, const Point3d& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline double length(const Point3d& a) { return std::sqrt(dot(a, a)); }
inline Point3d scaled(const Point3d& a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline Point3d plus(const Point3d& a, const Point3d& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Point3d minus(const Point3d& a, const Point3d& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Point3d unit(const Point3d& a) {
  const double l = length(a);
  return l > 0.0 ? scaled(a, 1.0 / l) : Point3d{0.0, 0.0, 1.0};
}

// The axes of the plane whose normal is given.
class Ocs {
 public:
  explicit Ocs(const Point3d& normal) : z_(unit(normal)) {
    // The rule: unless the normal is near the world Z axis, X is world Z
    // crossed with the normal; near it, world Y crossed with the normal.
    const double limit = 1.0 / 64.0;
    const Point3d axis = std::fabs(z_.x) < limit && std::fabs(z_.y) < limit ? Point3d{0, 1, 0}
                                                                          : Point3d{0, 0, 1};
    x_ = unit(cross(axis, z_));
    y_ = unit(cross(z_, x_));
  }
  bool isWorld() const { return z_.x == 0.0 && z_.y == 0.0 && z_.z > 0.0; }
  // A point of the plane's coordinates in world coordinates.
  Point3d toWorld(const Point3d& p) const {
    if (isWorld()) return p;
    return plus(plus(scaled(x_, p.x), scaled(y_, p.y)), scaled(z_, p.z));
  }
  // A world point in the plane's coordinates.
  Point3d fromWorld(const Point3d& p) const {
    if (isWorld()) return p;
    return {dot(p, x_), dot(p, y_), dot(p, z_)};
  }
  const Point3d& xAxis() const { return x_; }
  const Point3d& yAxis() const { return y_; }
  const Point3d& zAxis() const { return z_; }

 private:
  Point3d z_;
  Point3d x_;
  Point3d y_;
};

}  // namespace host::geometry
