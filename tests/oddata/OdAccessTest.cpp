// The record helpers: the system-table filter, iterator walks, repeated
// records and table lists.
#include "oddata/OdAccess.h"

#include <gtest/gtest.h>

#include "ModuleFixture.h"

namespace testing_support {
namespace {

using Names = std::vector<std::wstring>;
using zarvel::getODContainer;

using OdAccessTest = ModuleTest;

TEST(SystemTableFilter, OnlyPrefixesAtTheStartAndInTheirCaseCount) {
  for (const wchar_t* name : {L"CNTR_", L"TPMID_x", L"TPMNODE_roads"}) {
    EXPECT_FALSE(zarvel::isUserTable(name)) << platform::toUtf8(name);
  }
  for (const wchar_t* name : {L"cntr_1", L"MYCNTR_1", L"TPMID", L""}) {
    EXPECT_TRUE(zarvel::isUserTable(name)) << platform::toUtf8(name);
  }
}

TEST_F(OdAccessTest, NamesOfRecordsStandOncePerRecordAndUserNamesSkipSystemTables) {
  host.defineTable(L"Roads");
  host.defineTable(L"CNTR_a");
  const ObjectId e = host.addLine();
  EXPECT_TRUE(zarvel::tableNamesOfEntity(getODContainer(), e).empty());
  host.attach(e, L"Roads CNTR_a Roads");
  EXPECT_EQ(zarvel::tableNamesOfEntity(getODContainer(), e),
            (Names{L"Roads", L"CNTR_a", L"Roads"}));
  EXPECT_EQ(zarvel::userTableNamesOfEntity(getODContainer(), e), (Names{L"Roads", L"Roads"}));
  EXPECT_TRUE(zarvel::hasRecordOfTable(getODContainer(), e, L"CNTR_a"));
  EXPECT_FALSE(zarvel::hasRecordOfTable(getODContainer(), e, L"roads"));
}

TEST_F(OdAccessTest, RemovingRecordsOfATableStepsOverTheRecordBehindEachRemoval) {
  host.defineTable(L"A");
  host.defineTable(L"B");
  const ObjectId e = host.addLine();
  host.attach(e, L"A1 A2 B3 A4");
  // The walk removes the first A, lands on the second and steps past it.
  EXPECT_EQ(zarvel::removeRecordsOfTable(getODContainer(), L"A", e), 2);
  EXPECT_EQ(host.recordsOn(e), L"A2 B3");
}

TEST_F(OdAccessTest, CopyingRecordsAppendsAndCanLeaveSystemTablesBehind) {
  host.defineTable(L"A");
  host.defineTable(L"TPMID_x");
  const ObjectId source = host.addLine();
  const ObjectId target = host.addLine();
  host.attach(source, L"A7 TPMID_x8");
  zarvel::copyRecords(target, source, getODContainer(), true);
  EXPECT_EQ(host.recordsOn(target), L"A7");
  zarvel::copyRecords(target, source, getODContainer(), false);
  EXPECT_EQ(host.recordsOn(target), L"A7 A7 TPMID_x8");
}

TEST_F(OdAccessTest, AttachingNeedsAnExistingTableAndFillsDefaults) {
  host.defineTable(L"A", 2);
  const ObjectId e = host.addLine();
  EXPECT_FALSE(zarvel::attachDefaultRecord(getODContainer(), L"Nope", e));
  EXPECT_TRUE(zarvel::attachDefaultRecord(getODContainer(), L"A", e));
  EXPECT_TRUE(zarvel::attachBlankRecord(getODContainer(), L"A", e));
  const auto records = zarvel::recordsOfEntity(getODContainer(), e);
  ASSERT_EQ(records.size(), 2u);
  // A blank record goes out empty; the host completes it with the defaults.
  EXPECT_EQ(records[0], records[1]);
  EXPECT_EQ(records[1].count(), 2);
}

TEST_F(OdAccessTest, RemovingDuplicatesLeavesOneRecordPerTableAndCountsTables) {
  host.defineTable(L"A");
  host.defineTable(L"B");
  host.defineTable(L"a");
  const struct {
    const wchar_t* records;
    bool removeFirst;
    int tables;
    const wchar_t* left;
  } cases[] = {
      {L"A1 B2 A3 B4", true, 2, L"A3 B4"},  // from the front, keeping the last
      {L"A1 A2 A3", true, 1, L"A3"},
      {L"A1 A2 A3", false, 1, L"A1"},          // from the back, keeping the first
      {L"A1 A2 A3 A4 B9", true, 1, L"A4 B9"},  // tables, not records removed
      // Names differing in case count as repeats, though each table's own
      // iterator finds one record: nothing goes.
      {L"A1 a2", true, 1, L"A1 a2"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(platform::toUtf8(c.records));
    const ObjectId e = host.addLine();
    host.attach(e, c.records);
    EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, c.removeFirst), c.tables);
    EXPECT_EQ(host.recordsOn(e), c.left);
    if (std::wstring(c.left) != c.records) {
      EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, true), 0) << "a second pass";
    }
  }
}

TEST_F(OdAccessTest, TableListsWalkUpToTheLimitAndTakeTheProjectListAbove) {
  host.defineTable(L"Used");
  host.defineTable(L"Unused");
  host.defineTable(L"CNTR_x");
  host.attach(host.addLine(), L"Used CNTR_x");
  for (std::size_t i = 1; i < zarvel::kTableListWalkLimit; ++i) host.addLine();
  // What lies on an unusable layer counts for nothing.
  host.addOnLayer(L"Frozen", &host::Layer::frozen);
  EXPECT_EQ(zarvel::allTableNames(true), (Names{L"Used"}));
  EXPECT_EQ(zarvel::allTableNames(false), (Names{L"CNTR_x", L"Used"}));
  // What counts is the usable entities, not all that model space holds.
  host.addOnLayer(L"Frozen", &host::Layer::frozen);
  EXPECT_EQ(zarvel::allTableNames(true), (Names{L"Used"}));

  host.addLine();
  EXPECT_EQ(zarvel::allTableNames(true), (Names{L"Unused", L"Used"}));
  EXPECT_EQ(zarvel::allTableNames(false), (Names{L"CNTR_x", L"Unused", L"Used"}));
}

TEST_F(OdAccessTest, TableListsLeaveOutUnusableLayersAndGivenEntitiesAreAllThatCount) {
  host.defineTable(L"A");
  host.defineTable(L"B");
  const ObjectId bare = host.addLine();
  host.attach(host.addLine(), L"A");
  host.attach(host.addOnLayer(L"Frozen", &host::Layer::frozen), L"B");
  EXPECT_EQ(zarvel::allTableNames(true), (Names{L"A"}));
  EXPECT_TRUE(zarvel::listTableNames({bare}, true).empty()) << "fell back to the drawing";
}

TEST_F(OdAccessTest, FieldPairCodes) {
  platform::OdTableDef def;
  def.columns = {{L"N", platform::OdType::Integer, L"", platform::OdValue(0)},
                 {L"M", platform::OdType::Integer, L"", platform::OdValue(0)},
                 {L"T", platform::OdType::Character, L"", platform::OdValue(L"")}};
  host.db.createOdTable(L"P", def);
  host.db.createOdTable(L"Empty", {});
  using zarvel::FieldPair;
  EXPECT_EQ(zarvel::checkFieldPair(L"P", L"N", L"M"), FieldPair::Matching);
  EXPECT_EQ(zarvel::checkFieldPair(L"Nope", L"N", L"M"), FieldPair::NoTable);
  EXPECT_EQ(zarvel::checkFieldPair(L"P", L"N", L"X"), FieldPair::MissingColumn);
  EXPECT_EQ(zarvel::checkFieldPair(L"Empty", L"N", L"M"), FieldPair::MissingColumn);
  EXPECT_EQ(zarvel::checkFieldPair(L"P", L"N", L"T"), FieldPair::TypesDiffer);
}

TEST_F(OdAccessTest, RemoveTablesCountsTheTablesThatWent) {
  host.defineTable(L"A");
  host.defineTable(L"B");
  EXPECT_EQ(zarvel::removeTables({L"A", L"Nope", L"B"}), 2);
  EXPECT_TRUE(getODContainer().tableNames().empty());
}

TEST_F(OdAccessTest, FeatureClassesCopyOrStopWithAnError) {
  host.db.modifyHeader().featureClasses = {{L"Road", L"Road centre lines"}};
  const ObjectId source = host.addLine();
  const ObjectId target = host.addLine();
  ASSERT_EQ(host.featureClasses().classify(source, L"Road"), platform::kClassifyOk);
  zarvel::copyClassification(target, source);
  std::vector<std::wstring> names, display;
  host.featureClasses().getAllTags(target, names, display);
  EXPECT_EQ(names, (Names{L"Road"}));
  EXPECT_EQ(host.printed, L"");

  // A class the project no longer defines can't be given to another entity.
  const ObjectId other = host.addLine();
  host.db.modifyHeader().featureClasses = {{L"River", L""}};
  zarvel::copyClassification(other, source);
  EXPECT_EQ(host.printed, L"Error: unable to load feature class 'Road'.\n");
  host.featureClasses().getAllTags(other, names, display);
  EXPECT_TRUE(names.empty());
}

}  // namespace
}  // namespace testing_support
