// Wide text into UTF-16 file bytes.
#include "report/UnicodeFileText.h"

namespace zarvel {

UnicodeFileText::UnicodeFileText() : bytes_("\xFF\xFE") {}

void UnicodeFileText::append(std::wstring_view text) {
  for (const wchar_t c : text) {
    const auto code = static_cast<char32_t>(c);
    if (c == L'\n') {
      newLine();
    } else if (code < 0x10000) {
      appendUnit(static_cast<char16_t>(code));
    } else if (code <= 0x10FFFF) {
      // Platforms whose wide characters hold whole code points need pairs.
      appendUnit(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
      appendUnit(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    } else {
      appendUnit(u'\uFFFD');
    }
  }
}

void UnicodeFileText::appendAscii(std::string_view text) {
  const std::size_t at = bytes_.size();
  bytes_.resize(at + 2 * text.size());
  char* out = bytes_.data() + at;
  for (const char c : text) {
    *out++ = c;
    *out++ = '\0';
  }
}

void UnicodeFileText::newLine() {
  appendAscii("\r\n");
}

}  // namespace zarvel
