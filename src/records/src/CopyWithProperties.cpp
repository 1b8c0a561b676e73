// ZARVEL_COPY_ALL and ZARVEL_COPY_ALL_VALUE: a reference's records and its
// colour, layer, linetype, linetype scale and line weight brought to targets.
// The reference is not left out of the targets.
#include <map>
#include <optional>

#include "CopyReference.h"
#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "records/CopyCommands.h"

namespace zarvel {
namespace {

// Gives the target the reference's properties. A target that won't open is
// passed over without a word, as are targets when the reference would not open.
void copyProperties(const std::optional<platform::EntityProperties>& properties, ObjectId target) {
  if (!properties) return;
  platform::ignoreStatus(port().drawing().setEntityProperties(target, *properties));
}

// Every record of the entity, topology tables too, by table name.
using RecordsByTable = std::map<std::wstring, std::vector<OdRecord>>;

RecordsByTable recordsByTable(OdContainer& container, ObjectId entity) {
  RecordsByTable byTable;
  auto it = container.newIterator();
  initWalk(*it, entity, platform::OpenMode::Read);
  for (OdRecord record; !it->isDone(); it->next()) {
    if (it->getRecord(record) == platform::Status::Ok)
      byTable[record.tableName()].push_back(record);
  }
  return byTable;
}

// The tables, user tables only, whose records are added; looked up once for
// all targets, as adding records changes no table.
struct TableRecords {
  std::unique_ptr<platform::OdTable> table;
  const std::vector<OdRecord>* records = nullptr;
};

std::vector<TableRecords> userTableRecords(OdContainer& container, const RecordsByTable& byTable) {
  std::vector<TableRecords> out;
  for (const auto& [name, records] : byTable) {
    if (!isUserTable(name)) continue;
    TableRecords t{container.getTable(name), &records};
    if (t.table) out.push_back(std::move(t));
  }
  return out;
}

}  // namespace

void commandCopyAll() {
  ResourceScope scope;
  const CopyScope copy = copyScope();
  if (!copy.ok) return;
  OdContainer& container = getODContainer();
  const TableCounts counts = userTableCounts(container, copy.reference);
  const auto properties = port().drawing().entityProperties(copy.reference);
  // A reference without user records hands on nothing, not even its properties.
  if (counts.empty()) {
    printMessage(kMsgCompleted, 0);
    return;
  }
  std::vector<DefaultRecord> records = defaultRecords(container, counts);
  for (ObjectId target : copy.targets) {
    addDefaultRecords(records, target);
    copyProperties(properties, target);
  }
  printMessage(kMsgCompleted, static_cast<int>(copy.targets.size()));
}

void commandCopyAllValue() {
  ResourceScope scope;
  const CopyScope copy = copyScope();
  if (!copy.ok) return;
  OdContainer& container = getODContainer();
  const RecordsByTable byTable = recordsByTable(container, copy.reference);
  const auto properties = port().drawing().entityProperties(copy.reference);
  // Topology records count here: a reference with only those still hands on
  // its properties, though no record travels.
  if (byTable.empty()) {
    printMessage(kMsgCompleted, 0);
    return;
  }
  const std::vector<TableRecords> tables = userTableRecords(container, byTable);
  for (ObjectId target : copy.targets) {
    for (const TableRecords& t : tables) {
      for (const OdRecord& record : *t.records) {
        // A target that takes no record still takes the others and the properties.
        platform::ignoreStatus(t.table->addRecord(record, target));
      }
    }
    copyProperties(properties, target);
  }
  printMessage(kMsgCompleted, static_cast<int>(copy.targets.size()));
}

}  // namespace zarvel
