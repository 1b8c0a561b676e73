// Character classes and ASCII case changes shared by the text services.
#pragma once

namespace platform::detail {

inline bool isSpace(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}
inline bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}
inline bool isHexDigit(wchar_t c) {
  return isDigit(c) || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F');
}
inline wchar_t asciiLower(wchar_t c) {
  return (c >= L'A' && c <= L'Z') ? c + (L'a' - L'A') : c;
}
inline char asciiUpper(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace platform::detail
