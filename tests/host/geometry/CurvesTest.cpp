// Curves in world coordinates: parameters, points, lengths, nearest points,
// polyline segments, explode and area, against answers worked out by hand,
// and the properties that tie them to each other and to the extents.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "GeometryChecks.h"
#include "Splines.h"
#include "host/geometry/Curves.h"
#include "host/geometry/Extents.h"
#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

using namespace test;

const double kRoot2 = std::sqrt(2.0);
const double kNotByHand = std::nan("");
// The bulge of a quarter turn: tan(pi / 8).
const double kQuarterBulge = std::tan(kPi / 8.0);
// The perimeter of the ellipse with semi-axes 2 and 1.
constexpr double kPerimeter21 = 9.688448220547675;

double lengthOf(const Entity& e) {
  return curveLength(e).value_or(-1.0);
}

SplineEntity quarterCircle() {
  // The rational quadratic of the quarter of the unit circle in the first quadrant.
  SplineEntity s = spline(2, {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, {0, 0, 0, 1, 1, 1});
  s.flags = 4;
  s.weights = {1, kRoot2 / 2, 1};
  return s;
}

SplineEntity weightedCubic() {
  SplineEntity s =
      spline(3, {{0, 0, 0}, {2, 5, 1}, {4, -3, 2}, {6, 4, -1}, {7, -2, 0}, {9, 1, 3}, {10, 6, -2}},
             {0, 0, 0, 0, 0.2, 0.5, 0.55, 1, 1, 1, 1});
  s.weights = {1, 2, 0.5, 1, 3, 1, 1};
  s.flags = 4;
  return s;
}

LwPolylineEntity mixed() {
  return lw({{0, 0, 0.5}, {4, 0, 0}, {4, 3, -0.8}, {1, 4, 0}, {0, 3, 2.0}}, true, 1.5,
            {0.2, -0.3, 0.9});
}

Polyline2dEntity seenFromBelow(std::int16_t flags) {
  Polyline2dEntity p;
  p.normal = {0, 0, -1};
  p.elevation = 2.0;
  p.flags = flags;
  // The vertices' own Z is not where they are; a frame vertex is not drawn.
  p.vertices = {vertex({0, 0, 99}, 1.0), vertex({7, 7, 0}, 0.0, 16), vertex({2, 0, 99}, 1.0)};
  return p;
}

struct At {
  double param;
  Point3d point;
};
struct NearestTo {
  Point3d from;
  double param;
  Point3d point;
  double distance;
};
struct CurveCase {
  const char* name;
  std::shared_ptr<const Entity> curve;
  ParamRange range;
  double length;  // not checked when not worked out by hand
  bool closed;
  std::vector<At> points;
  std::vector<NearestTo> nearest;
  std::optional<std::vector<Point3d>> vertices;  // of polylines and mlines
  double tolerance;                              // of the length, relative
};

template <typename T>
CurveCase curve(const char* name, T entity, ParamRange range, double length, bool closed,
                std::vector<At> points, std::vector<NearestTo> nearest = {},
                std::optional<std::vector<Point3d>> vertices = std::nullopt,
                double tolerance = 1e-12) {
  return {name,     shared(std::move(entity)), range, length, closed, points, nearest, vertices,
          tolerance};
}

const std::vector<CurveCase>& curveCases() {
  const double h = kRoot2 / 2;
  const double b = kQuarterBulge;
  const double flat = 1e-4;
  // With semi-axes 1 and f, the perimeter is 4 + 2 f^2 (ln(4 / f) - 1/2) and terms in f^4.
  const double flatPerimeter = 4.0 + 2.0 * flat * flat * (std::log(4.0 / flat) - 0.5);
  const std::vector<Point3d> corners{{0, 0, 0}, {3, 4, 0}, {3, 4, 12}};
  const std::vector<Point3d> path{{0, 0, 1}, {4, 0, 1}, {4, 3, 1}};
  static const std::vector<CurveCase> cases{
      // Two along the line, three across it in the plane and four above; then past its end.
      curve("line: the parameter is the distance from the start", line({1, 2, 3}, {4, 6, 3}),
            {0, 5}, 5, false, {{0, {1, 2, 3}}, {2.5, {2.5, 4, 3}}, {5, {4, 6, 3}}},
            {{{1 + 1.2 - 2.4, 2 + 1.6 + 1.8, 7}, 2, {2.2, 3.6, 3}, 5},
             {{10, 20, 3}, 5, {4, 6, 3}, std::sqrt(232.0)}}),
      // On the arc, and off it where the nearer end by angle is the nearest.
      curve("quarter arc", arc({1, 1, 0}, 2.0, 0.0, kPi / 2), {0, kPi / 2}, kPi, false,
            {{0, {3, 1, 0}}, {kPi / 4, {1 + kRoot2, 1 + kRoot2, 0}}, {kPi / 2, {1, 3, 0}}},
            {{{5, 5, 7},
              kPi / 4,
              {1 + kRoot2, 1 + kRoot2, 0},
              std::sqrt(2 * std::pow(4 - kRoot2, 2) + 49)},
             {{1, -5, 0}, 0, {3, 1, 0}, std::sqrt(40.0)},
             {{-5, 1.5, 0}, kPi / 2, {1, 3, 0}, std::sqrt(38.25)}}),
      curve("arc through angle zero runs on past two pi", arc({}, 2.0, 1.5 * kPi, 0.5 * kPi),
            {1.5 * kPi, 2.5 * kPi}, 2 * kPi, false,
            {{1.5 * kPi, {0, -2, 0}}, {2 * kPi, {2, 0, 0}}, {2.5 * kPi, {0, 2, 0}}}),
      // For the normal (0, 0, -1) the plane's X axis is world -X and its Y world Y;
      // world (-4, 5, 0) is (4, 5, 0) in the plane, at 45 degrees from the centre.
      curve(
          "arc seen from below", arc({1, 2, 3}, 1.0, 0.0, kPi / 2, {0, 0, -1}), {0, kPi / 2},
          kPi / 2, false,
          {{0, {-2, 2, -3}}, {kPi / 4, {-1 - h, 2 + h, -3}}, {kPi / 2, {-1, 3, -3}}},
          {{{-4, 5, 0}, kPi / 4, {-1 - h, 2 + h, -3}, std::sqrt(std::pow(3 * kRoot2 - 1, 2) + 9)}}),
      curve("arc in a tilted plane", arc({1, 2, 3}, 2.0, 5.0, 1.0, {1, 1, 1}), {5, 1 + 2 * kPi},
            2 * (2 * kPi - 4), false, {}),
      // For the normal (1, 0, 0) the plane's X axis is world Y and its Y world Z.
      curve("circle in the YZ plane", circle({0, 0, 2}, 3.0, {1, 0, 0}), {0, 2 * kPi}, 6 * kPi,
            true, {{0, {2, 3, 0}}, {kPi / 2, {2, 0, 3}}},
            {{{10, 0, -7}, 1.5 * kPi, {2, 0, -3}, std::sqrt(80.0)}}),
      curve("circle in a tilted plane", circle({1, -1, 0}, 1.5, {0, -1, 0.2}), {0, 2 * kPi},
            3 * kPi, true, {}),
      curve("round ellipse", ellipse({5, 5, 5}, {3, 0, 0}, 1.0), {0, 2 * kPi}, 6 * kPi, true,
            {{kPi / 2, {5, 8, 5}}}),
      curve("ellipse at its own parameter", ellipse({1, 1, 0}, {2, 0, 0}, 0.5), {0, 2 * kPi},
            kPerimeter21, true,
            {{0, {3, 1, 0}}, {kPi / 2, {1, 2, 0}}, {kPi / 3, {2, 1 + std::sqrt(3.0) / 2, 0}}},
            {{{1, 6, 0}, kPi / 2, {1, 2, 0}, 4}}),
      // The minor axis is the normal crossed with the major: (1,0,0) x (0,0,2) is (0,-2,0).
      curve("ellipse in the YZ plane", ellipse({1, 2, 3}, {0, 0, 2}, 0.5, 0, 2 * kPi, {1, 0, 0}),
            {0, 2 * kPi}, kPerimeter21, true, {{kPi / 2, {1, 1, 3}}, {kPi, {1, 2, 1}}}),
      curve("quarter ellipse", ellipse({}, {2, 0, 0}, 0.5, 0.0, kPi / 2), {0, kPi / 2},
            kPerimeter21 / 4, false, {{0, {2, 0, 0}}, {kPi / 2, {0, 1, 0}}},
            {{{-3, 0.5, 0}, kPi / 2, {0, 1, 0}, std::sqrt(9.25)}}),
      curve("partial ellipse runs counterclockwise from its start",
            ellipse({}, {2, 0, 0}, 0.5, kPi / 2, 0.0), {kPi / 2, 2 * kPi}, 0.75 * kPerimeter21,
            false, {{kPi / 2, {0, 1, 0}}, {kPi, {-2, 0, 0}}, {2 * kPi, {2, 0, 0}}}, {},
            std::nullopt, 2e-12),
      curve("tilted ellipse across zero", ellipse({1, 1, 1}, {0, 3, 0}, 0.3, 1.0, 0.5, {1, 0, 0}),
            {1, 0.5 + 2 * kPi}, kNotByHand, false, {}),
      curve("very flat ellipse", ellipse({}, {1, 0, 0}, flat), {0, 2 * kPi}, flatPerimeter, true,
            {}, {}, std::nullopt, 2.5e-14),
      // Counterclockwise from (0,0) to (2,0): the arc passes below, through (1,-1).
      curve("semicircle of bulge one", lw({{0, 0, 1.0}, {2, 0, 0}}), {0, 1}, kPi, false,
            {{0.5, {1, -1, 0}}, {0.25, {1 - h, -h, 0}}}),
      curve("semicircle of bulge minus one", lw({{0, 0, -1.0}, {2, 0, 0}}), {0, 1}, kPi, false,
            {{0.5, {1, 1, 0}}}),
      curve("two vertices of bulge one closed", lw({{0, 0, 1.0}, {2, 0, 1.0}}, true), {0, 2},
            2 * kPi, true, {{1.5, {1, 1, 0}}, {2, {0, 0, 0}}}),
      // Each side bulged a quarter turn: arcs of radius sqrt(2) about (1,1), or
      // about the centres outside when bulged inward.
      curve("square bulged outward", lw({{0, 0, b}, {2, 0, b}, {2, 2, b}, {0, 2, b}}, true), {0, 4},
            2 * kRoot2 * kPi, true, {{0.5, {1, 1 - kRoot2, 0}}, {2.5, {1, 1 + kRoot2, 0}}}),
      curve("square bulged inward", lw({{0, 0, -b}, {2, 0, -b}, {2, 2, -b}, {0, 2, -b}}, true),
            {0, 4}, 2 * kRoot2 * kPi, true, {{0.5, {1, kRoot2 - 1, 0}}}),
      // For the normal (1, 0, 0) the plane's (x, y, elevation) is world (elevation, x, y).
      // The semicircle from (4,6) to (6,6) passes below its chord, through (5,5).
      curve("polyline at an elevation in the YZ plane",
            lw({{1, 2, 0}, {4, 6, 1.0}, {6, 6, 0}}, false, 5.0, {1, 0, 0}), {0, 2}, 5 + kPi, false,
            {{0, {5, 1, 2}}, {0.5, {5, 2.5, 4}}, {1, {5, 4, 6}}, {1.5, {5, 5, 5}}, {2, {5, 6, 6}}},
            {{{9, 5, 3}, 1.5, {5, 5, 5}, std::sqrt(20.0)}},
            std::vector<Point3d>{{5, 1, 2}, {5, 4, 6}, {5, 6, 6}}),
      // Below the semicircle's lowest point; beside the straight side.
      curve("polyline of an arc and a side", lw({{0, 0, 1.0}, {2, 0, 0}, {2, 3, 0}}), {0, 2},
            kPi + 3, false, {},
            {{{1, -4, 0}, 0.5, {1, -1, 0}, 3}, {{5, 2, 4}, 1 + 2.0 / 3.0, {2, 2, 0}, 5}}),
      // Seen from below, the plane's X is world -X; a bulge of -1 turns
      // clockwise in the plane, through (1,1).
      curve("polyline seen from below", lw({{0, 0, -1.0}, {2, 0, 0}}, false, 4.0, {0, 0, -1}),
            {0, 1}, kPi, false, {{0, {0, 0, -4}}, {0.5, {-1, 1, -4}}, {1, {-2, 0, -4}}}),
      curve("polyline of mixed bulges in a tilted plane", mixed(), {0, 5}, kNotByHand, true, {}),
      curve("polyline of one vertex is a point", lw({{1, 2, 0.5}}, true, 3.0), {0, 0}, 0, true,
            {{0, {1, 2, 3}}}, {}, std::vector<Point3d>{{1, 2, 3}}),
      // The plane's (1, -1) is world (-1, -1).
      curve("closed 2D polyline seen from below", seenFromBelow(1), {0, 2}, 2 * kPi, true,
            {{0.5, {-1, -1, -2}}, {2, {0, 0, -2}}}, {},
            std::vector<Point3d>{{0, 0, -2}, {-2, 0, -2}}),
      curve("open 2D polyline seen from below", seenFromBelow(0), {0, 1}, kPi, false,
            {{1, {-2, 0, -2}}}),
      curve("3D polyline, its bulges ignored", polyline3d(corners), {0, 2}, 17, false,
            {{1.5, {3, 4, 6}}}, {{{10, 4, 6}, 1.5, {3, 4, 6}, 7}}, corners),
      curve("closed 3D polyline", polyline3d(corners, 8 | 1), {0, 3}, 30, true,
            {{2.5, {1.5, 2, 6}}}),
      curve("mline", mline(path), {0, 2}, 7, false, {{2, {4, 3, 1}}}, {}, path),
      curve("closed mline", mline(path, 2), {0, 3}, 12, true, {{2.5, {2, 1.5, 1}}}),
      curve("quarter circle spline", quarterCircle(), {0, 1}, kPi / 2, false,
            {{0, {1, 0, 0}}, {0.5, {h, h, 0}}, {1, {0, 1, 0}}},
            {{{2, 2, 1}, 0.5, {h, h, 0}, std::hypot(2 * kRoot2 - 1, 1.0)}}, std::nullopt, 1e-6),
      // Outside the corner, the corner itself.
      curve("degree one spline is its control polygon", spline(1, corners, {0, 0, 1, 2, 2}), {0, 2},
            17, false, {},
            {{{10, 4, 6}, 1.5, {3, 4, 6}, 7}, {{4, 5, -1}, 1, {3, 4, 0}, std::sqrt(3.0)}},
            std::nullopt, 1e-9),
      curve("weighted cubic of uneven knots", weightedCubic(), {0, 1}, kNotByHand, false, {}),
  };
  return cases;
}

TEST(Curves, RangesLengthsPointsAndNearestPointsWorkedOutByHand) {
  for (const CurveCase& c : curveCases()) {
    SCOPED_TRACE(c.name);
    const Entity& e = *c.curve;
    EXPECT_TRUE(isCurve(e));
    const auto range = paramRange(e);
    ASSERT_TRUE(range);
    EXPECT_NEAR(range->start, c.range.start, 1e-12);
    EXPECT_NEAR(range->end, c.range.end, 1e-12);
    if (!std::isnan(c.length)) {
      EXPECT_NEAR(lengthOf(e), c.length, c.tolerance * std::max(1.0, c.length));
    }
    EXPECT_EQ(isClosed(e), c.closed);
    EXPECT_FALSE(pointAtParam(e, c.range.start - 0.1));
    EXPECT_FALSE(pointAtParam(e, c.range.end + 0.1));
    for (const At& at : c.points)
      EXPECT_TRUE(near(pointAtParam(e, at.param), at.point)) << at.param;
    const double tolerance = 1e-9;
    for (const NearestTo& n : c.nearest) {
      const auto got = nearestPoint(e, n.from);
      ASSERT_TRUE(got) << text(n.from);
      EXPECT_NEAR(got->param, n.param, tolerance) << text(n.from);
      EXPECT_TRUE(near(got->point, n.point, tolerance)) << text(n.from);
      EXPECT_NEAR(got->distance, n.distance, tolerance) << text(n.from);
    }
    if (c.vertices) {
      EXPECT_TRUE(near(vertexPositions(e), *c.vertices));
    }
  }
}

// Walking each curve in small steps: its ends are the points at the ends of
// its range, and meet when it is closed; each point is its own nearest; the
// chords add up to the length; the extents hold every point and touch the
// extremes.
TEST(Curves, EndsNearestPointsLengthAndExtentsAgreeWithThePointsAlongTheCurve) {
  const Database db;
  for (const CurveCase& c : curveCases()) {
    SCOPED_TRACE(c.name);
    const Entity& e = *c.curve;
    const ParamRange range = *paramRange(e);
    EXPECT_TRUE(near(startPoint(e), *pointAtParam(e, range.start)));
    EXPECT_TRUE(near(endPoint(e), *pointAtParam(e, range.end)));
    EXPECT_EQ(isClosed(e), near(startPoint(e), *endPoint(e)));
    const Extents extents = extentsOf(db, e);
    Extents walked;
    bool inside = true;
    double chords = 0.0;
    Point3d previous = *startPoint(e);
    const int n = 20160;  // a multiple of every count of segments here
    for (int i = 0; i <= n; ++i) {
      const double t = range.start + (range.end - range.start) * i / n;
      const Point3d p = *pointAtParam(e, t);
      chords += distance(previous, p);
      previous = p;
      walked.add(p);
      inside = inside && contains(extents, p, 1e-9);
      if (i % (n / 20) != 0) continue;
      const auto nearest = nearestPoint(e, p);
      ASSERT_TRUE(nearest);
      EXPECT_NEAR(nearest->distance, 0.0, 1e-9) << t;
      EXPECT_TRUE(near(nearest->point, p, 1e-8)) << t;
    }
    // Chords fall short of the curve; only a spline's length, itself measured
    // along chords, may fall a little shorter still.
    const double l = lengthOf(e);
    EXPECT_LE(chords, l * (1 + (e.kind() == EntityKind::Spline ? 1e-7 : 1e-12)));
    EXPECT_NEAR(chords, l, 1e-6 * l);
    EXPECT_TRUE(inside);
    EXPECT_TRUE(box(extents, walked.min, walked.max, 1e-6));
  }
}

// The spline copy of an arc, circle or ellipse runs over the same points from
// the same start to the same end, and closes when the original does.
TEST(Curves, SplineCopiesOfConicsRunOverTheirPoints) {
  int copies = 0;
  for (const CurveCase& c : curveCases()) {
    const auto copy = splineOf(*c.curve);
    if (!copy) continue;
    SCOPED_TRACE(c.name);
    ++copies;
    EXPECT_TRUE(near(startPoint(*copy), *startPoint(*c.curve)));
    EXPECT_TRUE(near(endPoint(*copy), *endPoint(*c.curve)));
    EXPECT_EQ(copy->closed(), c.closed);
    const ParamRange range = *paramRange(*copy);
    for (int i = 0; i <= 40; ++i) {
      const Point3d p = evaluate(*copy, range.start + (range.end - range.start) * i / 40);
      EXPECT_NEAR(nearestPoint(*c.curve, p)->distance, 0.0, 1e-12) << text(p);
    }
  }
  EXPECT_EQ(copies, 13);
}

TEST(CurveKinds, OthersAndEmptyCurvesHaveNoParametersNorPoints) {
  const PointEntity point;
  EXPECT_FALSE(isCurve(point));
  EXPECT_FALSE(isCurve(TextEntity()));
  EXPECT_FALSE(pointAtParam(point, 0.0));
  EXPECT_FALSE(isClosed(point));
  EXPECT_TRUE(vertexPositions(point).empty());
  const LwPolylineEntity emptyPolyline;
  const SplineEntity emptySpline;
  for (const Entity* e : std::vector<const Entity*>{&point, &emptyPolyline, &emptySpline}) {
    EXPECT_FALSE(paramRange(*e));
    EXPECT_FALSE(startPoint(*e));
    EXPECT_FALSE(curveLength(*e));
    EXPECT_FALSE(nearestPoint(*e, {}));
  }
  EXPECT_TRUE(explode(emptyPolyline).empty());
  EXPECT_TRUE(segments(lw({{1, 2, 0.5}}, true)).empty());
}

TEST(Ellipses, OffThePointAtTAlongTheNormalThePointAtTIsTheNearest) {
  // Stepping off the point at t along the ellipse's outward normal, and above
  // its plane: on a 2:1 ellipse, and near the tip of a very flat one.
  struct Step {
    double minor, t, off, above;
  };
  for (const Step& s : {Step{1, 0.3, 0.5, 0.7}, Step{1, 1.0, 0.5, 0.7}, Step{1, 2.5, 0.5, 0.7},
                        Step{1, 4.0, 0.5, 0.7}, Step{1, 5.9, 0.5, 0.7}, Step{1, kPi / 2, 4, 0},
                        Step{0.01, 0.05, 0.01, 0}}) {
    const auto e = ellipse({}, {2, 0, 0}, s.minor / 2);
    const Point3d on{2 * std::cos(s.t), s.minor * std::sin(s.t), 0};
    const double nx = s.minor * std::cos(s.t);
    const double ny = 2 * std::sin(s.t);
    const double norm = std::hypot(nx, ny);
    const auto n = nearestPoint(e, {on.x + s.off * nx / norm, on.y + s.off * ny / norm, s.above});
    ASSERT_TRUE(n) << s.t;
    EXPECT_NEAR(n->param, s.t, 1e-9) << s.t;
    EXPECT_TRUE(near(n->point, on, 1e-9)) << s.t;
    EXPECT_NEAR(n->distance, std::hypot(s.off, s.above), 1e-12) << s.t;
  }
}

TEST(Ellipses, NonFiniteNumbersEndTheQuadratureAndTheSearch) {
  const double nan = std::nan("");
  const auto noParams = ellipse({}, {2, 0, 0}, 0.5, nan, 1.0);
  EXPECT_FALSE(paramRange(noParams));
  EXPECT_FALSE(curveLength(noParams));
  EXPECT_FALSE(nearestPoint(noParams, {}));
  const auto noAxis = ellipse({}, {nan, 0, 0}, 0.5);
  ASSERT_TRUE(curveLength(noAxis));
  EXPECT_TRUE(std::isnan(*curveLength(noAxis)));
  EXPECT_TRUE(nearestPoint(noAxis, {1, 1, 0}));
  // Far along in turns, the length is that of the same stretch of the first turn.
  const auto far = ellipse({}, {2, 0, 0}, 0.5, 1e6 * 2 * kPi, 1e6 * 2 * kPi + kPi / 2);
  EXPECT_NEAR(lengthOf(far), kPerimeter21 / 4, 1e-8);
}

// The segments and the exploded pieces of each polyline of the table follow
// its path: from vertex to vertex, each arc through the middle of its segment
// round a centre in the polyline's plane, its sweep set by the bulge.
TEST(LwPolylines, SegmentsAndPiecesFollowThePath) {
  for (const CurveCase& c : curveCases()) {
    if (c.curve->kind() != EntityKind::LwPolyline) continue;
    SCOPED_TRACE(c.name);
    const auto& p = static_cast<const LwPolylineEntity&>(*c.curve);
    const Ocs ocs(p.normal);
    const auto pieces = explode(p);
    const auto s = segments(p);
    ASSERT_EQ(s.size(), pieces.size());
    ASSERT_EQ(numVerts(p), static_cast<int>(p.vertices.size()));
    double total = 0.0;
    for (std::size_t i = 0; i < s.size(); ++i) {
      const Point3d a = *pointAtParam(p, i);
      const Point3d b = *pointAtParam(p, i + 1.0);
      const Point3d middle = *pointAtParam(p, i + 0.5);
      const double bulge = p.vertices[i].bulge;
      EXPECT_TRUE(near(getPointAt(p, static_cast<int>(i)), a)) << i;
      EXPECT_TRUE(near(s[i].start, a)) << i;
      EXPECT_TRUE(near(s[i].end, b)) << i;
      EXPECT_NEAR(ocs.fromWorld(middle).z, p.elevation, 1e-12) << i;
      EXPECT_EQ(s[i].isArc(), bulge != 0.0) << i;
      EXPECT_EQ(pieces[i]->kind(), bulge == 0.0 ? EntityKind::Line : EntityKind::Arc) << i;
      if (bulge != 0.0) {
        const Point3d centre = ocs.fromWorld(s[i].center);
        const Point3d start = ocs.fromWorld(a);
        EXPECT_NEAR(centre.z, p.elevation, 1e-12) << i;
        EXPECT_NEAR(start.x - centre.x, s[i].radius * std::cos(s[i].startAngle), 1e-12) << i;
        EXPECT_NEAR(start.y - centre.y, s[i].radius * std::sin(s[i].startAngle), 1e-12) << i;
        EXPECT_NEAR(distance(s[i].center, b), s[i].radius, 1e-12) << i;
        EXPECT_NEAR(distance(s[i].center, middle), s[i].radius, 1e-12) << i;
        EXPECT_NEAR(s[i].sweep, 4 * std::atan(bulge), 1e-12) << i;
      }
      // An arc the bulge turns clockwise runs the other way.
      EXPECT_TRUE(near(startPoint(*pieces[i]), bulge < 0.0 ? b : a)) << i;
      EXPECT_TRUE(near(endPoint(*pieces[i]), bulge < 0.0 ? a : b)) << i;
      const ParamRange range = *paramRange(*pieces[i]);
      EXPECT_TRUE(near(pointAtParam(*pieces[i], (range.start + range.end) / 2), middle)) << i;
      total += lengthOf(*pieces[i]);
    }
    EXPECT_NEAR(total, lengthOf(p), 1e-12);
  }
  // Coincident vertices leave no arc and no piece.
  const auto p = lw({{0, 0, 0.5}, {0, 0, 0}, {3, 4, 0}});
  EXPECT_FALSE(segments(p)[0].isArc());
  const auto pieces = explode(p);
  ASSERT_EQ(pieces.size(), 1u);
  EXPECT_EQ(pieces[0]->kind(), EntityKind::Line);
}

TEST(LwPolylines, AreasOfBulgedFigures) {
  auto expect = [](const char* name, const LwPolylineEntity& p, double expected) {
    EXPECT_NEAR(area(p), expected, 1e-12) << name;
  };
  const double b = kQuarterBulge;
  expect("semicircle", lw({{0, 0, 1.0}, {2, 0, 0}}), kPi / 2);
  expect("semicircle the other way", lw({{0, 0, -1.0}, {2, 0, 0}}), kPi / 2);
  expect("two bulges of one closed", lw({{0, 0, 1.0}, {2, 0, 1.0}}, true), kPi);
  expect("square bulged outward", lw({{0, 0, b}, {2, 0, b}, {2, 2, b}, {0, 2, b}}, true), 2 * kPi);
  expect("square bulged inward", lw({{0, 0, -b}, {2, 0, -b}, {2, 2, -b}, {0, 2, -b}}, true),
         8 - 2 * kPi);
  // Clockwise, the outward bulges are negative.
  expect("clockwise square bulged outward",
         lw({{0, 0, -b}, {0, 2, -b}, {2, 2, -b}, {2, 0, -b}}, true), 2 * kPi);
  expect("one vertex", lw({{1, 2, 0.5}}, true), 0);
  // One part by hand: chord 4, bulge 1/2: angle 4 atan(1/2), radius 4 (1 + 1/4) / 2.
  const double theta = 4 * std::atan(0.5);
  expect("one part", lw({{0, 0, 0.5}, {4, 0, 0}}), 2.5 * 2.5 / 2 * (theta - std::sin(theta)));
  // The rectangle runs counterclockwise: positive bulges bulge out.
  const std::vector<LwVertex> v{{0, 0, 0.5}, {4, 0, -0.25}, {4, 3, 0}, {0, 3, 0.2}};
  auto part = [&](std::size_t i) {
    const LwVertex& next = v[(i + 1) % v.size()];
    return area(lw({v[i], {next.x, next.y, 0}}));
  };
  expect("rectangle with parts out and in", lw(v, true), 12 + part(0) - part(1) + part(3));
}

// The area is that of the closed figure from any vertex, either way round, in
// any plane; the length too.
TEST(LwPolylines, AreaAndLengthDoNotDependOnTheStartTheWayOrThePlane) {
  std::vector<LwVertex> v{{1, 1, 0.3}, {5, 0, 0}, {6, 4, -0.4}, {2, 5, 0.1}, {0, 3, 0}};
  const double expected = area(lw(v, true));
  EXPECT_GT(expected, 0.0);
  // An open polyline is closed by the chord.
  EXPECT_NEAR(area(lw(v)), expected, 1e-12);
  EXPECT_NEAR(area(lw(v, true, 3.0, {0, 1, 1})), expected, 1e-12);
  EXPECT_NEAR(lengthOf(lw(v, true, 3.0, {0, 1, 1})), lengthOf(lw(v, true)), 1e-12);
  for (std::size_t shift = 1; shift < v.size(); ++shift) {
    std::rotate(v.begin(), v.begin() + 1, v.end());
    EXPECT_NEAR(area(lw(v, true)), expected, 1e-12) << shift;
  }
  // Walked backwards the bulges change sign and move to the other end of
  // their segments; the area stays.
  std::vector<LwVertex> back;
  for (std::size_t i = v.size(); i-- > 0;) {
    back.push_back({v[i].x, v[i].y, -v[(i + v.size() - 1) % v.size()].bulge});
  }
  EXPECT_NEAR(area(lw(back, true)), expected, 1e-12);
}

TEST(Explode, PiecesCarryTheLayerAndProperties) {
  auto p = lw({{0, 0, 0}, {1, 0, 0.3}, {2, 1, 0}});
  p.layer = platform::ObjectId(42);
  p.setLinetype(platform::ObjectId(7));
  p.color = 3;
  p.lineweight = 25;
  p.invisible = true;
  p.rare.make().transparency = 0x02000080;
  p.rare.make().linetypeScale = 2.5;
  const auto pieces = explode(p);
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

TEST(Splines, ClosedByFlagOrByMeetingEnds) {
  SplineEntity s = spline(1, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}}, {0, 0, 1, 2, 3, 3});
  EXPECT_TRUE(isClosed(s));
  s.controlPoints.back() = {0, 1, 0};
  EXPECT_FALSE(isClosed(s));
  s.flags = 1;
  EXPECT_TRUE(isClosed(s));
}

}  // namespace
}  // namespace host::geometry
