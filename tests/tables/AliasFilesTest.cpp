// The alias files' line syntax: what each line means by its field count, what
// is rejected as read, and the turn of the maps for the way back.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tables/AliasFiles.h"

namespace zarvel {
namespace {

struct Read {
  AliasMaps maps;
  int taken = 0;
  std::vector<std::wstring> rejected;
};

Read read(AliasFile kind, const std::wstring& text, std::size_t buffer = 10240) {
  Read r;
  platform::TextFileLines lines(text, buffer);
  r.taken = readAliasLines(lines, kind, r.maps,
                           [&](const std::wstring& line) { r.rejected.push_back(line); });
  return r;
}

TEST(AliasFilesTest, FieldCountsSelectTheMapAndOtherLinesAreRejectedAsRead) {
  const Read values = read(AliasFile::Values,
                           L"a\t\t b \t# comment\tx\n"  // doubled tabs, a comment: a -> b
                           L"a\tlater\n"                // a repeated key: the first holds
                           L"F\t v\tw\n"
                           L"T\tF\tv\tt\n"
                           L"\n"
                           L"   # only a comment\r\n"
                           L"1\t2\t3\t4\t5\n"
                           L"no tab");
  EXPECT_EQ(values.taken, 4);
  EXPECT_EQ(values.maps.values, (AliasMap{{L"a", L"b"}}));
  EXPECT_EQ(values.maps.fieldValues.at(L"F"), (AliasMap{{L"v", L"w"}}));
  EXPECT_EQ(values.maps.tableFieldValues.at(L"T").at(L"F"), (AliasMap{{L"v", L"t"}}));
  EXPECT_EQ(values.rejected, (std::vector<std::wstring>{L"\n", L"   # only a comment\r\n",
                                                        L"1\t2\t3\t4\t5\n", L"no tab"}));

  // Tables take two fields only; fields two or three.
  EXPECT_EQ(read(AliasFile::Tables, L"A\tB\nT\tF\tG\n").rejected,
            (std::vector<std::wstring>{L"T\tF\tG\n"}));
  const Read fields = read(AliasFile::Fields, L"A\tB\nT\tF\tG\nW\tX\tY\tZ\n");
  EXPECT_EQ(fields.taken, 2);
  EXPECT_EQ(fields.maps.tableFields.at(L"T"), (AliasMap{{L"F", L"G"}}));

  // A line longer than the buffer arrives in pieces that are read as lines.
  const Read cut = read(AliasFile::Tables, L"abcdefg\tx\n", 6);
  EXPECT_EQ(cut.rejected, (std::vector<std::wstring>{L"abcde"}));
  EXPECT_EQ(cut.maps.tables, (AliasMap{{L"fg", L"x"}}));
}

TEST(AliasFilesTest, InvertingTurnsOnlyTheInnermostMapsAndKeepsTheFirstName) {
  Read r = read(AliasFile::Values, L"b\tX\na\tX\nF\tv\tw\nT\tF\tv\tt\n");
  r.maps.tables = {{L"Roads", L"Strassen"}};
  r.maps.invert();
  EXPECT_EQ(r.maps.values, (AliasMap{{L"X", L"a"}}));
  EXPECT_EQ(r.maps.tables, (AliasMap{{L"Strassen", L"Roads"}}));
  EXPECT_EQ(r.maps.fieldValues.at(L"F"), (AliasMap{{L"w", L"v"}}));
  EXPECT_EQ(r.maps.tableFieldValues.at(L"T").at(L"F"), (AliasMap{{L"t", L"v"}}));
}

}  // namespace
}  // namespace zarvel
