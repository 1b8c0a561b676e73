// The find box over the table editor's rows.
#include "tableeditor/ZarvelFind.h"

#include "resources/StringTable.h"
#include "tableeditor/EditorState.h"

namespace zarvel {

using platform::ControlKind;
using platform::DialogControl;

ZarvelFind::ZarvelFind(std::vector<std::wstring> columnNames)
    : platform::DialogModel(loadString(kDlgFindTitle)), columnNames_(std::move(columnNames)) {
  DialogControl field;
  field.id = kIdField;
  field.kind = ControlKind::ComboBox;
  field.label = loadString(kMsgFieldHeader);
  addControl(std::move(field));
  DialogControl value;
  value.id = kIdValue;
  value.kind = ControlKind::Edit;
  value.label = loadString(kMsgValueHeader);
  addControl(std::move(value));
  DialogControl whole;
  whole.id = kIdWhole;
  whole.kind = ControlKind::CheckBox;
  whole.label = loadString(kDlgMatchWholeString);
  addControl(std::move(whole));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgFindTitle), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void ZarvelFind::onInit() {
  const TableEditorState& state = tableEditorState();
  DialogControl& field = control(kIdField);
  field.items = columnNames_;
  field.current = 0;
  control(kIdValue).text = state.lastFindText;
  control(kIdWhole).checked = state.lastFindWholeString;
}

bool ZarvelFind::onButton(int buttonId) {
  if (buttonId == platform::kIdOk) {
    TableEditorState& state = tableEditorState();
    column_ = control(kIdField).current;
    state.lastFindText = control(kIdValue).text;
    state.lastFindWholeString = control(kIdWhole).checked;
  }
  return platform::DialogModel::onButton(buttonId);
}

}  // namespace zarvel
