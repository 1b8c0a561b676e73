// Affine maps of points, and where a block reference puts its block's
// contents: the extents and the bookkeeping of blocks share them.
#pragma once

#include <array>
#include <cmath>

#include "host/db/Entities.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {

// p -> m p + t.
struct Affine {
  double m[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  Point3d t;

  Point3d linear(const Point3d& v) const {
    return {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z,
            m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z,
            m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z};
  }
  Point3d apply(const Point3d& p) const { return plus(linear(p), t); }
  // This placement after the inner one.
  Affine after(const Affine& inner) const {
    Affine r;
    for (int i = 0; i < 3; ++i) {
      for (int j = 0; j < 3; ++j) {
        r.m[i][j] = m[i][0] * inner.m[0][j] + m[i][1] * inner.m[1][j] + m[i][2] * inner.m[2][j];
      }
    }
    r.t = apply(inner.t);
    return r;
  }
  // The same map without its shift.
  Affine withoutShift() const {
    Affine r = *this;
    r.t = {};
    return r;
  }
  // The nine numbers of the linear part, row by row: equal maps, equal keys.
  std::array<double, 9> key() const {
    return {m[0][0], m[0][1], m[0][2], m[1][0], m[1][1], m[1][2], m[2][0], m[2][1], m[2][2]};
  }
  static Affine columns(const Point3d& x, const Point3d& y, const Point3d& z) {
    Affine a;
    const Point3d cols[3] = {x, y, z};
    for (int j = 0; j < 3; ++j) {
      a.m[0][j] = cols[j].x;
      a.m[1][j] = cols[j].y;
      a.m[2][j] = cols[j].z;
    }
    return a;
  }
  static Affine translation(const Point3d& v) {
    Affine a;
    a.t = v;
    return a;
  }
};

// A reference places its block: the block's base point to the origin, scaled,
// turned about Z, moved to the insertion point, all in the reference's plane.
struct ReferencePlacement {
  Affine toPlane;  // the reference's plane, moved and turned: array shifts go through it
  Affine copy;     // the first copy of the block's contents
};

inline ReferencePlacement placementOf(const BlockReferenceEntity& r, const Point3d& basePoint,
                                      const Affine& outer) {
  const Ocs ocs(r.normal);
  const double c = std::cos(r.rotation);
  const double s = std::sin(r.rotation);
  Affine turn;
  turn.m[0][0] = c;
  turn.m[0][1] = -s;
  turn.m[1][0] = s;
  turn.m[1][1] = c;
  Affine scale;
  scale.m[0][0] = r.scale.x;
  scale.m[1][1] = r.scale.y;
  scale.m[2][2] = r.scale.z;
  const Affine plane = outer.after(Affine::columns(ocs.xAxis(), ocs.yAxis(), ocs.zAxis()));
  ReferencePlacement p;
  p.toPlane = plane.after(Affine::translation(r.position)).after(turn);
  p.copy = p.toPlane.after(scale).after(Affine::translation(scaled(basePoint, -1)));
  return p;
}

}  // namespace host::geometry
