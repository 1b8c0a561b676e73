// The four presence searches. They only read records, so they take no lock;
// their result replaces the pick-first set.
#include "search/PresenceSearch.h"

#include <set>
#include <string>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"

namespace zarvel {
namespace {

bool hasRepeatedTable(platform::OdRecordIterator& it, ObjectId id, std::set<std::wstring>& seen) {
  initWalk(it, id, platform::OpenMode::Read, false);
  // Most entities carry fewer than two records; they cost one call.
  if (it.countRecords() < 2) return false;
  seen.clear();
  for (it.start(); !it.isDone(); it.next()) {
    if (!seen.insert(it.recordTableName()).second) return true;
  }
  return false;
}

bool meetsCount(PresenceMode mode, int userRecords) {
  switch (mode) {
    case PresenceMode::NoOd: return userRecords == 0;
    case PresenceMode::HasOd: return userRecords > 0;
    case PresenceMode::MultipleOd: return userRecords > 1;
    case PresenceMode::Nothing:
    case PresenceMode::DuplicateOd: break;
  }
  return false;
}

void runPresenceSearch(PresenceMode mode) {
  ResourceScope scope;
  const std::vector<ObjectId> found = findByPresence(mode);
  setPickFirst(found);
  printMessage(kMsgSelected, static_cast<int>(found.size()));
}

}  // namespace

std::vector<ObjectId> findByPresence(PresenceMode mode) {
  SelectionResult scope = commandScope();
  std::vector<ObjectId> found;
  if (!scope.ok || scope.ids.empty()) return found;

  OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdRecordIterator> it = container.newIterator();
  if (mode == PresenceMode::DuplicateOd) {
    std::set<std::wstring> seen;
    for (ObjectId id : scope.ids) {
      if (hasRepeatedTable(*it, id, seen)) found.push_back(id);
    }
  } else if (mode != PresenceMode::Nothing) {
    for (ObjectId id : scope.ids) {
      if (meetsCount(mode, countUserRecordsOfEntity(*it, id))) found.push_back(id);
    }
  }
  return found;
}

void commandHasNoOd() { runPresenceSearch(PresenceMode::NoOd); }
void commandHasOd() { runPresenceSearch(PresenceMode::HasOd); }
void commandHasMultipleOd() { runPresenceSearch(PresenceMode::MultipleOd); }
void commandHasDuplicateOd() { runPresenceSearch(PresenceMode::DuplicateOd); }

}  // namespace zarvel
