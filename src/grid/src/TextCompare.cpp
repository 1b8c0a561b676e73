#include "TextCompare.h"

#include <algorithm>
#include <string>

#include "platform/Text.h"

namespace zarvel {
namespace {

// ASCII is folded here; the rest by the host's table, which agrees on it.
wchar_t lowerChar(wchar_t c) {
  if (c < 0x80) return c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 0x20) : c;
  return platform::lowerCase(std::wstring_view(&c, 1))[0];
}

}  // namespace

int compareIgnoringCase(std::wstring_view a, std::wstring_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    if (a[i] == b[i]) continue;
    const wchar_t la = lowerChar(a[i]);
    const wchar_t lb = lowerChar(b[i]);
    if (la != lb) return la < lb ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

bool startsWithIgnoringCase(std::wstring_view text, std::wstring_view prefix) {
  return text.size() >= prefix.size() &&
         compareIgnoringCase(text.substr(0, prefix.size()), prefix) == 0;
}

}  // namespace zarvel
