// A drawing of one point and two tables, A and B, of an integer ID and a text
// NAME, for tests that walk and change the point's records.
#pragma once

#include <gtest/gtest.h>

#include "host/db/Database.h"
#include "host/db/PortObjectData.h"

class RecordFixture : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::OdTableDef def;
    def.columns = {{L"ID", platform::OdType::Integer, L"", platform::OdValue(-1)},
                   {L"NAME", platform::OdType::Character, L"", platform::OdValue(L"none")}};
    db.createOdTable(L"A", def);
    db.createOdTable(L"B", def);
    entity = db.addEntity(std::make_unique<host::PointEntity>(), db.modelSpace());
  }
  void add(const std::wstring& table, int id) {
    const platform::OdRecord r(table, {platform::OdValue(id), platform::OdValue(L"n")});
    ASSERT_EQ(container.getTable(table)->addRecord(r, entity), platform::Status::Ok);
  }
  // The IDs of the records that the iterator walks on the point, every one by default.
  std::vector<int> ids(platform::OdRecordIterator* it = nullptr) {
    std::unique_ptr<platform::OdRecordIterator> all = container.newIterator();
    if (it == nullptr) it = all.get();
    std::vector<int> out;
    EXPECT_EQ(it->init(entity, platform::OpenMode::Read, true), platform::Status::Ok);
    for (platform::OdRecord r; !it->isDone(); it->next()) {
      EXPECT_EQ(it->getRecord(r), platform::Status::Ok);
      out.push_back(r.value(0).asInt());
    }
    return out;
  }

  host::Database db;
  host::DbOdContainer container{db};
  platform::ObjectId entity;
};
