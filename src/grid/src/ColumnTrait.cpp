// The base traits: plain columns, text columns and columns of images.
#include "grid/ColumnTrait.h"

#include <algorithm>
#include <cstdint>

#include "TextCompare.h"
#include "grid/CellEditor.h"
#include "grid/DataGrid.h"
#include "platform/Text.h"

namespace zarvel {
namespace {

int signOf(std::int64_t value) {
  return value < 0 ? -1 : (value > 0 ? 1 : 0);
}

}  // namespace

// --- ColumnTrait -------------------------------------------------------------

void ColumnTrait::OnInsertToList(DataGrid& /*grid*/, int /*column*/) {}

int ColumnTrait::OnClickEditStart(DataGrid& /*grid*/, int /*row*/, int /*column*/,
                                  CellPart /*part*/, bool /*doubleClick*/) {
  return kClickNoEdit;
}

std::unique_ptr<CellEditor> ColumnTrait::OnEditBegin(DataGrid& grid, int row, int column,
                                                     CellPart /*part*/) {
  return OnEditBegin(grid, row, column);
}

std::unique_ptr<CellEditor> ColumnTrait::OnEditBegin(DataGrid& /*grid*/, int /*row*/,
                                                     int /*column*/) {
  return nullptr;
}

int ColumnTrait::OnSortRows(std::wstring_view /*left*/, std::wstring_view /*right*/,
                            bool /*ascending*/) const {
  return 0;
}

int ColumnTrait::OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const {
  return OnSortRows(left.text, right.text, ascending);
}

bool ColumnTrait::IsCellReadOnly(const DataGrid& /*grid*/, int /*row*/, int /*column*/,
                                 CellPart /*part*/) const {
  return !state_.editable;
}

// --- ColumnTraitText ---------------------------------------------------------

int ColumnTraitText::OnSortRows(std::wstring_view left, std::wstring_view right,
                                bool ascending) const {
  const std::wstring_view first = ascending ? left : right;
  const std::wstring_view second = ascending ? right : left;
  if (sortNumeric_) {
    return signOf(static_cast<std::int64_t>(platform::wtoi(first)) - platform::wtoi(second));
  }
  return compareIgnoringCase(first, second);
}

int ColumnTraitText::OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const {
  if (!sortNumeric_ && (left.prefixHigh != right.prefixHigh || left.prefixLow != right.prefixLow)) {
    const bool less = left.prefixHigh != right.prefixHigh ? left.prefixHigh < right.prefixHigh
                                                          : left.prefixLow < right.prefixLow;
    return less == ascending ? -1 : 1;
  }
  return OnSortRows(left.text, right.text, ascending);
}

bool ColumnTraitText::UpdateTextFont(int /*row*/, FontSpec& font) const {
  if (!font_) return false;
  font = *font_;
  return true;
}

bool ColumnTraitText::UpdateTextColor(int /*row*/, Color& color) const {
  if (textColor_ == kNoColor) return false;
  color = textColor_;
  return true;
}

bool ColumnTraitText::UpdateBackColor(int /*row*/, Color& color) const {
  if (backColor_ == kNoColor) return false;
  color = backColor_;
  return true;
}

// --- ColumnTraitImage --------------------------------------------------------

void ColumnTraitImage::AddImageIndex(int index, const std::wstring& text, bool editable) {
  images_.push_back(Image{index, text, editable});
}

// The click that opens an editor is the one on the cell that already has the
// focus, unless the column edits on any click; a click on an image (or on a
// row's check box) acts at once.
int ColumnTraitImage::OnClickEditStart(DataGrid& grid, int row, int column, CellPart part,
                                       bool doubleClick) {
  int answer = kClickNoEdit;
  if (!doubleClick) {
    const bool focusCell = row == grid.GetFocusRow() && column == grid.GetFocusCell();
    if (singleClickEdit_ || focusCell) answer = kClickEditAfter;
  }
  if (!imageClickEnabled_) return answer;
  if (column == 0 && grid.GetStyle().checkBoxes && part == CellPart::CheckBox) {
    return kClickEditAfter;
  }
  if (images_.size() < 2) return answer;
  return part == CellPart::Image ? kClickEditNow : answer;
}

std::unique_ptr<CellEditor> ColumnTraitImage::OnEditBegin(DataGrid& grid, int row, int column,
                                                          CellPart part) {
  switch (part) {
    case CellPart::Label:
      return OnEditBegin(grid, row, column);
    case CellPart::Image:
      FlipImageIndex(grid, row, column);
      return nullptr;
    case CellPart::CheckBox:
      if (column == 0 && grid.GetStyle().checkBoxes) OnClickCheckAll(grid, row);
      return nullptr;
  }
  return nullptr;
}

int ColumnTraitImage::OnSortRows(const SortRow& left, const SortRow& right, bool ascending) const {
  if (!sortImageIndex_) return ColumnTraitText::OnSortRows(left, right, ascending);
  return ascending ? signOf(left.image - right.image) : signOf(right.image - left.image);
}

bool ColumnTraitImage::IsCellReadOnly(const DataGrid& grid, int row, int column,
                                      CellPart part) const {
  if (!GetColumnState().editable) return true;
  if (images_.empty() || part != CellPart::Label) return false;
  const int image = grid.GetCellImage(row, column);
  return std::any_of(images_.begin(), images_.end(),
                     [image](const Image& i) { return !i.editable && i.index == image; });
}

int ColumnTraitImage::GetNextImageIndex(const DataGrid& grid, int row, int column) const {
  if (images_.empty()) return -1;
  const int image = grid.GetCellImage(row, column);
  for (std::size_t i = 0; i < images_.size(); ++i) {
    if (images_[i].index == image) return images_[(i + 1) % images_.size()].index;
  }
  return images_.front().index;
}

void ColumnTraitImage::FlipImageIndex(DataGrid& grid, int row, int column) {
  if (images_.size() < 2) return;
  EditResult result;
  result.image = GetNextImageIndex(grid, row, column);
  grid.OnEndLabelEdit(row, column, nullptr, result);
}

void ColumnTraitImage::OnClickCheckAll(DataGrid& grid, int row) {
  const bool checked = !grid.GetCheck(row);
  if (!grid.IsRowSelected(row)) {
    grid.SetCheck(row, checked);
    return;
  }
  for (int selected : grid.GetSelectedRows()) grid.SetCheck(selected, checked);
}

}  // namespace zarvel
