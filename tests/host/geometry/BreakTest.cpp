// Breaking curves at points picked in plan: where the pieces end, and that a
// piece runs where the curve ran.
#include "host/geometry/Break.h"

#include <gtest/gtest.h>

#include "GeometryChecks.h"
#include "host/geometry/Curves.h"

namespace host::geometry {
namespace {

using namespace test;

struct BreakCase {
  const char* what;
  std::shared_ptr<const Entity> curve;
  Point3d first;
  Point3d second;
  Point3d sourceStart;
  Point3d sourceEnd;
  std::optional<Point3d> partStart;  // none when no part is made
  std::optional<Point3d> partEnd;
};

// The picks lie in the XY plane; a curve off it is met straight above them.
TEST(BreakTest, PiecesEndWherePicksInPlanMeetTheCurve) {
  SplineEntity square =
      spline(1, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}}, {0, 0, 1, 2, 3, 4, 4});
  square.flags = 1;
  const BreakCase cases[] = {
      {"3D line",
       shared(line({0, 0, 1}, {10, 0, 3})),
       {2, 0, 0},
       {4, 0, 0},
       {0, 0, 1},
       {2, 0, 1.4},
       Point3d{4, 0, 1.8},
       Point3d{10, 0, 3}},
      {"3D polyline",
       shared(polyline3d({{90, 0, 0}, {100, 0, 5}, {100, 10, 5}})),
       {95, 0, 0},
       {100, 5, 0},
       {90, 0, 0},
       {95, 0, 2.5},
       Point3d{100, 5, 5},
       Point3d{100, 10, 5}},
      {"raised arc",
       shared(arc({0, 0, 3}, 5, 0, kPi)),
       {5, 0, 0},
       {0, 5, 0},
       {0, 5, 3},
       {-5, 0, 3},
       std::nullopt,
       std::nullopt},
      {"cubic spline",
       shared(spline(3, {{130, 0, 0}, {135, 10, 2}, {140, 0, 4}, {145, 10, 6}})),
       {133.75, 4.375, 0},
       {141.25, 5.625, 0},
       {130, 0, 0},
       {133.75, 4.375, 1.5},
       Point3d{141.25, 5.625, 4.5},
       Point3d{145, 10, 6}},
      // Closed: what remains runs from the second point round to the first.
      {"closed spline",
       shared(square),
       {5, 0, 0},
       {10, 5, 0},
       {10, 5, 0},
       {5, 0, 0},
       std::nullopt,
       std::nullopt},
  };
  for (const BreakCase& c : cases) {
    SCOPED_TRACE(c.what);
    const auto a = nearestPointInPlan(*c.curve, c.first);
    const auto b = nearestPointInPlan(*c.curve, c.second);
    ASSERT_TRUE(a && b);
    const BreakResult r = breakCurve(*c.curve, a->param, b->param);
    ASSERT_TRUE(r.source) << std::string(r.error.begin(), r.error.end());
    EXPECT_TRUE(near(startPoint(*r.source), c.sourceStart, 1e-7));
    EXPECT_TRUE(near(endPoint(*r.source), c.sourceEnd, 1e-7));
    ASSERT_EQ(r.part != nullptr, c.partStart.has_value());
    if (!r.part) continue;
    EXPECT_TRUE(near(startPoint(*r.part), *c.partStart, 1e-7));
    EXPECT_TRUE(near(endPoint(*r.part), *c.partEnd, 1e-7));
  }
}

// A spline piece is the curve itself over its stretch, not another near it;
// a closed one joined from two pieces passes the corner it went round.
TEST(BreakTest, SplinePiecesRunOnTheCurve) {
  const SplineEntity cubic = spline(3, {{0, 0, 0}, {1, 3, 1}, {4, -2, 0}, {6, 2, 2}, {8, 0, 0}});
  const BreakResult r = breakCurve(cubic, 0.3, 0.6);
  ASSERT_TRUE(r.source && r.part);
  for (double u : {0.0, 0.1, 0.25, 0.3}) {
    EXPECT_TRUE(near(pointAtParam(*r.source, u), *pointAtParam(cubic, u), 1e-9)) << u;
  }
  for (double u : {0.6, 0.7, 0.95, 1.0}) {
    EXPECT_TRUE(near(pointAtParam(*r.part, u), *pointAtParam(cubic, u), 1e-9)) << u;
  }

  SplineEntity square =
      spline(1, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}, {0, 0, 0}}, {0, 0, 1, 2, 3, 4, 4});
  square.flags = 1;
  const BreakResult closed = breakCurve(square, 0.5, 1.5);
  ASSERT_TRUE(closed.source);
  // From 1.5 to the end at 4, then on from the start as 4 to 4.5.
  EXPECT_FALSE(isClosed(*closed.source));
  EXPECT_TRUE(near(pointAtParam(*closed.source, 3.0), Point3d{0, 10, 0}));
  EXPECT_TRUE(near(pointAtParam(*closed.source, 4.25), Point3d{2.5, 0, 0}));
}

}  // namespace
}  // namespace host::geometry
