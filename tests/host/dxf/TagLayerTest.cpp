// Tests of the lowest layer of drawing-file support: tags in and out, value parsing, text
// encoding and safe saving.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "GroupCodes.h"
#include "TagReader.h"
#include "TagWriter.h"
#include "TextCodec.h"
#include "host/dxf/AtomicFile.h"
#include "host/dxf/ParseError.h"

namespace host::dxf {
namespace {

namespace fs = std::filesystem;

std::vector<Tag> readAll(std::string_view data) {
  TagReader reader(data);
  std::vector<Tag> tags;
  while (auto tag = reader.next()) tags.push_back(*tag);
  return tags;
}

// The error reading the data raises, or a line 0 error saying there was none.
ParseError errorOf(std::string_view data) {
  try {
    readAll(data);
  } catch (const ParseError& error) {
    return error;
  }
  return ParseError(0, "no error");
}

// ---- TagReader ----

TEST(TagReaderTest, ReadsCodesValuesLinesAndOffsets) {
  const std::string data = "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n";
  const std::vector<Tag> tags = readAll(data);
  ASSERT_EQ(tags.size(), 4u);
  EXPECT_EQ(tags[0].code, 0);
  EXPECT_EQ(tags[0].value, "SECTION");
  EXPECT_EQ(tags[0].line, 1u);
  EXPECT_EQ(tags[0].offset, 0u);
  EXPECT_EQ(tags[1].code, 2);
  EXPECT_EQ(tags[1].value, "HEADER");
  EXPECT_EQ(tags[1].line, 3u);
  EXPECT_EQ(tags[1].offset, 12u);
  EXPECT_EQ(tags[3].code, 1);
  EXPECT_EQ(tags[3].value, "AC1015");
  EXPECT_EQ(tags[3].line, 7u);
  EXPECT_EQ(data.substr(tags[3].offset, 4), "  1\n");
}

TEST(TagReaderTest, ValuesAreViewsIntoTheBuffer) {
  const std::string data = "  1\nabc\n";
  const std::vector<Tag> tags = readAll(data);
  ASSERT_EQ(tags.size(), 1u);
  EXPECT_EQ(tags[0].value.data(), data.data() + 4);
}

TEST(TagReaderTest, StripsCarriageReturnsOfCrlfLines) {
  const std::vector<Tag> tags = readAll("  0\r\nLINE\r\n 10\r\n1.5\r\n");
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_EQ(tags[0].value, "LINE");
  EXPECT_EQ(tags[1].code, 10);
  EXPECT_EQ(tags[1].value, "1.5");
  EXPECT_EQ(tags[1].line, 3u);
}

TEST(TagReaderTest, MixedLineEndsAndOnlyOneCarriageReturnStripped) {
  const std::vector<Tag> tags = readAll("  1\r\na\r\r\n  1\nb\r\n");
  ASSERT_EQ(tags.size(), 2u);
  EXPECT_EQ(tags[0].value, "a\r");
  EXPECT_EQ(tags[1].value, "b");
}

TEST(TagReaderTest, GroupCodeLinesMayCarryBlanks) {
  const std::vector<Tag> tags = readAll("\t 8 \t\n0\n1000  \r\nx\n  -3\nneg\n");
  ASSERT_EQ(tags.size(), 3u);
  EXPECT_EQ(tags[0].code, 8);
  EXPECT_EQ(tags[1].code, 1000);
  EXPECT_EQ(tags[2].code, -3);
}

TEST(TagReaderTest, KeepsBlanksOfValues) {
  const std::vector<Tag> tags = readAll("  1\n  leading and trailing  \n  1\n\n  1\n \t\r\n");
  ASSERT_EQ(tags.size(), 3u);
  EXPECT_EQ(tags[0].value, "  leading and trailing  ");
  EXPECT_EQ(tags[1].value, "");
  EXPECT_EQ(tags[2].value, " \t");
}

TEST(TagReaderTest, LastValueLineNeedsNoLineEnd) {
  const std::vector<Tag> tags = readAll("  0\nEOF");
  ASSERT_EQ(tags.size(), 1u);
  EXPECT_EQ(tags[0].value, "EOF");
  const std::vector<Tag> crTags = readAll("  0\r\nEOF\r");
  ASSERT_EQ(crTags.size(), 1u);
  EXPECT_EQ(crTags[0].value, "EOF");
}

TEST(TagReaderTest, TrailingBlankLinesAndPaddingEndTheData) {
  EXPECT_EQ(readAll("  0\nEOF\n\n\r\n  \n").size(), 1u);
  EXPECT_EQ(readAll(std::string("  0\nEOF\n\x1a\0", 10)).size(), 1u);
  EXPECT_TRUE(readAll("").empty());
  EXPECT_TRUE(readAll("\n\n").empty());
}

TEST(TagReaderTest, SkipsAByteOrderMark) {
  const std::string data = "\xEF\xBB\xBF  0\nEOF\n";
  const std::vector<Tag> tags = readAll(data);
  ASSERT_EQ(tags.size(), 1u);
  EXPECT_EQ(tags[0].code, 0);
  EXPECT_EQ(tags[0].offset, 3u);
  EXPECT_EQ(tags[0].line, 1u);
}

TEST(TagReaderTest, NonNumericGroupCodeNamesTheLine) {
  const ParseError error = errorOf("  0\nSECTION\n  2\nHEADER\nabc\nx\n");
  EXPECT_EQ(error.line(), 5u);
  EXPECT_STREQ(error.what(), "group code expected, found 'abc'");
}

TEST(TagReaderTest, BadGroupCodes) {
  EXPECT_EQ(errorOf("  0\nA\n1.5\nx\n").line(), 3u);
  EXPECT_STREQ(errorOf("  0\nA\n1.5\nx\n").what(), "group code expected, found '1.5'");
  EXPECT_STREQ(errorOf("  0\nA\n\n  1\nx\n").what(), "group code expected, found an empty line");
  EXPECT_STREQ(errorOf("1 0\nx\n").what(), "group code expected, found '1 0'");
  EXPECT_STREQ(errorOf("-\nx\n").what(), "group code expected, found '-'");
  EXPECT_STREQ(errorOf("+5\nx\n").what(), "group code expected, found '+5'");
  // Out of the 16-bit range: the lines have slipped.
  EXPECT_STREQ(errorOf("40000\nx\n").what(), "group code expected, found '40000'");
  EXPECT_STREQ(errorOf("1234567890123\nx\n").what(), "group code expected, found '1234567890123'");
  EXPECT_EQ(readAll("32767\nx\n-32768\ny\n").size(), 2u);
}

TEST(TagReaderTest, QuotedLinesAreCutAndControlBytesHidden) {
  const std::string longLine(100, 'x');
  EXPECT_EQ(std::string(errorOf(longLine + "\n").what()),
            "group code expected, found '" + std::string(40, 'x') + "...'");
  EXPECT_STREQ(errorOf(std::string("a\0b\x01\nx\n", 7)).what(),
               "group code expected, found 'a?b?'");
}

TEST(TagReaderTest, TruncatedFiles) {
  const ParseError noValue = errorOf("  0\nSECTION\n  2\n");
  EXPECT_EQ(noValue.line(), 3u);
  EXPECT_STREQ(noValue.what(), "file ends inside a tag: group code 2 has no value line");
  EXPECT_EQ(errorOf("  0\nSECTION\n  2").line(), 3u);
  EXPECT_STREQ(errorOf("  0\nSECTION\n  2").what(),
               "file ends inside a tag: group code 2 has no value line");
  EXPECT_STREQ(errorOf("999\r\n").what(),
               "file ends inside a tag: group code 999 has no value line");
}

TEST(TagReaderTest, ErrorsLeaveThePositionUnchanged) {
  TagReader reader("  0\nA\nbad\nx\n");
  ASSERT_TRUE(reader.next());
  const TagReader::Position before = reader.position();
  EXPECT_THROW(reader.next(), ParseError);
  EXPECT_EQ(reader.position().offset, before.offset);
  EXPECT_EQ(reader.position().line, before.line);
}

TEST(TagReaderTest, RejectsBinaryFiles) {
  const std::string binary = std::string("AutoCAD Binary DXF\r\n\x1a\0\0\0SECTION", 31);
  try {
    TagReader reader(binary);
    FAIL() << "binary file accepted";
  } catch (const ParseError& error) {
    EXPECT_EQ(error.line(), 1u);
    EXPECT_NE(std::string(error.what()).find("binary DXF"), std::string::npos);
  }
}

TEST(TagReaderTest, PeekAndPositions) {
  const std::string data = "  0\nA\n  8\nB\n  0\nC\n";
  TagReader reader(data);
  auto peeked = reader.peek();
  ASSERT_TRUE(peeked);
  EXPECT_EQ(peeked->value, "A");
  auto first = reader.next();
  ASSERT_TRUE(first);
  EXPECT_EQ(first->value, "A");

  const TagReader::Position mark = reader.position();
  EXPECT_EQ(mark.line, 3u);
  EXPECT_EQ(reader.next()->value, "B");
  EXPECT_EQ(reader.next()->value, "C");
  EXPECT_FALSE(reader.peek());
  EXPECT_FALSE(reader.next());
  EXPECT_TRUE(reader.atEnd());

  reader.seek(mark);
  EXPECT_FALSE(reader.atEnd());
  const auto again = reader.next();
  ASSERT_TRUE(again);
  EXPECT_EQ(again->value, "B");
  EXPECT_EQ(again->line, 3u);
}

TEST(TagReaderTest, PeekReportsErrorsToo) {
  TagReader reader("oops\nx\n");
  EXPECT_THROW(reader.peek(), ParseError);
}

// ---- Group codes ----

TEST(GroupCodesTest, ValueTypesOfEveryRange) {
  struct Case {
    int first;
    int last;
    ValueType type;
  };
  const Case cases[] = {
      {0, 9, ValueType::String},       {10, 59, ValueType::Double},
      {60, 79, ValueType::Int16},      {90, 99, ValueType::Int32},
      {100, 100, ValueType::String},   {102, 102, ValueType::String},
      {105, 105, ValueType::Handle},   {110, 149, ValueType::Double},
      {160, 169, ValueType::Int64},    {170, 179, ValueType::Int16},
      {210, 239, ValueType::Double},   {270, 289, ValueType::Int16},
      {290, 299, ValueType::Bool},     {300, 309, ValueType::String},
      {310, 319, ValueType::Binary},   {320, 369, ValueType::Handle},
      {370, 389, ValueType::Int16},    {390, 399, ValueType::Handle},
      {400, 409, ValueType::Int16},    {410, 419, ValueType::String},
      {420, 429, ValueType::Int32},    {430, 439, ValueType::String},
      {440, 449, ValueType::Int32},    {450, 459, ValueType::Int32},
      {460, 469, ValueType::Double},   {470, 479, ValueType::String},
      {480, 481, ValueType::Handle},   {999, 999, ValueType::Comment},
      {1000, 1003, ValueType::String}, {1004, 1004, ValueType::Binary},
      {1005, 1005, ValueType::Handle}, {1006, 1009, ValueType::String},
      {1010, 1059, ValueType::Double}, {1060, 1070, ValueType::Int16},
      {1071, 1071, ValueType::Int32},
  };
  for (const Case& c : cases) {
    for (int code = c.first; code <= c.last; ++code) {
      EXPECT_EQ(valueType(code), c.type) << "code " << code;
      EXPECT_TRUE(isDefinedCode(code)) << "code " << code;
    }
  }
}

TEST(GroupCodesTest, UndefinedCodesAreStrings) {
  for (int code : {-5, -3, -1, 80, 89, 103, 106, 150, 180, 240, 482, 998, 1072, 5000, 32767}) {
    EXPECT_EQ(valueType(code), ValueType::String) << "code " << code;
    EXPECT_FALSE(isDefinedCode(code)) << "code " << code;
  }
}

TEST(GroupCodesTest, HandleLinkKinds) {
  EXPECT_TRUE(isSoftPointer(320));
  EXPECT_TRUE(isSoftOwner(330));
  EXPECT_TRUE(isSoftOwner(350));
  EXPECT_TRUE(isHardPointer(340));
  EXPECT_TRUE(isHardPointer(390));
  EXPECT_TRUE(isHardPointer(480));
  EXPECT_TRUE(isHardOwner(360));
  EXPECT_FALSE(isHardOwner(330));
  EXPECT_FALSE(isSoftPointer(5));
}

TEST(GroupCodesTest, ParseDouble) {
  EXPECT_EQ(parseDouble("1.5"), 1.5);
  EXPECT_EQ(parseDouble("  -2.25  "), -2.25);
  EXPECT_EQ(parseDouble("\t+3\t"), 3.0);
  EXPECT_EQ(parseDouble("1e3"), 1000.0);
  EXPECT_EQ(parseDouble("1.0E-2"), 0.01);
  EXPECT_EQ(parseDouble(".5"), 0.5);
  EXPECT_EQ(parseDouble("-.5"), -0.5);
  EXPECT_EQ(parseDouble("5."), 5.0);
  EXPECT_EQ(parseDouble("0.1"), 0.1);
  EXPECT_EQ(parseDouble("123456789012345678901234567890"), 1.2345678901234568e29);
  for (const char* bad : {"", "  ", "abc", "1.5x", "1,5", "+-1", "--1", "+", "-", "1 2", "0x10",
                          "inf", "-inf", "nan", "1e999", "1.5\r", ". 5"}) {
    EXPECT_FALSE(parseDouble(bad)) << bad;
  }
}

TEST(GroupCodesTest, ParseDoubleIgnoresTheLocale) {
  const char* previous = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = previous ? previous : "C";
  // A locale with a decimal comma, where installed; the parse must not notice either way.
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  EXPECT_EQ(parseDouble("2.5"), 2.5);
  EXPECT_FALSE(parseDouble("2,5"));
  std::setlocale(LC_NUMERIC, saved.c_str());
}

TEST(GroupCodesTest, ParseInt) {
  EXPECT_EQ(parseInt("0"), 0);
  EXPECT_EQ(parseInt("     1"), 1);
  EXPECT_EQ(parseInt("-32768"), -32768);
  EXPECT_EQ(parseInt("+42 "), 42);
  EXPECT_EQ(parseInt("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(parseInt("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  for (const char* bad : {"", "x", "1.0", "1e3", "9223372036854775808", "+-1", "0x1F", "1 2"}) {
    EXPECT_FALSE(parseInt(bad)) << bad;
  }
}

TEST(GroupCodesTest, ParseHandle) {
  EXPECT_EQ(parseHandle("1F"), 0x1Fu);
  EXPECT_EQ(parseHandle("1f"), 0x1Fu);
  EXPECT_EQ(parseHandle(" 0 "), 0u);
  EXPECT_EQ(parseHandle("FFFFFFFFFFFFFFFF"), std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(parseHandle("00000000000000AB"), 0xABu);
  for (const char* bad : {"", " ", "G", "0x1F", "-1", "+1", "1 F", "10000000000000000"}) {
    EXPECT_FALSE(parseHandle(bad)) << bad;
  }
}

// ---- TagWriter ----

TEST(TagWriterTest, GroupCodesRightAlignedInThreeColumns) {
  std::string out;
  TagWriter writer(out);
  writer.write(0, "SECTION");
  writer.write(10, "x");
  writer.write(330, "1F");
  writer.write(1000, "xdata");
  writer.write(-3, "neg");
  EXPECT_EQ(out, "  0\nSECTION\n 10\nx\n330\n1F\n1000\nxdata\n -3\nneg\n");
}

TEST(TagWriterTest, StringsAreWrittenVerbatim) {
  std::string out;
  TagWriter writer(out);
  writer.write(1, std::string_view("  blanks kept "));
  writer.write(1, std::string("s"));
  writer.write(1, "");
  EXPECT_EQ(out, "  1\n  blanks kept \n  1\ns\n  1\n\n");
}

TEST(TagWriterTest, Integers) {
  std::string out;
  TagWriter writer(out);
  writer.write(70, 0);
  writer.write(90, -123456);
  writer.write(160, std::int64_t{9007199254740993});
  writer.write(71, static_cast<short>(7));
  writer.write(72, 5u);
  EXPECT_EQ(out, " 70\n0\n 90\n-123456\n160\n9007199254740993\n 71\n7\n 72\n5\n");
}

TEST(TagWriterTest, RealsAlwaysLookReal) {
  const std::pair<double, const char*> cases[] = {
      {1.0, "1.0"},
      {0.0, "0.0"},
      {-0.0, "-0.0"},
      {0.1, "0.1"},
      {-2.5, "-2.5"},
      {100000.0, "100000.0"},
      {1e20, "1e+20"},
      {1.5e-7, "1.5e-07"},
      {123456789.125, "123456789.125"},
      {1.0 / 3.0, "0.3333333333333333"},
      {1e-5, "0.00001"},
      {2e-6, "2e-06"},
      {1e14, "100000000000000.0"},
      {1e15, "1e+15"},
  };
  for (const auto& [value, text] : cases) {
    std::string out;
    TagWriter(out).write(40, value);
    EXPECT_EQ(out, std::string(" 40\n") + text + "\n") << text;
  }
}

TEST(TagWriterTest, RealsRoundTrip) {
  for (double value : {0.1, 1.0 / 3.0, 2.0 / 3.0, 1e-300, 1.7976931348623157e308, 4.9e-324,
                       -123.456, 6.02214076e23, 1e15 + 0.5}) {
    std::string out;
    TagWriter(out).write(10, value);
    const std::vector<Tag> tags = readAll(out);
    ASSERT_EQ(tags.size(), 1u);
    EXPECT_EQ(parseDouble(tags[0].value), value) << out;
  }
}

TEST(TagWriterTest, NonFiniteReals) {
  std::string out;
  TagWriter writer(out);
  writer.write(40, std::numeric_limits<double>::infinity());
  writer.write(40, -std::numeric_limits<double>::infinity());
  writer.write(40, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(out, " 40\ninf\n 40\n-inf\n 40\nnan\n");
}

TEST(TagWriterTest, HandlesBoolsAndRaw) {
  std::string out = "kept";
  TagWriter writer(out);
  writer.writeHandle(5, 0x1F);
  writer.writeHandle(330, 0);
  writer.writeHandle(5, 0xABCDEF0123456789);
  writer.write(290, true);
  writer.write(291, false);
  writer.writeRaw("  0\nEOF\n");
  EXPECT_EQ(out, "kept  5\n1F\n330\n0\n  5\nABCDEF0123456789\n290\n1\n291\n0\n  0\nEOF\n");
}

TEST(TagWriterTest, CrlfLineEnds) {
  std::string out;
  TagWriter writer(out, LineEnd::CrLf);
  writer.write(0, "LINE");
  writer.write(10, 1.0);
  writer.writeHandle(5, 0x2A);
  EXPECT_EQ(out, "  0\r\nLINE\r\n 10\r\n1.0\r\n  5\r\n2A\r\n");
  const std::vector<Tag> tags = readAll(out);
  ASSERT_EQ(tags.size(), 3u);
  EXPECT_EQ(tags[1].value, "1.0");
}

TEST(TagWriterTest, WhatIsWrittenReadsBack) {
  std::string out;
  TagWriter writer(out);
  writer.write(0, "TEXT");
  writer.writeHandle(5, 0x3B);
  writer.write(8, " layer ");
  writer.write(40, 2.5);
  writer.write(70, -1);
  writer.write(1071, 123456);
  const std::vector<Tag> tags = readAll(out);
  ASSERT_EQ(tags.size(), 6u);
  EXPECT_EQ(parseHandle(tags[1].value), 0x3Bu);
  EXPECT_EQ(tags[2].value, " layer ");
  EXPECT_EQ(parseDouble(tags[3].value), 2.5);
  EXPECT_EQ(parseInt(tags[4].value), -1);
  EXPECT_EQ(tags[5].code, 1071);
  EXPECT_EQ(parseInt(tags[5].value), 123456);
}

// ---- TextCodec ----

TEST(TextCodecTest, VersionChoosesUtf8OrTheCodePage) {
  EXPECT_FALSE(TextCodec("AC1015", "ANSI_1252").usesUtf8());
  EXPECT_FALSE(TextCodec("AC1018", "ANSI_1252").usesUtf8());
  EXPECT_TRUE(TextCodec("AC1021", "ANSI_1252").usesUtf8());
  EXPECT_TRUE(TextCodec("AC1032", "ANSI_932").usesUtf8());
  EXPECT_TRUE(TextCodec(" ac1024 ", "").usesUtf8());
  EXPECT_FALSE(TextCodec("", "ANSI_1252").usesUtf8());
  EXPECT_FALSE(TextCodec("AC1009", "ANSI_1252").usesUtf8());
  EXPECT_EQ(TextCodec("AC1015", "ANSI_1251").charset(), "CP1251");
  EXPECT_EQ(TextCodec("AC1015", "ansi_932").charset(), "CP932");
  EXPECT_EQ(TextCodec("AC1032", "ANSI_932").charset(), "UTF-8");
}

TEST(TextCodecTest, UnknownCodePagesFallBackTo1252) {
  const TextCodec unknown("AC1015", "KLINGON");
  EXPECT_EQ(unknown.charset(), "CP1252");
  EXPECT_TRUE(unknown.codePageFellBack());
  const TextCodec missing("AC1015", "ANSI_99999");
  EXPECT_EQ(missing.charset(), "CP1252");
  EXPECT_TRUE(missing.codePageFellBack());
  EXPECT_FALSE(TextCodec("AC1015", "ANSI_1252").codePageFellBack());
  EXPECT_EQ(unknown.decode("caf\xE9"), L"caf\u00E9");
}

TEST(TextCodecTest, Utf8RoundTrip) {
  const TextCodec codec("AC1027", "ANSI_1252");
  const std::wstring text = L"Stra\u00DFe \u65E5\u672C \u20AC \U0001F600 plain";
  const std::string bytes = codec.encode(text);
  EXPECT_EQ(bytes,
            "Stra\xC3\x9F"
            "e \xE6\x97\xA5\xE6\x9C\xAC \xE2\x82\xAC \xF0\x9F\x98\x80 plain");
  EXPECT_EQ(codec.decode(bytes), text);
}

TEST(TextCodecTest, AsciiPassesThrough) {
  for (const TextCodec& codec : {TextCodec("AC1027", ""), TextCodec("AC1015", "ANSI_1252"),
                                 TextCodec("AC1015", "ANSI_932")}) {
    EXPECT_EQ(codec.decode("Layer 0 \\P text"), L"Layer 0 \\P text");
    EXPECT_EQ(codec.encode(L"Layer 0 \\P text"), "Layer 0 \\P text");
    EXPECT_EQ(codec.decode(""), L"");
    EXPECT_EQ(codec.encode(L""), "");
  }
}

TEST(TextCodecTest, UnicodeEscapesDecodeInBothModes) {
  for (const TextCodec& codec : {TextCodec("AC1027", ""), TextCodec("AC1015", "ANSI_1252")}) {
    EXPECT_EQ(codec.decode("\\U+00E9t\\u+00e9"), L"\u00E9t\u00E9");
    EXPECT_EQ(codec.decode("x\\U+65E5\\U+672Cy"), L"x\u65E5\u672Cy");
    // A surrogate pair spelt as two escapes is one character.
    EXPECT_EQ(codec.decode("\\U+D83D\\U+DE00"), L"\U0001F600");
    // Not escapes: too few digits, no plus, not hex; the multibyte form is left alone.
    EXPECT_EQ(codec.decode("\\U+12"), L"\\U+12");
    EXPECT_EQ(codec.decode("\\U0041"), L"\\U0041");
    EXPECT_EQ(codec.decode("\\U+00G1"), L"\\U+00G1");
    EXPECT_EQ(codec.decode("\\M+18140"), L"\\M+18140");
    // Exactly four digits: the fifth is text.
    EXPECT_EQ(codec.decode("\\U+00411"), L"A1");
    EXPECT_EQ(codec.decode("\\\\U+0041"), L"\\A");
  }
  // Escapes next to bytes of the code page.
  EXPECT_EQ(TextCodec("AC1015", "ANSI_1252").decode("\xE9\\U+20AC"), L"\u00E9\u20AC");
  EXPECT_EQ(TextCodec("AC1027", "").decode("\xC3\xA9\\U+20AC"), L"\u00E9\u20AC");
}

TEST(TextCodecTest, Cp1252RoundTripWithEscapes) {
  const TextCodec codec("AC1015", "ANSI_1252");
  EXPECT_EQ(codec.encode(L"caf\u00E9 \u20AC"), "caf\xE9 \x80");
  EXPECT_EQ(codec.decode("caf\xE9 \x80"), L"caf\u00E9 \u20AC");

  const std::wstring text = L"\u00C5ngstr\u00F6m \u65E5\u672C \u0416 \U0001F600!";
  const std::string bytes = codec.encode(text);
  EXPECT_EQ(bytes, "\xC5ngstr\xF6m \\U+65E5\\U+672C \\U+0416 \\U+D83D\\U+DE00!");
  EXPECT_EQ(codec.decode(bytes), text);
}

TEST(TextCodecTest, Cp1251) {
  const TextCodec codec("AC1018", "ANSI_1251");
  EXPECT_EQ(codec.encode(L"\u041F\u0440\u0438\u0432\u0435\u0442"), "\xCF\xF0\xE8\xE2\xE5\xF2");
  EXPECT_EQ(codec.decode("\xCF\xF0\xE8\xE2\xE5\xF2"), L"\u041F\u0440\u0438\u0432\u0435\u0442");
  EXPECT_EQ(codec.encode(L"\u00E9"), "\\U+00E9");
}

TEST(TextCodecTest, Cp932) {
  const TextCodec codec("AC1015", "ANSI_932");
  EXPECT_EQ(codec.encode(L"\u65E5\u672C"), "\x93\xFA\x96\x7B");
  EXPECT_EQ(codec.decode("\x93\xFA\x96\x7B"), L"\u65E5\u672C");
  // The second byte of this character is a backslash; it starts no escape.
  EXPECT_EQ(codec.decode("\x83\x5CU+0041"), L"\u30BDU+0041");
  EXPECT_EQ(codec.encode(L"\u30BDU+0041"), "\x83\x5CU+0041");
  // Half-width katakana are single bytes.
  EXPECT_EQ(codec.decode("\xB1"), L"\uFF71");
  // What Shift-JIS cannot hold is escaped.
  EXPECT_EQ(codec.encode(L"\u65E5\u00E9"), "\x93\xFA\\U+00E9");
  EXPECT_EQ(codec.decode(codec.encode(L"\u65E5\u00E9")), L"\u65E5\u00E9");
}

TEST(TextCodecTest, InvalidBytesBecomeReplacementCharacters) {
  EXPECT_EQ(TextCodec("AC1027", "")
                .decode("a\xFF"
                        "b"),
            L"a\uFFFDb");
  EXPECT_EQ(TextCodec("AC1015", "ANSI_1252")
                .decode("a\x81"
                        "b"),
            L"a\uFFFDb");
  // A lead byte with nothing after it.
  EXPECT_EQ(TextCodec("AC1015", "ANSI_932").decode("a\x93"), L"a\uFFFD");
}

TEST(TextCodecTest, LoneSurrogatesSurviveAsEscapes) {
  for (const TextCodec& codec : {TextCodec("AC1027", ""), TextCodec("AC1015", "ANSI_1252")}) {
    const std::wstring lone = codec.decode("a\\U+D800b");
    EXPECT_EQ(lone, std::wstring(L"a") + static_cast<wchar_t>(0xD800) + L"b");
    EXPECT_EQ(codec.encode(lone + L"\u00E9"),
              codec.usesUtf8() ? "a\\U+D800b\xC3\xA9" : "a\\U+D800b\xE9");
  }
}

TEST(TextCodecTest, LongTextsThroughIconv) {
  const TextCodec codec("AC1015", "ANSI_932");
  std::wstring text;
  for (int i = 0; i < 5000; ++i) text += L"\u65E5a\u00E9";
  const std::string bytes = codec.encode(text);
  EXPECT_EQ(codec.decode(bytes), text);
}

// ---- Files ----

class FileTest : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/dxf-file-test-XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    dir_ = pattern;
  }
  void TearDown() override {
    std::error_code error;
    fs::permissions(dir_, fs::perms::owner_all, error);
    fs::remove_all(dir_, error);
  }

  static void writeText(const fs::path& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
  }
  static std::string readText(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
  }
  // Names in the directory other than the expected ones: leftover temporary files.
  std::vector<std::string> entries() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir_)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  fs::path dir_;
};

TEST_F(FileTest, SaveCreatesAndReplaces) {
  const fs::path target = dir_ / "drawing.dxf";
  EXPECT_EQ(writeFileAtomically(target, "first"), std::nullopt);
  EXPECT_EQ(readText(target), "first");
  EXPECT_EQ(writeFileAtomically(target, "second, longer"), std::nullopt);
  EXPECT_EQ(readText(target), "second, longer");
  EXPECT_EQ(writeFileAtomically(target, ""), std::nullopt);
  EXPECT_EQ(readText(target), "");
  EXPECT_EQ(entries(), std::vector<std::string>{"drawing.dxf"});
}

TEST_F(FileTest, SaveKeepsOwnerPermissionsAndLinks) {
  const fs::path target = dir_ / "drawing.dxf";
  writeText(target, "old");
  // Another user's file, as root saves it for them; the owner goes before the mode, since a
  // change of owner clears the set-group-id bit.
  const bool root = ::geteuid() == 0;
  const uid_t nobody = 65534;
  if (root) {
    ASSERT_EQ(::chown(target.c_str(), nobody, nobody), 0);
  }
  ASSERT_EQ(::chmod(target.c_str(), root ? 02640 : 0640), 0);
  const fs::path link = dir_ / "link.dxf";
  fs::create_symlink(target, link);
  EXPECT_EQ(writeFileAtomically(link, "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_EQ(readText(target), "new");
  struct stat info {};
  ASSERT_EQ(::stat(target.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, root ? 02640u : 0640u);
  if (root) {
    EXPECT_EQ(info.st_uid, nobody);
    EXPECT_EQ(info.st_gid, nobody);
  }

  // A link that points nowhere, relative to its own folder: the file it names is made.
  fs::create_directory(dir_ / "sub");
  const fs::path dangling = dir_ / "sub" / "dangling.dxf";
  fs::create_symlink("../made.dxf", dangling);
  EXPECT_EQ(writeFileAtomically(dangling, "made"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(dangling));
  EXPECT_EQ(readText(dir_ / "made.dxf"), "made");
}

// What a save must not replace is refused before anything is written, naming the file and why.
TEST_F(FileTest, SaveRefusesTargetsThatAreNoWritableRegularFile) {
  struct Case {
    const char* name;
    std::function<bool(const fs::path&)> make;  // false: cannot be made here
    const char* reason;
  };
  const std::vector<Case> cases = {
      {"pipe", [](const fs::path& p) { return ::mkfifo(p.c_str(), 0644) == 0; }, "pipe"},
      {"device",
       [](const fs::path& p) { return ::mknod(p.c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0; },
       "device"},
      {"folder", [](const fs::path& p) { return fs::create_directory(p); }, "directory"},
      {"read-only",
       [](const fs::path& p) {
         writeText(p, "precious");
         return ::chmod(p.c_str(), 0444) == 0;
       },
       ::geteuid() == 0 ? "read-only" : std::strerror(EACCES)},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const fs::path target = dir_ / c.name;
    if (!c.make(target)) continue;  // devices need root
    struct stat before {};
    ASSERT_EQ(::lstat(target.c_str(), &before), 0);
    // Through a link too: the link's target is what is refused.
    const fs::path link = dir_ / (std::string(c.name) + ".link");
    fs::create_symlink(target, link);
    for (const fs::path& path : {target, link}) {
      const auto error = writeFileAtomically(path, "replacement");
      ASSERT_TRUE(error);
      EXPECT_NE(error->find("'" + path.string() + "'"), std::string::npos) << *error;
      EXPECT_NE(error->find(c.reason), std::string::npos) << *error;
    }
    struct stat after {};
    ASSERT_EQ(::lstat(target.c_str(), &after), 0);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(after.st_ino, before.st_ino);
    if (S_ISREG(after.st_mode)) {
      EXPECT_EQ(readText(target), "precious");
    }
  }
  // Nothing left behind: only the targets and their links.
  EXPECT_EQ(entries().size(), 2 * cases.size() - (::geteuid() == 0 ? 0 : 2));
}

TEST_F(FileTest, SaveIntoMissingDirectoryFails) {
  const fs::path target = dir_ / "no-such-dir" / "drawing.dxf";
  const auto error = writeFileAtomically(target, "data");
  ASSERT_TRUE(error);
  EXPECT_NE(error->find(target.string()), std::string::npos) << *error;
  EXPECT_NE(error->find(std::strerror(ENOENT)), std::string::npos) << *error;
}

// An unwritable directory: the save cannot even begin, and the old file stays. Root may write
// anywhere, so as root the save is tried in a child that has given up its privileges.
TEST_F(FileTest, SaveIntoUnwritableDirectoryLeavesTheTargetIntact) {
  const fs::path target = dir_ / "drawing.dxf";
  writeText(target, "precious");
  ASSERT_EQ(::chmod(dir_.c_str(), 0555), 0);
  ASSERT_EQ(::chmod(target.c_str(), 0644), 0);

  auto attempt = [&]() -> int {
    const auto error = writeFileAtomically(target, "replacement");
    if (!error) return 1;
    if (error->find(target.string()) == std::string::npos) return 2;
    if (error->find(std::strerror(EACCES)) == std::string::npos) return 3;
    return 0;
  };
  if (::geteuid() != 0) {
    EXPECT_EQ(attempt(), 0);
  } else {
    const pid_t child = ::fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      const uid_t nobody = 65534;
      if (::setgid(nobody) != 0 || ::setuid(nobody) != 0) ::_exit(10);
      ::_exit(attempt());
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0) << "1: saved anyway, 2: file not named, 3: reason missing";
  }
  EXPECT_EQ(readText(target), "precious");
  EXPECT_EQ(entries(), std::vector<std::string>{"drawing.dxf"});
}

// A write that fails part way (the file size limit here, which holds for root too): the
// temporary file goes and the old file stays.
TEST_F(FileTest, FailedWriteRemovesTheTemporaryFile) {
  const fs::path target = dir_ / "drawing.dxf";
  writeText(target, "precious");
  const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit saved{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &saved), 0);
  rlimit small = saved;
  small.rlim_cur = 4096;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const auto error = writeFileAtomically(target, std::string(100000, 'x'));
  ::setrlimit(RLIMIT_FSIZE, &saved);
  std::signal(SIGXFSZ, oldHandler);

  ASSERT_TRUE(error);
  EXPECT_NE(error->find(target.string()), std::string::npos) << *error;
  EXPECT_NE(error->find(std::strerror(EFBIG)), std::string::npos) << *error;
  EXPECT_EQ(readText(target), "precious");
  EXPECT_EQ(entries(), std::vector<std::string>{"drawing.dxf"});
}

TEST_F(FileTest, ReadWholeFile) {
  const fs::path path = dir_ / "in.dxf";
  std::string data;
  for (int i = 0; i < 100000; ++i) data += "  0\nLINE\n";
  writeText(path, data);
  const FileBytes read = readWholeFile(path);
  EXPECT_FALSE(read.error);
  EXPECT_EQ(read.bytes, data);

  writeText(path, "");
  const FileBytes empty = readWholeFile(path);
  EXPECT_FALSE(empty.error);
  EXPECT_EQ(empty.bytes, "");
}

TEST_F(FileTest, ReadErrorsNameTheFile) {
  const FileBytes missing = readWholeFile(dir_ / "missing.dxf");
  ASSERT_TRUE(missing.error);
  EXPECT_NE(missing.error->find("missing.dxf"), std::string::npos);
  EXPECT_NE(missing.error->find(std::strerror(ENOENT)), std::string::npos);
  EXPECT_TRUE(missing.bytes.empty());

  const FileBytes directory = readWholeFile(dir_);
  ASSERT_TRUE(directory.error);
  EXPECT_NE(directory.error->find(std::strerror(EISDIR)), std::string::npos);
}

TEST_F(FileTest, ReadsWhatWasSaved) {
  const fs::path path = dir_ / "round.dxf";
  std::string out;
  TagWriter writer(out, LineEnd::CrLf);
  writer.write(0, "SECTION");
  writer.write(2, "ENTITIES");
  writer.write(0, "ENDSEC");
  writer.write(0, "EOF");
  ASSERT_EQ(writeFileAtomically(path, out), std::nullopt);
  const FileBytes read = readWholeFile(path);
  ASSERT_FALSE(read.error);
  const std::vector<Tag> tags = readAll(read.bytes);
  ASSERT_EQ(tags.size(), 4u);
  EXPECT_EQ(tags[3].value, "EOF");
  EXPECT_EQ(tags[3].line, 7u);
}

}  // namespace
}  // namespace host::dxf
