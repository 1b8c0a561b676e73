// The Object Data interfaces of the port: container, tables, record iterators
// and the project that owns them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/AttachedDrawings.h"
#include "platform/ObjectId.h"
#include "platform/OdTypes.h"
#include "platform/Status.h"

namespace platform {

// Walks the records of one entity: all of them (from the container) or only
// those of one table (from that table), in attachment order.
//
// Semantics every host keeps:
//  - init with positionAtStart true places the iterator on the first record;
//    with false it stands nowhere (isDone) until start.
//  - removeRecord leaves the iterator on the following record, so a next
//    straight after it skips one.
//  - updateRecord writes in place; a record that does not match the table's
//    columns is completed with their defaults and extra values are dropped.
//  - update and remove fail on an iterator initialised for read.
//  - init fails for an entity that won't open, and leaves the iterator done.
class OdRecordIterator {
 public:
  virtual ~OdRecordIterator() = default;

  virtual Status init(ObjectId entity, OpenMode mode, bool positionAtStart) = 0;
  virtual void start() = 0;
  virtual bool isDone() const = 0;
  virtual void next() = 0;
  virtual Status getRecord(OdRecord& out) const = 0;
  // The value of one column of the record under the iterator, without copying
  // the whole record; Failed when done or past the record's last value.
  virtual Status getValue(int column, OdValue& out) const {
    OdRecord record;
    if (getRecord(record) != Status::Ok || column < 0 || column >= record.count()) {
      return Status::Failed;
    }
    out = record.value(column);
    return Status::Ok;
  }
  virtual Status updateRecord(const OdRecord& record) = 0;
  virtual Status removeRecord() = 0;
  // Records the iterator can see on its entity.
  virtual int countRecords() const = 0;
  // Name of the table of the record under the iterator, without copying the
  // record; valid until the iterator moves. Empty when done.
  virtual const std::wstring& recordTableName() const = 0;
};

class OdTable {
 public:
  virtual ~OdTable() = default;

  virtual std::wstring name() const = 0;
  virtual OdTableDef definition() const = 0;
  virtual std::unique_ptr<OdRecordIterator> newIterator() = 0;
  // Fills the record with the table's name, columns and default values.
  virtual void initRecord(OdRecord& record) const = 0;
  // Attaches a copy of the record to the entity, after its other records.
  virtual Status addRecord(const OdRecord& record, ObjectId entity) = 0;
};

class OdContainer {
 public:
  virtual ~OdContainer() = default;

  // Names of all tables, in the project's order.
  virtual std::vector<std::wstring> tableNames() const = 0;
  virtual std::unique_ptr<OdRecordIterator> newIterator() = 0;
  // The table of that name (exact match first, else the first ignoring case);
  // null if there is none.
  virtual std::unique_ptr<OdTable> getTable(const std::wstring& name) = 0;
  virtual Status createTable(const std::wstring& name, const OdTableDef& definition) = 0;
  virtual Status removeTable(const std::wstring& name) = 0;
  virtual Status updateTableDefinition(const std::wstring& name, const OdTableDef& definition) = 0;
  virtual Status renameTable(const std::wstring& oldName, const std::wstring& newName) = 0;
};

// The kind mask that asks a project for tables of every kind.
inline constexpr int kAllTableKinds = 7;

// The map project of the current document.
class Project {
 public:
  virtual ~Project() = default;

  virtual OdContainer& odContainer() = 0;
  // Names of the project's tables of the kinds in the mask, in the project's
  // order (ascending code units).
  virtual std::vector<std::wstring> tableNames(int kindMask) const = 0;
  // The other drawings attached to the project; a project without any
  // attaches none.
  virtual DrawingSet& drawingSet() {
    static DrawingSet none;
    return none;
  }
};

}  // namespace platform
