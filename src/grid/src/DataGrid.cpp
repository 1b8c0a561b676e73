// The grid's columns, rows, selection and focus, its display hooks and what
// a front end asks to draw a cell.
#include "grid/DataGrid.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "TextCompare.h"
#include "grid/ViewConfigSection.h"

namespace zarvel {
namespace {

std::int64_t systemSeconds() {
  using namespace std::chrono;
  return duration_cast<seconds>(system_clock::now().time_since_epoch()).count();
}

const std::wstring kNoText;

}  // namespace

bool FontSpec::operator==(const FontSpec& o) const {
  return faceName == o.faceName && height == o.height && width == o.width &&
         escapement == o.escapement && orientation == o.orientation && weight == o.weight &&
         italic == o.italic && underline == o.underline && strikeOut == o.strikeOut &&
         charSet == o.charSet && outPrecision == o.outPrecision &&
         clipPrecision == o.clipPrecision && quality == o.quality &&
         pitchAndFamily == o.pitchAndFamily;
}

DataGrid::DataGrid(GridStyle style)
    : style_(style), rowTrait_(std::make_unique<RowTraitText>()), clock_(systemSeconds) {}

DataGrid::~DataGrid() {
  // An open editor ends as on a lost focus, while the grid still stands.
  EndEditing(true);
  if (columnConfigOwned_) delete columnConfig_;
}

void DataGrid::SetSingleSelect(bool single) {
  style_.singleSelect = single;
  if (!single) return;
  const std::vector<int> rows = GetSelectedRows();
  for (std::size_t i = 1; i < rows.size(); ++i) rowState_[rows[i]] &= ~kSelected;
}

void DataGrid::SetOwnerData(bool on) {
  if (on == style_.ownerData) return;
  if (!DeleteAllItems()) return;
  style_.ownerData = on;
}

// --- Columns ---------------------------------------------------------------

int DataGrid::InsertColumnTrait(int position, const std::wstring& heading, Align format, int width,
                                int subItem, std::unique_ptr<ColumnTrait> trait) {
  if (!trait || position < 0) return -1;
  EndEditing(true);
  const int column = std::min(position, GetColumnCount());
  Column c;
  c.heading = heading;
  c.format = format;
  c.width = std::max(width, 0);
  c.subItem = subItem < 0 ? column : subItem;
  c.trait = std::move(trait);
  if (!style_.ownerData) c.cells.resize(static_cast<std::size_t>(rowCount_));
  columns_.insert(columns_.begin() + column, std::move(c));
  for (int& index : order_) {
    if (index >= column) ++index;
  }
  order_.insert(order_.begin() + std::min<std::size_t>(column, order_.size()), column);
  if (focusCell_ >= column) ++focusCell_;
  if (sortColumn_ >= column) ++sortColumn_;
  columns_[column].trait->OnInsertToList(*this, column);
  return column;
}

int DataGrid::InsertColumn(int position, const std::wstring& heading, Align format, int width,
                           int subItem) {
  return InsertColumnTrait(position, heading, format, width, subItem,
                           std::make_unique<ColumnTraitText>());
}

int DataGrid::InsertHiddenLabelColumn() {
  auto trait = std::make_unique<ColumnTraitText>();
  ColumnTrait::ColumnState& state = trait->GetColumnState();
  state.alwaysHidden = true;
  state.visible = false;
  state.resizable = false;
  state.editable = false;
  return InsertColumnTrait(0, L"", Align::Left, 0, -1, std::move(trait));
}

bool DataGrid::DeleteColumn(int column) {
  if (!ValidColumn(column)) return false;
  EndEditing(true);
  columns_.erase(columns_.begin() + column);
  order_.erase(std::find(order_.begin(), order_.end(), column));
  for (int& index : order_) {
    if (index > column) --index;
  }
  auto shift = [column](int& index) {
    if (index == column) {
      index = -1;
    } else if (index > column) {
      --index;
    }
  };
  shift(focusCell_);
  shift(sortColumn_);
  shift(searchCell_);
  return true;
}

ColumnTrait& DataGrid::GetColumnTrait(int column) const {
  if (!ValidColumn(column)) throw std::out_of_range("DataGrid::GetColumnTrait: no such column");
  return *columns_[column].trait;
}

ColumnTrait& DataGrid::GetCellColumnTrait(int /*row*/, int column) const {
  return GetColumnTrait(column);
}

const std::wstring& DataGrid::GetColumnHeading(int column) const {
  return ValidColumn(column) ? columns_[column].heading : kNoText;
}

void DataGrid::SetColumnHeading(int column, const std::wstring& heading) {
  if (ValidColumn(column)) columns_[column].heading = heading;
}

Align DataGrid::GetColumnFormat(int column) const {
  return ValidColumn(column) ? columns_[column].format : Align::Left;
}

int DataGrid::GetColumnSubItem(int column) const {
  return ValidColumn(column) ? columns_[column].subItem : -1;
}

int DataGrid::GetColumnWidth(int column) const {
  return ValidColumn(column) ? columns_[column].width : 0;
}

bool DataGrid::SetColumnWidth(int column, int width) {
  if (!ValidColumn(column) || width < 0) return false;
  columns_[column].width = width;
  if (columnConfig_) SaveColumnState(*columnConfig_);
  return true;
}

bool DataGrid::SetColumnOrderArray(const std::vector<int>& order) {
  std::vector<int> sorted = order;
  std::sort(sorted.begin(), sorted.end());
  for (int i = 0; i < static_cast<int>(sorted.size()); ++i) {
    if (sorted[i] != i) return false;
  }
  if (sorted.size() != columns_.size()) return false;
  order_ = order;
  if (columnConfig_) SaveColumnState(*columnConfig_);
  return true;
}

int DataGrid::GetColumnPosition(int column) const {
  const auto it = std::find(order_.begin(), order_.end(), column);
  return it == order_.end() ? -1 : static_cast<int>(it - order_.begin());
}

std::vector<int> DataGrid::GetVisibleColumns() const {
  std::vector<int> visible;
  for (int column : order_) {
    if (IsColumnVisible(column)) visible.push_back(column);
  }
  return visible;
}

bool DataGrid::IsColumnVisible(int column) const {
  return ValidColumn(column) && columns_[column].trait->GetColumnState().visible;
}

bool DataGrid::IsColumnResizable(int column) const {
  return ValidColumn(column) && columns_[column].trait->GetColumnState().resizable;
}

bool DataGrid::IsColumnAlwaysVisible(int column) const {
  return ValidColumn(column) && columns_[column].trait->GetColumnState().alwaysVisible;
}

bool DataGrid::IsColumnAlwaysHidden(int column) const {
  return ValidColumn(column) && columns_[column].trait->GetColumnState().alwaysHidden;
}

void DataGrid::SetSortArrow(int column, bool ascending) {
  sortColumn_ = column;
  sortAscending_ = ascending;
}

// --- Rows ------------------------------------------------------------------

int DataGrid::InsertItem(int row, const std::wstring& text) {
  if (style_.ownerData || row < 0) return -1;
  EndEditing(true);
  const int at = std::min(row, rowCount_);
  for (Column& c : columns_) {
    c.cells.insert(c.cells.begin() + at, StoredCell());
    if (!c.images.empty()) c.images.insert(c.images.begin() + at, -1);
  }
  if (!columns_.empty()) StoreText(at, 0, text);
  itemData_.insert(itemData_.begin() + at, 0);
  rowState_.insert(rowState_.begin() + at, 0);
  ++rowCount_;
  if (focusRow_ >= at) ++focusRow_;
  if (anchorRow_ >= at) ++anchorRow_;
  RowsArrived();
  return at;
}

bool DataGrid::SetItemText(int row, int column, const std::wstring& text) {
  if (style_.ownerData || !ValidRow(row) || !ValidColumn(column)) return false;
  StoreText(row, column, text);
  return true;
}

bool DataGrid::DeleteItem(int row) {
  if (!ValidRow(row)) return false;
  EndEditing(true);
  if (!style_.ownerData) {
    for (Column& c : columns_) {
      c.cells.erase(c.cells.begin() + row);
      if (!c.images.empty()) c.images.erase(c.images.begin() + row);
    }
    itemData_.erase(itemData_.begin() + row);
  }
  rowState_.erase(rowState_.begin() + row);
  --rowCount_;
  if (rowCount_ == 0) invalidateMarkupText_ = true;
  for (int* index : {&focusRow_, &anchorRow_, &searchRow_}) {
    if (*index == row) {
      *index = -1;
    } else if (*index > row) {
      --*index;
    }
  }
  return true;
}

bool DataGrid::DeleteAllItems() {
  EndEditing(true);
  for (Column& c : columns_) {
    c.cells.clear();
    c.images.clear();
  }
  itemData_.clear();
  rowState_.clear();
  rowCount_ = 0;
  invalidateMarkupText_ = true;
  focusRow_ = anchorRow_ = searchRow_ = -1;
  return true;
}

bool DataGrid::SetItemData(int row, std::uintptr_t data) {
  if (style_.ownerData || !ValidRow(row)) return false;
  itemData_[row] = data;
  return true;
}

std::uintptr_t DataGrid::GetItemData(int row) const {
  return style_.ownerData || !ValidRow(row) ? 0 : itemData_[row];
}

bool DataGrid::SetCellImage(int row, int column, int image) {
  if (style_.ownerData || !ValidRow(row) || !ValidColumn(column)) return false;
  std::vector<int>& images = columns_[column].images;
  if (images.empty()) images.resize(static_cast<std::size_t>(rowCount_), -1);
  images[row] = image;
  return true;
}

int DataGrid::GetCellImage(int row, int column) const {
  int image = -1;
  if (OnDisplayCellImage(row, column, image)) return image;
  if (style_.ownerData || !ValidRow(row) || !ValidColumn(column)) return -1;
  const std::vector<int>& images = columns_[column].images;
  return images.empty() ? -1 : images[row];
}

const std::wstring& DataGrid::StoredText(int row, int column) const {
  return columns_[column].cells[row].text;
}

void DataGrid::StoreText(int row, int column, const std::wstring& text) {
  StoredCell& cell = columns_[column].cells[row];
  cell.text = text;
  foldedPrefix(text, cell.prefixHigh, cell.prefixLow);
}

std::wstring_view DataGrid::CellText(int row, int column, std::wstring& scratch) const {
  if (OnDisplayCellText(row, column, scratch)) return scratch;
  if (!ValidRow(row) || !ValidColumn(column)) return std::wstring_view();
  if (!style_.ownerData) return StoredText(row, column);
  scratch = rowSource_ ? rowSource_(row, column) : std::wstring();
  return scratch;
}

std::wstring DataGrid::GetItemText(int row, int column) const {
  std::wstring scratch;
  return std::wstring(CellText(row, column, scratch));
}

void DataGrid::SetItemCount(int count) {
  if (!style_.ownerData || count < 0) return;
  EndEditing(true);
  rowCount_ = count;
  rowState_.resize(count, 0);
  if (count == 0) invalidateMarkupText_ = true;
  for (int* index : {&focusRow_, &anchorRow_, &searchRow_}) {
    if (*index >= count) *index = -1;
  }
  RowsArrived();
}

void DataGrid::RowsArrived() {
  if (rowCount_ == 0 || !invalidateMarkupText_) return;
  invalidateMarkupText_ = false;
  if (listener_) listener_->OnInvalidate(*this);
}

// --- Selection, focus and checks ------------------------------------------

bool DataGrid::IsRowSelected(int row) const {
  return ValidRow(row) && (rowState_[row] & kSelected) != 0;
}

void DataGrid::SetRowSelected(int row, bool selected) {
  if (!ValidRow(row) || IsRowSelected(row) == selected) return;
  if (selected && style_.singleSelect) {
    for (std::uint8_t& state : rowState_) state &= ~kSelected;
  }
  if (selected) {
    rowState_[row] |= kSelected;
  } else {
    rowState_[row] &= ~kSelected;
  }
  NotifySelection();
}

void DataGrid::SelectAll() {
  if (style_.singleSelect) return;
  for (std::uint8_t& state : rowState_) state |= kSelected;
  NotifySelection();
}

void DataGrid::ClearSelection() {
  for (std::uint8_t& state : rowState_) state &= ~kSelected;
  NotifySelection();
}

int DataGrid::GetSelectedCount() const {
  return static_cast<int>(std::count_if(rowState_.begin(), rowState_.end(),
                                        [](std::uint8_t s) { return (s & kSelected) != 0; }));
}

std::vector<int> DataGrid::GetSelectedRows() const {
  std::vector<int> rows;
  for (int row = 0; row < rowCount_; ++row) {
    if (rowState_[row] & kSelected) rows.push_back(row);
  }
  return rows;
}

void DataGrid::SetFocusRow(int row) {
  focusRow_ = ValidRow(row) ? row : -1;
}

bool DataGrid::GetCheck(int row) const {
  return ValidRow(row) && (rowState_[row] & kChecked) != 0;
}

void DataGrid::SetCheck(int row, bool checked) {
  if (!ValidRow(row) || GetCheck(row) == checked) return;
  if (checked) {
    rowState_[row] |= kChecked;
  } else {
    rowState_[row] &= ~kChecked;
  }
  if (listener_) listener_->OnCheckChanged(*this, row);
}

void DataGrid::NotifySelection() {
  if (listener_) listener_->OnSelectionChanged(*this);
}

void DataGrid::SelectOnly(int row) {
  for (std::uint8_t& state : rowState_) state &= ~kSelected;
  if (ValidRow(row)) rowState_[row] |= kSelected;
  NotifySelection();
}

void DataGrid::SetFocusCell(int column, bool redraw) {
  focusCell_ = ValidColumn(column) ? column : -1;
  if (redraw && listener_ && focusRow_ >= 0) listener_->OnRedrawRow(*this, focusRow_);
}

void DataGrid::MoveFocusCell(bool right) {
  if (rowCount_ == 0) {
    focusCell_ = -1;
    return;
  }
  if (focusCell_ < 0) {
    if (!right) return;
    const std::vector<int> visible = GetVisibleColumns();
    focusCell_ = visible.empty() ? -1 : visible.front();
  } else {
    const int next = GetColumnPosition(focusCell_) + (right ? 1 : -1);
    const bool shown =
        next >= 0 && next < static_cast<int>(order_.size()) && IsColumnVisible(order_[next]);
    if (shown) {
      focusCell_ = order_[next];
    } else if (!right) {
      focusCell_ = -1;
    }
  }
  if (listener_ && focusRow_ >= 0) listener_->OnEnsureVisible(*this, focusRow_, focusCell_);
}

// --- Display -----------------------------------------------------------------

bool DataGrid::OnDisplayCellText(int, int, std::wstring&) const {
  return false;
}
bool DataGrid::OnDisplayCellImage(int, int, int&) const {
  return false;
}
bool DataGrid::OnDisplayCellTooltip(int row, int column, std::wstring& text) const {
  text = GetItemText(row, column);
  return true;
}
bool DataGrid::OnDisplayCellColor(int, int, Color&, Color&) const {
  return false;
}
bool DataGrid::OnDisplayCellFont(int, int, FontSpec&) const {
  return false;
}
bool DataGrid::OnDisplayRowColor(int, Color&, Color&) const {
  return false;
}
bool DataGrid::OnDisplayRowFont(int, FontSpec&) const {
  return false;
}

std::wstring DataGrid::GetCellTooltip(int row, int column) const {
  std::wstring text;
  return OnDisplayCellTooltip(row, column, text) ? text : std::wstring();
}

CellLook DataGrid::GetCellLook(int row, int column) const {
  CellLook look;
  // The row first, then the column over it, as the list draws its stages.
  rowTrait_->UpdateTextColor(row, look.textColor);
  rowTrait_->UpdateBackColor(row, look.backColor);
  OnDisplayRowColor(row, look.textColor, look.backColor);
  FontSpec font = GetCellFont();
  if (OnDisplayRowFont(row, font)) look.font = font;
  if (ValidColumn(column)) {
    const ColumnTrait& trait = GetCellColumnTrait(row, column);
    if (const auto* text = dynamic_cast<const ColumnTraitText*>(&trait)) {
      text->UpdateTextColor(row, look.textColor);
      text->UpdateBackColor(row, look.backColor);
      FontSpec cellFont = look.font ? *look.font : GetCellFont();
      if (text->UpdateTextFont(row, cellFont)) look.font = cellFont;
    }
  }
  OnDisplayCellColor(row, column, look.textColor, look.backColor);
  FontSpec cellFont = look.font ? *look.font : GetCellFont();
  if (OnDisplayCellFont(row, column, cellFont)) look.font = cellFont;

  const bool focusedRow = row == focusRow_;
  const bool focusCell = focusedRow && column == focusCell_;
  look.highlighted = IsRowSelected(row) && !(focusCell && rowTrait_->InvertsCellSelection());
  look.focused = focusCell || (focusedRow && focusCell_ < 0 && style_.gridLines);
  return look;
}

void DataGrid::SetRowTrait(std::unique_ptr<RowTrait> trait) {
  if (trait) rowTrait_ = std::move(trait);
}

FontSpec DataGrid::GetCellFont() const {
  FontSpec font = font_;
  font.height = static_cast<std::int32_t>(font.height * cellMargin_);
  font.width = static_cast<std::int32_t>(font.width * cellMargin_);
  return font;
}

std::wstring DataGrid::GetEmptyMarkupText() const {
  return rowCount_ == 0 ? emptyMarkupText_ : std::wstring();
}

// --- EditorGrid --------------------------------------------------------------

bool EditorGrid::OnDisplayCellColor(int /*row*/, int column, Color& /*text*/, Color& back) const {
  if (column != 0) return false;
  back = labelColumnColor_;
  return true;
}

ContextMenu EditorGrid::OnHeaderContextMenu(int column) {
  ContextMenu menu;
  menu.region = MenuRegion::Header;
  menu.column = column;
  if (column > 0 && GetListener()) GetListener()->OnHeaderColumnMenu(*this, column);
  return menu;
}

}  // namespace zarvel
