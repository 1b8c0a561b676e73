// Renaming a table's columns with their values kept: a name changes only
// through a new definition, which would give the renamed columns their
// defaults, so the values are carried across by this routine itself.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectData.h"

namespace zarvel {

// What renameTableColumns answers.
enum class RenameResult : int {
  Ok = 0,
  UnequalLists = 1,
  DuplicateNames = 2,  // two new names alike but for case, or one the table has
  ColumnNotFound = 3,
  TableNotFound = 4,
};

// Everything is checked before anything changes. Values are carried for the
// first record of the table on each entity of model space that
// dropUnavailableEntities keeps; other records keep what the definition
// update leaves them.
RenameResult renameTableColumns(platform::OdContainer& container, const std::wstring& table,
                                const std::vector<std::wstring>& oldNames,
                                const std::vector<std::wstring>& newNames);

}  // namespace zarvel
