// Tests of intersections in XY, against answers worked out by hand: lines,
// circles and arcs, bulged polylines, ellipses, splines, and the outlines of
// texts; tangents, overlaps, order along the first entity and its Z.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "GeometryChecks.h"
#include "Splines.h"
#include "host/geometry/Intersections.h"

namespace host::geometry {
namespace {

using namespace test;

ArcEntity degreeArc(const Point3d& c, double r, double startDegrees, double endDegrees) {
  return arc(c, r, startDegrees * kPi / 180.0, endDegrees * kPi / 180.0);
}

class Intersect : public ::testing::Test {
 protected:
  // The points where the first meets the second, in order along the first and
  // at its Z.
  void expect(const char* name, const Entity& a, const Entity& b, const std::vector<Point3d>& want,
              double tolerance = 1e-9) {
    EXPECT_TRUE(near(intersectXY(db_, a, b), want, tolerance)) << name;
  }
  Database db_;
};

TEST_F(Intersect, Lines) {
  const LineEntity a = line({0, 0, 0}, {4, 4, 8});
  const LineEntity b = line({0, 4, -1}, {4, 0, -1});
  expect("crossing, at the first one's Z", a, b, {{2, 2, 4}});
  expect("crossing the other way", b, a, {{2, 2, -1}});
  const LineEntity unit = line({0, 0, 0}, {1, 1, 0});
  expect("not extended", unit, line({3, 0, 0}, {0, 3, 0}), {});
  expect("touching at an end", unit, line({1, 1, 0}, {5, -3, 0}), {{1, 1, 0}});
  expect("parallel apart", unit, line({0, 1, 0}, {1, 2, 0}), {});
  const LineEntity x = line({0, 0, 0}, {4, 0, 0});
  expect("overlap from beyond", x, line({6, 0, 0}, {2, 0, 0}), {{2, 0, 0}, {4, 0, 0}});
  expect("overlap within", x, line({1, 0, 0}, {3, 0, 0}), {{1, 0, 0}, {3, 0, 0}});
  expect("end to end", x, line({4, 0, 0}, {9, 0, 0}), {{4, 0, 0}});
  expect("in line, apart", x, line({5, 0, 0}, {9, 0, 0}), {});
}

TEST_F(Intersect, CirclesAndArcs) {
  const CircleEntity c = circle({1, 1, 0}, 5);
  auto across = [](double y) { return line({-10, y, 0}, {10, y, 0}); };
  expect("line through, in the line's order", across(4), c, {{-3, 4, 0}, {5, 4, 0}});
  expect("line through the other way", line({10, 4, 0}, {-10, 4, 0}), c, {{5, 4, 0}, {-3, 4, 0}});
  // Tangent: once, also when short of touching by less than the tolerance.
  expect("tangent", across(6), c, {{1, 6, 0}});
  expect("tangent from inside", across(6 - 1e-10), c, {{1, 6 - 1e-10, 0}});
  expect("tangent from outside", across(6 + 1e-10), c, {{1, 6 + 1e-10, 0}});
  expect("past", across(6.001), c, {});
  expect("short of it", line({-1, 1, 0}, {3, 1, 0}), c, {});
  expect("ending inside", c, line({1, 1, 0}, {10, 1, 0}), {{6, 1, 0}});

  const CircleEntity o = circle({0, 0, 0}, 5);
  expect("circles twice", o, circle({8, 0, 0}, 5), {{4, 3, 0}, {4, -3, 0}});
  expect("circles touching outside", o, circle({10, 0, 0}, 5), {{5, 0, 0}});
  expect("circles touching inside", o, circle({0, -2, 0}, 3), {{0, -5, 0}});
  expect("circles touching inside, the outer second", circle({0, -2, 0}, 3), o, {{0, -5, 0}});
  expect("circles apart", o, circle({11, 0, 0}, 5), {});
  expect("circle inside", o, circle({1, 0, 0}, 2), {});
  expect("concentric", o, circle({0, 0, 0}, 4), {});

  // The circle meets y = 3 at (-4, 3) and (4, 3); arcs hold what their sweep does.
  expect("first quadrant", across(3), degreeArc({}, 5, 0, 90), {{4, 3, 0}});
  expect("second quadrant", across(3), degreeArc({}, 5, 90, 180), {{-4, 3, 0}});
  expect("lower half", across(3), degreeArc({}, 5, 180, 360), {});
  const LineEntity upright = line({3, -10, 0}, {3, 10, 0});
  expect("through zero degrees", upright, degreeArc({}, 5, 300, 60), {{3, -4, 0}, {3, 4, 0}});
  expect("through zero, short", upright, degreeArc({}, 5, 300, 30), {{3, -4, 0}});
  // The circles meet at (4, 3) and (4, -3).
  expect("arc against arc", degreeArc({}, 5, 0, 90), degreeArc({8, 0, 0}, 5, 90, 270), {{4, 3, 0}});
  expect("arcs apart", degreeArc({}, 5, 0, 30), degreeArc({8, 0, 0}, 5, 90, 270), {});
  const double h = 5 * std::sqrt(0.5);
  expect("the same circle: the overlap's ends", degreeArc({}, 5, 0, 90), degreeArc({}, 5, 45, 180),
         {{h, h, 0}, {0, 5, 0}});
  // Normal -Z: the plane's X axis is world -X, so 0 to 90 degrees is the
  // second quadrant in world coordinates.
  expect("seen from below", arc({0, 0, 2}, 5, 0, kPi / 2, {0, 0, -1}), across(3), {{-4, 3, -2}});
}

TEST_F(Intersect, PolylinesAndMlines) {
  // A half circle below the chord (0,0)-(2,0) (bulge 1 turns counterclockwise),
  // then straight up to (2,2); at elevation 3.
  const LwPolylineEntity pl = lw({{0, 0, 1.0}, {2, 0, 0.0}, {2, 2, 0.0}}, false, 3);
  expect("bulge", pl, line({1, -5, 0}, {1, 5, 0}), {{1, -1, 3}});
  const double dx = std::sqrt(0.75);
  expect("bulge twice", pl, line({-5, -0.5, 0}, {5, -0.5, 0}),
         {{1 - dx, -0.5, 3}, {1 + dx, -0.5, 3}});
  // In order along the polyline: the arc first, then the straight segment.
  // The line y = (x - 1) / 2 meets the arc's circle where (x - 1)^2 = 4/5.
  const double r5 = 1 / std::sqrt(5.0);
  expect("in order along the polyline", pl, line({0, -0.5, 0}, {4, 1.5, 0}),
         {{1 - 2 * r5, -r5, 3}, {2, 0.5, 3}});
  expect("a corner on the line counts once", lw({{0, 0, 0}, {2, 2, 0}, {4, 0, 0}}),
         line({0, 2, 0}, {4, 2, 0}), {{2, 2, 0}});

  Polyline2dEntity p2;
  p2.elevation = 1;
  p2.vertices = {vertex({0, 0, 0}, -1.0), vertex({2, 0, 0})};  // clockwise: above the chord
  expect("2D polyline", p2, line({1, -5, 0}, {1, 5, 0}), {{1, 1, 1}});
  const std::vector<Point3d> rising{{0, 0, 0}, {4, 0, 4}, {4, 4, 8}};
  const LineEntity upright = line({2, -1, 0}, {2, 5, 0});
  expect("3D polyline", polyline3d(rising), upright, {{2, 0, 2}});
  // Closed: the way back to the start crosses too.
  expect("closed 3D polyline", polyline3d(rising, 8 | 1), upright, {{2, 0, 2}, {2, 2, 4}});
  const MlineEntity m = mline({{0, 0, 0}, {4, 0, 0}, {4, 4, 0}});
  expect("mline at a corner", m, line({3, -1, 0}, {5, 1, 0}), {{4, 0, 0}});
  expect("mline", m, line({0, 2, 0}, {6, 2, 0}), {{4, 2, 0}});
}

TEST_F(Intersect, Ellipses) {
  // Semi-axes 4 along X and 2 along Y.
  const EllipseEntity e = ellipse({}, {4, 0, 0}, 0.5);
  auto upright = [](double x) { return line({x, -5, 0}, {x, 5, 0}); };
  const double y = std::sqrt(3.0);
  expect("line through", upright(2), e, {{2, -y, 0}, {2, y, 0}});
  expect("tangent", upright(4), e, {{4, 0, 0}});
  expect("tangent from inside", upright(4 - 1e-10), e, {{4 - 1e-10, 0, 0}});
  expect("past", upright(4.01), e, {});
  // From the end of the major axis, counterclockwise.
  expect("in order along the ellipse", e, upright(2), {{2, y, 0}, {2, -y, 0}});
  expect("half of it: the upper one", upright(2), ellipse({}, {4, 0, 0}, 0.5, 0, kPi), {{2, y, 0}});
  // Turned a quarter: semi-axes 4 along Y and 2 along X.
  expect("turned", line({-5, 1, 0}, {5, 1, 0}), ellipse({1, 1, 0}, {0, 4, 0}, 0.5),
         {{-1, 1, 0}, {3, 1, 0}});
  // x^2/16 + y^2/4 = 1 and x^2 + y^2 = 9: x^2 = 20/3, y^2 = 7/3.
  const double cx = std::sqrt(20.0 / 3.0);
  const double cy = std::sqrt(7.0 / 3.0);
  expect("circle", e, circle({}, 3), {{cx, cy, 0}, {-cx, cy, 0}, {-cx, -cy, 0}, {cx, -cy, 0}});
  // The same ellipse turned a quarter: x^2 = y^2 = 16/5.
  const double k = std::sqrt(16.0 / 5.0);
  expect("ellipse", e, ellipse({}, {0, 4, 0}, 0.5),
         {{k, k, 0}, {-k, k, 0}, {-k, -k, 0}, {k, -k, 0}});
  expect("circle touching the minor axis' ends", e, circle({}, 2), {{0, 2, 0}, {0, -2, 0}}, 1e-6);
  expect("circle inside", e, circle({}, 1.9), {});
}

// y = 9 t (1 - t); x = 3 t (1-t)^2 + 9 t^2 (1-t) + 4 t^3.
double bezierX(double t) {
  return 3 * t * (1 - t) * (1 - t) + 9 * t * t * (1 - t) + 4 * t * t * t;
}
const std::vector<Point3d> kBezier{{0, 0, 0}, {1, 3, 0}, {3, 3, 0}, {4, 0, 0}};

TEST_F(Intersect, Splines) {
  const SplineEntity s = spline(3, kBezier);
  auto across = [](double y, double to = 5) { return line({-1, y, 0}, {to, y, 0}); };
  // y = 2: t = 1/3 and 2/3, where x is 34/27 and 74/27.
  const std::vector<Point3d> twice{{34.0 / 27, 2, 0}, {74.0 / 27, 2, 0}};
  expect("line through", across(2), s, twice);
  expect("in order along the spline", s, line({5, 2, 0}, {-1, 2, 0}), twice);
  expect("touching the top", across(2.25), s, {{2, 2.25, 0}}, 1e-6);
  expect("past the top", across(2.26), s, {});
  expect("line stopping between the crossings", across(2, 2), s, {{34.0 / 27, 2, 0}});

  const CircleEntity c = circle({1, 2, 0}, 3);
  const auto copy = splineOf(c);
  expect("copy of a circle", line({-5, 2, 0}, {8, 2, 0}), *copy, {{-2, 2, 0}, {4, 2, 0}});
  // (x-1)^2 + (y-2)^2 = 9 and (x-4)^2 + (y-2)^2 = 9 meet at x = 2.5.
  const double h = std::sqrt(9 - 2.25);
  expect("copy against a circle", *copy, circle({4, 2, 0}, 3), {{2.5, 2 + h, 0}, {2.5, 2 - h, 0}});
  expect("copy of a quarter against its circle: where it begins and ends",
         *splineOf(degreeArc({1, 2, 0}, 3, 0, 90)), c, {{4, 2, 0}, {1, 5, 0}});

  // The Bezier turned upside down and lifted by 2 runs over the same x for
  // the same t, so the two meet where 9 t (1 - t) = 2 - 9 t (1 - t) = 1,
  // t = (1 -+ sqrt(5/9)) / 2.
  SplineEntity down = s;
  for (Point3d& p : down.controlPoints) p.y = 2 - p.y;
  const double t = (1 - std::sqrt(5.0 / 9.0)) / 2;
  expect("spline against spline", s, down, {{bezierX(t), 1, 0}, {bezierX(1 - t), 1, 0}});
}

TEST_F(Intersect, TextsByTheirBoxesPointsByWhatTheyLieOnNearMissesByTheTolerance) {
  TextEntity text;
  text.data.height = 1;
  text.data.text = L"AB";  // 1.2 wide, 1 high
  expect("text", line({0.6, -1, 0}, {0.6, 2, 0}), text, {{0.6, 0, 0}, {0.6, 1, 0}});
  expect("past the text", line({1.3, -1, 0}, {1.3, 2, 0}), text, {});
  PointEntity p;
  p.position = {4, 3, 7};
  expect("point on a circle", p, circle({}, 5), {{4, 3, 7}});
  expect("point off a circle", p, circle({}, 5.1), {});
  expect("line through a point", line({0, 3, 0}, {8, 3, 0}), p, {{4, 3, 0}});
  const LineEntity a = line({0, 0, 0}, {4, 0, 0});
  const LineEntity b = line({2, 1e-7, 0}, {2, 5, 0});
  EXPECT_TRUE(intersectXY(db_, a, b).empty());
  const auto hits = intersectXY(db_, a, b, 1e-6);
  ASSERT_EQ(hits.size(), 1u);
  EXPECT_NEAR(hits[0].x, 2.0, 1e-12);
}

}  // namespace
}  // namespace host::geometry
