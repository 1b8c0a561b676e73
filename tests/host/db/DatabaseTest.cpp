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
using Names = std::vector<std::wstring>;

class DatabaseTest : public ::testing::Test {
 protected:
  ObjectId addPoint(ObjectId block = {}) {
    return db.addEntity(std::make_unique<host::PointEntity>(),
                        block.isNull() ? db.modelSpace() : block);
  }
  static platform::OdTableDef columns(std::initializer_list<platform::OdColumnDef> list) {
    platform::OdTableDef def;
    def.columns = list;
    return def;
  }
  // The entity's first record, as the container's iterator reads it.
  OdRecord firstRecord(ObjectId entity) {
    auto it = container.newIterator();
    OdRecord r;
    EXPECT_EQ(it->init(entity, platform::OpenMode::Read, true), Status::Ok);
    EXPECT_EQ(it->getRecord(r), Status::Ok);
    return r;
  }

  host::Database db;
  host::DbOdContainer container{db};
};

TEST_F(DatabaseTest, TableLookupIsExactFirstThenIgnoringCaseAndTheProjectOrdersCodeUnits) {
  const ObjectId upper = db.createOdTable(L"ROADS", {});
  const ObjectId lower = db.createOdTable(L"roads", {});
  ASSERT_FALSE(upper.isNull());
  ASSERT_FALSE(lower.isNull());
  EXPECT_TRUE(db.createOdTable(L"ROADS", {}).isNull());
  EXPECT_EQ(db.findOdTable(L"roads"), lower);
  EXPECT_EQ(db.findOdTable(L"ROADS"), upper);
  EXPECT_EQ(db.findOdTable(L"Roads"), upper);
  EXPECT_TRUE(db.findOdTable(L"Road").isNull());
  for (const wchar_t* name : {L"b", L"B", L"a", L"_x", L"A"}) db.createOdTable(name, {});
  EXPECT_EQ(host::DbProject(db).tableNames(platform::kAllTableKinds),
            (Names{L"A", L"B", L"ROADS", L"_x", L"a", L"b", L"roads"}));
}

TEST_F(DatabaseTest, RenameFailsOnAnExistingNameAndRecordsFollowTheTable) {
  ASSERT_EQ(container.createTable(L"A", columns({{L"N", OdType::Integer, L"", OdValue(0)}})),
            Status::Ok);
  ASSERT_EQ(container.createTable(L"B", {}), Status::Ok);
  const ObjectId e = addPoint();
  EXPECT_EQ(container.getTable(L"A")->addRecord(OdRecord(L"A", {OdValue(5)}), e), Status::Ok);
  EXPECT_NE(container.renameTable(L"A", L"B"), Status::Ok);
  EXPECT_EQ(container.renameTable(L"A", L"C"), Status::Ok);
  EXPECT_EQ(firstRecord(e), OdRecord(L"C", {OdValue(5)}));
}

TEST_F(DatabaseTest, RemovingATableRemovesItsRecordsOnly) {
  ASSERT_EQ(container.createTable(L"A", {}), Status::Ok);
  ASSERT_EQ(container.createTable(L"B", {}), Status::Ok);
  const ObjectId e = addPoint();
  for (const wchar_t* t : {L"A", L"B", L"A"}) {
    EXPECT_EQ(container.getTable(t)->addRecord(OdRecord(), e), Status::Ok);
  }
  EXPECT_EQ(container.removeTable(L"A"), Status::Ok);
  EXPECT_NE(container.removeTable(L"A"), Status::Ok);
  auto it = container.newIterator();
  EXPECT_EQ(it->init(e, platform::OpenMode::Read, true), Status::Ok);
  EXPECT_EQ(it->countRecords(), 1);
  EXPECT_EQ(it->recordTableName(), L"B");
  EXPECT_EQ(container.tableNames(), (Names{L"B"}));
}

TEST_F(DatabaseTest, UpdatingADefinitionMapsValuesByColumnName) {
  ASSERT_EQ(container.createTable(L"T", columns({{L"ID", OdType::Integer, L"", OdValue(0)},
                                                 {L"NAME", OdType::Character, L"", OdValue(L"")}})),
            Status::Ok);
  const ObjectId e = addPoint();
  EXPECT_EQ(container.getTable(L"T")->addRecord(OdRecord(L"T", {OdValue(4), OdValue(L"x")}), e),
            Status::Ok);
  ASSERT_EQ(container.updateTableDefinition(
                L"T", columns({{L"name", OdType::Character, L"", OdValue(L"")},
                               {L"AREA", OdType::Real, L"", OdValue(1.5)},
                               {L"ID", OdType::Real, L"", OdValue(0.0)}})),
            Status::Ok);
  EXPECT_EQ(firstRecord(e), OdRecord(L"T", {OdValue(L"x"), OdValue(1.5), OdValue(4.0)}));
}

TEST_F(DatabaseTest, LayersAreFoundIgnoringCaseAfterExactAndNewEntitiesTakeTheCurrentOne) {
  const ObjectId roads = db.addLayer(L"Roads");
  EXPECT_EQ(db.findLayer(L"ROADS"), roads);
  EXPECT_EQ(db.findLayer(L"0"), db.layerIds().front());
  db.modifyHeader().currentLayer = roads;
  EXPECT_EQ(db.entity(addPoint())->layer, roads);
}

TEST_F(DatabaseTest, HandlesAreUniqueHexAndFindTheirObjects) {
  std::vector<ObjectId> ids;
  for (int i = 0; i < 40; ++i) ids.push_back(addPoint());
  for (ObjectId id : ids) EXPECT_EQ(db.idOfHandle(db.object(id)->handle), id);
  EXPECT_EQ(host::DbDrawing(db).handleText(ids.back()),
            host::handleToText(db.object(ids.back())->handle));
  EXPECT_EQ(host::handleToText(0x2AF), L"2AF");
  EXPECT_EQ(host::handleToText(0), L"0");
  // Objects made after the index was built are found too.
  const ObjectId later = addPoint();
  EXPECT_EQ(db.idOfHandle(db.object(later)->handle), later);
  EXPECT_TRUE(db.idOfHandle(0xFFFFFF).isNull());
}

TEST_F(DatabaseTest, SpacesKeepTheirOwnEntitiesInOrder) {
  const ObjectId a = addPoint();
  const ObjectId p = addPoint(db.paperSpace());
  const ObjectId b = addPoint();
  // Asked before the erase too: what was answered then is not answered again.
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{a, b}));
  db.eraseEntity(a);
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{b}));
  EXPECT_EQ(db.blockEntities(db.paperSpace()), (std::vector<ObjectId>{p}));
  EXPECT_EQ(db.findBlock(L"*model_space"), db.modelSpace());
}

TEST_F(DatabaseTest, AReferenceGoesByItsDynamicBlockWhileThatOpens) {
  const ObjectId gate = db.addBlock(L"Gate", {});
  const ObjectId shape = db.addBlock(L"*U1", {});
  db.modify<host::BlockRecord>(shape)->dynamicBlock = gate;
  auto ref = std::make_unique<host::BlockReferenceEntity>();
  ref->block = shape;
  const ObjectId reference = db.addEntity(std::move(ref), db.modelSpace());
  const host::DbDrawing drawing(db);
  const struct {
    ObjectId failing;
    bool gateErased;
    const wchar_t* name;
  } cases[] = {
      {{}, false, L"Gate"},   // the dynamic block's name
      {gate, false, L"*U1"},  // the dynamic block won't open
      {{}, true, L"*U1"},     // nor once erased
      {shape, false, L""},    // the reference's own block won't open
      {reference, false, L""},
  };
  for (const auto& c : cases) {
    db.modify<host::BlockRecord>(gate)->erased = c.gateErased;
    if (!c.failing.isNull()) db.setOpenFailure(c.failing, true);
    EXPECT_EQ(drawing.blockNameOfReference(reference), c.name);
    if (!c.failing.isNull()) db.setOpenFailure(c.failing, false);
  }
}

TEST_F(DatabaseTest, AnAttributesTextChangesWithinTheUndoStep) {
  auto ref = std::make_unique<host::BlockReferenceEntity>();
  ref->block = db.addBlock(L"Pole", {});
  const ObjectId reference = db.addEntity(std::move(ref), db.modelSpace());
  auto attribute = std::make_unique<host::AttributeEntity>();
  attribute->tag = L"ID";
  attribute->data.text = L"old";
  const ObjectId id = db.addEntity(std::move(attribute), reference);
  db.modify<host::BlockReferenceEntity>(reference)->attributes.push_back(id);
  host::DbDrawing drawing(db);
  EXPECT_EQ(drawing.attributeIds(reference), std::vector<ObjectId>{id});
  EXPECT_EQ(drawing.attributeTag(id), std::wstring(L"ID"));
  EXPECT_EQ(drawing.attributeTag(reference), std::nullopt);
  db.undo().begin(L"STORE");
  EXPECT_EQ(drawing.setAttributeText(id, L"new"), Status::Ok);
  db.undo().end();
  EXPECT_EQ(db.get<host::AttributeEntity>(id)->data.text, L"new");
  db.undoSteps(1);
  EXPECT_EQ(db.get<host::AttributeEntity>(id)->data.text, L"old");
  db.setOpenFailure(id, true);
  EXPECT_EQ(drawing.setAttributeText(id, L"new"), Status::Failed);
  EXPECT_EQ(drawing.attributeTag(id), std::nullopt);
  db.setOpenFailure(reference, true);
  EXPECT_TRUE(drawing.attributeIds(reference).empty());
}

}  // namespace
