// Object Data of the database: table definitions and the records that
// entities carry in their extension dictionaries.
#include <algorithm>

#include "host/db/Database.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::OdType;
using platform::OdValue;

// A value in the type of a column. Numbers convert into each other and to and
// from text; what has no sensible conversion takes the column's default.
OdValue coerce(const OdValue& value, const platform::OdColumnDef& column) {
  if (value.type() == column.type) return value;
  switch (column.type) {
    case OdType::Integer:
      if (value.type() == OdType::Real) return OdValue(value.asInt());
      if (value.type() == OdType::Character) return OdValue(platform::wtoi(value.asText()));
      break;
    case OdType::Real:
      if (value.type() == OdType::Integer) return OdValue(value.asReal());
      if (value.type() == OdType::Character) return OdValue(platform::wtof(value.asText()));
      break;
    case OdType::Character:
      if (value.type() != OdType::Unknown) return OdValue(platform::valueText(value));
      break;
    case OdType::Point:
      if (value.type() == OdType::Character) {
        platform::Point3d p;
        if (platform::scanPoint(value.asText(), p) == 3) return OdValue(p);
      }
      break;
    case OdType::Unknown:
      break;
  }
  return column.defaultValue;
}

}  // namespace

bool Database::conformsTo(const platform::OdTableDef& definition,
                          const std::vector<OdValue>& values) {
  if (values.size() != static_cast<std::size_t>(definition.count())) return false;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i].type() != definition.columns[i].type) return false;
  }
  return true;
}

std::vector<OdValue> Database::conformValues(const platform::OdTableDef& definition,
                                             std::vector<OdValue> values) {
  const auto columns = static_cast<std::size_t>(definition.count());
  values.resize(std::min(values.size(), columns));
  for (std::size_t i = 0; i < values.size(); ++i) {
    // A value of its column's type stays as it is, uncopied.
    if (values[i].type() != definition.columns[i].type) {
      values[i] = coerce(values[i], definition.columns[i]);
    }
  }
  for (std::size_t i = values.size(); i < columns; ++i) {
    values.push_back(definition.columns[i].defaultValue);
  }
  return values;
}

std::vector<ObjectId> Database::odTableIds() const {
  std::vector<ObjectId> ids;
  for (ObjectId id : odTableIds_) {
    const OdTableObject* t = odTable(id);
    if (t != nullptr && !t->erased) ids.push_back(id);
  }
  return ids;
}

const OdTableObject* Database::odTableAt(std::uint32_t index) const {
  return index < odTableIds_.size() ? odTable(odTableIds_[index]) : nullptr;
}

ObjectId Database::findOdTable(const std::wstring& name) const {
  ObjectId folded;
  for (ObjectId id : odTableIds()) {
    const std::wstring& n = odTable(id)->name;
    if (n == name) return id;
    if (folded.isNull() && platform::equalsIgnoreCase(n, name)) folded = id;
  }
  return folded;
}

ObjectId Database::createOdTable(const std::wstring& name,
                                 const platform::OdTableDef& definition) {
  for (ObjectId id : odTableIds()) {
    if (odTable(id)->name == name) return {};
  }
  auto table = std::make_unique<OdTableObject>();
  table->name = name;
  table->definition = definition;
  for (auto& column : table->definition.columns) {
    column.defaultValue = coerce(column.defaultValue, platform::OdColumnDef{
                                                         column.name, column.type, {},
                                                         OdValue::zeroOf(column.type)});
  }
  table->index = static_cast<std::uint32_t>(odTableIds_.size());
  const ObjectId id = addObject(std::move(table));
  odTableIds_.push_back(id);
  bumpOdGeneration();
  return id;
}

std::vector<ObjectId> Database::dictionariesWithRecordsOf(std::uint32_t index) const {
  std::vector<ObjectId> found;
  for (std::uint64_t i = 1; i <= idCount(); ++i) {
    const auto* dict = get<ExtDictionary>(ObjectId(i));
    if (dict == nullptr) continue;
    for (auto p = dict->od.begin(); p < dict->od.end(); p = dict->od.next(p)) {
      if (dict->od.tableAt(p) == index) {
        found.push_back(ObjectId(i));
        break;
      }
    }
  }
  return found;
}

bool Database::removeOdTable(ObjectId table) {
  const OdTableObject* t = odTable(table);
  if (t == nullptr || t->erased) return false;
  const std::uint32_t index = t->index;
  for (ObjectId id : dictionariesWithRecordsOf(index)) {
    OdRecordList& od = modify<ExtDictionary>(id)->od;
    for (auto p = od.begin(); p < od.end();) {
      if (od.tableAt(p) == index) {
        od.remove(p);
      } else {
        p = od.next(p);
      }
    }
  }
  modify<OdTableObject>(table)->erased = true;
  bumpOdGeneration();
  return true;
}

bool Database::renameOdTable(ObjectId table, const std::wstring& newName) {
  const OdTableObject* t = odTable(table);
  if (t == nullptr || t->erased || newName.empty()) return false;
  for (ObjectId id : odTableIds()) {
    if (odTable(id)->name == newName) return false;
  }
  // Records name their table in the file: theirs are written anew.
  for (ObjectId id : dictionariesWithRecordsOf(t->index)) modify<ExtDictionary>(id);
  modify<OdTableObject>(table)->name = newName;
  bumpOdGeneration();
  return true;
}

bool Database::updateOdTableDefinition(ObjectId table, const platform::OdTableDef& definition) {
  const OdTableObject* t = odTable(table);
  if (t == nullptr || t->erased) return false;
  const platform::OdTableDef old = t->definition;
  const std::uint32_t index = t->index;
  std::vector<OdValue> values;
  for (std::uint64_t i = 1; i <= idCount(); ++i) {
    const auto* dict = get<ExtDictionary>(ObjectId(i));
    if (dict == nullptr || dict->od.empty()) continue;
    OdRecordList* od = nullptr;
    for (auto p = dict->od.begin(); p < dict->od.end();) {
      if (dict->od.tableAt(p) != index) {
        p = dict->od.next(p);
        continue;
      }
      if (od == nullptr) {
        od = &modify<ExtDictionary>(ObjectId(i))->od;
        dict = get<ExtDictionary>(ObjectId(i));
      }
      od->valuesAt(p, values);
      std::vector<OdValue> mapped;
      for (const auto& column : definition.columns) {
        const int from = old.columnIndex(column.name);
        mapped.push_back(from >= 0 && from < static_cast<int>(values.size())
                             ? coerce(values[from], column)
                             : column.defaultValue);
      }
      od->replace(p, index, mapped);
      p = od->next(p);
    }
  }
  modify<OdTableObject>(table)->definition = definition;
  bumpOdGeneration();
  return true;
}

const OdRecordList* Database::odRecords(ObjectId entityId) const {
  const Entity* e = get<Entity>(entityId);
  if (e == nullptr || e->xdict.isNull()) return nullptr;
  const auto* dict = get<ExtDictionary>(e->xdict);
  return dict != nullptr && !dict->od.empty() ? &dict->od : nullptr;
}

ExtDictionary* Database::modifyExtDictionary(ObjectId entityId) {
  const Entity* e = get<Entity>(entityId);
  if (e == nullptr) return nullptr;
  if (e->xdict.isNull()) {
    auto dict = std::make_unique<ExtDictionary>();
    dict->owner = entityId;
    const ObjectId dictId = addObject(std::move(dict));
    modify<Entity>(entityId)->xdict = dictId;
  }
  return modify<ExtDictionary>(get<Entity>(entityId)->xdict);
}

OdRecordList* Database::modifyOdRecords(ObjectId entityId) {
  ExtDictionary* dict = modifyExtDictionary(entityId);
  if (dict == nullptr) return nullptr;
  bumpOdGeneration();
  if (dict->odHandle == 0) dict->odHandle = handleSeed_++;
  return &dict->od;
}

}  // namespace host
