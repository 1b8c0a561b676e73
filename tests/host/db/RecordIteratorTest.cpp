// The record iterator's semantics, which the module's walks rely on.
#include <gtest/gtest.h>

#include "RecordFixture.h"

namespace {

using platform::ObjectId;
using platform::OdRecord;
using platform::OdValue;
using platform::OpenMode;
using platform::Status;

class RecordIteratorTest : public RecordFixture {
 protected:
  void SetUp() override {
    RecordFixture::SetUp();
    for (int i = 1; i <= 5; ++i) add(i % 2 == 1 ? L"A" : L"B", i);  // A1 B2 A3 B4 A5
  }
};

TEST_F(RecordIteratorTest, ContainerSeesAllAndATableOnlyItsOwnInOrder) {
  EXPECT_EQ(ids(), (std::vector<int>{1, 2, 3, 4, 5}));
  auto a = container.getTable(L"A")->newIterator();
  EXPECT_EQ(ids(a.get()), (std::vector<int>{1, 3, 5}));
  EXPECT_EQ(a->countRecords(), 3);
  EXPECT_EQ(a->init(entity, OpenMode::Read, true), Status::Ok);
  a->next();
  EXPECT_EQ(a->recordTableName(), L"A");
}

TEST_F(RecordIteratorTest, WithoutPositioningTheIteratorWaitsForStart) {
  auto it = container.newIterator();
  ASSERT_EQ(it->init(entity, OpenMode::Read, false), Status::Ok);
  EXPECT_TRUE(it->isDone());
  EXPECT_EQ(it->countRecords(), 5);
  it->start();
  EXPECT_FALSE(it->isDone());
  EXPECT_EQ(it->recordTableName(), L"A");
}

TEST_F(RecordIteratorTest, RemoveLeavesTheIteratorOnTheFollowingRecord) {
  auto it = container.getTable(L"A")->newIterator();
  EXPECT_EQ(it->init(entity, OpenMode::Write, true), Status::Ok);
  ASSERT_EQ(it->removeRecord(), Status::Ok);  // A1 goes; now on A3
  OdRecord r;
  EXPECT_EQ(it->getRecord(r), Status::Ok);
  EXPECT_EQ(r.value(0).asInt(), 3);
  it->next();  // skips A3 to A5
  EXPECT_EQ(it->getRecord(r), Status::Ok);
  EXPECT_EQ(r.value(0).asInt(), 5);
  EXPECT_EQ(ids(), (std::vector<int>{2, 3, 4, 5}));
}

TEST_F(RecordIteratorTest, UpdateWritesInPlaceAndConformsToTheColumns) {
  auto it = container.newIterator();
  EXPECT_EQ(it->init(entity, OpenMode::Write, true), Status::Ok);
  it->next();
  ASSERT_EQ(it->updateRecord(OdRecord(L"ignored", {OdValue(2.9)})), Status::Ok);
  OdRecord r;
  EXPECT_EQ(it->getRecord(r), Status::Ok);
  // A real in an integer column converts; the missing column takes its default.
  EXPECT_EQ(r, OdRecord(L"B", {OdValue(2), OdValue(L"none")}));
  EXPECT_EQ(it->updateRecord(OdRecord(L"B", {OdValue(7), OdValue(L"x"), OdValue(L"extra")})),
            Status::Ok);
  EXPECT_EQ(it->getRecord(r), Status::Ok);
  EXPECT_EQ(r.count(), 2);
  EXPECT_EQ(ids(), (std::vector<int>{1, 7, 3, 4, 5}));
}

TEST_F(RecordIteratorTest, ReadModeRefusesChangesAndUnopenableEntitiesFailInit) {
  auto it = container.newIterator();
  EXPECT_EQ(it->init(entity, OpenMode::Read, true), Status::Ok);
  EXPECT_NE(it->removeRecord(), Status::Ok);
  EXPECT_NE(it->updateRecord(OdRecord(L"A", {})), Status::Ok);
  db.setOpenFailure(entity, true);
  EXPECT_NE(it->init(entity, OpenMode::Read, true), Status::Ok);
  EXPECT_TRUE(it->isDone());
  EXPECT_EQ(it->countRecords(), 0);
  db.setOpenFailure(entity, false);
  db.eraseEntity(entity);
  EXPECT_NE(it->init(entity, OpenMode::Read, true), Status::Ok);
  EXPECT_NE(container.getTable(L"A")->addRecord(OdRecord(), entity), Status::Ok);
}

TEST_F(RecordIteratorTest, AnEntityWithoutRecordsIsDoneAtOnce) {
  const ObjectId bare = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  auto it = container.newIterator();
  EXPECT_EQ(it->init(bare, OpenMode::Write, true), Status::Ok);
  EXPECT_TRUE(it->isDone());
  EXPECT_EQ(it->countRecords(), 0);
  EXPECT_EQ(it->recordTableName(), L"");
}

}  // namespace
