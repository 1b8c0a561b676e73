// Finding entities by the values of their records: ZARVEL_HAS_SPECIFIC_VALUES.
// Conditions combine by AND, the chosen tables of one condition by OR, and the
// records of a table by OR.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/ObjectData.h"
#include "search/ValueCondition.h"

namespace zarvel {

using platform::ObjectId;

// The columns that all the tables have, compared in lower case, in the first
// table's order and spelling; none for no tables.
std::vector<std::wstring> commonFields(const std::vector<std::wstring>& tables);

// Whether the entity has a record of the table (by exact name) and one of its
// records passes the condition.
bool entityMatchesCondition(const std::wstring& table, ObjectId entity, const Condition& condition,
                            bool extended);
// Whether one of the entity's records of the table passes the condition; the
// text "*" passes without a record. A field the table lacks passes nothing.
bool recordsMatchCondition(platform::OdTable& table, ObjectId entity, const Condition& condition,
                           bool extended);

// The conditions and tables of one search, each table looked up and each
// condition read once for the test of many entities. It answers as
// entityMatchesCondition would, for every condition and table.
class ValueSearch {
 public:
  ValueSearch(const std::vector<std::wstring>& tables, const std::vector<Condition>& conditions,
              bool extended);

  bool matches(ObjectId entity);
  // Drops the entities that don't match by putting the last id in their
  // place, so the order is not kept.
  void filter(std::vector<ObjectId>& ids);

 private:
  struct Table {
    std::unique_ptr<platform::OdTable> table;
    std::unique_ptr<platform::OdRecordIterator> records;
    std::vector<int> columns;  // per condition; negative where the table lacks it
  };

  bool tablePasses(Table& table, std::size_t condition, ObjectId entity);

  std::vector<Table> tables_;
  std::vector<ValueTest> tests_;
  platform::OdValue value_;
};

void commandHasSpecificValues();

}  // namespace zarvel
