#include "values/Rounding.h"

#include <gtest/gtest.h>

#include <cfloat>

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
      {DBL_MAX, 2, DBL_MAX},  {-0.004, 2, -0.0},
      {1e-300, 400, 1e-300},  // more decimals than a buffer on the stack holds
  };
  for (const Case& c : cases) {
    EXPECT_DOUBLE_EQ(roundToDecimals(c.value, c.decimals), c.expected)
        << c.value << " to " << c.decimals;
  }
}

}  // namespace
}  // namespace zarvel
