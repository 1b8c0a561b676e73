// Tests of the text form of values, its parsing, the star pattern and the
// shared string helpers.
#include "oddata/ValueText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace zarvel {
namespace {

using platform::OdValue;
using platform::Point3d;

OdValue integer(std::int32_t v) {
  return OdValue(v);
}

TEST(ValueTextTest, ParsingKeepsTheTypeAndTakesTheLeadingNumberWithoutError) {
  const OdValue point(Point3d{7, 8, 9});
  const struct {
    OdValue value;
    const wchar_t* text;
    bool ok;
    OdValue result;
  } cases[] = {
      {integer(9), L"12abc", true, integer(12)},
      {OdValue(9.0), L"12abc", true, OdValue(12.0)},
      {integer(9), L"1.9", true, integer(1)},
      {OdValue(9.0), L"1.9", true, OdValue(1.9)},
      {integer(9), L"abc", true, integer(0)},
      {OdValue(9.0), L"+.5", true, OdValue(0.5)},
      {OdValue(L"old"), L" 42 ", true, OdValue(L" 42 ")},
      {OdValue(), L"42", false, OdValue()},
      // A point needs three numbers; a refused one keeps every coordinate.
      {point, L"1,2", false, point},
      {point, L"  ", false, point},
      {point, L"x,y,z", false, point},
      {point, L"1;2;3", false, point},
      {point, L"1, 2 ,3", false, point},
      {point, L"1,2,3,4", true, OdValue(Point3d{1, 2, 3})},
      {point, L" -1.5, 2e1,\t0", true, OdValue(Point3d{-1.5, 20, 0})},
  };
  for (const auto& c : cases) {
    OdValue v = c.value;
    EXPECT_EQ(textToValue(v, c.text), c.ok) << platform::toUtf8(c.text);
    EXPECT_EQ(v, c.result) << platform::toUtf8(c.text);
  }
}

TEST(ValueTextTest, WhatIsPrintedParsesBackToTheSameValue) {
  for (const OdValue& v : {integer(-2147483647 - 1), OdValue(0.5), OdValue(123456789012345678.0),
                           OdValue(L" a "), OdValue(Point3d{-1, 0.25, 9})}) {
    OdValue back = OdValue::zeroOf(v.type());
    EXPECT_TRUE(textToValue(back, valueToText(v)));
    EXPECT_EQ(back, v) << platform::toUtf8(valueToText(v));
  }
  EXPECT_EQ(valueToText(OdValue()), L"");
}

TEST(ValueTextTest, StarPatternInsertsTheOldText) {
  const OdValue point(Point3d{1, 2, 3});
  const struct {
    OdValue value;
    const wchar_t* pattern;
    bool ok;
    OdValue result;
  } cases[] = {
      {OdValue(L"abc"), L"x*y", true, OdValue(L"xabcy")},
      {OdValue(L"ab"), L"*-*", true, OdValue(L"ab-ab")},
      {OdValue(1.5), L"*0", true, OdValue(1.5)},
      {OdValue(1.5), L"1*", true, OdValue(11.5)},
      {integer(12), L"**", true, integer(1212)},
      {integer(12), L"7", true, integer(7)},
      // A point's old text is a whole point: extra fields after it are ignored,
      // anything before it spoils the parse and the value stays.
      {point, L"*,9", true, point},
      {point, L"(*)", false, point},
      {point, L"-*", true, OdValue(Point3d{-1, 2, 3})},
  };
  for (const auto& c : cases) {
    OdValue v = c.value;
    EXPECT_EQ(assignTextPattern(v, c.pattern), c.ok) << platform::toUtf8(c.pattern);
    EXPECT_EQ(v, c.result) << platform::toUtf8(c.pattern);
  }
}

TEST(ValueTextTest, SetFieldFromTextFillsAPointFromOneNumberAndLeavesOtherCounts) {
  const OdValue point(Point3d{7, 8, 9});
  const struct {
    OdValue value;
    const wchar_t* text;
    OdValue result;
  } cases[] = {
      {integer(9), L"1234.500000", integer(1234)},
      {OdValue(9.0), L"1,5", OdValue(1.0)},
      {OdValue(L"old"), L"1234.500000", OdValue(L"1234.500000")},
      {point, L"1234.5", OdValue(Point3d{1234.5, 1234.5, 1234.5})},
      {point, L"1,2,3", OdValue(Point3d{1, 2, 3})},
      {point, L"1,,2,,3", OdValue(Point3d{1, 2, 3})},
      {point, L"x,2,3", OdValue(Point3d{0, 2, 3})},
      {point, L"1,2", point},
      {point, L"1,2,3,4", point},
      {point, L"", point},
      {OdValue(), L"5", OdValue()},
  };
  for (const auto& c : cases) {
    platform::OdRecord record(L"T", {integer(1), c.value});
    setFieldFromText(record, 1, c.text);
    EXPECT_EQ(record.value(1), c.result) << platform::toUtf8(c.text);
    EXPECT_EQ(record.value(0), integer(1));
  }
  platform::OdRecord record(L"T", {integer(1)});
  setFieldFromText(record, 1, L"5");
  setFieldFromText(record, -1, L"5");
  EXPECT_EQ(record.value(0), integer(1));
}

TEST(ValueTextTest, TypeNamesAndFieldNumbers) {
  EXPECT_EQ(typeName(integer(1)), L"integer");
  EXPECT_EQ(typeName(OdValue(1.0)), L"real");
  EXPECT_EQ(typeName(OdValue(L"1")), L"character");
  EXPECT_EQ(typeName(OdValue(Point3d{})), L"point");
  EXPECT_EQ(typeName(OdValue()), L"unknown");

  EXPECT_EQ(fieldNumber(0, integer(-4)), -4.0);
  EXPECT_EQ(fieldNumber(0, OdValue(2.5)), 2.5);
  EXPECT_EQ(fieldNumber(0, OdValue(L"7")), 0.0);
  EXPECT_EQ(fieldNumber(0, OdValue(Point3d{1, 1, 1})), 0.0);
  EXPECT_EQ(fieldNumber(1, OdValue(L"7")), 1.0);
  EXPECT_EQ(fieldNumber(1, OdValue()), 1.0);
  EXPECT_EQ(fieldNumber(2, OdValue(2.5)), 0.0);
  EXPECT_EQ(fieldNumber(-1, integer(3)), 0.0);
}

TEST(ValueTextTest, TrimTrailingZeros) {
  EXPECT_EQ(trimTrailingZeros(L"1.500000000000"), L"1.5");
  EXPECT_EQ(trimTrailingZeros(L"2.000000000000"), L"2.0");
  EXPECT_EQ(trimTrailingZeros(L"100"), L"100");
  EXPECT_EQ(trimTrailingZeros(L"100.0"), L"100.0");
  EXPECT_EQ(trimTrailingZeros(L"0.10"), L"0.1");
  EXPECT_EQ(trimTrailingZeros(L"5."), L"5.");
  EXPECT_EQ(trimTrailingZeros(L""), L"");
}

TEST(StringHelpersTest, TrimAndCut) {
  EXPECT_EQ(trimBoth(L" \t\n\v\f\rab c \r\n"), L"ab c");
  EXPECT_EQ(trimBoth(L" \t "), L"");
  EXPECT_EQ(trimBoth(L"x"), L"x");
  EXPECT_EQ(trimBoth(L"\u00A0x\u00A0"), L"\u00A0x\u00A0");

  EXPECT_EQ(cutAtChar(L"ROADS\tStreets  # main roads", L'#'), L"ROADS\tStreets");
  EXPECT_EQ(cutAtChar(L"# whole line", L'#'), L"");
  EXPECT_EQ(cutAtChar(L"a#b#c", L'#'), L"a");
  EXPECT_EQ(cutAtChar(L"no comment \t\r\n", L'#'), L"no comment");
  EXPECT_EQ(cutAtChar(L"\tkept left\f", L'?'), L"\tkept left\f");  // only " \t\r\n" go
}

TEST(StringHelpersTest, StartsWithAndLowerCase) {
  EXPECT_TRUE(startsWithText(L"first", L"fi"));
  EXPECT_TRUE(startsWithText(L"first", L"first"));
  EXPECT_TRUE(startsWithText(L"first", L""));
  EXPECT_TRUE(startsWithText(L"", L""));
  EXPECT_FALSE(startsWithText(L"first", L"firsts"));
  EXPECT_FALSE(startsWithText(L"first", L"Fi"));
  EXPECT_FALSE(startsWithText(L"fi", L"first"));
  EXPECT_EQ(toLowerCopy(L"First \u0178\u0416"), L"first \u00FF\u0436");
}

TEST(StringHelpersTest, SplitTextSkipsEmptyTokensAndAppends) {
  std::vector<std::wstring> out{L"kept"};
  splitText(L"\t\ta\t\tb c\t", L"\t ", out);
  EXPECT_EQ(out, (std::vector<std::wstring>{L"kept", L"a", L"b", L"c"}));

  std::vector<std::wstring> none;
  splitText(L"\t\t", L"\t", none);
  splitText(L"", L"\t", none);
  EXPECT_TRUE(none.empty());

  std::vector<std::wstring> whole;
  splitText(L"a,b", L"", whole);
  EXPECT_EQ(whole, std::vector<std::wstring>{L"a,b"});
}

TEST(StringHelpersTest, CsvQuote) {
  EXPECT_EQ(csvQuote(L"plain"), L"\"plain\"");
  EXPECT_EQ(csvQuote(L""), L"\"\"");
  EXPECT_EQ(csvQuote(L"say \"hi\""), L"\"say \"\"hi\"\"\"");
  EXPECT_EQ(csvQuote(L"\""), L"\"\"\"\"");
}

}  // namespace
}  // namespace zarvel
