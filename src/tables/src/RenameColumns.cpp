// Column renames: check, capture the values, change the definition, put the
// values back under one document lock.
#include "tables/RenameColumns.h"

#include <memory>
#include <set>
#include <utility>

#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"

namespace zarvel {
namespace {

using platform::OdTableDef;

struct Captured {
  ObjectId entity;
  std::vector<OdValue> values;  // one per renamed column, in list order
};

bool namesRepeat(const std::vector<std::wstring>& names) {
  std::set<std::wstring> seen;
  for (const std::wstring& name : names) {
    if (!seen.insert(toLowerCopy(name)).second) return true;
  }
  return false;
}

// The values of the renamed columns on every entity that has a record of the
// table. The values come flat, record after record, so the indices address
// each entity's first record.
std::vector<Captured> captureValues(OdContainer& container, const std::wstring& table,
                                    const std::vector<int>& indices) {
  std::vector<ObjectId> entities = modelSpaceEntities();
  dropUnavailableEntities(entities);
  std::vector<Captured> captured;
  for (const ObjectId id : entities) {
    if (!hasRecordOfTable(container, id, table)) continue;
    const std::vector<OdValue> values = valuesOfEntityTable(container, table, id);
    Captured c{id, {}};
    for (const int index : indices) {
      c.values.push_back(index < static_cast<int>(values.size()) ? values[index] : OdValue());
    }
    captured.push_back(std::move(c));
  }
  return captured;
}

void restoreValues(OdContainer& container, const std::wstring& table,
                   const std::vector<int>& indices, const std::vector<Captured>& captured) {
  std::unique_ptr<platform::OdRecordIterator> it = container.newIterator();
  lockDoc();
  OdRecord record;
  for (const Captured& c : captured) {
    if (!walkToRecordOfTable(*it, c.entity, table, platform::OpenMode::Write)) continue;
    if (it->getRecord(record) != platform::Status::Ok) continue;
    for (std::size_t k = 0; k < indices.size(); ++k) {
      if (indices[k] < record.count()) record.value(indices[k]) = c.values[k];
    }
    // An entity that takes no write keeps what the definition update left it.
    platform::ignoreStatus(it->updateRecord(record));
  }
  platform::ignoreStatus(unlockDoc());
}

}  // namespace

RenameResult renameTableColumns(OdContainer& container, const std::wstring& table,
                                const std::vector<std::wstring>& oldNames,
                                const std::vector<std::wstring>& newNames) {
  if (oldNames.size() != newNames.size()) return RenameResult::UnequalLists;
  if (namesRepeat(newNames)) return RenameResult::DuplicateNames;
  std::unique_ptr<platform::OdTable> found = container.getTable(table);
  if (!found) return RenameResult::TableNotFound;
  const std::wstring name = found->name();
  OdTableDef definition = found->definition();
  for (const std::wstring& newName : newNames) {
    if (definition.columnIndex(newName) >= 0) return RenameResult::DuplicateNames;
  }
  std::vector<int> indices;
  for (const std::wstring& oldName : oldNames) {
    const int index = definition.columnIndex(oldName);
    if (index < 0) return RenameResult::ColumnNotFound;
    indices.push_back(index);
  }

  const std::vector<Captured> captured = captureValues(container, name, indices);
  // The column keeps its type, default, description and place.
  for (std::size_t k = 0; k < indices.size(); ++k) {
    definition.columns[static_cast<std::size_t>(indices[k])].name = newNames[k];
  }
  found.reset();
  // A refused update leaves the old columns; the values written back are
  // then the ones they hold already.
  platform::ignoreStatus(container.updateTableDefinition(name, definition));
  restoreValues(container, name, indices, captured);
  return RenameResult::Ok;
}

}  // namespace zarvel
