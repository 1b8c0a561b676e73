// The selection sequence of the copy commands and the default records they add.
#include "CopyReference.h"

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"

namespace zarvel {

CopyScope copyScope() {
  CopyScope scope;
  scope.targets = impliedSelection();
  if (scope.targets.empty()) {
    SelectionResult selection = promptSelection();
    if (!selection.ok) return scope;
    scope.targets = std::move(selection.ids);
  }
  if (scope.targets.empty()) {
    scope.targets = modelSpaceEntities();
    if (scope.targets.empty()) return scope;
  }
  dropUnavailableEntities(scope.targets);
  if (scope.targets.empty()) {
    printMessage(kMsgCompleted, 0);
    return scope;
  }
  // The reference is only read, so its layer's state does not matter.
  const platform::EntityReply reply =
      port().editor().getEntity(loadString(kMsgPromptReferenceObject));
  if (reply.status != platform::PromptStatus::Normal || reply.id.isNull()) {
    printMessage(kMsgNoObjectsSelected);
    return scope;
  }
  scope.reference = reply.id;
  scope.ok = true;
  return scope;
}

TableCounts userTableCounts(platform::OdContainer& container, platform::ObjectId entity) {
  TableCounts counts;
  auto it = container.newIterator();
  initWalk(*it, entity, platform::OpenMode::Read);
  for (; !it->isDone(); it->next()) {
    const std::wstring& name = it->recordTableName();
    auto found = counts.find(name);
    if (found != counts.end()) {
      ++found->second;
    } else if (isUserTable(name)) {
      counts.emplace(name, 1);
    }
  }
  return counts;
}

std::vector<DefaultRecord> defaultRecords(platform::OdContainer& container,
                                          const TableCounts& counts) {
  std::vector<DefaultRecord> records;
  for (const auto& [name, count] : counts) {
    DefaultRecord r;
    r.table = container.getTable(name);
    if (!r.table) continue;
    r.table->initRecord(r.record);
    r.count = count;
    records.push_back(std::move(r));
  }
  return records;
}

void addDefaultRecords(std::vector<DefaultRecord>& records, platform::ObjectId target) {
  for (DefaultRecord& r : records) {
    for (std::int32_t i = 0; i < r.count; ++i) {
      // A target that takes no record is passed over, as the others still take theirs.
      platform::ignoreStatus(r.table->addRecord(r.record, target));
    }
  }
}

}  // namespace zarvel
