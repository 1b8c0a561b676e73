// Wide text into UTF-16 file bytes.
#include "report/UnicodeFileText.h"

#include <cstring>

namespace zarvel {
namespace {

char* putUnit(char* out, char32_t unit) {
  *out++ = static_cast<char>(unit & 0xFF);
  *out++ = static_cast<char>((unit >> 8) & 0xFF);
  return out;
}

}  // namespace

UnicodeFileText::UnicodeFileText() {
  putUnit(room(2), 0xFEFF);
}

void UnicodeFileText::append(std::wstring_view text) {
  // At most two units, four bytes, a character; what is not used is given back.
  char* const start = room(4 * text.size());
  char* out = start;
  for (const wchar_t c : text) {
    const auto code = static_cast<char32_t>(c);
    if (c == L'\n') {
      out = putUnit(putUnit(out, U'\r'), U'\n');
    } else if (code < 0x10000) {
      out = putUnit(out, code);
    } else if (code <= 0x10FFFF) {
      // Platforms whose wide characters hold whole code points need pairs.
      out = putUnit(out, 0xD800 + ((code - 0x10000) >> 10));
      out = putUnit(out, 0xDC00 + ((code - 0x10000) & 0x3FF));
    } else {
      out = putUnit(out, 0xFFFD);
    }
  }
  used_ -= static_cast<std::size_t>(start + 4 * text.size() - out);
}

void UnicodeFileText::appendAscii(std::string_view text) {
  char* out = room(2 * text.size());
  for (const char c : text) {
    *out++ = c;
    *out++ = '\0';
  }
}

void UnicodeFileText::reserve(std::size_t more) {
  if (used_ + more <= capacity_) return;
  capacity_ = used_ + more;
  std::unique_ptr<char[]> larger(new char[capacity_]);
  if (used_ > 0) std::memcpy(larger.get(), bytes_.get(), used_);
  bytes_ = std::move(larger);
}

}  // namespace zarvel
