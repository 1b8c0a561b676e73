// The order of the table editor's sort: display texts with digit runs read
// as numbers and everything else by code unit.
#pragma once

#include <string_view>

namespace zarvel {

// -1, 0 or 1. An empty a is below anything (even an empty b); a text that
// begins another equals it; a minus sign and a decimal point are characters,
// so the digits behind a point form a run of their own.
int naturalCompare(std::wstring_view a, std::wstring_view b);

}  // namespace zarvel
