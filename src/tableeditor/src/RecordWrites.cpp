// The record reads and writes of the table editor. None of them reports a
// status: a record that can't be found again is left alone, as the rows on
// screen keep what the user typed.
#include "tableeditor/RecordWrites.h"

#include <memory>

#include "oddata/OdAccess.h"
#include "platform/Text.h"

namespace zarvel {

using platform::ObjectId;
using platform::OdRecord;
using platform::OdType;
using platform::OdValue;
using platform::OpenMode;
using platform::Status;

namespace {

// Whether the record is the one the key names; an empty key names none.
bool keyMatches(const platform::OdTableDef& definition, const OdRecord& record, const RowKey& key) {
  if (key.empty()) return false;
  for (const FieldKey& field : key) {
    const int index = definition.columnIndex(field.name);
    if (index < 0 || index >= record.count() || record.value(index) != field.value) return false;
  }
  return true;
}

}  // namespace

RowKey makeRowKey(const std::vector<std::wstring>& columnNames,
                  const std::vector<CellValue>& values) {
  RowKey key;
  key.reserve(columnNames.size());
  for (std::size_t i = 0; i < columnNames.size() && i < values.size(); ++i) {
    key.push_back({columnNames[i], values[i].value()});
  }
  return key;
}

std::vector<std::vector<OdValue>> recordsOfEntityTable(platform::OdContainer& container,
                                                       const std::wstring& tableName, ObjectId id) {
  std::vector<std::vector<OdValue>> records;
  std::unique_ptr<platform::OdTable> table = container.getTable(tableName);
  if (!table) return records;
  std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
  initWalk(*it, id, OpenMode::Read);
  OdRecord record;
  for (; !it->isDone(); it->next()) {
    if (it->getRecord(record) == Status::Ok) records.push_back(std::move(record.values()));
  }
  return records;
}

void cellTextToValue(OdValue& value, const std::wstring& text) {
  switch (value.type()) {
    case OdType::Integer:
      value = platform::wtoi(text);
      return;
    case OdType::Real:
      value = platform::wtof(text);
      return;
    case OdType::Character:
      value = text;
      return;
    case OdType::Point: {
      const std::size_t first = text.find(L',');
      const std::size_t last = text.rfind(L',');
      if (first == std::wstring::npos || first == last) return;
      const std::wstring_view all(text);
      value = platform::Point3d{platform::wtof(all.substr(0, first)),
                                platform::wtof(all.substr(first + 1, last - first - 1)),
                                platform::wtof(all.substr(last + 1))};
      return;
    }
    case OdType::Unknown:
      return;
  }
}

void writeField(platform::OdContainer& container, ObjectId id, const std::wstring& tableName,
                int column, const OdValue& value, const RowKey& key) {
  std::unique_ptr<platform::OdTable> table = container.getTable(tableName);
  if (!table) return;
  const platform::OdTableDef definition = table->definition();
  std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
  initWalk(*it, id, OpenMode::Write);
  OdRecord record;
  for (; !it->isDone(); it->next()) {
    if (it->getRecord(record) != Status::Ok || !keyMatches(definition, record, key)) continue;
    if (column >= 0 && column < record.count()) {
      record.value(column) = value;
      // Unreported, as every write of the editor: the row keeps the value.
      platform::ignoreStatus(it->updateRecord(record));
    }
    return;
  }
}

int writeRecord(platform::OdContainer& container, ObjectId id, const std::wstring& tableName,
                const std::vector<OdValue>& values) {
  std::unique_ptr<platform::OdRecordIterator> it = container.newIterator();
  initWalk(*it, id, OpenMode::Write);
  while (!it->isDone() && it->recordTableName() != tableName) it->next();
  OdRecord record;
  if (it->isDone() || it->getRecord(record) != Status::Ok) return 0;
  if (record.count() != static_cast<int>(values.size())) return 0;
  record.values() = values;
  // The paste checks no write, as it reads the grid's rows no more.
  platform::ignoreStatus(it->updateRecord(record));
  return 1;
}

void setFieldOnAllRecords(ObjectId id, platform::OdTable& table, int column, const OdValue& value) {
  std::unique_ptr<platform::OdRecordIterator> it = table.newIterator();
  initWalk(*it, id, OpenMode::Write);
  OdRecord record;
  for (; !it->isDone(); it->next()) {
    if (it->getRecord(record) != Status::Ok || column < 0 || column >= record.count()) continue;
    record.value(column) = value;
    // A fill of every row reloads the rows after it: what failed shows there.
    platform::ignoreStatus(it->updateRecord(record));
  }
}

void removeMatchingRecords(const std::wstring& tableName, const std::vector<ObjectId>& ids,
                           const RowKey& key) {
  std::unique_ptr<platform::OdTable> table = getODContainer().getTable(tableName);
  if (!table) return;
  const platform::OdTableDef definition = table->definition();
  std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
  OdRecord record;
  for (ObjectId id : ids) {
    initWalk(*it, id, OpenMode::Write);
    for (; !it->isDone(); it->next()) {
      if (it->getRecord(record) != Status::Ok || !keyMatches(definition, record, key)) continue;
      // The rows leave the grid whatever the drawing did, as they always have.
      platform::ignoreStatus(it->removeRecord());
      break;
    }
  }
}

}  // namespace zarvel
