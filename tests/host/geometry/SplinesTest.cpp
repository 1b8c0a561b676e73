// Tests of splines: knots, evaluation against values worked out by hand,
// sampling, exact copies of arcs, circles and ellipses, and polylines made
// from splines.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "GeometryChecks.h"
#include "Splines.h"

namespace host::geometry {
namespace {

using namespace test;

// The distance from a point to the polyline through the points.
double distanceToPath(const Point3d& p, const std::vector<Point3d>& path) {
  double best = 1e300;
  for (std::size_t i = 1; i < path.size(); ++i) {
    const Point3d& a = path[i - 1];
    const Point3d d{path[i].x - a.x, path[i].y - a.y, path[i].z - a.z};
    const double len2 = d.x * d.x + d.y * d.y + d.z * d.z;
    double f = len2 > 0 ? ((p.x - a.x) * d.x + (p.y - a.y) * d.y + (p.z - a.z) * d.z) / len2 : 0;
    f = std::clamp(f, 0.0, 1.0);
    best = std::min(best, distance(p, {a.x + f * d.x, a.y + f * d.y, a.z + f * d.z}));
  }
  return best;
}

const std::vector<Point3d> kZigzag{{0, 0, 0}, {1, 4, 0}, {2, -3, 1},
                                   {3, 4, 0}, {4, 0, 2}, {6, 5, 0}};

TEST(SplineKnots, TheFilesOwnOrUniformClampedWhenMissingOrOfTheWrongCount) {
  const std::vector<double> own{0, 0, 0, 2, 5, 5, 5};
  const std::vector<Point3d> four{{0, 0, 0}, {1, 1, 0}, {2, 0, 0}, {3, 1, 0}};
  EXPECT_EQ(effectiveKnots(spline(2, four, own)), own);
  EXPECT_EQ(effectiveKnots(spline(2, four, {0, 1})), (std::vector<double>{0, 0, 0, 0.5, 1, 1, 1}));
  const std::vector<double> expected{0, 0, 0, 0, 1.0 / 3, 2.0 / 3, 1, 1, 1, 1};
  const std::vector<double> knots = effectiveKnots(spline(3, kZigzag));
  ASSERT_EQ(knots.size(), expected.size());
  for (std::size_t i = 0; i < knots.size(); ++i) EXPECT_NEAR(knots[i], expected[i], 1e-15) << i;
}

TEST(SplineEvaluate, PointsWorkedOutByHand) {
  // Knots 0 0 0 .5 1 1 1: the interior knot's point is the middle of P1 P2,
  // and a quarter of the way is the first span's Bezier (P0, P1, (P1+P2)/2)
  // at its middle; outside the knots, the ends.
  const SplineEntity quadratic = spline(2, {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}});
  // One span: the Bezier's middle is (P0 + 3 P1 + 3 P2 + P3) / 8.
  const SplineEntity bezier = spline(3, {{0, 0, 0}, {1, 3, 0}, {3, 3, 6}, {4, 0, 0}});
  // Knots 0 0 0 0 .5 1 1 1 1: at the interior knot, (P1 + 2 P2 + P3) / 4.
  const SplineEntity two = spline(3, {{0, 0, 0}, {1, 4, 0}, {2, 0, 0}, {3, 4, 0}, {4, 0, 8}});
  const struct {
    const SplineEntity& s;
    double t;
    Point3d expected;
  } cases[] = {
      {quadratic, 0.0, {0, 0, 0}},    {quadratic, 0.5, {2, 2, 0}},    {quadratic, 1.0, {4, 0, 0}},
      {quadratic, 0.25, {1, 1.5, 0}}, {quadratic, -3.0, {0, 0, 0}},   {quadratic, 7.0, {4, 0, 0}},
      {bezier, 0.0, {0, 0, 0}},       {bezier, 0.5, {2, 2.25, 2.25}}, {bezier, 1.0, {4, 0, 0}},
      {two, 0.5, {2, 2, 0}},          {two, 1.0, {4, 0, 8}},
  };
  for (const auto& c : cases) {
    EXPECT_TRUE(near(evaluate(c.s, c.t), c.expected, 1e-12)) << c.s.degree << " at " << c.t;
  }
}

TEST(SplineEvaluate, RationalQuarterCircleKeepsToTheCircleByItsWeights) {
  SplineEntity s = spline(2, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
  s.weights = {1.0, std::sqrt(0.5), 1.0};
  s.flags = 4;
  for (double t : {0.1, 0.3, 0.5, 0.7, 0.9}) {
    EXPECT_NEAR(distance(evaluate(s, t), {}), 1.0, 1e-14) << t;
  }
  // Without its weights the same points make a parabola, off the circle.
  s.weights.clear();
  s.flags = 0;
  EXPECT_GT(std::fabs(distance(evaluate(s, 0.5), {}) - 1.0), 0.01);
}

TEST(SplineEvaluate, PeriodicSplinesCloseAsTheirKnotsSay) {
  // Unclamped uniform knots over the control points with the first three
  // repeated at the end: the curve ends where it starts.
  const std::vector<Point3d> distinct{{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}};
  std::vector<Point3d> wrapped = distinct;
  wrapped.insert(wrapped.end(), distinct.begin(), distinct.begin() + 3);
  std::vector<double> knots;
  for (int i = 0; i <= 10; ++i) knots.push_back(i);
  SplineEntity s = spline(3, wrapped, knots);
  s.flags = 1 | 2;
  // A uniform cubic's point at a knot is (P0 + 4 P1 + P2) / 6.
  EXPECT_TRUE(near(evaluate(s, 3.0), {(0 + 16 + 4) / 6.0, (0 + 0 + 4) / 6.0, 0}, 1e-12));
  EXPECT_TRUE(near(evaluate(s, 7.0), evaluate(s, 3.0), 1e-12));
  // Listing only the distinct points, with knots for the wrapped set, is the
  // same curve.
  SplineEntity unwrapped = spline(3, distinct, knots);
  unwrapped.flags = 1 | 2;
  for (double t : {3.0, 4.5, 6.2, 7.0}) {
    EXPECT_TRUE(near(evaluate(unwrapped, t), evaluate(s, t), 1e-12)) << t;
  }
}

TEST(SplineEvaluate, FitPointsAloneMakeTheCurveThroughThem) {
  SplineEntity s;
  s.fitPoints = {{0, 0, 0}, {2, 3, 0}, {5, 1, 0}, {7, 4, 1}, {9, 0, 0}};
  const std::vector<Point3d> points = sample(s, 1e-7);
  EXPECT_TRUE(near(points.front(), {0, 0, 0}, 1e-12));
  EXPECT_TRUE(near(points.back(), {9, 0, 0}, 1e-12));
  for (const Point3d& f : s.fitPoints) EXPECT_LE(distanceToPath(f, points), 1e-6);
  // A curve, not the polyline through them: it bends between the points.
  EXPECT_GT(distanceToPath({1, 1.5, 0}, points), 1e-3);
  // Fit points all in one place are that point.
  s.fitPoints = {{1, 2, 3}, {1, 2, 3}};
  EXPECT_TRUE(near(evaluate(s, 0.5), {1, 2, 3}, 1e-12));
}

TEST(SplineSample, ChordsKeepWithinTheTolerance) {
  const SplineEntity s = spline(3, kZigzag);
  for (double tolerance : {1e-2, 1e-4}) {
    const std::vector<Point3d> points = sample(s, tolerance);
    ASSERT_GE(points.size(), 2u);
    EXPECT_TRUE(near(points.front(), {0, 0, 0}, 1e-12));
    EXPECT_TRUE(near(points.back(), {6, 5, 0}, 1e-12));
    // Every chord's middle is near the curve: the densest sampling we can
    // afford stands in for the curve.
    const std::vector<Point3d> dense = sample(s, tolerance * 1e-3);
    for (std::size_t i = 1; i < points.size(); ++i) {
      const Point3d m{(points[i - 1].x + points[i].x) / 2, (points[i - 1].y + points[i].y) / 2,
                      (points[i - 1].z + points[i].z) / 2};
      EXPECT_LE(distanceToPath(m, dense), tolerance * 1.01) << i;
    }
  }
  EXPECT_GT(sample(s, 1e-4).size(), sample(s, 1e-2).size());
}

TEST(SplineSample, ChordsOfACircleCopyKeepWithinTheTolerance) {
  const std::vector<Point3d> points = sample(*splineOf(circle({3, -2, 1}, 7.5)), 1e-6);
  ASSERT_GT(points.size(), 100u);
  EXPECT_TRUE(near(points.front(), {10.5, -2, 1}, 1e-12));
  EXPECT_TRUE(near(points.back(), {10.5, -2, 1}, 1e-12));
  // The chord error of a circle is r (1 - cos(half the chord's angle)).
  for (std::size_t i = 1; i < points.size(); ++i) {
    const double cx = (points[i - 1].x + points[i].x) / 2;
    const double cy = (points[i - 1].y + points[i].y) / 2;
    EXPECT_LE(7.5 - std::hypot(cx - 3, cy + 2), 1e-6 * 1.01);
  }
}

TEST(SplineOf, ACircleIsNinePointsInFourQuartersWithTheCirclesProperties) {
  CircleEntity c = circle({1, 2, 0}, 2);
  c.color = 3;
  c.layer = ObjectId(7);
  const auto s = splineOf(c);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s->degree, 2);
  EXPECT_EQ(s->flags, 1 | 4 | 8);
  EXPECT_TRUE(s->closed());
  ASSERT_EQ(s->controlPoints.size(), 9u);
  ASSERT_EQ(s->weights.size(), 9u);
  EXPECT_EQ(s->knots, (std::vector<double>{0, 0, 0, .25, .25, .5, .5, .75, .75, 1, 1, 1}));
  EXPECT_TRUE(near(s->controlPoints[0], {3, 2, 0}, 1e-12));
  EXPECT_TRUE(near(s->controlPoints[1], {3, 4, 0}, 1e-12));  // the corner of the first quarter
  EXPECT_TRUE(near(s->controlPoints[2], {1, 4, 0}, 1e-12));
  EXPECT_EQ(s->controlPoints[8], s->controlPoints[0]);
  EXPECT_NEAR(s->weights[1], std::sqrt(0.5), 1e-15);
  EXPECT_EQ(s->weights[2], 1.0);
  EXPECT_EQ(s->color, 3);
  EXPECT_EQ(s->layer, ObjectId(7));
  EXPECT_EQ(splineOf(LineEntity()), nullptr);
  EXPECT_EQ(splineOf(LwPolylineEntity()), nullptr);
}

// That the copies run over their conics is checked where the curves are.
TEST(SplineOf, ConicsSplitIntoPiecesOfAtMostAQuarter) {
  auto s = splineOf(arc({}, 5, 0, 1.5 * kPi));
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(s->controlPoints.size(), 7u);
  EXPECT_FALSE(s->closed());
  // 100 degrees need two pieces of 50.
  s = splineOf(arc({}, 5, 0, 100.0 * kPi / 180.0));
  EXPECT_EQ(s->controlPoints.size(), 5u);
  EXPECT_NEAR(s->weights[1], std::cos(25.0 * kPi / 180.0), 1e-15);
  // An end angle below the start runs through zero.
  s = splineOf(arc({}, 5, 1.5 * kPi, 0.5 * kPi, {0, 0, -1}));
  EXPECT_EQ(s->controlPoints.size(), 5u);
  EXPECT_NEAR(s->normal.z, -1.0, 1e-15);
  EllipseEntity e = ellipse({1, 1, 2}, {3, 4, 0}, 0.4);
  s = splineOf(e);
  EXPECT_TRUE(s->closed());
  EXPECT_EQ(s->controlPoints.size(), 9u);
  e.endParam = kPi;
  s = splineOf(e);
  EXPECT_FALSE(s->closed());
  EXPECT_EQ(s->controlPoints.size(), 5u);
}

TEST(SplineToPolyline, PlanarSplinesBecomeLightweightPolylinesOnTheCurve) {
  CircleEntity c = circle({0, 0, 2.5}, 4);
  c.color = 5;
  c.layer = ObjectId(3);
  const auto result = toPolyline(*splineOf(c), 3);
  ASSERT_NE(result, nullptr);
  ASSERT_EQ(result->kind(), EntityKind::LwPolyline);
  const auto& pl = static_cast<const LwPolylineEntity&>(*result);
  EXPECT_TRUE(pl.closed);
  EXPECT_EQ(pl.elevation, 2.5);
  EXPECT_EQ(pl.normal, kUnitZ);
  EXPECT_EQ(pl.color, 5);
  EXPECT_EQ(pl.layer, ObjectId(3));
  // Four spans of three steps, the closing vertex left to the closed flag.
  EXPECT_EQ(pl.vertices.size(), 12u);
  for (const LwVertex& v : pl.vertices) {
    EXPECT_NEAR(std::hypot(v.x, v.y), 4.0, 1e-12);
    EXPECT_EQ(v.bulge, 0.0);
  }
}

TEST(SplineToPolyline, MorePrecisionMoreVerticesAndNoneBelowOne) {
  SplineEntity s = spline(3, kZigzag);
  for (auto& p : s.controlPoints) p.z = 0;
  EXPECT_EQ(toPolyline(s, 0), nullptr);
  EXPECT_EQ(toPolyline(s, -5), nullptr);
  std::size_t previous = 0;
  for (int precision : {1, 2, 5, 10, 40}) {
    const auto result = toPolyline(s, precision);
    ASSERT_NE(result, nullptr);
    const auto& pl = static_cast<const LwPolylineEntity&>(*result);
    EXPECT_GT(pl.vertices.size(), previous) << precision;
    // Three knot spans: at least the precision in each.
    EXPECT_GE(pl.vertices.size(), static_cast<std::size_t>(3 * precision + 1));
    EXPECT_FALSE(pl.closed);
    previous = pl.vertices.size();
  }
}

TEST(SplineToPolyline, VerticesLieOnTheCurve) {
  const auto result = toPolyline(spline(3, {{0, 0, 0}, {1, 3, 0}, {3, 3, 0}, {4, 0, 0}}), 8);
  const auto& pl = static_cast<const LwPolylineEntity&>(*result);
  ASSERT_EQ(pl.vertices.size(), 9u);
  // The Bezier in closed form: x rises with t, so each vertex's x gives its
  // t, and its y must be the curve's y there.
  auto x = [](double t) { return 3 * t * (1 - t) * (1 - t) + 9 * t * t * (1 - t) + 4 * t * t * t; };
  auto y = [](double t) { return 9 * t * (1 - t); };
  for (const LwVertex& v : pl.vertices) {
    double lo = 0.0;
    double hi = 1.0;
    for (int i = 0; i < 200; ++i) (x(0.5 * (lo + hi)) < v.x ? lo : hi) = 0.5 * (lo + hi);
    EXPECT_NEAR(v.y, y(lo), 1e-12) << v.x;
  }
  EXPECT_NEAR(pl.vertices[4].x, 2.0, 1e-15);
  EXPECT_NEAR(pl.vertices[4].y, 2.25, 1e-15);
}

TEST(SplineToPolyline, SplinesOutOfAnXYPlaneBecome3dPolylines) {
  SplineEntity s = spline(2, {{0, 0, 0}, {1, 2, 1}, {3, 2, 0}, {4, 0, 0}});
  s.color = 2;
  const auto result = toPolyline(s, 2);
  ASSERT_EQ(result->kind(), EntityKind::Polyline3d);
  const auto& pl = static_cast<const Polyline3dEntity&>(*result);
  EXPECT_FALSE(pl.closed());
  EXPECT_EQ(pl.flags & 8, 8);
  ASSERT_EQ(pl.vertices.size(), 5u);
  EXPECT_TRUE(near(pl.vertices[0].position, {0, 0, 0}, 1e-12));
  EXPECT_TRUE(near(pl.vertices[2].position, {2, 2, 0.5}, 1e-12));
  EXPECT_TRUE(near(pl.vertices[4].position, {4, 0, 0}, 1e-12));
  EXPECT_EQ(pl.color, 2);
  // A planar circle standing upright is planar, but not parallel to XY.
  const auto closed = toPolyline(*splineOf(circle({}, 1, {1, 0, 0})), 1);
  ASSERT_EQ(closed->kind(), EntityKind::Polyline3d);
  EXPECT_TRUE(static_cast<const Polyline3dEntity&>(*closed).closed());
  // Z within rounding of the span's size is flat.
  SplineEntity almost = spline(2, {{0, 0, 10}, {1000, 2, 10 + 1e-10}, {3000, 0, 10}});
  EXPECT_EQ(toPolyline(almost, 1)->kind(), EntityKind::LwPolyline);
  almost.controlPoints[1].z = 10 + 1e-3;
  EXPECT_EQ(toPolyline(almost, 1)->kind(), EntityKind::Polyline3d);
}

TEST(SplineToPolyline, TheClosedFlagFollowsTheSpline) {
  // Open spline whose ends meet: open polyline, last vertex kept.
  SplineEntity s = spline(3, {{0, 0, 0}, {4, 0, 0}, {4, 4, 0}, {0, 4, 0}, {0, 0, 0}});
  auto result = toPolyline(s, 2);
  const auto* open = static_cast<const LwPolylineEntity*>(result.get());
  EXPECT_FALSE(open->closed);
  EXPECT_EQ(open->vertices.size(), 5u);
  s.flags = 1;
  result = toPolyline(s, 2);
  const auto* closed = static_cast<const LwPolylineEntity*>(result.get());
  EXPECT_TRUE(closed->closed);
  EXPECT_EQ(closed->vertices.size(), 4u);
}

}  // namespace
}  // namespace host::geometry
