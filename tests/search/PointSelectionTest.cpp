// Selection at a point: its tests of boxes, boundaries and polygons, and the
// order of what it takes. The transcript of ZARVEL_PSEL shows the command on a
// drawing of every case.
#include <gtest/gtest.h>

#include <algorithm>

#include "ModuleFixture.h"
#include "search/PointSelection.h"

namespace testing_support {
namespace {

using platform::Extents;
using platform::Point2d;
using platform::Point3d;
using zarvel::PointList;

Extents box(Point3d min, Point3d max) {
  return Extents{min, max};
}

TEST(BoxesOverlapTest, TouchingCountsAndZIsIgnored) {
  const Extents a = box({0, 0, 0}, {2, 2, 0});
  struct Case {
    const char* name;
    Extents other;
    bool overlap;
  } const cases[] = {
      {"overlapping", box({1, 1, 0}, {3, 3, 0}), true},
      {"sharing an edge", box({2, 0, 0}, {4, 2, 0}), true},
      {"sharing a corner", box({2, 2, 0}, {3, 3, 0}), true},
      {"apart by a hair in X", box({2.001, 0, 0}, {3, 1, 0}), false},
      {"overlapping in X, apart in Y", box({0, 3, 0}, {2, 4, 0}), false},
      {"apart only in Z", box({0, 0, 5}, {2, 2, 6}), true},
      {"a flat box across the middle", box({-1, 1, 0}, {3, 1, 0}), true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(zarvel::boxesOverlap(a, c.other), c.overlap) << c.name;
    EXPECT_EQ(zarvel::boxesOverlap(c.other, a), c.overlap) << c.name;
  }
}

TEST(PointInPolygonTest, OnlyListedEdgesCount) {
  const PointList closedList{{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};
  const PointList openList{{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  struct Case {
    const char* name;
    Point2d point;
    const PointList& polygon;
    Point2d outside;
    bool inside;
  } const cases[] = {
      {"inside, out through the right side", {5, 5}, openList, {25, 15}, true},
      {"outside the right side", {12, 5}, openList, {25, 15}, false},
      {"inside, out through the left side", {5, 5}, closedList, {-15, 5}, true},
      // The edge from the last point back to the first is not in the list.
      {"inside, out through the side never listed", {5, 5}, openList, {-15, 5}, false},
      {"out through two sides", {5, 5}, openList, {5, -20}, true},
      {"a single point", {0, 0}, PointList{{0, 0}}, {20, 20}, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(zarvel::pointInPolygon(c.point, c.polygon, c.outside), c.inside) << c.name;
  }
  // Beyond the boundary, except where the first point was the greatest: it is
  // never compared with the greatest.
  const Point2d beyond = zarvel::outsidePoint(openList);
  EXPECT_EQ(std::make_pair(beyond.x, beyond.y), std::make_pair(20.0, 20.0));
  const Point2d short_ = zarvel::outsidePoint({{5, 5}, {1, 1}, {3, 3}});
  EXPECT_EQ(std::make_pair(short_.x, short_.y), std::make_pair(5.0, 5.0));
}

class PointSelectionTest : public ModuleTest {
 protected:
  template <typename T>
  ObjectId add(T entity) {
    return host.db.addEntity(std::make_unique<T>(std::move(entity)), host.db.modelSpace());
  }
  ObjectId polyline(const std::vector<host::LwVertex>& vertices, bool closed) {
    host::LwPolylineEntity p;
    p.vertices = vertices;
    p.closed = closed;
    return add(std::move(p));
  }
  ObjectId line(Point3d start, Point3d end) {
    host::LineEntity l;
    l.start = start;
    l.end = end;
    return add(std::move(l));
  }
  ObjectId circle(Point3d center, double radius) {
    host::CircleEntity c;
    c.center = center;
    c.radius = radius;
    return add(std::move(c));
  }
  template <typename T>
  ObjectId pointsOf(const std::vector<Point3d>& points, std::int16_t flags) {
    T e;
    for (const Point3d& p : points) e.vertices.emplace_back().position = p;
    e.flags = flags;
    return add(std::move(e));
  }
};

TEST_F(PointSelectionTest, BoundariesAreClosedPolylinesSplinesAndMultilinesOnly) {
  const std::vector<Point3d> almost{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0.00005, 0, 7}};
  const std::vector<Point3d> apart{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0.001, 0, 0}};
  struct Case {
    const char* name;
    ObjectId entity;
    bool closed;
    std::size_t vertices;
  } const cases[] = {
      {"polyline closed by its flag", polyline({{0, 0}, {1, 0}, {1, 1}}, true), true, 3},
      {"polyline whose ends meet in the plane",
       polyline({{0, 0}, {1, 0}, {1, 1}, {0.00005, 0}}, false), true, 4},
      {"polyline whose ends are apart", polyline({{0, 0}, {1, 0}, {1, 1}, {0.001, 0}}, false),
       false, 4},
      {"3D polyline whose ends meet above each other", pointsOf<host::Polyline3dEntity>(almost, 8),
       true, 4},
      {"3D polyline whose ends are apart", pointsOf<host::Polyline3dEntity>(apart, 8), false, 4},
      {"multiline closed by its flag", pointsOf<host::MlineEntity>(apart, 2), true, 4},
      {"multiline whose ends meet", pointsOf<host::MlineEntity>(almost, 0), true, 4},
      {"2D polyline, even closed", pointsOf<host::Polyline2dEntity>(apart, 1), false, 0},
      {"circle", circle({0, 0, 0}, 1), false, 0},
      {"line", line({0, 0, 0}, {1, 0, 0}), false, 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(zarvel::isClosedCurve(c.entity, 1e-4), c.closed) << c.name;
    EXPECT_EQ(zarvel::entityVertices2d(c.entity).size(), c.vertices) << c.name;
  }
}

TEST_F(PointSelectionTest, HoldersComeLastAndTheSelectionHoldsEachOnce) {
  // A closed square; inside it a circle that also holds the point; a line out
  // through the square's right side; a line far away.
  const ObjectId square = polyline({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
  const ObjectId ring = circle({8, 2, 0}, 0.5);
  const ObjectId across = line({9, 1, 0}, {12, 1, 0});
  line({20, 20, 0}, {21, 21, 0});
  const std::vector<ObjectId> taken = zarvel::entitiesAtPoint({8, 1.8, 0});
  ASSERT_GE(taken.size(), 4u);
  EXPECT_EQ(std::vector<ObjectId>(taken.end() - 2, taken.end()),
            (std::vector<ObjectId>{square, ring}));
  // The ring lies within the square, and is a holder itself.
  EXPECT_EQ(std::count(taken.begin(), taken.end(), ring), 2);
  EXPECT_EQ(std::count(taken.begin(), taken.end(), across), 1);

  host.points.push_back({platform::PromptStatus::Normal, {8, 1.8, 0}});
  run(L"ZARVEL_PSEL");
  EXPECT_EQ(host.pickFirst, (std::vector<ObjectId>{ring, across, square}));
  EXPECT_EQ(host.prompts, std::vector<std::wstring>{L""});
  EXPECT_TRUE(host.printed.empty());
}

}  // namespace
}  // namespace testing_support
