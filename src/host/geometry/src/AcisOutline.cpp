// The outline of SAT bodies that their extents are taken from: the vertices,
// the elliptic arcs that edges on ellipses and circles run along, and the poles
// of spheres that have no edges at all. Other curved edges and surfaces are
// represented by their vertices alone.
#include <cmath>
#include <unordered_set>

#include "Acis.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

constexpr double kTwoPi = 6.283185307179586;

void addPoint(std::vector<std::unique_ptr<Entity>>& out, const Point3d& p) {
  auto point = std::make_unique<PointEntity>();
  point->position = p;
  out.push_back(std::move(point));
}

// An ellipse curve's record: centre, normal, major axis, ratio.
void addEllipticEdge(const AcisRecord& curve, const AcisTransform& t, const Point3d& start,
                     const Point3d& end, bool reversed, std::vector<std::unique_ptr<Entity>>& out) {
  const std::vector<double>& n = curve.numbers;
  if (n.size() < 10) return;
  const Point3d center{n[0], n[1], n[2]};
  const Point3d major{n[6], n[7], n[8]};
  const Point3d minor = scaled(cross(unit({n[3], n[4], n[5]}), major), n[9]);
  const double majorSquared = dot(major, major);
  const double minorSquared = dot(minor, minor);
  if (majorSquared <= 0.0 || minorSquared <= 0.0) return;
  auto paramOf = [&](const Point3d& p) {
    const Point3d d = minus(p, center);
    return std::atan2(dot(d, minor) / minorSquared, dot(d, major) / majorSquared);
  };
  auto arc = std::make_unique<EllipseEntity>();
  arc->center = t.apply(center);
  arc->majorAxis = t.applyLinear(major);
  const Point3d placedMinor = t.applyLinear(minor);
  arc->normal = unit(cross(arc->majorAxis, placedMinor));
  arc->ratio = std::sqrt(dot(placedMinor, placedMinor) / dot(arc->majorAxis, arc->majorAxis));
  if (start == end) {  // a closed edge runs round the whole curve
    arc->startParam = 0.0;
    arc->endParam = kTwoPi;
  } else if (reversed) {  // the curve runs from the edge's end to its start
    arc->startParam = paramOf(end);
    arc->endParam = paramOf(start);
  } else {
    arc->startParam = paramOf(start);
    arc->endParam = paramOf(end);
  }
  if (!std::isfinite(arc->ratio) || !std::isfinite(arc->startParam) ||
      !std::isfinite(arc->endParam)) {
    return;
  }
  out.push_back(std::move(arc));
}

// A sphere's record: centre and radius. Its poles along the world axes are
// its extremes; the body's transform keeps spheres spheres.
void addSpherePoles(const AcisRecord& surface, const AcisTransform& t,
                    std::vector<std::unique_ptr<Entity>>& out) {
  const std::vector<double>& n = surface.numbers;
  if (n.size() < 4) return;
  const Point3d center = t.apply({n[0], n[1], n[2]});
  const double r = std::fabs(n[3]) * std::cbrt(t.volumeFactor());
  for (const Point3d& axis : {Point3d{r, 0, 0}, Point3d{0, r, 0}, Point3d{0, 0, r}}) {
    addPoint(out, plus(center, axis));
    addPoint(out, minus(center, axis));
  }
}

}  // namespace

std::vector<std::unique_ptr<Entity>> acisOutline(std::string_view text) {
  std::vector<std::unique_ptr<Entity>> out;
  if (text.empty()) return out;
  const auto model = AcisModel::read(text);
  if (!model) return out;
  const auto faces = acisFaces(*model);
  if (!faces) return out;
  std::unordered_set<long> edges;
  for (const AcisFace& face : *faces) {
    const AcisRecord* surface = model->at(face.surface);
    if (face.loops.empty() && surface != nullptr && surface->subtype() == "sphere") {
      addSpherePoles(*surface, face.transform, out);
    }
    for (const std::vector<long>& loop : face.loops) {
      for (long coedge : loop) {
        const auto edge = coedgeEdge(*model, coedge);
        if (!edge || !edges.insert(*edge).second) continue;
        const auto start = edgeVertex(*model, *edge, false);
        const auto end = edgeVertex(*model, *edge, true);
        if (start) addPoint(out, face.transform.apply(*start));
        if (end) addPoint(out, face.transform.apply(*end));
        const AcisRecord* curve = edgeCurve(*model, *edge);
        if (start && end && curve != nullptr && curve->subtype() == "ellipse") {
          addEllipticEdge(*curve, face.transform, *start, *end, model->at(*edge)->reversed(), out);
        }
      }
    }
  }
  return out;
}

}  // namespace host::geometry
