// Volumes of bodies bounded by planes, by the divergence theorem: the volume
// is a third of the sum, over the faces, of each face's area times the
// distance of its plane from the origin along its outward normal.
#include "Solids.h"

#include <cmath>

#include "Acis.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

// Twice the vector area of a loop; for a closed polygon it does not depend on
// the origin, and its direction follows the loop's sense of turning.
Point3d loopArea(const std::vector<Point3d>& ring) {
  Point3d sum;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    sum = plus(sum, cross(ring[i], ring[(i + 1) % ring.size()]));
  }
  return sum;
}

// The face's share of the volume in body coordinates, or nothing when the face
// is not a plane bounded by straight edges.
std::optional<double> faceShare(const AcisModel& model, const AcisFace& face) {
  const AcisRecord* surface = model.at(face.surface);
  if (surface == nullptr || surface->subtype() != "plane" || surface->numbers.size() < 6) {
    return std::nullopt;
  }
  const std::vector<double>& n = surface->numbers;
  Point3d normal = unit({n[3], n[4], n[5]});
  if (face.reversed) normal = scaled(normal, -1.0);
  if (face.loops.empty()) return std::nullopt;  // a plane without bounds
  Point3d area;
  Point3d anchor;
  for (const std::vector<long>& loop : face.loops) {
    std::vector<Point3d> ring;
    for (long coedge : loop) {
      const auto edge = coedgeEdge(model, coedge);
      if (!edge) return std::nullopt;
      const AcisRecord* curve = edgeCurve(model, *edge);
      if (curve == nullptr || curve->subtype() != "straight") return std::nullopt;
      const auto start = coedgeStart(model, coedge);
      if (!start) return std::nullopt;
      ring.push_back(*start);
    }
    if (&loop == &face.loops.front()) anchor = ring.front();
    // Holes turn against the outer loop, so their areas come off its own.
    area = plus(area, loopArea(ring));
  }
  // The face normal orients the face; the loops give its area.
  return dot(anchor, normal) * std::fabs(dot(area, normal)) / 6.0;
}

}  // namespace

std::optional<double> solidVolume(std::string_view text) {
  if (text.empty()) return std::nullopt;
  const auto model = AcisModel::read(text);
  if (!model) return std::nullopt;
  const auto faces = acisFaces(*model);
  if (!faces || faces->empty()) return std::nullopt;
  double total = 0.0;
  for (const AcisFace& face : *faces) {
    const auto share = faceShare(*model, face);
    if (!share) return std::nullopt;
    total += *share * face.transform.volumeFactor();
  }
  if (!std::isfinite(total)) return std::nullopt;
  return std::fabs(total);
}

}  // namespace host::geometry
