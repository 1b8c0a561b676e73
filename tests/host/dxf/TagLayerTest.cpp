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
#include "TestText.h"
#include "TextCodec.h"
#include "host/dxf/AtomicFile.h"
#include "host/dxf/ParseError.h"

namespace host::dxf {
namespace {

namespace fs = std::filesystem;

// ---- TagReader ----

TEST(TagReaderTest, SplitsTheLinesIntoTags) {
  struct Case {
    const char* name;
    std::string data;
    const char* tags;  // each as line:code[value]
  };
  const Case cases[] = {
      {"LF line ends", "  0\nSECTION\n  2\nHEADER\n", "1:0[SECTION]3:2[HEADER]"},
      {"CRLF line ends", "  0\r\nLINE\r\n 10\r\n1.5\r\n", "1:0[LINE]3:10[1.5]"},
      {"one carriage return stripped", "  1\r\na\r\r\n  1\nb\r\n", "1:1[a\r]3:1[b]"},
      {"blanks around codes", "\t 8 \t\n0\n1000  \r\nx\n  -3\nneg\n", "1:8[0]3:1000[x]5:-3[neg]"},
      {"blanks of values kept", "  1\n  both ends  \n  1\n\n  1\n \t\r\n",
       "1:1[  both ends  ]3:1[]5:1[ \t]"},
      {"no line end at the end", "  0\nEOF", "1:0[EOF]"},
      {"a carriage return at the end", "  0\r\nEOF\r", "1:0[EOF]"},
      {"blank lines at the end", "  0\nEOF\n\n\r\n  \n", "1:0[EOF]"},
      {"padding at the end", std::string("  0\nEOF\n\x1a\0", 10), "1:0[EOF]"},
      {"nothing", "", ""},
      {"blank lines only", "\n\n", ""},
      {"a byte order mark", "\xEF\xBB\xBF  0\nEOF\n", "1:0[EOF]"},
      {"the 16-bit range", "32767\nx\n-32768\ny\n", "1:32767[x]3:-32768[y]"},
  };
  for (const Case& c : cases) {
    std::string tags;
    for (const Tag& t : tagsOf(c.data)) {
      tags +=
          std::to_string(t.line) + ":" + std::to_string(t.code) + "[" + std::string(t.value) + "]";
    }
    EXPECT_EQ(tags, c.tags) << c.name;
  }
  // Offsets are those of the group-code lines, past a byte order mark; values view the data.
  const std::string data = "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n";
  const std::vector<Tag> tags = tagsOf(data);
  EXPECT_EQ(tags.at(1).offset, 12u);
  EXPECT_EQ(data.substr(tags.at(3).offset, 4), "  1\n");
  EXPECT_EQ(tags.at(3).value.data(), data.data() + data.find("AC1015"));
  EXPECT_EQ(tagsOf("\xEF\xBB\xBF  0\nEOF\n").at(0).offset, 3u);
}

TEST(TagReaderTest, MalformedDataIsRefusedWithItsLine) {
  struct Case {
    std::string data;
    std::size_t line;
    std::string message;
  };
  const std::string codeExpected = "group code expected, found ";
  const std::string noValue = "file ends inside a tag: group code 2 has no value line";
  const Case cases[] = {
      {"  0\nSECTION\n  2\nHEADER\nabc\nx\n", 5, codeExpected + "'abc'"},
      {"  0\nA\n1.5\nx\n", 3, codeExpected + "'1.5'"},
      {"  0\nA\n\n  1\nx\n", 3, codeExpected + "an empty line"},
      {"1 0\nx\n", 1, codeExpected + "'1 0'"},
      {"-\nx\n", 1, codeExpected + "'-'"},
      {"+5\nx\n", 1, codeExpected + "'+5'"},
      // Out of the 16-bit range: the lines have slipped.
      {"40000\nx\n", 1, codeExpected + "'40000'"},
      {"1234567890123\nx\n", 1, codeExpected + "'1234567890123'"},
      // Quoted lines are cut and their control bytes hidden.
      {std::string(100, 'x') + "\n", 1, codeExpected + "'" + std::string(40, 'x') + "...'"},
      {std::string("a\0b\x01\nx\n", 7), 1, codeExpected + "'a?b?'"},
      {"  0\nSECTION\n  2\n", 3, noValue},
      {"  0\nSECTION\n  2", 3, noValue},
      {"999\r\n", 1, "file ends inside a tag: group code 999 has no value line"},
      {std::string("AutoCAD Binary DXF\r\n\x1a\0\0\0SECTION", 31), 1,
       "this is a binary DXF file; only ASCII DXF files can be read"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.message);
    try {
      tagsOf(c.data);
      ADD_FAILURE() << "accepted";
    } catch (const ParseError& error) {
      EXPECT_EQ(error.line(), c.line);
      EXPECT_EQ(error.what(), c.message);
    }
  }
}

TEST(TagReaderTest, PeekSeekAndErrorsLeaveThePositionUnchanged) {
  TagReader reader("  0\nA\n  8\nB\n  0\nC\nbad\nx\n");
  EXPECT_EQ(reader.peek()->value, "A");
  EXPECT_EQ(reader.next()->value, "A");
  const TagReader::Position mark = reader.position();
  EXPECT_EQ(mark.line, 3u);
  EXPECT_EQ(reader.next()->value, "B");
  EXPECT_EQ(reader.next()->value, "C");
  const TagReader::Position before = reader.position();
  EXPECT_THROW(reader.peek(), ParseError);
  EXPECT_THROW(reader.next(), ParseError);
  EXPECT_EQ(reader.position().offset, before.offset);
  EXPECT_EQ(reader.position().line, before.line);
  reader.seek(mark);
  const auto again = reader.next();
  ASSERT_TRUE(again);
  EXPECT_EQ(again->value, "B");
  EXPECT_EQ(again->line, 3u);

  TagReader ended("  0\nA\n");
  ended.next();
  EXPECT_FALSE(ended.peek());
  EXPECT_FALSE(ended.next());
  EXPECT_TRUE(ended.atEnd());
}

// ---- Group codes ----

// Whether the value is one of the type.
bool fits(ValueType type, std::string_view value) {
  const auto integer = parseInt(value);
  switch (type) {
    case ValueType::Double:
      return parseDouble(value).has_value();
    case ValueType::Int16:
      return integer && *integer == static_cast<std::int16_t>(*integer);
    case ValueType::Int32:
      return integer && *integer == static_cast<std::int32_t>(*integer);
    case ValueType::Int64:
      return integer.has_value();
    case ValueType::Bool:
      return integer && (*integer == 0 || *integer == 1);
    case ValueType::Handle:
      return parseHandle(value).has_value();
    case ValueType::Binary:
      return value.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
    default:
      return true;
  }
}

// Each code's type fits the values that real drawings, one of them written by another
// program, carry under it.
TEST(GroupCodesTest, ValueTypesFitTheValuesOfRealDrawings) {
  for (const char* name : {"full_r2018.dxf", "od_r2000.dxf"}) {
    const std::string text = fixture(name);
    ASSERT_FALSE(text.empty()) << name;
    for (const Tag& t : tagsOf(text)) {
      EXPECT_TRUE(isDefinedCode(t.code) && fits(valueType(t.code), t.value))
          << name << ":" << t.line << ": " << t.code << " " << t.value;
    }
  }
}

// Copies renumber the handles that handle codes hold and drop what hard owners own: which codes
// these are must be exactly right.
TEST(GroupCodesTest, HandleCodesAndTheLinksTheyMake) {
  using Ranges = std::initializer_list<std::pair<int, int>>;
  const auto in = [](int code, Ranges ranges) {
    for (const auto& [first, last] : ranges) {
      if (code >= first && code <= last) return true;
    }
    return false;
  };
  for (int code = -5; code <= 1100; ++code) {
    EXPECT_EQ(valueType(code) == ValueType::Handle,
              in(code, {{105, 105}, {320, 369}, {390, 399}, {480, 481}, {1005, 1005}}))
        << code;
    EXPECT_EQ(isSoftPointer(code), in(code, {{320, 329}})) << code;
    EXPECT_EQ(isSoftOwner(code), in(code, {{330, 339}, {350, 359}})) << code;
    EXPECT_EQ(isHardPointer(code), in(code, {{340, 349}, {390, 399}, {480, 481}})) << code;
    EXPECT_EQ(isHardOwner(code), in(code, {{360, 369}})) << code;
  }
  // Codes no range defines are kept as text, however far out of the table.
  for (int code : {-5, -1, 80, 103, 150, 240, 482, 998, 1072, 5000, 32767}) {
    EXPECT_EQ(valueType(code), ValueType::String) << code;
    EXPECT_FALSE(isDefinedCode(code)) << code;
  }
}

// Numbers and handles have blanks around them and nothing else.
TEST(GroupCodesTest, ParseNumbersAndHandles) {
  const std::pair<const char*, double> reals[] = {
      {"1.5", 1.5},     {"  -2.25  ", -2.25},
      {"\t+3\t", 3.0},  {"1e3", 1000.0},
      {"1.0E-2", 0.01}, {".5", 0.5},
      {"-.5", -0.5},    {"5.", 5.0},
      {"0.1", 0.1},     {"123456789012345678901234567890", 1.2345678901234568e29}};
  for (const auto& [text, value] : reals) EXPECT_EQ(parseDouble(text), value) << text;
  for (const char* bad : {"", "  ", "abc", "1.5x", "1,5", "+-1", "--1", "+", "-", "1 2", "0x10",
                          "inf", "-inf", "nan", "1e999", "1.5\r", ". 5"}) {
    EXPECT_FALSE(parseDouble(bad)) << bad;
  }
  const std::pair<const char*, std::int64_t> integers[] = {
      {"0", 0},
      {"     1", 1},
      {"-32768", -32768},
      {"+42 ", 42},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"-9223372036854775808", std::numeric_limits<std::int64_t>::min()}};
  for (const auto& [text, value] : integers) EXPECT_EQ(parseInt(text), value) << text;
  for (const char* bad : {"", "x", "1.0", "1e3", "9223372036854775808", "+-1", "0x1F", "1 2"}) {
    EXPECT_FALSE(parseInt(bad)) << bad;
  }
  const std::pair<const char*, std::uint64_t> handles[] = {
      {"1F", 0x1F},
      {"1f", 0x1F},
      {" 0 ", 0},
      {"00000000000000AB", 0xAB},
      {"FFFFFFFFFFFFFFFF", std::numeric_limits<std::uint64_t>::max()}};
  for (const auto& [text, value] : handles) EXPECT_EQ(parseHandle(text), value) << text;
  for (const char* bad : {"", " ", "G", "0x1F", "-1", "+1", "1 F", "10000000000000000"}) {
    EXPECT_FALSE(parseHandle(bad)) << bad;
  }
  // A locale with a decimal comma, where installed; the parse must not notice either way.
  const char* previous = std::setlocale(LC_NUMERIC, nullptr);
  const std::string saved = previous ? previous : "C";
  std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
  EXPECT_EQ(parseDouble("2.5"), 2.5);
  EXPECT_FALSE(parseDouble("2,5"));
  std::setlocale(LC_NUMERIC, saved.c_str());
}

// ---- TagWriter ----

TEST(TagWriterTest, WritesEachKindOfValue) {
  std::string out = "kept";
  TagWriter writer(out);
  writer.write(0, "SECTION");
  writer.write(1, std::string_view("  blanks kept "));
  writer.write(1, std::string("s"));
  writer.write(1, "");
  writer.write(70, 0);
  writer.write(90, -123456);
  writer.write(160, std::int64_t{9007199254740993});
  writer.write(71, static_cast<short>(7));
  writer.write(72, 5u);
  writer.writeHandle(5, 0x1F);
  writer.writeHandle(330, 0);
  writer.writeHandle(5, 0xABCDEF0123456789);
  writer.write(290, true);
  writer.write(291, false);
  writer.write(1071, 123456);
  writer.write(-3, "neg");
  writer.writeRaw("  0\nEOF\n");
  // Group codes are right-aligned in three columns.
  EXPECT_EQ(out,
            "kept  0\nSECTION\n  1\n  blanks kept \n  1\ns\n  1\n\n 70\n0\n 90\n-123456\n"
            "160\n9007199254740993\n 71\n7\n 72\n5\n  5\n1F\n330\n0\n  5\nABCDEF0123456789\n"
            "290\n1\n291\n0\n1071\n123456\n -3\nneg\n  0\nEOF\n");

  std::string crlf;
  TagWriter crlfWriter(crlf, LineEnd::CrLf);
  crlfWriter.write(0, "LINE");
  crlfWriter.write(10, 1.0);
  crlfWriter.writeHandle(5, 0x2A);
  EXPECT_EQ(crlf, "  0\r\nLINE\r\n 10\r\n1.0\r\n  5\r\n2A\r\n");
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
      {std::numeric_limits<double>::infinity(), "inf"},
      {-std::numeric_limits<double>::infinity(), "-inf"},
      {std::numeric_limits<double>::quiet_NaN(), "nan"}};
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
    EXPECT_EQ(parseDouble(tagsOf(out).at(0).value), value) << out;
  }
}

// ---- TextCodec ----

TEST(TextCodecTest, VersionChoosesUtf8OrTheCodePage) {
  EXPECT_FALSE(TextCodec("AC1015", "ANSI_1252").usesUtf8());
  EXPECT_FALSE(TextCodec("AC1018", "ANSI_1252").usesUtf8());
  EXPECT_TRUE(TextCodec("AC1021", "ANSI_1252").usesUtf8());
  EXPECT_TRUE(TextCodec(" ac1024 ", "").usesUtf8());
  EXPECT_FALSE(TextCodec("", "ANSI_1252").usesUtf8());
  EXPECT_FALSE(TextCodec("AC1009", "ANSI_1252").usesUtf8());
  EXPECT_EQ(TextCodec("AC1015", "ANSI_1251").charset(), "CP1251");
  EXPECT_EQ(TextCodec("AC1015", "ansi_932").charset(), "CP932");
  EXPECT_EQ(TextCodec("AC1032", "ANSI_932").charset(), "UTF-8");
  // Unknown code pages fall back to 1252.
  for (const char* unknown : {"KLINGON", "ANSI_99999"}) {
    const TextCodec codec("AC1015", unknown);
    EXPECT_EQ(codec.charset(), "CP1252");
    EXPECT_TRUE(codec.codePageFellBack());
    EXPECT_EQ(codec.decode("caf\xE9"), L"caf\u00E9");
  }
  EXPECT_FALSE(TextCodec("AC1015", "ANSI_1252").codePageFellBack());
}

// Texts and their bytes in a file, both ways.
TEST(TextCodecTest, EncodesAndDecodes) {
  struct Case {
    const char* version;
    const char* codePage;
    std::wstring text;
    std::string bytes;
  };
  const std::wstring mixed = L"\u00C5ngstr\u00F6m \u65E5\u672C \u0416 \U0001F600!";
  const std::wstring lone = std::wstring(L"a") + static_cast<wchar_t>(0xD800) + L"b\u00E9";
  const Case cases[] = {
      {"AC1027", "ANSI_1252", L"Stra\u00DFe \u65E5\u672C \u20AC \U0001F600 plain",
       "Stra\xC3\x9F"
       "e \xE6\x97\xA5\xE6\x9C\xAC \xE2\x82\xAC \xF0\x9F\x98\x80 plain"},
      {"AC1027", "", L"Layer 0 \\P text", "Layer 0 \\P text"},
      {"AC1015", "ANSI_932", L"Layer 0 \\P text", "Layer 0 \\P text"},
      {"AC1015", "ANSI_1252", L"", ""},
      {"AC1015", "ANSI_1252", L"caf\u00E9 \u20AC", "caf\xE9 \x80"},
      // What the code page lacks is escaped.
      {"AC1015", "ANSI_1252", mixed, "\xC5ngstr\xF6m \\U+65E5\\U+672C \\U+0416 \\U+D83D\\U+DE00!"},
      {"AC1018", "ANSI_1251", L"\u041F\u0440\u0438\u0432\u0435\u0442", "\xCF\xF0\xE8\xE2\xE5\xF2"},
      {"AC1018", "ANSI_1251", L"\u00E9", "\\U+00E9"},
      {"AC1015", "ANSI_932", L"\u65E5\u672C", "\x93\xFA\x96\x7B"},
      {"AC1015", "ANSI_932", L"\u65E5\u00E9", "\x93\xFA\\U+00E9"},
      // The second byte of this character is a backslash; it starts no escape.
      {"AC1015", "ANSI_932", L"\u30BDU+0041", "\x83\x5CU+0041"},
      // A lone surrogate survives as an escape.
      {"AC1027", "", lone, "a\\U+D800b\xC3\xA9"},
      {"AC1015", "ANSI_1252", lone, "a\\U+D800b\xE9"},
  };
  for (const Case& c : cases) {
    const TextCodec codec(c.version, c.codePage);
    EXPECT_EQ(codec.encode(c.text), c.bytes) << c.bytes;
    EXPECT_EQ(codec.decode(c.bytes), c.text) << c.bytes;
  }
  const TextCodec cp932("AC1015", "ANSI_932");
  std::wstring text;
  for (int i = 0; i < 5000; ++i) text += L"\u65E5a\u00E9";
  EXPECT_EQ(cp932.decode(cp932.encode(text)), text);
}

TEST(TextCodecTest, DecodesEscapesAndInvalidBytes) {
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
  // Half-width katakana are single bytes.
  EXPECT_EQ(TextCodec("AC1015", "ANSI_932").decode("\xB1"), L"\uFF71");
  // Invalid bytes become replacement characters; so does a lead byte with nothing after it.
  EXPECT_EQ(TextCodec("AC1027", "")
                .decode("a\xFF"
                        "b"),
            L"a\uFFFDb");
  EXPECT_EQ(TextCodec("AC1015", "ANSI_1252")
                .decode("a\x81"
                        "b"),
            L"a\uFFFDb");
  EXPECT_EQ(TextCodec("AC1015", "ANSI_932").decode("a\x93"), L"a\uFFFD");
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
  // Names in the directory: leftover temporary files show here.
  std::vector<std::string> entries() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(dir_)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
  // That the error names the file and the system's reason.
  static void expectNamed(const std::optional<std::string>& error, const fs::path& path,
                          const std::string& reason) {
    ASSERT_TRUE(error);
    EXPECT_NE(error->find(path.string()), std::string::npos) << *error;
    EXPECT_NE(error->find(reason), std::string::npos) << *error;
  }

  fs::path dir_;
};

TEST_F(FileTest, WhatIsSavedReadsBack) {
  const fs::path target = dir_ / "drawing.dxf";
  std::string big;
  for (int i = 0; i < 100000; ++i) big += "  0\nLINE\n";
  for (const std::string& data : {std::string("first"), big, std::string()}) {
    EXPECT_EQ(writeFileAtomically(target, data), std::nullopt);
    const FileBytes read = readWholeFile(target);
    EXPECT_FALSE(read.error);
    EXPECT_EQ(read.bytes, data);
  }
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
      expectNamed(writeFileAtomically(path, "replacement"), "'" + path.string() + "'", c.reason);
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

TEST_F(FileTest, ErrorsNameTheFileAndTheReason) {
  const fs::path nowhere = dir_ / "no-such-dir" / "drawing.dxf";
  expectNamed(writeFileAtomically(nowhere, "data"), nowhere, std::strerror(ENOENT));
  const FileBytes missing = readWholeFile(dir_ / "missing.dxf");
  expectNamed(missing.error, dir_ / "missing.dxf", std::strerror(ENOENT));
  EXPECT_TRUE(missing.bytes.empty());
  expectNamed(readWholeFile(dir_).error, dir_, std::strerror(EISDIR));
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

}  // namespace
}  // namespace host::dxf
