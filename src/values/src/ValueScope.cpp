// The scope and records of the value operations that fill fields from geometry.
#include "values/ValueScope.h"

#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "oddata/Selection.h"

namespace zarvel {

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
  initWalk(iterator, entity, platform::OpenMode::Write);
  for (; !iterator.isDone(); iterator.next()) {
    if (iterator.recordTableName() == table) {
      return iterator.getRecord(record) == platform::Status::Ok;
    }
  }
  return false;
}

}  // namespace zarvel
