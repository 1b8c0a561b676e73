// The record helpers shared by all commands.
#include "oddata/OdAccess.h"

#include <memory>
#include <set>

#include "oddata/CommandFrame.h"
#include "oddata/Port.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"

namespace zarvel {

using platform::ignoreStatus;
using platform::OpenMode;
using platform::Status;

OdContainer& getODContainer() { return port().project().odContainer(); }

void initWalk(platform::OdRecordIterator& iterator, ObjectId entity, OpenMode mode,
              bool positionAtStart) {
  // An entity that won't open leaves the iterator done, so its walk finds no
  // records, which is what every walk reports for it.
  ignoreStatus(iterator.init(entity, mode, positionAtStart));
}

bool isUserTable(std::wstring_view name) {
  static constexpr std::wstring_view kSystemPrefixes[] = {L"TPMCNTR_", L"TPMDESC_", L"TPMID_",
                                                          L"TPMLINK_", L"TPMNODE_", L"CNTR_"};
  for (std::wstring_view prefix : kSystemPrefixes) {
    if (name.substr(0, prefix.size()) == prefix) return false;
  }
  return true;
}

std::vector<std::wstring> tableNamesOfEntity(OdContainer& container, ObjectId entity) {
  std::vector<std::wstring> names;
  auto it = container.newIterator();
  initWalk(*it, entity, OpenMode::Read);
  for (it->start(); !it->isDone(); it->next()) names.push_back(it->recordTableName());
  return names;
}

std::vector<std::wstring> userTableNamesOfEntity(OdContainer& container, ObjectId entity) {
  std::vector<std::wstring> names;
  auto it = container.newIterator();
  initWalk(*it, entity, OpenMode::Read);
  for (; !it->isDone(); it->next()) {
    if (isUserTable(it->recordTableName())) names.push_back(it->recordTableName());
  }
  return names;
}

int countUserRecordsOfEntity(platform::OdRecordIterator& iterator, ObjectId entity) {
  int count = 0;
  initWalk(iterator, entity, OpenMode::Read, false);
  for (iterator.start(); !iterator.isDone(); iterator.next()) {
    if (isUserTable(iterator.recordTableName())) ++count;
  }
  return count;
}

std::vector<OdRecord> recordsOfEntity(OdContainer& container, ObjectId entity) {
  std::vector<OdRecord> records;
  auto it = container.newIterator();
  initWalk(*it, entity, OpenMode::Read);
  for (; !it->isDone(); it->next()) {
    OdRecord record;
    if (it->getRecord(record) == Status::Ok) records.push_back(std::move(record));
  }
  return records;
}

std::vector<OdValue> valuesOfEntityTable(OdContainer& container, const std::wstring& table,
                                         ObjectId entity) {
  std::vector<OdValue> values;
  auto it = container.newIterator();
  initWalk(*it, entity, OpenMode::Read);
  OdRecord record;
  for (; !it->isDone(); it->next()) {
    if (it->recordTableName() != table || it->getRecord(record) != Status::Ok) continue;
    values.insert(values.end(), record.values().begin(), record.values().end());
  }
  return values;
}

bool walkToRecordOfTable(platform::OdRecordIterator& iterator, ObjectId entity,
                         const std::wstring& table, OpenMode mode) {
  initWalk(iterator, entity, mode);
  while (!iterator.isDone() && iterator.recordTableName() != table) iterator.next();
  return !iterator.isDone();
}

bool hasRecordOfTable(OdContainer& container, ObjectId entity, const std::wstring& table) {
  auto it = container.newIterator();
  return walkToRecordOfTable(*it, entity, table, OpenMode::Read);
}

bool hasRecordOfTableCurrent(ObjectId entity, const std::wstring& table) {
  return hasRecordOfTable(getODContainer(), entity, table);
}

int removeRecordsOfTable(OdContainer& container, const std::wstring& table, ObjectId entity) {
  int count = 0;
  auto it = container.newIterator();
  initWalk(*it, entity, OpenMode::Write);
  // The step after a removal passes over the record that moved up; the callers
  // rely on exactly this walk. Each removal counts as asked for: on an iterator
  // opened for write and standing on a record it cannot fail.
  for (; !it->isDone(); it->next()) {
    if (it->recordTableName() == table) {
      ignoreStatus(it->removeRecord());
      ++count;
    }
  }
  return count;
}

namespace {

bool attachRecord(OdContainer& container, const std::wstring& table, ObjectId entity,
                  bool withDefaults) {
  std::unique_ptr<platform::OdTable> t = container.getTable(table);
  if (!t) return false;
  OdRecord record;
  if (withDefaults) t->initRecord(record);
  // The add's status is not read: an entity that takes no record is one the
  // caller's scope let through, and the attach commands count what they chose.
  ignoreStatus(t->addRecord(record, entity));
  return true;
}

}  // namespace

bool attachDefaultRecord(OdContainer& container, const std::wstring& table, ObjectId entity) {
  return attachRecord(container, table, entity, true);
}

bool attachBlankRecord(OdContainer& container, const std::wstring& table, ObjectId entity) {
  return attachRecord(container, table, entity, false);
}

void copyRecords(ObjectId target, ObjectId source, OdContainer& container, bool skipSystem) {
  auto it = container.newIterator();
  if (it->init(source, OpenMode::Read, true) != Status::Ok) return;
  OdRecord record;
  for (; !it->isDone(); it->next()) {
    if (it->getRecord(record) != Status::Ok) continue;
    std::unique_ptr<platform::OdTable> table = container.getTable(record.tableName());
    if (!table) continue;
    if (skipSystem && !isUserTable(record.tableName())) continue;
    // A target that takes no record simply ends up without it; the copy of
    // the others goes on, as the copy commands expect.
    ignoreStatus(table->addRecord(record, target));
  }
}

int removeDuplicateRecords(OdContainer& container, ObjectId entity, bool removeFirst) {
  std::vector<std::wstring> names = tableNamesOfEntity(container, entity);
  if (names.empty()) return 0;

  // Each repeated table once, spelled as its first occurrence, in the order in
  // which the repetitions are found.
  std::vector<std::wstring> repeated;
  std::vector<std::wstring> repeatedLower;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::wstring lower = toLowerCopy(names[i]);
    for (std::size_t j = i + 1; j < names.size();) {
      if (toLowerCopy(names[j]) != lower) {
        ++j;
        continue;
      }
      if (!containsText(repeatedLower, lower)) {
        repeated.push_back(names[i]);
        repeatedLower.push_back(lower);
      }
      names.erase(names.begin() + static_cast<std::ptrdiff_t>(j));
    }
  }

  for (std::size_t r = 0; r < repeated.size(); ++r) {
    std::unique_ptr<platform::OdTable> table = container.getTable(repeated[r]);
    if (!table) continue;
    auto it = table->newIterator();
    std::vector<int> positions;
    initWalk(*it, entity, OpenMode::Read);
    for (int pos = 0; !it->isDone(); it->next(), ++pos) {
      if (toLowerCopy(it->recordTableName()) == repeatedLower[r]) positions.push_back(pos);
    }
    while (positions.size() > 1) {
      const int target = removeFirst ? positions.front() : positions.back();
      if (removeFirst) {
        positions.erase(positions.begin());
        for (int& p : positions) --p;
      } else {
        positions.pop_back();
      }
      initWalk(*it, entity, OpenMode::Write);
      for (int pos = 0; !it->isDone(); it->next(), ++pos) {
        if (pos == target) {
          // Counted by table, not by record: a failed removal changes no count.
          ignoreStatus(it->removeRecord());
          break;
        }
      }
    }
  }
  return static_cast<int>(repeated.size());
}

std::vector<std::wstring> listTableNames(const std::vector<ObjectId>& entities,
                                         bool userTablesOnly) {
  OdContainer& container = getODContainer();
  std::set<std::wstring> names;
  auto gather = [&](const std::vector<ObjectId>& ids) {
    auto it = container.newIterator();
    for (ObjectId id : ids) {
      initWalk(*it, id, OpenMode::Read);
      for (it->start(); !it->isDone(); it->next()) names.insert(it->recordTableName());
    }
  };
  if (!entities.empty()) {
    gather(entities);
  } else {
    const std::vector<ObjectId> ids = availableModelSpaceEntities(kTableListWalkLimit);
    if (ids.size() > kTableListWalkLimit) {
      std::vector<std::wstring> all = port().project().tableNames(platform::kAllTableKinds);
      std::vector<std::wstring> result;
      for (auto& name : all) {
        if (!userTablesOnly || isUserTable(name)) result.push_back(std::move(name));
      }
      return result;
    }
    gather(ids);
  }
  std::vector<std::wstring> result;
  for (const auto& name : names) {
    if (!userTablesOnly || isUserTable(name)) result.push_back(name);
  }
  return result;
}

std::vector<std::wstring> allTableNames(bool userTablesOnly) {
  return listTableNames({}, userTablesOnly);
}

int removeTables(const std::vector<std::wstring>& names) {
  OdContainer& container = getODContainer();
  int removed = 0;
  for (const auto& name : names) {
    if (container.removeTable(name) == Status::Ok) ++removed;
  }
  return removed;
}

FieldPair checkFieldPair(const std::wstring& table, const std::wstring& first,
                   const std::wstring& second) {
  std::unique_ptr<platform::OdTable> t = getODContainer().getTable(table);
  if (!t) return FieldPair::NoTable;
  const platform::OdTableDef def = t->definition();
  if (def.count() == 0) return FieldPair::MissingColumn;
  // Walks every column so that, for a name given twice, the later column wins.
  int firstIndex = -1;
  int secondIndex = -1;
  for (int i = 0; i < def.count(); ++i) {
    if (def.column(i).name == first) firstIndex = i;
    if (def.column(i).name == second) secondIndex = i;
  }
  if (firstIndex < 0 || secondIndex < 0) return FieldPair::MissingColumn;
  return def.column(firstIndex).type == def.column(secondIndex).type ? FieldPair::Matching
                                                                     : FieldPair::TypesDiffer;
}

bool containsText(const std::vector<std::wstring>& names, const std::wstring& text) {
  for (const auto& name : names) {
    if (name == text) return true;
  }
  return false;
}

void copyClassification(ObjectId target, ObjectId source) {
  platform::FeatureClasses& classes = port().featureClasses();
  std::vector<std::wstring> names;
  std::vector<std::wstring> displayNames;
  classes.getAllTags(source, names, displayNames);
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (classes.classify(target, names[i]) != platform::kClassifyOk) {
      printMessage(kMsgUnableToLoadFeatureClass,
                   i < displayNames.size() ? displayNames[i] : names[i]);
      return;
    }
  }
}

}  // namespace zarvel
