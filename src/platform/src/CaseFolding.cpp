// lowerCase and equalsIgnoreCase: the host's case folding of wide text.
#include "platform/Text.h"

#include <array>

namespace platform {
namespace {

constexpr int kLowerTableSize = 0x180;

constexpr std::array<char16_t, kLowerTableSize> makeLowerTable() {
  std::array<char16_t, kLowerTableSize> table{};
  for (int c = 0; c < kLowerTableSize; ++c) table[c] = static_cast<char16_t>(c);
  auto lowerByOne = [&table](int from, int to) {  // upper-case letters at from, from+2, ...
    for (int c = from; c <= to; c += 2) table[c] = static_cast<char16_t>(c + 1);
  };
  for (int c = 'A'; c <= 'Z'; ++c) table[c] = static_cast<char16_t>(c + 0x20);
  for (int c = 0xC0; c <= 0xDE; ++c) {
    if (c != 0xD7) table[c] = static_cast<char16_t>(c + 0x20);
  }
  lowerByOne(0x100, 0x12E);
  table[0x130] = u'i';
  lowerByOne(0x132, 0x136);
  lowerByOne(0x139, 0x147);
  lowerByOne(0x14A, 0x176);
  table[0x178] = 0xFF;
  lowerByOne(0x179, 0x17D);
  return table;
}

constexpr std::array<char16_t, kLowerTableSize> kLowerTable = makeLowerTable();

wchar_t lowerChar(wchar_t c) {
  // wchar_t is signed on some systems and unsigned on others; a wide character
  // is no signed char, whatever the checker thinks.
  const long unit = c;  // NOLINT(bugprone-signed-char-misuse)
  if (unit >= 0 && unit < kLowerTableSize) return static_cast<wchar_t>(kLowerTable[unit]);
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 0x20;
  if (c >= 0x410 && c <= 0x42F) return c + 0x20;
  if (c >= 0x400 && c <= 0x40F) return c + 0x50;
  return c;
}

}  // namespace

std::wstring lowerCase(std::wstring_view text) {
  std::wstring out(text);
  for (wchar_t& c : out) c = lowerChar(c);
  return out;
}

bool equalsIgnoreCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && lowerChar(a[i]) != lowerChar(b[i])) return false;
  }
  return true;
}

}  // namespace platform
