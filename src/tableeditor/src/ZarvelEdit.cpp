// The column fill's box: one edit for the value, titled with the column.
#include "tableeditor/ZarvelEdit.h"

#include "resources/StringTable.h"
#include "tableeditor/EditorState.h"

namespace zarvel {

namespace {
constexpr int kEditMargin = 5;
}  // namespace

ZarvelEdit::ZarvelEdit(std::wstring columnName, std::wstring columnType)
    : platform::DialogModel(L""),
      columnName_(std::move(columnName)),
      columnType_(std::move(columnType)) {
  platform::DialogControl value;
  value.id = kIdValue;
  value.kind = platform::ControlKind::Edit;
  value.name = loadString(kMsgValueHeader);
  value.rect = {7, 7, 249, 12};
  addControl(std::move(value));
  // The box has no OK button of its own: Enter in the edit is OK. A front
  // end without keys offers this one for it.
  addControl(platform::DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  platform::DialogControl cancel = platform::DialogControl::button(platform::kIdCancel, L"`", true);
  cancel.visible = false;
  addControl(std::move(cancel));
}

void ZarvelEdit::onInit() {
  setTitle(columnName_ + L" (" + columnType_ + L")");
}

bool ZarvelEdit::onButton(int buttonId) {
  if (buttonId == platform::kIdOk) text_ = control(kIdValue).text;
  return platform::DialogModel::onButton(buttonId);
}

void ZarvelEdit::onSize(platform::DialogSize size) {
  platform::DialogModel::onSize(size);
  TableEditorState& state = tableEditorState();
  state.editBoxWidth = size.width;
  state.editBoxHeight = size.height;
  platform::DialogRect& rect = control(kIdValue).rect;
  rect.x = kEditMargin;
  rect.width = size.width - 2 * kEditMargin;
}

}  // namespace zarvel
