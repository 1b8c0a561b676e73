// Formatting, number parsing, case folding and UTF-8 for wide text. Numbers go
// through std::to_chars and std::from_chars, which are exact and ignore the
// locale, so a drawing gives the same texts on every machine.
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace platform {
namespace {

bool isSpace(wchar_t c) {
  return c == L' ' || (c >= L'\t' && c <= L'\r');
}
bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}
bool isHexDigit(wchar_t c) {
  return isDigit(c) || (c >= L'a' && c <= L'f') || (c >= L'A' && c <= L'F');
}
wchar_t asciiLower(wchar_t c) {
  return (c >= L'A' && c <= L'Z') ? c + (L'a' - L'A') : c;
}
char asciiUpper(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

void appendAscii(std::wstring& out, std::string_view text) {
  for (char c : text) out.push_back(static_cast<wchar_t>(static_cast<unsigned char>(c)));
}

// ---------------------------------------------------------------------------
// Formatting

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

// ---------------------------------------------------------------------------
// Number parsing

// For a number that from_chars finds out of range: whether it overflows
// (rather than underflows), judged from its decimal or binary exponent.
bool overflows(std::string_view number, bool hex) {
  const char exponentMark = hex ? 'p' : 'e';
  long long position = 0;
  bool nonZero = false;
  bool afterPoint = false;
  size_t i = 0;
  for (; i < number.size() && (number[i] | 0x20) != exponentMark; ++i) {
    if (number[i] == '.') {
      afterPoint = true;
    } else if (!nonZero && number[i] == '0') {
      if (afterPoint) --position;
    } else {
      nonZero = true;
      if (!afterPoint) ++position;
    }
  }
  long long exponent = 0;
  if (i < number.size()) {
    ++i;
    const bool negative = i < number.size() && number[i] == '-';
    if (i < number.size() && (number[i] == '-' || number[i] == '+')) ++i;
    for (; i < number.size() && isDigit(number[i]); ++i) {
      exponent = std::min(exponent * 10 + (number[i] - '0'), 1'000'000'000LL);
    }
    if (negative) exponent = -exponent;
  }
  return exponent + (hex ? 4 * position : position) > 0;
}

// strtod on narrow text without leading white space: the characters used, 0
// when the text holds no number.
size_t parseReal(std::string_view text, double& value) {
  size_t start = 0;
  const bool negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) start = 1;
  const std::string_view body = text.substr(start);
  if (body.empty() || body[0] == '-' || body[0] == '+') return 0;
  const bool hex = body.size() >= 2 && body[0] == '0' && (body[1] | 0x20) == 'x';
  // from_chars knows neither the "0x" prefix nor a sign after it, and would
  // take "inf" as a hexadecimal number.
  const std::string_view digits = hex ? body.substr(2) : body;
  double v = 0.0;
  std::from_chars_result result{digits.data(), std::errc::invalid_argument};
  if (!hex || (!digits.empty() && (isHexDigit(digits[0]) || digits[0] == '.'))) {
    result = std::from_chars(digits.data(), digits.data() + digits.size(), v,
                             hex ? std::chars_format::hex : std::chars_format::general);
  }
  if (result.ec == std::errc::invalid_argument) {
    if (!hex) return 0;
    value = negative ? -0.0 : 0.0;  // "0x" without digits: the number is the "0"
    return start + 1;
  }
  const size_t used = static_cast<size_t>(result.ptr - digits.data());
  if (result.ec == std::errc::result_out_of_range) {
    v = overflows(digits.substr(0, used), hex) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  value = negative ? -v : v;
  return start + (body.size() - digits.size()) + used;
}

// Letters take part as hexadecimal digits, exponent marks, "inf", "nan" and
// the characters of "nan(...)".
bool mayBelongToNumber(wchar_t c) {
  return isDigit(c) || (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || c == L'.' ||
         c == L'+' || c == L'-' || c == L'(' || c == L')' || c == L'_';
}

// The number at the start of a wide text (no white space skipped).
size_t parseReal(std::wstring_view text, double& value) {
  std::string narrow;
  for (size_t i = 0; i < text.size() && mayBelongToNumber(text[i]); ++i) {
    narrow.push_back(static_cast<char>(text[i]));
  }
  return parseReal(std::string_view(narrow), value);
}

// One %lf of swscanf at pos: 1 when a number was stored, 0 on a matching
// failure, -1 when the text ended before the field began. The conversion reads
// greedily as the C runtime does, so "1e" is taken whole and converts as 1.
int scanReal(std::wstring_view text, size_t& pos, double& value) {
  const size_t n = text.size();
  while (pos < n && isSpace(text[pos])) ++pos;
  if (pos == n) return -1;
  std::string taken;
  size_t i = pos;
  size_t signs = 0;
  auto takeWord = [&](std::string_view word) {
    for (char expected : word) {
      if (i >= n || asciiLower(text[i]) != static_cast<wchar_t>(expected)) return false;
      taken.push_back(expected);
      ++i;
    }
    return true;
  };
  if (text[i] == L'-' || text[i] == L'+') {
    taken.push_back(static_cast<char>(text[i++]));
    signs = 1;
    if (i == n) return 0;
  }
  const wchar_t first = asciiLower(text[i]);
  if (first == L'n') {
    if (!takeWord("nan")) return 0;
  } else if (first == L'i') {
    if (!takeWord("inf")) return 0;
    if (i < n && asciiLower(text[i]) == L'i' && !takeWord("inity")) return 0;
  } else {
    bool hex = false;
    bool gotDigit = false;
    bool gotDot = false;
    bool gotExponent = false;
    char exponentMark = 'e';
    if (text[i] == L'0') {
      taken.push_back('0');
      ++i;
      if (i < n && asciiLower(text[i]) == L'x') {
        taken.push_back('x');
        ++i;
        hex = true;
        exponentMark = 'p';
      } else {
        gotDigit = true;
      }
    }
    for (; i < n; ++i) {
      const wchar_t c = text[i];
      const bool digit = isDigit(c) || (hex && !gotExponent && isHexDigit(c));
      const bool exponentSign =
          gotExponent && taken.back() == exponentMark && (c == L'-' || c == L'+');
      const bool exponent =
          gotDigit && !gotExponent && asciiLower(c) == static_cast<wchar_t>(exponentMark);
      const bool point = !gotDot && c == L'.';
      if (!(digit || exponentSign || exponent || point)) break;
      gotDigit = gotDigit || digit;
      gotExponent = gotExponent || exponent;
      gotDot = gotDot || exponent || point;
      taken.push_back(static_cast<char>(asciiLower(c)));
    }
    if (taken.size() == signs || (hex && taken.size() == signs + 2)) return 0;
  }
  pos = i;
  double v = 0.0;
  if (parseReal(std::string_view(taken), v) == 0) return 0;
  value = v;
  return 1;
}

// ---------------------------------------------------------------------------
// Case folding

constexpr int kLowerTableSize = 0x180;

constexpr std::array<char16_t, kLowerTableSize> makeLowerTable() {
  std::array<char16_t, kLowerTableSize> table{};
  for (int c = 0; c < kLowerTableSize; ++c) table[c] = static_cast<char16_t>(c);
  auto lowerByOne = [&table](int from, int to) {  // upper-case letters at from, from+2, ...
    for (int c = from; c <= to; c += 2) table[c] = static_cast<char16_t>(c + 1);
  };
  for (int c = 'A'; c <= 'Z'; ++c) table[c] = static_cast<char16_t>(c + 0x20);
  for (int c = 0xC0; c <= 0xDE; ++c) {
    if (c != 0xD7) table[c] = static_cast<char16_t>(c + 0x20);
  }
  lowerByOne(0x100, 0x12E);
  table[0x130] = u'i';
  lowerByOne(0x132, 0x136);
  lowerByOne(0x139, 0x147);
  lowerByOne(0x14A, 0x176);
  table[0x178] = 0xFF;
  lowerByOne(0x179, 0x17D);
  return table;
}

constexpr std::array<char16_t, kLowerTableSize> kLowerTable = makeLowerTable();

wchar_t lowerChar(wchar_t c) {
  // wchar_t is signed on some systems and unsigned on others; a wide character
  // is no signed char, whatever the checker thinks.
  const long unit = c;  // NOLINT(bugprone-signed-char-misuse)
  if (unit >= 0 && unit < kLowerTableSize) return static_cast<wchar_t>(kLowerTable[unit]);
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 0x20;
  if (c >= 0x410 && c <= 0x42F) return c + 0x20;
  if (c >= 0x400 && c <= 0x40F) return c + 0x50;
  return c;
}

// ---------------------------------------------------------------------------
// UTF-8

constexpr char32_t kReplacement = 0xFFFD;

void appendCodePoint(std::wstring& out, char32_t cp) {
  if constexpr (sizeof(wchar_t) == 2) {
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out.push_back(static_cast<wchar_t>(0xD800 + (cp >> 10)));
      out.push_back(static_cast<wchar_t>(0xDC00 + (cp & 0x3FF)));
      return;
    }
  }
  out.push_back(static_cast<wchar_t>(cp));
}

void appendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out.push_back(static_cast<char>(cp));
  } else if (cp < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else if (cp < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
  }
}

bool isSurrogate(char32_t cp) {
  return cp >= 0xD800 && cp <= 0xDFFF;
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
    for (bool flags = true; flags && i < format.size(); ++i) {
      switch (format[i]) {
        case L'-':
          directive.left = true;
          break;
        case L'+':
          directive.plus = true;
          break;
        case L' ':
          directive.space = true;
          break;
        case L'0':
          directive.zero = true;
          break;
        case L'#':
          directive.alt = true;
          break;
        default:
          flags = false;
          --i;
          break;
      }
    }
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
    skipLengthModifier(format, i);
    if (i >= format.size()) {  // a directive cut off by the end shows as written
      out.append(format.substr(percent));
      break;
    }
    directive.conversion = format[i++];
    switch (directive.conversion) {
      case L'd':
      case L'i':
      case L'u':
      case L'o':
      case L'x':
      case L'X':
        formatInteger(out, directive, cursor.next());
        break;
      case L'f':
      case L'F':
      case L'e':
      case L'E':
      case L'g':
      case L'G':
      case L'a':
      case L'A':
        formatReal(out, directive, realOf(cursor.next()));
        break;
      case L'c':
      case L'C': {
        const wchar_t c = static_cast<wchar_t>(integerOf(cursor.next()));
        writeField(out, directive, "", std::wstring_view(&c, 1), false);
        break;
      }
      case L's':
      case L'S': {
        const FormatArg& arg = cursor.next();
        std::wstring_view text = arg.kind() == FormatArg::Kind::Text ? arg.text() : L"";
        if (directive.precision >= 0)
          text = text.substr(0, static_cast<size_t>(directive.precision));
        writeField(out, directive, "", text, false);
        break;
      }
      case L'%':
        out.push_back(L'%');
        break;
      default:  // an unknown conversion shows as written, as the C runtime of the hosts does
        out.append(format.substr(percent, i - percent));
        break;
    }
  }
  return out;
}

std::int32_t wtoi(std::wstring_view text) {
  size_t i = 0;
  while (i < text.size() && isSpace(text[i])) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == L'-' || text[i] == L'+')) negative = text[i++] == L'-';
  constexpr long long kLimit = 1LL << 31;
  long long value = 0;
  for (; i < text.size() && isDigit(text[i]); ++i) {
    value = std::min(value * 10 + (text[i] - L'0'), kLimit);
  }
  if (negative) return static_cast<std::int32_t>(-value);
  return static_cast<std::int32_t>(std::min(value, kLimit - 1));
}

double wtof(std::wstring_view text) {
  size_t i = 0;
  while (i < text.size() && isSpace(text[i])) ++i;
  double value = 0.0;
  return parseReal(text.substr(i), value) == 0 ? 0.0 : value;
}

int scanPoint(std::wstring_view text, Point3d& out) {
  // The runtime reads a C string: an embedded NUL ends the text.
  text = text.substr(0, text.find(L'\0'));
  double* const fields[] = {&out.x, &out.y, &out.z};
  size_t pos = 0;
  int assigned = 0;
  for (double* field : fields) {
    if (assigned > 0) {
      if (pos >= text.size() || text[pos] != L',') return assigned;
      ++pos;
    }
    double value = 0.0;
    const int result = scanReal(text, pos, value);
    if (result < 0) return assigned == 0 ? -1 : assigned;
    if (result == 0) return assigned;
    *field = value;
    ++assigned;
  }
  return assigned;
}

std::wstring lowerCase(std::wstring_view text) {
  std::wstring out(text);
  for (wchar_t& c : out) c = lowerChar(c);
  return out;
}

bool equalsIgnoreCase(std::wstring_view a, std::wstring_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] != b[i] && lowerChar(a[i]) != lowerChar(b[i])) return false;
  }
  return true;
}

std::string toUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    char32_t cp = static_cast<char32_t>(text[i]);
    if constexpr (sizeof(wchar_t) == 2) {
      cp &= 0xFFFF;
      if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < text.size()) {
        const char32_t low = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
        if (low >= 0xDC00 && low <= 0xDFFF) {
          cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
          ++i;
        }
      }
    }
    if (isSurrogate(cp) || cp > 0x10FFFF) cp = kReplacement;
    appendUtf8(out, cp);
  }
  return out;
}

std::wstring fromUtf8(std::string_view text) {
  std::wstring out;
  out.reserve(text.size());
  size_t i = 0;
  while (i < text.size()) {
    const unsigned char lead = static_cast<unsigned char>(text[i++]);
    if (lead < 0x80) {
      out.push_back(static_cast<wchar_t>(lead));
      continue;
    }
    // The ranges of the second byte exclude overlong forms, surrogates and
    // code points above U+10FFFF, so every accepted sequence is valid.
    int continuation = 0;
    char32_t cp = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
      continuation = 1;
      cp = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      continuation = 2;
      cp = lead & 0x0F;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      continuation = 3;
      cp = lead & 0x07;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      appendCodePoint(out, kReplacement);
      continue;
    }
    // A broken sequence becomes one replacement character; the byte that broke
    // it starts afresh.
    bool complete = true;
    for (int k = 0; k < continuation; ++k) {
      const unsigned char byte = i < text.size() ? static_cast<unsigned char>(text[i]) : 0;
      if (i >= text.size() || byte < low || byte > high) {
        complete = false;
        break;
      }
      cp = (cp << 6) | (byte & 0x3F);
      low = 0x80;
      high = 0xBF;
      ++i;
    }
    appendCodePoint(out, complete ? cp : kReplacement);
  }
  return out;
}

}  // namespace platform
