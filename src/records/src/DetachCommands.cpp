// ZARVEL_RM, ZARVEL_RM_ALL and ZARVEL_REMOVE_DUPLICATE_OD. They differ on
// purpose in how they find their entities, whether topology tables are
// touched, and what their count means.
#include "records/DetachCommands.h"

#include <memory>
#include <set>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "records/PGUIODList.h"

namespace zarvel {
namespace {

using platform::OpenMode;

// Every table of the selected entities' records, topology tables included.
std::vector<std::wstring> tablesOfRecords(const std::vector<ObjectId>& ids) {
  OdContainer& container = getODContainer();
  std::set<std::wstring> names;
  auto it = container.newIterator();
  for (ObjectId id : ids) {
    initWalk(*it, id, OpenMode::Read);
    for (; !it->isDone(); it->next()) names.insert(it->recordTableName());
  }
  return {names.begin(), names.end()};
}

// Removes every record of the table iterator's table from the entity. A removal
// moves the iterator onto the next record, which the step then passes over, so
// passes repeat until one finds nothing.
int detachAllOfTable(platform::OdRecordIterator& it, ObjectId id) {
  int removed = 0;
  for (bool visited = true; visited;) {
    visited = false;
    initWalk(it, id, OpenMode::Write);
    for (; !it.isDone(); it.next()) {
      visited = true;
      if (it.removeRecord() == platform::Status::Ok) ++removed;
    }
  }
  return removed;
}

}  // namespace

void commandRm() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();
  const bool hadPickFirst = !ids.empty();
  std::vector<std::wstring> tables = hadPickFirst ? tablesOfRecords(ids) : allTableNames(true);

  PGUIODList dialog(&tables);
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (tables.empty()) {
    printMessage(kMsgCompleted, 0);
    return;
  }
  if (!hadPickFirst) {
    SelectionResult selection = promptSelection();
    if (!selection.ok) return;
    ids = std::move(selection.ids);
  }
  if (ids.empty()) ids = modelSpaceEntities();
  dropUnavailableEntities(ids);
  if (ids.empty()) return;

  OdContainer& container = getODContainer();
  int removed = 0;
  for (const std::wstring& name : tables) {
    std::unique_ptr<platform::OdTable> table = container.getTable(name);
    if (!table) continue;
    std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
    for (ObjectId id : ids) removed += detachAllOfTable(*it, id);
  }
  printMessage(kMsgCompleted, removed);
}

void commandRmAll() {
  ResourceScope scope;
  if (messageBox(kMsgDetachAllContinue, kMsgWarningCaption,
                 platform::kMbYesNo | platform::kMbIconExclamation) != platform::kIdYes) {
    return;
  }
  SelectionResult selection = commandScope();
  if (!selection.ok || selection.ids.empty()) return;

  lockDoc();
  OdContainer& container = getODContainer();
  int changed = 0;
  for (ObjectId id : selection.ids) {
    const std::vector<std::wstring> names = userTableNamesOfEntity(container, id);
    for (const std::wstring& name : names) removeRecordsOfTable(container, name, id);
    if (!names.empty()) ++changed;
  }
  // Releasing the lock taken above cannot fail, and the report follows anyway.
  platform::ignoreStatus(unlockDoc());
  printMessage(kMsgCompletedOutOf, changed, static_cast<int>(selection.ids.size()));
}

void commandRemoveDuplicateOd() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();

  platform::StringReply answer = port().editor().getString(loadString(kMsgPromptModeFirstLast), true);
  if (answer.status == platform::PromptStatus::Cancel) return;
  // The host's buffer holds 132 characters and a terminator.
  std::wstring mode = toLowerCopy(answer.text.substr(0, 132));
  if (mode.empty()) mode = loadString(kMsgKeywordFirst);
  bool removeFirst = false;
  if (startsWithText(loadString(kMsgKeywordFirst), mode)) {
    removeFirst = true;
  } else if (!startsWithText(loadString(kMsgKeywordLast), mode)) {
    printMessage(kMsgInvalidParameters);
    return;
  }

  if (ids.empty()) {
    SelectionResult selection = promptSelection();
    if (!selection.ok) return;
    ids = std::move(selection.ids);
  }
  OdContainer& container = getODContainer();
  int repeated = 0;
  for (ObjectId id : ids) repeated += removeDuplicateRecords(container, id, removeFirst);
  printMessage(kMsgCompleted, repeated);
}

}  // namespace zarvel
