// Value aliases applied to records: the text form of each field, its alias by
// table and field, by field, or for any field, and the alias parsed back by
// the field's type.
#include "tables/ValueTranslation.h"

#include <memory>

#include "oddata/OdAccess.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"

namespace zarvel {
namespace {

using platform::OdType;

const AliasMap* find(const std::map<std::wstring, AliasMap>& maps, const std::wstring& key) {
  const auto found = maps.find(key);
  return found == maps.end() || found->second.empty() ? nullptr : &found->second;
}

// The alias of the text from the first map whose answer differs from it.
const std::wstring* aliasOf(const std::wstring& text, const AliasMap* const* maps, int count) {
  for (int i = 0; i < count; ++i) {
    if (maps[i] == nullptr) continue;
    const auto found = maps[i]->find(text);
    if (found != maps[i]->end() && found->second != text) return &found->second;
  }
  return nullptr;
}

// A point alias: one number for all three coordinates, two for X and Y with Z
// 0, three for X, Y, Z; any other count gives the origin.
platform::Point3d pointOfAlias(const std::vector<std::wstring>& parts) {
  std::vector<double> n;
  for (const std::wstring& part : parts) n.push_back(platform::wtof(part));
  switch (n.size()) {
    case 1:
      return {n[0], n[0], n[0]};
    case 2:
      return {n[0], n[1], 0.0};
    case 3:
      return {n[0], n[1], n[2]};
    default:
      return {0.0, 0.0, 0.0};
  }
}

}  // namespace

ValueTranslator::ValueTranslator(OdContainer& container, const ValueAliases& values,
                                 const FieldValueAliases& fieldValues,
                                 const TableFieldValueAliases& tableFieldValues)
    : container_(container),
      values_(values),
      fieldValues_(fieldValues),
      tableFieldValues_(tableFieldValues),
      iterator_(container.newIterator()) {}

const ValueTranslator::TableColumns& ValueTranslator::columnsOf(const std::wstring& table) {
  const auto known = tables_.find(table);
  if (known != tables_.end()) return known->second;
  TableColumns columns;
  if (std::unique_ptr<platform::OdTable> found = container_.getTable(table)) {
    const auto byTable = tableFieldValues_.find(table);
    for (const platform::OdColumnDef& column : found->definition().columns) {
      ColumnMaps maps;
      if (byTable != tableFieldValues_.end()) maps.tableField = find(byTable->second, column.name);
      maps.field = find(fieldValues_, column.name);
      maps.any = values_.empty() ? nullptr : &values_;
      columns.anyAlias = columns.anyAlias || !maps.empty();
      columns.columns.push_back(maps);
    }
  }
  return tables_.emplace(table, std::move(columns)).first->second;
}

bool ValueTranslator::translateRecord(const TableColumns& table, OdRecord& record) const {
  bool changed = false;
  const int count = std::min(record.count(), static_cast<int>(table.columns.size()));
  for (int i = 0; i < count; ++i) {
    const ColumnMaps& maps = table.columns[static_cast<std::size_t>(i)];
    // A field no map speaks of keeps its value, and its text need not be made.
    if (maps.empty()) continue;
    OdValue& value = record.value(i);
    const std::wstring text = trimBoth(valueToText(value));
    const AliasMap* const ordered[] = {maps.tableField, maps.field, maps.any};
    const std::wstring* alias = aliasOf(text, ordered, 3);
    if (alias == nullptr) continue;
    changed = true;
    assignTextByType(value, *alias, pointOfAlias);
  }
  return changed;
}

int ValueTranslator::translateEntity(ObjectId entity) {
  platform::OdRecordIterator& it = *iterator_;
  int changed = 0;
  OdRecord record;
  for (initWalk(it, entity, platform::OpenMode::Write); !it.isDone(); it.next()) {
    const TableColumns& table = columnsOf(it.recordTableName());
    if (!table.anyAlias || it.getRecord(record) != platform::Status::Ok) continue;
    if (!translateRecord(table, record)) continue;
    // The iterator stands on the record it read, open for write.
    platform::ignoreStatus(it.updateRecord(record));
    ++changed;
  }
  return changed;
}

int translateEntityValues(OdContainer& container, ObjectId entity, const ValueAliases& values,
                          const FieldValueAliases& fieldValues,
                          const TableFieldValueAliases& tableFieldValues) {
  return ValueTranslator(container, values, fieldValues, tableFieldValues).translateEntity(entity);
}

}  // namespace zarvel
