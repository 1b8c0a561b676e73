// Tests of intersections in XY, against answers worked out by hand: lines,
// circles and arcs, bulged polylines, ellipses, splines, and the outlines of
// texts; tangents, overlaps, order along the first entity and its Z.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "Splines.h"
#include "host/db/Database.h"
#include "host/geometry/Intersections.h"

namespace host::geometry {
namespace {

constexpr double kPi = 3.14159265358979323846;

LineEntity line(Point3d a, Point3d b) {
  LineEntity l;
  l.start = a;
  l.end = b;
  return l;
}

CircleEntity circle(Point3d c, double r) {
  CircleEntity e;
  e.center = c;
  e.radius = r;
  return e;
}

ArcEntity arc(Point3d c, double r, double startDegrees, double endDegrees) {
  ArcEntity e;
  e.center = c;
  e.radius = r;
  e.startAngle = startDegrees * kPi / 180.0;
  e.endAngle = endDegrees * kPi / 180.0;
  return e;
}

EllipseEntity ellipse(Point3d c, Point3d major, double ratio) {
  EllipseEntity e;
  e.center = c;
  e.majorAxis = major;
  e.ratio = ratio;
  return e;
}

class Intersect : public ::testing::Test {
 protected:
  std::vector<Point3d> meet(const Entity& a, const Entity& b) { return intersectXY(db_, a, b); }
  // The points, each matched to the expected one in order.
  static void expectPoints(const std::vector<Point3d>& got, const std::vector<Point3d>& want,
                           double tolerance = 1e-9) {
    ASSERT_EQ(got.size(), want.size());
    for (std::size_t i = 0; i < got.size(); ++i) {
      EXPECT_NEAR(got[i].x, want[i].x, tolerance) << "point " << i;
      EXPECT_NEAR(got[i].y, want[i].y, tolerance) << "point " << i;
      EXPECT_NEAR(got[i].z, want[i].z, tolerance) << "point " << i;
    }
  }

  Database db_;
};

// ---- lines ------------------------------------------------------------------------

TEST_F(Intersect, CrossingLinesMeetOnceWithTheFirstOnesZ) {
  const LineEntity a = line({0, 0, 0}, {4, 4, 8});
  const LineEntity b = line({0, 4, -1}, {4, 0, -1});
  expectPoints(meet(a, b), {{2, 2, 4}});
  expectPoints(meet(b, a), {{2, 2, -1}});
}

TEST_F(Intersect, LinesAreNotExtended) {
  const LineEntity a = line({0, 0, 0}, {1, 1, 0});
  const LineEntity b = line({3, 0, 0}, {0, 3, 0});
  EXPECT_TRUE(meet(a, b).empty());
  // Touching at an end counts.
  const LineEntity c = line({1, 1, 0}, {5, -3, 0});
  expectPoints(meet(a, c), {{1, 1, 0}});
  // Parallel lines apart meet nowhere.
  EXPECT_TRUE(meet(a, line({0, 1, 0}, {1, 2, 0})).empty());
}

TEST_F(Intersect, OverlappingLinesGiveTheOverlapsEnds) {
  const LineEntity a = line({0, 0, 0}, {4, 0, 0});
  expectPoints(meet(a, line({6, 0, 0}, {2, 0, 0})), {{2, 0, 0}, {4, 0, 0}});
  expectPoints(meet(a, line({1, 0, 0}, {3, 0, 0})), {{1, 0, 0}, {3, 0, 0}});
  // End to end: one point.
  expectPoints(meet(a, line({4, 0, 0}, {9, 0, 0})), {{4, 0, 0}});
  EXPECT_TRUE(meet(a, line({5, 0, 0}, {9, 0, 0})).empty());
}

// ---- circles and arcs ----------------------------------------------------------------

TEST_F(Intersect, LineThroughACircleTangentOrPast) {
  const CircleEntity c = circle({1, 1, 0}, 5);
  // Through: two points, in the line's order.
  expectPoints(meet(line({-10, 4, 0}, {10, 4, 0}), c), {{-3, 4, 0}, {5, 4, 0}});
  expectPoints(meet(line({10, 4, 0}, {-10, 4, 0}), c), {{5, 4, 0}, {-3, 4, 0}});
  // Tangent: once, also when short of touching by less than the tolerance.
  expectPoints(meet(line({-10, 6, 0}, {10, 6, 0}), c), {{1, 6, 0}});
  expectPoints(meet(line({-10, 6 - 1e-10, 0}, {10, 6 - 1e-10, 0}), c), {{1, 6 - 1e-10, 0}});
  expectPoints(meet(line({-10, 6 + 1e-10, 0}, {10, 6 + 1e-10, 0}), c), {{1, 6 + 1e-10, 0}});
  // Past, and short of it.
  EXPECT_TRUE(meet(line({-10, 6.001, 0}, {10, 6.001, 0}), c).empty());
  EXPECT_TRUE(meet(line({-1, 1, 0}, {3, 1, 0}), c).empty());
  // Ending inside: one point.
  expectPoints(meet(c, line({1, 1, 0}, {10, 1, 0})), {{6, 1, 0}});
}

TEST_F(Intersect, CirclesMeetTwiceOnceOrNever) {
  const CircleEntity a = circle({0, 0, 0}, 5);
  expectPoints(meet(a, circle({8, 0, 0}, 5)), {{4, 3, 0}, {4, -3, 0}});
  expectPoints(meet(a, circle({10, 0, 0}, 5)), {{5, 0, 0}});   // touching outside
  expectPoints(meet(a, circle({0, -2, 0}, 3)), {{0, -5, 0}});  // touching inside
  EXPECT_TRUE(meet(a, circle({11, 0, 0}, 5)).empty());
  EXPECT_TRUE(meet(a, circle({1, 0, 0}, 2)).empty());
  EXPECT_TRUE(meet(a, circle({0, 0, 0}, 4)).empty());
}

TEST_F(Intersect, ArcsKeepToTheirSweep) {
  const LineEntity across = line({-10, 3, 0}, {10, 3, 0});
  // The circle meets the line at (-4, 3) and (4, 3); a first-quadrant arc
  // holds only the second.
  expectPoints(meet(across, arc({0, 0, 0}, 5, 0, 90)), {{4, 3, 0}});
  expectPoints(meet(across, arc({0, 0, 0}, 5, 90, 180)), {{-4, 3, 0}});
  EXPECT_TRUE(meet(across, arc({0, 0, 0}, 5, 180, 360)).empty());
  // Running through zero degrees.
  expectPoints(meet(line({3, -10, 0}, {3, 10, 0}), arc({0, 0, 0}, 5, 300, 60)),
               {{3, -4, 0}, {3, 4, 0}});
  expectPoints(meet(line({3, -10, 0}, {3, 10, 0}), arc({0, 0, 0}, 5, 300, 30)), {{3, -4, 0}});
  // Arc against arc: the circles meet at (4, 3) and (4, -3).
  expectPoints(meet(arc({0, 0, 0}, 5, 0, 90), arc({8, 0, 0}, 5, 90, 270)), {{4, 3, 0}});
  EXPECT_TRUE(meet(arc({0, 0, 0}, 5, 0, 30), arc({8, 0, 0}, 5, 90, 270)).empty());
  // The same circle: the overlap's ends.
  expectPoints(meet(arc({0, 0, 0}, 5, 0, 90), arc({0, 0, 0}, 5, 45, 180)),
               {{5 * std::sqrt(0.5), 5 * std::sqrt(0.5), 0}, {0, 5, 0}});
}

TEST_F(Intersect, ArcsSeenFromBelowRunTheOtherWay) {
  // Normal -Z: the plane's X axis is world -X, so 0 to 90 degrees is the
  // second quadrant in world coordinates.
  ArcEntity a = arc({0, 0, 2}, 5, 0, 90);
  a.normal = {0, 0, -1};
  expectPoints(meet(a, line({-10, 3, 0}, {10, 3, 0})), {{-4, 3, -2}});
}

// ---- polylines -------------------------------------------------------------------------

TEST_F(Intersect, BulgedPolylinesMeetByTheirArcs) {
  // A half circle below the chord (0,0)-(2,0) (bulge 1 turns counterclockwise),
  // then straight up to (2,2); at elevation 3.
  LwPolylineEntity pl;
  pl.vertices = {{0, 0, 1.0}, {2, 0, 0.0}, {2, 2, 0.0}};
  pl.elevation = 3;
  expectPoints(meet(pl, line({1, -5, 0}, {1, 5, 0})), {{1, -1, 3}});
  const double dx = std::sqrt(0.75);
  expectPoints(meet(pl, line({-5, -0.5, 0}, {5, -0.5, 0})), {{1 - dx, -0.5, 3}, {1 + dx, -0.5, 3}});
  // In order along the polyline: the arc first, then the straight segment.
  // The line y = (x - 1) / 2 meets the arc's circle where (x - 1)^2 = 4/5.
  const double r5 = 1 / std::sqrt(5.0);
  expectPoints(meet(pl, line({0, -0.5, 0}, {4, 1.5, 0})), {{1 - 2 * r5, -r5, 3}, {2, 0.5, 3}});
  // A corner on the line counts once.
  LwPolylineEntity vee;
  vee.vertices = {{0, 0, 0}, {2, 2, 0}, {4, 0, 0}};
  expectPoints(meet(vee, line({0, 2, 0}, {4, 2, 0})), {{2, 2, 0}});
}

TEST_F(Intersect, OldStylePolylinesAndMlines) {
  Polyline2dEntity p2;
  p2.elevation = 1;
  PolylineVertex v;
  v.position = {0, 0, 0};
  v.bulge = -1.0;  // clockwise: the half circle above the chord
  p2.vertices.push_back(v);
  v.position = {2, 0, 0};
  v.bulge = 0.0;
  p2.vertices.push_back(v);
  expectPoints(meet(p2, line({1, -5, 0}, {1, 5, 0})), {{1, 1, 1}});

  Polyline3dEntity p3;
  for (Point3d p : {Point3d{0, 0, 0}, Point3d{4, 0, 4}, Point3d{4, 4, 8}}) {
    v.position = p;
    p3.vertices.push_back(v);
  }
  expectPoints(meet(p3, line({2, -1, 0}, {2, 5, 0})), {{2, 0, 2}});
  p3.flags = 8 | 1;  // closed: the way back to the start crosses too
  expectPoints(meet(p3, line({2, -1, 0}, {2, 5, 0})), {{2, 0, 2}, {2, 2, 4}});

  MlineEntity m;
  m.start = {0, 0, 0};
  for (Point3d p : {Point3d{0, 0, 0}, Point3d{4, 0, 0}, Point3d{4, 4, 0}}) {
    MlineVertex mv;
    mv.position = p;
    m.vertices.push_back(mv);
  }
  expectPoints(meet(m, line({3, -1, 0}, {5, 1, 0})), {{4, 0, 0}});
  expectPoints(meet(m, line({0, 2, 0}, {6, 2, 0})), {{4, 2, 0}});
}

// ---- ellipses -----------------------------------------------------------------------------

TEST_F(Intersect, EllipsesAgainstLines) {
  // Semi-axes 4 along X and 2 along Y.
  const EllipseEntity e = ellipse({0, 0, 0}, {4, 0, 0}, 0.5);
  const double y = std::sqrt(3.0);
  expectPoints(meet(line({2, -5, 0}, {2, 5, 0}), e), {{2, -y, 0}, {2, y, 0}});
  expectPoints(meet(line({4, -5, 0}, {4, 5, 0}), e), {{4, 0, 0}});  // tangent
  expectPoints(meet(line({4 - 1e-10, -5, 0}, {4 - 1e-10, 5, 0}), e), {{4 - 1e-10, 0, 0}});
  EXPECT_TRUE(meet(line({4.01, -5, 0}, {4.01, 5, 0}), e).empty());
  // Order along the ellipse: from the end of the major axis, counterclockwise.
  expectPoints(meet(e, line({2, -5, 0}, {2, 5, 0})), {{2, y, 0}, {2, -y, 0}});
  // Half of it: the upper one.
  EllipseEntity half = e;
  half.endParam = kPi;
  expectPoints(meet(line({2, -5, 0}, {2, 5, 0}), half), {{2, y, 0}});
  // Turned a quarter: semi-axes 4 along Y and 2 along X.
  const EllipseEntity turned = ellipse({1, 1, 0}, {0, 4, 0}, 0.5);
  expectPoints(meet(line({-5, 1, 0}, {5, 1, 0}), turned), {{-1, 1, 0}, {3, 1, 0}});
}

TEST_F(Intersect, EllipsesAgainstCirclesAndEllipses) {
  const EllipseEntity e = ellipse({0, 0, 0}, {4, 0, 0}, 0.5);
  // x^2/16 + y^2/4 = 1 and x^2 + y^2 = 9: x^2 = 20/3, y^2 = 7/3.
  const double x = std::sqrt(20.0 / 3.0);
  const double y = std::sqrt(7.0 / 3.0);
  expectPoints(meet(e, circle({0, 0, 0}, 3)), {{x, y, 0}, {-x, y, 0}, {-x, -y, 0}, {x, -y, 0}});
  // The same ellipse turned a quarter: x^2 = y^2 = 16/5.
  const double k = std::sqrt(16.0 / 5.0);
  expectPoints(meet(e, ellipse({0, 0, 0}, {0, 4, 0}, 0.5)),
               {{k, k, 0}, {-k, k, 0}, {-k, -k, 0}, {k, -k, 0}});
  // Touching the circle of radius 2 at the ends of the minor axis.
  expectPoints(meet(e, circle({0, 0, 0}, 2)), {{0, 2, 0}, {0, -2, 0}}, 1e-6);
  EXPECT_TRUE(meet(e, circle({0, 0, 0}, 1.9)).empty());
}

// ---- splines ------------------------------------------------------------------------------

SplineEntity bezier() {
  // y = 9 t (1 - t); x = 3 t (1-t)^2 + 9 t^2 (1-t) + 4 t^3.
  SplineEntity s;
  s.degree = 3;
  s.controlPoints = {{0, 0, 0}, {1, 3, 0}, {3, 3, 0}, {4, 0, 0}};
  return s;
}

TEST_F(Intersect, SplinesAgainstLines) {
  const SplineEntity s = bezier();
  // y = 2: t = 1/3 and 2/3, where x is 34/27 and 74/27.
  expectPoints(meet(line({-1, 2, 0}, {5, 2, 0}), s), {{34.0 / 27, 2, 0}, {74.0 / 27, 2, 0}});
  expectPoints(meet(s, line({5, 2, 0}, {-1, 2, 0})), {{34.0 / 27, 2, 0}, {74.0 / 27, 2, 0}});
  // y = 2.25 touches the top once.
  expectPoints(meet(line({-1, 2.25, 0}, {5, 2.25, 0}), s), {{2, 2.25, 0}}, 1e-6);
  EXPECT_TRUE(meet(line({-1, 2.26, 0}, {5, 2.26, 0}), s).empty());
  // The line stops between the two crossings.
  expectPoints(meet(line({-1, 2, 0}, {2, 2, 0}), s), {{34.0 / 27, 2, 0}});
}

TEST_F(Intersect, SplineCopiesMeetLikeTheirOriginals) {
  const CircleEntity c = circle({1, 2, 0}, 3);
  const auto copy = splineOf(c);
  const LineEntity across = line({-5, 2, 0}, {8, 2, 0});
  expectPoints(meet(across, *copy), {{-2, 2, 0}, {4, 2, 0}});
  // Against another circle: (x-1)^2 + (y-2)^2 = 9 and (x-4)^2 + (y-2)^2 = 9
  // meet at x = 2.5.
  const double h = std::sqrt(9 - 2.25);
  expectPoints(meet(*copy, circle({4, 2, 0}, 3)), {{2.5, 2 + h, 0}, {2.5, 2 - h, 0}});
  // Against the arc it copies a quarter of: where the quarter begins and ends.
  const auto quarter = splineOf(arc({1, 2, 0}, 3, 0, 90));
  expectPoints(meet(*quarter, c), {{4, 2, 0}, {1, 5, 0}});
}

TEST_F(Intersect, SplinesAgainstSplines) {
  // The Bezier turned upside down and lifted by 2 runs over the same x for
  // the same t, so the two meet where 9 t (1 - t) = 2 - 9 t (1 - t) = 1.
  SplineEntity down = bezier();
  for (Point3d& p : down.controlPoints) p.y = 2 - p.y;
  const SplineEntity up = bezier();
  // 9 t (1 - t) = 1: t = (1 -+ sqrt(5/9)) / 2.
  const double t = (1 - std::sqrt(5.0 / 9.0)) / 2;
  auto x = [](double u) { return 3 * u * (1 - u) * (1 - u) + 9 * u * u * (1 - u) + 4 * u * u * u; };
  expectPoints(meet(up, down), {{x(t), 1, 0}, {x(1 - t), 1, 0}});
}

// ---- everything else by its box -----------------------------------------------------------

TEST_F(Intersect, TextsMeetByTheirBoxes) {
  TextEntity text;
  text.data.position = {0, 0, 0};
  text.data.height = 1;
  text.data.text = L"AB";  // 1.2 wide, 1 high
  expectPoints(meet(line({0.6, -1, 0}, {0.6, 2, 0}), text), {{0.6, 0, 0}, {0.6, 1, 0}});
  EXPECT_TRUE(meet(line({1.3, -1, 0}, {1.3, 2, 0}), text).empty());
}

TEST_F(Intersect, PointsMeetWhatTheyLieOn) {
  PointEntity p;
  p.position = {4, 3, 7};
  expectPoints(meet(p, circle({0, 0, 0}, 5)), {{4, 3, 7}});
  EXPECT_TRUE(meet(p, circle({0, 0, 0}, 5.1)).empty());
  expectPoints(meet(line({0, 3, 0}, {8, 3, 0}), p), {{4, 3, 0}});
}

TEST_F(Intersect, TheToleranceDecidesNearMisses) {
  const LineEntity a = line({0, 0, 0}, {4, 0, 0});
  const LineEntity b = line({2, 1e-7, 0}, {2, 5, 0});
  EXPECT_TRUE(intersectXY(db_, a, b).empty());
  const auto hits = intersectXY(db_, a, b, 1e-6);
  ASSERT_EQ(hits.size(), 1u);
  EXPECT_NEAR(hits[0].x, 2.0, 1e-12);
}

}  // namespace
}  // namespace host::geometry
