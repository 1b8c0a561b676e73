// ZARVEL_COPY_OD, ZARVEL_COPY_OD_VALUE and ZARVEL_COPY_VALUE: records of a
// reference entity brought to targets. They differ on purpose in whether the
// reference counts among the targets and in what their report counts.
#include "records/CopyCommands.h"

#include "CopyReference.h"
#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"

namespace zarvel {
namespace {

using platform::OpenMode;

// Copies of the entity's records of user tables, in iterator order.
std::vector<OdRecord> userRecordsOf(OdContainer& container, ObjectId entity) {
  std::vector<OdRecord> records;
  auto it = container.newIterator();
  initWalk(*it, entity, OpenMode::Read);
  for (OdRecord record; !it->isDone(); it->next()) {
    if (!isUserTable(it->recordTableName())) continue;
    if (it->getRecord(record) == platform::Status::Ok) records.push_back(record);
  }
  return records;
}

// Overwrites each record of the target whose table one of the kept records
// has; the first kept record of a table serves every record of it.
int overwriteRecords(platform::OdRecordIterator& it, ObjectId target,
                     const std::vector<OdRecord>& kept) {
  int count = 0;
  if (kept.empty()) return count;
  initWalk(it, target, OpenMode::Write);
  for (; !it.isDone(); it.next()) {
    const std::wstring& name = it.recordTableName();
    for (const OdRecord& record : kept) {
      if (record.tableName() != name) continue;
      ++count;
      // A record that can't be written keeps its values; it was still matched.
      platform::ignoreStatus(it.updateRecord(record));
      break;
    }
  }
  return count;
}

}  // namespace

int copyRecordValues(ObjectId target, ObjectId source, OdContainer& container) {
  const std::vector<OdRecord> kept = userRecordsOf(container, source);
  auto it = container.newIterator();
  return overwriteRecords(*it, target, kept);
}

void commandCopyOd() {
  ResourceScope scope;
  const CopyScope copy = copyScope();
  if (!copy.ok) return;
  OdContainer& container = getODContainer();
  const TableCounts counts = userTableCounts(container, copy.reference);
  if (counts.empty()) {
    printMessage(kMsgCompleted, 0);
    return;
  }
  // The reference is not left out: standing among the targets, it gets
  // default records beside its own.
  std::vector<DefaultRecord> records = defaultRecords(container, counts);
  for (ObjectId target : copy.targets) addDefaultRecords(records, target);
  printMessage(kMsgCompleted, static_cast<int>(copy.targets.size()));
}

void commandCopyOdValue() {
  ResourceScope scope;
  const CopyScope copy = copyScope();
  if (!copy.ok) return;
  OdContainer& container = getODContainer();
  for (ObjectId target : copy.targets) {
    if (target != copy.reference) copyRecords(target, copy.reference, container, true);
  }
  printMessage(kMsgCompleted, static_cast<int>(copy.targets.size()));
}

void commandCopyValue() {
  ResourceScope scope;
  const CopyScope copy = copyScope();
  if (!copy.ok) return;
  OdContainer& container = getODContainer();
  // The reference is not among the records written, so it is read once.
  const std::vector<OdRecord> kept = userRecordsOf(container, copy.reference);
  auto it = container.newIterator();
  int overwritten = 0;
  for (ObjectId target : copy.targets) {
    if (target != copy.reference) overwritten += overwriteRecords(*it, target, kept);
  }
  printMessage(kMsgCompleted, overwritten);
}

}  // namespace zarvel
