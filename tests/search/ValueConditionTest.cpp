// The condition language of the value search: every operator on every type of
// value, the star pattern's edges, and which tests ignore case.
#include "search/ValueCondition.h"

#include <gtest/gtest.h>

#include "platform/Text.h"

namespace zarvel {
namespace {

using platform::OdValue;
using platform::Point3d;

struct Case {
  OdValue value;
  const wchar_t* condition;
  bool extended;
  bool matches;
};

void expectCases(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(ValueTest(c.condition, c.extended).matches(c.value), c.matches)
        << "'" << platform::toUtf8(c.condition) << "' on '"
        << platform::toUtf8(platform::valueText(c.value)) << "'"
        << (c.extended ? " extended" : " plain");
  }
}

TEST(ValueConditionTest, IntegersCompareAsWtoiReadsTheOperand) {
  const OdValue v(std::int32_t{12});
  expectCases({
      {v, L"<>12", true, false}, {v, L"<> 13 ", true, true}, {v, L"<>abc", true, true},
      {v, L">11", true, true},   {v, L">12", true, false},   {v, L">abc", true, true},
      {v, L"<13", true, true},   {v, L"< 12", true, false},  {v, L"<", true, false},
      {v, L"12", true, true},    {v, L" 12", true, true},    {v, L"12abc", true, true},
      {v, L"13", true, false},   {v, L"12.9", true, true},   {v, L"", true, false},
      {v, L"1*", true, true},    {v, L"12*", true, false},   {v, L"*2", true, true},
      {v, L"*12", true, false},  {v, L"1", false, true},     {v, L"3", false, false},
      {v, L">11", false, false},
  });
}

TEST(ValueConditionTest, RealsCompareExactlyAsWtofReadsTheOperand) {
  const OdValue v(1.5);
  expectCases({
      {v, L"<>1.5", true, false},
      {v, L"<>1.50", true, false},
      {v, L"<>1.4", true, true},
      {v, L">1.4", true, true},
      {v, L">1.5", true, false},
      {v, L"<1.6", true, true},
      {v, L"<1.4", true, false},
      {v, L"1.5", true, true},
      {v, L"15e-1", true, true},
      {v, L"1,5", true, false},
      {v, L"1.5000001", true, false},
      {v, L"1.*", true, true},
      {v, L"*.5", true, true},
      {v, L".5", false, true},
      {OdValue(0.0), L"abc", true, true},
  });
}

TEST(ValueConditionTest, OnlyNotEqualAndPatternsIgnoreTheCaseOfCharacters) {
  const OdValue v(L"Main Street");
  expectCases({
      {v, L"<>main street", true, false},
      {v, L"<> Main", true, true},
      {v, L">Main", true, true},
      {v, L">main", true, false},
      {v, L"<main", true, true},
      {v, L"<Main Street", true, false},
      {v, L"Main Street", true, true},
      {v, L"main street", true, false},
      {v, L" Main Street", true, false},
      {v, L"main*", true, true},
      {v, L"*STREET", true, true},
      {v, L"m*n*t", true, true},
      {v, L"street", false, true},
      {v, L"", false, true},
      {v, L"streets", false, false},
      {OdValue(L"112"), L"12", false, true},
  });
}

TEST(ValueConditionTest, PointsAndUnknownValuesPassOnlyPatternsAndThePlainMode) {
  const OdValue p(Point3d{1, 2, 3});
  const OdValue unknown;
  expectCases({
      {p, L">0", true, false},
      {p, L"<>0", true, false},
      {p, L"1", true, false},
      {p, L"1.0*", true, true},
      {p, L"2.0", false, true},
      {p, L"9", false, false},
      {unknown, L"<>x", true, false},
      {unknown, L"", true, false},
      {unknown, L"**", true, true},
      {unknown, L"", false, true},
  });
}

TEST(ValueConditionTest, StarsAtTheEndsStandForAtLeastOneCharacter) {
  const struct {
    const wchar_t* pattern;
    const wchar_t* text;
    bool matches;
  } cases[] = {
      {L"*abc", L"abc", false},
      {L"*abc", L"xabc", true},
      {L"abc*", L"abc", false},
      {L"abc*", L"abcx", true},
      {L"a*b", L"ab", true},
      {L"a**b", L"axyb", true},
      {L"**", L"", true},
      {L"*", L"x", true},
      {L"*a*", L"a", false},
      {L"*a*", L"ab", false},
      {L"*a*", L"ba", false},
      {L"*a*", L"bab", true},
      {L"*a", L"aa", true},
      {L"*aab", L"aab", false},
      {L"a*a", L"a", false},
      {L"ABC*", L"abcD", true},
      {L"*c", L"ABC", true},
      {L"a*c", L"abd", false},
      {L"x*y*z", L"xzy", false},
      {L"x*y*z", L"xyz", true},
      {L"ab*", L"a", false},
      // A token found again past the leading star is not held to the
      // trailing one: the walk goes on from there.
      {L"*abc*", L"abcabc", true},
      {L"*abc*", L"xabc", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(WildcardPattern(c.pattern).matches(c.text), c.matches)
        << platform::toUtf8(c.pattern) << " on " << platform::toUtf8(c.text);
  }
}

TEST(ValueConditionTest, OnlyTheSingleStarAcceptsEveryRecord) {
  EXPECT_TRUE(ValueTest(L"*", true).acceptsAll());
  EXPECT_TRUE(ValueTest(L"*", false).acceptsAll());
  EXPECT_FALSE(ValueTest(L"**", true).acceptsAll());
  EXPECT_FALSE(ValueTest(L" *", true).acceptsAll());
}

}  // namespace
}  // namespace zarvel
