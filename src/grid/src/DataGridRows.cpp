// Operations over many rows: the keyboard search within a column, copying
// the selection as text, sorting by a column, and moving rows by a drop.
#include <algorithm>

#include "TextCompare.h"
#include "grid/DataGrid.h"

namespace zarvel {
namespace {

// A repeated key within this many seconds goes on with the same search.
constexpr std::int64_t kSearchPause = 2;

}  // namespace

bool DataGrid::OnChar(wchar_t ch, KeyModifiers modifiers) {
  // Column 0 is the list's own label column, which searches its own way.
  if (focusCell_ < 1 || ch < 0x20) return false;
  if (modifiers.ctrl) {
    ResetSearch();
    return true;
  }
  const std::int64_t now = clock_();
  if (now - searchTime_ >= kSearchPause || focusCell_ != searchCell_ || focusRow_ != searchRow_) {
    searchText_.clear();
  }
  if (searchText_.empty()) searchRepeat_ = 0;
  searchCell_ = focusCell_;
  searchTime_ = now;
  // The same letter again means the next row that begins with it, not a row
  // that begins with it twice; a different key spells the repeats out.
  if (searchText_.size() == 1 && searchText_[0] == ch) {
    ++searchRepeat_;
  } else {
    if (searchRepeat_ > 0) {
      searchText_.append(static_cast<std::size_t>(searchRepeat_), searchText_[0]);
      searchRepeat_ = 0;
    }
    searchText_ += ch;
  }
  const int start = searchText_.size() == 1 ? focusRow_ + 1 : std::max(focusRow_, 0);
  const int found = OnKeyboardSearch(focusCell_, start, searchText_);
  if (found >= 0) {
    SelectOnly(found);
    focusRow_ = anchorRow_ = searchRow_ = found;
    if (listener_) listener_->OnEnsureVisible(*this, found, focusCell_);
  }
  return true;
}

void DataGrid::ResetSearch() {
  searchText_.clear();
  searchRepeat_ = 0;
}

int DataGrid::OnKeyboardSearch(int column, int startRow, const std::wstring& text) const {
  if (rowCount_ == 0) return -1;
  startRow = std::clamp(startRow, 0, rowCount_);
  std::wstring scratch;
  auto matches = [&](int row) {
    return startsWithIgnoringCase(CellText(row, column, scratch), text);
  };
  for (int row = startRow; row < rowCount_; ++row) {
    if (matches(row)) return row;
  }
  for (int row = 0; row < startRow; ++row) {
    if (matches(row)) return row;
  }
  return -1;
}

std::wstring DataGrid::LineOfRow(int row, const std::vector<int>& columns) const {
  std::wstring line;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) line += L'\t';
    std::wstring scratch;
    line += row < 0 ? std::wstring_view(GetColumnHeading(columns[i]))
                    : CellText(row, columns[i], scratch);
  }
  return line;
}

// One selected row with a focus cell copies that cell alone, without the
// heading; otherwise the visible columns of each selected row in display
// order, tab-separated, lines joined by CR LF with none after the last, the
// headings first when asked for.
std::wstring DataGrid::GetSelectedText(bool includeHeader) const {
  const std::vector<int> rows = GetSelectedRows();
  if (rows.size() == 1 && ValidColumn(focusCell_)) return GetItemText(rows.front(), focusCell_);
  if (rows.empty()) return std::wstring();
  const std::vector<int> columns = GetVisibleColumns();
  std::wstring text;
  if (includeHeader) text = LineOfRow(-1, columns) + L"\r\n";
  for (int row : rows) {
    if (row != rows.front()) text += L"\r\n";
    text += LineOfRow(row, columns);
  }
  return text;
}

bool DataGrid::OnCopyToClipboard() {
  if (GetSelectedCount() == 0 || !listener_) return false;
  return listener_->OnSetClipboardText(*this, GetSelectedText(true));
}

bool DataGrid::SortColumn(int column, bool ascending) {
  if (style_.ownerData || !ValidColumn(column)) return false;
  EndEditing(true);
  // The keys move with the sort, so that a comparison reads what lies beside
  // it and only texts alike in their prefixes are fetched from afar. A
  // display hook's text is kept aside for the rows it answers.
  struct Entry {
    SortRow key;
    int row;
  };
  std::vector<std::wstring> shown;
  std::vector<Entry> entries(static_cast<std::size_t>(rowCount_));
  std::wstring hooked;
  for (int row = 0; row < rowCount_; ++row) {
    Entry& entry = entries[row];
    entry.row = row;
    if (OnDisplayCellText(row, column, hooked)) {
      if (shown.empty()) shown.resize(static_cast<std::size_t>(rowCount_));
      shown[row] = std::move(hooked);
      entry.key.text = shown[row];
      foldedPrefix(entry.key.text, entry.key.prefixHigh, entry.key.prefixLow);
    } else {
      const StoredCell& cell = columns_[column].cells[row];
      entry.key.text = cell.text;
      entry.key.prefixHigh = cell.prefixHigh;
      entry.key.prefixLow = cell.prefixLow;
    }
    entry.key.image = GetCellImage(row, column);
    entry.key.data = itemData_[row];
  }
  const ColumnTrait& trait = GetColumnTrait(column);
  std::stable_sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
    return trait.OnSortRows(a.key, b.key, ascending) < 0;
  });
  std::vector<int> order(static_cast<std::size_t>(rowCount_));
  for (int i = 0; i < rowCount_; ++i) order[i] = entries[i].row;
  ApplyRowOrder(order);
  SetSortArrow(column, ascending);
  return true;
}

bool DataGrid::OnHeaderClick(int column) {
  if (!ValidColumn(column) || !GetColumnTrait(column).GetColumnState().sortable) return false;
  const bool ascending = column == sortColumn_ ? !sortAscending_ : true;
  return SortColumn(column, ascending);
}

bool DataGrid::OnDropRows(int targetRow) {
  if (style_.ownerData || !EnableOleDragDrop()) return false;
  if (targetRow < 0 || targetRow > rowCount_) return false;
  const std::vector<int> selected = GetSelectedRows();
  if (selected.empty()) return false;
  std::vector<int> order;
  order.reserve(static_cast<std::size_t>(rowCount_));
  for (int row = 0; row < targetRow; ++row) {
    if (!IsRowSelected(row)) order.push_back(row);
  }
  order.insert(order.end(), selected.begin(), selected.end());
  for (int row = targetRow; row < rowCount_; ++row) {
    if (!IsRowSelected(row)) order.push_back(row);
  }
  bool changes = false;
  for (int i = 0; i < rowCount_ && !changes; ++i) changes = order[i] != i;
  if (!changes) return false;
  EndEditing(true);
  ApplyRowOrder(order);
  return true;
}

void DataGrid::ApplyRowOrder(const std::vector<int>& order) {
  auto reorder = [&order](auto& values) {
    if (values.empty()) return;
    std::remove_reference_t<decltype(values)> moved(order.size());
    for (std::size_t i = 0; i < order.size(); ++i) moved[i] = std::move(values[order[i]]);
    values = std::move(moved);
  };
  for (Column& c : columns_) {
    reorder(c.cells);
    reorder(c.images);
  }
  reorder(itemData_);
  reorder(rowState_);
  std::vector<int> newIndex(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) newIndex[order[i]] = static_cast<int>(i);
  for (int* index : {&focusRow_, &anchorRow_, &searchRow_}) {
    if (*index >= 0) *index = newIndex[*index];
  }
}

}  // namespace zarvel
