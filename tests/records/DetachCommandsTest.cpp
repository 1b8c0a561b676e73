// ZARVEL_RM, ZARVEL_RM_ALL and ZARVEL_REMOVE_DUPLICATE_OD through their commands.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "oddata/OdAccess.h"
#include "records/PGUIODList.h"

namespace testing_support {
namespace {

using platform::DialogModel;
using zarvel::PGUIODList;

class DetachTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    host.defineTable(L"Roads");
    host.defineTable(L"Parcels");
    host.defineTable(L"TPMID_x");
  }
  // Answers the dialog by selecting the named tables, then pressing a button.
  void answerDialog(std::vector<std::wstring> select, int button = platform::kIdOk) {
    host.dialogAnswer = [this, select, button](DialogModel& d) {
      auto& list = d.control(PGUIODList::kIdTableList);
      offered = list.items;
      for (std::size_t i = 0; i < list.items.size(); ++i) {
        list.selected[i] =
            std::find(select.begin(), select.end(), list.items[i]) != select.end();
      }
      return button;
    };
  }
  std::vector<std::wstring> offered;
};

TEST_F(DetachTest, RmOffersUserTablesInUseAndDetachesFromModelSpace) {
  const ObjectId a = host.addLine();
  host.attach(a, L"Roads");
  host.attach(a, L"Roads");
  host.attach(a, L"Roads");
  host.attach(a, L"Parcels");
  host.attach(a, L"TPMID_x");
  const ObjectId locked = host.addOnLayer(L"L");
  host.attach(locked, L"Roads");
  host.db.modify<host::Layer>(host.db.findLayer(L"L"))->locked = true;
  answerDialog({L"Roads"});
  host.selections.push_back(picked({}));
  run(L"ZARVEL_RM");
  EXPECT_EQ(offered, (std::vector<std::wstring>{L"Parcels", L"Roads"}));
  EXPECT_EQ(host.printed, L"Completed: 3\n");
  EXPECT_EQ(host.tablesOn(a), (std::vector<std::wstring>{L"Parcels", L"TPMID_x"}));
  EXPECT_EQ(host.tablesOn(locked), (std::vector<std::wstring>{L"Roads"}));
}

TEST_F(DetachTest, RmWithPickFirstOffersSystemTablesAndDoesNotPrompt) {
  const ObjectId a = host.addLine();
  host.attach(a, L"TPMID_x");
  host.attach(a, L"Roads");
  host.pickFirst = {a};
  answerDialog({L"TPMID_x"});
  run(L"ZARVEL_RM");
  EXPECT_EQ(offered, (std::vector<std::wstring>{L"Roads", L"TPMID_x"}));
  EXPECT_EQ(host.selectionPrompts, 0);
  EXPECT_EQ(host.tablesOn(a), (std::vector<std::wstring>{L"Roads"}));
  EXPECT_EQ(host.printed, L"Completed: 1\n");
}

TEST_F(DetachTest, RmReportsZeroBeforeAnySelectionWhenNothingIsChosen) {
  host.attach(host.addLine(), L"Roads");
  answerDialog({});
  run(L"ZARVEL_RM");
  EXPECT_EQ(host.printed, L"Completed: 0\n");
  EXPECT_EQ(host.selectionPrompts, 0);
}

TEST_F(DetachTest, RmEndsSilentlyOnCancelOrWhenAllAreOnLockedLayers) {
  const ObjectId a = host.addLine();
  host.attach(a, L"Roads");
  answerDialog({L"Roads"}, platform::kIdCancel);
  run(L"ZARVEL_RM");
  answerDialog({L"Roads"});
  host.selections.push_back(cancelled());
  run(L"ZARVEL_RM");
  EXPECT_EQ(host.tablesOn(a), (std::vector<std::wstring>{L"Roads"}));

  host.pickFirst = {host.addOnLayer(L"L")};
  host.attach(host.pickFirst[0], L"Roads");
  host.db.modify<host::Layer>(host.db.findLayer(L"L"))->locked = true;
  answerDialog({L"Roads"});
  run(L"ZARVEL_RM");
  EXPECT_EQ(host.dialogsShown, 3);
  EXPECT_EQ(host.printed, L"");
}

TEST_F(DetachTest, DialogToggleSelectsAllThenNothing) {
  std::vector<std::wstring> names = {L"b", L"A", L"c"};
  PGUIODList dialog(&names);
  dialog.onInit();
  auto& list = dialog.control(PGUIODList::kIdTableList);
  EXPECT_EQ(list.items, (std::vector<std::wstring>{L"A", L"b", L"c"}));
  list.selected[1] = true;
  EXPECT_FALSE(dialog.onButton(PGUIODList::kIdToggleAll));
  EXPECT_EQ(list.selectedCount(), 3);
  EXPECT_FALSE(dialog.onButton(PGUIODList::kIdToggleAll));
  EXPECT_EQ(list.selectedCount(), 0);
  list.selected[2] = true;
  list.selected[0] = true;
  EXPECT_TRUE(dialog.onButton(platform::kIdOk));
  // The caller's order stays; only unselected names go.
  EXPECT_EQ(names, (std::vector<std::wstring>{L"A", L"c"}));
}

TEST_F(DetachTest, RmAllAsksFirstAndCountsEntitiesWithUserRecords) {
  const ObjectId a = host.addLine();
  host.attach(a, L"Roads");
  host.attach(a, L"Roads");
  host.attach(a, L"Parcels");
  host.attach(a, L"Roads");
  const ObjectId systemOnly = host.addLine();
  host.attach(systemOnly, L"TPMID_x");
  host.addLine();

  host.messageBoxAnswers.push_back(platform::kIdNo);
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.selectionPrompts, 0);
  EXPECT_EQ(host.tablesOn(a).size(), 4u);

  host.messageBoxAnswers.push_back(platform::kIdYes);
  host.selections.push_back(picked({}));
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.printed, L"Completed: 1 out of 3\n");
  EXPECT_TRUE(host.tablesOn(a).empty());
  EXPECT_EQ(host.tablesOn(systemOnly), (std::vector<std::wstring>{L"TPMID_x"}));
  EXPECT_EQ(host.maxLockDepth, 1);
}

TEST_F(DetachTest, RmAllEndsSilentlyWhenTheScopeIsEmpty) {
  host.pickFirst = {host.addOnLayer(L"F")};
  host.db.modify<host::Layer>(host.db.findLayer(L"F"))->frozen = true;
  host.messageBoxAnswers.push_back(platform::kIdYes);
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.printed, L"");
  EXPECT_EQ(host.maxLockDepth, 0);
}

class RemoveDuplicateTest : public DetachTest {
 protected:
  ObjectId withRepeats() {
    const ObjectId e = host.addLine();
    host.attach(e, L"Roads", 1);
    host.attach(e, L"Parcels", 2);
    host.attach(e, L"Roads", 3);
    return e;
  }
  int firstRoadValue(ObjectId e) {
    auto values = zarvel::valuesOfEntityTable(zarvel::getODContainer(), L"Roads", e);
    return values.empty() ? -1 : values[0].asInt();
  }
  void answer(const std::wstring& text) {
    host.strings.push_back({platform::PromptStatus::Normal, text});
  }
};

TEST_F(RemoveDuplicateTest, ModeAnswersByPrefix) {
  struct Case {
    std::wstring answer;
    int kept;
  };
  for (const Case& c : {Case{L"", 3}, Case{L"F", 3}, Case{L"fir", 3}, Case{L"FIRST", 3},
                        Case{L"l", 1}, Case{L"La", 1}}) {
    const ObjectId e = withRepeats();
    host.pickFirst = {e};
    host.printed.clear();
    answer(c.answer);
    run(L"ZARVEL_REMOVE_DUPLICATE_OD");
    EXPECT_EQ(host.printed, L"Completed: 1\n") << "answer '" << std::string(c.answer.begin(), c.answer.end()) << "'";
    EXPECT_EQ(firstRoadValue(e), c.kept);
  }
  EXPECT_EQ(host.prompts.back(), L"Mode (First, Last)<First>: ");
}

TEST_F(RemoveDuplicateTest, AnInvalidModeEndsBeforeAnySelection) {
  const ObjectId e = withRepeats();
  for (const wchar_t* bad : {L"firstly", L"firsts", L"x"}) {
    host.printed.clear();
    answer(bad);
    run(L"ZARVEL_REMOVE_DUPLICATE_OD");
    EXPECT_EQ(host.printed, L"Error: invalid parameters.\n");
  }
  EXPECT_EQ(host.selectionPrompts, 0);
  EXPECT_EQ(host.tablesOn(e).size(), 3u);
}

TEST_F(RemoveDuplicateTest, LockedAndFrozenLayersAreNoProtection) {
  const ObjectId e = withRepeats();
  host.db.modify<host::Layer>(host.db.layerIds()[0])->frozen = true;
  host.pickFirst = {e};
  answer(L"");
  run(L"ZARVEL_REMOVE_DUPLICATE_OD");
  EXPECT_EQ(host.printed, L"Completed: 1\n");
  EXPECT_EQ(host.tablesOn(e).size(), 2u);
}

TEST_F(RemoveDuplicateTest, AnEmptySelectionIsNotTheWholeDrawing) {
  const ObjectId e = withRepeats();
  answer(L"");
  host.selections.push_back(picked({}));
  run(L"ZARVEL_REMOVE_DUPLICATE_OD");
  EXPECT_EQ(host.printed, L"Completed: 0\n");
  EXPECT_EQ(host.tablesOn(e).size(), 3u);

  host.printed.clear();
  answer(L"");
  host.selections.push_back(cancelled());
  run(L"ZARVEL_REMOVE_DUPLICATE_OD");
  EXPECT_EQ(host.printed, L"");
}

}  // namespace
}  // namespace testing_support
