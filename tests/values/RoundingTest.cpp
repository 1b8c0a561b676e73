#include "values/Rounding.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>

namespace zarvel {
namespace {

TEST(RoundingTest, RoundsAsThePrintedFormReadsBack) {
  struct Case {
    double value;
    int decimals;
    double expected;
  } cases[] = {
      {12.3456, 2, 12.35},   {12.3456, 0, 12.0},
      {-12.3456, 1, -12.3},  {2.5, 0, 2.0},  // the print rounds a tie to even
      {3.5, 0, 4.0},         {0.125, 2, 0.12},
      {1234.5, 8, 1234.5},   {12.3456, -3, 12.0},  // no negative precision
      {DBL_MAX, 2, DBL_MAX}, {-0.004, 2, -0.0},
      {1e-300, 400, 1e-300},  // more decimals than a buffer on the stack holds
  };
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(roundToDecimals(c.value, c.decimals), c.expected)
        << c.value << " to " << c.decimals;
  }
}

// The short route through whole numbers must give what printf and atof give,
// digit for digit and bit for bit, ties and signs included.
TEST(RoundingTest, AgreesWithPrintfAndAtof) {
  std::mt19937_64 random(7);
  std::uniform_real_distribution<double> unit(-1.0, 1.0);
  std::uniform_int_distribution<int> exponent(-12, 17);
  std::uniform_int_distribution<int> decimals(0, 12);
  std::vector<double> values = {0.0,
                                -0.0,
                                0.5,
                                2.5,
                                -2.5,
                                0.125,
                                1e-300,
                                4.9e-324,
                                4.35,
                                1.005,
                                -0.004,
                                9007199254740991.0,
                                9007199254740993.0,
                                4503599627370497.0,
                                6755399441055745.5,
                                123456789.0125};
  for (int i = 0; i < 20000; ++i) {
    values.push_back(unit(random) * std::pow(10.0, exponent(random)));
    // Halves of the last printed decimal, where printf's ties show.
    values.push_back(std::floor(unit(random) * 1e6) / 8.0);
  }
  char expected[400];
  std::wstring text;
  for (const double value : values) {
    const int d = decimals(random);
    std::snprintf(expected, sizeof expected, "%.*f", d, value);
    const double read = std::atof(expected);
    const double rounded = roundToDecimals(value, d);
    ASSERT_TRUE(rounded == read && std::signbit(rounded) == std::signbit(read))
        << value << " to " << d << ": " << rounded << " against " << expected;
    printDecimals(value, d, text);
    ASSERT_EQ(text, std::wstring(expected, expected + std::strlen(expected))) << value;
  }
}

}  // namespace
}  // namespace zarvel
