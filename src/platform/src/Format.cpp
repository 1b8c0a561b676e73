// formatText: printf-compatible formatting of wide text.
#include "platform/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <system_error>

#include "CharClass.h"

// Numbers go through std::to_chars, which is exact and ignores the locale, so a
// drawing gives the same texts on every machine.
namespace platform {
namespace {

using detail::asciiLower;
using detail::asciiUpper;
using detail::isDigit;

void appendAscii(std::wstring& out, std::string_view text) {
  for (char c : text) out.push_back(static_cast<wchar_t>(static_cast<unsigned char>(c)));
}

// Keeps a stray width such as "%999999999d" from exhausting memory; no text of
// the system comes near it.
constexpr long long kMaxWidth = 1 << 20;

struct Directive {
  bool left = false;
  bool plus = false;
  bool space = false;
  bool zero = false;
  bool alt = false;
  long long width = 0;
  long long precision = -1;  // -1: none given
  wchar_t conversion = 0;
};

const FormatArg kMissingArg(0);

class ArgCursor {
 public:
  ArgCursor(const FormatArg* begin, const FormatArg* end) : it_(begin), end_(end) {}
  const FormatArg& next() { return it_ == end_ ? kMissingArg : *it_++; }

 private:
  const FormatArg* it_;
  const FormatArg* end_;
};

long long truncateToInteger(double v) {
  if (std::isnan(v)) return 0;
  if (v >= 9223372036854775808.0) return std::numeric_limits<long long>::max();
  if (v < -9223372036854775808.0) return std::numeric_limits<long long>::min();
  return static_cast<long long>(v);
}

long long integerOf(const FormatArg& arg) {
  switch (arg.kind()) {
    case FormatArg::Kind::Integer:
      return arg.integer();
    case FormatArg::Kind::Real:
      return truncateToInteger(arg.real());
    case FormatArg::Kind::Text:
      break;
  }
  return 0;
}

double realOf(const FormatArg& arg) {
  switch (arg.kind()) {
    case FormatArg::Kind::Integer:
      return static_cast<double>(arg.integer());
    case FormatArg::Kind::Real:
      return arg.real();
    case FormatArg::Kind::Text:
      break;
  }
  return 0.0;
}

// Pads prefix and body to the width: zeros go between the sign or "0x" and the
// digits, blanks go outside.
void writeField(std::wstring& out, const Directive& directive, std::string_view prefix,
                std::wstring_view body, bool zeroPad) {
  const size_t length = prefix.size() + body.size();
  const auto width = static_cast<size_t>(directive.width);  // never negative
  const size_t fill = width > length ? width - length : 0;
  if (directive.left) {
    appendAscii(out, prefix);
    out.append(body);
    out.append(fill, L' ');
  } else if (zeroPad) {
    appendAscii(out, prefix);
    out.append(fill, L'0');
    out.append(body);
  } else {
    out.append(fill, L' ');
    appendAscii(out, prefix);
    out.append(body);
  }
}

void writeField(std::wstring& out, const Directive& directive, std::string_view prefix,
                std::string_view body, bool zeroPad) {
  std::wstring wide;
  appendAscii(wide, body);
  writeField(out, directive, prefix, std::wstring_view(wide), zeroPad);
}

void formatInteger(std::wstring& out, const Directive& directive, const FormatArg& arg) {
  const long long raw = integerOf(arg);
  // A 32-bit argument shows 32 bits, as it would pass through the C runtime.
  const bool wide = arg.kind() != FormatArg::Kind::Integer || arg.isWide();
  const wchar_t conv = directive.conversion;
  std::string prefix;
  unsigned long long magnitude = 0;
  if (conv == L'd' || conv == L'i') {
    const long long v = wide ? raw : static_cast<std::int32_t>(static_cast<std::uint32_t>(raw));
    if (v < 0) {
      prefix = "-";
      magnitude = 0ULL - static_cast<unsigned long long>(v);
    } else {
      magnitude = static_cast<unsigned long long>(v);
      if (directive.plus)
        prefix = "+";
      else if (directive.space)
        prefix = " ";
    }
  } else {
    magnitude = wide ? static_cast<unsigned long long>(raw) : static_cast<std::uint32_t>(raw);
  }
  const int base = conv == L'o' ? 8 : (conv == L'x' || conv == L'X') ? 16 : 10;
  char buffer[72];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, magnitude, base);
  std::string digits(buffer, result.ptr);
  if (directive.precision == 0 && magnitude == 0) digits.clear();
  if (directive.precision > static_cast<long long>(digits.size())) {
    digits.insert(0, static_cast<size_t>(directive.precision) - digits.size(), '0');
  }
  if (conv == L'o' && directive.alt && (digits.empty() || digits[0] != '0')) digits.insert(0, "0");
  if (base == 16 && directive.alt && magnitude != 0) prefix = conv == L'X' ? "0X" : "0x";
  if (conv == L'X') {
    for (char& c : digits) c = asciiUpper(c);
  }
  writeField(out, directive, prefix, digits,
             directive.zero && !directive.left && directive.precision < 0);
}

// precision < 0 asks for the shortest exact form (only used for hexadecimal).
std::string realChars(double v, std::chars_format format, long long precision) {
  std::string buffer(static_cast<size_t>(400 + (precision > 0 ? precision : 0)), '\0');
  for (;;) {
    char* first = buffer.data();
    char* last = first + buffer.size();
    const auto result = precision < 0
                            ? std::to_chars(first, last, v, format)
                            : std::to_chars(first, last, v, format, static_cast<int>(precision));
    if (result.ec == std::errc()) {
      buffer.resize(static_cast<size_t>(result.ptr - first));
      return buffer;
    }
    buffer.resize(buffer.size() * 2);
  }
}

int exponentOf(const std::string& scientific) {
  const size_t e = scientific.find('e');
  int exponent = 0;
  const char* p = scientific.data() + e + 1;
  const bool negative = *p == '-';
  if (*p == '+' || *p == '-') ++p;
  std::from_chars(p, scientific.data() + scientific.size(), exponent);
  return negative ? -exponent : exponent;
}

// %g: the style of %e or %f, chosen by the exponent the value would show.
std::string generalChars(double v, long long precision, bool alt) {
  const long long significant = precision < 0 ? 6 : (precision == 0 ? 1 : precision);
  const std::string scientific = realChars(v, std::chars_format::scientific, significant - 1);
  const int exponent = exponentOf(scientific);
  std::string body = (significant > exponent && exponent >= -4)
                         ? realChars(v, std::chars_format::fixed, significant - 1 - exponent)
                         : scientific;
  const size_t mantissaEnd = std::min(body.find('e'), body.size());
  const size_t point = body.find('.');
  if (alt) {
    if (point == std::string::npos) body.insert(mantissaEnd, ".");
  } else if (point != std::string::npos && point < mantissaEnd) {
    size_t keep = mantissaEnd;
    while (keep > point + 1 && body[keep - 1] == '0') --keep;
    if (keep == point + 1) keep = point;
    body.erase(keep, mantissaEnd - keep);
  }
  return body;
}

void formatReal(std::wstring& out, const Directive& directive, double v) {
  const wchar_t conv = asciiLower(directive.conversion);
  const bool upper = conv != directive.conversion;
  std::string prefix = std::signbit(v) ? "-" : directive.plus ? "+" : directive.space ? " " : "";
  const double magnitude = std::fabs(v);
  const long long precision = directive.precision;
  bool zeroPad = directive.zero && !directive.left;
  std::string body;
  if (!std::isfinite(magnitude)) {
    body = std::isnan(magnitude) ? "nan" : "inf";
    zeroPad = false;
  } else if (conv == L'f') {
    body = realChars(magnitude, std::chars_format::fixed, precision < 0 ? 6 : precision);
    if (directive.alt && body.find('.') == std::string::npos) body += '.';
  } else if (conv == L'e') {
    body = realChars(magnitude, std::chars_format::scientific, precision < 0 ? 6 : precision);
    if (directive.alt && body.find('.') == std::string::npos) body.insert(body.find('e'), ".");
  } else if (conv == L'g') {
    body = generalChars(magnitude, precision, directive.alt);
  } else {
    prefix += "0x";
    body = realChars(magnitude, std::chars_format::hex, precision);
    if (directive.alt && body.find('.') == std::string::npos) body.insert(body.find('p'), ".");
  }
  if (upper) {
    for (char& c : prefix) c = asciiUpper(c);
    for (char& c : body) c = asciiUpper(c);
  }
  writeField(out, directive, prefix, body, zeroPad);
}

long long readNumber(std::wstring_view format, size_t& i) {
  long long value = 0;
  for (; i < format.size() && isDigit(format[i]); ++i) {
    value = std::min(value * 10 + (format[i] - L'0'), kMaxWidth);
  }
  return value;
}

void skipLengthModifier(std::wstring_view format, size_t& i) {
  while (i < format.size()) {
    const wchar_t c = format[i];
    if (c == L'h' || c == L'l' || c == L'L' || c == L'j' || c == L'z' || c == L't' || c == L'q' ||
        c == L'w') {
      ++i;
    } else if (c == L'I') {
      ++i;
      const std::wstring_view rest = format.substr(i, 2);
      if (rest == L"32" || rest == L"64") i += 2;
    } else {
      return;
    }
  }
}

// The flags of a directive, from just past its '%'.
void readFlags(std::wstring_view format, size_t& i, Directive& directive) {
  for (; i < format.size(); ++i) {
    switch (format[i]) {
      case L'-': directive.left = true; break;
      case L'+': directive.plus = true; break;
      case L' ': directive.space = true; break;
      case L'0': directive.zero = true; break;
      case L'#': directive.alt = true; break;
      default: return;
    }
  }
}

// Width and precision, written out or taken from the arguments by "*".
void readWidthAndPrecision(std::wstring_view format, size_t& i, ArgCursor& cursor,
                           Directive& directive) {
  if (i < format.size() && format[i] == L'*') {
    ++i;
    const long long width = integerOf(cursor.next());
    if (width < 0) directive.left = true;
    directive.width = std::min(width < 0 ? -width : width, kMaxWidth);
  } else {
    directive.width = readNumber(format, i);
  }
  if (i < format.size() && format[i] == L'.') {
    ++i;
    if (i < format.size() && format[i] == L'*') {
      ++i;
      const long long precision = integerOf(cursor.next());
      directive.precision = precision < 0 ? -1 : std::min(precision, kMaxWidth);
    } else {
      directive.precision = readNumber(format, i);
    }
  }
}

// Writes one conversion; false for one the C runtime does not know, which the
// caller shows as written, as the C runtime of the hosts does.
bool writeConversion(std::wstring& out, const Directive& directive, ArgCursor& cursor) {
  switch (directive.conversion) {
    case L'd':
    case L'i':
    case L'u':
    case L'o':
    case L'x':
    case L'X':
      formatInteger(out, directive, cursor.next());
      return true;
    case L'f':
    case L'F':
    case L'e':
    case L'E':
    case L'g':
    case L'G':
    case L'a':
    case L'A':
      formatReal(out, directive, realOf(cursor.next()));
      return true;
    case L'c':
    case L'C': {
      const wchar_t c = static_cast<wchar_t>(integerOf(cursor.next()));
      writeField(out, directive, "", std::wstring_view(&c, 1), false);
      return true;
    }
    case L's':
    case L'S': {
      const FormatArg& arg = cursor.next();
      std::wstring_view text = arg.kind() == FormatArg::Kind::Text ? arg.text() : L"";
      if (directive.precision >= 0) text = text.substr(0, static_cast<size_t>(directive.precision));
      writeField(out, directive, "", text, false);
      return true;
    }
    case L'%':
      out.push_back(L'%');
      return true;
    default:
      return false;
  }
}

}  // namespace

std::wstring formatText(std::wstring_view format, std::initializer_list<FormatArg> args) {
  std::wstring out;
  out.reserve(format.size() + 16);
  ArgCursor cursor(args.begin(), args.end());
  size_t i = 0;
  while (i < format.size()) {
    const size_t percent = format.find(L'%', i);
    if (percent == std::wstring_view::npos) {
      out.append(format.substr(i));
      break;
    }
    out.append(format.substr(i, percent - i));
    i = percent + 1;
    Directive directive;
    readFlags(format, i, directive);
    readWidthAndPrecision(format, i, cursor, directive);
    skipLengthModifier(format, i);
    if (i >= format.size()) {  // a directive cut off by the end shows as written
      out.append(format.substr(percent));
      break;
    }
    directive.conversion = format[i++];
    if (!writeConversion(out, directive, cursor)) out.append(format.substr(percent, i - percent));
  }
  return out;
}

}  // namespace platform
