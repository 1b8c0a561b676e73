// Rounding a measure to a number of decimals, as the value operations write it.
#pragma once

#include <string>

namespace zarvel {

// The number printed with that many decimals and read back: what a user sees
// in a field is what the print gave, ties and all, with no rounding rule of
// our own. A negative count counts as none.
double roundToDecimals(double value, int decimals);

// The text printf's "%.*f" gives for the number, into text; a negative count
// counts as none.
void printDecimals(double value, int decimals, std::wstring& text);

}  // namespace zarvel
