// Extents of every kind of entity. Each kind adds its points and its arcs to a
// box through the placement of the block references it sits in, so that a
// rotated or scaled copy gets the extents of the copy itself, not of a box
// turned round: arcs and ellipses stay exact under any such placement.
#include "geometry/Extents.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "geometry/Acis.h"
#include "geometry/HatchBoundary.h"
#include "geometry/Ocs.h"
#include "geometry/Splines.h"

namespace host::geometry {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;
// Deeper nesting than this is taken for a drawing that refers to itself.
constexpr int kMaxDepth = 32;

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

double coordinate(const Point3d& p, int axis) { return axis == 0 ? p.x : axis == 1 ? p.y : p.z; }

bool isFinite(const Point3d& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// The sweep from the start to the end angle, counterclockwise, in (0, 2 pi];
// equal angles make a whole turn.
double sweepOf(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep <= 0.0) sweep += kTwoPi;
  return sweep;
}

bool withinSweep(double angle, double start, double sweep) {
  double d = std::fmod(angle - start, kTwoPi);
  if (d < 0.0) d += kTwoPi;
  return d <= sweep;
}

class Collector {
 public:
  Collector(const Database& db, platform::Extents& box) : db_(db), box_(box) {}

  void entity(const Entity& e, const Affine& place, int depth);

 private:
  void point(const Point3d& p, const Affine& place) {
    const Point3d q = place.apply(p);
    if (isFinite(q)) box_.add(q);
  }
  void conic(const Point3d& center, const Point3d& u, const Point3d& v, double start,
             double sweep, const Affine& place);
  void bulgePath(const std::vector<Point3d>& ocsPoints, const std::vector<double>& bulges,
                 bool closed, const Ocs& ocs, const Affine& place);
  void spline(const SplineEntity& s, const Affine& place);
  void textCorners(const TextBox& box, const Affine& place) {
    for (const Point3d& p : box.corners) point(p, place);
  }
  void reference(const BlockReferenceEntity& r, const Affine& place, int depth);
  void pieces(const std::vector<std::unique_ptr<Entity>>& parts, const Affine& place, int depth) {
    for (const auto& part : parts) entity(*part, place, depth);
  }

  const Database& db_;
  platform::Extents& box_;
  std::vector<ObjectId> open_;  // the blocks being expanded, outermost first
};

// The curve c + u cos a + v sin a for a from start over the sweep, placed: the
// placement keeps that form, and each coordinate is extreme where
// tan a = v_k / u_k, so the ends and those angles within the sweep bound it.
void Collector::conic(const Point3d& center, const Point3d& u, const Point3d& v, double start,
                      double sweep, const Affine& place) {
  const Point3d c = place.apply(center);
  const Point3d pu = place.linear(u);
  const Point3d pv = place.linear(v);
  auto add = [&](double a) {
    const Point3d p = plus(c, plus(scaled(pu, std::cos(a)), scaled(pv, std::sin(a))));
    if (isFinite(p)) box_.add(p);
  };
  add(start);
  add(start + sweep);
  for (int axis = 0; axis < 3; ++axis) {
    const double top = std::atan2(coordinate(pv, axis), coordinate(pu, axis));
    for (double a : {top, top + kPi}) {
      if (withinSweep(a, start, sweep)) add(a);
    }
  }
}

// Vertices in the plane with the bulge of the segment each starts; a bulge is
// the tangent of a quarter of the segment's included angle, positive
// counterclockwise.
void Collector::bulgePath(const std::vector<Point3d>& pts, const std::vector<double>& bulges,
                          bool closed, const Ocs& ocs, const Affine& place) {
  const Affine plane = place.after(Affine::columns(ocs.xAxis(), ocs.yAxis(), ocs.zAxis()));
  const Affine& onPlane = ocs.isWorld() ? place : plane;
  const std::size_t n = pts.size();
  for (const Point3d& p : pts) point(p, onPlane);
  const std::size_t segments = closed ? n : (n == 0 ? 0 : n - 1);
  for (std::size_t i = 0; i < segments; ++i) {
    const double bulge = bulges[i];
    const Point3d& a = pts[i];
    const Point3d& b = pts[(i + 1) % n];
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double chord = std::hypot(dx, dy);
    if (bulge == 0.0 || chord == 0.0 || !std::isfinite(bulge)) continue;
    const double angle = 4.0 * std::atan(bulge);
    const double offset = chord * (1.0 - bulge * bulge) / (4.0 * bulge);
    const Point3d center{(a.x + b.x) / 2 - dy / chord * offset,
                         (a.y + b.y) / 2 + dx / chord * offset, a.z};
    const double radius = std::hypot(a.x - center.x, a.y - center.y);
    const double from = std::atan2(a.y - center.y, a.x - center.x);
    const double start = angle > 0.0 ? from : from + angle;
    conic(center, {radius, 0, 0}, {0, radius, 0}, start, std::fabs(angle), onPlane);
  }
}

// Samples every span of the curve finely, then closes in on each coordinate's
// local extremes by golden section, so the box is the curve's to rounding.
void Collector::spline(const SplineEntity& s, const Affine& place) {
  const std::size_t n = s.controlPoints.size();
  if (n == 0) {
    for (const Point3d& p : s.fitPoints) point(p, place);
    return;
  }
  const int degree = s.degree;
  const std::vector<double> knots = effectiveKnots(s);
  bool usable = degree >= 1 && n > static_cast<std::size_t>(degree) &&
                knots.size() == n + static_cast<std::size_t>(degree) + 1;
  for (std::size_t i = 1; usable && i < knots.size(); ++i) {
    usable = std::isfinite(knots[i]) && knots[i] >= knots[i - 1];
  }
  for (double w : s.weights) usable = usable && w > 0.0 && std::isfinite(w);
  if (!usable) {
    // With positive weights the curve stays within its control points' hull.
    for (const Point3d& p : s.controlPoints) point(p, place);
    return;
  }
  auto at = [&](double t) { return place.apply(evaluate(s, t)); };
  const int perSpan = 4 * (degree + 1);
  std::vector<double> ts;
  for (std::size_t i = static_cast<std::size_t>(degree); i < n; ++i) {
    const double a = knots[i];
    const double b = knots[i + 1];
    if (!(b > a)) continue;
    for (int j = ts.empty() ? 0 : 1; j <= perSpan; ++j) {
      ts.push_back(j == perSpan ? b : a + (b - a) * j / perSpan);
    }
  }
  std::vector<Point3d> ps;
  ps.reserve(ts.size());
  for (double t : ts) {
    ps.push_back(at(t));
    if (isFinite(ps.back())) box_.add(ps.back());
  }
  constexpr double kGolden = 0.6180339887498949;
  for (int axis = 0; axis < 3; ++axis) {
    for (std::size_t j = 1; j + 1 < ps.size(); ++j) {
      const double v = coordinate(ps[j], axis);
      const double l = coordinate(ps[j - 1], axis);
      const double r = coordinate(ps[j + 1], axis);
      for (double sign : {1.0, -1.0}) {
        if (!(sign * v >= sign * l && sign * v >= sign * r && (v != l || v != r))) continue;
        double lo = ts[j - 1];
        double hi = ts[j + 1];
        double x1 = hi - kGolden * (hi - lo);
        double x2 = lo + kGolden * (hi - lo);
        double f1 = sign * coordinate(at(x1), axis);
        double f2 = sign * coordinate(at(x2), axis);
        for (int k = 0; k < 60 && hi - lo > 0.0; ++k) {
          if (f1 < f2) {
            lo = x1;
            x1 = x2;
            f1 = f2;
            x2 = lo + kGolden * (hi - lo);
            f2 = sign * coordinate(at(x2), axis);
          } else {
            hi = x2;
            x2 = x1;
            f2 = f1;
            x1 = hi - kGolden * (hi - lo);
            f1 = sign * coordinate(at(x1), axis);
          }
        }
        const Point3d best = at(f1 > f2 ? x1 : x2);
        if (isFinite(best)) box_.add(best);
      }
    }
  }
}

void Collector::entity(const Entity& e, const Affine& place, int depth) {
  switch (e.kind()) {
    case EntityKind::Point: point(static_cast<const PointEntity&>(e).position, place); return;
    case EntityKind::Line: {
      const auto& line = static_cast<const LineEntity&>(e);
      point(line.start, place);
      point(line.end, place);
      return;
    }
    case EntityKind::Arc:
    case EntityKind::Circle: {
      const bool isArc = e.kind() == EntityKind::Arc;
      const auto* arc = isArc ? static_cast<const ArcEntity*>(&e) : nullptr;
      const auto* circle = isArc ? nullptr : static_cast<const CircleEntity*>(&e);
      const Ocs ocs(isArc ? arc->normal : circle->normal);
      const double r = isArc ? arc->radius : circle->radius;
      const double start = isArc ? arc->startAngle : 0.0;
      const double sweep = isArc ? sweepOf(arc->startAngle, arc->endAngle) : kTwoPi;
      conic(ocs.toWorld(isArc ? arc->center : circle->center), scaled(ocs.xAxis(), r),
            scaled(ocs.yAxis(), r), start, sweep, place);
      return;
    }
    case EntityKind::Ellipse: {
      const auto& el = static_cast<const EllipseEntity&>(e);
      const Point3d minor = scaled(cross(unit(el.normal), el.majorAxis), el.ratio);
      conic(el.center, el.majorAxis, minor, el.startParam, sweepOf(el.startParam, el.endParam),
            place);
      return;
    }
    case EntityKind::LwPolyline: {
      const auto& pl = static_cast<const LwPolylineEntity&>(e);
      std::vector<Point3d> pts;
      std::vector<double> bulges;
      for (const LwVertex& v : pl.vertices) {
        pts.push_back({v.x, v.y, pl.elevation});
        bulges.push_back(v.bulge);
      }
      bulgePath(pts, bulges, pl.closed, Ocs(pl.normal), place);
      return;
    }
    case EntityKind::Polyline2d: {
      const auto& pl = static_cast<const Polyline2dEntity&>(e);
      std::vector<Point3d> pts;
      std::vector<double> bulges;
      for (const PolylineVertex& v : pl.vertices) {
        if ((v.flags & 16) != 0) continue;  // a spline's frame, not drawn
        pts.push_back({v.position.x, v.position.y, pl.elevation});
        bulges.push_back(v.bulge);
      }
      bulgePath(pts, bulges, pl.closed(), Ocs(pl.normal), place);
      return;
    }
    case EntityKind::Polyline3d:
      for (const PolylineVertex& v : static_cast<const Polyline3dEntity&>(e).vertices) {
        if ((v.flags & 16) == 0) point(v.position, place);
      }
      return;
    case EntityKind::Spline: spline(static_cast<const SplineEntity&>(e), place); return;
    case EntityKind::Mline:
      // Each element of the style runs off the vertex along the miter by its
      // first parameter; without elements, the vertex path stands for it.
      for (const MlineVertex& v : static_cast<const MlineEntity&>(e).vertices) {
        bool any = false;
        for (const std::vector<double>& params : v.elementParams) {
          if (params.empty()) continue;
          point(plus(v.position, scaled(v.miter, params[0])), place);
          any = true;
        }
        if (!any) point(v.position, place);
      }
      return;
    case EntityKind::Text:
      textCorners(textBox(static_cast<const TextEntity&>(e).data), place);
      return;
    case EntityKind::Attribute:
      textCorners(textBox(static_cast<const AttributeEntity&>(e).data), place);
      return;
    case EntityKind::AttributeDefinition:
      textCorners(textBox(static_cast<const AttributeDefinitionEntity&>(e).data), place);
      return;
    case EntityKind::MText: textCorners(mtextBox(static_cast<const MTextEntity&>(e)), place); return;
    case EntityKind::BlockReference:
      reference(static_cast<const BlockReferenceEntity&>(e), place, depth);
      return;
    case EntityKind::Hatch: pieces(hatchBoundary(db_.sourceText(e)), place, depth); return;
    case EntityKind::Region:
    case EntityKind::Solid3d: pieces(acisOutline(db_.sourceText(e)), place, depth); return;
    case EntityKind::Unknown: return;
  }
}

// A reference places its block: the block's base point to the origin, scaled,
// turned about Z, moved to the insertion point, all in the reference's plane.
// The copies of an array differ from the first by a shift alone, so the
// corner copies' shifts of the first copy's box give the whole array's.
void Collector::reference(const BlockReferenceEntity& r, const Affine& place, int depth) {
  for (ObjectId id : r.attributes) {
    const Entity* a = db_.openEntity(id);
    if (a != nullptr && a->kind() == EntityKind::Attribute) entity(*a, place, depth + 1);
  }
  const auto* block = db_.get<BlockRecord>(r.block);
  if (block == nullptr || depth >= kMaxDepth ||
      std::find(open_.begin(), open_.end(), r.block) != open_.end()) {
    return;
  }
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
  const Affine plane = place.after(Affine::columns(ocs.xAxis(), ocs.yAxis(), ocs.zAxis()));
  const Affine toPlane = plane.after(Affine::translation(r.position)).after(turn);
  const Affine copy = toPlane.after(scale).after(Affine::translation(scaled(block->basePoint, -1)));

  platform::Extents first;
  Collector inner(db_, first);
  inner.open_ = open_;
  inner.open_.push_back(r.block);
  for (ObjectId id : db_.blockEntities(r.block)) {
    const Entity* e = db_.openEntity(id);
    if (e == nullptr) continue;
    // Definitions show through their attributes, unless constant.
    if (e->kind() == EntityKind::AttributeDefinition &&
        (static_cast<const AttributeDefinitionEntity*>(e)->flags & 2) == 0) {
      continue;
    }
    inner.entity(*e, copy, depth + 1);
  }
  if (first.isEmpty()) return;
  const int columns = std::max<int>(r.columns, 1);
  const int rows = std::max<int>(r.rows, 1);
  for (int col : {0, columns - 1}) {
    for (int row : {0, rows - 1}) {
      const Point3d shift =
          toPlane.linear({col * r.columnSpacing, row * r.rowSpacing, 0.0});
      box_.add(plus(first.min, shift));
      box_.add(plus(first.max, shift));
    }
  }
}

}  // namespace

platform::Extents extentsOf(const Database& db, const Entity& entity) {
  platform::Extents box;
  Collector(db, box).entity(entity, Affine{}, 0);
  return box;
}

}  // namespace host::geometry
