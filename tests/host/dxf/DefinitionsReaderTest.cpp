// The definitions-only reader against the whole-drawing reader: the same
// tables from the same file, and the same line for the same fault.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "TestText.h"
#include "host/dxf/DefinitionsReader.h"
#include "host/dxf/DrawingReader.h"
#include "host/dxf/ParseError.h"
#include "platform/Text.h"

namespace host::dxf {
namespace {

std::vector<NamedTableDefinition> sortedByName(std::vector<NamedTableDefinition> tables) {
  std::sort(tables.begin(), tables.end(),
            [](const auto& a, const auto& b) { return a.name < b.name; });
  return tables;
}

// The line of the ParseError, 0 when none was thrown.
template <typename Read>
std::size_t errorLine(Read read) {
  try {
    read();
  } catch (const ParseError& e) {
    return e.line();
  }
  return 0;
}

// The text with the dictionary of tables moved to the end of the objects, after
// the definitions it names.
std::string tablesDictionaryLast(std::string text) {
  const std::size_t from = text.find("  0\nDICTIONARY\n  5\n31\n");
  const std::size_t to = text.find("  0\n", from + 1);
  const std::string dictionary = text.substr(from, to - from);
  text.erase(from, to - from);
  return text.insert(text.rfind("  0\nENDSEC"), dictionary);
}

void expectSameTables(const std::string& text) {
  const LoadedDrawing whole = readDrawing(std::make_shared<const std::string>(text));
  std::vector<NamedTableDefinition> expected;
  for (ObjectId id : whole.db->odTableIds()) {
    expected.push_back({whole.db->odTable(id)->name, whole.db->odTable(id)->definition});
  }
  const std::vector<NamedTableDefinition> got = sortedByName(readTableDefinitions(text));
  expected = sortedByName(expected);
  ASSERT_EQ(got.size(), 2u);
  ASSERT_EQ(got.size(), expected.size());
  for (std::size_t i = 0; i < got.size(); ++i) {
    EXPECT_EQ(got[i].name, expected[i].name);
    EXPECT_TRUE(got[i].definition == expected[i].definition) << platform::toUtf8(got[i].name);
  }
  // Descriptions are decoded in the drawing's code page, as names are.
  EXPECT_EQ(got[0].definition.columns[2].description, L"Surface \u2014 Belag");
}

TEST(DefinitionsReaderTest, ReadsWhatTheWholeReaderReads) {
  const std::string text = fixture("od_r2000.dxf");
  ASSERT_FALSE(text.empty());
  expectSameTables(text);
  expectSameTables(tablesDictionaryLast(text));
}

TEST(DefinitionsReaderTest, RefusesMalformedFilesAtTheWholeReadersLine) {
  const std::string text = fixture("od_r2000.dxf");
  const std::size_t tablesAt = text.find("ROAD_NO\n 70\n1");
  const std::size_t objectsAt = text.find("OBJECTS");
  ASSERT_NE(tablesAt, std::string::npos);
  struct Case {
    const char* what;
    std::string text;
  };
  const Case cases[] = {
      {"empty", ""},
      {"unsupported version", std::string(text).replace(text.find("AC1015"), 6, "AC1009")},
      {"unknown column type", std::string(text).replace(tablesAt, 13, "ROAD_NO\n 70\n9")},
      {"group code not a number", std::string(text).replace(tablesAt - 4, 3, " x ")},
      {"cut inside the objects", text.substr(0, objectsAt + 2000)},
      {"no end of file marker", text.substr(0, text.rfind("EOF"))},
  };
  for (const Case& c : cases) {
    const std::size_t whole =
        errorLine([&] { readDrawing(std::make_shared<const std::string>(c.text)); });
    ASSERT_NE(whole, 0u) << c.what;
    EXPECT_EQ(errorLine([&] { readTableDefinitions(c.text); }), whole) << c.what;
  }
}

}  // namespace
}  // namespace host::dxf
