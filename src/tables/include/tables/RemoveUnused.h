// ZARVEL_RMUNUSED: removes the tables that no entity of model space uses and
// that the user picks from them.
#pragma once

#include <string>
#include <vector>

namespace zarvel {

// The project's tables split by use in model space: unused in the project's
// order, used in the order the walk meets them.
struct TableUse {
  std::vector<std::wstring> unused;
  std::vector<std::wstring> used;
};
TableUse tableUse();

void commandRmUnused();

}  // namespace zarvel
