// Rounding through the printed form. The commands print and read back a
// million numbers a run, so the usual ones take a short exact route: the
// digits printf would print, worked out in whole numbers, and read back by one
// correctly rounded division, which is what reading the digits gives. Any
// other number goes the long way, through the standard library's exact
// conversions.
#include "values/Rounding.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

namespace zarvel {
namespace {

constexpr int kMaxShortDecimals = 18;
constexpr std::uint64_t kPowersOfTen[kMaxShortDecimals + 1] = {
    1ULL,
    10ULL,
    100ULL,
    1000ULL,
    10000ULL,
    100000ULL,
    1000000ULL,
    10000000ULL,
    100000000ULL,
    1000000000ULL,
    10000000000ULL,
    100000000000ULL,
    1000000000000ULL,
    10000000000000ULL,
    100000000000000ULL,
    1000000000000000ULL,
    10000000000000000ULL,
    100000000000000000ULL,
    1000000000000000000ULL,
};
// Whole numbers up to this are exact in a double.
constexpr std::uint64_t kExactLimit = 1ULL << 53;

// A 128-bit product in two halves, written out so that every compiler of
// the module's hosts takes it.
struct Product {
  std::uint64_t high;
  std::uint64_t low;
};

Product multiply(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t kHalf = 0xFFFFFFFFULL;
  const std::uint64_t lowLow = (a & kHalf) * (b & kHalf);
  const std::uint64_t lowHigh = (a & kHalf) * (b >> 32);
  const std::uint64_t highLow = (a >> 32) * (b & kHalf);
  const std::uint64_t middle = (lowLow >> 32) + (lowHigh & kHalf) + (highLow & kHalf);
  return {(a >> 32) * (b >> 32) + (lowHigh >> 32) + (highLow >> 32) + (middle >> 32),
          (middle << 32) | (lowLow & kHalf)};
}

// The product shifted right by 1 to 127 bits, rounded half to even; false
// when the result needs more than 64 bits.
bool shiftRounded(const Product& p, int shift, std::uint64_t& whole) {
  bool above = false;  // the bits shifted out against half of the last bit kept
  bool half = false;
  if (shift < 64) {
    if ((p.high >> shift) != 0) return false;
    whole = (p.high << (64 - shift)) | (p.low >> shift);
    const std::uint64_t rest = p.low & ((1ULL << shift) - 1);
    const std::uint64_t halfway = 1ULL << (shift - 1);
    above = rest > halfway;
    half = rest == halfway;
  } else if (shift == 64) {
    whole = p.high;
    above = p.low > (1ULL << 63);
    half = p.low == (1ULL << 63);
  } else {
    const int highShift = shift - 64;
    whole = p.high >> highShift;
    const std::uint64_t rest = p.high & ((1ULL << highShift) - 1);
    const std::uint64_t halfway = 1ULL << (highShift - 1);
    above = rest > halfway || (rest == halfway && p.low != 0);
    half = rest == halfway && p.low == 0;
  }
  if (above || (half && (whole & 1) != 0)) ++whole;
  return true;
}

// The magnitude times ten to the decimals, rounded half to even as printf
// rounds the exact binary value: the digits it prints, without the point.
// False when those digits are more than a double holds exactly.
bool printedDigits(double value, int decimals, std::uint64_t& digits) {
  const double magnitude = std::fabs(value);
  if (decimals > kMaxShortDecimals || !(magnitude < static_cast<double>(kExactLimit))) {
    return false;
  }
  if (magnitude == 0.0) {
    digits = 0;
    return true;
  }
  // magnitude = mantissa * 2^-shift exactly, read off the bits of the
  // double: the mantissa below 2^53, the shift at least 0, as the magnitude
  // is below 2^53.
  std::uint64_t bits = 0;
  std::memcpy(&bits, &magnitude, sizeof bits);
  const auto biased = static_cast<int>(bits >> 52);
  const std::uint64_t stored = bits & ((1ULL << 52) - 1);
  const std::uint64_t mantissa = biased == 0 ? stored : stored | (1ULL << 52);
  const int shift = biased == 0 ? 1074 : 1075 - biased;
  const Product scaled = multiply(mantissa, kPowersOfTen[decimals]);  // below 2^113
  std::uint64_t whole = 0;
  if (shift == 0) {
    // A whole number from 2^52 up: nothing to round.
    if (scaled.high != 0) return false;
    whole = scaled.low;
  } else if (shift < 114) {
    if (!shiftRounded(scaled, shift, whole)) return false;
  }  // else all 113 bits are shifted out, below half of the last decimal: 0
  if (whole >= kExactLimit) return false;
  digits = whole;
  return true;
}

// The digits of printf's "%.*f" by the standard library's exact route.
std::vector<char> longPrint(double value, int decimals) {
  // The largest finite double has 309 digits before the point.
  std::vector<char> text(static_cast<std::size_t>(330 + decimals));
  const std::to_chars_result printed = std::to_chars(text.data(), text.data() + text.size(), value,
                                                     std::chars_format::fixed, decimals);
  text.resize(printed.ec == std::errc() ? static_cast<std::size_t>(printed.ptr - text.data()) : 0);
  return text;
}

}  // namespace

double roundToDecimals(double value, int decimals) {
  if (decimals < 0) decimals = 0;
  // A whole number prints as its own digits and reads back as itself.
  if (!std::isfinite(value) || value == std::trunc(value)) return value;
  std::uint64_t digits = 0;
  if (printedDigits(value, decimals, digits)) {
    // Both are exact doubles, so the division rounds their exact quotient
    // once, to the nearest, as reading the printed digits does.
    const double read = static_cast<double>(digits) / static_cast<double>(kPowersOfTen[decimals]);
    return std::signbit(value) ? -read : read;
  }
  const std::vector<char> text = longPrint(value, decimals);
  double read = value;
  std::from_chars(text.data(), text.data() + text.size(), read);
  return read;
}

void printDecimals(double value, int decimals, std::wstring& text) {
  if (decimals < 0) decimals = 0;
  std::uint64_t digits = 0;
  if (!std::isfinite(value) || !printedDigits(value, decimals, digits)) {
    const std::vector<char> printed = longPrint(value, decimals);
    text.assign(printed.begin(), printed.end());
    return;
  }
  // Written backwards from the last decimal: at most 16 digits, the point
  // and the sign.
  wchar_t buffer[24];
  wchar_t* first = buffer + sizeof buffer / sizeof buffer[0];
  for (int i = 0; i < decimals; ++i) {
    *--first = static_cast<wchar_t>(L'0' + digits % 10);
    digits /= 10;
  }
  if (decimals > 0) *--first = L'.';
  do {
    *--first = static_cast<wchar_t>(L'0' + digits % 10);
    digits /= 10;
  } while (digits != 0);
  if (std::signbit(value)) *--first = L'-';
  text.assign(first, buffer + sizeof buffer / sizeof buffer[0]);
}

}  // namespace zarvel
