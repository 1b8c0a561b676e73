// Appends tags to a text buffer in the layout ASCII drawing files use: the group code
// right-aligned in three columns on one line, the value on the next.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace host::dxf {

enum class LineEnd { Lf, CrLf };

class TagWriter {
 public:
  // The buffer must outlive the writer; tags are appended to what it already holds.
  explicit TagWriter(std::string& out, LineEnd lineEnd = LineEnd::Lf)
      : out_(out), lineEnd_(lineEnd) {}

  // The value is written as it is; it must not hold a line end.
  void write(int code, std::string_view value);
  // Without this a string literal would pick the bool overload.
  void write(int code, const char* value) { write(code, std::string_view(value)); }
  void write(int code, const std::string& value) { write(code, std::string_view(value)); }
  // Any other pointer (a wide string, say) would be written as the bool "1".
  template <typename T>
  void write(int code, T* value) = delete;
  void write(int code, std::int64_t value);
  // Other integer types. Not char, whose meaning (a number or a letter) would be a guess, and not
  // unsigned 64-bit ones, which is what handles are: those go through writeHandle.
  template <typename T,
            typename = std::enable_if_t<
                std::is_integral_v<T> && !std::is_same_v<T, bool> && !std::is_same_v<T, char> &&
                !std::is_same_v<T, std::int64_t> && !(std::is_unsigned_v<T> && sizeof(T) == 8)>>
  void write(int code, T value) {
    write(code, static_cast<std::int64_t>(value));
  }
  // The shortest text that reads back as the same double, always with a point or an exponent
  // so that readers see a real: plain decimals from 1e-5 to 1e15 ("1.0", "0.1", "100000.0"),
  // the shorter of plain and exponent form outside it ("1e+20", "1.5e-07"). Infinities and NaN,
  // which have no such text, are written "inf", "-inf" and "nan".
  void write(int code, double value);
  // 1 or 0.
  void write(int code, bool value);
  // Upper-case hexadecimal without leading zeros ("1F", "0").
  void writeHandle(int code, std::uint64_t handle);
  // Bytes already in the file's layout, appended verbatim (a span copied from the source).
  void writeRaw(std::string_view bytes) { out_.append(bytes); }

  std::string& buffer() { return out_; }
  LineEnd lineEnd() const { return lineEnd_; }

 private:
  void writeCode(int code);
  void endLine() {
    if (lineEnd_ == LineEnd::CrLf) out_.push_back('\r');
    out_.push_back('\n');
  }

  std::string& out_;
  LineEnd lineEnd_;
};

}  // namespace host::dxf
