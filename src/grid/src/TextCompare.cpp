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

// Characters compare as unsigned code units, whatever the sign of wchar_t.
std::uint32_t unitOf(wchar_t c) {
  return static_cast<std::uint32_t>(c);
}

}  // namespace

int compareIgnoringCase(std::wstring_view a, std::wstring_view b) {
  const std::size_t n = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < n; ++i) {
    if (a[i] == b[i]) continue;
    const std::uint32_t la = unitOf(lowerChar(a[i]));
    const std::uint32_t lb = unitOf(lowerChar(b[i]));
    if (la != lb) return la < lb ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

void foldedPrefix(std::wstring_view text, std::uint64_t& high, std::uint64_t& low) {
  constexpr std::uint32_t kMax = (1u << 21) - 1;
  std::uint32_t units[6] = {};
  for (std::size_t i = 0; i < 6 && i < text.size(); ++i) {
    units[i] = std::min(unitOf(lowerChar(text[i])), kMax);
    if (units[i] == kMax) break;
  }
  high = (std::uint64_t{units[0]} << 42) | (std::uint64_t{units[1]} << 21) | units[2];
  low = (std::uint64_t{units[3]} << 42) | (std::uint64_t{units[4]} << 21) | units[5];
}

bool startsWithIgnoringCase(std::wstring_view text, std::wstring_view prefix) {
  return text.size() >= prefix.size() &&
         compareIgnoringCase(text.substr(0, prefix.size()), prefix) == 0;
}

}  // namespace zarvel
