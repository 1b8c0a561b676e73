// The port's Object Data interfaces over our database.
#include "host/db/PortObjectData.h"

#include <algorithm>

#include "SourceOdTable.h"

namespace host {
namespace {
const std::wstring kNoName;
}  // namespace

using platform::OpenMode;
using platform::Status;

DbRecordIterator::DbRecordIterator(Database& db, ObjectId table) : db_(db), tableId_(table) {
  if (const OdTableObject* t = db_.odTable(table)) tableIndex_ = t->index;
}

const OdRecordList* DbRecordIterator::list() const {
  if (cachedGeneration_ != db_.odGeneration()) {
    cached_ = db_.odRecords(entity_);
    cachedGeneration_ = db_.odGeneration();
  }
  return cached_;
}

bool DbRecordIterator::wanted(const OdRecordList& l, OdRecordList::Pos pos) const {
  return tableId_.isNull() || l.tableAt(pos) == tableIndex_;
}

OdRecordList::Pos DbRecordIterator::seek(const OdRecordList* l, OdRecordList::Pos pos) const {
  if (l == nullptr) return 0;
  while (pos < l->end() && !wanted(*l, pos)) pos = l->next(pos);
  return pos;
}

Status DbRecordIterator::init(ObjectId entity, OpenMode mode, bool positionAtStart) {
  ready_ = false;
  positioned_ = false;
  pos_ = 0;
  cachedGeneration_ = ~std::uint64_t{0};
  entity_ = entity;
  mode_ = mode;
  if (db_.openEntity(entity) == nullptr) return Status::Failed;
  ready_ = true;
  if (positionAtStart) start();
  return Status::Ok;
}

void DbRecordIterator::start() {
  if (!ready_) return;
  positioned_ = true;
  pos_ = seek(list(), 0);
}

bool DbRecordIterator::isDone() const {
  if (!ready_ || !positioned_) return true;
  const OdRecordList* l = list();
  return l == nullptr || pos_ >= l->end();
}

void DbRecordIterator::next() {
  if (isDone()) return;
  const OdRecordList* l = list();
  pos_ = seek(l, l->next(pos_));
}

Status DbRecordIterator::getRecord(platform::OdRecord& out) const {
  if (isDone()) return Status::Failed;
  const OdRecordList* l = list();
  out.setTableName(db_.odTableAt(l->tableAt(pos_))->name);
  l->valuesAt(pos_, out.values());
  return Status::Ok;
}

Status DbRecordIterator::getValue(int column, platform::OdValue& out) const {
  if (isDone()) return Status::Failed;
  return list()->valueAt(pos_, column, out) ? Status::Ok : Status::Failed;
}

Status DbRecordIterator::updateRecord(const platform::OdRecord& record) {
  if (mode_ != OpenMode::Write || isDone()) return Status::Failed;
  const std::uint32_t table = list()->tableAt(pos_);
  const platform::OdTableDef& definition = db_.odTableAt(table)->definition;
  // A record read from the table and changed in place fits it already, and is
  // written without a copy.
  if (Database::conformsTo(definition, record.values())) {
    db_.modifyOdRecords(entity_)->replace(pos_, table, record.values());
  } else {
    db_.modifyOdRecords(entity_)->replace(pos_, table,
                                          Database::conformValues(definition, record.values()));
  }
  return Status::Ok;
}

Status DbRecordIterator::removeRecord() {
  if (mode_ != OpenMode::Write || isDone()) return Status::Failed;
  db_.modifyOdRecords(entity_)->remove(pos_);
  pos_ = seek(list(), pos_);
  return Status::Ok;
}

int DbRecordIterator::countRecords() const {
  if (!ready_) return 0;
  const OdRecordList* l = list();
  if (l == nullptr) return 0;
  int n = 0;
  for (auto p = l->begin(); p < l->end(); p = l->next(p)) {
    if (wanted(*l, p)) ++n;
  }
  return n;
}

const std::wstring& DbRecordIterator::recordTableName() const {
  if (isDone()) return kNoName;
  return db_.odTableAt(list()->tableAt(pos_))->name;
}

std::wstring DbOdTable::name() const {
  const OdTableObject* t = db_.odTable(table_);
  return t != nullptr ? t->name : std::wstring();
}

platform::OdTableDef DbOdTable::definition() const {
  const OdTableObject* t = db_.odTable(table_);
  return t != nullptr ? t->definition : platform::OdTableDef();
}

std::unique_ptr<platform::OdRecordIterator> DbOdTable::newIterator() {
  return std::make_unique<DbRecordIterator>(db_, table_);
}

void DbOdTable::initRecord(platform::OdRecord& record) const {
  const OdTableObject* t = db_.odTable(table_);
  if (t == nullptr) return;
  record.setTableName(t->name);
  record.values() = Database::conformValues(t->definition, {});
}

Status DbOdTable::addRecord(const platform::OdRecord& record, ObjectId entity) {
  const OdTableObject* t = db_.odTable(table_);
  if (t == nullptr || t->erased || db_.openEntity(entity) == nullptr) return Status::Failed;
  const std::uint32_t index = t->index;
  // A record made from the table itself needs no conforming, and records are
  // added a million at a time: the copy is spared.
  if (Database::conformsTo(t->definition, record.values())) {
    db_.modifyOdRecords(entity)->append(index, record.values());
  } else {
    db_.modifyOdRecords(entity)->append(index,
                                        Database::conformValues(t->definition, record.values()));
  }
  return Status::Ok;
}

std::vector<std::wstring> sortedOdTableNames(const Database& db) {
  std::vector<std::wstring> names;
  for (ObjectId id : db.odTableIds()) names.push_back(db.odTable(id)->name);
  std::sort(names.begin(), names.end());
  return names;
}

std::vector<std::wstring> DbOdContainer::tableNames() const { return sortedOdTableNames(db_); }

std::unique_ptr<platform::OdRecordIterator> DbOdContainer::newIterator() {
  return std::make_unique<DbRecordIterator>(db_, ObjectId());
}

std::unique_ptr<platform::OdTable> DbOdContainer::getTable(const std::wstring& name) {
  const ObjectId id = db_.findOdTable(name);
  if (sources_ == nullptr || sources_->empty() || (!id.isNull() && db_.odTable(id)->name == name)) {
    return id.isNull() ? nullptr : std::make_unique<DbOdTable>(db_, id);
  }
  // A lent table of exactly the name comes before a drawing's table that
  // matches only ignoring case, as two such tables may both exist.
  const NamedTableDefinition* lent = sources_->findExact(name);
  if (lent == nullptr && id.isNull()) lent = sources_->findIgnoringCase(name);
  if (lent != nullptr) return std::make_unique<SourceOdTable>(db_, *lent);
  return id.isNull() ? nullptr : std::make_unique<DbOdTable>(db_, id);
}

Status DbOdContainer::createTable(const std::wstring& name,
                                  const platform::OdTableDef& definition) {
  if (name.empty()) return Status::Failed;
  return db_.createOdTable(name, definition).isNull() ? Status::Failed : Status::Ok;
}

Status DbOdContainer::removeTable(const std::wstring& name) {
  return db_.removeOdTable(db_.findOdTable(name)) ? Status::Ok : Status::Failed;
}

Status DbOdContainer::updateTableDefinition(const std::wstring& name,
                                            const platform::OdTableDef& definition) {
  return db_.updateOdTableDefinition(db_.findOdTable(name), definition) ? Status::Ok : Status::Failed;
}

Status DbOdContainer::renameTable(const std::wstring& oldName, const std::wstring& newName) {
  return db_.renameOdTable(db_.findOdTable(oldName), newName) ? Status::Ok : Status::Failed;
}

std::vector<std::wstring> DbProject::tableNames(int /*kindMask*/) const {
  // Object Data tables are the only kind of table this host has.
  return sortedOdTableNames(db_);
}

}  // namespace host
