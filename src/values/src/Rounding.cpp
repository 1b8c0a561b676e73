// Rounding through the printed form.
#include "values/Rounding.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

namespace zarvel {

double roundToDecimals(double value, int decimals) {
  if (decimals < 0) decimals = 0;
  // The largest finite double prints to over 300 digits before the point.
  const int length = std::snprintf(nullptr, 0, "%.*f", decimals, value);
  if (length < 0) return value;
  std::vector<char> text(static_cast<std::size_t>(length) + 1);
  std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return std::atof(text.data());
}

}  // namespace zarvel
