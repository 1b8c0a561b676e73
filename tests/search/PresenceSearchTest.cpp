// The presence searches, through their commands.
#include <gtest/gtest.h>

#include "ModuleFixture.h"

namespace testing_support {
namespace {

using Ids = std::vector<ObjectId>;

class PresenceSearchTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    for (const wchar_t* table : {L"A", L"B", L"a", L"CNTR_t"}) host.defineTable(table);
    for (const wchar_t* records : {L"", L"A", L"A B", L"A A", L"A CNTR_t", L"CNTR_t CNTR_t"}) {
      entities.push_back(host.addLine());
      host.attach(entities.back(), records);
    }
  }

  // Runs a search over the given entities, or at the prompt over all of model space.
  Ids search(const std::wstring& command, const Ids& pickFirst = {}) {
    host.pickFirst = pickFirst;
    host.printed.clear();
    if (pickFirst.empty()) host.selections.push_back(picked({}));
    run(command);
    return host.pickFirst;
  }

  Ids entities;  // bare, one, two tables, twice, user and system, system twice
};

TEST_F(PresenceSearchTest, EachModeFindsItsEntitiesAndSaysHowMany) {
  const Ids& e = entities;
  EXPECT_EQ(search(L"ZARVEL_HAS_OD"), (Ids{e[1], e[2], e[3], e[4]}));
  EXPECT_EQ(host.printed, L"Selected: 4\n");
  EXPECT_EQ(search(L"ZARVEL_HAS_NO_OD"), (Ids{e[0], e[5]}));
  EXPECT_EQ(search(L"ZARVEL_HAS_MULTIPLE_OD"), (Ids{e[2], e[3]}));
  EXPECT_EQ(search(L"ZARVEL_HAS_DUPLICATE_OD"), (Ids{e[3], e[5]}));
  EXPECT_EQ(host.printed, L"Selected: 2\n");
  // Names differing in case are two tables, not a repeat.
  const ObjectId mixed = host.addLine();
  host.attach(mixed, L"A a");
  EXPECT_TRUE(search(L"ZARVEL_HAS_DUPLICATE_OD", {mixed}).empty());
  EXPECT_EQ(search(L"ZARVEL_HAS_MULTIPLE_OD", {mixed}), Ids{mixed});
  EXPECT_EQ(host.selectionPrompts, 4);
}

TEST_F(PresenceSearchTest, NothingFoundOrCancelledLeavesNothingSelected) {
  EXPECT_TRUE(search(L"ZARVEL_HAS_NO_OD", {entities[1]}).empty());
  // Nothing found left nothing selected, so the next search asks.
  host.selections.push_back(cancelled());
  run(L"ZARVEL_HAS_OD");
  EXPECT_EQ(host.selectionPrompts, 1);
  EXPECT_TRUE(host.pickFirst.empty());
  EXPECT_EQ(host.printed, L"Selected: 0\nSelected: 0\n");
}

TEST_F(PresenceSearchTest, UnusableLayersAreNeverFound) {
  const ObjectId frozen = host.addOnLayer(L"F", &host::Layer::frozen);
  host.attach(frozen, L"A");
  EXPECT_TRUE(search(L"ZARVEL_HAS_OD", {frozen}).empty());
  EXPECT_EQ(host.printed, L"Selected: 0\n");
}

}  // namespace
}  // namespace testing_support
