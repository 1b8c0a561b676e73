// Access to Object Data tables and records through the port, and the record
// helpers every command calls. Nothing here caches: each call reads afresh.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ObjectData.h"
#include "platform/ObjectId.h"

namespace zarvel {

using platform::ObjectId;
using platform::OdContainer;
using platform::OdRecord;
using platform::OdValue;

// The container of the current document's project.
OdContainer& getODContainer();

// Initialises an iterator for a walk of the entity's records. A walk needs no
// status: an entity that won't open leaves the iterator done.
void initWalk(platform::OdRecordIterator& iterator, ObjectId entity, platform::OpenMode mode,
              bool positionAtStart = true);

// Initialises the iterator on the entity and moves it to the entity's first
// record of the table, named exactly. False, the iterator done, when the
// entity has none.
bool walkToRecordOfTable(platform::OdRecordIterator& iterator, ObjectId entity,
                         const std::wstring& table, platform::OpenMode mode);

// False for the tables of the topology feature, whose names begin with one of
// "TPMCNTR_", "TPMDESC_", "TPMID_", "TPMLINK_", "TPMNODE_" or "CNTR_"
// (case-sensitive, at the start only).
bool isUserTable(std::wstring_view name);

// One name per record, in iterator order.
std::vector<std::wstring> tableNamesOfEntity(OdContainer& container, ObjectId entity);
std::vector<std::wstring> userTableNamesOfEntity(OdContainer& container, ObjectId entity);
// Number of the entity's records of user tables, without building the names.
int countUserRecordsOfEntity(platform::OdRecordIterator& iterator, ObjectId entity);
std::vector<OdRecord> recordsOfEntity(OdContainer& container, ObjectId entity);
// Every value of every record of the table, flattened in record and column order.
std::vector<OdValue> valuesOfEntityTable(OdContainer& container, const std::wstring& table,
                                         ObjectId entity);
bool hasRecordOfTable(OdContainer& container, ObjectId entity, const std::wstring& table);
bool hasRecordOfTableCurrent(ObjectId entity, const std::wstring& table);
int removeRecordsOfTable(OdContainer& container, const std::wstring& table, ObjectId entity);
bool attachDefaultRecord(OdContainer& container, const std::wstring& table, ObjectId entity);
bool attachBlankRecord(OdContainer& container, const std::wstring& table, ObjectId entity);
// Appends copies of the source's records to the target; with skipSystem the
// records of topology tables stay behind.
void copyRecords(ObjectId target, ObjectId source, OdContainer& container, bool skipSystem);
// Leaves one record of each table that stands more than once on the entity
// (names compared in lower case). removeFirst removes from the front, keeping
// the last record; otherwise from the back, keeping the first. Returns the
// number of repeated tables.
int removeDuplicateRecords(OdContainer& container, ObjectId entity, bool removeFirst);

// Tables in use on the entities (or, for none, on model space), sorted.
std::vector<std::wstring> listTableNames(const std::vector<ObjectId>& entities,
                                         bool userTablesOnly);
std::vector<std::wstring> allTableNames(bool userTablesOnly);
int removeTables(const std::vector<std::wstring>& names);
// What checkFieldPair finds, with the codes the dialogs test.
enum class FieldPair : int {
  Matching = 0,       // both columns exist and have one type
  NoTable = 1,        // no such table
  MissingColumn = 2,  // a column is missing, or the table has none
  TypesDiffer = 3,
};
FieldPair checkFieldPair(const std::wstring& table, const std::wstring& first,
                   const std::wstring& second);
bool containsText(const std::vector<std::wstring>& names, const std::wstring& text);
// Puts the target in every feature class of the source, in order; stops with
// an error line at the first class that can't be given.
void copyClassification(ObjectId target, ObjectId source);

// Above this many entities in model space a table list is not gathered by
// walking them; the project's whole list is taken instead.
inline constexpr std::size_t kTableListWalkLimit = 32768;

}  // namespace zarvel
