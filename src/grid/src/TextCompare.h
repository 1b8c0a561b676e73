// Comparing wide text ignoring case, the way the grid sorts and searches: by
// the host's lower-casing, one character at a time, without copying.
#pragma once

#include <cstdint>
#include <string_view>

namespace zarvel {

// Negative, 0 or positive as a sorts before, with or after b.
int compareIgnoringCase(std::wstring_view a, std::wstring_view b);
bool startsWithIgnoringCase(std::wstring_view text, std::wstring_view prefix);

// The first six characters lower-cased, 21 bits each, three to a word and
// zero past the end: two texts whose prefixes differ compare as the
// prefixes do. A character beyond 21 bits ends the prefix at its maximum,
// so that such texts are left to the full comparison.
void foldedPrefix(std::wstring_view text, std::uint64_t& high, std::uint64_t& low);

}  // namespace zarvel
