// Global interpolation: the control points solve N Q = P, where N holds the
// basis functions at the fit points' parameters. Drawn splines have few fit
// points, so a dense elimination is plenty.
#include "host/geometry/SplineFit.h"

#include <algorithm>
#include <cmath>

#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

// The basis function i of degree p at u (Cox-de Boor), the last knot's end closed.
double basis(int i, int p, double u, const std::vector<double>& knots) {
  if (p == 0) {
    const bool last = u == knots.back() && knots[i] < knots[i + 1] && knots[i + 1] == knots.back();
    return (knots[i] <= u && u < knots[i + 1]) || last ? 1.0 : 0.0;
  }
  double value = 0.0;
  const double left = knots[i + p] - knots[i];
  if (left > 0.0) value += (u - knots[i]) / left * basis(i, p - 1, u, knots);
  const double right = knots[i + p + 1] - knots[i + 1];
  if (right > 0.0) value += (knots[i + p + 1] - u) / right * basis(i + 1, p - 1, u, knots);
  return value;
}

}  // namespace

SplineEntity splineThrough(const std::vector<Point3d>& input) {
  SplineEntity spline;
  std::vector<Point3d> points;
  for (const Point3d& p : input) {
    if (points.empty() || length(minus(p, points.back())) > 0.0) points.push_back(p);
  }
  if (points.size() < 2) return spline;
  const int n = static_cast<int>(points.size()) - 1;
  const int p = std::min(3, n);
  // Chord-length parameters from 0 to 1.
  std::vector<double> u(points.size(), 0.0);
  double total = 0.0;
  for (int k = 1; k <= n; ++k) total += length(minus(points[k], points[k - 1]));
  for (int k = 1; k <= n; ++k) u[k] = u[k - 1] + length(minus(points[k], points[k - 1])) / total;
  u[n] = 1.0;
  // Clamped knots, the inner ones averaged from the parameters.
  std::vector<double> knots(p + 1, 0.0);
  for (int j = 1; j <= n - p; ++j) {
    double sum = 0.0;
    for (int i = j; i < j + p; ++i) sum += u[i];
    knots.push_back(sum / p);
  }
  knots.insert(knots.end(), p + 1, 1.0);
  // Solve for the control points, one coordinate column at a time together.
  const int size = n + 1;
  std::vector<std::vector<double>> a(size, std::vector<double>(size + 3, 0.0));
  for (int k = 0; k <= n; ++k) {
    for (int i = 0; i <= n; ++i) a[k][i] = basis(i, p, u[k], knots);
    a[k][size] = points[k].x;
    a[k][size + 1] = points[k].y;
    a[k][size + 2] = points[k].z;
  }
  for (int col = 0; col < size; ++col) {
    int pivot = col;
    for (int r = col + 1; r < size; ++r) {
      if (std::fabs(a[r][col]) > std::fabs(a[pivot][col])) pivot = r;
    }
    std::swap(a[col], a[pivot]);
    for (int r = 0; r < size; ++r) {
      if (r == col || a[r][col] == 0.0) continue;
      const double f = a[r][col] / a[col][col];
      for (int c = col; c < size + 3; ++c) a[r][c] -= f * a[col][c];
    }
  }
  spline.degree = static_cast<std::int16_t>(p);
  spline.flags = 8;  // planar when it is; the host's readers don't depend on it
  spline.knots = knots;
  for (int r = 0; r < size; ++r) {
    spline.controlPoints.push_back(
        {a[r][size] / a[r][r], a[r][size + 1] / a[r][r], a[r][size + 2] / a[r][r]});
  }
  spline.fitPoints = points;
  return spline;
}

}  // namespace host::geometry
