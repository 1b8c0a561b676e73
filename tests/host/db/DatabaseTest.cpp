// Tables, layers and handles of the database.
#include <gtest/gtest.h>

#include "host/db/Database.h"
#include "host/db/PortDrawing.h"
#include "host/db/PortObjectData.h"

namespace {

using platform::ObjectId;
using platform::OdRecord;
using platform::OdType;
using platform::OdValue;
using platform::Status;

platform::OdTableDef columns(std::initializer_list<platform::OdColumnDef> list) {
  platform::OdTableDef def;
  def.columns = list;
  return def;
}

TEST(DatabaseTables, LookupIsExactFirstThenIgnoringCase) {
  host::Database db;
  const ObjectId upper = db.createOdTable(L"ROADS", {});
  const ObjectId lower = db.createOdTable(L"roads", {});
  ASSERT_FALSE(upper.isNull());
  ASSERT_FALSE(lower.isNull());
  EXPECT_TRUE(db.createOdTable(L"ROADS", {}).isNull());
  EXPECT_EQ(db.findOdTable(L"roads"), lower);
  EXPECT_EQ(db.findOdTable(L"ROADS"), upper);
  EXPECT_EQ(db.findOdTable(L"Roads"), upper);
  EXPECT_TRUE(db.findOdTable(L"Road").isNull());
}

TEST(DatabaseTables, ProjectOrderIsAscendingCodeUnits) {
  host::Database db;
  for (const wchar_t* name : {L"b", L"B", L"a", L"_x", L"A"}) db.createOdTable(name, {});
  host::DbProject project(db);
  EXPECT_EQ(project.tableNames(platform::kAllTableKinds),
            (std::vector<std::wstring>{L"A", L"B", L"_x", L"a", L"b"}));
}

TEST(DatabaseTables, RenameFailsOnAnExistingNameAndRecordsFollowTheTable) {
  host::Database db;
  host::DbOdContainer container(db);
  EXPECT_EQ(container.createTable(L"A", columns({{L"N", OdType::Integer, L"", OdValue(0)}})),
            Status::Ok);
  EXPECT_EQ(container.createTable(L"B", {}), Status::Ok);
  const ObjectId e = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  EXPECT_EQ(container.getTable(L"A")->addRecord(OdRecord(L"A", {OdValue(5)}), e), Status::Ok);
  EXPECT_NE(container.renameTable(L"A", L"B"), Status::Ok);
  EXPECT_EQ(container.renameTable(L"A", L"C"), Status::Ok);
  auto it = container.newIterator();
  EXPECT_EQ(it->init(e, platform::OpenMode::Read, true), Status::Ok);
  EXPECT_EQ(it->recordTableName(), L"C");
}

TEST(DatabaseTables, RemovingATableRemovesItsRecordsOnly) {
  host::Database db;
  host::DbOdContainer container(db);
  EXPECT_EQ(container.createTable(L"A", {}), Status::Ok);
  EXPECT_EQ(container.createTable(L"B", {}), Status::Ok);
  const ObjectId e = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  for (const wchar_t* t : {L"A", L"B", L"A"}) {
    EXPECT_EQ(container.getTable(t)->addRecord(OdRecord(), e), Status::Ok);
  }
  EXPECT_EQ(container.removeTable(L"A"), Status::Ok);
  EXPECT_NE(container.removeTable(L"A"), Status::Ok);
  auto it = container.newIterator();
  EXPECT_EQ(it->init(e, platform::OpenMode::Read, true), Status::Ok);
  EXPECT_EQ(it->countRecords(), 1);
  EXPECT_EQ(it->recordTableName(), L"B");
  EXPECT_EQ(container.tableNames(), (std::vector<std::wstring>{L"B"}));
}

TEST(DatabaseTables, UpdatingADefinitionMapsValuesByColumnName) {
  host::Database db;
  host::DbOdContainer container(db);
  ASSERT_EQ(container.createTable(L"T", columns({{L"ID", OdType::Integer, L"", OdValue(0)},
                                                 {L"NAME", OdType::Character, L"", OdValue(L"")}})),
            Status::Ok);
  const ObjectId e = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  EXPECT_EQ(container.getTable(L"T")->addRecord(OdRecord(L"T", {OdValue(4), OdValue(L"x")}), e),
            Status::Ok);
  ASSERT_EQ(container.updateTableDefinition(
                L"T", columns({{L"name", OdType::Character, L"", OdValue(L"")},
                               {L"AREA", OdType::Real, L"", OdValue(1.5)},
                               {L"ID", OdType::Real, L"", OdValue(0.0)}})),
            Status::Ok);
  auto it = container.newIterator();
  EXPECT_EQ(it->init(e, platform::OpenMode::Read, true), Status::Ok);
  OdRecord r;
  EXPECT_EQ(it->getRecord(r), Status::Ok);
  EXPECT_EQ(r.values(), (std::vector<OdValue>{OdValue(L"x"), OdValue(1.5), OdValue(4.0)}));
}

TEST(DatabaseLayers, FindIgnoresCaseAfterExactAndNewEntitiesTakeTheCurrentLayer) {
  host::Database db;
  const ObjectId roads = db.addLayer(L"Roads");
  EXPECT_EQ(db.findLayer(L"ROADS"), roads);
  EXPECT_EQ(db.findLayer(L"0"), db.layerIds().front());
  db.modifyHeader().currentLayer = roads;
  const ObjectId e = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  EXPECT_EQ(db.entity(e)->layer, roads);
}

TEST(DatabaseHandles, HandlesAreUniqueHexAndFindTheirObjects) {
  host::Database db;
  std::vector<ObjectId> ids;
  for (int i = 0; i < 40; ++i) {
    ids.push_back(db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace()));
  }
  for (ObjectId id : ids) EXPECT_EQ(db.idOfHandle(db.object(id)->handle), id);
  host::DbDrawing drawing(db);
  const std::wstring text = drawing.handleText(ids.back());
  EXPECT_EQ(text, host::handleToText(db.object(ids.back())->handle));
  EXPECT_EQ(host::handleToText(0x2AF), L"2AF");
  EXPECT_EQ(host::handleToText(0), L"0");
  // Objects made after the index was built are found too.
  const ObjectId later = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  EXPECT_EQ(db.idOfHandle(db.object(later)->handle), later);
  EXPECT_TRUE(db.idOfHandle(0xFFFFFF).isNull());
}

TEST(DatabaseBlocks, SpacesKeepTheirOwnEntitiesInOrder) {
  host::Database db;
  const ObjectId a = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  const ObjectId p = db.addEntity(std::make_unique<host::PointEntity>(), db.paperSpace());
  const ObjectId b = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  db.eraseEntity(a);
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{b}));
  EXPECT_EQ(db.blockEntities(db.paperSpace()), (std::vector<ObjectId>{p}));
  EXPECT_EQ(db.findBlock(L"*model_space"), db.modelSpace());
}

}  // namespace
