// The "Set OD from text" dialog model.
#include "values/SetFromText.h"

#include <utility>

#include "platform/Text.h"
#include "resources/StringTable.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"

namespace zarvel {
namespace {

using platform::DialogControl;

struct Remembered {
  std::wstring setTextTableName;
  std::wstring setTextFieldName;
};

Remembered& remembered() {
  static Remembered values;
  return values;
}

int chosenIndex(const DialogControl& list) {
  for (std::size_t i = 0; i < list.selected.size(); ++i) {
    if (list.selected[i]) return static_cast<int>(i);
  }
  return -1;
}

// What the numeric edit lets stand: a number as a whole, never negative. A
// minus sign is refused even where the number would read as zero.
bool isToleranceText(const std::wstring& text) {
  if (text.find(L'-') != std::wstring::npos) return false;
  if (!platform::parseDouble(platform::toUtf8(text))) return false;
  return platform::wtof(text) >= 0.0;
}

}  // namespace

ODSelect::ODSelect(std::vector<std::wstring> limit)
    : platform::DialogModel(loadString(kDlgSetFromTextTitle)), tableLimit(std::move(limit)) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTableLabel), false, false));
  addControl(DialogControl::listBox(kIdFieldList, loadString(kDlgFieldLabel), false, true));
  DialogControl edit;
  edit.id = kIdTolerance;
  edit.kind = platform::ControlKind::Edit;
  edit.label = loadString(kDlgToleranceLabel);
  addControl(std::move(edit));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
  setOkEnabled(false);
}

void ODSelect::onInit() {
  DialogControl& list = control(kIdTableList);
  list.setItems(offeredTables(tableLimit));
  selectItem(list, remembered().setTextTableName);
  // The field chosen last stays remembered until the user changes the table.
  if (chosenIndex(list) >= 0) fillFields();
}

void ODSelect::onChange(int controlId) {
  switch (controlId) {
    case kIdTableList:
      tableChanged();
      break;
    case kIdFieldList:
      fieldChanged();
      break;
    case kIdTolerance:
      toleranceChanged();
      break;
    default:
      break;
  }
}

void ODSelect::tableChanged() {
  const DialogControl& list = control(kIdTableList);
  control(kIdFieldList).setItems({});
  remembered().setTextFieldName.clear();
  setOkEnabled(false);
  const int chosen = chosenIndex(list);
  if (chosen < 0) {
    remembered().setTextTableName.clear();
    return;
  }
  remembered().setTextTableName = list.items[static_cast<std::size_t>(chosen)];
  fillFields();
}

void ODSelect::fillFields() {
  control(kIdFieldList).setItems(columnNamesOf(remembered().setTextTableName));
}

void ODSelect::fieldChanged() {
  const DialogControl& fields = control(kIdFieldList);
  const int chosen = chosenIndex(fields);
  if (chosen >= 0) remembered().setTextFieldName = fields.items[static_cast<std::size_t>(chosen)];
  setOkEnabled(chosen >= 0);
}

void ODSelect::toleranceChanged() {
  DialogControl& edit = control(kIdTolerance);
  if (edit.text.empty() || isToleranceText(edit.text)) {
    lastGoodTolerance = edit.text;
  } else {
    edit.text = lastGoodTolerance;
  }
  tolerance = lastGoodTolerance.empty() ? 1.0 : platform::wtof(lastGoodTolerance);
}

void ODSelect::setOkEnabled(bool enabled) {
  control(platform::kIdOk).enabled = enabled;
}

const std::wstring& ODSelect::tableName() {
  return remembered().setTextTableName;
}
const std::wstring& ODSelect::fieldName() {
  return remembered().setTextFieldName;
}
void ODSelect::forgetRemembered() {
  remembered() = Remembered();
}

}  // namespace zarvel
