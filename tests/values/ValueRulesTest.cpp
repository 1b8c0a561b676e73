// The value rules of the counters, replacements and additions, as tables of
// cases: the digit run that proposes a number, the star pattern's match, what
// a search expression takes and makes, and the sum of each pair of types.
#include <gtest/gtest.h>

#include "values/AddValues.h"
#include "values/CreateIDs.h"
#include "values/ReplaceValues.h"

namespace zarvel {
namespace {

using platform::OdValue;

TEST(ValueRulesTest, FirstDigitRunPassesOverASingleDigitAtTheEnd) {
  const std::pair<const wchar_t*, const wchar_t*> cases[] = {
      {L"K-117", L"117"}, {L"A12B7", L"12"}, {L"7", L"fb"},  {L"A7", L"fb"},
      {L"abc", L""},      {L"", L""},        {L"12", L"12"},
  };
  for (const auto& [text, run] : cases) EXPECT_EQ(firstDigitRun(text, L"fb"), run) << text;
}

TEST(ValueRulesTest, FindPatternPlacesStarsAtTheEnds) {
  struct Case {
    const wchar_t* text;
    const wchar_t* pattern;
    std::int32_t offset;
    bool found;
    std::int32_t start;
    std::int32_t end;
  } cases[] = {
      {L"xAbcx", L"aB", 0, true, 1, 3}, {L"abcd", L"*c", 0, true, 0, 3},
      {L"abcd", L"b*", 0, true, 1, 4},  {L"xabcx", L"a*c", 0, true, 1, 4},
      {L"cab", L"*c", 0, false, 0, 0},  // a leading star needs a character before
      {L"abab", L"ab", 1, true, 2, 4},  {L"abc", L"", 0, false, 0, 0},
      {L"abc", L"a*x", 0, false, 0, 0}, {L"abc", L"c", 3, false, 0, 0},
  };
  for (const Case& c : cases) {
    std::int32_t start = 0;
    std::int32_t end = 0;
    ASSERT_EQ(findPattern(start, end, c.text, c.pattern, c.offset), c.found)
        << c.text << " " << c.pattern;
    if (!c.found) continue;
    EXPECT_EQ(start, c.start) << c.text << " " << c.pattern;
    EXPECT_EQ(end, c.end) << c.text << " " << c.pattern;
  }
}

TEST(ValueRulesTest, ReplacerTakesAndMakesValues) {
  struct Case {
    const wchar_t* search;  // as the body passes it: lower-cased
    const wchar_t* replacement;
    OdValue value;
    bool matches;
    OdValue result;
  } cases[] = {
      {L"*", L"X*", OdValue(L"abc"), true, OdValue(L"Xabc")},
      {L"ab", L"c", OdValue(L"Abab"), true, OdValue(L"cc")},
      {L"a*c", L"Y", OdValue(L"xabcx"), true, OdValue(L"xYx")},
      {L"*c", L"Y", OdValue(L"abcd"), true, OdValue(L"Yd")},
      {L"b*", L"Y", OdValue(L"abcd"), true, OdValue(L"aY")},
      {L"b", L"bb", OdValue(L"abab"), true, OdValue(L"abbabb")},  // no find inside the insert
      {L"**", L"Y", OdValue(L"ab"), true, OdValue(L"Y")},
      {L"q", L"Y", OdValue(L"ab"), false, OdValue(L"ab")},
      {L"", L"Y", OdValue(L"ab"), false, OdValue(L"ab")},
      // ">" and "<" both take what is smaller than the operand; "<" loses
      // the character behind it.
      {L">10", L"*0", OdValue(5), true, OdValue(50)},
      {L">10", L"*0", OdValue(20), false, OdValue(20)},
      {L"< 10", L"1", OdValue(5), true, OdValue(1)},
      {L"<10", L"1", OdValue(5), false, OdValue(5)},
      {L">2.5", L"0", OdValue(2.0), true, OdValue(0.0)},
      {L">b", L"z", OdValue(L"a"), true, OdValue(L"z")},
      {L">b", L"z", OdValue(L"c"), false, OdValue(L"c")},
      {L">b", L"z", OdValue(L"B"), true, OdValue(L"z")},  // case-sensitive
      {L"<>5", L"1", OdValue(5.0), false, OdValue(5.0)},
      {L"<>5", L"1", OdValue(6.0), true, OdValue(1.0)},
      {L"<> abc ", L"x", OdValue(L"ABC"), false, OdValue(L"ABC")},
      {L"<>5", L"1", OdValue(platform::Point3d{5, 5, 5}), false,
       OdValue(platform::Point3d{5, 5, 5})},
      // Numbers are searched in their text and set back from it.
      {L"1", L"9", OdValue(11), true, OdValue(99)},
      {L"2.5", L"x", OdValue(2.5), true, OdValue(0.0)},
      {L".5", L"5", OdValue(2.5), true, OdValue(25.0)},
  };
  for (const Case& c : cases) {
    OdValue value = c.value;
    EXPECT_EQ(ValueReplacer(c.search, c.replacement).replace(value), c.matches) << c.search;
    EXPECT_EQ(value, c.result) << c.search << " on " << platform::valueText(c.value);
  }
}

TEST(ValueRulesTest, AdditionFollowsTheTypesOfBothValues) {
  const OdValue point(platform::Point3d{1, 2, 3});
  struct Case {
    OdValue target;
    OdValue source;
    bool added;
    OdValue result;
  } cases[] = {
      {OdValue(L"A"), OdValue(L"b"), true, OdValue(L"Ab")},
      {OdValue(L"A"), OdValue(7), true, OdValue(L"A7")},
      {OdValue(L"A"), OdValue(0.1), true, OdValue(L"A0.1")},
      {OdValue(L"A"), OdValue(1e20), true, OdValue(L"A1e+20")},
      {OdValue(30), OdValue(12), true, OdValue(42)},
      {OdValue(2), OdValue(1.9), true, OdValue(3)},
      {OdValue(30), OdValue(L"12"), true, OdValue(42)},
      {OdValue(30), OdValue(L"x"), true, OdValue(30)},
      {OdValue(2147483647), OdValue(1), true, OdValue(-2147483647 - 1)},
      {OdValue(1.5), OdValue(2.25), true, OdValue(3.75)},
      {OdValue(1.5), OdValue(2), true, OdValue(3.5)},
      {OdValue(1.5), OdValue(L"0.25x"), true, OdValue(1.75)},
      {OdValue(L"A"), point, false, OdValue(L"A")},
      {point, OdValue(1), false, point},
      {OdValue(1), OdValue(), false, OdValue(1)},
  };
  for (const Case& c : cases) {
    OdValue target = c.target;
    EXPECT_EQ(addValue(target, c.source), c.added) << platform::valueText(c.target);
    EXPECT_EQ(target, c.result) << platform::valueText(c.target) << " + "
                                << platform::valueText(c.source);
  }
}

}  // namespace
}  // namespace zarvel
