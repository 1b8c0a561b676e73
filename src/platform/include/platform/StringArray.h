// Lists of names as the host's string arrays hold them.
#pragma once

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace platform {

// Sorts in place as this port's string arrays sort: descending code-unit
// order, so that a list sorted and then read from its end is ascending.
inline void sortStringArray(std::vector<std::wstring>& names) {
  std::sort(names.begin(), names.end(), std::greater<>());
}

}  // namespace platform
