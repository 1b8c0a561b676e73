// Our database behind the port's Object Data interfaces.
#pragma once

#include <memory>

#include "host/db/Database.h"
#include "host/db/SourceTables.h"
#include "platform/ObjectData.h"

namespace host {

// Walks an entity's records, all of them or those of one table.
class DbRecordIterator : public platform::OdRecordIterator {
 public:
  // A null table id walks every table.
  DbRecordIterator(Database& db, ObjectId table);

  platform::Status init(ObjectId entity, platform::OpenMode mode, bool positionAtStart) override;
  void start() override;
  bool isDone() const override;
  void next() override;
  platform::Status getRecord(platform::OdRecord& out) const override;
  platform::Status getValue(int column, platform::OdValue& out) const override;
  platform::Status updateRecord(const platform::OdRecord& record) override;
  platform::Status removeRecord() override;
  int countRecords() const override;
  const std::wstring& recordTableName() const override;

 private:
  const OdRecordList* list() const;
  bool wanted(const OdRecordList& list, OdRecordList::Pos pos) const;
  // The first wanted record at or after pos.
  OdRecordList::Pos seek(const OdRecordList* list, OdRecordList::Pos pos) const;

  Database& db_;
  ObjectId tableId_;
  std::uint32_t tableIndex_ = 0;
  ObjectId entity_;
  platform::OpenMode mode_ = platform::OpenMode::Read;
  bool ready_ = false;
  bool positioned_ = false;
  OdRecordList::Pos pos_ = 0;
  // The list as last seen, valid while the database's generation is unchanged.
  mutable const OdRecordList* cached_ = nullptr;
  mutable std::uint64_t cachedGeneration_ = ~std::uint64_t{0};
};

class DbOdTable : public platform::OdTable {
 public:
  DbOdTable(Database& db, ObjectId table) : db_(db), table_(table) {}

  std::wstring name() const override;
  platform::OdTableDef definition() const override;
  std::unique_ptr<platform::OdRecordIterator> newIterator() override;
  void initRecord(platform::OdRecord& record) const override;
  platform::Status addRecord(const platform::OdRecord& record, ObjectId entity) override;

 private:
  Database& db_;
  ObjectId table_;
};

// Finds the tables that active attached drawings lend as well, after the
// drawing's own of exactly that name; tableNames lists the drawing's alone.
class DbOdContainer : public platform::OdContainer {
 public:
  explicit DbOdContainer(Database& db, const SourceTables* sources = nullptr)
      : db_(db), sources_(sources) {}

  std::vector<std::wstring> tableNames() const override;
  std::unique_ptr<platform::OdRecordIterator> newIterator() override;
  std::unique_ptr<platform::OdTable> getTable(const std::wstring& name) override;
  platform::Status createTable(const std::wstring& name,
                               const platform::OdTableDef& definition) override;
  platform::Status removeTable(const std::wstring& name) override;
  platform::Status updateTableDefinition(const std::wstring& name,
                                         const platform::OdTableDef& definition) override;
  platform::Status renameTable(const std::wstring& oldName, const std::wstring& newName) override;

 private:
  Database& db_;
  const SourceTables* sources_;
};

class DbProject : public platform::Project {
 public:
  explicit DbProject(Database& db) : db_(db), container_(db, &sources_) {}
  DbProject(const DbProject&) = delete;
  DbProject& operator=(const DbProject&) = delete;

  platform::OdContainer& odContainer() override { return container_; }
  std::vector<std::wstring> tableNames(int kindMask) const override;
  platform::DrawingSet& drawingSet() override {
    return drawingSet_ != nullptr ? *drawingSet_ : platform::Project::drawingSet();
  }

  // The set that keeps the project's attached drawings, which live where
  // files are read; they lend their tables through sourceTables().
  void setDrawingSet(platform::DrawingSet* set) { drawingSet_ = set; }
  SourceTables& sourceTables() { return sources_; }

 private:
  Database& db_;
  SourceTables sources_;
  DbOdContainer container_;
  platform::DrawingSet* drawingSet_ = nullptr;
};

// Names of the database's tables in ascending code-unit order.
std::vector<std::wstring> sortedOdTableNames(const Database& db);

}  // namespace host
