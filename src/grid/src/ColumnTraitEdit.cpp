// The traits that edit a cell in place, and the hyperlink column.
#include "grid/ColumnTraitEdit.h"

#include "grid/DataGrid.h"

namespace zarvel {

// --- Edit boxes --------------------------------------------------------------

std::unique_ptr<CellEditor> ColumnTraitEdit::OnEditBegin(DataGrid& grid, int row, int column) {
  return CreateEdit(grid, row, column);
}

std::unique_ptr<CellEditor> ColumnTraitEdit::CreateEdit(DataGrid& grid, int row, int column) {
  return std::make_unique<CellEditorText>(grid, row, column, grid.GetItemText(row, column),
                                          grid.GetColumnFormat(column), editLimit_);
}

std::unique_ptr<CellEditor> ColumnTraitMultilineEdit::CreateEdit(DataGrid& grid, int row,
                                                                 int column) {
  return std::make_unique<CellEditorMultiline>(grid, row, column, grid.GetItemText(row, column),
                                               grid.GetColumnFormat(column), GetMaxEditLength(),
                                               maxLines_);
}

// --- Combo box ---------------------------------------------------------------

void ColumnTraitCombo::AddItem(std::uintptr_t data, const std::wstring& text) {
  items_.push_back(CellEditorCombo::Item{text, data});
}

std::unique_ptr<CellEditor> ColumnTraitCombo::OnEditBegin(DataGrid& grid, int row, int column) {
  return std::make_unique<CellEditorCombo>(grid, row, column, grid.GetItemText(row, column), items_,
                                           style_, editLimit_);
}

// --- Date and time -----------------------------------------------------------

std::unique_ptr<CellEditor> ColumnTraitDateTime::OnEditBegin(DataGrid& grid, int row, int column) {
  return std::make_unique<CellEditorDateTime>(grid, row, column, grid.GetItemText(row, column),
                                              format_);
}

int ColumnTraitDateTime::OnSortRows(const SortRow& left, const SortRow& right,
                                    bool ascending) const {
  const SortRow& first = ascending ? left : right;
  const SortRow& second = ascending ? right : left;
  const std::optional<DateTime> l = parseDateTime(std::wstring(first.text), format_);
  const std::optional<DateTime> r = parseDateTime(std::wstring(second.text), format_);
  if (!l || !r) return (l ? 1 : 0) - (r ? 1 : 0);
  const std::int64_t difference = l->toSeconds() - r->toSeconds();
  return difference < 0 ? -1 : (difference > 0 ? 1 : 0);
}

// --- Hyperlink ---------------------------------------------------------------

ColumnTraitHyperLink::ColumnTraitHyperLink() {
  SetSingleClickEdit(true);
}

LinkRequest ColumnTraitHyperLink::GetLink(const DataGrid& grid, int row, int column) const {
  LinkRequest link;
  link.verb = verb_;
  link.showCommand = showCommand_;
  const std::wstring text = grid.GetItemText(row, column);
  if (application_.empty()) {
    link.target = prefix_ + text + suffix_;
  } else {
    link.target = application_;
    link.parameters = text;
  }
  return link;
}

std::unique_ptr<CellEditor> ColumnTraitHyperLink::OnEditBegin(DataGrid& grid, int row, int column) {
  if (GridListener* listener = grid.GetListener()) {
    listener->OnOpenLink(grid, GetLink(grid, row, column));
  }
  grid.OnEndLabelEdit(row, column, nullptr, EditResult{});
  return nullptr;
}

bool ColumnTraitHyperLink::UpdateTextColor(int /*row*/, Color& color) const {
  color = linkColor_;
  return true;
}

bool ColumnTraitHyperLink::UpdateTextFont(int /*row*/, FontSpec& font) const {
  font.underline = 1;
  return true;
}

}  // namespace zarvel
