// Tests of formatting, number parsing, case folding and UTF-8 of wide text.
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdarg>
#include <cwchar>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace platform {
namespace {

using std::wstring;

TEST(FormatTextTest, Integers) {
  EXPECT_EQ(format(L"%i|%d|%u", 42, -7, 7u), L"42|-7|7");
  EXPECT_EQ(format(L"[%5d][%-5d][%05d][%+d][% d][%+ d]", 42, 42, -42, 42, 42, 42),
            L"[   42][42   ][-0042][+42][ 42][+42]");
  EXPECT_EQ(format(L"[%.3d][%8.3d][%08.3d][%.0d][%.0d]", 7, -7, 7, 0, 1),
            L"[007][    -007][     007][][1]");
  EXPECT_EQ(format(L"%x %X %o %#x %#X %#o %#o %#x", 255, 255, 8, 255, 255, 8, 0, 0),
            L"ff FF 10 0xff 0XFF 010 0 0");
  EXPECT_EQ(format(L"[%#08x][%#.0o]", 255, 0), L"[0x0000ff][0]");
  EXPECT_EQ(format(L"%d %d", INT_MIN, INT_MAX), L"-2147483648 2147483647");
  EXPECT_EQ(format(L"%lld %llu", LLONG_MIN, -1LL), L"-9223372036854775808 18446744073709551615");
}

TEST(FormatTextTest, IntegerSizeFollowsTheArgument) {
  // A 32-bit argument wraps at 32 bits whatever the length modifier says.
  EXPECT_EQ(format(L"%u %x %lx", -1, -1, -1), L"4294967295 ffffffff ffffffff");
  EXPECT_EQ(format(L"%d", 4294967295u), L"-1");
  EXPECT_EQ(format(L"%x %I64d %hd", -1LL, 5000000000LL, 70000),
            L"ffffffffffffffff 5000000000 70000");
}

TEST(FormatTextTest, Reals) {
  EXPECT_EQ(format(L"%f|%lf|%.2f|%.0f|%#.0f", 1.5, -0.25, 2.675, 2.5, 3.0),
            L"1.500000|-0.250000|2.67|2|3.");
  EXPECT_EQ(format(L"%e|%.2E|%.0e|%#.0e", 12345.678, 0.000123, 5.0, 5.0),
            L"1.234568e+04|1.23E-04|5e+00|5.e+00");
  EXPECT_EQ(format(L"%e|%e", 1e300, 1e-300), L"1.000000e+300|1.000000e-300");
  EXPECT_EQ(format(L"%g|%g|%g|%g|%g|%G", 100000.0, 1000000.0, 0.0001, 0.00001, 0.0, 1e-10),
            L"100000|1e+06|0.0001|1e-05|0|1E-10");
  EXPECT_EQ(format(L"%.3g|%#.3g|%#g|%.0g|%.16g", 3.14159, 1.0, 2.5, 123.0, 0.1),
            L"3.14|1.00|2.50000|1e+02|0.1");
  EXPECT_EQ(format(L"%#g|%#.2g|%#.1g|%.2g", 999999.5, 99.9, 9.9, 99.9),
            L"1.00000e+06|1.0e+02|1.e+01|1e+02");
  EXPECT_EQ(format(L"%a|%A|%.1a|%a", 1.0, 0.5, 1.0, 0.0), L"0x1p+0|0X1P-1|0x1.0p+0|0x0p+0");
  EXPECT_EQ(format(L"[%010.3f][%-10.1f][%+f][% .1f][%+08.2f]", -3.14159, 2.5, 1.0, 1.0, 1.0),
            L"[-00003.142][2.5       ][+1.000000][ 1.0][+0001.00]");
  EXPECT_EQ(format(L"%.12lf", 1e20), L"100000000000000000000.000000000000");
  EXPECT_EQ(format(L"%f", -0.0), L"-0.000000");
}

TEST(FormatTextTest, InfinityAndNan) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(format(L"%f %f %F %e %E %g %G", inf, -inf, inf, inf, -inf, nan, nan),
            L"inf -inf INF inf -INF nan NAN");
  // Zero padding never applies to the words.
  EXPECT_EQ(format(L"[%06f][%-6f][%+f]", inf, nan, inf), L"[   inf][nan   ][+inf]");
}

TEST(FormatTextTest, TextsAndCharacters) {
  const wstring name = L"Parcels";
  EXPECT_EQ(format(L"Error: table '%s' not found.\n", name),
            L"Error: table 'Parcels' not found.\n");
  EXPECT_EQ(format(L"[%10s][%-10s][%.3s][%5.2s][%S]", L"abc", L"abc", name, L"xyz", L"w"),
            L"[       abc][abc       ][Par][   xy][w]");
  EXPECT_EQ(format(L"[%c][%3c][%-3c][%lc]", L'A', L'b', L'c', 0x3A9), L"[A][  b][c  ][\u03A9]");
  EXPECT_EQ(format(L"%s", wstring(L"\u00E9t\u00E9")), L"\u00E9t\u00E9");
  EXPECT_EQ(format(L"[%05s]", L"ab"), L"[   ab]");
}

TEST(FormatTextTest, StarsPercentAndOddDirectives) {
  EXPECT_EQ(format(L"[%*d][%-*d][%*d]", 4, 7, 4, 7, -4, 7), L"[   7][7   ][7   ]");
  EXPECT_EQ(format(L"[%.*f][%.*f]", 2, 3.14159, -1, 3.14159), L"[3.14][3.141590]");
  EXPECT_EQ(format(L"%%.%ilf", 3), L"%.3lf");
  EXPECT_EQ(format(L"100%% %5%"), L"100% %");
  EXPECT_EQ(format(L"%y|%"), L"%y|%");
  // Missing arguments format as zero or nothing; mismatched kinds convert.
  EXPECT_EQ(format(L"%d|%s|%f", 1), L"1||0.000000");
  EXPECT_EQ(format(L"%d|%.1f|%d|%s", 2.9, 3, L"x", 4), L"2|3.0|0|");
  EXPECT_EQ(formatText(L"no directives", {}), L"no directives");
}

#if defined(__GLIBC__)
wstring runtimeFormat(const wchar_t* fmt, ...) {
  wchar_t buffer[2048];
  va_list args;
  va_start(args, fmt);
  const int n = std::vswprintf(buffer, 2048, fmt, args);
  va_end(args);
  return n < 0 ? wstring(L"<error>") : wstring(buffer, static_cast<size_t>(n));
}

std::vector<wstring> directiveGrid(const wstring& conversions, const wstring& length) {
  const wchar_t* flags[] = {L"", L"-", L"+", L" ", L"0", L"#", L"+0", L"-#", L"0#", L" -"};
  const wchar_t* widths[] = {L"", L"1", L"8", L"25"};
  const wchar_t* precisions[] = {L"", L".", L".0", L".1", L".3", L".12", L".17", L".30"};
  std::vector<wstring> grid;
  for (wchar_t conversion : conversions) {
    for (const wchar_t* flag : flags) {
      for (const wchar_t* width : widths) {
        for (const wchar_t* precision : precisions) {
          grid.push_back(L"%" + wstring(flag) + width + precision + length + conversion);
        }
      }
    }
  }
  return grid;
}

TEST(FormatTextTest, RealsMatchTheCRuntime) {
  // Ordinary values, carries into a new power of ten, the extremes of a double.
  std::wistringstream list(
      L"0 -0 1 -1.5 0.5 2.5 0.125 9.5 99.95 999999.5 0.0001 0.00001 0.000123456789 123456 "
      L"1234567 1e15 1e16 1e22 1e300 1.7976931348623157e308 5e-324 2.2250738585072014e-308 "
      L"3.141592653589793 -2.718281828459045 0.3333333333333333 0.1 1e-7 inf -nan");
  std::vector<double> values;
  for (wstring text; list >> text;) values.push_back(std::wcstod(text.c_str(), nullptr));
  int checked = 0;
  for (const wstring& directive : directiveGrid(L"fFeEgGaA", L"l")) {
    for (double v : values) {
      // glibc drops the zeros of "%#g" when rounding carries into a new power
      // of ten; the Reals test holds the standard form.
      const bool glibcCarryFault = v == 999999.5 && directive.find(L'#') != wstring::npos &&
                                   (directive.back() | 0x20) == L'g';
      if (glibcCarryFault) continue;
      EXPECT_EQ(format(directive, v), runtimeFormat(directive.c_str(), v))
          << "directive " << toUtf8(directive) << " value " << v;
      ++checked;
    }
  }
  EXPECT_GT(checked, 10000);
}

TEST(FormatTextTest, IntegersMatchTheCRuntime) {
  const int values[] = {0, 1, -1, 7, 255, -255, 65536, INT_MAX, INT_MIN};
  const long long wideValues[] = {0, -1, 5000000000LL, LLONG_MAX, LLONG_MIN};
  for (const wstring& directive : directiveGrid(L"diuoxX", L"")) {
    for (int v : values) {
      ASSERT_EQ(format(directive, v), runtimeFormat(directive.c_str(), v))
          << "directive " << toUtf8(directive) << " value " << v;
    }
  }
  for (const wstring& directive : directiveGrid(L"diuoxX", L"ll")) {
    for (long long v : wideValues) {
      ASSERT_EQ(format(directive, v), runtimeFormat(directive.c_str(), v))
          << "directive " << toUtf8(directive) << " value " << v;
    }
  }
  for (const wstring& directive : directiveGrid(L"s", L"l")) {
    ASSERT_EQ(format(directive, L"abcdef"), runtimeFormat(directive.c_str(), L"abcdef"))
        << "directive " << toUtf8(directive);
  }
}
#endif

TEST(NumberParsingTest, Wtoi) {
  EXPECT_EQ(wtoi(L"42"), 42);
  EXPECT_EQ(wtoi(L" \t\n-17xyz"), -17);
  EXPECT_EQ(wtoi(L"+8"), 8);
  EXPECT_EQ(wtoi(L"12abc"), 12);
  EXPECT_EQ(wtoi(L"1.9"), 1);
  EXPECT_EQ(wtoi(L"abc"), 0);
  EXPECT_EQ(wtoi(L""), 0);
  EXPECT_EQ(wtoi(L"- 5"), 0);
  EXPECT_EQ(wtoi(L"0x1F"), 0);
  EXPECT_EQ(wtoi(L"2147483647"), INT32_MAX);
  EXPECT_EQ(wtoi(L"-2147483648"), INT32_MIN);
  EXPECT_EQ(wtoi(L"2147483648"), INT32_MAX);
  EXPECT_EQ(wtoi(L"-99999999999999999999999"), INT32_MIN);
  EXPECT_EQ(wtoi(L"\u00A012"), 0);  // only the C locale's white space is skipped
}

TEST(NumberParsingTest, Wtof) {
  EXPECT_EQ(wtof(L"1.5"), 1.5);
  EXPECT_EQ(wtof(L"  -2.25e2 m"), -225.0);
  EXPECT_EQ(wtof(L"1,5"), 1.0);
  EXPECT_EQ(wtof(L".5"), 0.5);
  EXPECT_EQ(wtof(L"5."), 5.0);
  EXPECT_EQ(wtof(L"1e"), 1.0);
  EXPECT_EQ(wtof(L"1e+"), 1.0);
  EXPECT_EQ(wtof(L"1E3"), 1000.0);
  EXPECT_EQ(wtof(L"0x1.8p3"), 12.0);
  EXPECT_EQ(wtof(L"-0X10"), -16.0);
  EXPECT_EQ(wtof(L"0x"), 0.0);
  EXPECT_EQ(wtof(L"0xg"), 0.0);
  EXPECT_EQ(wtof(L"abc"), 0.0);
  EXPECT_EQ(wtof(L"."), 0.0);
  EXPECT_EQ(wtof(L"+-1"), 0.0);
  EXPECT_EQ(wtof(L"0.1"), 0.1);  // correctly rounded
  EXPECT_EQ(wtof(L"2.2250738585072011e-308"), 2.2250738585072011e-308);
  EXPECT_TRUE(std::isinf(wtof(L"inf")));
  EXPECT_TRUE(std::isinf(wtof(L"INFINITY")));
  EXPECT_LT(wtof(L"-Inf"), 0.0);
  EXPECT_TRUE(std::isnan(wtof(L"nan")));
  EXPECT_TRUE(std::isnan(wtof(L"NaN(123)")));
  EXPECT_EQ(wtof(L"1e400"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(wtof(L"-1e400"), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(wtof(L"1" + wstring(400, L'0')), std::numeric_limits<double>::infinity());
  EXPECT_EQ(wtof(L"1e-400"), 0.0);
  EXPECT_EQ(wtof(L"0." + wstring(400, L'0') + L"1"), 0.0);
  EXPECT_EQ(wtof(L"0." + wstring(400, L'0') + L"1e300"), 1e-101);
  EXPECT_EQ(wtof(L"0x1p5000"), std::numeric_limits<double>::infinity());
}

TEST(NumberParsingTest, ScanPoint) {
  struct Case {
    const wchar_t* text;
    int fields;
    Point3d point;
  };
  const Point3d untouched{-9, -9, -9};
  const Case cases[] = {
      {L"1,2,3", 3, {1, 2, 3}},
      {L" 1.5, -2e1,\t.25xyz", 3, {1.5, -20, 0.25}},
      {L"1,2", 2, {1, 2, -9}},
      {L"1,2,3,4", 3, {1, 2, 3}},
      {L"1 ,2,3", 1, {1, -9, -9}},  // the comma matches only where it stands
      {L"1,", 1, {1, -9, -9}},
      {L"a,2,3", 0, untouched},
      {L"", -1, untouched},
      {L" \t ", -1, untouched},
      {L"1e,2,3", 3, {1, 2, 3}},  // the runtime swallows the dangling exponent mark
      {L"0x10,inf,-0x1p-1", 3, {16, std::numeric_limits<double>::infinity(), -0.5}},
      {L"0x,1,1", 0, untouched},
      {L"-,1,1", 0, untouched},
      {L"1,2,in", 2, {1, 2, -9}},
  };
  for (const Case& c : cases) {
    Point3d p = untouched;
    EXPECT_EQ(scanPoint(c.text, p), c.fields) << toUtf8(c.text);
    EXPECT_EQ(p, c.point) << toUtf8(c.text);
  }
  Point3d p = untouched;
  EXPECT_EQ(scanPoint(wstring(L"1,2\0,3", 6), p), 2) << "an embedded NUL ends the text";
}

#if defined(__GLIBC__)
// Random texts over the characters that matter to number parsing, checked
// against the C runtime.
TEST(NumberParsingTest, MatchesTheCRuntimeOnRandomTexts) {
  const wstring alphabet = L"0123456789.,eEpP+-xXaAnNiIfFtTyY() \t";
  std::mt19937 random(20240611);
  std::uniform_int_distribution<size_t> pick(0, alphabet.size() - 1);
  std::uniform_int_distribution<int> length(0, 12);
  for (int round = 0; round < 200000; ++round) {
    wstring text;
    for (int n = length(random); n > 0; --n) text += alphabet[pick(random)];
    const std::string shown = toUtf8(text);

    Point3d ours{-9, -9, -9};
    double x = -9, y = -9, z = -9;
    const int theirs = std::swscanf(text.c_str(), L"%lf,%lf,%lf", &x, &y, &z);
    ASSERT_EQ(scanPoint(text, ours), theirs) << '"' << shown << '"';
    const Point3d expected{x, y, z};
    ASSERT_TRUE(ours == expected || (std::isnan(x) || std::isnan(y) || std::isnan(z)))
        << '"' << shown << '"';

    const double parsed = wtof(text);
    const double reference = std::wcstod(text.c_str(), nullptr);
    ASSERT_TRUE(parsed == reference || (std::isnan(parsed) && std::isnan(reference)))
        << '"' << shown << '"';
    ASSERT_EQ(std::signbit(parsed), std::signbit(reference)) << '"' << shown << '"';
  }
}
#endif

TEST(CaseFoldingTest, LowerCaseByScript) {
  EXPECT_EQ(lowerCase(L"Hello, World 09_@[`{"), L"hello, world 09_@[`{");
  // Latin-1: the multiplication sign sits among the capitals and stays.
  EXPECT_EQ(lowerCase(L"\u00C0\u00C9\u00D6\u00D7\u00D8\u00DE\u00DF\u00F7"),
            L"\u00E0\u00E9\u00F6\u00D7\u00F8\u00FE\u00DF\u00F7");
  // Latin Extended-A, including the stretches paired the other way round.
  EXPECT_EQ(lowerCase(L"\u0100\u0101\u012E\u0130\u0131\u0132\u0136\u0138"),
            L"\u0101\u0101\u012F\u0069\u0131\u0133\u0137\u0138");
  EXPECT_EQ(lowerCase(L"\u0139\u013A\u013D\u0147\u0148\u0149\u014A\u0150\u0176"),
            L"\u013A\u013A\u013E\u0148\u0148\u0149\u014B\u0151\u0177");
  EXPECT_EQ(lowerCase(L"\u0178\u0179\u017B\u017D\u017E\u017F"),
            L"\u00FF\u017A\u017C\u017E\u017E\u017F");
  EXPECT_EQ(lowerCase(L"\u0391\u03A1\u03A2\u03A3\u03A9\u03AA\u03B1"),
            L"\u03B1\u03C1\u03A2\u03C3\u03C9\u03AA\u03B1");
  EXPECT_EQ(lowerCase(L"\u0400\u0401\u040F\u0410\u042F\u0430\u0450\u0460"),
            L"\u0450\u0451\u045F\u0430\u044F\u0430\u0450\u0460");
  EXPECT_EQ(lowerCase(L"\u4E2D\U0001F600"), L"\u4E2D\U0001F600");
}

TEST(CaseFoldingTest, LoweringGivesOneCharacterThatStaysAndEqualsIgnoringCase) {
  for (wchar_t c = 0; c < 0x500; ++c) {
    const wstring once = lowerCase(wstring(1, c));
    ASSERT_EQ(once.size(), 1u);
    ASSERT_EQ(lowerCase(once), once) << static_cast<int>(c);
    ASSERT_TRUE(equalsIgnoreCase(wstring(1, c), once)) << static_cast<int>(c);
  }
}

TEST(CaseFoldingTest, EqualsIgnoreCase) {
  EXPECT_TRUE(equalsIgnoreCase(L"Parcels", L"pARCELS"));
  EXPECT_TRUE(equalsIgnoreCase(L"", L""));
  EXPECT_TRUE(equalsIgnoreCase(L"\u0416\u0398\u00C5", L"\u0436\u03B8\u00E5"));
  EXPECT_FALSE(equalsIgnoreCase(L"Parcel", L"Parcels"));
  EXPECT_FALSE(equalsIgnoreCase(L"abc", L"abd"));
  EXPECT_FALSE(equalsIgnoreCase(L"\u00D7", L"\u00F7"));  // x and / signs are no case pair
  EXPECT_FALSE(equalsIgnoreCase(L"\u0131", L"I"));       // dotless i lowers to nothing else
}

TEST(Utf8Test, RoundTripsEveryCodePoint) {
  if (sizeof(wchar_t) < 4) GTEST_SKIP() << "wide characters hold only the BMP here";
  wstring all;
  for (char32_t c = 1; c < 0x110000; ++c) {
    if (c < 0xD800 || c > 0xDFFF) all += static_cast<wchar_t>(c);
  }
  const std::string utf8 = toUtf8(all);
  EXPECT_EQ(fromUtf8(utf8), all);
  EXPECT_EQ(toUtf8(L"A\u00E9\u20AC\U0001F600"), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(fromUtf8(std::string("a\0b", 3)), wstring(L"a\0b", 3));
}

TEST(Utf8Test, InvalidInputBecomesReplacementCharacters) {
  const wstring r = L"\uFFFD";
  EXPECT_EQ(fromUtf8("\x80"), r);
  EXPECT_EQ(fromUtf8("a\xFF"
                     "b"),
            L"a" + r + L"b");
  EXPECT_EQ(fromUtf8("\xC0\xAF"), r + r);          // overlong '/'
  EXPECT_EQ(fromUtf8("\xE0\x80\xAF"), r + r + r);  // overlong, three bytes
  EXPECT_EQ(fromUtf8("\xF0\x8F\xBF\xBF"), r + r + r + r);
  EXPECT_EQ(fromUtf8("\xED\xA0\x80"), r + r + r);          // a surrogate
  EXPECT_EQ(fromUtf8("\xF4\x90\x80\x80"), r + r + r + r);  // above U+10FFFF
  EXPECT_EQ(fromUtf8("\xE2\x82"), r);                      // cut short at the end
  EXPECT_EQ(fromUtf8("\xE2\x82"
                     "A"),
            r + L"A");  // cut short by a new character
  EXPECT_EQ(fromUtf8("\xF0\x9F\x98"), r);
  EXPECT_EQ(toUtf8(wstring(1, static_cast<wchar_t>(0xD800))), "\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(wstring(1, static_cast<wchar_t>(0x110000))), "\xEF\xBF\xBD");
}

}  // namespace
}  // namespace platform
