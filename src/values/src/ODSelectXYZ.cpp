// The "Set OD from object coordinates" dialog model.
#include "values/ODSelectXYZ.h"

#include <algorithm>

#include "resources/StringTable.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"

namespace zarvel {

using platform::DialogControl;

ODSelectXYZ::ODSelectXYZ(std::vector<std::wstring> limit)
    : platform::DialogModel(loadString(kDlgSetXyzTitle)), limit_(std::move(limit)) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), false, true));
  addControl(comboBox(kIdFieldX, loadString(kDlgFieldX)));
  addControl(comboBox(kIdFieldY, loadString(kDlgFieldY)));
  addControl(comboBox(kIdFieldZ, loadString(kDlgFieldZ)));
  DialogControl& plan = addControl(comboBox(kIdPlanMode, loadString(kDlgPlanMode)));
  plan.items = {loadString(kDlgPlanFirst), loadString(kDlgPlanLast), loadString(kDlgPlanCenter)};
  DialogControl& height = addControl(comboBox(kIdHeightMode, loadString(kDlgHeightMode)));
  height.items = {loadString(kDlgHeightMin), loadString(kDlgHeightMax),
                  loadString(kDlgHeightAverage)};
  addControl(editBox(kIdPrecisionXY, loadString(kDlgPrecision)));
  addControl(editBox(kIdPrecisionZ, loadString(kDlgPrecisionZ)));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

SetXyzChoices& ODSelectXYZ::choices() {
  static SetXyzChoices values;
  return values;
}

void ODSelectXYZ::forgetRemembered() {
  choices() = SetXyzChoices();
}

void ODSelectXYZ::onInit() {
  const SetXyzChoices& c = choices();
  DialogControl& list = control(kIdTableList);
  list.setItems(offeredTables(limit_));
  // Unlike the attach dialog, no table is chosen when the last one is not here.
  selectItem(list, c.setXYZTableName);
  // The fields come up as after a change of table, empty: the table is
  // remembered, the fields are chosen afresh each run.
  refillFields();
  control(kIdPlanMode).current = c.setXYMode;
  control(kIdHeightMode).current = c.setZMode;
  control(kIdPrecisionXY).text = std::to_wstring(c.setXYPrecision);
  control(kIdPrecisionZ).text = std::to_wstring(c.setZPrecision);
}

void ODSelectXYZ::onChange(int controlId) {
  if (controlId == kIdTableList) refillFields();
}

std::wstring ODSelectXYZ::chosenTable() const {
  return chosenText(control(kIdTableList));
}

void ODSelectXYZ::refillFields() {
  std::vector<std::wstring> items{std::wstring()};
  const std::vector<std::wstring> columns = columnNamesOf(chosenTable());
  items.insert(items.end(), columns.begin(), columns.end());
  for (const int id : {kIdFieldX, kIdFieldY, kIdFieldZ}) {
    DialogControl& combo = control(id);
    combo.items = items;
    combo.current = 0;
  }
}

bool ODSelectXYZ::onButton(int buttonId) {
  if (buttonId != platform::kIdOk) return platform::DialogModel::onButton(buttonId);
  SetXyzChoices& c = choices();
  c.setXYZTableName = chosenTable();
  const int x = std::max(control(kIdFieldX).current, 0);
  const int y = std::max(control(kIdFieldY).current, 0);
  const int z = std::max(control(kIdFieldZ).current, 0);
  // A field chosen for two coordinates empties the whole choice; the dialog
  // still closes as OK, and the run then ends without a word.
  if ((x != 0 && (x == y || x == z)) || (y != 0 && y == z)) {
    c.setXField.clear();
    c.setYField.clear();
    c.setZField.clear();
    return true;
  }
  c.setXField = chosenText(control(kIdFieldX));
  c.setYField = chosenText(control(kIdFieldY));
  c.setZField = chosenText(control(kIdFieldZ));
  if (control(kIdPlanMode).current >= 0) c.setXYMode = control(kIdPlanMode).current;
  if (control(kIdHeightMode).current >= 0) c.setZMode = control(kIdHeightMode).current;
  c.setXYPrecision = precisionOf(control(kIdPrecisionXY));
  c.setZPrecision = precisionOf(control(kIdPrecisionZ));
  return true;
}

}  // namespace zarvel
