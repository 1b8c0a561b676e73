// The matching rules of texts to targets, and the index that must find what
// the walk over every text finds.
#include "values/TextMatching.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <random>

namespace {

using platform::Point3d;
using zarvel::NearestText;
using zarvel::TargetShape;
using zarvel::TextItem;

const TargetShape kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};

TEST(TextMatchingTest, OutsidePointKeepsItsOneBranchBounds) {
  struct Case {
    const char* what;
    TargetShape polygon;
    Point3d expected;
  };
  const Case cases[] = {
      {"square", kSquare, {20, 20}},
      // Each x lowers the minimum, so the maximum stays at its tiny start.
      {"falling x", {{10, 5}, {5, 0}, {0, 5}}, {0, 10}},
      // All negative: the maximum is never reached and the point lies inside.
      {"negative", {{-1, -1}, {-9, -1}, {-9, -9}, {-1, -9}, {-1, -1}}, {9, 9}},
  };
  for (const Case& c : cases) {
    const Point3d p = zarvel::outsidePointOf(c.polygon);
    EXPECT_NEAR(p.x, c.expected.x, 1e-12) << c.what;
    EXPECT_NEAR(p.y, c.expected.y, 1e-12) << c.what;
  }
}

TEST(TextMatchingTest, ContainmentByCrossings) {
  const Point3d outside = zarvel::outsidePointOf(kSquare);
  struct Case {
    const char* what;
    Point3d point;
    bool inside;
  };
  const Case cases[] = {
      {"middle", {5, 5}, true},
      {"beside", {10.5, 5}, false},
      {"below", {5, -0.001}, false},
      // A vertex crosses neither edge that meets there.
      {"on a vertex", {10, 0}, false},
      {"on the far vertex", {10, 10}, false},
      {"near a vertex", {1e-3, 1e-3}, true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(zarvel::isInside(c.point, kSquare, outside), c.inside) << c.what;
  }
  EXPECT_FALSE(zarvel::isInside({0, 0}, {{0, 0}}, {5, 5})) << "one point holds nothing";
}

TEST(TextMatchingTest, DistancesAndTheNearestText) {
  EXPECT_EQ(zarvel::distanceToPoints({1, 1}, {}), DBL_MAX);
  EXPECT_DOUBLE_EQ(zarvel::distanceToPoints({3, 4}, {{0, 0}}), 5.0);
  EXPECT_DOUBLE_EQ(zarvel::distanceToPoints({5, 2}, {{0, 0}, {10, 0}}), 2.0);
  EXPECT_DOUBLE_EQ(zarvel::distanceToPoints({13, 4}, {{0, 0}, {10, 0}}), 5.0);

  struct Case {
    const char* what;
    std::vector<TextItem> texts;
    TargetShape points;
    int index;
    double distance;
  };
  const Case cases[] = {
      {"no texts", {}, {{0, 0}, {10, 0}}, -1, DBL_MAX},
      {"no points", {{{1, 1}, L"a"}}, {}, -1, DBL_MAX},
      {"a tie goes to the earlier text", {{{2, 1}, L"a"}, {{8, 1}, L"b"}}, {{0, 0}, {10, 0}}, 0, 1},
      // b is nearer to the segment than a is to any vertex, so b takes it.
      {"a segment strictly nearer", {{{0, 3}, L"a"}, {{5, 1}, L"b"}}, {{0, 0}, {10, 0}}, 1, 1},
      // At one point only the vertex pass runs.
      {"one point", {{{0, 3}, L"a"}, {{0, 2}, L"b"}}, {{0, 0}}, 1, 2},
  };
  for (const Case& c : cases) {
    const NearestText n = zarvel::nearestText(c.texts, c.points);
    EXPECT_EQ(n.index, c.index) << c.what;
    EXPECT_DOUBLE_EQ(n.distance, c.distance) << c.what;
  }
}

TEST(TextMatchingTest, ClosedNeedsThreePointsAndTheEndAtTheStart) {
  EXPECT_TRUE(zarvel::isClosedShape(kSquare, 1e-4));
  EXPECT_TRUE(zarvel::isClosedShape({{0, 0}, {1, 0}, {0, 0.00005}}, 1e-4));
  EXPECT_FALSE(zarvel::isClosedShape({{0, 0}, {1, 0}, {0, 0.001}}, 1e-4));
  EXPECT_FALSE(zarvel::isClosedShape({{0, 0}, {0, 0}}, 1e-4));
}

// The index finds exactly what the walk over every text finds, on texts and
// shapes on a coarse lattice, where texts sit on vertices, edges and their
// extensions, and with outlines whose outside point falls inside them.
TEST(TextMatchingTest, IndexAnswersAsTheWalkOverAllTexts) {
  std::mt19937 random(7);
  auto coordinate = [&](int range) { return static_cast<double>(random() % range) * 0.5 - 5.0; };
  std::vector<TextItem> texts;
  for (int i = 0; i < 400; ++i) texts.push_back({{coordinate(61), coordinate(61)}, L""});
  texts.push_back({{1e300, -1e300}, L"far off"});
  const zarvel::TextMatcher matcher(texts);
  for (int round = 0; round < 600; ++round) {
    TargetShape shape;
    const int count = 1 + static_cast<int>(random() % 6);
    for (int k = 0; k < count; ++k) shape.push_back({coordinate(41), coordinate(41)});
    // Closed, closed but for a gap smaller than a closed outline may leave, or open.
    if (round % 3 == 0) shape.push_back(shape.front());
    if (round % 3 == 1) shape.push_back({shape.front().x + 5e-5, shape.front().y});
    const double tolerance = (round % 7) * 0.5;

    const Point3d outside = zarvel::outsidePointOf(shape);
    std::vector<int> inside;
    std::vector<int> near;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      if (zarvel::isInside(texts[i].point, shape, outside)) inside.push_back(static_cast<int>(i));
      if (zarvel::distanceToPoints(texts[i].point, shape) < tolerance) {
        near.push_back(static_cast<int>(i));
      }
    }
    EXPECT_EQ(matcher.textsInside(shape, outside, texts.size()), inside) << "round " << round;
    EXPECT_EQ(matcher.textsWithin(shape, tolerance), near) << "round " << round;
    const NearestText all = zarvel::nearestText(texts, shape);
    const NearestText found = matcher.nearestWithin(shape, tolerance);
    if (all.index >= 0 && all.distance <= tolerance) {
      EXPECT_EQ(found.index, all.index) << "round " << round;
      EXPECT_EQ(found.distance, all.distance) << "round " << round;
    } else {
      EXPECT_TRUE(found.index < 0 || found.distance > tolerance) << "round " << round;
    }
  }
}

}  // namespace
