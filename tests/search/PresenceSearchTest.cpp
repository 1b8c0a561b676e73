// The presence searches, through their commands.
#include <gtest/gtest.h>

#include "ModuleFixture.h"

namespace testing_support {
namespace {

class PresenceSearchTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    host.defineTable(L"A");
    host.defineTable(L"B");
    host.defineTable(L"CNTR_t");
    bare = host.addLine();
    one = host.addLine();
    host.attach(one, L"A");
    twoTables = host.addLine();
    host.attach(twoTables, L"A");
    host.attach(twoTables, L"B");
    twice = host.addLine();
    host.attach(twice, L"A");
    host.attach(twice, L"A");
    userAndSystem = host.addLine();
    host.attach(userAndSystem, L"A");
    host.attach(userAndSystem, L"CNTR_t");
    systemTwice = host.addLine();
    host.attach(systemTwice, L"CNTR_t");
    host.attach(systemTwice, L"CNTR_t");
  }

  std::vector<ObjectId> search(const std::wstring& command) {
    host.pickFirst.clear();
    host.printed.clear();
    host.selections.push_back(picked({}));
    run(command);
    return host.pickFirst;
  }

  ObjectId bare, one, twoTables, twice, userAndSystem, systemTwice;
};

TEST_F(PresenceSearchTest, EachModeFindsItsEntities) {
  EXPECT_EQ(search(L"ZARVEL_HAS_OD"),
            (std::vector<ObjectId>{one, twoTables, twice, userAndSystem}));
  EXPECT_EQ(host.printed, L"Selected: 4\n");
  EXPECT_EQ(search(L"ZARVEL_HAS_NO_OD"), (std::vector<ObjectId>{bare, systemTwice}));
  EXPECT_EQ(search(L"ZARVEL_HAS_MULTIPLE_OD"), (std::vector<ObjectId>{twoTables, twice}));
  EXPECT_EQ(search(L"ZARVEL_HAS_DUPLICATE_OD"), (std::vector<ObjectId>{twice, systemTwice}));
  EXPECT_EQ(host.printed, L"Selected: 2\n");
}

TEST_F(PresenceSearchTest, DuplicateNamesCompareWithCase) {
  host.defineTable(L"a");
  const ObjectId mixed = host.addLine();
  host.attach(mixed, L"A");
  host.attach(mixed, L"a");
  host.pickFirst = {mixed};
  run(L"ZARVEL_HAS_DUPLICATE_OD");
  EXPECT_TRUE(host.pickFirst.empty());
  host.pickFirst = {mixed};
  run(L"ZARVEL_HAS_MULTIPLE_OD");
  EXPECT_EQ(host.pickFirst, (std::vector<ObjectId>{mixed}));
}

TEST_F(PresenceSearchTest, PickFirstIsTestedAndReplacedWithoutPrompt) {
  host.pickFirst = {bare, one, twice};
  run(L"ZARVEL_HAS_OD");
  EXPECT_EQ(host.pickFirst, (std::vector<ObjectId>{one, twice}));
  run(L"ZARVEL_HAS_OD");
  EXPECT_EQ(host.pickFirst.size(), 2u);
  EXPECT_EQ(host.selectionPrompts, 0);

  host.pickFirst = {one};
  run(L"ZARVEL_HAS_NO_OD");
  EXPECT_TRUE(host.pickFirst.empty());
  // Nothing found left nothing selected, so the next search asks.
  host.selections.push_back(picked({one}));
  run(L"ZARVEL_HAS_OD");
  EXPECT_EQ(host.selectionPrompts, 1);
}

TEST_F(PresenceSearchTest, UnusableLayersAreNeverFound) {
  const ObjectId frozen = host.addOnLayer(L"F");
  host.attach(frozen, L"A");
  host.db.modify<host::Layer>(host.db.findLayer(L"F"))->frozen = true;
  host.pickFirst = {frozen};
  host.printed.clear();
  run(L"ZARVEL_HAS_OD");
  EXPECT_TRUE(host.pickFirst.empty());
  EXPECT_EQ(host.printed, L"Selected: 0\n");
}

TEST_F(PresenceSearchTest, CancelClearsThePickFirstSetAndStillReports) {
  host.selections.push_back(cancelled());
  host.printed.clear();
  run(L"ZARVEL_HAS_OD");
  EXPECT_TRUE(host.pickFirst.empty());
  EXPECT_EQ(host.printed, L"Selected: 0\n");
}

}  // namespace
}  // namespace testing_support
