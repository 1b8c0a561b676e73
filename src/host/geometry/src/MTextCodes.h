// The contents of a multiline text as they show: the formatting codes walked
// once, for what measures a text's box and what reads its plain text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace host::geometry {

// How many characters the %% code at the start of the text shows, and how
// long the code is; nothing when it is no code.
inline bool percentCode(std::wstring_view s, std::size_t& shown, std::size_t& length) {
  if (s.size() < 3 || s[0] != L'%' || s[1] != L'%') return false;
  const wchar_t c = s[2];
  if (c == L'u' || c == L'U' || c == L'o' || c == L'O' || c == L'k' || c == L'K') {
    shown = 0;
    length = 3;
    return true;
  }
  if (c >= L'0' && c <= L'9') {
    length = 3;
    while (length < 5 && length < s.size() && s[length] >= L'0' && s[length] <= L'9') ++length;
    shown = 1;
    return true;
  }
  shown = 1;
  length = 3;
  return true;
}

// The Unicode character of "\U+XXXX" from the four hexadecimal digits, or 0.
inline wchar_t unicodeEscape(std::wstring_view digits) {
  if (digits.size() < 4) return 0;
  unsigned value = 0;
  for (std::size_t k = 0; k < 4; ++k) {
    const wchar_t d = digits[k];
    const int v = d >= L'0' && d <= L'9'   ? d - L'0'
                  : d >= L'A' && d <= L'F' ? d - L'A' + 10
                  : d >= L'a' && d <= L'f' ? d - L'a' + 10
                                           : -1;
    if (v < 0) return 0;
    value = value * 16 + static_cast<unsigned>(v);
  }
  return static_cast<wchar_t>(value);
}

// Walks the contents: shown(text, width) for each piece that shows, with the
// text plain text gives for it and the characters it takes; lineBreak() at
// each paragraph, column or line break. Grouping braces and the switches of
// font, height, width, spacing, colour and the like show nothing; a stacked
// fraction shows its two parts as written, as wide as the wider.
template <typename Shown, typename LineBreak>
void walkMtext(std::wstring_view s, Shown shown, LineBreak lineBreak) {
  auto skipPast = [&](std::size_t i, wchar_t end) {
    const std::size_t at = s.find(end, i);
    return at == std::wstring_view::npos ? s.size() : at + 1;
  };
  static const wchar_t kNoBreakSpace[] = L"\u00A0";
  for (std::size_t i = 0; i < s.size();) {
    const wchar_t c = s[i];
    std::size_t count = 0;
    std::size_t length = 0;
    if (c == L'{' || c == L'}') {
      ++i;
    } else if (c == L'\n') {
      lineBreak();
      ++i;
    } else if (percentCode(s.substr(i), count, length)) {
      shown(s.substr(i, length), count);
      i += length;
    } else if (c != L'\\' || i + 1 >= s.size()) {
      shown(s.substr(i, 1), 1);
      ++i;
    } else {
      const wchar_t code = s[i + 1];
      i += 2;
      switch (code) {
        case L'P':
        case L'N':
        case L'X':
          lineBreak();
          break;
        case L'\\':
        case L'{':
        case L'}':
          shown(s.substr(i - 1, 1), 1);
          break;
        case L'~':
          shown(std::wstring_view(kNoBreakSpace, 1), 1);
          break;
        case L'U': {  // \U+XXXX, one character
          wchar_t one[1] = {0};
          if (i < s.size() && s[i] == L'+') {
            one[0] = unicodeEscape(s.substr(i + 1));
            i = std::min(s.size(), i + 5);
          }
          shown(one[0] != 0 ? std::wstring_view(one, 1) : s.substr(i - 1, 0), 1);
          break;
        }
        case L'S': {
          const std::size_t end = skipPast(i, L';');
          const std::wstring_view stack = s.substr(i, end - i - (end > i ? 1 : 0));
          const std::size_t split = stack.find_first_of(L"^/#");
          const std::size_t top = split == std::wstring_view::npos ? stack.size() : split;
          const std::size_t bottom =
              split == std::wstring_view::npos ? 0 : stack.size() - split - 1;
          shown(stack, std::max(top, bottom));
          i = end;
          break;
        }
        case L'f':
        case L'F':
        case L'H':
        case L'W':
        case L'Q':
        case L'T':
        case L'A':
        case L'C':
        case L'c':
        case L'p':
          i = skipPast(i, L';');
          break;
        default:  // switches such as \L, \O, \K show nothing
          break;
      }
    }
  }
}

// The contents as plain text: what shows, each break a carriage return and
// line feed.
std::wstring mtextPlainText(std::wstring_view contents);

}  // namespace host::geometry
