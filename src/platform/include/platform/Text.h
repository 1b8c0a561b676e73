// Text services shared by the module and its hosts: printf-compatible
// formatting and the C runtime's number parsing, reproduced exactly and
// independent of the machine's locale; case folding; UTF-8.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Geometry.h"

namespace platform {

// One argument of formatText: an integer, a real or a text.
class FormatArg {
 public:
  enum class Kind { Integer, Real, Text };
  FormatArg(int v) : kind_(Kind::Integer), integer_(v) {}  // NOLINT
  FormatArg(long v)                                        // NOLINT
      : kind_(Kind::Integer), integer_(v), wide_(sizeof(long) > 4) {}
  FormatArg(long long v) : kind_(Kind::Integer), integer_(v), wide_(true) {}  // NOLINT
  FormatArg(unsigned v) : kind_(Kind::Integer), integer_(v) {}                // NOLINT
  FormatArg(double v) : kind_(Kind::Real), real_(v) {}                        // NOLINT
  FormatArg(const wchar_t* v) : kind_(Kind::Text), text_(v ? v : L"") {}      // NOLINT
  FormatArg(std::wstring_view v) : kind_(Kind::Text), text_(v) {}             // NOLINT
  FormatArg(const std::wstring& v) : kind_(Kind::Text), text_(v) {}           // NOLINT

  Kind kind() const { return kind_; }
  long long integer() const { return integer_; }
  double real() const { return real_; }
  std::wstring_view text() const { return text_; }
  // An integer argument of 64 bits; the others are 32-bit, so that %u and %x of
  // a negative int show 32 bits as the C runtime does.
  bool isWide() const { return wide_; }

 private:
  Kind kind_;
  long long integer_ = 0;
  double real_ = 0.0;
  std::wstring_view text_;
  bool wide_ = false;
};

// Formats like the C runtime's wide swprintf: flags "-+ 0#", width and
// precision (also "*"), length modifiers h l ll L I64 (accepted, sizes follow
// the argument), conversions d i u o x X c s S f F e E g G a A % . In a wide
// format %s takes a wide text. A missing argument formats as 0 or ""; an
// integer given for a real converts (and a real for an integer truncates), a
// text given for a number formats as 0 and a number given for a text as "".
std::wstring formatText(std::wstring_view format, std::initializer_list<FormatArg> args);

template <typename... Args>
std::wstring format(std::wstring_view fmt, const Args&... args) {
  return formatText(fmt, {FormatArg(args)...});
}

// _wtoi: leading white space, an optional sign, decimal digits; 0 when there
// is no number; saturates at the limits of a 32-bit int on overflow.
std::int32_t wtoi(std::wstring_view text);

// _wtof: leading white space, an optional sign, then a decimal number with an
// optional exponent, a hexadecimal number, "inf", "infinity" or "nan"; 0 when
// there is no number.
double wtof(std::wstring_view text);

// swscanf(text, L"%lf,%lf,%lf", ...): the number of fields assigned (0 to 3),
// stored into out in the order x, y, z; fields not reached keep their values.
// Like swscanf, a text that is empty or only white space gives -1 (EOF).
int scanPoint(std::wstring_view text, Point3d& out);

// Whole numbers in narrow text as files write them, locale-free: blanks (space,
// tab) may stand around the number and nothing else; anything that does not
// read whole gives nothing. A real: an optional sign (also '+'), digits with an
// optional point, an optional exponent; infinities, NaNs and values out of
// range are refused. An integer: an optional sign and decimal digits, within
// 64 bits.
std::optional<double> parseDouble(std::string_view text);
std::optional<std::int64_t> parseInt(std::string_view text);

// The host's lower-casing of wide text: simple one-to-one case mappings of
// ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic; other characters stay.
std::wstring lowerCase(std::wstring_view text);
bool equalsIgnoreCase(std::wstring_view a, std::wstring_view b);

// Appends one code point in UTF-8; the caller keeps surrogates and values past
// U+10FFFF out.
void appendUtf8(std::string& out, char32_t codePoint);

// UTF-8 conversions. Invalid input bytes become U+FFFD.
std::string toUtf8(std::wstring_view text);
std::wstring fromUtf8(std::string_view text);

}  // namespace platform
