// The "Set OD from object properties" dialog model.
#include "values/OptionsSetProp.h"

#include "resources/StringTable.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"

namespace zarvel {

using platform::DialogControl;

OptionsSetProp::OptionsSetProp(std::vector<std::wstring> limit)
    : platform::DialogModel(loadString(kDlgSetPropTitle)), limit_(std::move(limit)) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), false, true));
  addControl(comboBox(kIdLength, loadString(kDlgFieldLength)));
  addControl(comboBox(kIdArea, loadString(kDlgFieldArea)));
  addControl(comboBox(kIdVolume, loadString(kDlgFieldVolume)));
  addControl(editBox(kIdPrecision, loadString(kDlgPrecision)));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

int& OptionsSetProp::setPropPrecision() {
  static int precision = 0;
  return precision;
}

void OptionsSetProp::onInit() {
  DialogControl& list = control(kIdTableList);
  list.setItems(offeredTables(limit_));
  if (list.items.size() == 1) {
    list.selected[0] = true;
    refillFields();
  }
  control(kIdPrecision).text = std::to_wstring(setPropPrecision());
}

void OptionsSetProp::onChange(int controlId) {
  if (controlId == kIdTableList) refillFields();
}

// No combo box has an empty entry: a field is left out by never choosing one,
// and only another table clears a choice.
void OptionsSetProp::refillFields() {
  const std::vector<std::wstring> columns = columnNamesOf(chosenText(control(kIdTableList)));
  for (int id : {kIdLength, kIdArea, kIdVolume}) {
    DialogControl& combo = control(id);
    combo.items = columns;
    combo.current = -1;
  }
}

bool OptionsSetProp::onButton(int buttonId) {
  if (buttonId != platform::kIdOk) return platform::DialogModel::onButton(buttonId);
  tableName = chosenText(control(kIdTableList));
  lengthField = chosenText(control(kIdLength));
  areaField = chosenText(control(kIdArea));
  volumeField = chosenText(control(kIdVolume));
  setPropPrecision() = precisionOf(control(kIdPrecision));
  return true;
}

}  // namespace zarvel
