// The geometry a module asks through the port: classes, measures, vertices,
// and the curves made for the caller, which answer the same questions.
#include <gtest/gtest.h>

#include <cmath>

#include "host/db/Database.h"
#include "host/geometry/PortGeometry.h"

namespace host {
namespace {

using platform::EntityClass;

class PortGeometryTest : public ::testing::Test {
 protected:
  ObjectId add(std::unique_ptr<Entity> e) { return db.addEntity(std::move(e), db.modelSpace()); }
  Database db;
  DbEntityGeometry geometry{db};
};

TEST_F(PortGeometryTest, ABulgedPolylineExplodesIntoCurvesThatAnswerLikeEntities) {
  auto pl = std::make_unique<LwPolylineEntity>();
  // A unit square whose top edge bulges outward into a half circle.
  pl->vertices = {{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}};
  pl->closed = true;
  const ObjectId id = add(std::move(pl));
  EXPECT_EQ(geometry.entityClass(id), EntityClass::LwPolyline);
  EXPECT_TRUE(geometry.isClosed(id));
  EXPECT_NEAR(*geometry.area(id), 1.0 + M_PI / 8.0, 1e-12);
  EXPECT_NEAR(*geometry.length(id), 3.0 + M_PI / 2.0, 1e-12);
  EXPECT_EQ(geometry.vertices(id).size(), 4u);
  EXPECT_EQ(geometry.bulges(id), (std::vector<double>{0, 0, 1, 0}));

  const std::vector<ObjectId> pieces = geometry.explode(id);
  ASSERT_EQ(pieces.size(), 4u);
  EXPECT_EQ(geometry.entityClass(pieces[2]), EntityClass::Arc);
  double total = 0.0;
  for (ObjectId piece : pieces) total += *geometry.length(piece);
  EXPECT_NEAR(total, *geometry.length(id), 1e-12);

  // The arc's spline, and the polyline that spline becomes.
  const ObjectId spline = geometry.spline(pieces[2]);
  EXPECT_EQ(geometry.entityClass(spline), EntityClass::Spline);
  EXPECT_TRUE(geometry.toPolyline(spline, 0).isNull());
  const ObjectId coarse = geometry.toPolyline(spline, 2);
  const ObjectId fine = geometry.toPolyline(spline, 20);
  EXPECT_EQ(geometry.entityClass(fine), EntityClass::LwPolyline);
  EXPECT_GT(geometry.vertices(fine).size(), geometry.vertices(coarse).size());
  for (const Point3d& p : geometry.vertices(fine)) {
    EXPECT_NEAR(std::hypot(p.x - 0.5, p.y - 1.0), 0.5, 1e-9);
  }
  for (ObjectId made : pieces) geometry.release(made);
  geometry.release(spline);
  EXPECT_EQ(geometry.entityClass(spline), EntityClass::Unknown);
}

TEST_F(PortGeometryTest, LinesMeetAndMeasure) {
  auto a = std::make_unique<LineEntity>();
  a->end = {10, 10, 0};
  auto b = std::make_unique<LineEntity>();
  b->start = {0, 10, 0};
  b->end = {10, 0, 0};
  const ObjectId ia = add(std::move(a));
  const ObjectId ib = add(std::move(b));
  const std::vector<Point3d> meet = geometry.intersectWith(ia, ib);
  ASSERT_EQ(meet.size(), 1u);
  EXPECT_NEAR(meet[0].x, 5.0, 1e-12);
  EXPECT_NEAR(*geometry.length(ia), std::sqrt(200.0), 1e-12);
  const auto range = geometry.paramRange(ia);
  ASSERT_TRUE(range.has_value());
  EXPECT_NEAR(geometry.pointAtParam(ia, range->second)->y, 10.0, 1e-12);
  EXPECT_EQ(geometry.extents(ia)->max, (Point3d{10, 10, 0}));
  EXPECT_FALSE(geometry.volume(ia).has_value());
}

TEST_F(PortGeometryTest, TextsAndReferencesTellTheirPlaceAndWords) {
  auto text = std::make_unique<TextEntity>();
  text->data.position = {3, 4, 0};
  text->data.text = L"Main street";
  const ObjectId t = add(std::move(text));
  EXPECT_EQ(geometry.entityClass(t), EntityClass::Text);
  EXPECT_EQ(*geometry.position(t), (Point3d{3, 4, 0}));
  EXPECT_EQ(*geometry.text(t), L"Main street");
  EXPECT_FALSE(geometry.startPoint(t).has_value());
  db.setOpenFailure(t, true);
  EXPECT_EQ(geometry.entityClass(t), EntityClass::Unknown);
  EXPECT_FALSE(geometry.extents(t).has_value());
}

}  // namespace
}  // namespace host
