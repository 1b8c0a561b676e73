// Text as a file written in the wide text mode of the module's platform holds
// it: UTF-16 little endian behind a byte-order mark, each line feed written
// as carriage return and line feed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zarvel {

class UnicodeFileText {
 public:
  UnicodeFileText();

  void append(std::wstring_view text);
  // Text known to be ASCII without line feeds, such as a formatted number.
  void appendAscii(std::string_view text);
  void newLine();

  // The file's bytes so far; offsets into them stay valid while text is added.
  const std::string& bytes() const { return bytes_; }
  std::string takeBytes() { return std::move(bytes_); }

 private:
  void appendUnit(char16_t unit) {
    bytes_.push_back(static_cast<char>(unit & 0xFF));
    bytes_.push_back(static_cast<char>(unit >> 8));
  }

  std::string bytes_;
};

}  // namespace zarvel
