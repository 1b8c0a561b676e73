// The explication dialog's model.
#include "report/SelectSharedCol.h"

#include <algorithm>
#include <memory>

#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "oddata/ValueText.h"
#include "resources/StringTable.h"

namespace zarvel {
namespace {

using platform::ControlKind;
using platform::DialogControl;

GridStyle multiSelect() {
  GridStyle style;
  style.singleSelect = false;
  return style;
}

DialogControl controlOf(int id, ControlKind kind, std::wstring label) {
  DialogControl c;
  c.id = id;
  c.kind = kind;
  c.label = std::move(label);
  return c;
}

std::vector<std::wstring> columnNames(OdContainer& container, const std::wstring& table) {
  std::vector<std::wstring> names;
  if (std::unique_ptr<platform::OdTable> found = container.getTable(table)) {
    for (const platform::OdColumnDef& column : found->definition().columns) {
      names.push_back(column.name);
    }
  }
  return names;
}

}  // namespace

std::vector<std::wstring> sharedColumns(const std::vector<std::wstring>& tables) {
  if (tables.empty()) return {};
  OdContainer& container = getODContainer();
  std::vector<std::wstring> shared = columnNames(container, tables.front());
  for (std::size_t t = 1; t < tables.size(); ++t) {
    std::vector<std::wstring> lowered = columnNames(container, tables[t]);
    for (std::wstring& name : lowered) name = toLowerCopy(name);
    shared.erase(std::remove_if(shared.begin(), shared.end(),
                                [&lowered](const std::wstring& name) {
                                  return !containsText(lowered, toLowerCopy(name));
                                }),
                 shared.end());
  }
  return shared;
}

SelectSharedCol::SelectSharedCol(std::vector<std::wstring> candidates)
    : platform::DialogModel(loadString(kDlgExplicationTitle)),
      candidates_(std::move(candidates)),
      tablesList_(multiSelect()) {
  tablesList_.InsertColumn(0, L"");
  tablesList_.SetListener(this);
  addControl(DialogControl::gridOf(kIdTableList, loadString(kDlgTablesLabel), tablesList_));
  addControl(controlOf(kIdTypeField, ControlKind::CheckBox, loadString(kDlgObjectTypeField)));
  DialogControl field = controlOf(kIdField, ControlKind::ComboBox, L"");
  field.name = loadString(kDlgFieldLabel);
  field.enabled = false;
  addControl(std::move(field));
  DialogControl separator = controlOf(kIdSeparator, ControlKind::Edit, loadString(kDlgSeparator));
  separator.text = L",";
  addControl(std::move(separator));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void SelectSharedCol::onInit() {
  std::vector<std::wstring> names = candidates_;
  if (names.empty()) names = port().project().tableNames(platform::kAllTableKinds);
  tablesList_.DeleteAllItems();
  for (const std::wstring& name : names) {
    if (isUserTable(name)) tablesList_.InsertItem(tablesList_.GetItemCount(), name);
  }
}

std::vector<std::wstring> SelectSharedCol::selectedTables() const {
  std::vector<std::wstring> names;
  for (int row : tablesList_.GetSelectedRows()) names.push_back(tablesList_.GetItemText(row, 0));
  return names;
}

void SelectSharedCol::OnSelectionChanged(DataGrid& /*grid*/) {
  DialogControl& field = control(kIdField);
  field.items = sharedColumns(selectedTables());
  field.current = -1;
}

void SelectSharedCol::onChange(int controlId) {
  if (controlId == kIdTypeField) {
    control(kIdField).enabled = control(kIdTypeField).checked;
  } else if (controlId == kIdSeparator) {
    control(platform::kIdOk).enabled = !control(kIdSeparator).text.empty();
  }
}

bool SelectSharedCol::onButton(int buttonId) {
  if (buttonId != platform::kIdOk) return platform::DialogModel::onButton(buttonId);
  chosenTables_ = selectedTables();
  typeField_ = control(kIdTypeField).checked;
  const DialogControl& field = control(kIdField);
  const bool current = field.current >= 0 && field.current < static_cast<int>(field.items.size());
  field_ = current ? field.items[static_cast<std::size_t>(field.current)] : std::wstring();
  separator_ = control(kIdSeparator).text;
  return true;
}

}  // namespace zarvel
