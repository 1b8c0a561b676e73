// The scope of the value dialogs and the controls they share.
#include "values/ValueScope.h"

#include <limits>
#include <memory>

#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "values/ValueDialogs.h"

namespace zarvel {

std::vector<std::wstring> tablesForValueDialog(const std::vector<ObjectId>& ids,
                                               bool userTablesOnly) {
  // The entities' own records name every table, internal ones too: the
  // dialogs decide what of them they show.
  if (!ids.empty()) return listTableNames(ids, false);
  return allTableNames(userTablesOnly);
}

bool completeValueScope(std::vector<ObjectId>& ids) {
  if (ids.empty()) {
    SelectionResult selection = promptSelection();
    if (!selection.ok) return false;
    ids = std::move(selection.ids);
    if (ids.empty()) {
      // Model space less what can't be changed, in one walk and in block
      // order: what the drop would leave of all its entities.
      ids = availableModelSpaceEntities(std::numeric_limits<std::size_t>::max());
      return !ids.empty();
    }
  }
  dropUnavailableEntities(ids);
  return !ids.empty();
}

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
