// Curves in world coordinates: parameters, points, lengths, nearest points,
// polyline segments, explode and area, against answers worked out by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <sstream>

#include "host/geometry/Curves.h"

namespace {

namespace g = host::geometry;
using host::EntityKind;
using platform::Point3d;

constexpr double kPi = 3.141592653589793;
const double kRoot2 = std::sqrt(2.0);

std::string text(const Point3d& p) {
  std::ostringstream out;
  out.precision(17);
  out << "(" << p.x << ", " << p.y << ", " << p.z << ")";
  return out.str();
}

::testing::AssertionResult near(const std::optional<Point3d>& actual, const Point3d& expected,
                                double tolerance = 1e-9) {
  if (!actual) return ::testing::AssertionFailure() << "no point, expected " << text(expected);
  const Point3d& a = *actual;
  if (std::fabs(a.x - expected.x) <= tolerance && std::fabs(a.y - expected.y) <= tolerance &&
      std::fabs(a.z - expected.z) <= tolerance) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << text(a) << " is not " << text(expected);
}

host::LineEntity line(const Point3d& a, const Point3d& b) {
  host::LineEntity e;
  e.start = a;
  e.end = b;
  return e;
}

host::ArcEntity arc(const Point3d& center, double radius, double start, double end,
                    const Point3d& normal = host::kUnitZ) {
  host::ArcEntity e;
  e.center = center;
  e.radius = radius;
  e.startAngle = start;
  e.endAngle = end;
  e.normal = normal;
  return e;
}

host::EllipseEntity ellipse(const Point3d& center, const Point3d& major, double ratio,
                            double start = 0.0, double end = 2.0 * kPi,
                            const Point3d& normal = host::kUnitZ) {
  host::EllipseEntity e;
  e.center = center;
  e.majorAxis = major;
  e.ratio = ratio;
  e.startParam = start;
  e.endParam = end;
  e.normal = normal;
  return e;
}

host::LwPolylineEntity lw(std::vector<host::LwVertex> vertices, bool closed, double elevation = 0.0,
                          const Point3d& normal = host::kUnitZ) {
  host::LwPolylineEntity e;
  e.vertices = std::move(vertices);
  e.closed = closed;
  e.elevation = elevation;
  e.normal = normal;
  return e;
}

host::PolylineVertex vertex(const Point3d& p, double bulge = 0.0, std::int16_t flags = 0) {
  host::PolylineVertex v;
  v.position = p;
  v.bulge = bulge;
  v.flags = flags;
  return v;
}

double length(const host::Entity& e) {
  return g::curveLength(e).value_or(-1.0);
}
double distance(const Point3d& a, const Point3d& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                   (a.z - b.z) * (a.z - b.z));
}

// The bulge of a quarter turn: tan(pi / 8).
const double kQuarterBulge = std::tan(kPi / 8.0);

// ---- kinds

TEST(CurveKinds, TheCurveKindsAreCurvesAndOthersHaveNoParameters) {
  EXPECT_TRUE(g::isCurve(host::LineEntity()));
  EXPECT_TRUE(g::isCurve(host::ArcEntity()));
  EXPECT_TRUE(g::isCurve(host::CircleEntity()));
  EXPECT_TRUE(g::isCurve(host::EllipseEntity()));
  EXPECT_TRUE(g::isCurve(host::LwPolylineEntity()));
  EXPECT_TRUE(g::isCurve(host::Polyline2dEntity()));
  EXPECT_TRUE(g::isCurve(host::Polyline3dEntity()));
  EXPECT_TRUE(g::isCurve(host::SplineEntity()));
  EXPECT_TRUE(g::isCurve(host::MlineEntity()));
  EXPECT_FALSE(g::isCurve(host::PointEntity()));
  EXPECT_FALSE(g::isCurve(host::TextEntity()));
  const host::PointEntity point;
  EXPECT_FALSE(g::paramRange(point));
  EXPECT_FALSE(g::pointAtParam(point, 0.0));
  EXPECT_FALSE(g::startPoint(point));
  EXPECT_FALSE(g::curveLength(point));
  EXPECT_FALSE(g::nearestPoint(point, {}));
  EXPECT_FALSE(g::isClosed(point));
  EXPECT_TRUE(g::vertexPositions(point).empty());
}

TEST(CurveKinds, AnEmptyPolylineHasNoPointsAndOneVertexIsAPoint) {
  const host::LwPolylineEntity empty;
  EXPECT_FALSE(g::paramRange(empty));
  EXPECT_FALSE(g::startPoint(empty));
  EXPECT_FALSE(g::nearestPoint(empty, {}));
  EXPECT_FALSE(g::curveLength(empty));
  EXPECT_TRUE(g::explode(empty).empty());
  const auto single = lw({{1, 2, 0.5}}, true, 3.0);
  ASSERT_TRUE(g::paramRange(single));
  EXPECT_EQ(g::paramRange(single)->end, 0.0);
  EXPECT_TRUE(near(g::startPoint(single), {1, 2, 3}));
  EXPECT_TRUE(near(g::endPoint(single), {1, 2, 3}));
  EXPECT_EQ(length(single), 0.0);
  EXPECT_EQ(g::area(single), 0.0);
  EXPECT_TRUE(g::segments(single).empty());
}

// ---- lines

TEST(Lines, ParameterIsTheDistanceFromTheStart) {
  const auto l = line({1, 2, 3}, {4, 6, 3});
  ASSERT_TRUE(g::paramRange(l));
  EXPECT_DOUBLE_EQ(g::paramRange(l)->start, 0.0);
  EXPECT_DOUBLE_EQ(g::paramRange(l)->end, 5.0);
  EXPECT_DOUBLE_EQ(length(l), 5.0);
  EXPECT_TRUE(near(g::pointAtParam(l, 2.5), {2.5, 4.0, 3.0}));
  EXPECT_TRUE(near(g::startPoint(l), {1, 2, 3}));
  EXPECT_TRUE(near(g::endPoint(l), {4, 6, 3}));
  EXPECT_FALSE(g::pointAtParam(l, 5.1));
  EXPECT_FALSE(g::pointAtParam(l, -0.1));
  EXPECT_FALSE(g::isClosed(l));
}

TEST(Lines, NearestPointIsTheFootOfThePerpendicularOrAnEnd) {
  const auto l = line({1, 2, 3}, {4, 6, 3});
  // Two along the line, three across it in the plane and four above.
  const auto across = g::nearestPoint(l, {1 + 1.2 - 2.4, 2 + 1.6 + 1.8, 7});
  ASSERT_TRUE(across);
  EXPECT_NEAR(across->param, 2.0, 1e-12);
  EXPECT_TRUE(near(across->point, {2.2, 3.6, 3}));
  EXPECT_NEAR(across->distance, 5.0, 1e-12);
  const auto beyond = g::nearestPoint(l, {10, 20, 3});
  ASSERT_TRUE(beyond);
  EXPECT_DOUBLE_EQ(beyond->param, 5.0);
  EXPECT_TRUE(near(beyond->point, {4, 6, 3}));
}

// ---- arcs and circles

TEST(Arcs, AQuarterCircle) {
  const auto a = arc({1, 1, 0}, 2.0, 0.0, kPi / 2);
  ASSERT_TRUE(g::paramRange(a));
  EXPECT_DOUBLE_EQ(g::paramRange(a)->start, 0.0);
  EXPECT_DOUBLE_EQ(g::paramRange(a)->end, kPi / 2);
  EXPECT_DOUBLE_EQ(length(a), kPi);
  EXPECT_TRUE(near(g::startPoint(a), {3, 1, 0}));
  EXPECT_TRUE(near(g::endPoint(a), {1, 3, 0}));
  EXPECT_TRUE(near(g::pointAtParam(a, kPi / 4), {1 + kRoot2, 1 + kRoot2, 0}));
  EXPECT_FALSE(g::pointAtParam(a, kPi));
  EXPECT_FALSE(g::isClosed(a));
}

TEST(Arcs, AnArcThroughAngleZeroRunsOnPastTwoPi) {
  const auto a = arc({0, 0, 0}, 2.0, 1.5 * kPi, 0.5 * kPi);
  ASSERT_TRUE(g::paramRange(a));
  EXPECT_DOUBLE_EQ(g::paramRange(a)->start, 1.5 * kPi);
  EXPECT_DOUBLE_EQ(g::paramRange(a)->end, 2.5 * kPi);
  EXPECT_DOUBLE_EQ(length(a), 2 * kPi);
  EXPECT_TRUE(near(g::pointAtParam(a, 2 * kPi), {2, 0, 0}));
  EXPECT_TRUE(near(g::startPoint(a), {0, -2, 0}));
  EXPECT_TRUE(near(g::endPoint(a), {0, 2, 0}));
}

TEST(Arcs, NearestPointOnTheArcOrAtTheEndNearerByAngle) {
  const auto a = arc({1, 1, 0}, 2.0, 0.0, kPi / 2);
  const auto inside = g::nearestPoint(a, {5, 5, 7});
  ASSERT_TRUE(inside);
  EXPECT_NEAR(inside->param, kPi / 4, 1e-12);
  EXPECT_TRUE(near(inside->point, {1 + kRoot2, 1 + kRoot2, 0}));
  EXPECT_NEAR(inside->distance, std::sqrt(2 * std::pow(4 - kRoot2, 2) + 49), 1e-12);
  const auto belowStart = g::nearestPoint(a, {1, -5, 0});
  ASSERT_TRUE(belowStart);
  EXPECT_DOUBLE_EQ(belowStart->param, 0.0);
  EXPECT_TRUE(near(belowStart->point, {3, 1, 0}));
  const auto pastEnd = g::nearestPoint(a, {-5, 1.5, 0});
  ASSERT_TRUE(pastEnd);
  EXPECT_DOUBLE_EQ(pastEnd->param, kPi / 2);
  EXPECT_TRUE(near(pastEnd->point, {1, 3, 0}));
}

TEST(Arcs, ANormalDownMirrorsTheArcInX) {
  // For the normal (0, 0, -1) the plane's X axis is world -X and its Y world Y.
  const auto a = arc({1, 2, 3}, 1.0, 0.0, kPi / 2, {0, 0, -1});
  EXPECT_TRUE(near(g::startPoint(a), {-2, 2, -3}));
  EXPECT_TRUE(near(g::endPoint(a), {-1, 3, -3}));
  const double h = kRoot2 / 2;
  EXPECT_TRUE(near(g::pointAtParam(a, kPi / 4), {-1 - h, 2 + h, -3}));
  EXPECT_DOUBLE_EQ(length(a), kPi / 2);
  // World (-4, 5, 0) is (4, 5, 0) in the plane: at 45 degrees from the centre.
  const auto n = g::nearestPoint(a, {-4, 5, 0});
  ASSERT_TRUE(n);
  EXPECT_NEAR(n->param, kPi / 4, 1e-12);
  EXPECT_TRUE(near(n->point, {-1 - h, 2 + h, -3}));
  EXPECT_NEAR(n->distance, std::sqrt(std::pow(3 * kRoot2 - 1, 2) + 9), 1e-12);
}

TEST(Circles, ACircleInTheYZPlane) {
  // For the normal (1, 0, 0) the plane's X axis is world Y and its Y world Z.
  host::CircleEntity c;
  c.center = {0, 0, 2};
  c.radius = 3.0;
  c.normal = {1, 0, 0};
  ASSERT_TRUE(g::paramRange(c));
  EXPECT_DOUBLE_EQ(g::paramRange(c)->end, 2 * kPi);
  EXPECT_TRUE(near(g::pointAtParam(c, 0.0), {2, 3, 0}));
  EXPECT_TRUE(near(g::pointAtParam(c, kPi / 2), {2, 0, 3}));
  EXPECT_TRUE(near(g::startPoint(c), *g::endPoint(c)));
  EXPECT_DOUBLE_EQ(length(c), 6 * kPi);
  EXPECT_TRUE(g::isClosed(c));
  const auto n = g::nearestPoint(c, {10, 0, -7});
  ASSERT_TRUE(n);
  EXPECT_NEAR(n->param, 1.5 * kPi, 1e-12);
  EXPECT_TRUE(near(n->point, {2, 0, -3}));
  EXPECT_NEAR(n->distance, std::sqrt(80.0), 1e-12);
}

// ---- ellipses

// The perimeter of the ellipse with semi-axes 2 and 1.
constexpr double kPerimeter21 = 9.688448220547675;

TEST(Ellipses, PerimetersOfARoundAndATwoToOneEllipse) {
  EXPECT_NEAR(length(ellipse({5, 5, 5}, {3, 0, 0}, 1.0)), 6 * kPi, 1e-12 * 6 * kPi);
  EXPECT_NEAR(length(ellipse({0, 0, 0}, {2, 0, 0}, 0.5)), kPerimeter21, 1e-12 * kPerimeter21);
  // Turned into another plane the same ellipse keeps its perimeter.
  EXPECT_NEAR(length(ellipse({1, 2, 3}, {0, 0, 2}, 0.5, 0.0, 2 * kPi, {1, 0, 0})), kPerimeter21,
              1e-12 * kPerimeter21);
  // A quarter and three quarters, by its symmetry.
  EXPECT_NEAR(length(ellipse({}, {2, 0, 0}, 0.5, 0.0, kPi / 2)), kPerimeter21 / 4, 1e-12);
  EXPECT_NEAR(length(ellipse({}, {2, 0, 0}, 0.5, kPi / 2, 0.0)), 0.75 * kPerimeter21, 1e-11);
}

TEST(Ellipses, AVeryFlatEllipseIsNearlyFourTimesItsMajorAxis) {
  // With semi-axes 1 and b, the perimeter is 4 + 2 b^2 (ln(4 / b) - 1/2) and
  // terms in b^4.
  const double b = 1e-4;
  const double expected = 4.0 + 2.0 * b * b * (std::log(4.0 / b) - 0.5);
  EXPECT_NEAR(length(ellipse({}, {1, 0, 0}, b)), expected, 1e-13);
}

TEST(Ellipses, PointsAtTheEllipsesOwnParameter) {
  const auto full = ellipse({1, 1, 0}, {2, 0, 0}, 0.5);
  EXPECT_TRUE(near(g::pointAtParam(full, 0.0), {3, 1, 0}));
  EXPECT_TRUE(near(g::pointAtParam(full, kPi / 2), {1, 2, 0}));
  EXPECT_TRUE(near(g::pointAtParam(full, kPi / 3), {1 + 2 * 0.5, 1 + std::sqrt(3.0) / 2, 0}));
  EXPECT_TRUE(g::isClosed(full));
  EXPECT_TRUE(near(g::startPoint(full), *g::endPoint(full)));
  // The minor axis is the normal crossed with the major: (1,0,0) x (0,0,2) is (0,-2,0).
  const auto tilted = ellipse({0, 0, 0}, {0, 0, 2}, 0.5, 0.0, 2 * kPi, {1, 0, 0});
  EXPECT_TRUE(near(g::pointAtParam(tilted, kPi / 2), {0, -1, 0}));
  EXPECT_TRUE(near(g::pointAtParam(tilted, kPi), {0, 0, -2}));
}

TEST(Ellipses, APartialEllipseRunsFromItsStartParameterCounterclockwise) {
  const auto part = ellipse({0, 0, 0}, {2, 0, 0}, 0.5, kPi / 2, 0.0);
  ASSERT_TRUE(g::paramRange(part));
  EXPECT_DOUBLE_EQ(g::paramRange(part)->start, kPi / 2);
  EXPECT_DOUBLE_EQ(g::paramRange(part)->end, 2 * kPi);
  EXPECT_TRUE(near(g::startPoint(part), {0, 1, 0}));
  EXPECT_TRUE(near(g::endPoint(part), {2, 0, 0}));
  EXPECT_TRUE(near(g::pointAtParam(part, kPi), {-2, 0, 0}));
  EXPECT_FALSE(g::isClosed(part));
  EXPECT_FALSE(g::pointAtParam(part, 0.25));
}

TEST(Ellipses, NearestPointOnAnEllipse) {
  const auto e = ellipse({0, 0, 0}, {2, 0, 0}, 0.5);
  const auto top = g::nearestPoint(e, {0, 5, 0});
  ASSERT_TRUE(top);
  EXPECT_NEAR(top->param, kPi / 2, 1e-9);
  EXPECT_NEAR(top->distance, 4.0, 1e-12);
  // Stepping off the point at t along the ellipse's outward normal, and above
  // its plane, the point at t stays the nearest.
  for (const double t : {0.3, 1.0, 2.5, 4.0, 5.9}) {
    const Point3d on{2 * std::cos(t), std::sin(t), 0};
    const double nx = std::cos(t);
    const double ny = 2 * std::sin(t);
    const double norm = std::hypot(nx, ny);
    const Point3d off{on.x + 0.5 * nx / norm, on.y + 0.5 * ny / norm, 0.7};
    const auto n = g::nearestPoint(e, off);
    ASSERT_TRUE(n) << t;
    EXPECT_NEAR(n->param, t, 1e-9) << t;
    EXPECT_TRUE(near(n->point, on, 1e-9)) << t;
    EXPECT_NEAR(n->distance, std::hypot(0.5, 0.7), 1e-12) << t;
  }
  // Off a partial ellipse, the nearer end.
  const auto part = ellipse({0, 0, 0}, {2, 0, 0}, 0.5, 0.0, kPi / 2);
  const auto end = g::nearestPoint(part, {-3, 0.5, 0});
  ASSERT_TRUE(end);
  EXPECT_DOUBLE_EQ(end->param, kPi / 2);
  EXPECT_TRUE(near(end->point, {0, 1, 0}));
}

TEST(Ellipses, NearestPointOnAFlatEllipseNearItsTip) {
  const double b = 0.01;
  const auto e = ellipse({0, 0, 0}, {1, 0, 0}, b);
  const double t = 0.05;
  const Point3d on{std::cos(t), b * std::sin(t), 0};
  const double nx = b * std::cos(t);
  const double ny = std::sin(t);
  const double norm = std::hypot(nx, ny);
  const Point3d off{on.x + 0.01 * nx / norm, on.y + 0.01 * ny / norm, 0};
  const auto n = g::nearestPoint(e, off);
  ASSERT_TRUE(n);
  EXPECT_NEAR(n->param, t, 1e-9);
  EXPECT_NEAR(n->distance, 0.01, 1e-12);
}

TEST(Ellipses, NonFiniteNumbersEndTheQuadratureAndTheSearch) {
  const double nan = std::nan("");
  const auto noParams = ellipse({}, {2, 0, 0}, 0.5, nan, 1.0);
  EXPECT_FALSE(g::paramRange(noParams));
  EXPECT_FALSE(g::curveLength(noParams));
  EXPECT_FALSE(g::nearestPoint(noParams, {}));
  const auto noAxis = ellipse({}, {nan, 0, 0}, 0.5);
  ASSERT_TRUE(g::curveLength(noAxis));
  EXPECT_TRUE(std::isnan(*g::curveLength(noAxis)));
  EXPECT_TRUE(g::nearestPoint(noAxis, {1, 1, 0}));
  // Far along in turns, the length is that of the same stretch of the first turn.
  const auto far = ellipse({}, {2, 0, 0}, 0.5, 1e6 * 2 * kPi, 1e6 * 2 * kPi + kPi / 2);
  EXPECT_NEAR(length(far), kPerimeter21 / 4, 1e-8);
}

// ---- lightweight polylines

TEST(LwPolylines, ASemicircleOfBulgeOne) {
  // Counterclockwise from (0,0) to (2,0): the arc passes below, through (1,-1).
  const auto p = lw({{0, 0, 1.0}, {2, 0, 0}}, false);
  ASSERT_TRUE(g::paramRange(p));
  EXPECT_EQ(g::paramRange(p)->end, 1.0);
  EXPECT_DOUBLE_EQ(length(p), kPi);
  EXPECT_TRUE(near(g::pointAtParam(p, 0.5), {1, -1, 0}));
  EXPECT_TRUE(near(g::pointAtParam(p, 0.25), {1 - kRoot2 / 2, -kRoot2 / 2, 0}));
  EXPECT_NEAR(g::area(p), kPi / 2, 1e-12);
  const auto s = g::segments(p);
  ASSERT_EQ(s.size(), 1u);
  EXPECT_TRUE(s[0].isArc());
  EXPECT_TRUE(near(s[0].center, {1, 0, 0}));
  EXPECT_DOUBLE_EQ(s[0].radius, 1.0);
  EXPECT_NEAR(s[0].startAngle, kPi, 1e-12);
  EXPECT_NEAR(s[0].sweep, kPi, 1e-12);
  // The negative bulge turns the other way, above the chord.
  const auto q = lw({{0, 0, -1.0}, {2, 0, 0}}, false);
  EXPECT_TRUE(near(g::pointAtParam(q, 0.5), {1, 1, 0}));
  EXPECT_NEAR(g::segments(q)[0].sweep, -kPi, 1e-12);
  EXPECT_NEAR(g::area(q), kPi / 2, 1e-12);
}

TEST(LwPolylines, TwoVerticesOfBulgeOneClosedAreACircle) {
  const auto p = lw({{0, 0, 1.0}, {2, 0, 1.0}}, true);
  EXPECT_NEAR(length(p), 2 * kPi, 1e-12);
  EXPECT_NEAR(g::area(p), kPi, 1e-12);
  EXPECT_TRUE(g::isClosed(p));
  EXPECT_TRUE(near(g::pointAtParam(p, 1.5), {1, 1, 0}));
  EXPECT_TRUE(near(g::endPoint(p), {0, 0, 0}));
}

TEST(LwPolylines, ASquareBulgedOutwardIsItsCircumcircle) {
  // Each side bulged a quarter turn outward: arcs of radius sqrt(2) about (1,1).
  const double b = kQuarterBulge;
  const auto p = lw({{0, 0, b}, {2, 0, b}, {2, 2, b}, {0, 2, b}}, true);
  EXPECT_NEAR(g::area(p), 2 * kPi, 1e-12);
  EXPECT_NEAR(length(p), 2 * kRoot2 * kPi, 1e-12);
  EXPECT_TRUE(near(g::pointAtParam(p, 0.5), {1, 1 - kRoot2, 0}));
  EXPECT_TRUE(near(g::pointAtParam(p, 2.5), {1, 1 + kRoot2, 0}));
  for (const auto& s : g::segments(p)) {
    EXPECT_TRUE(near(s.center, {1, 1, 0}));
    EXPECT_NEAR(s.radius, kRoot2, 1e-12);
    EXPECT_NEAR(s.sweep, kPi / 2, 1e-12);
  }
  // Bulged inward, the arcs' centres lie outside and take their segments away.
  const auto q = lw({{0, 0, -b}, {2, 0, -b}, {2, 2, -b}, {0, 2, -b}}, true);
  EXPECT_NEAR(g::area(q), 8 - 2 * kPi, 1e-12);
  EXPECT_TRUE(near(g::pointAtParam(q, 0.5), {1, kRoot2 - 1, 0}));
  EXPECT_TRUE(near(g::segments(q)[0].center, {1, -1, 0}));
}

TEST(LwPolylines, AClockwiseSquareHasTheSameArea) {
  const double b = kQuarterBulge;
  // Clockwise, the outward bulges are negative.
  const auto p = lw({{0, 0, -b}, {0, 2, -b}, {2, 2, -b}, {2, 0, -b}}, true);
  EXPECT_NEAR(g::area(p), 2 * kPi, 1e-12);
}

TEST(LwPolylines, AreaOfAClosedBulgedPolygonIsTheSumOfItsParts) {
  const std::vector<host::LwVertex> v{{0, 0, 0.5}, {4, 0, -0.25}, {4, 3, 0}, {0, 3, 0.2}};
  const auto p = lw(v, true);
  auto part = [&](std::size_t i) {
    const auto& a = v[i];
    const auto& b = v[(i + 1) % v.size()];
    return g::area(lw({{a.x, a.y, a.bulge}, {b.x, b.y, 0}}, false));
  };
  // One part by hand: chord 4, bulge 1/2: angle 4 atan(1/2), radius 4 (1 + 1/4) / 2.
  const double theta = 4 * std::atan(0.5);
  const double radius = 2.5;
  EXPECT_NEAR(part(0), radius * radius / 2 * (theta - std::sin(theta)), 1e-12);
  // The polygon runs counterclockwise: positive bulges bulge out.
  EXPECT_NEAR(g::area(p), 12 + part(0) - part(1) + part(3), 1e-12);
}

TEST(LwPolylines, AreaOfAnOpenPolylineIsThatOfItClosedByTheChord) {
  const std::vector<host::LwVertex> v{{0, 0, 0.5}, {4, 0, -0.25}, {4, 3, 0.1}, {0, 3, 0}};
  EXPECT_NEAR(g::area(lw(v, false)), g::area(lw(v, true)), 1e-12);
  EXPECT_GT(g::area(lw(v, false)), 12.0);
}

TEST(LwPolylines, AreaOfAClosedPolygonDoesNotDependOnItsStartVertex) {
  std::vector<host::LwVertex> v{{1, 1, 0.3}, {5, 0, 0}, {6, 4, -0.4}, {2, 5, 0.1}, {0, 3, 0}};
  const double expected = g::area(lw(v, true));
  EXPECT_GT(expected, 0.0);
  for (std::size_t shift = 1; shift < v.size(); ++shift) {
    std::rotate(v.begin(), v.begin() + 1, v.end());
    EXPECT_NEAR(g::area(lw(v, true)), expected, 1e-12) << shift;
  }
  // Walked backwards the bulges change sign and move to the other end of
  // their segments; the area stays.
  std::vector<host::LwVertex> back;
  for (std::size_t i = v.size(); i-- > 0;) {
    back.push_back({v[i].x, v[i].y, -v[(i + v.size() - 1) % v.size()].bulge});
  }
  EXPECT_NEAR(g::area(lw(back, true)), expected, 1e-12);
}

TEST(LwPolylines, ElevationAndATiltedNormalPlaceThePolylineInItsPlane) {
  // For the normal (1, 0, 0) the plane's (x, y, elevation) is world (elevation, x, y).
  const auto p = lw({{1, 2, 0}, {4, 6, 1.0}, {6, 6, 0}}, false, 5.0, {1, 0, 0});
  EXPECT_EQ(g::numVerts(p), 3);
  EXPECT_TRUE(near(g::getPointAt(p, 0), {5, 1, 2}));
  EXPECT_TRUE(near(g::getPointAt(p, 1), {5, 4, 6}));
  EXPECT_TRUE(near(g::pointAtParam(p, 0.5), {5, 2.5, 4}));
  // The semicircle from (4,6) to (6,6) passes below its chord, through (5,5).
  EXPECT_TRUE(near(g::pointAtParam(p, 1.5), {5, 5, 5}));
  EXPECT_TRUE(near(g::segments(p)[1].center, {5, 5, 6}));
  EXPECT_NEAR(length(p), 5 + kPi, 1e-12);
  EXPECT_TRUE(near(g::endPoint(p), {5, 6, 6}));
  EXPECT_TRUE(near(g::nearestPoint(p, {9, 5, 3})->point, {5, 5, 5}));
  EXPECT_NEAR(g::nearestPoint(p, {9, 5, 3})->param, 1.5, 1e-12);
}

TEST(LwPolylines, AnyNormalKeepsLengthAreaAndThePlane) {
  const std::vector<host::LwVertex> v{{0, 0, 0.4}, {3, 0, 0}, {3, 2, -0.7}, {0, 2, 0}};
  const auto flat = lw(v, true);
  const Point3d normal{0, 1, 1};
  const auto tilted = lw(v, true, 3.0, normal);
  EXPECT_NEAR(length(tilted), length(flat), 1e-12);
  EXPECT_NEAR(g::area(tilted), g::area(flat), 1e-12);
  const double k = 1 / kRoot2;
  for (double t = 0.0; t <= 4.0; t += 0.125) {
    const auto point = g::pointAtParam(tilted, t);
    ASSERT_TRUE(point);
    EXPECT_NEAR(point->y * k + point->z * k, 3.0, 1e-12) << t;
  }
  for (const auto& s : g::segments(tilted)) {
    if (!s.isArc()) continue;
    EXPECT_NEAR(distance(s.center, s.start), s.radius, 1e-12);
    EXPECT_NEAR(distance(s.center, s.end), s.radius, 1e-12);
    EXPECT_NEAR(s.center.y * k + s.center.z * k, 3.0, 1e-12);
  }
}

TEST(LwPolylines, NearestPointOnSegmentsAndArcs) {
  const auto p = lw({{0, 0, 1.0}, {2, 0, 0}, {2, 3, 0}}, false);
  // Below the semicircle's lowest point.
  const auto below = g::nearestPoint(p, {1, -4, 0});
  ASSERT_TRUE(below);
  EXPECT_NEAR(below->param, 0.5, 1e-12);
  EXPECT_TRUE(near(below->point, {1, -1, 0}));
  EXPECT_NEAR(below->distance, 3.0, 1e-12);
  // Beside the straight side.
  const auto beside = g::nearestPoint(p, {5, 2, 4});
  ASSERT_TRUE(beside);
  EXPECT_NEAR(beside->param, 1 + 2.0 / 3.0, 1e-12);
  EXPECT_TRUE(near(beside->point, {2, 2, 0}));
  EXPECT_NEAR(beside->distance, 5.0, 1e-12);
  // Points on the polyline are their own nearest points.
  for (double t = 0.0; t <= 2.0; t += 0.1) {
    const auto n = g::nearestPoint(p, *g::pointAtParam(p, t));
    ASSERT_TRUE(n);
    EXPECT_NEAR(n->param, t, 1e-9) << t;
    EXPECT_NEAR(n->distance, 0.0, 1e-12) << t;
  }
}

// ---- explode

host::LwPolylineEntity mixed() {
  return lw({{0, 0, 0.5}, {4, 0, 0}, {4, 3, -0.8}, {1, 4, 0}, {0, 3, 2.0}}, true, 1.5,
            {0.2, -0.3, 0.9});
}

TEST(Explode, PiecesRunFromVertexToVertex) {
  const auto p = mixed();
  const auto pieces = g::explode(p);
  ASSERT_EQ(pieces.size(), 5u);
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const Point3d a = g::getPointAt(p, static_cast<int>(i));
    const Point3d b = g::getPointAt(p, static_cast<int>((i + 1) % 5));
    const double bulge = p.vertices[i].bulge;
    EXPECT_EQ(pieces[i]->kind(), bulge == 0.0 ? EntityKind::Line : EntityKind::Arc) << i;
    // An arc the bulge turns clockwise runs the other way.
    const bool reversed = bulge < 0.0;
    EXPECT_TRUE(near(g::startPoint(*pieces[i]), reversed ? b : a)) << i;
    EXPECT_TRUE(near(g::endPoint(*pieces[i]), reversed ? a : b)) << i;
    // The middle of each piece is the middle of its segment.
    const auto range = g::paramRange(*pieces[i]);
    ASSERT_TRUE(range);
    EXPECT_TRUE(near(g::pointAtParam(*pieces[i], (range->start + range->end) / 2),
                     *g::pointAtParam(p, i + 0.5)))
        << i;
  }
}

TEST(Explode, LengthsOfThePiecesAddUpToThePolylines) {
  const auto p = mixed();
  double total = 0.0;
  for (const auto& piece : g::explode(p)) total += length(*piece);
  EXPECT_NEAR(total, length(p), 1e-12);
}

TEST(Explode, ArcsKeepThePlaneAndCentreOfThePolyline) {
  // Normal down: the plane's X is world -X. A bulge of -1 from (0,0) to (2,0)
  // turns clockwise in the plane through (1,1): counterclockwise from 0 to pi.
  const auto p = lw({{0, 0, -1.0}, {2, 0, 0}}, false, 4.0, {0, 0, -1});
  const auto pieces = g::explode(p);
  ASSERT_EQ(pieces.size(), 1u);
  ASSERT_EQ(pieces[0]->kind(), EntityKind::Arc);
  const auto& a = static_cast<const host::ArcEntity&>(*pieces[0]);
  EXPECT_TRUE(near(a.center, {1, 0, 4}));
  EXPECT_EQ(a.normal, (Point3d{0, 0, -1}));
  EXPECT_DOUBLE_EQ(a.radius, 1.0);
  EXPECT_NEAR(a.startAngle, 0.0, 1e-12);
  EXPECT_NEAR(a.endAngle, kPi, 1e-12);
  EXPECT_TRUE(near(g::pointAtParam(a, kPi / 2), {-1, 1, -4}));
  EXPECT_TRUE(near(g::startPoint(a), {-2, 0, -4}));
  EXPECT_TRUE(near(g::endPoint(a), {0, 0, -4}));
}

TEST(Explode, PiecesCarryTheLayerAndProperties) {
  auto p = lw({{0, 0, 0}, {1, 0, 0.3}, {2, 1, 0}}, false);
  p.layer = platform::ObjectId(42);
  p.setLinetype(platform::ObjectId(7));
  p.color = 3;
  p.lineweight = 25;
  p.invisible = true;
  p.rare.make().transparency = 0x02000080;
  p.rare.make().linetypeScale = 2.5;
  const auto pieces = g::explode(p);
  ASSERT_EQ(pieces.size(), 2u);
  for (const auto& piece : pieces) {
    EXPECT_EQ(piece->layer, platform::ObjectId(42));
    EXPECT_EQ(piece->linetype(), platform::ObjectId(7));
    EXPECT_EQ(piece->color, 3);
    EXPECT_EQ(piece->lineweight, 25);
    EXPECT_TRUE(piece->invisible);
    ASSERT_TRUE(piece->rare);
    EXPECT_EQ(piece->rare->transparency, 0x02000080);
    EXPECT_EQ(piece->rare->linetypeScale, 2.5);
  }
}

TEST(Explode, CoincidentVerticesLeaveNoPiece) {
  // The bulge between the coincident vertices makes no arc.
  const auto p = lw({{0, 0, 0.5}, {0, 0, 0}, {3, 4, 0}}, false);
  const auto pieces = g::explode(p);
  ASSERT_EQ(pieces.size(), 1u);
  EXPECT_EQ(pieces[0]->kind(), EntityKind::Line);
  EXPECT_FALSE(g::segments(p)[0].isArc());
  EXPECT_DOUBLE_EQ(length(p), 5.0);
}

// ---- old-style polylines and mlines

TEST(Polylines2d, VerticesLieInThePlaneAtThePolylinesElevation) {
  host::Polyline2dEntity p;
  p.normal = {0, 0, -1};
  p.elevation = 2.0;
  p.flags = 1;
  // The vertices' own Z is not where they are; a frame vertex is not drawn.
  p.vertices = {vertex({0, 0, 99}, 1.0), vertex({7, 7, 0}, 0.0, 16), vertex({2, 0, 99}, 1.0)};
  const auto positions = g::vertexPositions(p);
  ASSERT_EQ(positions.size(), 2u);
  EXPECT_TRUE(near(positions[0], {0, 0, -2}));
  EXPECT_TRUE(near(positions[1], {-2, 0, -2}));
  EXPECT_TRUE(g::isClosed(p));
  EXPECT_NEAR(length(p), 2 * kPi, 1e-12);
  // The plane's (1, -1) is world (-1, -1).
  EXPECT_TRUE(near(g::pointAtParam(p, 0.5), {-1, -1, -2}));
  EXPECT_TRUE(near(g::endPoint(p), {0, 0, -2}));
  p.flags = 0;
  EXPECT_FALSE(g::isClosed(p));
  EXPECT_NEAR(length(p), kPi, 1e-12);
}

TEST(Polylines3d, StraightSegmentsThroughWorldVertices) {
  host::Polyline3dEntity p;
  p.vertices = {vertex({0, 0, 0}), vertex({3, 4, 0}, 5.0), vertex({3, 4, 12})};
  EXPECT_DOUBLE_EQ(length(p), 17.0);
  EXPECT_TRUE(near(g::pointAtParam(p, 1.5), {3, 4, 6}));
  EXPECT_FALSE(g::isClosed(p));
  const auto n = g::nearestPoint(p, {10, 4, 6});
  ASSERT_TRUE(n);
  EXPECT_NEAR(n->param, 1.5, 1e-12);
  EXPECT_NEAR(n->distance, 7.0, 1e-12);
  p.flags = 8 | 1;
  EXPECT_TRUE(g::isClosed(p));
  EXPECT_DOUBLE_EQ(length(p), 30.0);
  ASSERT_TRUE(g::paramRange(p));
  EXPECT_EQ(g::paramRange(p)->end, 3.0);
  EXPECT_TRUE(near(g::pointAtParam(p, 2.5), {1.5, 2, 6}));
  EXPECT_EQ(g::vertexPositions(p).size(), 3u);
  EXPECT_TRUE(near(g::vertexPositions(p)[2], {3, 4, 12}));
}

TEST(Mlines, TheVerticesPositionsMakeThePath) {
  host::MlineEntity m;
  for (const Point3d& p : {Point3d{0, 0, 1}, Point3d{4, 0, 1}, Point3d{4, 3, 1}}) {
    host::MlineVertex v;
    v.position = p;
    m.vertices.push_back(v);
  }
  EXPECT_DOUBLE_EQ(length(m), 7.0);
  EXPECT_FALSE(g::isClosed(m));
  EXPECT_TRUE(near(g::endPoint(m), {4, 3, 1}));
  m.flags = 2;
  EXPECT_TRUE(g::isClosed(m));
  EXPECT_DOUBLE_EQ(length(m), 12.0);
  EXPECT_TRUE(near(g::pointAtParam(m, 2.5), {2, 1.5, 1}));
  EXPECT_EQ(g::vertexPositions(m).size(), 3u);
}

// ---- splines

host::SplineEntity quarterCircle() {
  // The rational quadratic of the quarter of the unit circle in the first quadrant.
  host::SplineEntity s;
  s.degree = 2;
  s.flags = 4;
  s.knots = {0, 0, 0, 1, 1, 1};
  s.controlPoints = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
  s.weights = {1, kRoot2 / 2, 1};
  return s;
}

TEST(Splines, AQuarterCircleSpline) {
  const auto s = quarterCircle();
  ASSERT_TRUE(g::paramRange(s));
  EXPECT_EQ(g::paramRange(s)->start, 0.0);
  EXPECT_EQ(g::paramRange(s)->end, 1.0);
  EXPECT_TRUE(near(g::startPoint(s), {1, 0, 0}));
  EXPECT_TRUE(near(g::endPoint(s), {0, 1, 0}));
  EXPECT_TRUE(near(g::pointAtParam(s, 0.5), {kRoot2 / 2, kRoot2 / 2, 0}));
  EXPECT_NEAR(length(s), kPi / 2, 1e-6);
  EXPECT_FALSE(g::isClosed(s));
  const auto n = g::nearestPoint(s, {2, 2, 1});
  ASSERT_TRUE(n);
  EXPECT_NEAR(n->param, 0.5, 1e-7);
  EXPECT_TRUE(near(n->point, {kRoot2 / 2, kRoot2 / 2, 0}, 1e-8));
  EXPECT_NEAR(n->distance, std::hypot(2 * kRoot2 - 1, 1.0), 1e-12);
}

TEST(Splines, ADegreeOneSplineIsItsControlPolygon) {
  host::SplineEntity s;
  s.degree = 1;
  s.knots = {0, 0, 1, 2, 2};
  s.controlPoints = {{0, 0, 0}, {3, 4, 0}, {3, 4, 12}};
  EXPECT_NEAR(length(s), 17.0, 1e-9);
  const auto side = g::nearestPoint(s, {10, 4, 6});
  ASSERT_TRUE(side);
  EXPECT_NEAR(side->param, 1.5, 1e-9);
  EXPECT_NEAR(side->distance, 7.0, 1e-9);
  // Outside the corner, the corner itself.
  const auto corner = g::nearestPoint(s, {4, 5, -1});
  ASSERT_TRUE(corner);
  EXPECT_NEAR(corner->param, 1.0, 1e-9);
  EXPECT_TRUE(near(corner->point, {3, 4, 0}, 1e-8));
  EXPECT_NEAR(corner->distance, std::sqrt(3.0), 1e-9);
}

TEST(Splines, ClosedByFlagOrByMeetingEndsAndNothingWithoutPoints) {
  host::SplineEntity s;
  s.degree = 1;
  s.knots = {0, 0, 1, 2, 3, 3};
  s.controlPoints = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}};
  EXPECT_TRUE(g::isClosed(s));
  s.controlPoints.back() = {0, 1, 0};
  EXPECT_FALSE(g::isClosed(s));
  s.flags = 1;
  EXPECT_TRUE(g::isClosed(s));
  const host::SplineEntity empty;
  EXPECT_FALSE(g::paramRange(empty));
  EXPECT_FALSE(g::startPoint(empty));
  EXPECT_FALSE(g::curveLength(empty));
  EXPECT_FALSE(g::nearestPoint(empty, {}));
}

// ---- properties of every kind

std::vector<std::unique_ptr<host::Entity>> sampleCurves() {
  std::vector<std::unique_ptr<host::Entity>> curves;
  curves.push_back(std::make_unique<host::LineEntity>(line({1, 2, 3}, {-4, 0, 2})));
  curves.push_back(std::make_unique<host::ArcEntity>(arc({1, 2, 3}, 2.0, 5.0, 1.0, {1, 1, 1})));
  auto circle = std::make_unique<host::CircleEntity>();
  circle->center = {1, -1, 0};
  circle->radius = 1.5;
  circle->normal = {0, -1, 0.2};
  curves.push_back(std::move(circle));
  curves.push_back(std::make_unique<host::EllipseEntity>(
      ellipse({1, 1, 1}, {0, 3, 0}, 0.3, 1.0, 0.5, {1, 0, 0})));
  curves.push_back(std::make_unique<host::LwPolylineEntity>(mixed()));
  host::Polyline3dEntity p3;
  p3.vertices = {vertex({0, 0, 0}), vertex({1, 2, 3}), vertex({-1, 0, 4})};
  curves.push_back(std::make_unique<host::Polyline3dEntity>(p3));
  curves.push_back(std::make_unique<host::SplineEntity>(quarterCircle()));
  return curves;
}

TEST(CurveProperties, EndsAreThePointsAtTheEndsOfTheRange) {
  for (const auto& c : sampleCurves()) {
    const auto range = g::paramRange(*c);
    ASSERT_TRUE(range) << g::isCurve(*c);
    EXPECT_LE(range->start, range->end);
    EXPECT_TRUE(near(g::startPoint(*c), *g::pointAtParam(*c, range->start)));
    EXPECT_TRUE(near(g::endPoint(*c), *g::pointAtParam(*c, range->end)));
    EXPECT_EQ(g::isClosed(*c), near(g::startPoint(*c), *g::endPoint(*c), 1e-9));
  }
}

TEST(CurveProperties, PointsOnACurveAreTheirOwnNearestPoints) {
  for (const auto& c : sampleCurves()) {
    const auto range = g::paramRange(*c);
    ASSERT_TRUE(range);
    for (int i = 0; i <= 20; ++i) {
      const double t = range->start + (range->end - range->start) * i / 20;
      const auto on = g::pointAtParam(*c, t);
      ASSERT_TRUE(on);
      const auto n = g::nearestPoint(*c, *on);
      ASSERT_TRUE(n);
      EXPECT_NEAR(n->distance, 0.0, 1e-9) << static_cast<int>(c->kind()) << " at " << t;
      EXPECT_TRUE(near(n->point, *on, 1e-8)) << static_cast<int>(c->kind()) << " at " << t;
    }
  }
}

TEST(CurveProperties, TheLengthIsTheLimitOfInscribedChords) {
  for (const auto& c : sampleCurves()) {
    const auto range = g::paramRange(*c);
    ASSERT_TRUE(range);
    const int n = 20000;
    double chords = 0.0;
    Point3d previous = *g::startPoint(*c);
    for (int i = 1; i <= n; ++i) {
      const Point3d p = *g::pointAtParam(*c, range->start + (range->end - range->start) * i / n);
      chords += distance(previous, p);
      previous = p;
    }
    // Chords fall short of the curve; only a spline's length, itself measured
    // along chords, may fall a little shorter still.
    const double l = length(*c);
    const double slack = c->kind() == EntityKind::Spline ? 1e-7 : 1e-12;
    EXPECT_LE(chords, l * (1 + slack)) << static_cast<int>(c->kind());
    EXPECT_NEAR(chords, l, 1e-6 * l) << static_cast<int>(c->kind());
  }
}

}  // namespace
