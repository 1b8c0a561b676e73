// Comparing wide text ignoring case, the way the grid sorts and searches: by
// the host's lower-casing, one character at a time, without copying.
#pragma once

#include <string_view>

namespace zarvel {

// Negative, 0 or positive as a sorts before, with or after b.
int compareIgnoringCase(std::wstring_view a, std::wstring_view b);
bool startsWithIgnoringCase(std::wstring_view text, std::wstring_view prefix);

}  // namespace zarvel
