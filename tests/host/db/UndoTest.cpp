// Undo and redo restore the drawing exactly, a command at a time.
#include <gtest/gtest.h>

#include <stdexcept>

#include "host/db/Database.h"
#include "host/db/PortObjectData.h"
#include "host/db/UndoStep.h"

namespace {

using platform::ObjectId;
using platform::OdRecord;
using platform::OdValue;
using platform::Status;

class UndoTest : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::OdTableDef def;
    def.columns = {{L"N", platform::OdType::Integer, L"", OdValue(0)}};
    db.createOdTable(L"A", def);
    e = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
    attach(1);
    attach(2);
  }
  void attach(int n) {
    EXPECT_EQ(container.getTable(L"A")->addRecord(OdRecord(L"A", {OdValue(n)}), e), Status::Ok);
  }
  std::vector<int> values() {
    std::vector<int> out;
    auto it = container.newIterator();
    EXPECT_EQ(it->init(e, platform::OpenMode::Read, true), Status::Ok);
    OdRecord r;
    for (; !it->isDone(); it->next()) {
      EXPECT_EQ(it->getRecord(r), Status::Ok);
      out.push_back(r.value(0).asInt());
    }
    return out;
  }

  host::Database db;
  host::DbOdContainer container{db};
  ObjectId e;
};

TEST_F(UndoTest, AStepRestoresRecordsAndRedoPutsTheChangeBack) {
  db.undo().begin(L"DETACH");
  auto it = container.newIterator();
  EXPECT_EQ(it->init(e, platform::OpenMode::Write, true), Status::Ok);
  EXPECT_EQ(it->removeRecord(), Status::Ok);
  EXPECT_EQ(it->removeRecord(), Status::Ok);
  db.undo().end();
  EXPECT_TRUE(values().empty());
  EXPECT_EQ(db.undoSteps(1), (std::vector<std::wstring>{L"DETACH"}));
  EXPECT_EQ(values(), (std::vector<int>{1, 2}));
  EXPECT_EQ(db.redoSteps(1), (std::vector<std::wstring>{L"DETACH"}));
  EXPECT_TRUE(values().empty());
}

TEST_F(UndoTest, CreatedObjectsVanishAndComeBack) {
  db.undo().begin(L"MAKE");
  const ObjectId line = db.addEntity(std::make_unique<host::LineEntity>(), db.modelSpace());
  const ObjectId fresh = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  EXPECT_EQ(container.getTable(L"A")->addRecord(OdRecord(L"A", {OdValue(9)}), fresh), Status::Ok);
  db.createOdTable(L"NEW", {});
  db.undo().end();
  db.undoSteps(1);
  EXPECT_EQ(db.entity(line), nullptr);
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{e}));
  EXPECT_TRUE(db.findOdTable(L"NEW").isNull());
  db.redoSteps(1);
  EXPECT_NE(db.entity(line), nullptr);
  EXPECT_EQ(db.odRecords(fresh)->count(), 1);
  EXPECT_FALSE(db.findOdTable(L"NEW").isNull());
}

TEST_F(UndoTest, StepsUndoInReverseAndANewStepEndsRedo) {
  db.undo().begin(L"ONE");
  attach(3);
  db.undo().end();
  db.undo().begin(L"TWO");
  db.eraseEntity(e);
  db.undo().end();
  db.undo().begin(L"LOOK");  // changes nothing, so it is no step
  db.undo().end();
  EXPECT_EQ(db.undoSteps(1), (std::vector<std::wstring>{L"TWO"}));
  EXPECT_NE(db.entity(e), nullptr);
  EXPECT_EQ(values(), (std::vector<int>{1, 2, 3}));
  db.undoSteps(1);
  EXPECT_EQ(values(), (std::vector<int>{1, 2}));
  db.undo().begin(L"LOOK");  // nor does it end redo
  db.undo().end();
  EXPECT_EQ(db.redoSteps(1), (std::vector<std::wstring>{L"ONE"}));
  db.undo().begin(L"THREE");
  attach(4);
  db.undo().end();
  EXPECT_TRUE(db.redoSteps(1).empty());
  EXPECT_EQ(db.undoSteps(5), (std::vector<std::wstring>{L"THREE", L"ONE"}));
}

TEST_F(UndoTest, RemovingATableUndoesWithItsRecords) {
  db.undo().begin(L"DROP");
  db.removeOdTable(db.findOdTable(L"A"));
  db.undo().end();
  EXPECT_EQ(db.odRecords(e), nullptr);
  db.undoSteps(1);
  EXPECT_EQ(values(), (std::vector<int>{1, 2}));
}

TEST_F(UndoTest, AScopedStepClosesOnEveryWayOut) {
  // An early return keeps what was done, as one step.
  const auto attachThenReturn = [&](bool early) {
    host::UndoStep step(db, L"EARLY");
    attach(3);
    if (early) return;
    attach(4);
  };
  attachThenReturn(true);
  EXPECT_FALSE(db.undo().recording());
  EXPECT_EQ(values(), (std::vector<int>{1, 2, 3}));

  // An exception on its way through rolls the step back, handles given out included.
  const host::Handle next = db.nextHandle();
  EXPECT_THROW(([&] {
                 host::UndoStep step(db, L"THROW");
                 attach(5);
                 db.addEntity(std::make_unique<host::LineEntity>(), db.modelSpace());
                 throw std::runtime_error("fault");
               }()),
               std::runtime_error);
  EXPECT_FALSE(db.undo().recording());
  EXPECT_EQ(values(), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{e}));
  EXPECT_EQ(db.nextHandle(), next);
  EXPECT_EQ(db.undoSteps(5), (std::vector<std::wstring>{L"EARLY"}));
}

}  // namespace
