// The scope of the value dialogs.
#include "values/ValueScope.h"

#include <limits>

#include "oddata/OdAccess.h"
#include "oddata/Selection.h"

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

}  // namespace zarvel
