// Rows named by their places in the list, as a user types them: "3", "3-7",
// several of them separated by commas, "*" for all and "-" for none.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zarvel {

// The 0-based rows named, in the order typed; none when the text names a row
// outside 1..count or is no list of places.
std::optional<std::vector<int>> parseRowRanges(const std::wstring& text, int count);

// The rows as the shortest such text: "-" for none.
std::wstring formatRowRanges(const std::vector<int>& rows);

}  // namespace zarvel
