// The answer grammar: strict numbers, points, handles, keywords and names.
#include "host/editor/AnswerParsing.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace host {
namespace {

TEST(AnswerParsingTest, RealsAreWholeDecimalNumbersWithinADouble) {
  EXPECT_EQ(parseReal(L"12"), 12.0);
  EXPECT_EQ(parseReal(L"-0.5"), -0.5);
  EXPECT_EQ(parseReal(L"+.5"), 0.5);
  EXPECT_EQ(parseReal(L"5."), 5.0);
  EXPECT_EQ(parseReal(L"1.5e3"), 1500.0);
  EXPECT_EQ(parseReal(L"2E-2"), 0.02);
  EXPECT_EQ(parseReal(L" \t7.25  "), 7.25);
  EXPECT_EQ(parseReal(L"1.7976931348623157e308"), std::numeric_limits<double>::max());
  // Whatever follows the number, or stands instead of it, makes it no number;
  // so does a number beyond a double, rather than being rounded.
  for (const wchar_t* text :
       {L"", L" ", L"12abc", L"1,5", L"1.2.3", L".", L"-", L"e5", L"1e", L"1e+", L"inf", L"nan",
        L"0x10", L"1 2", L"--1", L"\u0661", L"1e400", L"-1e400"}) {
    EXPECT_FALSE(parseReal(text).has_value()) << "accepted '" << text << "'";
  }
}

TEST(AnswerParsingTest, IntegersAreWholeAndFitIn32Bits) {
  EXPECT_EQ(parseInt(L"42"), 42);
  EXPECT_EQ(parseInt(L"+7"), 7);
  EXPECT_EQ(parseInt(L" -3 "), -3);
  EXPECT_EQ(parseInt(L"2147483647"), 2147483647);
  EXPECT_EQ(parseInt(L"-2147483648"), std::numeric_limits<std::int32_t>::min());
  for (const wchar_t* text :
       {L"", L"2147483648", L"-2147483649", L"1.0", L"1e3", L"12a", L"+", L"0x1F", L"1 000"}) {
    EXPECT_FALSE(parseInt(text).has_value()) << "accepted '" << text << "'";
  }
}

TEST(AnswerParsingTest, PointsTakeTwoOrThreeCoordinates) {
  EXPECT_EQ(parsePoint(L"1,2"), (platform::Point3d{1, 2, 0}));
  EXPECT_EQ(parsePoint(L"1,2,3"), (platform::Point3d{1, 2, 3}));
  EXPECT_EQ(parsePoint(L" -1.5 , 2e1 ,\t+3 "), (platform::Point3d{-1.5, 20, 3}));
  for (const wchar_t* text :
       {L"", L"1", L"1,", L",2", L"1,,2", L"1,2,", L"1,2,3,4", L"a,b", L"1;2", L"1 2", L"1,2 3"}) {
    EXPECT_FALSE(parsePoint(text).has_value()) << "accepted '" << text << "'";
  }
}

TEST(AnswerParsingTest, HandlesAreHashAndHexadecimalDigits) {
  EXPECT_EQ(parseHandle(L"#1F"), 0x1Fu);
  EXPECT_EQ(parseHandle(L"#1f"), 0x1Fu);
  EXPECT_EQ(parseHandle(L"#FFFFFFFFFFFFFFFF"), 0xFFFFFFFFFFFFFFFFu);
  for (const wchar_t* text :
       {L"#", L"1F", L"#1G", L"#-1", L"#1 F", L"##1", L"#10000000000000000"}) {
    EXPECT_FALSE(parseHandle(text).has_value()) << "accepted '" << text << "'";
  }
}

TEST(AnswerParsingTest, CancelAnswersIgnoreCaseAndBlanks) {
  for (const wchar_t* text : {L"*Cancel*", L"  *CANCEL*\t", L"^c"}) {
    EXPECT_TRUE(isCancelAnswer(text)) << "refused '" << text << "'";
  }
  for (const wchar_t* text : {L"Cancel", L"*Cancel* now", L""}) {
    EXPECT_FALSE(isCancelAnswer(text)) << "accepted '" << text << "'";
  }
}

TEST(AnswerParsingTest, KeywordsMatchExactlyFirstThenByUniquePrefix) {
  const std::vector<std::wstring> layer = {L"New", L"Set", L"ON", L"OFF", L"Hide", L"Unhide"};
  EXPECT_EQ(matchKeyword(L"on", layer).index, 2);
  EXPECT_EQ(matchKeyword(L"OF", layer).index, 3);
  EXPECT_EQ(matchKeyword(L" n ", layer).index, 0);
  EXPECT_EQ(matchKeyword(L"u", layer).index, 5);

  const KeywordMatch ambiguous = matchKeyword(L"o", layer);
  EXPECT_FALSE(ambiguous.found());
  EXPECT_TRUE(ambiguous.ambiguous());
  EXPECT_EQ(ambiguous.candidates, (std::vector<int>{2, 3}));

  const KeywordMatch unknown = matchKeyword(L"Newer", layer);
  EXPECT_FALSE(unknown.found());
  EXPECT_FALSE(unknown.ambiguous());
  EXPECT_FALSE(matchKeyword(L"", layer).found());

  // A keyword that is a prefix of another is still reachable by its full name.
  EXPECT_EQ(matchKeyword(L"line", {L"Linetype", L"Line"}).index, 1);
}

TEST(AnswerParsingTest, NamesMatchExactlyElseFirstIgnoringCase) {
  const std::vector<std::wstring> tables = {L"roads", L"Roads", L"ROADS", L"Parcels"};
  EXPECT_EQ(findName(L"Roads", tables), 1);
  EXPECT_EQ(findName(L"ROADS", tables), 2);
  EXPECT_EQ(findName(L"rOaDs", tables), 0);
  EXPECT_EQ(findName(L"Parcel", tables), -1);
}

}  // namespace
}  // namespace host
