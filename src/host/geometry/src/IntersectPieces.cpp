// Cutting entities into the pieces intersections work on. Polyline segments
// and the outlines of texts and references come from the curves' and extents'
// own functions, so every command sees the same geometry.
#include "IntersectPieces.h"

#include <algorithm>
#include <cmath>

#include "host/geometry/Curves.h"
#include "host/geometry/Extents.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;

// How closely a piece's points follow it, against its size: tight enough that
// the refinement which follows starts next to the answer.
constexpr double kFlatRelative = 1e-5;

double sweepOf(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep <= 1e-12) sweep += kTwoPi;
  return sweep;
}

void addPoint(Shape& shape, const Point3d& p) {
  Piece piece;
  piece.kind = Piece::Kind::Point;
  piece.p0 = p;
  piece.first = piece.last = p;
  piece.box.add(p.x, p.y);
  shape.pieces.push_back(std::move(piece));
}

// A segment too short to have a direction in XY meets others as a point.
void addSegment(Shape& shape, const Point3d& a, const Point3d& b, double tolerance) {
  if (distanceXY(a, b) <= tolerance) {
    addPoint(shape, a);
    return;
  }
  Piece piece;
  piece.kind = Piece::Kind::Segment;
  piece.p0 = a;
  piece.p1 = b;
  piece.first = a;
  piece.last = b;
  piece.box.add(a.x, a.y);
  piece.box.add(b.x, b.y);
  shape.pieces.push_back(std::move(piece));
}

void addPath(Shape& shape, const std::vector<Point3d>& points, bool closed, double tolerance) {
  shape.pieces.reserve(shape.pieces.size() + points.size());
  if (points.size() == 1) addPoint(shape, points[0]);
  for (std::size_t i = 1; i < points.size(); ++i) {
    addSegment(shape, points[i - 1], points[i], tolerance);
  }
  if (closed && points.size() > 2) addSegment(shape, points.back(), points.front(), tolerance);
}

void addConic(Shape& shape, const Point3d& c, const Point3d& u, const Point3d& v, double t0,
              double sweep, double tolerance) {
  const double ru = normXY(u.x, u.y);
  const double rv = normXY(v.x, v.y);
  const double r = std::max(ru, rv);
  if (r <= tolerance) {
    addPoint(shape, c);
    return;
  }
  Piece piece;
  piece.kind = Piece::Kind::Conic;
  piece.c = c;
  piece.u = u;
  piece.v = v;
  piece.t0 = t0;
  piece.sweep = sweep;
  // Equal, square semi-axes in XY make a circle there, which meets lines and
  // circles in closed form.
  const double crossUV = u.x * v.y - u.y * v.x;
  if (std::fabs(ru - rv) <= 1e-12 * r && std::fabs(u.x * v.x + u.y * v.y) <= 1e-12 * r * r) {
    const double sign = crossUV >= 0.0 ? 1.0 : -1.0;
    piece.circle = true;
    piece.radius = 0.5 * (ru + rv);
    piece.angle0 = std::atan2(u.y, u.x) + sign * t0;
    piece.sweepXY = sign * sweep;
  }
  piece.first = piece.at(0.0);
  piece.last = piece.at(1.0);
  const double hx = normXY(u.x, v.x);
  const double hy = normXY(u.y, v.y);
  piece.box.add(c.x - hx, c.y - hy);
  piece.box.add(c.x + hx, c.y + hy);
  shape.pieces.push_back(std::move(piece));
}

void addArcOfPlane(Shape& shape, const Ocs& ocs, const Point3d& centerWorld, double radius,
                   double start, double sweep, double tolerance) {
  addConic(shape, centerWorld, scaled(ocs.xAxis(), radius), scaled(ocs.yAxis(), radius), start,
           sweep, tolerance);
}

void addLwPolyline(Shape& shape, const LwPolylineEntity& pl, double tolerance) {
  if (pl.vertices.size() == 1) {
    addPoint(shape, getPointAt(pl, 0));
    return;
  }
  const Ocs ocs(pl.normal);
  const std::vector<BulgeSegment> parts = segments(pl);
  shape.pieces.reserve(shape.pieces.size() + parts.size());
  for (const BulgeSegment& s : parts) {
    if (s.isArc() && s.radius > 0.0) {
      addArcOfPlane(shape, ocs, s.center, s.radius, s.startAngle, s.sweep, tolerance);
    } else {
      addSegment(shape, s.start, s.end, tolerance);
    }
  }
}

// A 2D polyline is the lightweight one's geometry in the older form; the
// frame points of a spline-fit one are not on its path.
void addPolyline2d(Shape& shape, const Polyline2dEntity& pl, double tolerance) {
  LwPolylineEntity lw;
  lw.elevation = pl.elevation;
  lw.normal = pl.normal;
  lw.closed = pl.closed();
  for (const PolylineVertex& v : pl.vertices) {
    if ((v.flags & 16) == 0) lw.vertices.push_back({v.position.x, v.position.y, v.bulge});
  }
  addLwPolyline(shape, lw, tolerance);
}

void addSpline(Shape& shape, const SplineEntity& spline, double tolerance) {
  auto curve = std::make_unique<SplineCurve>(spline);
  if (curve->empty()) return;
  const std::vector<Point3d>& points = curve->points();
  // Degree one is its control polygon: exact segments beat refined samples.
  if (points.size() == 1 || curve->degree() == 1) {
    addPath(shape, points, false, tolerance);
    return;
  }
  Piece piece;
  piece.kind = Piece::Kind::Spline;
  piece.spline = curve.get();
  piece.first = piece.at(0.0);
  piece.last = piece.at(1.0);
  // The curve keeps within its control points' hull (weights are positive in
  // any sane drawing).
  for (const Point3d& p : points) piece.box.add(p.x, p.y);
  shape.splines.push_back(std::move(curve));
  shape.pieces.push_back(std::move(piece));
}

// Whatever else has extents meets others by the outline of its box. Its Z is
// known only when the box is flat.
void addOutline(Shape& shape, const Database& db, const Entity& entity, double tolerance) {
  const platform::Extents e = extentsOf(db, entity);
  if (e.isEmpty()) return;
  const double z = e.min.z == e.max.z ? e.min.z : 0.0;
  const std::vector<Point3d> corners{
      {e.min.x, e.min.y, z}, {e.max.x, e.min.y, z}, {e.max.x, e.max.y, z}, {e.min.x, e.max.y, z}};
  if (distanceXY(corners[0], corners[2]) <= tolerance) {
    addPoint(shape, corners[0]);
    return;
  }
  addPath(shape, corners, true, tolerance);
}

}  // namespace

// ---- boxes and pieces ------------------------------------------------------------

void Box2::add(double x, double y) {
  x0 = std::min(x0, x);
  y0 = std::min(y0, y);
  x1 = std::max(x1, x);
  y1 = std::max(y1, y);
}

void Box2::add(const Box2& other) {
  x0 = std::min(x0, other.x0);
  y0 = std::min(y0, other.y0);
  x1 = std::max(x1, other.x1);
  y1 = std::max(y1, other.y1);
}

double Box2::diagonal() const {
  return x1 >= x0 ? normXY(x1 - x0, y1 - y0) : 0.0;
}

Point3d Piece::at(double s) const {
  switch (kind) {
    case Kind::Point:
      return p0;
    case Kind::Segment:
      return plus(p0, scaled(minus(p1, p0), s));
    case Kind::Conic: {
      const double t = t0 + s * sweep;
      return plus(c, plus(scaled(u, std::cos(t)), scaled(v, std::sin(t))));
    }
    case Kind::Spline:
      return spline->at(spline->start() + s * (spline->end() - spline->start()));
  }
  return p0;
}

Point3d Piece::velocity(double s) const {
  switch (kind) {
    case Kind::Point:
      return {};
    case Kind::Segment:
      return minus(p1, p0);
    case Kind::Conic: {
      const double t = t0 + s * sweep;
      return scaled(plus(scaled(u, -std::sin(t)), scaled(v, std::cos(t))), sweep);
    }
    case Kind::Spline: {
      const double range = spline->end() - spline->start();
      return scaled(spline->derivative(spline->start() + s * range), range);
    }
  }
  return {};
}

bool Piece::closedLoop() const {
  if (kind == Kind::Conic) return std::fabs(sweep) >= kTwoPi - 1e-12;
  if (kind == Kind::Spline) return length(minus(at(0.0), at(1.0))) <= 1e-12 * spline->size();
  return false;
}

const Flat& Piece::flattened(double tolerance) const {
  if (flat) return *flat;
  flat = std::make_unique<Flat>();
  Flat& f = *flat;
  switch (kind) {
    case Kind::Point:
      f.params = {0.0};
      f.points = {p0};
      break;
    case Kind::Segment:
      f.params = {0.0, 1.0};
      f.points = {p0, p1};
      break;
    case Kind::Conic: {
      f.tolerance = std::max(tolerance, kFlatRelative * std::max(length(u), length(v)));
      // Quarter turns at most, so that no piece of the adaptive split closes
      // on itself.
      const int quarters = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / (kPi / 2))));
      auto on = [this](double s) { return at(s); };
      f.params = {0.0};
      f.points = {at(0.0)};
      for (int i = 1; i <= quarters; ++i) {
        const double s = static_cast<double>(i) / quarters;
        const Point3d from = f.points.back();  // the pushes below may move it
        flatten::adaptive(on, f.params.back(), from, s, at(s), f.tolerance, 0, f.params, f.points);
      }
      break;
    }
    case Kind::Spline: {
      f.tolerance = std::max(tolerance, kFlatRelative * spline->size());
      spline->sample(f.tolerance, f.params, f.points);
      const double start = spline->start();
      const double range = spline->end() - start;
      for (double& t : f.params) t = (t - start) / range;
      break;
    }
  }
  return f;
}

Shape shapeOf(const Database& db, const Entity& entity, double tolerance) {
  Shape shape;
  switch (entity.kind()) {
    case EntityKind::Point:
      addPoint(shape, static_cast<const PointEntity&>(entity).position);
      break;
    case EntityKind::Line: {
      const auto& l = static_cast<const LineEntity&>(entity);
      addSegment(shape, l.start, l.end, tolerance);
      break;
    }
    case EntityKind::Arc: {
      const auto& a = static_cast<const ArcEntity&>(entity);
      const Ocs ocs(a.normal);
      addArcOfPlane(shape, ocs, ocs.toWorld(a.center), a.radius, a.startAngle,
                    sweepOf(a.startAngle, a.endAngle), tolerance);
      break;
    }
    case EntityKind::Circle: {
      const auto& c = static_cast<const CircleEntity&>(entity);
      const Ocs ocs(c.normal);
      addArcOfPlane(shape, ocs, ocs.toWorld(c.center), c.radius, 0.0, kTwoPi, tolerance);
      break;
    }
    case EntityKind::Ellipse: {
      const auto& e = static_cast<const EllipseEntity&>(entity);
      const Point3d minor = scaled(cross(unit(e.normal), e.majorAxis), e.ratio);
      addConic(shape, e.center, e.majorAxis, minor, e.startParam, sweepOf(e.startParam, e.endParam),
               tolerance);
      break;
    }
    case EntityKind::LwPolyline:
      addLwPolyline(shape, static_cast<const LwPolylineEntity&>(entity), tolerance);
      break;
    case EntityKind::Polyline2d:
      addPolyline2d(shape, static_cast<const Polyline2dEntity&>(entity), tolerance);
      break;
    case EntityKind::Polyline3d:
      addPath(shape, vertexPositions(entity), static_cast<const Polyline3dEntity&>(entity).closed(),
              tolerance);
      break;
    case EntityKind::Mline:
      addPath(shape, vertexPositions(entity), static_cast<const MlineEntity&>(entity).closed(),
              tolerance);
      break;
    case EntityKind::Spline:
      addSpline(shape, static_cast<const SplineEntity&>(entity), tolerance);
      break;
    case EntityKind::Text:
    case EntityKind::MText:
    case EntityKind::BlockReference:
    case EntityKind::Attribute:
    case EntityKind::AttributeDefinition:
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
    case EntityKind::Unknown:
      addOutline(shape, db, entity, tolerance);
      break;
  }
  for (const Piece& p : shape.pieces) shape.box.add(p.box);
  return shape;
}

}  // namespace host::geometry
