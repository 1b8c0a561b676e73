// The geometry a module asks through the port: classes, measures, vertices,
// and the curves made for the caller, which answer the same questions.
#include <gtest/gtest.h>

#include <cmath>

#include "GeometryChecks.h"
#include "host/db/UndoStep.h"
#include "host/geometry/PortGeometry.h"

namespace host {
namespace {

using platform::EntityClass;
using namespace geometry::test;

class PortGeometryTest : public ::testing::Test {
 protected:
  template <typename T>
  ObjectId add(T e) {
    return db.addEntity(std::make_unique<T>(std::move(e)), db.modelSpace());
  }
  Database db;
  DbEntityGeometry geometry{db};
};

TEST_F(PortGeometryTest, ABulgedPolylineExplodesIntoCurvesThatAnswerLikeEntities) {
  // A unit square whose top edge bulges outward into a half circle.
  const ObjectId id = add(lw({{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, true));
  EXPECT_EQ(geometry.entityClass(id), EntityClass::LwPolyline);
  EXPECT_TRUE(geometry.isClosed(id));
  EXPECT_NEAR(*geometry.area(id), 1.0 + kPi / 8.0, 1e-12);
  EXPECT_NEAR(*geometry.length(id), 3.0 + kPi / 2.0, 1e-12);
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

TEST_F(PortGeometryTest, BuiltPolylinesTakeTheirEditsAndJoinModelSpaceOnce) {
  const ObjectId line = add(LineEntity{});
  const ObjectId lw = geometry.newPolyline();
  for (const auto& [index, x] : {std::pair{0u, 1.0}, {0u, 2.0}, {9u, 3.0}, {1u, 4.0}}) {
    EXPECT_EQ(geometry.addVertexAt(lw, index, {x, 0.0}), platform::Status::Ok);
  }
  EXPECT_EQ(geometry.setElevation(lw, 2.5), platform::Status::Ok);
  EXPECT_EQ(geometry.setClosed(lw, true), platform::Status::Ok);
  // Each edit of the other kind, or of a line, is refused.
  const ObjectId p3d = geometry.newPolyline3d();
  EXPECT_EQ(geometry.appendVertex(lw, {}), platform::Status::Failed);
  EXPECT_EQ(geometry.addVertexAt(p3d, 0, {}), platform::Status::Failed);
  EXPECT_EQ(geometry.setElevation(p3d, 1.0), platform::Status::Failed);
  EXPECT_EQ(geometry.setClosed(line, true), platform::Status::Failed);
  EXPECT_EQ(geometry.appendVertex(p3d, {1, 2, 3}), platform::Status::Ok);

  const ObjectId added = geometry.appendToModelSpace(lw);
  ASSERT_FALSE(added.isNull());
  EXPECT_EQ(db.blockEntities(db.modelSpace()).back(), added);
  EXPECT_EQ(geometry.vertices(added),
            (std::vector<Point3d>{{2, 0, 2.5}, {4, 0, 2.5}, {1, 0, 2.5}, {3, 0, 2.5}}));
  EXPECT_TRUE(geometry.isClosed(added));
  EXPECT_TRUE(geometry.appendToModelSpace(added).isNull());
  EXPECT_TRUE(geometry.appendToModelSpace(line).isNull());
  // A 3D polyline's vertices take handles of their own after the polyline's.
  const auto* p = db.get<Polyline3dEntity>(geometry.appendToModelSpace(p3d));
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->vertices.at(0).handle, p->handle + 1);
  EXPECT_EQ(p->seqendHandle, p->handle + 2);
  EXPECT_EQ(geometry.heldCurves(), 0u);
}

TEST_F(PortGeometryTest, LinesMeetAndMeasure) {
  const ObjectId ia = add(line({0, 0, 0}, {10, 10, 0}));
  const ObjectId ib = add(line({0, 10, 0}, {10, 0, 0}));
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
  TextEntity text;
  text.data.position = {3, 4, 0};
  text.data.text = L"Main street";
  const ObjectId t = add(text);
  EXPECT_EQ(geometry.entityClass(t), EntityClass::Text);
  EXPECT_EQ(*geometry.position(t), (Point3d{3, 4, 0}));
  EXPECT_EQ(*geometry.text(t), L"Main street");
  EXPECT_FALSE(geometry.startPoint(t).has_value());
  db.setOpenFailure(t, true);
  EXPECT_EQ(geometry.entityClass(t), EntityClass::Unknown);
  EXPECT_FALSE(geometry.extents(t).has_value());
}

TEST_F(PortGeometryTest, MultilineTextsReadAsPlainText) {
  const struct {
    const wchar_t* contents;
    const wchar_t* plain;
  } cases[] = {
      {L"{\\fArial|b1|i0;Oak} \\H2.5x;lane", L"Oak lane"},
      {L"one\\Ptwo\\Nthree", L"one\r\ntwo\r\nthree"},
      {L"a\\\\b \\{c\\} d\\~e", L"a\\b {c} d\u00A0e"},
      {L"\\U+00E9t\\U+00e9 \\S1/2; \\Lunder\\l", L"\u00E9t\u00E9 1/2 under"},
      {L"50%%d \\C1;red\\pxqc;", L"50%%d red"},
  };
  for (const auto& c : cases) {
    MTextEntity m;
    m.text = c.contents;
    EXPECT_EQ(*geometry.plainText(add(m)), c.plain) << c.contents;
  }
  TextEntity text;
  text.data.text = L"{as typed}";
  EXPECT_EQ(*geometry.plainText(add(text)), L"{as typed}");
  TextEntity aligned;
  aligned.data.horizontalAlignment = 1;
  aligned.data.alignmentPoint = {5, 6, 0};
  const std::optional<platform::TextAlignment> a = geometry.textAlignment(add(aligned));
  ASSERT_TRUE(a.has_value());
  EXPECT_EQ(a->horizontalMode, 1);
  EXPECT_EQ(a->alignmentPoint, (Point3d{5, 6, 0}));
}

TEST_F(PortGeometryTest, KeptExtentsFollowChangesUndoRedoAndRollBack) {
  const ObjectId id = add(line({0, 0, 0}, {1, 1, 0}));
  auto top = [&] { return geometry.extents(id)->max; };
  EXPECT_EQ(top(), (Point3d{1, 1, 0}));
  {
    UndoStep step(db, L"MOVE");
    db.modify<LineEntity>(id)->end = {2, 2, 0};
  }
  EXPECT_EQ(top(), (Point3d{2, 2, 0}));
  ASSERT_EQ(db.undoSteps(1).size(), 1u);
  EXPECT_EQ(top(), (Point3d{1, 1, 0}));
  ASSERT_EQ(db.redoSteps(1).size(), 1u);
  EXPECT_EQ(top(), (Point3d{2, 2, 0}));
  // A failed command's changes, asked about before they are taken back.
  UndoStep step(db, L"FAILS");
  db.modify<LineEntity>(id)->end = {3, 3, 0};
  EXPECT_EQ(top(), (Point3d{3, 3, 0}));
  step.rollBack();
  EXPECT_EQ(top(), (Point3d{2, 2, 0}));
}

}  // namespace
}  // namespace host
