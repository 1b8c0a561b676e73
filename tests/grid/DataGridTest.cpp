// The grid model driven as a front end and as the command-line host drive it.
#include "grid/DataGrid.h"

#include <gtest/gtest.h>

#include "grid/ColumnTraitEdit.h"

namespace zarvel {
namespace {

// A "Field"/"Value" grid as the dialogs build it: the field read-only, the
// value edited in place.
struct FieldGrid {
  DataGrid grid;
  explicit FieldGrid(const std::vector<std::pair<std::wstring, std::wstring>>& rows) {
    grid.InsertColumn(0, L"Field");
    grid.InsertColumnTrait(1, L"Value", Align::Left, 100, -1, std::make_unique<ColumnTraitEdit>());
    for (const auto& [field, value] : rows) {
      const int row = grid.InsertItem(grid.GetItemCount(), field);
      grid.SetItemText(row, 1, value);
    }
  }
};

TEST(DataGridTest, ActsAsTheHostsGridView) {
  FieldGrid f({{L"ID", L"*"}, {L"NAME", L"*"}});
  platform::GridView& view = f.grid;
  EXPECT_EQ(view.columnCount(), 2);
  EXPECT_EQ(view.columnHeading(1), L"Value");
  EXPECT_EQ(view.rowCount(), 2);
  EXPECT_FALSE(view.isCellEditable(0, 0));  // the default trait gives no editor
  EXPECT_TRUE(view.isCellEditable(0, 1));
  EXPECT_TRUE(view.commitCellEdit(1, 1, L">5"));
  EXPECT_EQ(view.cellText(1, 1), L">5");
  EXPECT_FALSE(view.commitCellEdit(1, 0, L"X"));
  EXPECT_EQ(view.cellText(1, 0), L"NAME");

  EXPECT_TRUE(view.isMultiSelect());
  view.setRowSelected(0, true);
  view.setRowSelected(1, true);
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{0, 1}));
  f.grid.SetSingleSelect(true);
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{0}));
  view.setRowSelected(1, true);
  EXPECT_EQ(f.grid.GetSelectedRows(), (std::vector<int>{1}));
}

}  // namespace
}  // namespace zarvel
