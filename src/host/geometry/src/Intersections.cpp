// Where two entities meet in XY: every piece of one against every piece of
// the other, then each point once, in order along the first entity.
#include "host/geometry/Intersections.h"

#include <algorithm>
#include <cmath>

#include "IntersectPieces.h"
#include "IntersectSolve.h"

namespace host::geometry {

std::vector<platform::Point3d> intersectXY(const Database& db, const Entity& a, const Entity& b,
                                           double tolerance) {
  // Zero would leave touching ends and tangents to the luck of rounding.
  if (!(tolerance > 0.0) || !std::isfinite(tolerance)) tolerance = 1e-9;
  std::vector<platform::Point3d> out;
  const Shape first = shapeOf(db, a, tolerance);
  if (first.pieces.empty()) return out;
  const Shape second = shapeOf(db, b, tolerance);
  if (second.pieces.empty() || !first.box.meets(second.box, tolerance)) return out;

  Box2 both = first.box;
  both.add(second.box);
  const double scale = std::max(both.diagonal(), tolerance);
  std::vector<Hit> hits;
  for (std::size_t i = 0; i < first.pieces.size(); ++i) {
    const Piece& pa = first.pieces[i];
    if (!pa.box.meets(second.box, tolerance)) continue;
    for (const Piece& pb : second.pieces) meet(pa, i, pb, tolerance, scale, hits);
  }
  if (hits.empty()) return out;

  std::sort(hits.begin(), hits.end(), [](const Hit& x, const Hit& y) {
    return x.piece != y.piece ? x.piece < y.piece : x.param < y.param;
  });
  std::vector<const Hit*> kept;
  for (const Hit& h : hits) {
    const bool seen = std::any_of(kept.begin(), kept.end(), [&h](const Hit* k) {
      return distanceXY(k->point, h.point) <= std::max(k->mergeRadius, h.mergeRadius);
    });
    if (!seen) kept.push_back(&h);
  }
  out.reserve(kept.size());
  for (const Hit* h : kept) out.push_back(h->point);
  return out;
}

}  // namespace host::geometry
