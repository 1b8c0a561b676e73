// Extents of every kind of entity. Each kind adds its points and its arcs to a
// box through the placement of the block references it sits in, so that a
// rotated or scaled copy gets the extents of the copy itself, not of a box
// turned round: arcs and ellipses stay exact under any such placement.
#include "host/geometry/Extents.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "Acis.h"
#include "HatchBoundary.h"
#include "Splines.h"
#include "host/geometry/Ocs.h"

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

double coordinate(const Point3d& p, int axis) {
  return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

bool isFinite(const Point3d& p) {
  return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// The sweep from the start to the end angle, counterclockwise, in (0, 2 pi].
// Equal angles make a whole turn, and so do ends a whole turn apart that
// rounding left a hair's breadth off.
double sweepOf(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep < 0.0) sweep += kTwoPi;
  return sweep <= 1e-12 ? kTwoPi : sweep;
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
  void conic(const Point3d& center, const Point3d& u, const Point3d& v, double start, double sweep,
             const Affine& place);
  // An arc or circle in the plane of the normal, its centre in the plane's coordinates.
  void circular(const Point3d& center, double radius, const Point3d& normal, double start,
                double sweep, const Affine& place) {
    const Ocs ocs(normal);
    conic(ocs.toWorld(center), scaled(ocs.xAxis(), radius), scaled(ocs.yAxis(), radius), start,
          sweep, place);
  }
  void bulgePath(const std::vector<Point3d>& ocsPoints, const std::vector<double>& bulges,
                 bool closed, const Ocs& ocs, const Affine& place);
  void spline(const SplineEntity& s, const Affine& place);
  void textPoints(const TextPoints& text, const Affine& place);
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

// A B-spline whose knots fit its control points, evaluated here rather than
// through the library's general entry, which prepares the whole curve anew
// for every point asked of it.
class Bspline {
 public:
  Bspline(const SplineEntity& s, std::vector<double> knots)
      : s_(s), knots_(std::move(knots)), degree_(s.degree) {}

  // Knots that suit the control points, non-decreasing; positive weights.
  static bool fits(const SplineEntity& s, const std::vector<double>& knots) {
    const std::size_t n = s.controlPoints.size();
    const std::size_t p = s.degree >= 1 ? static_cast<std::size_t>(s.degree) : 0;
    if (p == 0 || p > 64 || n <= p || knots.size() != n + p + 1) return false;
    if (!s.weights.empty() && s.weights.size() != n) return false;
    for (std::size_t i = 0; i < knots.size(); ++i) {
      if (!std::isfinite(knots[i]) || (i > 0 && knots[i] < knots[i - 1])) return false;
    }
    for (double w : s.weights) {
      if (!(w > 0.0) || !std::isfinite(w)) return false;
    }
    return knots[p] < knots[n];
  }
  const std::vector<double>& knots() const { return knots_; }
  std::size_t count() const { return s_.controlPoints.size(); }
  int degree() const { return degree_; }

  // De Boor's algorithm in homogeneous coordinates.
  Point3d at(double t) const {
    const int p = degree_;
    const int n = static_cast<int>(count());
    const auto first = knots_.begin() + p;
    const auto last = knots_.begin() + n;
    int k = static_cast<int>(std::upper_bound(first, last, t) - knots_.begin()) - 1;
    k = std::clamp(k, p, n - 1);
    while (k > p && knots_[k] == knots_[k + 1]) --k;  // the end falls in the last span
    double h[64 + 1][4];
    for (int j = 0; j <= p; ++j) {
      const Point3d& c = s_.controlPoints[j + k - p];
      const double w = s_.weights.empty() ? 1.0 : s_.weights[j + k - p];
      h[j][0] = c.x * w;
      h[j][1] = c.y * w;
      h[j][2] = c.z * w;
      h[j][3] = w;
    }
    for (int r = 1; r <= p; ++r) {
      for (int j = p; j >= r; --j) {
        const double lo = knots_[j + k - p];
        const double span = knots_[j + 1 + k - r] - lo;
        const double a = span > 0.0 ? (t - lo) / span : 0.0;
        for (int c = 0; c < 4; ++c) h[j][c] = (1.0 - a) * h[j - 1][c] + a * h[j][c];
      }
    }
    return {h[p][0] / h[p][3], h[p][1] / h[p][3], h[p][2] / h[p][3]};
  }

 private:
  const SplineEntity& s_;
  std::vector<double> knots_;
  int degree_;
};

// Samples every span of the curve finely, then closes in on each coordinate's
// local extremes by golden section, so the box is the curve's to rounding.
// Splines in any other form (fit points only, periodic ones listing their
// distinct control points) take the library's samples, close to the curve
// relative to the size of their points.
void Collector::spline(const SplineEntity& s, const Affine& place) {
  std::vector<double> knots = s.controlPoints.empty() ? std::vector<double>{} : effectiveKnots(s);
  if (!Bspline::fits(s, knots)) {
    const std::vector<Point3d>& hull = s.controlPoints.empty() ? s.fitPoints : s.controlPoints;
    platform::Extents around;
    for (const Point3d& p : hull) around.add(p);
    const double size = around.isEmpty() ? 0.0 : length(minus(around.max, around.min));
    const std::vector<Point3d> samples = hull.size() >= 2 ? sample(s, 1e-7 * size) : hull;
    for (const Point3d& p : samples.empty() ? hull : samples) point(p, place);
    return;
  }
  const Bspline curve(s, std::move(knots));
  auto at = [&](double t) { return place.apply(curve.at(t)); };
  const int perSpan = std::min(4 * (curve.degree() + 1), 64);
  std::vector<double> ts;
  for (std::size_t i = static_cast<std::size_t>(curve.degree()); i < curve.count(); ++i) {
    const double a = curve.knots()[i];
    const double b = curve.knots()[i + 1];
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
    case EntityKind::Point:
      point(static_cast<const PointEntity&>(e).position, place);
      return;
    case EntityKind::Line: {
      const auto& line = static_cast<const LineEntity&>(e);
      point(line.start, place);
      point(line.end, place);
      return;
    }
    case EntityKind::Arc: {
      const auto& arc = static_cast<const ArcEntity&>(e);
      circular(arc.center, arc.radius, arc.normal, arc.startAngle,
               sweepOf(arc.startAngle, arc.endAngle), place);
      return;
    }
    case EntityKind::Circle: {
      const auto& circle = static_cast<const CircleEntity&>(e);
      circular(circle.center, circle.radius, circle.normal, 0.0, kTwoPi, place);
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
    case EntityKind::Spline:
      spline(static_cast<const SplineEntity&>(e), place);
      return;
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
    case EntityKind::MText:
      textCorners(mtextBox(static_cast<const MTextEntity&>(e)), place);
      return;
    case EntityKind::BlockReference:
      reference(static_cast<const BlockReferenceEntity&>(e), place, depth);
      return;
    case EntityKind::Hatch:
      pieces(hatchBoundary(db_.hatchPaths(e)), place, depth);
      return;
    case EntityKind::Region:
    case EntityKind::Solid3d:
      pieces(acisOutline(db_.acisText(e)), place, depth);
      return;
    case EntityKind::Unknown:
      // A kind the host does not model: the points its text holds (groups
      // 10 to 18 with their Y and Z), in the plane of its normal if it has one.
      textPoints(db_.textPoints(e), place);
      return;
  }
}

void Collector::textPoints(const TextPoints& text, const Affine& place) {
  const Ocs ocs(text.normal.value_or(kUnitZ));
  for (const Point3d& p : text.points) point(text.normal ? ocs.toWorld(p) : p, place);
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
      const Point3d shift = toPlane.linear({col * r.columnSpacing, row * r.rowSpacing, 0.0});
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
