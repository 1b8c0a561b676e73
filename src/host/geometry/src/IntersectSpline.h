// The prepared form of a spline, which sampling and intersections evaluate
// many times, and the adaptive flattening they and the conics share.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/db/Entities.h"
#include "host/geometry/Ocs.h"
#include "platform/Geometry.h"

namespace host::geometry {

// A spline's control points, weights, degree and knots as evaluation uses
// them: knots made up when the file gave none (or an unusable set), periodic
// control points wrapped when the knots call for it, and a spline with fit
// points only taken as the interpolating spline through them.
class SplineCurve {
 public:
  explicit SplineCurve(const SplineEntity& spline);

  bool empty() const { return points_.empty(); }
  int degree() const { return degree_; }
  const std::vector<double>& knots() const { return knots_; }
  const std::vector<Point3d>& points() const { return points_; }
  // Empty when the curve is not rational.
  const std::vector<double>& weights() const { return weights_; }
  // The parameters the curve runs over.
  double start() const { return start_; }
  double end() const { return end_; }
  Point3d at(double param) const;
  // The derivative by the parameter, from nearby points.
  Point3d derivative(double param) const;
  // The distinct knots from start to end, both included.
  std::vector<double> breaks() const;
  // Points no chord between which strays from the curve by more than the
  // tolerance, start and end included, with their parameters.
  void sample(double tolerance, std::vector<double>& params, std::vector<Point3d>& points) const;
  // The diagonal of the control points' box: what "relative to the spline's
  // size" measures against.
  double size() const;

 private:
  int degree_ = 1;
  std::vector<Point3d> points_;
  std::vector<double> weights_;  // empty when not rational
  std::vector<double> knots_;
  double start_ = 0.0;
  double end_ = 0.0;
};

namespace flatten {

inline double distanceToChord(const Point3d& p, const Point3d& a, const Point3d& b) {
  const Point3d d = minus(b, a);
  const double len2 = dot(d, d);
  double t = len2 > 0.0 ? dot(minus(p, a), d) / len2 : 0.0;
  t = std::clamp(t, 0.0, 1.0);
  return length(minus(p, plus(a, scaled(d, t))));
}

// Deep enough for any tolerance a caller means, shallow enough that a
// tolerance of zero cannot run away.
inline constexpr int kMaxDepth = 16;

// Halves [t0, t1] until the curve keeps within the tolerance of each chord at
// its middle and quarter points, then appends each piece's end. The quarter
// points, not just the middle, catch an S-bend whose middle happens to sit on
// the chord, and they are the halves' middles, so each halving costs two
// points. minDepth forces halvings for pieces that could close on themselves.
template <typename At>
void adaptiveWithMiddle(const At& at, double t0, const Point3d& p0, double tm, const Point3d& pm,
                        double t1, const Point3d& p1, double tolerance, int minDepth,
                        std::vector<double>& params, std::vector<Point3d>& points, int depth) {
  const double ta = 0.5 * (t0 + tm);
  const double tb = 0.5 * (tm + t1);
  const Point3d pa = at(ta);
  const Point3d pb = at(tb);
  bool split = depth < minDepth;
  if (!split && depth < kMaxDepth) {
    split = distanceToChord(pm, p0, p1) > tolerance || distanceToChord(pa, p0, p1) > tolerance ||
            distanceToChord(pb, p0, p1) > tolerance;
  }
  if (split) {
    adaptiveWithMiddle(at, t0, p0, ta, pa, tm, pm, tolerance, minDepth, params, points, depth + 1);
    adaptiveWithMiddle(at, tm, pm, tb, pb, t1, p1, tolerance, minDepth, params, points, depth + 1);
    return;
  }
  params.push_back(t1);
  points.push_back(p1);
}

template <typename At>
void adaptive(const At& at, double t0, const Point3d& p0, double t1, const Point3d& p1,
              double tolerance, int minDepth, std::vector<double>& params,
              std::vector<Point3d>& points) {
  const double tm = 0.5 * (t0 + t1);
  adaptiveWithMiddle(at, t0, p0, tm, at(tm), t1, p1, tolerance, minDepth, params, points, 0);
}

}  // namespace flatten
}  // namespace host::geometry
