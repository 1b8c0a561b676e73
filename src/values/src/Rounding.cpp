// Rounding through the printed form.
#include "values/Rounding.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace zarvel {
namespace {

// The digits of the largest finite double before the point, and some room.
constexpr int kIntegerDigits = 330;
constexpr int kStackDecimals = 40;

}  // namespace

// Printed and read back by the shortest exact routes of the standard library,
// which give what printf's "%.*f" and atof give, digit for digit, at a
// fraction of their cost over a million values.
double roundToDecimals(double value, int decimals) {
  if (decimals < 0) decimals = 0;
  // A whole number prints as its own digits and reads back as itself.
  if (!std::isfinite(value) || value == std::trunc(value)) return value;
  char stack[kIntegerDigits + kStackDecimals];
  std::vector<char> heap;
  char* first = stack;
  char* last = stack + sizeof stack;
  if (decimals > kStackDecimals - 2) {
    heap.resize(static_cast<std::size_t>(kIntegerDigits) + static_cast<std::size_t>(decimals));
    first = heap.data();
    last = first + heap.size();
  }
  const std::to_chars_result printed =
      std::to_chars(first, last, value, std::chars_format::fixed, decimals);
  if (printed.ec != std::errc()) return value;
  double result = value;
  std::from_chars(first, printed.ptr, result);
  return result;
}

}  // namespace zarvel
