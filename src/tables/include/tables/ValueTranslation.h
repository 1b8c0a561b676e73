// The values step of the translation: each field's text form looked up in
// the value aliases, most particular map first.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/ObjectData.h"
#include "tables/AliasFiles.h"

namespace zarvel {

// Translates entity after entity; what it learns of each table's columns is
// kept for the next entity, so the maps and the tables must not change while
// it works.
class ValueTranslator {
 public:
  ValueTranslator(platform::OdContainer& container, const ValueAliases& values,
                  const FieldValueAliases& fieldValues,
                  const TableFieldValueAliases& tableFieldValues);

  // The number of the entity's records that changed.
  int translateEntity(platform::ObjectId entity);

 private:
  // The maps that may hold an alias for one column, most particular first;
  // null where the files give none.
  struct ColumnMaps {
    const AliasMap* tableField = nullptr;
    const AliasMap* field = nullptr;
    const AliasMap* any = nullptr;
    bool empty() const { return !tableField && !field && !any; }
  };
  struct TableColumns {
    std::vector<ColumnMaps> columns;
    bool anyAlias = false;
  };

  const TableColumns& columnsOf(const std::wstring& table);
  // The record's values changed by the aliases; false if none changed.
  bool translateRecord(const TableColumns& table, platform::OdRecord& record) const;

  platform::OdContainer& container_;
  const ValueAliases& values_;
  const FieldValueAliases& fieldValues_;
  const TableFieldValueAliases& tableFieldValues_;
  std::unique_ptr<platform::OdRecordIterator> iterator_;
  std::map<std::wstring, TableColumns> tables_;
};

// One entity's translation, as the step does it for each.
int translateEntityValues(platform::OdContainer& container, platform::ObjectId entity,
                          const ValueAliases& values, const FieldValueAliases& fieldValues,
                          const TableFieldValueAliases& tableFieldValues);

}  // namespace zarvel
