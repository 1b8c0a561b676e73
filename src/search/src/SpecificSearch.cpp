// ZARVEL_HAS_SPECIFIC_OD and ZARVEL_HAS_NO_SPECIFIC_OD: a table dialog, then
// a walk that counts each entity's records of the chosen tables. Like the
// presence searches they only read, take no lock and leave their result as
// the pick-first set.
#include "search/SpecificSearch.h"

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "platform/StringArray.h"
#include "search/ObjectDataList.h"

namespace zarvel {
namespace {

enum class Sense { With, Without };

// The records under the iterator's entity whose table is one of the tables,
// compared exactly; a record counts once, whichever name it matches.
int recordsOfTables(platform::OdRecordIterator& it, const std::vector<std::wstring>& tables) {
  int count = 0;
  for (it.start(); !it.isDone(); it.next()) {
    if (containsText(tables, it.recordTableName())) ++count;
  }
  return count;
}

bool isTaken(Sense sense, TablesMode mode, int count, int tableCount) {
  if (sense == Sense::With) return mode == TablesMode::Every ? count >= tableCount : count >= 1;
  return mode == TablesMode::Every ? count == 0 : count < tableCount;
}

std::vector<ObjectId> searchByTables(const std::vector<std::wstring>& tables, TablesMode mode,
                                     Sense sense) {
  std::unique_ptr<platform::OdRecordIterator> it = getODContainer().newIterator();
  const SelectionResult scope = commandScope();
  std::vector<ObjectId> found;
  if (!scope.ok) return found;
  const int tableCount = static_cast<int>(tables.size());
  const bool needsEvery = sense == Sense::With && mode == TablesMode::Every;
  for (ObjectId id : scope.ids) {
    if (!isOnVisibleLayer(id)) continue;
    initWalk(*it, id, platform::OpenMode::Read, false);
    // Fewer records than tables cannot hold them all; no walk is needed.
    if (needsEvery && it->countRecords() < tableCount) continue;
    if (isTaken(sense, mode, recordsOfTables(*it, tables), tableCount)) found.push_back(id);
  }
  return found;
}

void runTableSearch(Sense sense) {
  ResourceScope scope;
  const std::vector<ObjectId> picked = impliedSelection();
  // Picked entities offer their own tables, topology tables too, which the
  // dialog then leaves out; with nothing picked, the tables in use.
  std::vector<std::wstring> tables =
      picked.empty() ? allTableNames(true) : listTableNames(picked, false);
  if (!picked.empty() && tables.empty()) {
    printMessage(kMsgSelected, 0);
    return;
  }
  platform::sortStringArray(tables);
  ObjectDataList dialog(
      loadString(sense == Sense::With ? kMsgSelectWithSpecificData : kMsgSelectWithoutSpecificData),
      std::vector<std::wstring>(tables.rbegin(), tables.rend()));
  ObjectDataList::clearChosenTables();
  if (port().ui().runModal(dialog) != platform::kIdOk) return;

  const std::vector<std::wstring> chosen = ObjectDataList::chosenTables();
  const bool simultaneous = ObjectDataList::simultaneous();
  std::vector<ObjectId> found;
  if (sense == Sense::With) {
    found = findWithTables(chosen, simultaneous ? TablesMode::Every : TablesMode::Any);
  } else {
    if (chosen.empty()) {
      printMessage(kMsgSelected, 0);
      return;
    }
    found = findWithoutTables(chosen, simultaneous ? TablesMode::Any : TablesMode::Every);
  }
  // The count comes before the selection changes, the other way round from
  // the presence searches.
  printMessage(kMsgSelected, static_cast<int>(found.size()));
  setPickFirst(found);
}

}  // namespace

std::vector<ObjectId> findWithTables(const std::vector<std::wstring>& tables, TablesMode mode) {
  return searchByTables(tables, mode, Sense::With);
}

std::vector<ObjectId> findWithoutTables(const std::vector<std::wstring>& tables, TablesMode mode) {
  std::vector<ObjectId> found = searchByTables(tables, mode, Sense::Without);
  port().editor().restoreStatusBar();
  return found;
}

void commandHasSpecificOd() {
  runTableSearch(Sense::With);
}
void commandHasNoSpecificOd() {
  runTableSearch(Sense::Without);
}

}  // namespace zarvel
