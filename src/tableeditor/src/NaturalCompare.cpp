// The natural order of display texts behind a click on a column's heading.
#include "tableeditor/NaturalCompare.h"

#include "platform/Text.h"

namespace zarvel {
namespace {

bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

// The number of the digit run at pos, as _wtoi reads it; pos moves behind it.
std::int32_t digitRun(std::wstring_view text, std::size_t& pos) {
  const std::size_t begin = pos;
  std::int32_t value = 0;
  while (pos < text.size() && isDigit(text[pos])) {
    // Nine digits can't overflow; a longer run goes to _wtoi for its limit.
    if (pos - begin < 9) value = value * 10 + (text[pos] - L'0');
    ++pos;
  }
  return pos - begin <= 9 ? value : platform::wtoi(text.substr(begin, pos - begin));
}

}  // namespace

int naturalCompare(std::wstring_view a, std::wstring_view b) {
  if (a.empty()) return -1;
  if (b.empty()) return 1;
  std::size_t i = 0;
  std::size_t j = 0;
  for (;;) {
    if (j >= b.size()) return 0;
    if (!isDigit(a[i])) {
      if (isDigit(b[j])) return -1;
      if (a[i] != b[j]) return a[i] > b[j] ? 1 : -1;
      ++i;
      ++j;
    } else if (!isDigit(b[j])) {
      return 1;
    } else {
      const std::int32_t left = digitRun(a, i);
      const std::int32_t right = digitRun(b, j);
      if (left != right) return left > right ? 1 : -1;
    }
    if (i >= a.size()) return 0;
  }
}

}  // namespace zarvel
