// The table editor's model over a drawing of the test host: what a load
// lists, the natural order, the sort and the find, and what each write does
// to the records and to the rows.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "oddata/OdAccess.h"
#include "oddata/ValueText.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/NaturalCompare.h"
#include "tableeditor/RecordWrites.h"
#include "tableeditor/Zarvel.h"
#include "tableeditor/ZarvelEdit.h"
#include "tableeditor/ZarvelFind.h"

namespace testing_support {
namespace {

using platform::OdType;
using platform::OdValue;
using platform::Point3d;
using zarvel::Zarvel;
using Texts = std::vector<std::wstring>;

class TableEditorTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    zarvel::tableEditorState() = {};
    platform::OdTableDef def;
    def.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                   {L"NAME", OdType::Character, L"", OdValue(L"")},
                   {L"PT", OdType::Point, L"", OdValue(Point3d{})}};
    host.db.createOdTable(L"Roads", def);
    host.defineTable(L"TPMID_topo");
  }

  ObjectId road(ObjectId entity, int id, const std::wstring& name, Point3d pt = {}) {
    platform::OdRecord record(L"Roads", {OdValue(id), OdValue(name), OdValue(pt)});
    EXPECT_EQ(zarvel::getODContainer().getTable(L"Roads")->addRecord(record, entity),
              platform::Status::Ok);
    return entity;
  }
  // The entity's Roads records as "id name" texts, in iterator order.
  Texts records(ObjectId entity) {
    Texts out;
    for (const auto& values :
         zarvel::recordsOfEntityTable(zarvel::getODContainer(), L"Roads", entity)) {
      out.push_back(std::to_wstring(values[0].asInt()) + L" " + values[1].asText());
    }
    return out;
  }
  // The rows as "number: cells" texts.
  Texts shown() const {
    Texts out;
    for (int r = 0; r < editor.grid.GetItemCount(); ++r) {
      std::wstring line = editor.grid.cellText(r, 0) + L":";
      for (int c = 1; c < editor.grid.GetColumnCount(); ++c)
        line += L" " + editor.grid.cellText(r, c);
      out.push_back(line);
    }
    return out;
  }
  void open(const std::wstring& table) {
    editor.fillTableCombo();
    const Texts& items = editor.tableItems();
    const auto found = std::find(items.begin(), items.end(), table);
    ASSERT_NE(found, items.end());
    editor.chooseTable(static_cast<int>(found - items.begin()));
  }
  void select(std::initializer_list<int> rows) {
    editor.grid.ClearSelection();
    for (int r : rows) editor.grid.SetRowSelected(r, true);
  }
  // Answers the next dialog with this value and OK.
  void typeInBox(const std::wstring& text) {
    host.dialogAnswer = [text](platform::DialogModel& d) {
      d.control(zarvel::ZarvelEdit::kIdValue).text = text;
      return platform::kIdOk;
    };
  }

  Zarvel editor;
};

TEST_F(TableEditorTest, LoadListsUsableEntitiesInModelSpaceOrderNumberingEntities) {
  const ObjectId twice = road(road(host.addLine(), 1, L"a"), 1, L"a");
  road(host.addOnLayer(L"locked", &host::Layer::locked), 9, L"locked");
  road(host.addOnLayer(L"off", &host::Layer::off), 9, L"off");
  host.addLine();
  road(host.addLine(), 2, L"b");
  open(L"Roads");
  EXPECT_EQ(editor.tableItems(), (Texts{L"", L"Roads"}));
  EXPECT_EQ(editor.currentTableItem(), 1);
  EXPECT_EQ(editor.grid.GetColumnHeading(0), L"#");
  EXPECT_FALSE(editor.grid.isCellEditable(0, 0));
  EXPECT_TRUE(editor.grid.isCellEditable(0, 2));
  EXPECT_EQ(shown(),
            (Texts{L"1: 1 a 0.000000,0.000000,0.000000", L"1: 1 a 0.000000,0.000000,0.000000",
                   L"2: 2 b 0.000000,0.000000,0.000000"}));
  EXPECT_EQ(editor.allRowIds().front(), twice);

  // The empty entry empties the grid and keeps the rows for the Edit menu.
  editor.chooseTable(0);
  EXPECT_EQ(editor.grid.GetItemCount(), 0);
  EXPECT_EQ(editor.grid.GetColumnCount(), 0);
  EXPECT_EQ(editor.allRowIds().size(), 3u);
}

TEST(NaturalCompareTest, DigitRunsAsNumbersAndTheRestByCodeUnit) {
  const struct {
    const wchar_t* a;
    const wchar_t* b;
    int result;
  } cases[] = {
      {L"a2", L"a10", -1}, {L"a10", L"a2", 1}, {L"abc", L"abcd", 0},    {L"", L"", -1},
      {L"", L"x", -1},     {L"x", L"", 1},     {L"12.5", L"12.25", -1}, {L"B", L"a", -1},
      {L"x1", L"xa", 1},   {L"xa", L"x1", -1}, {L"-5", L"3", -1},       {L"007", L"7", 0},
      {L"a", L"b", -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(zarvel::naturalCompare(c.a, c.b), c.result)
        << testing::PrintToString(c.a) << " " << testing::PrintToString(c.b);
  }
}

TEST(NaturalCompareTest, RealsSortAsTheirTextsCompare) {
  Zarvel editor;
  for (double v : {-12.25, 10.0, -12.5, 3.0, 2.75, -3.0, 1e20}) {
    editor.rows.push_back({ObjectId(1), {zarvel::CellValue(OdValue(v))}, 1});
  }
  editor.sortRows(1);
  Texts texts;
  for (const zarvel::EditorRow& row : editor.rows) {
    texts.push_back(zarvel::valueToText(row.values[0].value()));
  }
  EXPECT_EQ(texts, (Texts{L"-3.0", L"-12.5", L"-12.25", L"2.75", L"3.0", L"10.0",
                          L"100000000000000000000.0"}));
}

TEST_F(TableEditorTest, SortByColumnKeepsTheSelectionAndRefreshReturnsToScanOrder) {
  const int ids[] = {10, -3, 2, -20};
  const wchar_t* labels[] = {L"r10", L"r2", L"", L"r1"};
  for (int i = 0; i < 4; ++i) road(host.addLine(), ids[i], labels[i]);
  road(host.addLine(), 5, L"r2");
  open(L"Roads");
  select({1, 4});  // the two "r2" rows
  editor.sortRows(2);
  EXPECT_EQ(shown()[0].substr(0, 4), L"3: 2");
  Texts names;
  for (int r = 0; r < 5; ++r) names.push_back(editor.grid.cellText(r, 2));
  EXPECT_EQ(names, (Texts{L"", L"r1", L"r2", L"r2", L"r10"}));
  EXPECT_TRUE(editor.grid.IsRowSelected(2) && editor.grid.IsRowSelected(3));
  EXPECT_EQ(editor.grid.GetSelectedCount(), 2);
  editor.sortRows(2);
  EXPECT_EQ(editor.grid.cellText(0, 2), L"r10");
  editor.sortRows(1);  // another column: ascending again, numbers as their texts order
  Texts numbers;
  for (int r = 0; r < 5; ++r) numbers.push_back(editor.grid.cellText(r, 1));
  EXPECT_EQ(numbers, (Texts{L"-3", L"-20", L"2", L"5", L"10"}));
  editor.sortRows(0);
  editor.sortRows(0);
  EXPECT_EQ(editor.grid.cellText(0, 0), L"5");
  editor.refresh();
  EXPECT_EQ(editor.grid.cellText(0, 2), L"r10");
  EXPECT_EQ(zarvel::tableEditorState().sortDescending, 0);
}

std::vector<ObjectId> hookIds;
void recordHook(std::vector<ObjectId>& ids) {
  hookIds = ids;
}

TEST_F(TableEditorTest, HooksTakeSelectedOrAllRowsAndSortSelectionMovesRowsUp) {
  const ObjectId a = road(road(host.addLine(), 1, L"a"), 2, L"a");
  const ObjectId b = road(host.addLine(), 3, L"b");
  open(L"Roads");
  editor.hooks[Zarvel::kCreateIdsHook] = recordHook;
  editor.hooks[0] = recordHook;
  editor.runHook(Zarvel::kCreateIdsHook);
  EXPECT_EQ(hookIds, (std::vector<ObjectId>{b, a, a}));
  editor.runHook(0);
  EXPECT_EQ(hookIds, (std::vector<ObjectId>{a, a, b}));
  select({2, 0});
  editor.runHook(Zarvel::kCreateIdsHook);
  EXPECT_EQ(hookIds, (std::vector<ObjectId>{a, b}));
  EXPECT_EQ(editor.grid.GetSelectedCount(), 0);  // the load ends the selection

  select({2, 1});
  editor.sortSelection();
  EXPECT_EQ(shown(),
            (Texts{L"1: 2 a 0.000000,0.000000,0.000000", L"2: 3 b 0.000000,0.000000,0.000000",
                   L"1: 1 a 0.000000,0.000000,0.000000"}));
  EXPECT_EQ(editor.grid.GetSelectedRows(), (std::vector<int>{0, 1}));
}

TEST_F(TableEditorTest, KeysWithCtrlQueueHostCommandsAndDeleteWithoutIt) {
  const ObjectId a = road(host.addLine(), 1, L"a");
  open(L"Roads");
  const struct {
    Zarvel::Key key;
    bool ctrl;
    Texts sent;
  } cases[] = {
      {Zarvel::Key::F, true, {L"ZARVEL_HAS_SPECIFIC_VALUES\n"}},
      {Zarvel::Key::Z, true, {L"_UNDO\n\n"}},
      {Zarvel::Key::Y, true, {L"_MREDO\n\n"}},
      {Zarvel::Key::Z, false, {}},
      {Zarvel::Key::Delete, true, {}},
  };
  for (const auto& c : cases) {
    host.sent.clear();
    editor.onKey(c.key, c.ctrl, std::nullopt);
    EXPECT_EQ(host.sent, c.sent);
  }
  EXPECT_EQ(records(a).size(), 1u);
  editor.onKey(Zarvel::Key::A, true, std::nullopt);
  host.messageBoxAnswers = {platform::kIdOk};
  editor.onKey(Zarvel::Key::Delete, false, std::nullopt);
  EXPECT_TRUE(records(a).empty());
}

TEST_F(TableEditorTest, FindMatchesPartOrWholeIgnoringCaseWithoutWrapping) {
  for (const wchar_t* name : {L"Main St", L"main", L"Side"}) road(host.addLine(), 0, name);
  open(L"Roads");
  EXPECT_EQ(editor.findRow(1, L"MAIN", false, 0), 0);
  EXPECT_EQ(editor.findRow(1, L"MAIN", true, 0), 1);
  EXPECT_EQ(editor.findRow(1, L"main", false, 2), -1);
  EXPECT_EQ(editor.findRow(1, L"x", false, 3), -1);

  host.dialogAnswer = [](platform::DialogModel& d) {
    auto& find = static_cast<zarvel::ZarvelFind&>(d);
    find.control(zarvel::ZarvelFind::kIdField).current = 1;
    find.control(zarvel::ZarvelFind::kIdValue).text = L"side";
    return platform::kIdOk;
  };
  EXPECT_EQ(editor.findNext(), Zarvel::FindOutcome::Found);
  EXPECT_EQ(editor.grid.GetSelectedRows(), (std::vector<int>{2}));
  EXPECT_EQ(zarvel::tableEditorState().lastFindText, L"side");
}

TEST_F(TableEditorTest, TypedCellWritesTheFirstMatchingRecordInOneLock) {
  const ObjectId twice = road(road(host.addLine(), 1, L"a"), 1, L"a");
  const ObjectId other = road(host.addLine(), 2, L"b", {1, 2, 3});
  open(L"Roads");
  // The second row of two equal records changes the entity's first record.
  EXPECT_TRUE(editor.grid.commitCellEdit(1, 2, L"z"));
  EXPECT_EQ(records(twice), (Texts{L"1 z", L"1 a"}));
  EXPECT_EQ(host.maxLockDepth, 1);
  EXPECT_EQ(host.lockDepth, 0);
  EXPECT_EQ(host.pickFirst, (std::vector<ObjectId>{twice}));

  host.maxLockDepth = 0;
  editor.grid.commitCellEdit(2, 2, L"b");  // the text it shows: no write
  EXPECT_EQ(host.maxLockDepth, 0);

  const struct {
    int column;
    const wchar_t* typed;
    const wchar_t* shown;
  } cases[] = {
      {1, L"abc", L"0"},
      {3, L"1,2", L"1.000000,2.000000,3.000000"},
      {3, L"4,5,6,7", L"4.000000,5.000000,7.000000"},
      {1, L"42x", L"42"},
  };
  for (const auto& c : cases) {
    editor.grid.commitCellEdit(2, c.column, c.typed);
    EXPECT_EQ(editor.grid.cellText(2, c.column), c.shown) << testing::PrintToString(c.typed);
    const auto stored = zarvel::recordsOfEntityTable(zarvel::getODContainer(), L"Roads", other);
    EXPECT_EQ(zarvel::valueToText(stored[0][c.column - 1]), c.shown);
  }
}

TEST_F(TableEditorTest, ColumnFillWritesEveryRecordOrTheSelectedOnes) {
  const ObjectId twice = road(road(host.addLine(), 1, L"a"), 1, L"a");
  const ObjectId other = road(host.addLine(), 2, L"b");
  open(L"Roads");
  host.dialogAnswer = [](platform::DialogModel& d) {
    EXPECT_EQ(d.title(), L"NAME (character)");
    d.control(zarvel::ZarvelEdit::kIdValue).text = L"all";
    return platform::kIdOk;
  };
  editor.fillColumn(2);
  EXPECT_EQ(records(twice), (Texts{L"1 all", L"1 all"}));
  EXPECT_EQ(records(other), (Texts{L"2 all"}));
  EXPECT_EQ(host.maxLockDepth, 1);

  select({1});
  typeInBox(L"one");
  editor.fillColumn(2);
  EXPECT_EQ(records(twice), (Texts{L"1 one", L"1 all"}));
  EXPECT_EQ(shown()[0], L"1: 1 one 0.000000,0.000000,0.000000");
  EXPECT_EQ(shown()[1], L"1: 1 all 0.000000,0.000000,0.000000");

  host.dialogAnswer = nullptr;  // cancelled: nothing
  editor.fillColumn(2);
  EXPECT_EQ(records(other), (Texts{L"2 all"}));
}

TEST_F(TableEditorTest, PasteChecksTheWholeTextFirstAndWritesLineByRow) {
  const ObjectId first = road(host.addLine(), 1, L"a");
  const ObjectId second = road(host.addLine(), 2, L"b");
  const ObjectId third = road(host.addLine(), 3, L"c");
  open(L"Roads");
  host.messageBoxAnswers = {platform::kIdOk, platform::kIdOk};
  editor.paste(L"7\tx\t\n");  // nothing selected: refused
  select({0, 1});
  editor.paste(L"7\tx\n8\ty\n9\tz\n");  // more lines than rows: refused
  EXPECT_TRUE(host.messageBoxAnswers.empty());
  EXPECT_EQ(records(first), (Texts{L"1 a"}));

  editor.paste(L"7\tx\t1,2,3\n8\t\t4,5,6x");  // the last line loses its last character
  EXPECT_EQ(records(first), (Texts{L"7 x"}));
  EXPECT_EQ(records(second), (Texts{L"8 "}));
  EXPECT_EQ(records(third), (Texts{L"3 c"}));
  EXPECT_EQ(editor.grid.cellText(0, 1), L"1");  // the rows wait for a load
  EXPECT_EQ(host.lockDepth, 0);
}

TEST_F(TableEditorTest, DeleteTriesEachSelectedKeyOnEverySelectedEntity) {
  const ObjectId a = road(road(host.addLine(), 1, L"x"), 2, L"y");
  const ObjectId b = road(road(host.addLine(), 2, L"y"), 3, L"z");
  open(L"Roads");
  select({0, 3});
  host.messageBoxAnswers = {platform::kIdCancel};
  editor.deleteSelectedRows();
  EXPECT_EQ(records(a).size(), 2u);

  host.messageBoxAnswers = {platform::kIdOk};
  editor.deleteSelectedRows();
  // Row 0's key (1 x) finds a's first record; row 3's (3 z) finds b's second;
  // b's "2 y" stays, a's "2 y" too: only the selected rows' keys are tried.
  EXPECT_EQ(records(a), (Texts{L"2 y"}));
  EXPECT_EQ(records(b), (Texts{L"2 y"}));
  EXPECT_EQ(editor.grid.GetItemCount(), 2);
  EXPECT_EQ(editor.grid.GetSelectedCount(), 0);

  // A key that stands on both entities goes from both, though one row is left.
  select({0});
  host.messageBoxAnswers = {platform::kIdOk};
  editor.grid.SetRowSelected(1, true);
  editor.rows[1].values = editor.rows[0].values;
  editor.deleteSelectedRows();
  EXPECT_TRUE(records(a).empty());
  EXPECT_TRUE(records(b).empty());
}

TEST_F(TableEditorTest, SelectionFollowsThePickFirstSetBothWaysAndNewColumnsReload) {
  const ObjectId twice = road(road(host.addLine(), 1, L"a"), 1, L"a");
  const ObjectId other = road(host.addLine(), 2, L"b");
  const ObjectId bare = host.addLine();
  open(L"Roads");
  editor.shown = true;
  // From the drawing: both rows of an entity with two records; none for an
  // entity without a row.
  host.pickFirst = {twice, bare};
  editor.onPickfirstModified(false);
  EXPECT_EQ(editor.grid.GetSelectedRows(), (std::vector<int>{0, 1}));
  host.pickFirst = {bare};
  editor.onPickfirstModified(false);
  EXPECT_TRUE(editor.grid.GetSelectedRows().empty());
  // From the grid, and not while the editor is closed.
  select({2});
  editor.onPickfirstModified(true);
  EXPECT_EQ(host.pickFirst, (std::vector<ObjectId>{other}));
  editor.shown = false;
  host.pickFirst = {twice};
  editor.onPickfirstModified(false);
  EXPECT_EQ(editor.grid.GetSelectedRows(), (std::vector<int>{2}));
  // A column added from outside shows at the next change of the set.
  editor.shown = true;
  platform::OdTableDef def = zarvel::getODContainer().getTable(L"Roads")->definition();
  def.columns.push_back({L"EXTRA", OdType::Integer, L"", OdValue(5)});
  ASSERT_EQ(zarvel::getODContainer().updateTableDefinition(L"Roads", def), platform::Status::Ok);
  editor.onPickfirstModified(false);
  EXPECT_EQ(editor.columnNames.back(), L"EXTRA");
  EXPECT_TRUE(editor.grid.GetSelectedRows().empty());
}

TEST_F(TableEditorTest, ObjectEventsRereadTheEntitysRowsDropTheGoneAndListTheNew) {
  const ObjectId twice = road(road(host.addLine(), 1, L"a"), 2, L"b");
  const ObjectId other = road(host.addLine(), 3, L"c");
  open(L"Roads");
  platform::OdContainer& container = zarvel::getODContainer();
  // A removal steps over the next record, so it takes two calls to empty it.
  zarvel::removeRecordsOfTable(container, L"Roads", twice);
  zarvel::removeRecordsOfTable(container, L"Roads", twice);
  road(twice, 7, L"x");
  // The first row takes the one record; with none left the walk stops there.
  editor.objectModified(twice);
  EXPECT_EQ(shown(), (Texts{L"1: 7 x 0.000000,0.000000,0.000000",
                            L"1: 2 b 0.000000,0.000000,0.000000",
                            L"2: 3 c 0.000000,0.000000,0.000000"}));
  // Rows whose records went are taken out, the selection below moving up.
  select({0, 2});
  zarvel::removeRecordsOfTable(container, L"Roads", twice);
  editor.objectModified(twice);
  EXPECT_EQ(shown(), (Texts{L"2: 3 c 0.000000,0.000000,0.000000"}));
  EXPECT_EQ(editor.grid.GetSelectedRows(), (std::vector<int>{0}));
  // An entity without rows gets a row per record after the last number; the
  // editor writing itself is deaf to it, and an erase always takes the rows.
  const ObjectId fresh = road(host.addLine(), 8, L"n");
  editor.objectEventsEnabled = false;
  editor.objectModified(fresh);
  EXPECT_EQ(editor.grid.GetItemCount(), 1);
  editor.objectEventsEnabled = true;
  editor.objectModified(fresh);
  editor.objectErased(other);
  EXPECT_EQ(editor.erasedRowNumbers, (std::vector<std::int32_t>{2}));
  EXPECT_EQ(shown(), (Texts{L"3: 8 n 0.000000,0.000000,0.000000"}));
}

}  // namespace
}  // namespace testing_support
