// Rational B-splines: their knots, evaluation by de Boor's algorithm, adaptive
// sampling, exact copies of arcs, circles and ellipses, and polylines made
// from them.
#include "Splines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "IntersectSpline.h"
#include "host/geometry/Curves.h"
#include "host/geometry/Ocs.h"
#include "host/geometry/SplineFit.h"

namespace host::geometry {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;
constexpr std::int16_t kClosed = 1;
constexpr std::int16_t kPeriodic = 2;
constexpr std::int16_t kRational = 4;
constexpr std::int16_t kPlanar = 8;

std::vector<double> uniformClamped(std::size_t count, int degree) {
  const std::size_t p = static_cast<std::size_t>(degree);
  const std::size_t interior = count - p - 1;
  std::vector<double> knots(p + 1, 0.0);
  for (std::size_t i = 1; i <= interior; ++i) {
    knots.push_back(static_cast<double>(i) / static_cast<double>(interior + 1));
  }
  knots.insert(knots.end(), p + 1, 1.0);
  return knots;
}

// Knots evaluation can run on: the right count, never decreasing, and a
// domain of some length.
bool usableKnots(const std::vector<double>& knots, std::size_t count, int degree) {
  if (knots.size() != count + static_cast<std::size_t>(degree) + 1) return false;
  for (std::size_t i = 0; i < knots.size(); ++i) {
    if (!std::isfinite(knots[i]) || (i > 0 && knots[i] < knots[i - 1])) return false;
  }
  return knots[static_cast<std::size_t>(degree)] < knots[count];
}

// A sweep in (0, 2 pi]; equal start and end mean the whole turn.
double normalSweep(double start, double end) {
  double sweep = std::fmod(end - start, kTwoPi);
  if (sweep <= 1e-12) sweep += kTwoPi;
  return sweep;
}

// The conic c + u cos t + v sin t for t from t0 over the sweep, as rational
// quadratic pieces of at most a quarter turn each: the circle's pieces are
// exact, and an ellipse is the affine image of a circle, which keeps them so.
std::unique_ptr<SplineEntity> conicSpline(const Point3d& c, const Point3d& u, const Point3d& v,
                                          double t0, double sweep, const Point3d& normal) {
  const bool closed = sweep >= kTwoPi - 1e-12;
  const int pieces = std::max(1, static_cast<int>(std::ceil(sweep / (kPi / 2.0) - 1e-9)));
  const double step = sweep / pieces;
  const double w = std::cos(step / 2.0);
  auto on = [&](double t) { return plus(c, plus(scaled(u, std::cos(t)), scaled(v, std::sin(t)))); };

  auto spline = std::make_unique<SplineEntity>();
  spline->degree = 2;
  spline->flags = static_cast<std::int16_t>(kRational | kPlanar | (closed ? kClosed : 0));
  spline->normal = unit(normal);
  spline->controlPoints.push_back(on(t0));
  spline->weights.push_back(1.0);
  spline->knots = {0.0, 0.0, 0.0};
  for (int i = 0; i < pieces; ++i) {
    const double mid = t0 + (i + 0.5) * step;
    // The tangents at a piece's ends meet at the middle direction, 1/cos(half
    // step) out from the centre.
    spline->controlPoints.push_back(
        plus(c, scaled(plus(scaled(u, std::cos(mid)), scaled(v, std::sin(mid))), 1.0 / w)));
    spline->weights.push_back(w);
    spline->controlPoints.push_back(on(t0 + (i + 1) * step));
    spline->weights.push_back(1.0);
    const double knot = static_cast<double>(i + 1) / pieces;
    spline->knots.insert(spline->knots.end(), i + 1 < pieces ? 2 : 3, knot);
  }
  if (closed) spline->controlPoints.back() = spline->controlPoints.front();
  return spline;
}

}  // namespace

// ---- the prepared curve ------------------------------------------------------

SplineCurve::SplineCurve(const SplineEntity& spline) {
  // A spline known by its fit points only is the curve through them that the
  // host draws from such points.
  if (spline.controlPoints.empty() && spline.fitPoints.size() >= 2) {
    const SplineEntity fitted = splineThrough(spline.fitPoints);
    if (!fitted.controlPoints.empty()) {
      *this = SplineCurve(fitted);
      return;
    }
  }
  points_ = spline.controlPoints.empty() ? spline.fitPoints : spline.controlPoints;
  const std::size_t n = points_.size();
  if (n == 0) return;
  if (n == 1 || spline.controlPoints.empty()) {
    // One point, or fit points that are all one point.
    points_.resize(1);
    degree_ = 1;
    knots_ = {0.0, 0.0};
    return;
  }
  const bool rational = (spline.flags & kRational) != 0 || !spline.weights.empty();
  if (rational) {
    weights_ = spline.weights.size() == n ? spline.weights : std::vector<double>(n, 1.0);
  }
  degree_ = spline.degree;
  const std::size_t p = static_cast<std::size_t>(std::max(degree_, 1));
  // A periodic spline may list its distinct control points only, with knots
  // for the wrapped set: the first degree points again at the end.
  const bool periodic = (spline.flags & (kPeriodic | kClosed)) != 0;
  if (periodic && degree_ >= 1 && spline.knots.size() == n + 2 * p + 1 && n >= p) {
    for (std::size_t i = 0; i < p; ++i) {
      points_.push_back(points_[i]);
      if (rational) weights_.push_back(weights_[i]);
    }
  }
  if (degree_ >= 1 && usableKnots(spline.knots, points_.size(), degree_)) {
    knots_ = spline.knots;
  } else {
    points_.resize(n);
    if (rational) weights_.resize(n);
    degree_ = std::clamp(degree_, 1, static_cast<int>(n) - 1);
    knots_ = uniformClamped(n, degree_);
  }
  start_ = knots_[static_cast<std::size_t>(degree_)];
  end_ = knots_[points_.size()];
}

Point3d SplineCurve::at(double param) const {
  const std::size_t n = points_.size();
  if (n == 0) return {};
  if (n == 1) return points_[0];
  const double t = std::clamp(param, start_, end_);
  const std::size_t p = static_cast<std::size_t>(degree_);
  // The span: the last knot interval [k, k+1) of the domain that holds t.
  auto it = std::upper_bound(knots_.begin() + static_cast<std::ptrdiff_t>(p),
                             knots_.begin() + static_cast<std::ptrdiff_t>(n), t);
  std::size_t k = static_cast<std::size_t>(it - knots_.begin());
  k = std::clamp<std::size_t>(k == 0 ? 0 : k - 1, p, n - 1);
  while (k > p && knots_[k] >= knots_[k + 1]) --k;

  // Homogeneous points (w x, w y, w z, w), so that a rational curve is the
  // projection of a polynomial one.
  constexpr std::size_t kInline = 16;
  std::array<std::array<double, 4>, kInline> inlineBuffer;
  std::vector<std::array<double, 4>> heapBuffer;
  std::array<double, 4>* d = inlineBuffer.data();
  if (p + 1 > kInline) {
    heapBuffer.resize(p + 1);
    d = heapBuffer.data();
  }
  for (std::size_t j = 0; j <= p; ++j) {
    const std::size_t i = j + k - p;
    const double w = weights_.empty() ? 1.0 : weights_[i];
    d[j] = {points_[i].x * w, points_[i].y * w, points_[i].z * w, w};
  }
  for (std::size_t r = 1; r <= p; ++r) {
    for (std::size_t j = p; j >= r; --j) {
      const std::size_t i = j + k - p;
      const double span = knots_[i + p - r + 1] - knots_[i];
      const double alpha = span > 0.0 ? (t - knots_[i]) / span : 0.0;
      for (int c = 0; c < 4; ++c) d[j][c] = (1.0 - alpha) * d[j - 1][c] + alpha * d[j][c];
    }
  }
  const std::array<double, 4>& h = d[p];
  const double w = h[3] != 0.0 ? h[3] : 1.0;
  return {h[0] / w, h[1] / w, h[2] / w};
}

Point3d SplineCurve::derivative(double param) const {
  const double h = 1e-6 * (end_ - start_);
  if (!(h > 0.0)) return {};
  const double lo = std::max(start_, param - h);
  const double hi = std::min(end_, param + h);
  return scaled(minus(at(hi), at(lo)), 1.0 / (hi - lo));
}

std::vector<double> SplineCurve::breaks() const {
  std::vector<double> out;
  if (empty()) return out;
  out.push_back(start_);
  for (double k : knots_) {
    if (k > out.back() && k < end_) out.push_back(k);
  }
  if (end_ > out.back()) out.push_back(end_);
  return out;
}

double SplineCurve::size() const {
  platform::Extents box;
  for (const Point3d& p : points_) box.add(p);
  return box.isEmpty() ? 0.0 : length(minus(box.max, box.min));
}

void SplineCurve::sample(double tolerance, std::vector<double>& params,
                         std::vector<Point3d>& points) const {
  params.clear();
  points.clear();
  if (empty()) return;
  const std::vector<double> spans = breaks();
  params.push_back(spans.front());
  points.push_back(at(spans.front()));
  // A span of degree two or more can bend back to its start, where its chord
  // says nothing; one forced halving always sees the bend.
  const int minDepth = degree_ >= 2 ? 1 : 0;
  auto on = [this](double t) { return at(t); };
  for (std::size_t i = 1; i < spans.size(); ++i) {
    const Point3d from = points.back();  // the pushes below may move it
    flatten::adaptive(on, spans[i - 1], from, spans[i], at(spans[i]), tolerance, minDepth, params,
                      points);
  }
}

// ---- the public functions ----------------------------------------------------

std::vector<double> effectiveKnots(const SplineEntity& spline) {
  return SplineCurve(spline).knots();
}

Point3d evaluate(const SplineEntity& spline, double param) {
  return SplineCurve(spline).at(param);
}

namespace {

// A B-spline in homogeneous points (w x, w y, w z, w), for knot insertion.
struct HomogeneousSpline {
  std::size_t degree = 1;
  std::vector<double> knots;
  std::vector<std::array<double, 4>> points;
};

HomogeneousSpline homogeneous(const SplineCurve& curve) {
  HomogeneousSpline h;
  h.degree = static_cast<std::size_t>(curve.degree());
  h.knots = curve.knots();
  for (std::size_t i = 0; i < curve.points().size(); ++i) {
    const Point3d& p = curve.points()[i];
    const double w = curve.weights().empty() ? 1.0 : curve.weights()[i];
    h.points.push_back({p.x * w, p.y * w, p.z * w, w});
  }
  return h;
}

// Inserts the knot until it stands degree times, which splits the curve
// there without changing it (Boehm's insertion, once per pass).
void insertToFullMultiplicity(HomogeneousSpline& h, double u) {
  const std::size_t p = h.degree;
  while (static_cast<std::size_t>(std::count(h.knots.begin(), h.knots.end(), u)) < p) {
    const std::size_t n = h.points.size() - 1;
    const auto above = std::upper_bound(h.knots.begin(), h.knots.end(), u);
    const std::size_t k = std::min<std::size_t>(above - h.knots.begin() - 1, n);
    std::vector<std::array<double, 4>> q(h.points.size() + 1);
    for (std::size_t i = 0; i < q.size(); ++i) {
      if (i + p <= k) {
        q[i] = h.points[i];
      } else if (i > k) {
        q[i] = h.points[i - 1];
      } else {
        const double span = h.knots[i + p] - h.knots[i];
        const double a = span > 0.0 ? (u - h.knots[i]) / span : 0.0;
        for (int c = 0; c < 4; ++c) q[i][c] = (1.0 - a) * h.points[i - 1][c] + a * h.points[i][c];
      }
    }
    h.points = std::move(q);
    h.knots.insert(h.knots.begin() + static_cast<std::ptrdiff_t>(k + 1), u);
  }
}

std::unique_ptr<SplineEntity> toEntity(const SplineEntity& source, const HomogeneousSpline& h,
                                       bool rational) {
  auto spline = std::make_unique<SplineEntity>(source);
  spline->degree = static_cast<std::int16_t>(h.degree);
  spline->flags = static_cast<std::int16_t>(source.flags & ~(kClosed | kPeriodic));
  spline->knots = h.knots;
  spline->controlPoints.clear();
  spline->weights.clear();
  spline->fitPoints.clear();
  for (const auto& q : h.points) {
    const double w = q[3] != 0.0 ? q[3] : 1.0;
    spline->controlPoints.push_back({q[0] / w, q[1] / w, q[2] / w});
    if (rational) spline->weights.push_back(w);
  }
  return spline;
}

}  // namespace

std::unique_ptr<SplineEntity> splinePiece(const SplineEntity& spline, double from, double to) {
  const SplineCurve curve(spline);
  if (curve.points().size() < 2 || !(from < to)) return nullptr;
  HomogeneousSpline h = homogeneous(curve);
  insertToFullMultiplicity(h, from);
  insertToFullMultiplicity(h, to);
  const std::size_t p = h.degree;
  // With each end standing degree times (or more, clamped) the piece's control
  // points run from degree before the last copy of "from" to just before the
  // first copy of "to"; both ends stand clamped, degree + 1 times.
  const auto begin = h.knots.begin();
  const std::size_t lastOfFrom =
      static_cast<std::size_t>(std::upper_bound(begin, h.knots.end(), from) - begin) - 1;
  const std::size_t firstOfTo =
      static_cast<std::size_t>(std::lower_bound(begin, h.knots.end(), to) - begin);
  HomogeneousSpline piece;
  piece.degree = p;
  piece.points.assign(h.points.begin() + static_cast<std::ptrdiff_t>(lastOfFrom - p),
                      h.points.begin() + static_cast<std::ptrdiff_t>(firstOfTo));
  piece.knots.assign(p + 1, from);
  piece.knots.insert(piece.knots.end(), begin + static_cast<std::ptrdiff_t>(lastOfFrom + 1),
                     begin + static_cast<std::ptrdiff_t>(firstOfTo));
  piece.knots.insert(piece.knots.end(), p + 1, to);
  return toEntity(spline, piece, !curve.weights().empty());
}

std::unique_ptr<SplineEntity> joinedSplines(const SplineEntity& first, const SplineEntity& second) {
  if (first.degree != second.degree || first.knots.empty() || second.knots.empty()) return nullptr;
  auto joined = std::make_unique<SplineEntity>(first);
  const std::size_t p = static_cast<std::size_t>(first.degree);
  // The second's knots follow on from the first's end; the meeting point
  // stands once, its knot degree times.
  const double shift = first.knots.back() - second.knots.front();
  joined->knots.pop_back();
  for (std::size_t i = p + 1; i < second.knots.size(); ++i) {
    joined->knots.push_back(second.knots[i] + shift);
  }
  joined->controlPoints.insert(joined->controlPoints.end(), second.controlPoints.begin() + 1,
                               second.controlPoints.end());
  if (!first.weights.empty()) {
    joined->weights.insert(joined->weights.end(), second.weights.begin() + 1, second.weights.end());
  }
  return joined;
}

std::vector<Point3d> sample(const SplineEntity& spline, double tolerance) {
  const SplineCurve curve(spline);
  if (!(tolerance > 0.0) || !std::isfinite(tolerance)) tolerance = 1e-6 * curve.size();
  std::vector<double> params;
  std::vector<Point3d> points;
  curve.sample(tolerance, params, points);
  return points;
}

std::unique_ptr<SplineEntity> splineOf(const Entity& entity) {
  std::unique_ptr<SplineEntity> spline;
  const std::optional<CurveKind> kind = curveKindOf(entity.kind());
  if (!kind) return nullptr;
  switch (*kind) {
    case CurveKind::Arc:
    case CurveKind::Circle: {
      const bool arc = entity.kind() == EntityKind::Arc;
      const auto* a = arc ? static_cast<const ArcEntity*>(&entity) : nullptr;
      const auto* c = arc ? nullptr : static_cast<const CircleEntity*>(&entity);
      const Point3d normal = arc ? a->normal : c->normal;
      const double radius = arc ? a->radius : c->radius;
      const Ocs ocs(normal);
      const double start = arc ? a->startAngle : 0.0;
      const double sweep = arc ? normalSweep(a->startAngle, a->endAngle) : kTwoPi;
      spline = conicSpline(ocs.toWorld(arc ? a->center : c->center), scaled(ocs.xAxis(), radius),
                           scaled(ocs.yAxis(), radius), start, sweep, ocs.zAxis());
      break;
    }
    case CurveKind::Ellipse: {
      const auto& e = static_cast<const EllipseEntity&>(entity);
      const Point3d n = unit(e.normal);
      const Point3d minor = scaled(cross(n, e.majorAxis), e.ratio);
      spline = conicSpline(e.center, e.majorAxis, minor, e.startParam,
                           normalSweep(e.startParam, e.endParam), n);
      break;
    }
    case CurveKind::Line:
    case CurveKind::LwPolyline:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Spline:
    case CurveKind::Mline:
      return nullptr;
  }
  copyCommonProperties(entity, *spline);
  return spline;
}

std::unique_ptr<Entity> toPolyline(const SplineEntity& spline, int precision) {
  if (precision < 1) return nullptr;
  const SplineCurve curve(spline);
  if (curve.empty()) return nullptr;

  // Equal steps within each knot span: every span gets the precision, so more
  // precision always means more vertices. The total is capped to keep a wild
  // precision from exhausting memory.
  const std::vector<double> spans = curve.breaks();
  const std::size_t spanCount = std::max<std::size_t>(spans.size() - 1, 1);
  const std::size_t steps =
      std::max<std::size_t>(1, std::min<std::size_t>(static_cast<std::size_t>(precision),
                                                     (std::size_t{1} << 22) / spanCount));
  std::vector<Point3d> vertices;
  vertices.reserve(1 + (spans.size() - 1) * steps);
  vertices.push_back(curve.at(spans.front()));
  for (std::size_t i = 1; i < spans.size(); ++i) {
    for (std::size_t s = 1; s <= steps; ++s) {
      const double f = static_cast<double>(s) / static_cast<double>(steps);
      vertices.push_back(curve.at(spans[i - 1] + (spans[i] - spans[i - 1]) * f));
    }
  }
  // A closed polyline's last segment returns to the first vertex by itself.
  if (spline.closed() && vertices.size() > 2 &&
      length(minus(vertices.back(), vertices.front())) <= 1e-12 * curve.size()) {
    vertices.pop_back();
  }

  // Parallel to XY when every control point has the same Z, up to rounding
  // relative to the spline's size and place.
  double zMin = curve.points().front().z;
  double zMax = zMin;
  double scale = curve.size();
  for (const Point3d& p : curve.points()) {
    zMin = std::min(zMin, p.z);
    zMax = std::max(zMax, p.z);
    scale = std::max(scale, std::fabs(p.z));
  }
  std::unique_ptr<Entity> result;
  if (zMax - zMin <= 1e-9 * scale) {
    auto lw = std::make_unique<LwPolylineEntity>();
    lw->elevation = curve.points().front().z;
    lw->closed = spline.closed();
    lw->vertices.reserve(vertices.size());
    for (const Point3d& v : vertices) lw->vertices.push_back({v.x, v.y, 0.0});
    result = std::move(lw);
  } else {
    auto pl = std::make_unique<Polyline3dEntity>();
    pl->flags = static_cast<std::int16_t>(8 | (spline.closed() ? 1 : 0));
    pl->vertices.reserve(vertices.size());
    for (const Point3d& v : vertices) {
      PolylineVertex vertex;
      vertex.position = v;
      vertex.flags = 32;  // a 3D polyline's vertex, as files mark it
      pl->vertices.push_back(vertex);
    }
    result = std::move(pl);
  }
  copyCommonProperties(spline, *result);
  return result;
}

}  // namespace host::geometry
