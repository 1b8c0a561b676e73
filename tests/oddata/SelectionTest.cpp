// The scope of a command: which entities it sees and which it must leave.
#include <gtest/gtest.h>

#include <algorithm>

#include "ModuleFixture.h"
#include "oddata/Precision.h"
#include "oddata/Selection.h"

namespace testing_support {
namespace {

using SelectionTest = ModuleTest;

std::vector<ObjectId> sorted(std::vector<ObjectId> ids) {
  std::sort(ids.begin(), ids.end());
  return ids;
}

TEST_F(SelectionTest, UnusableLayersAndUnopenableEntitiesAreDropped) {
  const ObjectId plain = host.addLine();
  const ObjectId frozen = host.addOnLayer(L"F", &host::Layer::frozen);
  const ObjectId locked = host.addOnLayer(L"L", &host::Layer::locked);
  const ObjectId off = host.addOnLayer(L"O", &host::Layer::off);
  const ObjectId hidden = host.addOnLayer(L"H", &host::Layer::hidden);
  const ObjectId broken = host.addLine();
  const ObjectId last = host.addLine();
  host.db.setOpenFailure(broken, true);

  std::vector<ObjectId> ids = {plain, frozen, locked, off, hidden, broken, last};
  zarvel::dropUnavailableEntities(ids);
  // The last id is swapped into each hole, so the survivors change places.
  EXPECT_EQ(ids, (std::vector<ObjectId>{plain, last}));

  EXPECT_TRUE(zarvel::isOnVisibleLayer(locked));
  for (ObjectId id : {frozen, off, hidden, broken}) EXPECT_FALSE(zarvel::isOnVisibleLayer(id));
  // What won't open has no handle text.
  EXPECT_FALSE(zarvel::handleTextOfId(plain).empty());
  EXPECT_TRUE(zarvel::handleTextOfId(broken).empty());
}

TEST_F(SelectionTest, ScopeTakesUsablePickFirstEntitiesWithoutPrompting) {
  const ObjectId a = host.addLine();
  const ObjectId locked = host.addOnLayer(L"L", &host::Layer::locked);
  host.addLine();
  host.pickFirst = {a, locked};
  zarvel::SelectionResult scope = zarvel::commandScope();
  EXPECT_TRUE(scope.ok);
  EXPECT_EQ(scope.ids, (std::vector<ObjectId>{a}));
  // Nothing usable picked first leaves the scope empty, still without a prompt.
  host.pickFirst = {locked};
  scope = zarvel::commandScope();
  EXPECT_TRUE(scope.ok);
  EXPECT_TRUE(scope.ids.empty());
  EXPECT_EQ(host.selectionPrompts, 0);
}

TEST_F(SelectionTest, EnterAtThePromptMeansModelSpaceCancelEndsAndPaperSpacePassesWhenPicked) {
  const ObjectId a = host.addLine();
  const ObjectId b = host.addLine();
  const ObjectId paper =
      host.db.addEntity(std::make_unique<host::PointEntity>(), host.db.paperSpace());
  host.db.setOpenFailure(host.addLine(), true);
  host.selections = {picked({}), cancelled(), picked({paper})};
  const zarvel::SelectionResult scope = zarvel::commandScope();
  EXPECT_TRUE(scope.ok);
  EXPECT_EQ(sorted(scope.ids), (std::vector<ObjectId>{a, b}));
  EXPECT_EQ(zarvel::modelSpaceEntities(), (std::vector<ObjectId>{a, b}));
  EXPECT_FALSE(zarvel::commandScope().ok);
  EXPECT_EQ(zarvel::commandScope().ids, (std::vector<ObjectId>{paper}));
}

TEST(IdHelpers, SwapEraseAndDuplicateRemoval) {
  std::vector<ObjectId> ids = {ObjectId(1), ObjectId(2), ObjectId(3)};
  zarvel::swapEraseId(ids, 2);
  EXPECT_EQ(ids, (std::vector<ObjectId>{ObjectId(1), ObjectId(2)}));
  zarvel::swapEraseId(ids, 0);
  EXPECT_EQ(ids, (std::vector<ObjectId>{ObjectId(2)}));
  zarvel::swapEraseId(ids, 0);
  EXPECT_TRUE(ids.empty());

  std::vector<ObjectId> dup = {ObjectId(3), ObjectId(1), ObjectId(3), ObjectId(2), ObjectId(1)};
  zarvel::removeDuplicateIds(dup);
  EXPECT_EQ(dup, (std::vector<ObjectId>{ObjectId(3), ObjectId(1), ObjectId(2)}));
}

TEST_F(SelectionTest, LuprecIsRaisedForAScopeAndPutBackOnEveryWayOut) {
  host.vars[L"LUPREC"] = short{3};
  EXPECT_DOUBLE_EQ(zarvel::luprecTolerance(), 0.001);
  {
    zarvel::LuprecGuard guard;
    EXPECT_EQ(zarvel::getLuprec(), 8);
  }
  EXPECT_EQ(zarvel::getLuprec(), 3);
}

}  // namespace
}  // namespace testing_support
