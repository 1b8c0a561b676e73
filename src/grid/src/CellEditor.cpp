// The in-place editors' models.
#include "grid/CellEditor.h"

#include <algorithm>

#include "TextCompare.h"
#include "grid/DataGrid.h"

namespace zarvel {

CellEditor::CellEditor(DataGrid& grid, int row, int column, std::wstring text)
    : grid_(grid), row_(row), column_(column), text_(std::move(text)) {}

bool CellEditor::SetText(const std::wstring& text) {
  if (ended_) return false;
  text_ = text;
  modified_ = true;
  return true;
}

bool CellEditor::OnKey(Key key) {
  End(key != Key::Escape);
  return true;
}

void CellEditor::End(bool take) {
  if (ended_) return;
  ended_ = true;
  EditResult result;
  if (take && modified_) result.text = ResultText();
  // The grid may close this editor while it hears of the end: nothing of
  // this object is touched after the call.
  grid_.OnEndLabelEdit(row_, column_, this, result);
}

// --- CellEditorText ----------------------------------------------------------

CellEditorText::CellEditorText(DataGrid& grid, int row, int column, std::wstring text, Align align,
                               int limit)
    : CellEditor(grid, row, column, std::move(text)), align_(align), limit_(limit) {}

bool CellEditorText::SetText(const std::wstring& text) {
  // As an edit box with a limit takes no more characters than it allows.
  if (limit_ >= 0 && static_cast<int>(text.size()) > limit_) {
    return CellEditor::SetText(text.substr(0, static_cast<std::size_t>(limit_)));
  }
  return CellEditor::SetText(text);
}

// --- CellEditorMultiline -----------------------------------------------------

CellEditorMultiline::CellEditorMultiline(DataGrid& grid, int row, int column, std::wstring text,
                                         Align align, int limit, int maxLines)
    : CellEditorText(grid, row, column, std::move(text), align, limit), maxLines_(maxLines) {}

bool CellEditorMultiline::OnKey(Key key) {
  if (key == Key::Enter) return false;
  return CellEditorText::OnKey(key);
}

int CellEditorMultiline::GetVisibleLines() const {
  if (maxLines_ <= 1) return 1;
  const auto breaks = std::count(GetText().begin(), GetText().end(), L'\n');
  return static_cast<int>(std::min<std::ptrdiff_t>(1 + breaks, maxLines_));
}

// --- CellEditorCombo ---------------------------------------------------------

CellEditorCombo::CellEditorCombo(DataGrid& grid, int row, int column, std::wstring text,
                                 std::vector<Item> items, Style style, int limit)
    : CellEditor(grid, row, column, std::move(text)),
      items_(std::move(items)),
      style_(style),
      limit_(limit) {
  current_ = FindItem(GetText());
}

int CellEditorCombo::FindItem(const std::wstring& text) const {
  for (std::size_t i = 0; i < items_.size(); ++i) {
    if (compareIgnoringCase(items_[i].text, text) == 0) return static_cast<int>(i);
  }
  return -1;
}

bool CellEditorCombo::SetText(const std::wstring& text) {
  const int index = FindItem(text);
  if (index >= 0) return SelectItem(index);
  if (style_ == Style::DropDownList) return false;
  current_ = -1;
  if (limit_ >= 0 && static_cast<int>(text.size()) > limit_) {
    return CellEditor::SetText(text.substr(0, static_cast<std::size_t>(limit_)));
  }
  return CellEditor::SetText(text);
}

bool CellEditorCombo::SelectItem(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size()) || IsEnded()) return false;
  current_ = index;
  return CellEditor::SetText(items_[index].text);
}

// --- CellEditorDateTime ------------------------------------------------------

CellEditorDateTime::CellEditorDateTime(DataGrid& grid, int row, int column, std::wstring text,
                                       std::wstring format)
    : CellEditor(grid, row, column, std::move(text)), format_(std::move(format)) {
  value_ = parseDateTime(GetText(), format_);
}

bool CellEditorDateTime::SetText(const std::wstring& text) {
  const std::optional<DateTime> value = parseDateTime(text, format_);
  if (!value) return false;
  SetDateTime(*value);
  return !IsEnded();
}

void CellEditorDateTime::SetDateTime(const DateTime& value) {
  if (IsEnded()) return;
  value_ = value;
  CellEditor::SetText(formatDateTime(value, format_));
}

}  // namespace zarvel
