// toUtf8 and fromUtf8: conversions between wide text and UTF-8.
#include "platform/Text.h"

namespace platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

void appendCodePoint(std::wstring& out, char32_t cp) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<wchar_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + (cp & 0x3FF)));
      return;
    }
  }
  out.push_back(static_cast<wchar_t>(cp));
}

bool isSurrogate(char32_t cp) {
  return cp >= 0xD800 && cp <= 0xDFFF;
}

}  // namespace

void appendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out.push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else if (cp < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}


std::string toUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char32_t cp = static_cast<char32_t>(text[i]);
    if constexpr (sizeof(wchar_t) == 2) {
      cp &= 0xFFFF;
      if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size()) {
        const char32_t low = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
        if (low >= 0xDC00 && low <= 0xDFFF) {
          cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
          ++i;
        }
      }
    }
    if (isSurrogate(cp) || cp > 0x10FFFF) cp = kReplacement;
    appendUtf8(out, cp);
  }
  return out;
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring out;
  out.reserve(text.size());
  size_t i = 0;
  while (i < text.size()) {
    const unsigned char lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80) {
      out.push_back(static_cast<wchar_t>(lead));
      continue;
    }
    // The ranges of the second byte exclude overlong forms, surrogates and
    // code points above U+10FFFF, so every accepted sequence is valid.
    int continuation = 0;
    char32_t cp = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
      continuation = 1;
      cp = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      continuation = 2;
      cp = lead & 0x0F;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      continuation = 3;
      cp = lead & 0x07;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      appendCodePoint(out, kReplacement);
      continue;
    }
    // A broken sequence becomes one replacement character; the byte that broke
    // it starts afresh.
    bool complete = true;
    for (int k = 0; k < continuation; ++k) {
      const unsigned char byte = i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
      if (i >= text.size() || byte < low || byte > high) {
        complete = false;
        break;
      }
      cp = (cp << 6) | (byte & 0x3F);
      low = 0x80;
      high = 0xBF;
      ++i;
    }
    appendCodePoint(out, complete ? cp : kReplacement);
  }
  return out;
}

}  // namespace platform
