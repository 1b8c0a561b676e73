// Extents of every kind of entity. Each kind adds its points and its arcs to a
// box through the placement of the block references it sits in, so that a
// rotated or scaled copy gets the extents of the copy itself, not of a box
// turned round: arcs and ellipses stay exact under any such placement. A
// block's box under a map is worked out once and kept with the drawing, so a
// block reached by many paths costs no more than one reached by one.
#include "host/geometry/Extents.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "Acis.h"
#include "BlockCache.h"
#include "HatchBoundary.h"
#include "Placement.h"
#include "Splines.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;
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

// What a block reference waits for: the box of a block's contents under a
// linear map, to be worked out before the reference is collected again.
struct Pending {
  ObjectId block;
  Affine linear;
};

class Collector {
 public:
  // The holder is the block whose contents are collected; none for an entity
  // asked about on its own.
  Collector(const Database& db, platform::Extents& box, ObjectId holder = {})
      : db_(db), box_(box), holder_(holder) {}

  void entity(const Entity& e, const Affine& place);
  // Set when a reference met a box not yet worked out: what was collected
  // then falls short, and is collected again once the box is known.
  const std::optional<Pending>& pending() const { return pending_; }

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
  void ellipse(const EllipseEntity& el, const Affine& place);
  void polyline(const LwPolylineEntity& pl, const Affine& place);
  void polyline(const Polyline2dEntity& pl, const Affine& place);
  void spline(const SplineEntity& s, const Affine& place);
  void mline(const MlineEntity& m, const Affine& place);
  void textPoints(const TextPoints& text, const Affine& place);
  void textCorners(const TextBox& box, const Affine& place) {
    for (const Point3d& p : box.corners) point(p, place);
  }
  void reference(const BlockReferenceEntity& r, const Affine& place);
  std::optional<platform::Extents> placedContents(ObjectId block, const Affine& copy);
  void pieces(const std::vector<std::unique_ptr<Entity>>& parts, const Affine& place) {
    for (const auto& part : parts) entity(*part, place);
  }

  const Database& db_;
  platform::Extents& box_;
  ObjectId holder_;
  std::optional<Pending> pending_;
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

void Collector::entity(const Entity& e, const Affine& place) {
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
    case EntityKind::Ellipse:
      ellipse(static_cast<const EllipseEntity&>(e), place);
      return;
    case EntityKind::LwPolyline:
      polyline(static_cast<const LwPolylineEntity&>(e), place);
      return;
    case EntityKind::Polyline2d:
      polyline(static_cast<const Polyline2dEntity&>(e), place);
      return;
    case EntityKind::Polyline3d:
      for (const PolylineVertex& v : static_cast<const Polyline3dEntity&>(e).vertices) {
        if ((v.flags & 16) == 0) point(v.position, place);
      }
      return;
    case EntityKind::Spline:
      spline(static_cast<const SplineEntity&>(e), place);
      return;
    case EntityKind::Mline:
      mline(static_cast<const MlineEntity&>(e), place);
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
      reference(static_cast<const BlockReferenceEntity&>(e), place);
      return;
    case EntityKind::Hatch:
      pieces(hatchBoundary(db_.hatchPaths(e)), place);
      return;
    case EntityKind::Region:
    case EntityKind::Solid3d:
      pieces(acisOutline(db_.acisText(e)), place);
      return;
    case EntityKind::Unknown:
      // A kind the host does not model: the points its text holds (groups
      // 10 to 18 with their Y and Z), in the plane of its normal if it has one.
      textPoints(db_.textPoints(e), place);
      return;
  }
}

void Collector::ellipse(const EllipseEntity& el, const Affine& place) {
  const Point3d minor = scaled(cross(unit(el.normal), el.majorAxis), el.ratio);
  conic(el.center, el.majorAxis, minor, el.startParam, sweepOf(el.startParam, el.endParam), place);
}

void Collector::polyline(const LwPolylineEntity& pl, const Affine& place) {
  std::vector<Point3d> pts;
  std::vector<double> bulges;
  for (const LwVertex& v : pl.vertices) {
    pts.push_back({v.x, v.y, pl.elevation});
    bulges.push_back(v.bulge);
  }
  bulgePath(pts, bulges, pl.closed, Ocs(pl.normal), place);
}

void Collector::polyline(const Polyline2dEntity& pl, const Affine& place) {
  std::vector<Point3d> pts;
  std::vector<double> bulges;
  for (const PolylineVertex& v : pl.vertices) {
    if ((v.flags & 16) != 0) continue;  // a spline's frame, not drawn
    pts.push_back({v.position.x, v.position.y, pl.elevation});
    bulges.push_back(v.bulge);
  }
  bulgePath(pts, bulges, pl.closed(), Ocs(pl.normal), place);
}

// Each element of the style runs off the vertex along the miter by its first
// parameter; without elements, the vertex path stands for it.
void Collector::mline(const MlineEntity& m, const Affine& place) {
  for (const MlineVertex& v : m.vertices) {
    bool any = false;
    for (const std::vector<double>& params : v.elementParams) {
      if (params.empty()) continue;
      point(plus(v.position, scaled(v.miter, params[0])), place);
      any = true;
    }
    if (!any) point(v.position, place);
  }
}

void Collector::textPoints(const TextPoints& text, const Affine& place) {
  const Ocs ocs(text.normal.value_or(kUnitZ));
  for (const Point3d& p : text.points) point(text.normal ? ocs.toWorld(p) : p, place);
}

// The copies of an array differ from the first by a shift alone, so the
// corner copies' shifts of the first copy's box give the whole array's.
void Collector::reference(const BlockReferenceEntity& r, const Affine& place) {
  for (ObjectId id : r.attributes) {
    const Entity* a = db_.openEntity(id);
    if (a != nullptr && a->kind() == EntityKind::Attribute) entity(*a, place);
  }
  if (!BlockCache::of(db_).shows(db_, holder_, r.block)) return;
  const ReferencePlacement at = placementOf(r, db_.get<BlockRecord>(r.block)->basePoint, place);
  const std::optional<platform::Extents> first = placedContents(r.block, at.copy);
  if (!first || first->isEmpty()) return;
  const int columns = std::max<int>(r.columns, 1);
  const int rows = std::max<int>(r.rows, 1);
  for (int col : {0, columns - 1}) {
    for (int row : {0, rows - 1}) {
      const Point3d shift = at.toPlane.linear({col * r.columnSpacing, row * r.rowSpacing, 0.0});
      box_.add(plus(first->min, shift));
      box_.add(plus(first->max, shift));
    }
  }
}

// A shift moves a box as it moves what is in it, so a block's box under the
// placement's linear part, shifted, is exact. A block of too many placements
// below it has one box, its own, whose corners placed hold its contents.
std::optional<platform::Extents> Collector::placedContents(ObjectId block, const Affine& copy) {
  BlockCache& cache = BlockCache::of(db_);
  const bool exact = cache.exact(db_, block);
  const Affine linear = exact ? copy.withoutShift() : Affine{};
  const platform::Extents* known = cache.box(block, linear.key());
  if (known == nullptr) {
    pending_ = Pending{block, linear};
    return std::nullopt;
  }
  platform::Extents placed;
  if (known->isEmpty()) return placed;
  if (exact) {
    placed.add(plus(known->min, copy.t));
    placed.add(plus(known->max, copy.t));
    return placed;
  }
  for (int corner = 0; corner < 8; ++corner) {
    placed.add(copy.apply({(corner & 1) != 0 ? known->max.x : known->min.x,
                           (corner & 2) != 0 ? known->max.y : known->min.y,
                           (corner & 4) != 0 ? known->max.z : known->min.z}));
  }
  return placed;
}

// Definitions show through their attributes, unless constant.
bool showsInBlock(const Entity& e) {
  return e.kind() != EntityKind::AttributeDefinition ||
         (static_cast<const AttributeDefinitionEntity&>(e).flags & 2) != 0;
}

// Works out the box a reference waits for, and those that box waits for in
// turn, on a list rather than by recursion: nesting may go deeper than the
// stack. References lead from block to block without ever coming back (the
// cache shows none that would), so the list ends.
void workOut(const Database& db, const Pending& wanted) {
  struct Frame {
    Pending wanted;
    std::vector<ObjectId> ids;
    std::size_t next = 0;
    platform::Extents box;
  };
  std::vector<Frame> frames;
  frames.push_back({wanted, db.blockEntities(wanted.block), 0, {}});
  while (!frames.empty()) {
    Frame& frame = frames.back();
    if (frame.next == frame.ids.size()) {
      BlockCache::of(db).keep(frame.wanted.block, frame.wanted.linear.key(), frame.box);
      frames.pop_back();
      continue;
    }
    const Entity* e = db.openEntity(frame.ids[frame.next]);
    if (e != nullptr && showsInBlock(*e)) {
      Collector collector(db, frame.box, frame.wanted.block);
      collector.entity(*e, frame.wanted.linear);
      if (collector.pending()) {
        const Pending inner = *collector.pending();
        frames.push_back({inner, db.blockEntities(inner.block), 0, {}});
        continue;  // this entity again once the inner box is known
      }
    }
    ++frame.next;
  }
}

}  // namespace

platform::Extents extentsOf(const Database& db, const Entity& entity) {
  for (;;) {
    platform::Extents box;
    Collector collector(db, box);
    collector.entity(entity, Affine{});
    if (!collector.pending()) return box;
    workOut(db, *collector.pending());
  }
}

}  // namespace host::geometry
