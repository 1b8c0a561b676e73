// The scope of the value operations.
#include "values/ValueScope.h"

#include <limits>

#include "oddata/OdAccess.h"
#include "oddata/Port.h"
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

std::vector<std::wstring> tablesInUse(const std::vector<platform::ObjectId>& ids) {
  return listTableNames(ids.empty() ? visibleImpliedSelection() : ids, true);
}

std::vector<std::wstring> offeredTables(const std::vector<std::wstring>& limit) {
  std::vector<std::wstring> names;
  for (std::wstring& name : port().project().tableNames(platform::kAllTableKinds)) {
    if (isUserTable(name) && (limit.empty() || containsText(limit, name))) {
      names.push_back(std::move(name));
    }
  }
  return names;
}

void selectWhenEmpty(std::vector<platform::ObjectId>& ids) {
  if (!ids.empty()) return;
  ids = impliedSelection();
  if (!ids.empty()) return;
  const SelectionResult selection = promptSelection();
  if (!selection.ok) return;
  ids = selection.ids;
  if (!ids.empty()) return;
  platform::Drawing& drawing = port().drawing();
  for (platform::ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (!id.isNull()) ids.push_back(id);
  }
}

void eraseUnopenable(std::vector<platform::ObjectId>& ids) {
  platform::Drawing& drawing = port().drawing();
  std::size_t kept = 0;
  for (platform::ObjectId id : ids) {
    if (drawing.canOpen(id)) ids[kept++] = id;
  }
  ids.resize(kept);
}

bool firstRecordOfTable(platform::OdRecordIterator& iterator, platform::ObjectId entity,
                        const std::wstring& table, platform::OdRecord& record) {
  return walkToRecordOfTable(iterator, entity, table, platform::OpenMode::Write) &&
         iterator.getRecord(record) == platform::Status::Ok;
}

}  // namespace zarvel
