// ZARVEL_RM, ZARVEL_RM_ALL and ZARVEL_REMOVE_DUPLICATE_OD through their commands.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "records/PGUIODList.h"

namespace testing_support {
namespace {

using Names = std::vector<std::wstring>;
using zarvel::PGUIODList;

class DetachTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    for (const wchar_t* table : {L"Roads", L"Parcels", L"TPMID_x"}) host.defineTable(table);
  }
  // Answers the dialog by selecting the named tables, then pressing OK.
  void answerDialog(const Names& select) {
    host.dialogAnswer = [this, select](platform::DialogModel& d) {
      auto& list = d.control(PGUIODList::kIdTableList);
      offered = list.items;
      for (std::size_t i = 0; i < list.items.size(); ++i) {
        list.selected[i] = std::find(select.begin(), select.end(), list.items[i]) != select.end();
      }
      return platform::kIdOk;
    };
  }
  Names offered;
};

TEST_F(DetachTest, RmOffersUserTablesInUseAndDetachesFromUsableEntitiesOfModelSpace) {
  const ObjectId a = host.addLine();
  host.attach(a, L"Roads Roads Roads Parcels TPMID_x");
  const ObjectId locked = host.addOnLayer(L"L", &host::Layer::locked);
  host.attach(locked, L"Roads");
  answerDialog({L"Roads"});
  host.selections.push_back(picked({}));
  run(L"ZARVEL_RM");
  EXPECT_EQ(offered, (Names{L"Parcels", L"Roads"}));
  EXPECT_EQ(host.printed, L"Completed: 3\n");
  EXPECT_EQ(host.recordsOn(a), L"Parcels TPMID_x");
  EXPECT_EQ(host.recordsOn(locked), L"Roads");
}

TEST_F(DetachTest, RmWithPickFirstOffersSystemTablesAndDoesNotPrompt) {
  const ObjectId a = host.addLine();
  host.attach(a, L"TPMID_x Roads");
  host.pickFirst = {a};
  answerDialog({L"TPMID_x"});
  run(L"ZARVEL_RM");
  EXPECT_EQ(offered, (Names{L"Roads", L"TPMID_x"}));
  EXPECT_EQ(host.selectionPrompts, 0);
  EXPECT_EQ(host.recordsOn(a), L"Roads");
  EXPECT_EQ(host.printed, L"Completed: 1\n");
}

TEST_F(DetachTest, DialogToggleSelectsAllThenNothing) {
  Names names = {L"b", L"A", L"c"};
  PGUIODList dialog(&names);
  dialog.onInit();
  auto& list = dialog.control(PGUIODList::kIdTableList);
  EXPECT_EQ(list.items, (Names{L"A", L"b", L"c"}));
  list.selected[1] = true;
  EXPECT_FALSE(dialog.onButton(PGUIODList::kIdToggleAll));
  EXPECT_EQ(list.selectedCount(), 3);
  EXPECT_FALSE(dialog.onButton(PGUIODList::kIdToggleAll));
  EXPECT_EQ(list.selectedCount(), 0);
  list.selected[2] = true;
  list.selected[0] = true;
  EXPECT_TRUE(dialog.onButton(platform::kIdOk));
  // The caller's order stays; only unselected names go.
  EXPECT_EQ(names, (Names{L"A", L"c"}));
}

TEST_F(DetachTest, RmAllAsksFirstAndLocksOnlyToCountEntitiesWithUserRecords) {
  const ObjectId a = host.addLine();
  host.attach(a, L"Roads Roads Parcels Roads");
  const ObjectId systemOnly = host.addLine();
  host.attach(systemOnly, L"TPMID_x");
  host.addLine();

  host.messageBoxAnswers.push_back(platform::kIdNo);
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.selectionPrompts, 0);
  EXPECT_EQ(host.recordsOn(a), L"Roads Roads Parcels Roads");
  // An empty scope ends silently, before the drawing is locked.
  host.pickFirst = {host.addOnLayer(L"F", &host::Layer::frozen)};
  host.messageBoxAnswers.push_back(platform::kIdYes);
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.printed, L"");
  EXPECT_EQ(host.maxLockDepth, 0);

  host.pickFirst.clear();
  host.messageBoxAnswers.push_back(platform::kIdYes);
  host.selections.push_back(picked({}));
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.printed, L"Completed: 1 out of 3\n");
  EXPECT_EQ(host.recordsOn(a), L"");
  EXPECT_EQ(host.recordsOn(systemOnly), L"TPMID_x");
  EXPECT_EQ(host.maxLockDepth, 1);
}

TEST_F(DetachTest, RemoveDuplicateModeIsAPrefixOfFirstOrLastCheckedBeforeSelecting) {
  const struct {
    const wchar_t* answer;
    const wchar_t* printed;
    const wchar_t* left;
  } cases[] = {
      {L"", L"Completed: 1\n", L"Parcels2 Roads3"},
      {L"fIr", L"Completed: 1\n", L"Parcels2 Roads3"},
      {L"l", L"Completed: 1\n", L"Roads1 Parcels2"},
      {L"firsts", L"Error: invalid parameters.\n", L"Roads1 Parcels2 Roads3"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE("answer '" + platform::toUtf8(c.answer) + "'");
    const ObjectId e = host.addLine();
    host.attach(e, L"Roads1 Parcels2 Roads3");
    host.printed.clear();
    host.strings = {{platform::PromptStatus::Normal, c.answer}};
    host.selections = {picked({e})};
    run(L"ZARVEL_REMOVE_DUPLICATE_OD");
    EXPECT_EQ(host.printed, c.printed);
    EXPECT_EQ(host.recordsOn(e), c.left);
  }
  EXPECT_EQ(host.selectionPrompts, 3);
  EXPECT_EQ(host.prompts.back(), L"Mode (First, Last)<First>: ");
}

}  // namespace
}  // namespace testing_support
