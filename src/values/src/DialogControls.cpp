// Controls and readings shared by the value operations' dialogs.
#include "DialogControls.h"

#include <algorithm>
#include <memory>

#include "oddata/OdAccess.h"
#include "platform/Text.h"

namespace zarvel {

using platform::DialogControl;

DialogControl comboBox(int id, std::wstring label) {
  DialogControl c;
  c.id = id;
  c.kind = platform::ControlKind::ComboBox;
  c.label = std::move(label);
  return c;
}

DialogControl editBox(int id, std::wstring label) {
  DialogControl c;
  c.id = id;
  c.kind = platform::ControlKind::Edit;
  c.label = std::move(label);
  return c;
}

void selectItem(DialogControl& control, const std::wstring& name) {
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

std::wstring selectedItem(const DialogControl& control) {
  if (control.kind == platform::ControlKind::ComboBox) {
    const int i = control.current;
    return i >= 0 && i < static_cast<int>(control.items.size())
               ? control.items[static_cast<std::size_t>(i)]
               : std::wstring();
  }
  for (std::size_t i = 0; i < control.items.size() && i < control.selected.size(); ++i) {
    if (control.selected[i]) return control.items[i];
  }
  return std::wstring();
}

std::vector<std::wstring> columnNames(const std::wstring& table) {
  std::vector<std::wstring> names;
  if (table.empty()) return names;
  const std::unique_ptr<platform::OdTable> t = getODContainer().getTable(table);
  if (!t) return names;
  for (const platform::OdColumnDef& column : t->definition().columns) names.push_back(column.name);
  return names;
}

int precisionOf(const DialogControl& edit) {
  return std::max(platform::wtoi(edit.text), 0);
}

}  // namespace zarvel
