// wtoi, wtof and scanPoint: the C runtime's number parsing of wide text.
#include "platform/Text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string>
#include <system_error>

#include "CharClass.h"

// Numbers go through std::from_chars, which is exact and ignores the locale, so
// a drawing reads the same on every machine.
namespace platform {
namespace {

using detail::asciiLower;
using detail::isDigit;
using detail::isHexDigit;
using detail::isSpace;

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

}  // namespace

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

}  // namespace platform
