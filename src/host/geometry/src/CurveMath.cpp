// Angles, planar arcs, bulges, quadrature and nearest-point search for the
// curve functions.
#include "CurveMath.h"

#include <array>
#include <cmath>

namespace host::geometry {
namespace {

// Sweeps this close to nothing come from angles meant to be equal, or a whole
// turn apart, and rounding; no drawing holds an arc that short.
constexpr double kNoSweep = 1e-12;

constexpr int kGaussOrder = 10;
struct GaussRule {
  std::array<double, kGaussOrder> nodes{};
  std::array<double, kGaussOrder> weights{};
};

// The nodes and weights on [-1, 1], found as the roots of the Legendre
// polynomial by Newton's method rather than typed in from a table.
GaussRule makeGaussRule() {
  GaussRule rule;
  const int n = kGaussOrder;
  for (int i = 0; i < (n + 1) / 2; ++i) {
    double x = std::cos(kPi * (i + 0.75) / (n + 0.5));
    double derivative = 1.0;
    for (int iteration = 0; iteration < 100; ++iteration) {
      double p0 = 1.0;
      double p1 = x;
      for (int k = 2; k <= n; ++k) {
        const double p2 = ((2.0 * k - 1.0) * x * p1 - (k - 1.0) * p0) / k;
        p0 = p1;
        p1 = p2;
      }
      derivative = n * (x * p1 - p0) / (x * x - 1.0);
      const double step = p1 / derivative;
      x -= step;
      if (std::fabs(step) < 1e-16) break;
    }
    const double w = 2.0 / ((1.0 - x * x) * derivative * derivative);
    rule.nodes[i] = -x;
    rule.weights[i] = w;
    rule.nodes[n - 1 - i] = x;
    rule.weights[n - 1 - i] = w;
  }
  return rule;
}

double gauss(const std::function<double(double)>& f, double a, double b) {
  static const GaussRule rule = makeGaussRule();
  const double half = (b - a) / 2.0;
  const double mid = (a + b) / 2.0;
  double sum = 0.0;
  for (int i = 0; i < kGaussOrder; ++i) sum += rule.weights[i] * f(mid + half * rule.nodes[i]);
  return sum * half;
}

// Halves of a panel are compared with the whole until they agree. The budget
// of panels and the depth stop a function that never settles (one of no
// finite value, or a tolerance below rounding) from splitting without end;
// fifty halvings are as fine as a double parameter can tell.
struct Quadrature {
  const std::function<double(double)>& f;
  int budget = 100000;

  double adaptive(double a, double b, double whole, double tol, int depth) {
    const double mid = (a + b) / 2.0;
    const double left = gauss(f, a, mid);
    const double right = gauss(f, mid, b);
    budget -= 2;
    if (budget <= 0 || depth >= 50 || !std::isfinite(left + right) ||
        std::fabs(left + right - whole) <= tol) {
      return left + right;
    }
    return adaptive(a, mid, left, tol / 2.0, depth + 1) +
           adaptive(mid, b, right, tol / 2.0, depth + 1);
  }
};

// The root of an increasing function that is negative at lo and positive at
// hi, by false position with the Illinois correction: superlinear where the
// function is smooth, and it keeps the root bracketed where it is not (a
// spline's kink).
double bracketedRoot(const std::function<double(double)>& g, double lo, double glo, double hi,
                     double ghi) {
  double c = lo;
  int side = 0;
  for (int iteration = 0; iteration < 200; ++iteration) {
    c = (lo * ghi - hi * glo) / (ghi - glo);
    if (!(c > lo && c < hi)) c = lo + (hi - lo) / 2.0;
    if (!(c > lo && c < hi)) break;  // the bracket is down to neighbouring doubles
    const double gc = g(c);
    if (gc == 0.0) return c;
    if (gc < 0.0) {
      lo = c;
      glo = gc;
      if (side == -1) ghi /= 2.0;
      side = -1;
    } else {
      hi = c;
      ghi = gc;
      if (side == 1) glo /= 2.0;
      side = 1;
    }
  }
  return c;
}

}  // namespace

double normalizedAngle(double angle) {
  double a = std::fmod(angle, kTwoPi);
  if (a < 0.0) a += kTwoPi;
  return a >= kTwoPi ? 0.0 : a;
}

double ccwSweep(double start, double end) {
  const double sweep = normalizedAngle(end - start);
  return sweep <= kNoSweep || kTwoPi - sweep <= kNoSweep ? kTwoPi : sweep;
}

Point3d PlanarArc::pointAtAngle(const Ocs& ocs, double angle) const {
  return ocs.toWorld(
      {center.x + radius * std::cos(angle), center.y + radius * std::sin(angle), center.z});
}

Point3d PlanarArc::pointAt(const Ocs& ocs, double fraction) const {
  return pointAtAngle(ocs, startAngle + fraction * sweep);
}

double PlanarArc::nearestFraction(const Ocs& ocs, const Point3d& world) const {
  // Off the plane or not, the nearest point of the circle lies in the direction
  // of the point's projection; outside the arc, the end nearer by angle wins.
  const Point3d q = ocs.fromWorld(world);
  const double dx = q.x - center.x;
  const double dy = q.y - center.y;
  const double total = std::fabs(sweep);
  if ((dx == 0.0 && dy == 0.0) || total == 0.0) return 0.0;
  const double phi = std::atan2(dy, dx);
  const double along =
      sweep > 0.0 ? normalizedAngle(phi - startAngle) : normalizedAngle(startAngle - phi);
  if (along <= total) return along / total;
  return along - total < kTwoPi - along ? 1.0 : 0.0;
}

double PlanarArc::arcLength() const {
  return std::fabs(radius * sweep);
}

bool bulgeArc(double ax, double ay, double bx, double by, double bulge, double elevation,
              PlanarArc& arc) {
  const double chord = std::hypot(bx - ax, by - ay);
  if (bulge == 0.0 || chord == 0.0) return false;
  // The centre lies off the chord's midpoint, to the left of its direction, by
  // chord * (1 - b^2) / (4 b): for a bulge of tan(theta / 4) that is the chord's
  // half over the tangent of half the included angle.
  const double offset = chord * (1.0 - bulge * bulge) / (4.0 * bulge);
  const double cx = (ax + bx) / 2.0 - (by - ay) / chord * offset;
  const double cy = (ay + by) / 2.0 + (bx - ax) / chord * offset;
  arc.center = {cx, cy, elevation};
  arc.radius = chord * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
  arc.startAngle = std::atan2(ay - cy, ax - cx);
  arc.sweep = 4.0 * std::atan(bulge);
  return true;
}

double bulgeSegmentArea(double ax, double ay, double bx, double by, double bulge) {
  const double chord = std::hypot(bx - ax, by - ay);
  if (bulge == 0.0 || chord == 0.0) return 0.0;
  const double theta = 4.0 * std::atan(bulge);
  const double radius = chord * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
  // theta - sin(theta) cancels for flat bulges; its series keeps the digits.
  const double t2 = theta * theta;
  const double excess = std::fabs(theta) < 1e-3
                            ? theta * t2 / 6.0 * (1.0 - t2 / 20.0 * (1.0 - t2 / 42.0))
                            : theta - std::sin(theta);
  return radius * radius / 2.0 * excess;
}

double integrate(const std::function<double(double)>& f, double a, double b, double relTol) {
  if (a == b) return 0.0;
  const double whole = gauss(f, a, b);
  Quadrature quadrature{f};
  return quadrature.adaptive(a, b, whole, relTol * std::fabs(whole), 0);
}

double nearestParam(const ParamCurve& curve, const std::vector<double>& samples,
                    const Point3d& to) {
  if (samples.empty()) return 0.0;
  auto squared = [&](double u) {
    const Point3d d = minus(curve.at(u), to);
    return dot(d, d);
  };
  // Half the derivative of the squared distance: it rises through zero where
  // the distance has a minimum.
  auto slope = [&](double u) { return dot(minus(curve.at(u), to), curve.tangent(u)); };
  auto refine = [&](double lo, double hi) {
    const double glo = slope(lo);
    const double ghi = slope(hi);
    if (glo >= 0.0) return lo;
    if (ghi <= 0.0) return hi;
    return bracketedRoot(slope, lo, glo, hi, ghi);
  };

  const std::size_t n = samples.size();
  std::vector<double> d(n);
  for (std::size_t i = 0; i < n; ++i) d[i] = squared(samples[i]);
  double best = samples[0];
  double bestSquared = d[0];
  auto consider = [&](double u) {
    const double value = squared(u);
    if (value < bestSquared) {
      bestSquared = value;
      best = u;
    }
  };
  for (std::size_t i = 0; i < n; ++i) {
    const bool dip = (i == 0 || d[i] <= d[i - 1]) && (i + 1 == n || d[i] <= d[i + 1]);
    if (!dip) continue;
    consider(samples[i]);
    if (i > 0) consider(refine(samples[i - 1], samples[i]));
    if (i + 1 < n) consider(refine(samples[i], samples[i + 1]));
  }
  return best;
}

}  // namespace host::geometry
