// The attach and detach of the "Attach/detach OD" dialog. Neither ever puts a
// second record of the table on an entity or takes more than one off it.
#include "records/AttachData.h"

#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "records/AttachOD.h"

namespace zarvel {
namespace {

using platform::OpenMode;

// The text typed for a column: the first row of that exact name that holds
// any; null when none does, and the field keeps what the new record has.
const std::wstring* typedValue(const AttachOD& dialog, const std::wstring& column) {
  for (std::size_t i = 0; i < dialog.fieldNames.size() && i < dialog.fieldValues.size(); ++i) {
    if (dialog.fieldNames[i] == column && !dialog.fieldValues[i].empty()) {
      return &dialog.fieldValues[i];
    }
  }
  return nullptr;
}

// Writes the typed values into the entity's records of the table, which the
// caller has just made the one record of it there.
void fillRecords(OdContainer& container, platform::OdRecordIterator& it, ObjectId entity,
                 const std::wstring& table, const AttachOD& dialog) {
  initWalk(it, entity, OpenMode::Write);
  platform::OdRecord record;
  for (; !it.isDone(); it.next()) {
    if (it.recordTableName() != table || it.getRecord(record) != platform::Status::Ok) continue;
    std::unique_ptr<platform::OdTable> t = container.getTable(record.tableName());
    const platform::OdTableDef definition = t ? t->definition() : platform::OdTableDef();
    for (int i = 0; i < record.count() && i < definition.count(); ++i) {
      if (const std::wstring* text = typedValue(dialog, definition.column(i).name)) {
        setFieldFromText(record, i, *text);
      }
    }
    // Written whatever the values: a record the iterator holds for write takes
    // an update, and the attach counts the entities it reached.
    platform::ignoreStatus(it.updateRecord(record));
  }
}

bool attachTo(OdContainer& container, platform::OdRecordIterator& it, ObjectId entity,
              const std::wstring& table, const AttachOD& dialog) {
  if (entity.isNull() || containsText(tableNamesOfEntity(container, entity), table)) return false;
  if (!attachBlankRecord(container, table, entity)) return false;
  fillRecords(container, it, entity, table, dialog);
  return true;
}

// Only the first record of the table goes, however many the entity has.
bool detachFrom(platform::OdRecordIterator& it, ObjectId entity, const std::wstring& table) {
  if (!walkToRecordOfTable(it, entity, table, OpenMode::Write)) return false;
  // Counted as reached: on an iterator held for write and standing on a
  // record, the removal cannot fail.
  platform::ignoreStatus(it.removeRecord());
  return true;
}

}  // namespace

void commandAdeAttachData() {
  ResourceScope scope;
  AttachOD dialog;
  if (!AttachOD::isAction(port().ui().runModal(dialog))) return;

  std::vector<ObjectId> ids = impliedSelection();
  // Esc and Enter alike leave nothing selected; no layer is left out, and
  // model space is never taken instead.
  if (ids.empty()) ids = promptSelection().ids;
  if (ids.empty()) {
    printMessage(kMsgNoObjectsSelected);
    return;
  }

  const std::wstring table = AttachOD::lastODTableName();
  OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdRecordIterator> it = container.newIterator();
  platform::Editor& editor = port().editor();
  editor.startProgress(loadString(kDlgProgressLabel), 0, static_cast<int>(ids.size()));
  int count = 0;
  for (ObjectId id : ids) {
    const bool done = dialog.mode == AttachOD::kModeAttach
                          ? attachTo(container, *it, id, table, dialog)
                          : detachFrom(*it, id, table);
    if (done) ++count;
    editor.setProgress(-1);
  }
  editor.restoreStatusBar();
  printMessage(kMsgCompleted, count);
  setPickFirst({});
}

}  // namespace zarvel
