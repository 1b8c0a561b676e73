// The grid model driven as a front end and as the command-line host drive it.
#include "grid/DataGrid.h"

#include <gtest/gtest.h>

#include "grid/ColumnTraitEdit.h"

namespace zarvel {
namespace {

// Writes down what the grid tells its holder; refuses texts "bad".
struct Log : GridListener {
  std::wstring events;
  std::wstring clipboard;
  bool OnEndLabelEdit(DataGrid&, int row, int column, const EditResult& r) override {
    events += L"end " + std::to_wstring(row) + L"," + std::to_wstring(column) + L" " +
              (r.text ? L"\"" + *r.text + L"\"" : L"-") +
              (r.image ? L" image " + std::to_wstring(*r.image) : L"") + L";";
    return !(r.text && *r.text == L"bad");
  }
  void OnInvalidate(DataGrid&) override { events += L"invalidate;"; }
  bool OnSetClipboardText(DataGrid&, const std::wstring& text) override {
    clipboard = text;
    return true;
  }
  void OnHeaderColumnMenu(DataGrid&, int column) override {
    events += L"header menu " + std::to_wstring(column) + L";";
  }
};

// A grid of text columns and stored rows, column 1 edited in place.
template <typename Grid = DataGrid>
struct Fixture {
  Grid grid;
  Log log;
  Fixture(std::vector<std::wstring> headings, std::vector<std::vector<std::wstring>> rows) {
    grid.SetListener(&log);
    for (int c = 0; c < static_cast<int>(headings.size()); ++c) {
      if (c == 1) {
        grid.InsertColumnTrait(c, headings[c], Align::Left, 80, -1,
                               std::make_unique<ColumnTraitEdit>());
      } else {
        grid.InsertColumn(c, headings[c]);
      }
    }
    for (const auto& cells : rows) {
      const int row = grid.InsertItem(grid.GetItemCount(), cells[0]);
      for (int c = 1; c < static_cast<int>(cells.size()); ++c) grid.SetItemText(row, c, cells[c]);
    }
    log.events.clear();
  }
  std::wstring column(int c) const {
    std::wstring text;
    for (int r = 0; r < grid.GetItemCount(); ++r) text += grid.GetItemText(r, c) + L" ";
    return text;
  }
};

TEST(DataGridTest, ActsAsTheHostsGridView) {
  Fixture<> f({L"Field", L"Value"}, {{L"ID", L"*"}, {L"NAME", L"*"}});
  platform::GridView& view = f.grid;
  EXPECT_FALSE(view.isCellEditable(0, 0));  // the default trait gives no editor
  EXPECT_TRUE(view.isCellEditable(0, 1));
  EXPECT_TRUE(view.commitCellEdit(1, 1, L">5"));
  EXPECT_FALSE(view.commitCellEdit(0, 1, L"bad"));
  EXPECT_FALSE(view.commitCellEdit(1, 0, L"X"));
  EXPECT_EQ(f.column(1), L"* >5 ");
  EXPECT_EQ(f.column(0), L"ID NAME ");
  EXPECT_EQ(f.log.events, L"end 1,1 \">5\";end 0,1 \"bad\";");

  view.setRowSelected(0, true);
  view.setRowSelected(1, true);
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{0, 1}));
  f.grid.SetSingleSelect(true);
  EXPECT_FALSE(view.isMultiSelect());
  view.setRowSelected(1, true);
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{1}));
}

// A million rows hold no strings: the text is made as it is asked for, and
// an edit reaches the holder, which keeps the value.
TEST(DataGridTest, OwnerDataRowsComeFromTheirSource) {
  Fixture<> f({L"#", L"Value"}, {});
  f.grid.SetOwnerData(true);
  f.grid.SetRowSource([](int row, int column) { return std::to_wstring(row * 10 + column); });
  f.grid.SetItemCount(1000000);
  EXPECT_EQ(f.grid.GetItemText(999999, 1), L"9999991");
  EXPECT_EQ(f.grid.InsertItem(0, L"x"), -1);
  EXPECT_TRUE(f.grid.commitCellEdit(5, 1, L"new"));
  EXPECT_EQ(f.grid.GetItemText(5, 1), L"51");
  EXPECT_FALSE(f.grid.SortColumn(1, true));
  EXPECT_EQ(f.log.events, L"invalidate;end 5,1 \"new\";");
}

TEST(DataGridTest, FocusCellMovesOverVisibleColumns) {
  const struct {
    int from;
    bool right;
    int to;
  } cases[] = {
      {-1, true, 0},  {-1, false, -1},  // from row focus only rightwards
      {0, true, 1},   {1, true, 3},     // past the hidden column
      {3, true, 3},                     // no neighbour: the cell stays
      {0, false, -1},                   // a hidden neighbour gives row focus
      {3, false, 1},
  };
  for (const auto& c : cases) {
    Fixture<> f({L"A", L"B", L"C", L"D"}, {{L"a", L"b", L"c", L"d"}});
    ASSERT_TRUE(f.grid.ShowColumn(2, false));  // hidden columns go in front
    f.grid.SetFocusCell(c.from);
    f.grid.MoveFocusCell(c.right);
    EXPECT_EQ(f.grid.GetFocusCell(), c.to) << c.from << (c.right ? " right" : " left");
  }
  Fixture<> empty({L"A", L"B"}, {});
  empty.grid.SetFocusCell(1);
  empty.grid.MoveFocusCell(true);
  EXPECT_EQ(empty.grid.GetFocusCell(), -1);
}

TEST(DataGridTest, AClickEditsOnlyTheCellThatHasTheFocus) {
  Fixture<> f({L"Field", L"Value"}, {{L"ID", L"1"}, {L"NAME", L"x"}});
  f.grid.OnLButtonDown(1, 1, CellPart::Label);
  EXPECT_EQ(f.grid.GetEditor(), nullptr);
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{1}));
  f.grid.OnLButtonDown(1, 1, CellPart::Label, {true, false});
  EXPECT_EQ(f.grid.GetEditor(), nullptr);  // Ctrl never edits
  f.grid.OnLButtonDown(1, 1, CellPart::Label);
  ASSERT_NE(f.grid.GetEditor(), nullptr);
  EXPECT_EQ(f.grid.GetEditor()->GetText(), L"x");
  f.grid.OnLButtonDown(0, 0, CellPart::Label);  // a click elsewhere takes the text
  EXPECT_EQ(f.grid.GetEditor(), nullptr);
  f.grid.OnLButtonDown(0, 1, CellPart::Label, {false, true});  // nor Shift
  EXPECT_EQ(f.grid.GetEditor(), nullptr);
  EXPECT_EQ(f.log.events, L"end 1,1 -;");
}

TEST(DataGridTest, AnEditEndsByItsKey) {
  using Key = CellEditor::Key;
  const struct {
    const wchar_t* typed;  // null: no key typed
    Key key;
    bool ended;
    const wchar_t* cell;
    const wchar_t* events;
  } cases[] = {
      {L"new", Key::Enter, true, L"new", L"end 0,1 \"new\";"},
      {L"new", Key::Tab, true, L"new", L"end 0,1 \"new\";"},
      {L"new", Key::Escape, true, L"old", L"end 0,1 -;"},
      {nullptr, Key::Enter, true, L"old", L"end 0,1 -;"},
      {L"old", Key::Enter, true, L"old", L"end 0,1 \"old\";"},  // typed back: still sent
      {L"bad", Key::Tab, true, L"old", L"end 0,1 \"bad\";"},
  };
  for (const auto& c : cases) {
    Fixture<> f({L"Field", L"Value", L"More"}, {{L"ID", L"old", L"m"}});
    f.grid.SetFocusRow(0);
    f.grid.SetFocusCell(1);
    ASSERT_TRUE(f.grid.OnKeyDown(GridKey::F2));
    CellEditor* editor = f.grid.GetEditor();
    ASSERT_NE(editor, nullptr);
    if (c.typed) editor->SetText(c.typed);
    EXPECT_EQ(editor->OnKey(c.key), c.ended);
    EXPECT_EQ(f.grid.GetEditor(), nullptr);
    EXPECT_EQ(f.grid.GetItemText(0, 1), c.cell);
    EXPECT_EQ(f.grid.GetFocusCell(), 1);  // Tab does not move on
    EXPECT_EQ(f.log.events, c.events);
  }
}

// A holder may refill the grid and open the next edit while hearing of the
// last one's end; the ending editor outlives its own notification.
TEST(DataGridTest, AHolderMayEditAgainWhileAnEditEnds) {
  struct Refill : Log {
    bool OnEndLabelEdit(DataGrid& grid, int, int, const EditResult& r) override {
      if (!r.text) return true;
      grid.DeleteAllItems();
      grid.InsertItem(0, L"again");
      grid.EditCell(0, 1);
      return false;  // the row is gone: nothing to store
    }
  } refill;
  Fixture<> f({L"Field", L"Value"}, {{L"ID", L"1"}});
  f.grid.SetListener(&refill);
  EXPECT_FALSE(f.grid.commitCellEdit(0, 1, L"2"));
  ASSERT_NE(f.grid.GetEditor(), nullptr);
  EXPECT_EQ(f.grid.GetEditor()->GetText(), L"");
  EXPECT_EQ(f.column(0) + f.column(1), L"again  ");
}

TEST(DataGridTest, EditorsOfTheOtherTraits) {
  Fixture<> f({L"Field"}, {{L"a"}, {L"b"}});
  auto combo = std::make_unique<ColumnTraitCombo>();
  combo->AddItem(1, L"Yes");
  combo->AddItem(0, L"No");
  f.grid.InsertColumnTrait(1, L"Combo", Align::Left, 80, -1, std::move(combo));
  f.grid.InsertColumnTrait(2, L"Lines", Align::Left, 80, -1,
                           std::make_unique<ColumnTraitMultilineEdit>());
  auto date = std::make_unique<ColumnTraitDateTime>();
  date->SetFormat(L"dd.MM.yyyy");
  f.grid.InsertColumnTrait(3, L"Date", Align::Left, 80, -1, std::move(date));
  auto image = std::make_unique<ColumnTraitImage>();
  image->AddImageIndex(0, L"off");
  image->AddImageIndex(1, L"on");
  image->SetImageClickEnabled(true);
  f.grid.InsertColumnTrait(4, L"Flag", Align::Left, 80, -1, std::move(image));
  f.grid.SetCellImage(0, 4, 0);

  EXPECT_TRUE(f.grid.commitCellEdit(0, 1, L"no"));      // an item, ignoring case
  EXPECT_FALSE(f.grid.commitCellEdit(1, 1, L"Maybe"));  // a drop-down list takes only items
  EXPECT_TRUE(f.grid.commitCellEdit(0, 2, L"one\ntwo"));
  EXPECT_TRUE(f.grid.commitCellEdit(0, 3, L"29.02.2024"));
  EXPECT_FALSE(f.grid.commitCellEdit(1, 3, L"29.02.2023"));
  EXPECT_FALSE(f.grid.isCellEditable(0, 4));
  f.grid.OnLButtonDown(0, 4, CellPart::Image);  // flips at once
  EXPECT_EQ(f.grid.GetCellImage(0, 4), 1);
  EXPECT_EQ(f.column(1) + f.column(2) + f.column(3), L"No  one\ntwo  29.02.2024  ");
  f.grid.SetItemText(1, 3, L"31.12.2023");
  ASSERT_TRUE(f.grid.SortColumn(3, true));  // by time, not by text
  EXPECT_EQ(f.column(0), L"b a ");
}

TEST(DataGridTest, CellLookLayersRowColumnAndHooks) {
  Fixture<EditorGrid> f({L"#", L"Value", L"Other"}, {{L"1", L"a", L"x"}, {L"2", L"b", L"y"}});
  auto rows = std::make_unique<RowTraitText>();
  rows->SetRowColor(rgbColor(0, 0, 0), rgbColor(255, 255, 255));
  rows->SetAltRowColor(kNoColor, rgbColor(240, 240, 255));
  f.grid.SetRowTrait(std::move(rows));
  dynamic_cast<ColumnTraitText&>(f.grid.GetColumnTrait(2)).SetTextColor(rgbColor(255, 0, 0));
  f.grid.OnLButtonDown(1, 1, CellPart::Label);
  const struct {
    int row;
    int column;
    Color text;
    Color back;
    bool highlighted;
    bool focused;
  } cases[] = {
      {0, 1, rgbColor(0, 0, 0), rgbColor(255, 255, 255), false, false},
      {1, 0, rgbColor(0, 0, 0), rgbColor(0xF0, 0xF0, 0xF0), true, false},  // the editor's hook
      {1, 1, rgbColor(0, 0, 0), rgbColor(240, 240, 255), false, true},  // the focus cell stands out
      {1, 2, rgbColor(255, 0, 0), rgbColor(240, 240, 255), true, false},
  };
  for (const auto& c : cases) {
    const CellLook look = f.grid.GetCellLook(c.row, c.column);
    EXPECT_EQ(look.textColor, c.text) << c.row << "," << c.column;
    EXPECT_EQ(look.backColor, c.back) << c.row << "," << c.column;
    EXPECT_EQ(look.highlighted, c.highlighted) << c.row << "," << c.column;
    EXPECT_EQ(look.focused, c.focused) << c.row << "," << c.column;
  }
}

TEST(DataGridTest, KeyboardSearchFindsTheNextRowByItsStart) {
  Fixture<> f({L"#", L"Name"}, {{L"0", L"apple"},
                                {L"1", L"banana"},
                                {L"2", L"aardvark"},
                                {L"3", L"Avocado"},
                                {L"4", L"apricot"}});
  std::int64_t now = 100;
  f.grid.SetSearchClock([&now] { return now; });
  EXPECT_FALSE(f.grid.OnChar(L'a'));  // no focus cell: the list's own search
  f.grid.OnLButtonDown(1, 1, CellPart::Label);
  const struct {
    wchar_t key;
    std::int64_t after;  // seconds since the key before
    int row;
  } keys[] = {
      {L'a', 0, 2},                // from the row after the focused one
      {L'a', 1, 3},                // the same letter again: the next a-row, not an "aa" row
      {L'a', 1, 4},                // and one further
      {L'b', 2, 1},                // a pause starts a new search
      {L'a', 5, 2}, {L'p', 1, 4},  // "ap", from the row found
      {L'x', 1, 4},                // "apx" finds nothing: the row stays
  };
  for (const auto& k : keys) {
    now += k.after;
    EXPECT_TRUE(f.grid.OnChar(k.key));
    EXPECT_EQ(f.grid.GetFocusRow(), k.row) << static_cast<char>(k.key);
    EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{k.row}));
  }
}

TEST(DataGridTest, SortIsStableAndCarriesTheRowState) {
  // Keys that differ early, and keys alike in more than their first letters.
  Fixture<> f({L"Tag", L"Key", L"Number"}, {{L"1", L"parcel-b", L"10"},
                                            {L"2", L"A", L"9"},
                                            {L"3", L"PARCEL-A", L"-1"},
                                            {L"4", L"a", L"10"}});
  f.grid.SetRowSelected(3, true);
  f.grid.SetFocusRow(3);
  ASSERT_TRUE(f.grid.OnHeaderClick(1));
  EXPECT_EQ(f.column(0), L"2 4 3 1 ");
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{1}));
  EXPECT_EQ(f.grid.GetItemText(f.grid.GetFocusRow(), 0), L"4");
  ASSERT_TRUE(f.grid.OnHeaderClick(1));  // again: descending, equal keys keep their order
  EXPECT_EQ(f.column(0), L"1 3 2 4 ");
  EXPECT_FALSE(f.grid.IsSortAscending());
  EXPECT_TRUE(f.grid.SortColumn(2, true));  // text: "-1" "10" "10" "9"
  EXPECT_EQ(f.column(0), L"3 1 4 2 ");
  dynamic_cast<ColumnTraitText&>(f.grid.GetColumnTrait(2)).SetSortNumeric(true);
  EXPECT_TRUE(f.grid.SortColumn(2, false));
  EXPECT_EQ(f.column(0), L"1 4 2 3 ");
}

TEST(DataGridTest, CopiesTheSelectionAsTabSeparatedText) {
  Fixture<> f({L"A", L"B", L"C"}, {{L"a0", L"b0", L"c0"}, {L"a1", L"b1", L"c1"}});
  EXPECT_EQ(f.grid.GetSelectedText(true), L"");
  EXPECT_FALSE(f.grid.OnCopyToClipboard());
  f.grid.SetRowSelected(1, true);
  EXPECT_EQ(f.grid.GetSelectedText(true), L"A\tB\tC\r\na1\tb1\tc1");  // no focus cell
  f.grid.SetFocusCell(2);
  ASSERT_TRUE(f.grid.OnKeyDown(GridKey::C, {true, false}));
  EXPECT_EQ(f.log.clipboard, L"c1");  // one row: the focus cell alone
  f.grid.SetRowSelected(0, true);
  f.grid.ShowColumn(1, false);
  f.grid.SetColumnOrderArray({1, 2, 0});
  EXPECT_EQ(f.grid.GetSelectedText(true), L"C\tA\r\nc0\ta0\r\nc1\ta1");
  EXPECT_EQ(f.grid.OnBeginDrag(), L"c0\ta0\r\nc1\ta1");
}

TEST(DataGridTest, DropMovesTheSelectedRowsBeforeTheTarget) {
  const struct {
    std::vector<int> selected;
    int target;
    bool moved;
    const wchar_t* order;
  } cases[] = {
      {{3}, 1, true, L"0 3 1 2 4 "},     {{0, 2}, 5, true, L"1 3 4 0 2 "},
      {{1, 3}, 0, true, L"1 3 0 2 4 "},  {{1, 2}, 1, false, L"0 1 2 3 4 "},
      {{1, 2}, 3, false, L"0 1 2 3 4 "}, {{}, 2, false, L"0 1 2 3 4 "},
  };
  for (const auto& c : cases) {
    Fixture<> f({L"#"}, {{L"0"}, {L"1"}, {L"2"}, {L"3"}, {L"4"}});
    for (int row : c.selected) f.grid.SetRowSelected(row, true);
    EXPECT_EQ(f.grid.OnDropRows(c.target), c.moved) << c.target;
    EXPECT_EQ(f.column(0), c.order);
  }
  Fixture<NoDropGrid> noDrop({L"#"}, {{L"0"}, {L"1"}});
  noDrop.grid.SetRowSelected(1, true);
  EXPECT_FALSE(noDrop.grid.OnDropRows(0));
  Fixture<> owner({L"#"}, {});
  owner.grid.SetOwnerData(true);
  owner.grid.SetItemCount(2);
  owner.grid.SetRowSelected(1, true);
  EXPECT_FALSE(owner.grid.OnDropRows(0));
}

TEST(DataGridTest, HeaderMenuPicksColumns) {
  Fixture<> f({L"A", L"B", L"C"}, {{L"a", L"b", L"c"}});
  f.grid.GetColumnTrait(0).GetColumnState().alwaysVisible = true;
  ContextMenu menu = f.grid.OnContextMenu(MenuRegion::Header, -1, 1);
  ASSERT_EQ(menu.entries.size(), 2u);
  EXPECT_EQ(menu.entries[0].text, L"B");
  EXPECT_TRUE(menu.entries[0].checked);
  EXPECT_TRUE(f.grid.OnContextMenuCommand(menu.entries[0]));
  EXPECT_FALSE(f.grid.IsColumnVisible(1));
  EXPECT_TRUE(f.grid.OnContextMenu(MenuRegion::Cell, 0, 0).entries.empty());

  Fixture<EditorGrid> editor({L"#", L"B"}, {{L"1", L"b"}});
  EXPECT_TRUE(editor.grid.OnHeaderContextMenu(1).entries.empty());
  EXPECT_TRUE(editor.grid.OnHeaderContextMenu(0).entries.empty());
  EXPECT_EQ(editor.log.events, L"header menu 1;");
}

TEST(DataGridTest, AnEmptyGridShowsItsText) {
  Fixture<> f({L"A"}, {});
  EXPECT_EQ(f.grid.GetEmptyMarkupText(), L"There are no items to show in this view.");
  f.grid.InsertItem(0, L"a");
  f.grid.InsertItem(1, L"b");
  EXPECT_EQ(f.grid.GetEmptyMarkupText(), L"");
  EXPECT_EQ(f.log.events, L"invalidate;");  // once, for the first row
}

}  // namespace
}  // namespace zarvel
