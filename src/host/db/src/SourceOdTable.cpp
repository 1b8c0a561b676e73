// Using a lent table copies its definition into the drawing, inside the
// change that uses it, so that undoing that change takes the copy away too.
#include "SourceOdTable.h"

#include "host/db/PortObjectData.h"

namespace host {
namespace {

using platform::Status;

// What a table not yet in the drawing has on every entity: nothing.
class NoRecords : public platform::OdRecordIterator {
 public:
  explicit NoRecords(const Database& db) : db_(db) {}

  Status init(ObjectId entity, platform::OpenMode, bool) override {
    return db_.openEntity(entity) != nullptr ? Status::Ok : Status::Failed;
  }
  void start() override {}
  bool isDone() const override { return true; }
  void next() override {}
  Status getRecord(platform::OdRecord&) const override { return Status::Failed; }
  Status updateRecord(const platform::OdRecord&) override { return Status::Failed; }
  Status removeRecord() override { return Status::Failed; }
  int countRecords() const override { return 0; }
  const std::wstring& recordTableName() const override { return kNoName; }

 private:
  static inline const std::wstring kNoName;
  const Database& db_;
};

// The drawing's table of exactly that name, null if none.
ObjectId exactTable(const Database& db, const std::wstring& name) {
  const ObjectId id = db.findOdTable(name);
  return !id.isNull() && db.odTable(id)->name == name ? id : ObjectId();
}

}  // namespace

std::unique_ptr<platform::OdRecordIterator> SourceOdTable::newIterator() {
  const ObjectId id = exactTable(db_, table_.name);
  if (id.isNull()) return std::make_unique<NoRecords>(db_);
  return std::make_unique<DbRecordIterator>(db_, id);
}

void SourceOdTable::initRecord(platform::OdRecord& record) const {
  record.setTableName(table_.name);
  record.values() = Database::conformValues(table_.definition, {});
}

Status SourceOdTable::addRecord(const platform::OdRecord& record, ObjectId entity) {
  // An entity that takes no record leaves the drawing without the table.
  if (db_.openEntity(entity) == nullptr) return Status::Failed;
  ObjectId id = exactTable(db_, table_.name);
  if (id.isNull()) id = db_.createOdTable(table_.name, table_.definition);
  if (id.isNull()) return Status::Failed;
  return DbOdTable(db_, id).addRecord(record, entity);
}

}  // namespace host
