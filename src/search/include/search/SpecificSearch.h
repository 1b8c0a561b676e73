// Finding entities by the tables of their records: with chosen tables, or
// without them.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectId.h"

namespace zarvel {

// How many records of the chosen tables decide. Records are counted, not
// tables: two records of one table count twice.
enum class TablesMode : int {
  Any = 0,    // with: at least one record; without: fewer records than tables
  Every = 1,  // with: at least one record per table; without: no record at all
};

// The visible entities in scope, in scope order, that carry records of the
// tables (findWithTables) or lack them (findWithoutTables), in the mode's sense.
std::vector<platform::ObjectId> findWithTables(const std::vector<std::wstring>& tables,
                                               TablesMode mode);
std::vector<platform::ObjectId> findWithoutTables(const std::vector<std::wstring>& tables,
                                                  TablesMode mode);

void commandHasSpecificOd();
void commandHasNoSpecificOd();

}  // namespace zarvel
