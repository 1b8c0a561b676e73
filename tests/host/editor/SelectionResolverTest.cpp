// Windows, crossings and picks over a reference to blocks nested forty deep,
// each holding the next twice: a trillion paths to the innermost line, which
// the answers must still take into account, at once.
#include "host/editor/SelectionResolver.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace host {
namespace {

class NestedSelectionTest : public ::testing::Test {
 protected:
  // Level k holds level k-1 at (0,0) and at (0,1), so the whole spans
  // (0,0)-(1,40) with a line at every whole Y; a line off to the side too.
  void SetUp() override {
    Database& db = document.db;
    ObjectId inner = db.addBlock(L"L0", {});
    db.addEntity(line({0, 0, 0}, {1, 0, 0}), inner);
    for (int level = 1; level <= 40; ++level) {
      const ObjectId outer = db.addBlock(L"L" + std::to_wstring(level), {});
      for (double y : {0.0, 1.0}) {
        auto r = std::make_unique<BlockReferenceEntity>();
        r->block = inner;
        r->position = {0, y, 0};
        db.addEntity(std::move(r), outer);
      }
      inner = outer;
    }
    auto top = std::make_unique<BlockReferenceEntity>();
    top->block = inner;
    reference = db.addEntity(std::move(top), db.modelSpace());
    aside = db.addEntity(line({10, 0, 0}, {11, 0, 0}), db.modelSpace());
  }
  static std::unique_ptr<LineEntity> line(const Point3d& a, const Point3d& b) {
    auto l = std::make_unique<LineEntity>();
    l->start = a;
    l->end = b;
    return l;
  }
  std::vector<ObjectId> select(SelectionKind kind, const Point3d& first, const Point3d& second) {
    SelectionItem item;
    item.kind = kind;
    item.first = first;
    item.second = second;
    return resolveSelectionItem(document, item);
  }
  Document document;
  ObjectId reference;
  ObjectId aside;
};

TEST_F(NestedSelectionTest, WindowsCrossingsAndPicksSeeTheInnermostLevel) {
  using Ids = std::vector<ObjectId>;
  const Point3d none;
  EXPECT_EQ(select(SelectionKind::Window, {-1, -1, 0}, {2, 40.5, 0}), Ids{reference});
  EXPECT_EQ(select(SelectionKind::Window, {-1, -1, 0}, {2, 39.5, 0}), Ids{});
  EXPECT_EQ(select(SelectionKind::Window, {-1, -1, 0}, {12, 41, 0}), (Ids{reference, aside}));
  EXPECT_EQ(select(SelectionKind::Crossing, {0.4, 39.8, 0}, {0.6, 45, 0}), Ids{reference});
  EXPECT_EQ(select(SelectionKind::Crossing, {0.4, 40.5, 0}, {0.6, 45, 0}), Ids{});
  EXPECT_EQ(select(SelectionKind::Pick, {0.5, 40, 0}, none), Ids{reference});
  EXPECT_EQ(select(SelectionKind::Pick, {0.5, 41, 0}, none), Ids{});
  EXPECT_EQ(select(SelectionKind::Pick, {10.5, 0, 0}, none), Ids{aside});
}

}  // namespace
}  // namespace host
