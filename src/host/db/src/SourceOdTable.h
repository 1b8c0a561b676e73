// A table that an active attached drawing lends: it reads as the lent
// definition, and its first record creates the table in the drawing.
#pragma once

#include "host/db/Database.h"
#include "host/db/SourceTables.h"
#include "platform/ObjectData.h"

namespace host {

class SourceOdTable : public platform::OdTable {
 public:
  SourceOdTable(Database& db, NamedTableDefinition table) : db_(db), table_(std::move(table)) {}

  std::wstring name() const override { return table_.name; }
  platform::OdTableDef definition() const override { return table_.definition; }
  std::unique_ptr<platform::OdRecordIterator> newIterator() override;
  void initRecord(platform::OdRecord& record) const override;
  platform::Status addRecord(const platform::OdRecord& record, ObjectId entity) override;

 private:
  Database& db_;
  // A copy: the lender may take its tables back while this one is held.
  NamedTableDefinition table_;
};

}  // namespace host
