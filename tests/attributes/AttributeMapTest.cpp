// The attribute map's line syntax, and what loading a whole file makes of it:
// encodings, lines longer than the reading buffer, and the lookups.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "attributes/AttributeMap.h"
#include "oddata/OdAccess.h"

namespace testing_support {
namespace {

using zarvel::MapLine;

TEST(AttributeMapLineTest, CommentsTabRunsAndFieldCounts) {
  const struct {
    const wchar_t* line;
    MapLine::Kind kind;
    const wchar_t* text;  // the line less its comment
    std::vector<std::wstring> fields;
  } cases[] = {
      {L"\n", MapLine::Kind::Empty, L"", {}},
      {L" \t \r\n", MapLine::Kind::Empty, L"", {}},
      {L"?BlockName\t?AttributeName\tRoads\tID\t?Integer\n", MapLine::Kind::Empty, L"", {}},
      {L"Street\tNAME\tRoads\tNAME\n",
       MapLine::Kind::Mapping,
       L"Street\tNAME\tRoads\tNAME",
       {L"Street", L"NAME", L"Roads", L"NAME"}},
      // Runs of tabs are one separator, at either end too; blanks are trimmed
      // off each field, other white space stays.
      {L"\t Street \t\tNA ME\t\t\tRoads\t\v\t? note\r\n",
       MapLine::Kind::Mapping,
       L"\t Street \t\tNA ME\t\t\tRoads\t\v",
       {L"Street", L"NA ME", L"Roads", L"\v"}},
      // An unedited template line keeps two fields.
      {L"Street\tNAME\t?TableName\t?ColumnName\n", MapLine::Kind::Invalid, L"Street\tNAME", {}},
      {L"a\tb\tc\n", MapLine::Kind::Invalid, L"a\tb\tc", {}},
      {L"a\tb\tc\td\te", MapLine::Kind::Invalid, L"a\tb\tc\td\te", {}},
      {L"Street NAME Roads NAME", MapLine::Kind::Invalid, L"Street NAME Roads NAME", {}},
  };
  for (const auto& c : cases) {
    const MapLine line = zarvel::parseMapLine(c.line);
    SCOPED_TRACE(testing::PrintToString(std::wstring(c.line)));
    EXPECT_EQ(line.kind, c.kind);
    EXPECT_EQ(line.text, c.text);
    if (c.kind == MapLine::Kind::Mapping) {
      EXPECT_EQ((std::vector<std::wstring>{line.block, line.tag, line.table, line.column}),
                c.fields);
    }
  }
}

class AttributeMapTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    host.defineTable(L"Roads", 2);  // columns C0, C1
  }
  bool load(const std::string& bytes) {
    host.readableFiles[L"map.txt"] = bytes;
    return zarvel::loadAttributeMap(zarvel::getODContainer(), L"map.txt", map);
  }
  zarvel::AttributeMap map;
};

TEST_F(AttributeMapTest, BlocksFoldTagsStayAndTheFirstLineWins) {
  EXPECT_TRUE(
      load("Street\tNAME\tROADS\tc0\n"
           "STREET\tNAME\tRoads\tC1\n"
           "street\tname\tRoads\tC1\n"
           "Pole\tID\tPoles\tC0\n"
           "Gate\tID\tRoads\tNOPE\n"));
  ASSERT_EQ(map.size(), 3u);  // a block whose lines all fail still counts
  EXPECT_TRUE(map.at(L"pole").empty());
  EXPECT_TRUE(map.at(L"gate").empty());
  const zarvel::BlockAttributeMap& street = map.at(L"street");
  ASSERT_EQ(street.size(), 2u);
  EXPECT_EQ(street.at(L"NAME").table, L"roads");
  EXPECT_EQ(street.at(L"NAME").column, L"c0");
  EXPECT_EQ(street.at(L"name").column, L"c1");
  EXPECT_EQ(host.printed,
            L"Loading attributes map from 'map.txt'\n"
            L"Error: table Poles not found\n"
            L"Error: column NOPE not found in table Roads\n"
            L"3 attribute mappings loaded\n");
}

// Little-endian UTF-16 bytes with their byte-order mark.
std::string utf16(const std::wstring& text) {
  std::string bytes = "\xFF\xFE";
  for (const wchar_t c : text) {
    bytes += static_cast<char>(c & 0xFF);
    bytes += static_cast<char>((c >> 8) & 0xFF);
  }
  return bytes;
}

TEST_F(AttributeMapTest, WhatStopsTheCommand) {
  const struct {
    std::string bytes;
    bool goesOn;
    const wchar_t* printed;
    const wchar_t* block;  // a block the map must hold, if any
  } cases[] = {
      // UTF-16 by its mark, with a name beyond Latin-1, folded to lower case.
      {utf16(L"St\u011E\tN\tRoads\tC0\r\n"), true,
       L"Loading attributes map from 'map.txt'\n1 attribute mappings loaded\n", L"st\u011F"},
      {"? nothing but comments\n\n", false,
       L"Loading attributes map from 'map.txt'\n0 attribute mappings loaded\n", nullptr},
      {"Street\tNAME\n"
       "Pole\tID\tRoads\tC0\n",
       false,
       L"Loading attributes map from 'map.txt'\nError: invalid mapping 'Street\tNAME'\n"
       L"1 attribute mappings loaded\n",
       L"pole"},
  };
  for (const auto& c : cases) {
    map.clear();
    host.printed.clear();
    EXPECT_EQ(load(c.bytes), c.goesOn) << host.printed;
    EXPECT_EQ(host.printed, c.printed);
    if (c.block != nullptr) {
      EXPECT_EQ(map.count(c.block), 1u) << c.block;
    }
  }
}

TEST_F(AttributeMapTest, ALineLongerThanTheBufferReadsOnAsAnotherLine) {
  // The comment's tail past the buffer comes as a line of its own, without
  // its comment mark.
  const std::string mapping = "Street\tNAME\tRoads\tC0 ?";
  const std::string comment(platform::TextFileLines::kBufferSize - 1 - mapping.size(), '-');
  EXPECT_FALSE(load(mapping + comment + std::string(20, 'x') + "\n"));
  EXPECT_EQ(map.at(L"street").size(), 1u);
  EXPECT_NE(host.printed.find(L"Error: invalid mapping '" + std::wstring(20, L'x') + L"'\n"),
            std::wstring::npos)
      << host.printed;
}

}  // namespace
}  // namespace testing_support
