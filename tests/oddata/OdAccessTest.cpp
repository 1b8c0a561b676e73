// The record helpers: the system-table filter, iterator walks, repeated
// records and table lists.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "oddata/OdAccess.h"

namespace testing_support {
namespace {

using zarvel::getODContainer;

using OdAccessTest = ModuleTest;

TEST(SystemTableFilter, OnlyPrefixesAtTheStartAndInTheirCaseCount) {
  EXPECT_FALSE(zarvel::isUserTable(L"CNTR_"));
  EXPECT_FALSE(zarvel::isUserTable(L"TPMID_x"));
  EXPECT_FALSE(zarvel::isUserTable(L"TPMNODE_roads"));
  EXPECT_TRUE(zarvel::isUserTable(L"cntr_1"));
  EXPECT_TRUE(zarvel::isUserTable(L"MYCNTR_1"));
  EXPECT_TRUE(zarvel::isUserTable(L"TPMID"));
  EXPECT_TRUE(zarvel::isUserTable(L""));
}

TEST_F(OdAccessTest, NamesOfRecordsStandOncePerRecordAndUserNamesSkipSystemTables) {
  host.defineTable(L"Roads");
  host.defineTable(L"CNTR_a");
  const ObjectId e = host.addLine();
  EXPECT_TRUE(zarvel::tableNamesOfEntity(getODContainer(), e).empty());
  host.attach(e, L"Roads");
  host.attach(e, L"CNTR_a");
  host.attach(e, L"Roads");
  EXPECT_EQ(zarvel::tableNamesOfEntity(getODContainer(), e),
            (std::vector<std::wstring>{L"Roads", L"CNTR_a", L"Roads"}));
  EXPECT_EQ(zarvel::userTableNamesOfEntity(getODContainer(), e),
            (std::vector<std::wstring>{L"Roads", L"Roads"}));
  EXPECT_TRUE(zarvel::hasRecordOfTable(getODContainer(), e, L"CNTR_a"));
  EXPECT_FALSE(zarvel::hasRecordOfTable(getODContainer(), e, L"roads"));
}

TEST_F(OdAccessTest, RemovingRecordsOfATableStepsOverTheRecordBehindEachRemoval) {
  host.defineTable(L"A");
  host.defineTable(L"B");
  const ObjectId e = host.addLine();
  host.attach(e, L"A", 1);
  host.attach(e, L"A", 2);
  host.attach(e, L"B", 3);
  host.attach(e, L"A", 4);
  // The walk removes the first A, lands on the second and steps past it.
  EXPECT_EQ(zarvel::removeRecordsOfTable(getODContainer(), L"A", e), 2);
  EXPECT_EQ(host.tablesOn(e), (std::vector<std::wstring>{L"A", L"B"}));
  EXPECT_EQ(zarvel::valuesOfEntityTable(getODContainer(), L"A", e),
            (std::vector<platform::OdValue>{platform::OdValue(2)}));
}

TEST_F(OdAccessTest, CopyingRecordsAppendsAndCanLeaveSystemTablesBehind) {
  host.defineTable(L"A");
  host.defineTable(L"TPMID_1");
  const ObjectId source = host.addLine();
  const ObjectId target = host.addLine();
  host.attach(source, L"A", 7);
  host.attach(source, L"TPMID_1", 8);
  zarvel::copyRecords(target, source, getODContainer(), true);
  EXPECT_EQ(host.tablesOn(target), (std::vector<std::wstring>{L"A"}));
  zarvel::copyRecords(target, source, getODContainer(), false);
  EXPECT_EQ(host.tablesOn(target), (std::vector<std::wstring>{L"A", L"A", L"TPMID_1"}));
  EXPECT_EQ(zarvel::valuesOfEntityTable(getODContainer(), L"A", target),
            (std::vector<platform::OdValue>{platform::OdValue(7), platform::OdValue(7)}));
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

class DuplicateRecordsTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    host.defineTable(L"A");
    host.defineTable(L"B");
    e = host.addLine();
  }
  std::vector<platform::OdValue> valuesOf(const std::wstring& table) {
    return zarvel::valuesOfEntityTable(getODContainer(), table, e);
  }
  ObjectId e;
};

TEST_F(DuplicateRecordsTest, ModeFirstRemovesFromTheFrontAndCountsTables) {
  host.attach(e, L"A", 1);
  host.attach(e, L"B", 2);
  host.attach(e, L"A", 3);
  host.attach(e, L"B", 4);
  EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, true), 2);
  EXPECT_EQ(host.tablesOn(e), (std::vector<std::wstring>{L"A", L"B"}));
  EXPECT_EQ(valuesOf(L"A"), (std::vector<platform::OdValue>{platform::OdValue(3)}));
  EXPECT_EQ(valuesOf(L"B"), (std::vector<platform::OdValue>{platform::OdValue(4)}));
}

TEST_F(DuplicateRecordsTest, ThreeRecordsKeepTheThirdOrTheFirst) {
  for (int v : {1, 2, 3}) host.attach(e, L"A", v);
  EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, true), 1);
  EXPECT_EQ(valuesOf(L"A"), (std::vector<platform::OdValue>{platform::OdValue(3)}));

  const ObjectId other = host.addLine();
  for (int v : {1, 2, 3}) host.attach(other, L"A", v);
  EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), other, false), 1);
  EXPECT_EQ(zarvel::valuesOfEntityTable(getODContainer(), L"A", other),
            (std::vector<platform::OdValue>{platform::OdValue(1)}));
}

TEST_F(DuplicateRecordsTest, CountIsOfTablesNotOfRecordsRemoved) {
  for (int v : {1, 2, 3, 4}) host.attach(e, L"A", v);
  host.attach(e, L"B", 9);
  EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, true), 1);
  EXPECT_EQ(host.tablesOn(e), (std::vector<std::wstring>{L"A", L"B"}));
  EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, true), 0);
}

TEST_F(DuplicateRecordsTest, NamesDifferingInCaseAreRepeatsButEachTableSeesItsOwn) {
  host.defineTable(L"a");
  host.attach(e, L"A", 1);
  host.attach(e, L"a", 2);
  // Counted as a repeat, though the table's own iterator finds one record.
  EXPECT_EQ(zarvel::removeDuplicateRecords(getODContainer(), e, true), 1);
  EXPECT_EQ(host.tablesOn(e), (std::vector<std::wstring>{L"A", L"a"}));
}

TEST_F(OdAccessTest, TableListsWalkUpToTheLimitAndTakeTheProjectListAbove) {
  host.defineTable(L"Used");
  host.defineTable(L"Unused");
  host.defineTable(L"CNTR_x");
  const ObjectId first = host.addLine();
  host.attach(first, L"Used");
  host.attach(first, L"CNTR_x");
  for (std::size_t i = 1; i < zarvel::kTableListWalkLimit; ++i) host.addLine();
  EXPECT_EQ(zarvel::allTableNames(true), (std::vector<std::wstring>{L"Used"}));
  EXPECT_EQ(zarvel::allTableNames(false), (std::vector<std::wstring>{L"CNTR_x", L"Used"}));

  host.addLine();
  EXPECT_EQ(zarvel::allTableNames(true), (std::vector<std::wstring>{L"Unused", L"Used"}));
  EXPECT_EQ(zarvel::allTableNames(false),
            (std::vector<std::wstring>{L"CNTR_x", L"Unused", L"Used"}));
}

TEST_F(OdAccessTest, TableListOfGivenEntitiesNeverFallsBackToTheDrawing) {
  host.defineTable(L"A");
  const ObjectId bare = host.addLine();
  host.attach(host.addLine(), L"A");
  EXPECT_TRUE(zarvel::listTableNames({bare}, true).empty());
}

TEST_F(OdAccessTest, TableListLeavesOutEntitiesOnUnusableLayers) {
  host.defineTable(L"A");
  host.defineTable(L"B");
  host.attach(host.addLine(), L"A");
  host.attach(host.addOnLayer(L"Frozen"), L"B");
  host.db.modify<host::Layer>(host.db.findLayer(L"Frozen"))->frozen = true;
  EXPECT_EQ(zarvel::allTableNames(true), (std::vector<std::wstring>{L"A"}));
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
  EXPECT_EQ(names, (std::vector<std::wstring>{L"Road"}));
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
