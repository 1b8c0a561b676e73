// Undo and redo restore the drawing exactly, a command at a time.
#include <gtest/gtest.h>

#include <stdexcept>

#include "RecordFixture.h"
#include "host/db/UndoStep.h"

namespace {

using platform::ObjectId;
using platform::Status;
using Steps = std::vector<std::wstring>;

// The point starts with two records of A, IDs 1 and 2.
class UndoTest : public RecordFixture {
 protected:
  void SetUp() override {
    RecordFixture::SetUp();
    add(L"A", 1);
    add(L"A", 2);
  }
};

TEST_F(UndoTest, AStepRestoresRecordsAndRedoPutsTheChangeBack) {
  db.undo().begin(L"DETACH");
  auto it = container.newIterator();
  EXPECT_EQ(it->init(entity, platform::OpenMode::Write, true), Status::Ok);
  EXPECT_EQ(it->removeRecord(), Status::Ok);
  EXPECT_EQ(it->removeRecord(), Status::Ok);
  db.undo().end();
  EXPECT_TRUE(ids().empty());
  EXPECT_EQ(db.undoSteps(1), (Steps{L"DETACH"}));
  EXPECT_EQ(ids(), (std::vector<int>{1, 2}));
  EXPECT_EQ(db.redoSteps(1), (Steps{L"DETACH"}));
  EXPECT_TRUE(ids().empty());
}

TEST_F(UndoTest, CreatedObjectsVanishAndComeBack) {
  db.undo().begin(L"MAKE");
  const ObjectId line = db.addEntity(std::make_unique<host::LineEntity>(), db.modelSpace());
  const ObjectId fresh = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  EXPECT_EQ(container.getTable(L"A")->addRecord(platform::OdRecord(L"A", {}), fresh), Status::Ok);
  db.createOdTable(L"NEW", {});
  db.undo().end();
  db.undoSteps(1);
  EXPECT_EQ(db.entity(line), nullptr);
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{entity}));
  EXPECT_TRUE(db.findOdTable(L"NEW").isNull());
  db.redoSteps(1);
  EXPECT_NE(db.entity(line), nullptr);
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{entity, line, fresh}));
  EXPECT_EQ(db.odRecords(fresh)->count(), 1);
  EXPECT_FALSE(db.findOdTable(L"NEW").isNull());
}

TEST_F(UndoTest, StepsUndoInReverseAndANewStepEndsRedo) {
  db.undo().begin(L"ONE");
  add(L"A", 3);
  db.undo().end();
  db.undo().begin(L"TWO");
  db.eraseEntity(entity);
  db.undo().end();
  db.undo().begin(L"LOOK");  // changes nothing, so it is no step
  db.undo().end();
  EXPECT_EQ(db.undoSteps(1), (Steps{L"TWO"}));
  EXPECT_NE(db.entity(entity), nullptr);
  EXPECT_EQ(ids(), (std::vector<int>{1, 2, 3}));
  db.undoSteps(1);
  EXPECT_EQ(ids(), (std::vector<int>{1, 2}));
  db.undo().begin(L"LOOK");  // nor does it end redo
  db.undo().end();
  EXPECT_EQ(db.redoSteps(1), (Steps{L"ONE"}));
  db.undo().begin(L"THREE");
  add(L"A", 4);
  db.undo().end();
  EXPECT_TRUE(db.redoSteps(1).empty());
  EXPECT_EQ(db.undoSteps(5), (Steps{L"THREE", L"ONE"}));
}

TEST_F(UndoTest, RemovingATableUndoesWithItsRecords) {
  db.undo().begin(L"DROP");
  db.removeOdTable(db.findOdTable(L"A"));
  db.undo().end();
  EXPECT_EQ(db.odRecords(entity), nullptr);
  db.undoSteps(1);
  EXPECT_EQ(ids(), (std::vector<int>{1, 2}));
}

TEST_F(UndoTest, AScopedStepClosesOnEveryWayOut) {
  // An early return keeps what was done, as one step.
  const auto attachThenReturn = [&](bool early) {
    host::UndoStep step(db, L"EARLY");
    add(L"A", 3);
    if (early) return;
    add(L"A", 4);
  };
  attachThenReturn(true);
  EXPECT_FALSE(db.undo().recording());
  EXPECT_EQ(ids(), (std::vector<int>{1, 2, 3}));

  // An exception on its way through rolls the step back, handles given out included.
  const host::Handle next = db.nextHandle();
  EXPECT_THROW(([&] {
                 host::UndoStep step(db, L"THROW");
                 add(L"A", 5);
                 db.addEntity(std::make_unique<host::LineEntity>(), db.modelSpace());
                 throw std::runtime_error("fault");
               }()),
               std::runtime_error);
  EXPECT_FALSE(db.undo().recording());
  EXPECT_EQ(ids(), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(db.blockEntities(db.modelSpace()), (std::vector<ObjectId>{entity}));
  EXPECT_EQ(db.nextHandle(), next);
  EXPECT_EQ(db.undoSteps(5), (Steps{L"EARLY"}));
}

}  // namespace
