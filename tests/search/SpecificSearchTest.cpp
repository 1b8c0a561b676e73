// The table searches: how records count against the chosen tables, and what
// the list dialog offers and remembers. The transcript of the searches shows
// the commands end to end.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "search/ObjectDataList.h"
#include "search/SpecificSearch.h"

namespace testing_support {
namespace {

using zarvel::ObjectDataList;
using zarvel::TablesMode;
using Names = std::vector<std::wstring>;

using SpecificSearchTest = ModuleTest;

TEST_F(SpecificSearchTest, RecordsAreCountedNotTables) {
  for (const wchar_t* name : {L"A", L"a", L"B", L"C", L"TPMID_x"}) host.defineTable(name);
  struct Case {
    const wchar_t* records;
    Names tables;
    bool with[2];  // by mode: Any, Every
    bool without[2];
  } const cases[] = {
      {L"A", {L"A", L"B"}, {true, false}, {true, false}},
      {L"A B", {L"A", L"B"}, {true, true}, {false, false}},
      // Two records of one table stand for two tables.
      {L"A A", {L"A", L"B"}, {true, true}, {false, false}},
      {L"C", {L"A", L"B"}, {false, false}, {true, true}},
      {L"a", {L"A"}, {false, false}, {true, true}},
      {L"B TPMID_x", {L"TPMID_x"}, {true, true}, {false, false}},
      // No tables: none are missing, so with "every" all are found.
      {L"A", {}, {false, true}, {false, true}},
  };
  for (const Case& c : cases) {
    const ObjectId entity = host.addLine();
    host.attach(entity, c.records);
    for (const TablesMode mode : {TablesMode::Any, TablesMode::Every}) {
      const int m = static_cast<int>(mode);
      host.pickFirst = {entity};
      EXPECT_EQ(!zarvel::findWithTables(c.tables, mode).empty(), c.with[m]) << c.records << m;
      host.pickFirst = {entity};
      EXPECT_EQ(!zarvel::findWithoutTables(c.tables, mode).empty(), c.without[m]) << c.records << m;
    }
  }
  EXPECT_EQ(host.selectionPrompts, 0);
}

TEST_F(SpecificSearchTest, TheDialogFallsBackOnTheProjectAndRemembersOnlyAtOk) {
  for (const wchar_t* name : {L"B", L"TPMID_x", L"A"}) host.defineTable(name);
  ObjectDataList::clearChosenTables();
  {
    ObjectDataList dialog(L"", {});
    dialog.onInit();
    EXPECT_EQ(dialog.title(), L"ObjectData");
    const platform::DialogControl& list = dialog.control(ObjectDataList::kIdTableList);
    EXPECT_EQ(list.items, (Names{L"A", L"B"}));
    EXPECT_EQ(list.selected, (std::vector<bool>{true, false}));
    EXPECT_FALSE(dialog.onButton(ObjectDataList::kIdToggleAll));
    EXPECT_EQ(list.selected, (std::vector<bool>{false, false}));
    EXPECT_FALSE(dialog.onButton(ObjectDataList::kIdToggleAll));
    EXPECT_EQ(list.selected, (std::vector<bool>{true, true}));
    dialog.control(ObjectDataList::kIdSimultaneous).checked = true;
    EXPECT_TRUE(dialog.onButton(platform::kIdOk));
  }
  EXPECT_EQ(ObjectDataList::chosenTables(), (Names{L"A", L"B"}));
  EXPECT_TRUE(ObjectDataList::simultaneous());

  // A remembered table selects the line of its place in the array, which is
  // its own line only until a topology table has been passed over.
  ObjectDataList dialog(L"Pick", {L"X", L"B", L"TPMID_x", L"A"});
  dialog.onInit();
  EXPECT_EQ(dialog.title(), L"Pick");
  const platform::DialogControl& list = dialog.control(ObjectDataList::kIdTableList);
  EXPECT_EQ(list.items, (Names{L"X", L"B", L"A"}));
  EXPECT_EQ(list.selected, (std::vector<bool>{true, true, false}));
  EXPECT_TRUE(dialog.control(ObjectDataList::kIdSimultaneous).checked);
  dialog.control(ObjectDataList::kIdSimultaneous).checked = false;
  EXPECT_TRUE(dialog.onButton(platform::kIdCancel));
  EXPECT_EQ(ObjectDataList::chosenTables(), (Names{L"A", L"B"}));
  EXPECT_TRUE(ObjectDataList::simultaneous());
}

}  // namespace
}  // namespace testing_support
