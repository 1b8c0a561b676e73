// Keys that put the table editor's rows in the natural order of one field's
// display texts, made once per row instead of once per comparison.
#pragma once

#include <cstdint>
#include <vector>

#include "tableeditor/EditorRow.h"

namespace zarvel {

// A key per row: a row whose key is less sorts before. Rows whose texts
// compare equal may get different keys, as their order is no one's.
std::vector<std::uint64_t> naturalSortKeys(const std::vector<EditorRow>& rows, std::size_t field);

}  // namespace zarvel
