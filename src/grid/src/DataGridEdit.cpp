// In-place editing and the user's input: which click opens an editor, how an
// ended edit reaches the cell, the keys the grid handles itself, and the
// command-line host's way in through commitCellEdit.
#include <algorithm>

#include "grid/DataGrid.h"

namespace zarvel {

CellEditor* DataGrid::EditCell(int row, int column, CellPart part) {
  if (!ValidRow(row) || !ValidColumn(column)) return nullptr;
  EndEditing(true);
  if (endingDepth_ == 0) closingEditors_.clear();
  // An edit opened while the last one is still ending must not close it.
  if (editor_) closingEditors_.push_back(std::move(editor_));
  std::unique_ptr<CellEditor> editor =
      GetCellColumnTrait(row, column).OnEditBegin(*this, row, column, part);
  if (!editor) return nullptr;
  editor_ = std::move(editor);
  if (listener_ && listener_->OnBeginLabelEdit(*this, row, column)) {
    // Refused: the completion hears of it without an editor, and the editor
    // goes unseen.
    closingEditors_.push_back(std::move(editor_));
    OnEditComplete(row, column, nullptr, EditResult{});
    return nullptr;
  }
  return editor_.get();
}

void DataGrid::EndEditing(bool take) {
  if (editor_ && !editor_->IsEnded()) editor_->End(take);
}

bool DataGrid::OnEditComplete(int row, int column, CellEditor* /*editor*/,
                              const EditResult& result) {
  return listener_ ? listener_->OnEndLabelEdit(*this, row, column, result) : true;
}

bool DataGrid::OnEndLabelEdit(int row, int column, CellEditor* editor, const EditResult& result) {
  ++endingDepth_;
  bool taken = false;
  if (ValidRow(row) && ValidColumn(column) && OnEditComplete(row, column, editor, result)) {
    taken = true;
    // An owner-data grid shows what its holder stored in OnEditComplete; a
    // holder that refilled the grid meanwhile has the cell no more.
    if (!style_.ownerData && ValidRow(row) && ValidColumn(column)) {
      if (result.text && StoredText(row, column) != *result.text) {
        SetItemText(row, column, *result.text);
      }
      if (result.image) SetCellImage(row, column, *result.image);
    }
  }
  if (ValidColumn(column)) GetCellColumnTrait(row, column).OnEditEnd();
  if (editor && editor == editor_.get()) closingEditors_.push_back(std::move(editor_));
  lastEditTaken_ = taken;
  --endingDepth_;
  return taken;
}

int DataGrid::OnClickEditStart(int row, int column, CellPart part, bool doubleClick,
                               KeyModifiers modifiers) {
  if (modifiers.ctrl || modifiers.shift) return kClickNoEdit;
  ColumnTrait& trait = GetCellColumnTrait(row, column);
  if (trait.IsCellReadOnly(*this, row, column, part)) return kClickNoEdit;
  return trait.OnClickEditStart(*this, row, column, part, doubleClick);
}

bool DataGrid::isCellEditable(int row, int column) const {
  if (!ValidRow(row) || !ValidColumn(column)) return false;
  const ColumnTrait& trait = GetCellColumnTrait(row, column);
  return trait.HasEditor() && !trait.IsCellReadOnly(*this, row, column, CellPart::Label);
}

bool DataGrid::commitCellEdit(int row, int column, const std::wstring& text) {
  if (!isCellEditable(row, column)) return false;
  CellEditor* editor = EditCell(row, column, CellPart::Label);
  if (!editor) return false;
  const bool typed = editor->SetText(text);
  lastEditTaken_ = false;
  // A multi-line editor keeps Enter as a line break; its end is the focus
  // leaving it. An editor the holder opened meanwhile stays open.
  if (!editor->OnKey(CellEditor::Key::Enter)) editor->OnKillFocus();
  return typed && lastEditTaken_;
}

// --- Mouse -----------------------------------------------------------------

void DataGrid::ClickSelect(int row, KeyModifiers modifiers) {
  focusRow_ = row;
  if (modifiers.shift && !style_.singleSelect && ValidRow(anchorRow_)) {
    const auto [first, last] = std::minmax(anchorRow_, row);
    for (int r = 0; r < rowCount_; ++r) {
      if (r >= first && r <= last) {
        rowState_[r] |= kSelected;
      } else if (!modifiers.ctrl) {
        rowState_[r] &= ~kSelected;
      }
    }
    NotifySelection();
    return;
  }
  anchorRow_ = row;
  if (modifiers.ctrl) {
    SetRowSelected(row, !IsRowSelected(row));
  } else {
    SelectOnly(row);
  }
}

void DataGrid::OnLButtonDown(int row, int column, CellPart part, KeyModifiers modifiers) {
  EndEditing(true);
  if (!ValidRow(row)) {
    if (!modifiers.ctrl && !modifiers.shift) ClearSelection();
    return;
  }
  if (!ValidColumn(column)) {
    ClickSelect(row, modifiers);
    return;
  }
  const int answer = OnClickEditStart(row, column, part, false, modifiers);
  if (answer != kClickEditNow) {
    SetFocusCell(column, false);
    ClickSelect(row, modifiers);
    // The list's own handling of a press on a check box flips it.
    if (answer == kClickNoEdit && part == CellPart::CheckBox && style_.checkBoxes && column == 0) {
      SetCheck(row, !GetCheck(row));
    }
    SetFocusCell(column, true);
  }
  if (answer != kClickNoEdit) EditCell(row, column, part);
}

void DataGrid::OnLButtonDblClk(int row, int column, CellPart part, KeyModifiers modifiers) {
  if (!ValidRow(row) || !ValidColumn(column)) return;
  if (OnClickEditStart(row, column, part, true, modifiers) != kClickNoEdit) {
    EditCell(row, column, part);
  }
}

void DataGrid::OnRButtonDown(int row, int column) {
  EndEditing(true);
  SetFocusCell(column, false);
  if (!ValidRow(row)) return;
  focusRow_ = row;
  if (!IsRowSelected(row)) {
    anchorRow_ = row;
    SelectOnly(row);
  }
}

// --- Keys ------------------------------------------------------------------

void DataGrid::MoveFocusRow(int row, KeyModifiers modifiers) {
  if (rowCount_ == 0) return;
  row = std::clamp(row, 0, rowCount_ - 1);
  if (modifiers.ctrl && !modifiers.shift) {
    focusRow_ = row;
  } else {
    ClickSelect(row, modifiers);
  }
  if (listener_) listener_->OnEnsureVisible(*this, row, focusCell_);
}

bool DataGrid::OnKeyDown(GridKey key, KeyModifiers modifiers) {
  switch (key) {
    case GridKey::Left:
    case GridKey::Right:
      MoveFocusCell(key == GridKey::Right);
      return true;
    case GridKey::Up:
      MoveFocusRow(focusRow_ < 0 ? 0 : focusRow_ - 1, modifiers);
      return true;
    case GridKey::Down:
      MoveFocusRow(focusRow_ + 1, modifiers);
      return true;
    case GridKey::Home:
      MoveFocusRow(0, modifiers);
      return true;
    case GridKey::End:
      MoveFocusRow(rowCount_ - 1, modifiers);
      return true;
    case GridKey::Space:
      if (modifiers.ctrl || !ValidRow(focusRow_)) return false;
      if (style_.checkBoxes) {
        SetCheck(focusRow_, !GetCheck(focusRow_));
      } else if (ValidColumn(focusCell_) && GetCellImage(focusRow_, focusCell_) >= 0) {
        EditCell(focusRow_, focusCell_, CellPart::Image);
      }
      return true;
    case GridKey::A:
      if (!modifiers.ctrl) return false;
      SelectAll();
      return true;
    case GridKey::C:
      if (!modifiers.ctrl) return false;
      OnCopyToClipboard();
      return true;
    case GridKey::Add:
      if (!modifiers.ctrl) return false;
      SetColumnWidthAuto(-1, false);
      return true;
    case GridKey::F2:
      EditCell(focusRow_, focusCell_, CellPart::Label);
      return true;
  }
  return false;
}

}  // namespace zarvel
