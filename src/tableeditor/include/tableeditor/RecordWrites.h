// Reading and writing the records of one table on one entity, as the table
// editor finds them again by their rows' keys.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectData.h"
#include "platform/ObjectId.h"
#include "platform/OdValue.h"
#include "tableeditor/EditorRow.h"

namespace zarvel {

// The entity's records of the table, each as its values in column order;
// none when the table is unknown.
std::vector<std::vector<platform::OdValue>> recordsOfEntityTable(platform::OdContainer& container,
                                                                 const std::wstring& tableName,
                                                                 platform::ObjectId id);

// Typed text into the value by its present kind, which no text changes: an
// integer by _wtoi, a real by _wtof, a character as it stands, a point from
// "x,y,z" where y is all between the first and the last comma. A point with
// fewer than two commas, and any other kind, stay as they are.
void cellTextToValue(platform::OdValue& value, const std::wstring& text);

// Sets one field of the first record of the table on the entity that the key
// matches; nothing when the table is gone, the key is empty or none matches.
void writeField(platform::OdContainer& container, platform::ObjectId id,
                const std::wstring& tableName, int column, const platform::OdValue& value,
                const RowKey& key);

// Overwrites the whole first record of the table (named exactly) on the
// entity; 0 when it has none or its count of values differs.
int writeRecord(platform::OdContainer& container, platform::ObjectId id,
                const std::wstring& tableName, const std::vector<platform::OdValue>& values);

// Sets one field on every record of the table on the entity.
void setFieldOnAllRecords(platform::ObjectId id, platform::OdTable& table, int column,
                          const platform::OdValue& value);

// Removes, on each entity, the first record of the table that the key matches.
void removeMatchingRecords(const std::wstring& tableName,
                           const std::vector<platform::ObjectId>& ids, const RowKey& key);

}  // namespace zarvel
