// Number formatting for the tag writer, through to_chars so that it is locale-free and exact.
#include "TagWriter.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace host::dxf {

void TagWriter::writeCode(int code) {
  if (code >= 0 && code < 10) {
    const char text[3] = {' ', ' ', static_cast<char>('0' + code)};
    out_.append(text, 3);
  } else if (code >= 10 && code < 100) {
    const char text[3] = {' ', static_cast<char>('0' + code / 10),
                          static_cast<char>('0' + code % 10)};
    out_.append(text, 3);
  } else {
    char text[16];
    const auto result = std::to_chars(text, text + sizeof text, code);
    const auto length = static_cast<std::size_t>(result.ptr - text);
    if (length < 3) out_.append(3 - length, ' ');
    out_.append(text, length);
  }
  endLine();
}

void TagWriter::write(int code, std::string_view value) {
  writeCode(code);
  out_.append(value);
  endLine();
}

void TagWriter::write(int code, std::int64_t value) {
  writeCode(code);
  char text[24];
  const auto result = std::to_chars(text, text + sizeof text, value);
  out_.append(text, static_cast<std::size_t>(result.ptr - text));
  endLine();
}

void TagWriter::write(int code, double value) {
  writeCode(code);
  if (std::isnan(value)) {
    out_.append("nan");
  } else if (std::isinf(value)) {
    out_.append(value < 0 ? "-inf" : "inf");
  } else {
    // Plain decimals for the magnitudes drawings use, so that 100000 is not written "1e+05";
    // exponents only where plain digits would run long.
    const double magnitude = std::fabs(value);
    const bool plain = magnitude == 0.0 || (magnitude >= 1e-5 && magnitude < 1e15);
    char text[64];
    const auto result =
        plain ? std::to_chars(text, text + sizeof text - 2, value, std::chars_format::fixed)
              : std::to_chars(text, text + sizeof text - 2, value);
    auto length = static_cast<std::size_t>(result.ptr - text);
    if (!std::memchr(text, '.', length) && !std::memchr(text, 'e', length)) {
      text[length++] = '.';
      text[length++] = '0';
    }
    out_.append(text, length);
  }
  endLine();
}

void TagWriter::write(int code, bool value) {
  writeCode(code);
  out_.push_back(value ? '1' : '0');
  endLine();
}

void TagWriter::writeHandle(int code, std::uint64_t handle) {
  writeCode(code);
  static constexpr char kDigits[] = "0123456789ABCDEF";
  char text[16];
  char* p = text + sizeof text;
  do {
    *--p = kDigits[handle & 0xF];
    handle >>= 4;
  } while (handle != 0);
  out_.append(p, static_cast<std::size_t>(text + sizeof text - p));
  endLine();
}

}  // namespace host::dxf
