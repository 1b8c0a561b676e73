// Text files as the platform's wide text mode reads them: a UTF-16 byte-order
// mark means UTF-16, valid UTF-8 is read as UTF-8, anything else in the narrow
// code page the host gives; carriage return and line feed read as one line
// feed. Lines come out as a fixed buffer of wide characters takes them.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace platform {

// Turns the bytes of a file that is neither UTF-16 nor UTF-8 into wide text.
using NarrowDecoder = std::function<std::wstring(std::string_view)>;

// Each byte as the character of that code (Latin-1): the decoder of a host
// that knows no code page.
std::wstring latin1Text(std::string_view bytes);

// The whole text of a file's bytes. A UTF-8 byte-order mark is dropped, and so
// is a UTF-16 one; an odd last byte of UTF-16 text is dropped, unpaired
// surrogates become U+FFFD. Null characters stay.
std::wstring decodeTextFile(std::string_view bytes, const NarrowDecoder& narrow);

// Hands out the text in the pieces a read into a buffer of bufferSize wide
// characters gives: a line with its line feed, or, for a longer one, the
// bufferSize - 1 characters that fit, the rest following as further pieces.
class TextFileLines {
 public:
  static constexpr std::size_t kBufferSize = 10240;

  explicit TextFileLines(std::wstring text, std::size_t bufferSize = kBufferSize);

  // The next piece, line feed included where the piece ends a line; false at
  // the end of the text.
  bool next(std::wstring& piece);

 private:
  std::wstring text_;
  std::size_t at_ = 0;
  std::size_t most_;
};

}  // namespace platform
