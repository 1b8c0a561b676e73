// The explication report: its exact bytes, its groups and the command's ways out.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "report/Explication.h"
#include "report/SelectSharedCol.h"

namespace {

using platform::OdColumnDef;
using platform::OdType;
using platform::OdValue;
using testing_support::ModuleTest;
using zarvel::ExplicationOptions;

// What the file holds for the text: a byte-order mark, then UTF-16 little endian.
std::string fileBytes(std::u16string_view text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  }
  return bytes;
}

std::u16string readable(const std::string& bytes) {
  std::u16string text;
  for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
    text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                         static_cast<unsigned char>(bytes[i + 1]) << 8));
  }
  return text;
}

class ExplicationTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    // LEN is real in one table and text in the other, so it is counted.
    define(L"Roads", {{L"ID", OdType::Integer, L"", OdValue(0)},
                      {L"NAME", OdType::Character, L"", OdValue(L"")},
                      {L"LEN", OdType::Real, L"", OdValue(0.0)},
                      {L"AT", OdType::Point, L"", OdValue(platform::Point3d{})}});
    define(L"Parcels", {{L"ID", OdType::Integer, L"", OdValue(0)},
                        {L"LEN", OdType::Character, L"", OdValue(L"")},
                        {L"AREA", OdType::Real, L"", OdValue(0.0)}});
    define(L"Empty", {{L"NONE", OdType::Integer, L"", OdValue(0)}});
    for (int i = 0; i < 3; ++i) lines.push_back(host.addLine());
    // Two records of one table on the first line.
    attach(
        lines[0], L"Roads",
        {OdValue(1), OdValue(L"Main \"St\""), OdValue(2.5), OdValue(platform::Point3d{1, 2, 3})});
    attach(
        lines[0], L"Roads",
        {OdValue(2), OdValue(L"Rue \u00e9"), OdValue(3.0), OdValue(platform::Point3d{0, 0, 0.5})});
    attach(lines[1], L"Parcels", {OdValue(7), OdValue(L"x"), OdValue(10.25)});
    attach(lines[1], L"Roads",
           {OdValue(3), OdValue(L"main"), OdValue(2.5), OdValue(platform::Point3d{1, 1, 1})});
    attach(lines[2], L"Parcels", {OdValue(8), OdValue(L"y"), OdValue(-1.0)});
  }

  void define(const std::wstring& name, std::vector<OdColumnDef> columns) {
    platform::OdTableDef definition;
    definition.columns = std::move(columns);
    ASSERT_EQ(host.project().odContainer().createTable(name, definition), platform::Status::Ok);
  }
  void attach(platform::ObjectId line, const std::wstring& table, std::vector<OdValue> values) {
    auto found = host.project().odContainer().getTable(table);
    ASSERT_EQ(found->addRecord(platform::OdRecord(table, std::move(values)), line),
              platform::Status::Ok);
  }

  std::vector<platform::ObjectId> lines;
};

TEST_F(ExplicationTest, ReportByTableHasItsExactBytes) {
  ExplicationOptions options;
  options.tables = {L"Roads", L"Parcels", L"Empty"};
  options.separator = L";";
  const std::u16string expected =
      u"ID;TableName;Count;AREA;AT;ID;LEN;NAME;NONE\r\n"
      u"9;\"Parcels\";;10.25;;7;\"x\";;\r\n"
      u"A;\"Parcels\";;-1.0;;8;\"y\";;\r\n"
      u"Sum;\"Parcels\";2;9.25;;15.0;2;;\r\n"
      u"\r\n"
      u"8;\"Roads\";;;3.0;1;2.5;\"Main \"\"St\"\"\";\r\n"
      u"8;\"Roads\";;;0.5;2;3.0;\"Rue \u00e9\";\r\n"
      u"9;\"Roads\";;;1.0;3;2.5;\"main\";\r\n"
      u"Sum;\"Roads\";2;;3;6.0;3;3;\r\n"
      u"\r\n"
      u"SumCount;;;2;3;5;5;3;3\r\n"
      u"SumSum;;;9.25;3;21.0;5;3;\r\n"
      u"Min;;;-1.0;;1.0;;;\r\n"
      u"Max;;;10.25;;8.0;;;\r\n"
      u"Average;;;4.625;;4.2;;;\r\n"
      u"Unique;;;2;3;5;4;3;0";
  const std::string report(zarvel::explicationReport(lines, options).view());
  EXPECT_EQ(readable(report), expected);
  EXPECT_EQ(report, fileBytes(expected));
}

TEST_F(ExplicationTest, ReportByFieldGroupsRecordsByItsValues) {
  ExplicationOptions options;
  options.tables = {L"Roads", L"Parcels"};
  options.typeField = true;
  options.field = L"LEN";
  options.separator = L", ";
  // The field leaves the columns; the first line stands in two groups, and an
  // entity comes into a group at its first record of any table.
  const std::u16string expected =
      u"ID, TableName, LEN, Count, AREA, AT, ID, NAME\r\n"
      u"9, \"Roads\", \"2.5\", , , 1.0, 3, \"main\"\r\n"
      u"8, \"Roads\", \"2.5\", , , 3.0, 1, \"Main \"\"St\"\"\"\r\n"
      u"Sum, , \"2.5\", 2, , 2, 4.0, 2\r\n"
      u"\r\n"
      u"8, \"Roads\", \"3.0\", , , 0.5, 2, \"Rue \u00e9\"\r\n"
      u"Sum, , \"3.0\", 1, , 1, 2.0, 1\r\n"
      u"\r\n"
      u"9, \"Parcels\", \"x\", , 10.25, , 7, \r\n"
      u"Sum, , \"x\", 1, 10.25, , 7.0, \r\n"
      u"\r\n"
      u"A, \"Parcels\", \"y\", , -1.0, , 8, \r\n"
      u"Sum, , \"y\", 1, -1.0, , 8.0, \r\n"
      u"\r\n"
      u"SumCount, , , , 2, 3, 5, 3\r\n"
      u"SumSum, , , , 9.25, 3, 21.0, 3\r\n"
      u"Min, , , , -1.0, , 1.0, \r\n"
      u"Max, , , , 10.25, , 8.0, \r\n"
      u"Average, , , , 4.625, , 4.2, \r\n"
      u"Unique, , , , 2, 3, 5, 3";
  EXPECT_EQ(readable(std::string(zarvel::explicationReport(lines, options).view())), expected);
}

// Line feeds become CR LF, characters past the first plane become pairs, and
// text longer than the room left still lands whole.
TEST(UnicodeFileText, EncodesAsTheWideTextModeWrites) {
  zarvel::UnicodeFileText text;
  text.append(L"a\n");
  text.append(L"xyz");  // more than the room left, less than twice it
  text.append(std::wstring(40, L'x') + L"\U0001D11E");
  text.appendAscii("7");
  EXPECT_EQ(std::string(text.view()),
            fileBytes(u"a\r\nxyz" + std::u16string(40, u'x') + u"\U0001D11E" + u"7"));
}

TEST_F(ExplicationTest, SharedColumnsKeepTheFirstTablesWriting) {
  EXPECT_EQ(zarvel::sharedColumns({L"Roads", L"Parcels"}),
            (std::vector<std::wstring>{L"ID", L"LEN"}));
  EXPECT_TRUE(zarvel::sharedColumns({}).empty());
}

// The command writes through the host's file service, and only after every
// answer; a cancel or an unwritable file ends it without a word or a file.
TEST_F(ExplicationTest, CommandWritesOnlyWhenEveryAnswerIsGiven) {
  host.dialogAnswer = [](platform::DialogModel& dialog) {
    auto& model = dynamic_cast<zarvel::SelectSharedCol&>(dialog);
    model.tablesList().SetRowSelected(1, true);  // Roads, after Parcels
    return platform::kIdOk;
  };
  host.pickFirst = lines;
  run(L"ZARVEL_EXPL");  // cancelled at the file prompt
  ASSERT_EQ(host.fileDialogs.size(), 1u);
  EXPECT_EQ(host.fileDialogs[0].defaultExtension, L"csv");
  EXPECT_TRUE(host.fileDialogs[0].save && host.fileDialogs[0].confirmOverwrite);
  host.unwritable = {L"locked.csv"};
  host.fileNames = {L"locked.csv", L"out.csv"};
  run(L"ZARVEL_EXPL");
  EXPECT_TRUE(host.writtenFiles.empty());
  run(L"ZARVEL_EXPL");
  ExplicationOptions roads;
  roads.tables = {L"Roads"};
  EXPECT_EQ(host.writtenFiles[L"out.csv"], zarvel::explicationReport(lines, roads).view());
  EXPECT_EQ(host.printed, L"");
}

}  // namespace
