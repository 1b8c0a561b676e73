// Decoding text files and cutting them into buffer-sized lines.
#include "platform/TextFile.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/Text.h"

namespace platform {
namespace {

constexpr wchar_t kReplacement = 0xFFFD;

bool startsWith(std::string_view bytes, std::string_view prefix) {
  return bytes.substr(0, prefix.size()) == prefix;
}

// Whether the bytes are well-formed UTF-8: no overlong forms, no surrogates,
// nothing past U+10FFFF.
bool isUtf8(std::string_view bytes) {
  std::size_t i = 0;
  const std::size_t n = bytes.size();
  while (i < n) {
    const auto b = static_cast<unsigned char>(bytes[i]);
    if (b < 0x80) {
      ++i;
      continue;
    }
    std::size_t length = 0;
    std::uint32_t low = 0;
    std::uint32_t cp = 0;
    if (b >= 0xC2 && b <= 0xDF) {
      length = 2, low = 0x80, cp = b & 0x1Fu;
    } else if (b >= 0xE0 && b <= 0xEF) {
      length = 3, low = 0x800, cp = b & 0x0Fu;
    } else if (b >= 0xF0 && b <= 0xF4) {
      length = 4, low = 0x10000, cp = b & 0x07u;
    } else {
      return false;
    }
    if (n - i < length) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const auto c = static_cast<unsigned char>(bytes[i + k]);
      if ((c & 0xC0u) != 0x80u) return false;
      cp = (cp << 6) | (c & 0x3Fu);
    }
    if (cp < low || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return false;
    i += length;
  }
  return true;
}

std::wstring fromUtf16(std::string_view bytes, bool bigEndian) {
  std::wstring out;
  out.reserve(bytes.size() / 2);
  const auto unitAt = [&](std::size_t i) {
    const auto a = static_cast<unsigned char>(bytes[i]);
    const auto b = static_cast<unsigned char>(bytes[i + 1]);
    return static_cast<std::uint32_t>(bigEndian ? (a << 8) | b : (b << 8) | a);
  };
  const std::size_t units = bytes.size() / 2;
  for (std::size_t u = 0; u < units; ++u) {
    const std::uint32_t unit = unitAt(2 * u);
    if (unit >= 0xD800 && unit <= 0xDBFF && u + 1 < units) {
      const std::uint32_t second = unitAt(2 * u + 2);
      if (second >= 0xDC00 && second <= 0xDFFF) {
        out.push_back(static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (second - 0xDC00)));
        ++u;
        continue;
      }
    }
    out.push_back(unit >= 0xD800 && unit <= 0xDFFF ? kReplacement : static_cast<wchar_t>(unit));
  }
  return out;
}

// Text mode reads a carriage return before a line feed as nothing.
void joinLineEnds(std::wstring& text) {
  std::size_t out = 0;
  for (std::size_t in = 0; in < text.size(); ++in) {
    if (text[in] == L'\r' && in + 1 < text.size() && text[in + 1] == L'\n') continue;
    text[out++] = text[in];
  }
  text.resize(out);
}

}  // namespace

std::wstring latin1Text(std::string_view bytes) {
  std::wstring out(bytes.size(), L'\0');
  std::transform(bytes.begin(), bytes.end(), out.begin(),
                 [](char c) { return static_cast<wchar_t>(static_cast<unsigned char>(c)); });
  return out;
}

std::wstring decodeTextFile(std::string_view bytes, const NarrowDecoder& narrow) {
  std::wstring text;
  if (startsWith(bytes, "\xFF\xFE")) {
    text = fromUtf16(bytes.substr(2), false);
  } else if (startsWith(bytes, "\xFE\xFF")) {
    text = fromUtf16(bytes.substr(2), true);
  } else {
    if (startsWith(bytes, "\xEF\xBB\xBF")) bytes.remove_prefix(3);
    text = isUtf8(bytes) ? fromUtf8(bytes) : narrow ? narrow(bytes) : latin1Text(bytes);
  }
  joinLineEnds(text);
  return text;
}

TextFileLines::TextFileLines(std::wstring text, std::size_t bufferSize)
    : text_(std::move(text)), most_(bufferSize > 1 ? bufferSize - 1 : 1) {}

bool TextFileLines::next(std::wstring& piece) {
  if (at_ >= text_.size()) return false;
  const std::size_t end = text_.find(L'\n', at_);
  const std::size_t lineEnd = end == std::wstring::npos ? text_.size() : end + 1;
  const std::size_t take = std::min(lineEnd - at_, most_);
  piece.assign(text_, at_, take);
  at_ += take;
  return true;
}

}  // namespace platform
