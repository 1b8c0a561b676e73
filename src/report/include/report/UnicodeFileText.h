// Text as a file written in the wide text mode of the module's platform holds
// it: UTF-16 little endian behind a byte-order mark, each line feed written
// as carriage return and line feed.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace zarvel {

class UnicodeFileText {
 public:
  UnicodeFileText();

  void append(std::wstring_view text);
  // Text known to be ASCII without line feeds, such as a formatted number.
  void appendAscii(std::string_view text);
  void newLine() { appendAscii("\r\n"); }
  // Room for that many more bytes, so that a large text is not copied as it grows.
  void reserve(std::size_t more);

  // The file's bytes so far; offsets into them stay valid while text is added.
  std::size_t size() const { return used_; }
  const char* data() const { return bytes_.get(); }
  std::string_view view() const { return {bytes_.get(), used_}; }

 private:
  // Hands out the next n bytes, which the caller fills.
  char* room(std::size_t n) {
    if (used_ + n > capacity_) reserve(n > capacity_ ? n : capacity_);
    char* out = bytes_.get() + used_;
    used_ += n;
    return out;
  }

  // Filled up to used_; the rest is room to come, left untouched (and so
  // not even mapped) until it is written.
  std::unique_ptr<char[]> bytes_;
  std::size_t capacity_ = 0;
  std::size_t used_ = 0;
};

}  // namespace zarvel
