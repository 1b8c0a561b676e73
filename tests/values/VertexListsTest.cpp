// Vertex lists, the middle of a path and the point of an entity, on entities
// of our host's database through the port.
#include "values/VertexLists.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <memory>

#include "ModuleFixture.h"

namespace testing_support {
namespace {

using platform::ObjectId;
using platform::Point3d;
using zarvel::HeightMode;
using zarvel::PlanMode;
using zarvel::PointList3d;

void expectNear(const Point3d& actual, const Point3d& expected, const std::string& what) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9) << what;
  EXPECT_NEAR(actual.y, expected.y, 1e-9) << what;
  EXPECT_NEAR(actual.z, expected.z, 1e-9) << what;
}

class VertexListsTest : public ModuleTest {
 protected:
  template <typename E>
  ObjectId add(std::unique_ptr<E> entity) {
    return host.db.addEntity(std::move(entity), host.db.modelSpace());
  }
  ObjectId line(Point3d a, Point3d b) {
    auto e = std::make_unique<host::LineEntity>();
    e->start = a;
    e->end = b;
    return add(std::move(e));
  }
  ObjectId polyline(std::vector<host::LwVertex> vertices, bool closed, double elevation = 0) {
    auto e = std::make_unique<host::LwPolylineEntity>();
    e->vertices = std::move(vertices);
    e->closed = closed;
    e->elevation = elevation;
    return add(std::move(e));
  }
  ObjectId polyline3d(std::vector<Point3d> points, bool closed) {
    auto e = std::make_unique<host::Polyline3dEntity>();
    for (const Point3d& p : points) e->vertices.push_back({p});
    if (closed) e->flags |= 1;
    return add(std::move(e));
  }
  ObjectId arc(Point3d center, double radius, double start, double end) {
    auto e = std::make_unique<host::ArcEntity>();
    e->center = center;
    e->radius = radius;
    e->startAngle = start;
    e->endAngle = end;
    return add(std::move(e));
  }
  ObjectId circle(Point3d center, double radius) {
    auto e = std::make_unique<host::CircleEntity>();
    e->center = center;
    e->radius = radius;
    return add(std::move(e));
  }
  ObjectId text(Point3d position) {
    auto e = std::make_unique<host::TextEntity>();
    e->data.position = position;
    e->data.text = L"abc";
    return add(std::move(e));
  }
  ObjectId spline() {
    auto e = std::make_unique<host::SplineEntity>();
    e->degree = 2;
    e->controlPoints = {{0, 0, 0}, {5, 10, 0}, {10, 0, 0}};
    e->knots = {0, 0, 0, 1, 1, 1};
    return add(std::move(e));
  }
  void setLuprec(short value) { host.vars[L"LUPREC"] = value; }
  std::size_t heldCurves() {
    return dynamic_cast<host::DbEntityGeometry&>(host.geometry()).heldCurves();
  }
};

TEST_F(VertexListsTest, ListsByClass) {
  const Point3d a{0, 0, 1};
  const Point3d b{4, 0, 2};
  const std::vector<host::LwVertex> square{{0, 0}, {2, 0}, {2, 2}, {0, 2}};
  auto old2d = std::make_unique<host::Polyline2dEntity>();
  old2d->vertices = {{{0, 0, 0}}, {{1, 1, 0}}};
  struct Case {
    const char* name;
    ObjectId entity;
    PointList3d expected;
  } const cases[] = {
      {"line", line(a, b), {a, b}},
      {"open polyline at its elevation",
       polyline(square, false, 3),
       {{0, 0, 3}, {2, 0, 3}, {2, 2, 3}, {0, 2, 3}}},
      {"closed polyline gets its first vertex again",
       polyline(square, true),
       {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}, {0, 0, 0}}},
      {"closed polyline that ends where it begins",
       polyline({{0, 0}, {2, 0}, {0, 0}}, true),
       {{0, 0, 0}, {2, 0, 0}, {0, 0, 0}}},
      {"closed 3D polyline", polyline3d({a, b, {4, 4, 0}}, true), {a, b, {4, 4, 0}, a}},
      {"open 3D polyline", polyline3d({a, b}, false), {a, b}},
      {"spline: its control points", spline(), {{0, 0, 0}, {5, 10, 0}, {10, 0, 0}}},
      {"arc", arc({0, 0, 0}, 1, 0, 1), {}},
      {"circle", circle({0, 0, 0}, 1), {}},
      {"text", text({1, 1, 0}), {}},
      {"old-style 2D polyline", add(std::move(old2d)), {}},
  };
  for (const Case& c : cases) {
    const PointList3d points = zarvel::vertexList(c.entity);
    ASSERT_EQ(points.size(), c.expected.size()) << c.name;
    for (std::size_t i = 0; i < points.size(); ++i) expectNear(points[i], c.expected[i], c.name);
  }
}

// The list of a closed polyline is closed to the precision the drawing shows.
TEST_F(VertexListsTest, ClosingFollowsLuprec) {
  const ObjectId almost = polyline({{0, 0}, {2, 0}, {2, 2}, {0.001, 0}}, true);
  setLuprec(4);
  EXPECT_EQ(zarvel::vertexList(almost).size(), 5u);
  setLuprec(2);
  EXPECT_EQ(zarvel::vertexList(almost).size(), 4u);
}

// A bulge of 1 is a half circle: the arc is sampled, pieces keep their ends.
TEST_F(VertexListsTest, BulgedPolylineIsSampledPieceByPiece) {
  const ObjectId id = polyline({{0, 0, 1}, {2, 0}, {2, 2}}, false);
  const PointList3d points = zarvel::vertexList(id);
  ASSERT_GT(points.size(), 10u);
  expectNear(points.front(), {0, 0, 0}, "start");
  expectNear(points.back(), {2, 2, 0}, "end");
  // The line from (2,0) to (2,2) comes last, its start doubling the arc's end.
  expectNear(points[points.size() - 2], {2, 0, 0}, "joint");
  expectNear(points[points.size() - 3], {2, 0, 0}, "joint kept twice");
  for (std::size_t i = 0; i + 2 < points.size(); ++i) {
    EXPECT_NEAR(std::hypot(points[i].x - 1, points[i].y), 1.0, 1e-9) << i;
  }
  EXPECT_EQ(heldCurves(), 0u) << "a piece of the explode was not released";
}

TEST_F(VertexListsTest, CurvePointsSampleArcsAndSplines) {
  const PointList3d onArc = zarvel::curvePoints(arc({1, 1, 0}, 2, 0, M_PI / 2), 8);
  ASSERT_GE(onArc.size(), 9u);
  expectNear(onArc.front(), {3, 1, 0}, "arc start");
  expectNear(onArc.back(), {1, 3, 0}, "arc end");
  for (const Point3d& p : onArc) EXPECT_NEAR(std::hypot(p.x - 1, p.y - 1), 2.0, 1e-9);

  const PointList3d onCircle = zarvel::curvePoints(circle({0, 0, 0}, 1), 4);
  ASSERT_GE(onCircle.size(), 5u);
  expectNear(onCircle.front(), onCircle.back(), "a closed curve's list ends at its start");

  const PointList3d onSpline = zarvel::curvePoints(spline(), 10);
  ASSERT_EQ(onSpline.size(), 11u);
  expectNear(onSpline.front(), {0, 0, 0}, "spline start");
  expectNear(onSpline[5], {5, 5, 0}, "spline middle");
  expectNear(onSpline.back(), {10, 0, 0}, "spline end");

  EXPECT_EQ(heldCurves(), 0u) << "a spline or its polyline was not released";
  EXPECT_TRUE(zarvel::curvePoints(text({0, 0, 0}), 10).empty());
  const Point3d a{1, 2, 3};
  const Point3d b{4, 5, 6};
  EXPECT_EQ(zarvel::curvePoints(line(a, b), 10), (PointList3d{a, b}));
}

TEST(PathMidpointTest, WalksHalfThePath) {
  const Point3d none{DBL_MAX, DBL_MAX, DBL_MAX};
  struct Case {
    const char* name;
    PointList3d points;
    Point3d expected;
  } const cases[] = {
      {"no points", {}, none},
      {"one point", {{1, 1, 1}}, none},
      {"two points: their mean", {{0, 0, 0}, {4, 2, 6}}, {2, 1, 3}},
      {"within the second segment", {{0, 0, 0}, {1, 0, 0}, {4, 0, 0}}, {2, 0, 0}},
      {"on a vertex", {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}}, {2, 0, 0}},
      {"around a corner", {{0, 0, 0}, {3, 0, 0}, {3, 1, 0}}, {2, 0, 0}},
      {"in 3D", {{0, 0, 0}, {0, 0, 2}, {0, 0, 2}, {0, 0, 4}}, {0, 0, 2}},
      {"all in one place", {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {1, 1, 1}},
  };
  for (const Case& c : cases) expectNear(zarvel::pathMidpoint(c.points), c.expected, c.name);
}

TEST_F(VertexListsTest, CoordinatePointByClassAndMode) {
  const ObjectId slanted = line({0, 0, 1}, {4, 2, 3});
  const ObjectId square = polyline({{0, 0}, {2, 0}, {2, 2}, {0, 2}}, true);
  const ObjectId bulged = polyline({{0, 0}, {2, 0, 1}, {2, 2}, {0, 2}}, true);
  const ObjectId open = polyline({{0, 0}, {4, 2}}, false);
  const ObjectId ring = circle({5, 5, 1}, 2);
  const ObjectId label = text({7, 8, 9});
  const ObjectId failing = line({0, 0, 0}, {1, 1, 1});
  host.db.setOpenFailure(failing, true);
  const Point3d none{DBL_MAX, DBL_MAX, DBL_MAX};
  struct Case {
    const char* name;
    ObjectId entity;
    PlanMode plan;
    HeightMode height;
    Point3d expected;
  } const cases[] = {
      {"line first, min height", slanted, PlanMode::First, HeightMode::Min, {0, 0, 1}},
      {"line last, max height", slanted, PlanMode::Last, HeightMode::Max, {4, 2, 3}},
      {"line centre, average", slanted, PlanMode::Center, HeightMode::Average, {2, 1, 2}},
      {"open two-vertex polyline centre", open, PlanMode::Center, HeightMode::Min, {2, 1, 0}},
      {"closed square centre", square, PlanMode::Center, HeightMode::Min, {1, 1, 0}},
      {"closed square last is its first", square, PlanMode::Last, HeightMode::Min, {0, 0, 0}},
      {"circle first: the box's corner", ring, PlanMode::First, HeightMode::Min, {3, 3, 1}},
      {"circle last", ring, PlanMode::Last, HeightMode::Max, {7, 7, 1}},
      {"circle centre", ring, PlanMode::Center, HeightMode::Average, {5, 5, 1}},
      {"text, whatever the modes", label, PlanMode::First, HeightMode::Min, {7, 8, 9}},
      {"text, other modes", label, PlanMode::Last, HeightMode::Max, {7, 8, 9}},
      {"an entity that won't open", failing, PlanMode::Center, HeightMode::Min, none},
  };
  for (const Case& c : cases) {
    expectNear(zarvel::coordinatePoint(c.entity, c.plan, c.height), c.expected, c.name);
  }
  // The sampled arc bulging out to the right pulls the mean that way; the
  // doubled joints tilt it a little upwards.
  const Point3d pulled = zarvel::coordinatePoint(bulged, PlanMode::Center, HeightMode::Min);
  EXPECT_GT(pulled.x, 1.5);
  EXPECT_NEAR(pulled.y, 1.0, 0.01);
}

TEST_F(VertexListsTest, CoordinatePointOfBlockReferenceIsItsPosition) {
  const ObjectId block = host.db.addBlock(L"B", {0, 0, 0});
  auto inner = std::make_unique<host::LineEntity>();
  inner->end = {10, 10, 10};
  host.db.addEntity(std::move(inner), block);
  auto reference = std::make_unique<host::BlockReferenceEntity>();
  reference->block = block;
  reference->position = {3, 4, 5};
  const ObjectId id = add(std::move(reference));
  expectNear(zarvel::coordinatePoint(id, PlanMode::Last, HeightMode::Max), {3, 4, 5}, "insert");
}

}  // namespace
}  // namespace testing_support
