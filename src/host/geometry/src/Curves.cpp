// Curves of the drawing in world coordinates. Polylines and mlines become one
// path of straight and circular segments, so that all of them answer the same
// way; splines are asked through their evaluation.
#include "host/geometry/Curves.h"

#include <algorithm>
#include <cmath>

#include "CurveMath.h"
#include "Splines.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

// A vertex that only frames a spline-fitted polyline's curve: the drawn path
// does not pass through it.
constexpr std::int16_t kFrameVertex = 16;
// Ellipse samples per turn for the nearest-point search: enough that every
// dip of the distance shows between them, even for flat ellipses.
constexpr int kEllipseSamples = 128;
constexpr int kSplineSamplesPerSpan = 16;
// Relative accuracy of an ellipse's length.
constexpr double kLengthTolerance = 1e-13;
// A spline's length is that of chords this close to it, relative to its size:
// they fall short of the curve by a few parts in a billion.
constexpr double kSplineSampleTolerance = 1e-8;

struct PathSegment {
  Point3d start;
  Point3d end;
  double bulge = 0.0;  // zero for a straight segment
  bool arc = false;
  PlanarArc shape;  // when an arc
};

// Vertices and segments of a polyline or mline, in world coordinates; the
// arcs keep their shape in the plane of the path's coordinate system.
struct Path {
  Ocs ocs{kUnitZ};
  std::vector<Point3d> vertices;
  std::vector<PathSegment> segments;
};

struct PlaneVertex {
  double x = 0.0;
  double y = 0.0;
  double bulge = 0.0;
};

std::size_t segmentCount(std::size_t vertices, bool closed) {
  if (vertices < 2) return 0;
  return closed ? vertices : vertices - 1;
}

Path planarPath(const Point3d& normal, double elevation, const std::vector<PlaneVertex>& vertices,
                bool closed) {
  Path path;
  path.ocs = Ocs(normal);
  for (const PlaneVertex& v : vertices)
    path.vertices.push_back(path.ocs.toWorld({v.x, v.y, elevation}));
  const std::size_t n = vertices.size();
  for (std::size_t i = 0; i < segmentCount(n, closed); ++i) {
    const PlaneVertex& a = vertices[i];
    const PlaneVertex& b = vertices[(i + 1) % n];
    PathSegment segment;
    segment.start = path.vertices[i];
    segment.end = path.vertices[(i + 1) % n];
    segment.arc = bulgeArc(a.x, a.y, b.x, b.y, a.bulge, elevation, segment.shape);
    segment.bulge = segment.arc ? a.bulge : 0.0;
    path.segments.push_back(segment);
  }
  return path;
}

Path straightPath(std::vector<Point3d> points, bool closed) {
  Path path;
  path.vertices = std::move(points);
  const std::size_t n = path.vertices.size();
  for (std::size_t i = 0; i < segmentCount(n, closed); ++i) {
    PathSegment segment;
    segment.start = path.vertices[i];
    segment.end = path.vertices[(i + 1) % n];
    path.segments.push_back(segment);
  }
  return path;
}

std::vector<PlaneVertex> planeVertices(const LwPolylineEntity& polyline) {
  std::vector<PlaneVertex> vertices;
  for (const LwVertex& v : polyline.vertices) vertices.push_back({v.x, v.y, v.bulge});
  return vertices;
}

}  // namespace

bool isCurve(const Entity& entity) {
  return platform::isCurve(entity.kind());
}

std::optional<CurveKind> curveKindOf(EntityKind kind) {
  switch (kind) {
    case EntityKind::Line: return CurveKind::Line;
    case EntityKind::Arc: return CurveKind::Arc;
    case EntityKind::Circle: return CurveKind::Circle;
    case EntityKind::Ellipse: return CurveKind::Ellipse;
    case EntityKind::LwPolyline: return CurveKind::LwPolyline;
    case EntityKind::Polyline2d: return CurveKind::Polyline2d;
    case EntityKind::Polyline3d: return CurveKind::Polyline3d;
    case EntityKind::Spline: return CurveKind::Spline;
    case EntityKind::Mline: return CurveKind::Mline;
    case EntityKind::Point:
    case EntityKind::Text:
    case EntityKind::MText:
    case EntityKind::BlockReference:
    case EntityKind::Attribute:
    case EntityKind::AttributeDefinition:
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
    case EntityKind::Unknown:
      return std::nullopt;
  }
  return std::nullopt;
}

namespace {

std::optional<Path> pathOf(const Entity& entity) {
  const std::optional<CurveKind> kind = curveKindOf(entity.kind());
  if (!kind) return std::nullopt;
  switch (*kind) {
    case CurveKind::LwPolyline: {
      const auto& p = static_cast<const LwPolylineEntity&>(entity);
      return planarPath(p.normal, p.elevation, planeVertices(p), p.closed);
    }
    case CurveKind::Polyline2d: {
      // The vertices lie in the polyline's plane at its elevation, whatever Z
      // they carry themselves.
      const auto& p = static_cast<const Polyline2dEntity&>(entity);
      std::vector<PlaneVertex> vertices;
      for (const PolylineVertex& v : p.vertices) {
        if ((v.flags & kFrameVertex) != 0) continue;
        vertices.push_back({v.position.x, v.position.y, v.bulge});
      }
      return planarPath(p.normal, p.elevation, vertices, p.closed());
    }
    case CurveKind::Polyline3d: {
      const auto& p = static_cast<const Polyline3dEntity&>(entity);
      std::vector<Point3d> points;
      for (const PolylineVertex& v : p.vertices) {
        if ((v.flags & kFrameVertex) == 0) points.push_back(v.position);
      }
      return straightPath(std::move(points), p.closed());
    }
    case CurveKind::Mline: {
      const auto& m = static_cast<const MlineEntity&>(entity);
      std::vector<Point3d> points;
      for (const MlineVertex& v : m.vertices) points.push_back(v.position);
      return straightPath(std::move(points), m.closed());
    }
    case CurveKind::Line:
    case CurveKind::Arc:
    case CurveKind::Circle:
    case CurveKind::Ellipse:
    case CurveKind::Spline:
      return std::nullopt;
  }
  return std::nullopt;
}

Point3d lerp(const Point3d& a, const Point3d& b, double t) {
  return plus(a, scaled(minus(b, a), t));
}

Point3d segmentPoint(const Path& path, const PathSegment& segment, double fraction) {
  if (fraction <= 0.0) return segment.start;
  if (fraction >= 1.0) return segment.end;
  return segment.arc ? segment.shape.pointAt(path.ocs, fraction)
                     : lerp(segment.start, segment.end, fraction);
}

double segmentLength(const PathSegment& segment) {
  return segment.arc ? segment.shape.arcLength() : distance(segment.start, segment.end);
}

double lineFraction(const Point3d& a, const Point3d& b, const Point3d& to) {
  const Point3d d = minus(b, a);
  const double squared = dot(d, d);
  return squared > 0.0 ? std::clamp(dot(minus(to, a), d) / squared, 0.0, 1.0) : 0.0;
}

Point3d pathPoint(const Path& path, double param) {
  if (path.segments.empty()) return path.vertices.front();
  const std::size_t last = path.segments.size() - 1;
  const std::size_t i = std::min(static_cast<std::size_t>(std::max(param, 0.0)), last);
  return segmentPoint(path, path.segments[i], param - static_cast<double>(i));
}

Nearest pathNearest(const Path& path, const Point3d& to) {
  Nearest best{0.0, path.vertices.front(), distance(path.vertices.front(), to)};
  for (std::size_t i = 0; i < path.segments.size(); ++i) {
    const PathSegment& segment = path.segments[i];
    const double fraction = segment.arc ? segment.shape.nearestFraction(path.ocs, to)
                                        : lineFraction(segment.start, segment.end, to);
    const Point3d point = segmentPoint(path, segment, fraction);
    const double d = distance(point, to);
    if (d < best.distance) best = {static_cast<double>(i) + fraction, point, d};
  }
  return best;
}

// Arcs and circles as arcs of their plane, counterclockwise from the start.
PlanarArc arcOf(const ArcEntity& arc) {
  return {arc.center, arc.radius, arc.startAngle, ccwSweep(arc.startAngle, arc.endAngle)};
}
PlanarArc arcOf(const CircleEntity& circle) {
  return {circle.center, circle.radius, 0.0, kTwoPi};
}

// An ellipse's point at parameter t is centre + major cos t + minor sin t, the
// minor axis a quarter turn from the major about the normal.
struct EllipseFrame {
  Point3d center;
  Point3d major;
  Point3d minor;
  Point3d at(double t) const {
    return plus(center, plus(scaled(major, std::cos(t)), scaled(minor, std::sin(t))));
  }
  Point3d tangent(double t) const {
    return plus(scaled(major, -std::sin(t)), scaled(minor, std::cos(t)));
  }
};

EllipseFrame frameOf(const EllipseEntity& e) {
  return {e.center, e.majorAxis, scaled(cross(unit(e.normal), e.majorAxis), e.ratio)};
}

double ellipseSweep(const EllipseEntity& e) {
  return ccwSweep(e.startParam, e.endParam);
}

// The speed of the parameter changes sharply at the ends of the axes of a flat
// ellipse; the quadrature starts from pieces that end there. The length does
// not change by whole turns of the start.
double ellipseLength(const EllipseFrame& frame, double start, double sweep) {
  auto speed = [&](double t) { return length(frame.tangent(t)); };
  const double quarter = kPi / 2.0;
  const double t0 = normalizedAngle(start);
  const double t1 = t0 + sweep;
  double total = 0.0;
  double a = t0;
  for (int k = static_cast<int>(t0 / quarter) + 1; a < t1; ++k) {
    const double b = std::min(t1, k * quarter);
    if (b > a) total += integrate(speed, a, b, kLengthTolerance);
    a = b;
  }
  return total;
}

// The points a spline's knots run over: its control points, or its fit points
// when it has no others.
const std::vector<Point3d>& splinePoints(const SplineEntity& spline) {
  return spline.controlPoints.empty() ? spline.fitPoints : spline.controlPoints;
}

// The knots' domain runs from knot p to the one p from the end, p the degree
// the knots imply: the spline's own, or a lower one the knots were made up
// for (a spline of fit points only, or of fewer points than its degree needs).
std::optional<ParamRange> splineRange(const SplineEntity& spline) {
  const std::size_t points = splinePoints(spline).size();
  if (points == 0) return std::nullopt;
  const std::vector<double> knots = effectiveKnots(spline);
  if (knots.size() < points + 2) return std::nullopt;
  std::size_t p = knots.size() - points - 1;
  // A periodic spline's control points wrapped by its degree leave twice the
  // degree of extra knots.
  if (spline.degree >= 1 && p == 2 * static_cast<std::size_t>(spline.degree)) p /= 2;
  return ParamRange{knots[p], knots[knots.size() - 1 - p]};
}

// The size of the spline, for tolerances relative to it.
double splineSize(const SplineEntity& spline) {
  platform::Extents box;
  for (const Point3d& p : splinePoints(spline)) box.add(p);
  return box.isEmpty() ? 0.0 : distance(box.min, box.max);
}

double splineLength(const SplineEntity& spline) {
  const double size = splineSize(spline);
  if (size == 0.0) return 0.0;
  const std::vector<Point3d> points = sample(spline, size * kSplineSampleTolerance);
  double total = 0.0;
  for (std::size_t i = 1; i < points.size(); ++i) total += distance(points[i - 1], points[i]);
  return total;
}

std::vector<double> splineSamples(const SplineEntity& spline, const ParamRange& range) {
  std::vector<double> samples{range.start};
  for (const double knot : effectiveKnots(spline)) {
    const double from = samples.back();
    if (knot <= from || knot > range.end) continue;
    for (int s = 1; s <= kSplineSamplesPerSpan; ++s) {
      samples.push_back(from + (knot - from) * s / kSplineSamplesPerSpan);
    }
  }
  return samples;
}

Nearest splineNearest(const SplineEntity& spline, const ParamRange& range, const Point3d& to) {
  const double width = range.end - range.start;
  const std::vector<double> samples = splineSamples(spline, range);
  ParamCurve curve;
  curve.at = [&](double u) { return evaluate(spline, u); };
  // The splines give no derivative; a central difference small against the
  // parameter range and large against rounding does, one-sided at the ends.
  curve.tangent = [&](double u) {
    const double h = width * 1e-6;
    const double lo = std::max(range.start, u - h);
    const double hi = std::min(range.end, u + h);
    if (hi <= lo) return Point3d{};
    return scaled(minus(evaluate(spline, hi), evaluate(spline, lo)), 1.0 / (hi - lo));
  };
  const double u = nearestParam(curve, samples, to);
  const Point3d point = evaluate(spline, u);
  return {u, point, distance(point, to)};
}

// Samples over an angle range close enough that every dip of the distance
// shows between them, even for flat ellipses and for arcs seen nearly edge-on.
std::vector<double> angleSamples(const ParamRange& range) {
  const double sweep = range.end - range.start;
  const int count = std::max(16, static_cast<int>(std::ceil(kEllipseSamples * sweep / kTwoPi)));
  std::vector<double> samples;
  for (int i = 0; i <= count; ++i) samples.push_back(range.start + sweep * i / count);
  return samples;
}

// A parameter a hair outside the range, from rounding, counts as its end.
std::optional<double> withinRange(const ParamRange& range, double param) {
  const double slack = 1e-9 * std::max({1.0, std::fabs(range.start), std::fabs(range.end)});
  if (!(param >= range.start - slack && param <= range.end + slack)) return std::nullopt;
  return std::clamp(param, range.start, range.end);
}

}  // namespace


std::optional<ParamRange> paramRange(const Entity& curve) {
  const std::optional<CurveKind> kind = curveKindOf(curve.kind());
  if (!kind) return std::nullopt;
  switch (*kind) {
    case CurveKind::Line: {
      const auto& line = static_cast<const LineEntity&>(curve);
      return ParamRange{0.0, distance(line.start, line.end)};
    }
    case CurveKind::Arc: {
      const PlanarArc arc = arcOf(static_cast<const ArcEntity&>(curve));
      return ParamRange{arc.startAngle, arc.startAngle + arc.sweep};
    }
    case CurveKind::Circle:
      return ParamRange{0.0, kTwoPi};
    case CurveKind::Ellipse: {
      const auto& e = static_cast<const EllipseEntity&>(curve);
      if (!std::isfinite(e.startParam) || !std::isfinite(e.endParam)) return std::nullopt;
      return ParamRange{e.startParam, e.startParam + ellipseSweep(e)};
    }
    case CurveKind::Spline:
      return splineRange(static_cast<const SplineEntity&>(curve));
    case CurveKind::LwPolyline:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Mline: {
      const std::optional<Path> path = pathOf(curve);
      if (!path || path->vertices.empty()) return std::nullopt;
      return ParamRange{0.0, static_cast<double>(path->segments.size())};
    }
  }
  return std::nullopt;
}

std::optional<Point3d> pointAtParam(const Entity& curve, double param) {
  const std::optional<ParamRange> range = paramRange(curve);
  if (!range) return std::nullopt;
  const std::optional<double> u = withinRange(*range, param);
  if (!u) return std::nullopt;
  const std::optional<CurveKind> kind = curveKindOf(curve.kind());
  if (!kind) return std::nullopt;
  switch (*kind) {
    case CurveKind::Line: {
      const auto& line = static_cast<const LineEntity&>(curve);
      if (range->end == 0.0) return line.start;
      return lerp(line.start, line.end, *u / range->end);
    }
    case CurveKind::Arc: {
      const auto& arc = static_cast<const ArcEntity&>(curve);
      return arcOf(arc).pointAtAngle(Ocs(arc.normal), *u);
    }
    case CurveKind::Circle: {
      const auto& circle = static_cast<const CircleEntity&>(curve);
      return arcOf(circle).pointAtAngle(Ocs(circle.normal), *u);
    }
    case CurveKind::Ellipse:
      return frameOf(static_cast<const EllipseEntity&>(curve)).at(*u);
    case CurveKind::Spline:
      return evaluate(static_cast<const SplineEntity&>(curve), *u);
    case CurveKind::LwPolyline:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Mline:
      return pathPoint(*pathOf(curve), *u);
  }
  return std::nullopt;
}

std::optional<Point3d> startPoint(const Entity& curve) {
  if (curve.kind() == EntityKind::Line) return static_cast<const LineEntity&>(curve).start;
  const std::optional<ParamRange> range = paramRange(curve);
  if (!range) return std::nullopt;
  return pointAtParam(curve, range->start);
}

std::optional<Point3d> endPoint(const Entity& curve) {
  if (curve.kind() == EntityKind::Line) return static_cast<const LineEntity&>(curve).end;
  const std::optional<ParamRange> range = paramRange(curve);
  if (!range) return std::nullopt;
  return pointAtParam(curve, range->end);
}

bool isClosed(const Entity& curve) {
  const std::optional<CurveKind> kind = curveKindOf(curve.kind());
  if (!kind) return false;
  switch (*kind) {
    case CurveKind::Circle:
      return true;
    case CurveKind::Ellipse:
      return ellipseSweep(static_cast<const EllipseEntity&>(curve)) == kTwoPi;
    case CurveKind::Spline: {
      // A spline is closed by its flags, or when its ends meet, as a closed
      // spline written with clamped knots does.
      const auto& spline = static_cast<const SplineEntity&>(curve);
      const std::optional<Point3d> start = startPoint(curve);
      const std::optional<Point3d> end = endPoint(curve);
      if (!start || !end) return false;
      constexpr std::int16_t kClosedOrPeriodic = 1 | 2;
      return (spline.flags & kClosedOrPeriodic) != 0 ||
             distance(*start, *end) <= 1e-10 * splineSize(spline);
    }
    case CurveKind::LwPolyline:
      return static_cast<const LwPolylineEntity&>(curve).closed;
    case CurveKind::Polyline2d:
      return static_cast<const Polyline2dEntity&>(curve).closed();
    case CurveKind::Polyline3d:
      return static_cast<const Polyline3dEntity&>(curve).closed();
    case CurveKind::Mline:
      return static_cast<const MlineEntity&>(curve).closed();
    case CurveKind::Line:
    case CurveKind::Arc:
      return false;
  }
  return false;
}

std::optional<double> curveLength(const Entity& curve) {
  const std::optional<CurveKind> kind = curveKindOf(curve.kind());
  if (!kind) return std::nullopt;
  switch (*kind) {
    case CurveKind::Line: {
      const auto& line = static_cast<const LineEntity&>(curve);
      return distance(line.start, line.end);
    }
    case CurveKind::Arc:
      return arcOf(static_cast<const ArcEntity&>(curve)).arcLength();
    case CurveKind::Circle:
      return arcOf(static_cast<const CircleEntity&>(curve)).arcLength();
    case CurveKind::Ellipse: {
      const auto& e = static_cast<const EllipseEntity&>(curve);
      if (!paramRange(e)) return std::nullopt;
      return ellipseLength(frameOf(e), e.startParam, ellipseSweep(e));
    }
    case CurveKind::Spline: {
      const auto& spline = static_cast<const SplineEntity&>(curve);
      if (!splineRange(spline)) return std::nullopt;
      return splineLength(spline);
    }
    case CurveKind::LwPolyline:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Mline: {
      const std::optional<Path> path = pathOf(curve);
      if (!path || path->vertices.empty()) return std::nullopt;
      double total = 0.0;
      for (const PathSegment& segment : path->segments) total += segmentLength(segment);
      return total;
    }
  }
  return std::nullopt;
}

std::optional<Nearest> nearestPoint(const Entity& curve, const Point3d& to) {
  const std::optional<ParamRange> range = paramRange(curve);
  if (!range) return std::nullopt;
  auto onArc = [&](const PlanarArc& arc, const Point3d& normal) {
    const Ocs ocs(normal);
    const double fraction = arc.nearestFraction(ocs, to);
    const Point3d point = arc.pointAt(ocs, fraction);
    return Nearest{arc.startAngle + fraction * arc.sweep, point, distance(point, to)};
  };
  const std::optional<CurveKind> kind = curveKindOf(curve.kind());
  if (!kind) return std::nullopt;
  switch (*kind) {
    case CurveKind::Line: {
      const auto& line = static_cast<const LineEntity&>(curve);
      const double fraction = lineFraction(line.start, line.end, to);
      const Point3d point = lerp(line.start, line.end, fraction);
      return Nearest{fraction * range->end, point, distance(point, to)};
    }
    case CurveKind::Arc: {
      const auto& arc = static_cast<const ArcEntity&>(curve);
      return onArc(arcOf(arc), arc.normal);
    }
    case CurveKind::Circle: {
      const auto& circle = static_cast<const CircleEntity&>(curve);
      return onArc(arcOf(circle), circle.normal);
    }
    case CurveKind::Ellipse: {
      const EllipseFrame frame = frameOf(static_cast<const EllipseEntity&>(curve));
      const std::vector<double> samples = angleSamples(*range);
      ParamCurve path;
      path.at = [&](double t) { return frame.at(t); };
      path.tangent = [&](double t) { return frame.tangent(t); };
      const double t = nearestParam(path, samples, to);
      const Point3d point = frame.at(t);
      return Nearest{t, point, distance(point, to)};
    }
    case CurveKind::Spline:
      return splineNearest(static_cast<const SplineEntity&>(curve), *range, to);
    case CurveKind::LwPolyline:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Mline:
      return pathNearest(*pathOf(curve), to);
  }
  return std::nullopt;
}

namespace {

Point3d flat(const Point3d& p) {
  return {p.x, p.y, 0.0};
}

// The nearest parameter, in plan, of a smooth curve given by its points: the
// tangent is a central difference, one-sided at the ends.
double planNearestParam(const std::function<Point3d(double)>& at, const ParamRange& range,
                        const std::vector<double>& samples, const Point3d& to) {
  const double h = (range.end - range.start) * 1e-7;
  ParamCurve curve;
  curve.at = [&](double u) { return flat(at(u)); };
  curve.tangent = [&](double u) {
    const double lo = std::max(range.start, u - h);
    const double hi = std::min(range.end, u + h);
    if (hi <= lo) return Point3d{};
    return scaled(minus(flat(at(hi)), flat(at(lo))), 1.0 / (hi - lo));
  };
  return nearestParam(curve, samples, flat(to));
}

// Segment by segment: a straight one exactly, an arc by its own samples.
Nearest pathNearestInPlan(const Path& path, const Point3d& to) {
  const Point3d target = flat(to);
  Nearest best{0.0, path.vertices.front(), distance(flat(path.vertices.front()), target)};
  for (std::size_t i = 0; i < path.segments.size(); ++i) {
    const PathSegment& segment = path.segments[i];
    double fraction = 0.0;
    if (segment.arc) {
      // Samples as dense by angle as a whole arc's, as fractions of this one.
      const double sweep = std::fabs(segment.shape.sweep);
      std::vector<double> samples = angleSamples({0.0, sweep});
      for (double& f : samples) f /= sweep;
      auto at = [&](double f) { return segmentPoint(path, segment, f); };
      fraction = planNearestParam(at, {0.0, 1.0}, samples, to);
    } else {
      fraction = lineFraction(flat(segment.start), flat(segment.end), target);
    }
    const Point3d point = segmentPoint(path, segment, fraction);
    const double d = distance(flat(point), target);
    if (d < best.distance) best = {static_cast<double>(i) + fraction, point, d};
  }
  return best;
}

// The normal of a curve that lies in a plane by its kind; nothing for one
// that need not.
std::optional<Point3d> planeNormal(const Entity& curve, CurveKind kind) {
  switch (kind) {
    case CurveKind::Arc:
      return static_cast<const ArcEntity&>(curve).normal;
    case CurveKind::Circle:
      return static_cast<const CircleEntity&>(curve).normal;
    case CurveKind::Ellipse:
      return static_cast<const EllipseEntity&>(curve).normal;
    case CurveKind::LwPolyline:
      return static_cast<const LwPolylineEntity&>(curve).normal;
    case CurveKind::Polyline2d:
      return static_cast<const Polyline2dEntity&>(curve).normal;
    case CurveKind::Line:
    case CurveKind::Polyline3d:
    case CurveKind::Spline:
    case CurveKind::Mline:
      break;
  }
  return std::nullopt;
}

}  // namespace

std::optional<Nearest> nearestPointInPlan(const Entity& curve, const Point3d& to) {
  const std::optional<ParamRange> range = paramRange(curve);
  const std::optional<CurveKind> kind = curveKindOf(curve.kind());
  if (!range || !kind) return std::nullopt;
  // A curve in a level plane is met where the point, brought to the plane's
  // height, is nearest: the exact answer the kind already gives.
  if (const std::optional<Point3d> normal = planeNormal(curve, *kind);
      normal && normal->x == 0.0 && normal->y == 0.0) {
    const Point3d onCurve = *pointAtParam(curve, range->start);
    std::optional<Nearest> nearest = nearestPoint(curve, {to.x, to.y, onCurve.z});
    if (nearest) nearest->distance = distance(flat(nearest->point), flat(to));
    return nearest;
  }
  std::vector<double> samples;
  switch (*kind) {
    case CurveKind::Line: {
      const auto& line = static_cast<const LineEntity&>(curve);
      const double fraction = lineFraction(flat(line.start), flat(line.end), flat(to));
      const Point3d point = lerp(line.start, line.end, fraction);
      return Nearest{fraction * range->end, point, distance(flat(point), flat(to))};
    }
    case CurveKind::Arc:
    case CurveKind::Circle:
    case CurveKind::Ellipse:
      samples = angleSamples(*range);
      break;
    case CurveKind::Spline:
      samples = splineSamples(static_cast<const SplineEntity&>(curve), *range);
      break;
    case CurveKind::LwPolyline:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Mline:
      return pathNearestInPlan(*pathOf(curve), to);
  }
  auto at = [&](double u) { return *pointAtParam(curve, u); };
  const double u = planNearestParam(at, *range, samples, to);
  const Point3d point = at(u);
  return Nearest{u, point, distance(flat(point), flat(to))};
}

int numVerts(const LwPolylineEntity& polyline) {
  return static_cast<int>(polyline.vertices.size());
}

Point3d getPointAt(const LwPolylineEntity& polyline, int index) {
  if (index < 0 || index >= numVerts(polyline)) return Point3d{};
  const LwVertex& v = polyline.vertices[static_cast<std::size_t>(index)];
  return Ocs(polyline.normal).toWorld({v.x, v.y, polyline.elevation});
}

std::vector<BulgeSegment> segments(const LwPolylineEntity& polyline) {
  const Path path = *pathOf(polyline);
  std::vector<BulgeSegment> result;
  for (const PathSegment& s : path.segments) {
    BulgeSegment segment;
    segment.start = s.start;
    segment.end = s.end;
    segment.bulge = s.bulge;
    if (s.arc) {
      segment.center = path.ocs.toWorld(s.shape.center);
      segment.radius = s.shape.radius;
      segment.startAngle = s.shape.startAngle;
      segment.sweep = s.shape.sweep;
    }
    result.push_back(segment);
  }
  return result;
}

std::vector<std::unique_ptr<Entity>> explode(const LwPolylineEntity& polyline) {
  const Path path = *pathOf(polyline);
  std::vector<std::unique_ptr<Entity>> pieces;
  for (const PathSegment& s : path.segments) {
    if (s.arc) {
      // Arcs run counterclockwise about the normal: one the bulge turns
      // clockwise is the same arc from its end to its start.
      auto arc = std::make_unique<ArcEntity>();
      arc->center = s.shape.center;
      arc->radius = s.shape.radius;
      arc->normal = polyline.normal;
      const double from = s.shape.startAngle;
      const double to = from + s.shape.sweep;
      arc->startAngle = normalizedAngle(s.shape.sweep > 0.0 ? from : to);
      arc->endAngle = normalizedAngle(s.shape.sweep > 0.0 ? to : from);
      copyCommonProperties(polyline, *arc);
      pieces.push_back(std::move(arc));
    } else if (s.start != s.end) {
      // A segment between coincident vertices has nothing to draw.
      auto line = std::make_unique<LineEntity>();
      line->start = s.start;
      line->end = s.end;
      copyCommonProperties(polyline, *line);
      pieces.push_back(std::move(line));
    }
  }
  return pieces;
}

double area(const LwPolylineEntity& polyline) {
  // In the polyline's own plane, where its vertices are; the normal and the
  // elevation move the figure without changing its area.
  const std::vector<LwVertex>& v = polyline.vertices;
  const std::size_t n = v.size();
  if (n < 2) return 0.0;
  // The shoelace, about the first vertex: far from the origin, coordinates'
  // products would drown the area's digits.
  double twice = 0.0;
  for (std::size_t i = 1; i + 1 < n; ++i) {
    const double ax = v[i].x - v[0].x;
    const double ay = v[i].y - v[0].y;
    const double bx = v[i + 1].x - v[0].x;
    const double by = v[i + 1].y - v[0].y;
    twice += ax * by - bx * ay;
  }
  double signedArea = twice / 2.0;
  for (std::size_t i = 0; i < segmentCount(n, polyline.closed); ++i) {
    const LwVertex& a = v[i];
    const LwVertex& b = v[(i + 1) % n];
    signedArea += bulgeSegmentArea(a.x, a.y, b.x, b.y, a.bulge);
  }
  return std::fabs(signedArea);
}

std::vector<Point3d> vertexPositions(const Entity& polylineOrMline) {
  std::optional<Path> path = pathOf(polylineOrMline);
  return path ? std::move(path->vertices) : std::vector<Point3d>{};
}

}  // namespace host::geometry
