// The controls that the value dialogs build alike.
#include "values/ValueDialogs.h"

#include <algorithm>
#include <memory>

#include "oddata/OdAccess.h"
#include "platform/Text.h"

namespace zarvel {

platform::DialogControl comboBox(int id, std::wstring label) {
  platform::DialogControl c;
  c.id = id;
  c.kind = platform::ControlKind::ComboBox;
  c.label = std::move(label);
  return c;
}

platform::DialogControl editBox(int id, std::wstring label) {
  platform::DialogControl c;
  c.id = id;
  c.kind = platform::ControlKind::Edit;
  c.label = std::move(label);
  return c;
}

void selectItem(platform::DialogControl& control, const std::wstring& name) {
  const auto found = std::find(control.items.begin(), control.items.end(), name);
  if (found == control.items.end()) return;
  const std::size_t index = static_cast<std::size_t>(found - control.items.begin());
  if (control.kind == platform::ControlKind::ComboBox) {
    control.current = static_cast<int>(index);
    return;
  }
  control.selected.assign(control.items.size(), false);
  control.selected[index] = true;
}

int precisionOf(const platform::DialogControl& edit) {
  return std::max(platform::wtoi(edit.text), 0);
}

bool fillTableList(platform::DialogControl& list, std::vector<std::wstring> names) {
  list.setItems(std::move(names));
  if (list.items.size() != 1) return false;
  list.selected[0] = true;
  return true;
}

std::wstring chosenText(const platform::DialogControl& control) {
  if (control.kind == platform::ControlKind::ComboBox) {
    const bool inRange =
        control.current >= 0 && static_cast<std::size_t>(control.current) < control.items.size();
    return inRange ? control.items[static_cast<std::size_t>(control.current)] : std::wstring();
  }
  for (std::size_t i = 0; i < control.items.size() && i < control.selected.size(); ++i) {
    if (control.selected[i]) return control.items[i];
  }
  return std::wstring();
}

std::vector<std::wstring> columnNamesOf(const std::wstring& table) {
  std::vector<std::wstring> names;
  if (table.empty()) return names;
  std::unique_ptr<platform::OdTable> t = getODContainer().getTable(table);
  if (!t) return names;
  for (const platform::OdColumnDef& column : t->definition().columns) names.push_back(column.name);
  return names;
}

int exactColumnIndex(const platform::OdTableDef& definition, const std::wstring& name) {
  for (int i = 0; i < definition.count(); ++i) {
    if (definition.column(i).name == name) return i;
  }
  return -1;
}

}  // namespace zarvel
