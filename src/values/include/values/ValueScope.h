// What the value operations that fill fields from geometry share: the tables
// their dialogs offer, the entities they work on, and the one record of the
// table on each entity that they change.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectData.h"
#include "platform/ObjectId.h"

namespace zarvel {

// The user tables in use on the entities, or, for none, on the visible
// pick-first set, or for none either on the drawing; a dialog offers only
// these when there are any.
std::vector<std::wstring> tablesInUse(const std::vector<platform::ObjectId>& ids);

// The project's user tables that stand in the limit; all of them when the
// limit is empty.
std::vector<std::wstring> offeredTables(const std::vector<std::wstring>& limit);

// Fills an empty list: the pick-first set, else what the user selects; Enter
// with nothing selected takes every entity of model space, whatever its layer
// and whether or not it opens; Esc leaves the list empty.
void selectWhenEmpty(std::vector<platform::ObjectId>& ids);

// Takes the entities that won't open out of the list, keeping the order.
void eraseUnopenable(std::vector<platform::ObjectId>& ids);

// Initialises the iterator for write on the entity and moves it to the
// entity's first record of the table, named exactly, which it reads into
// record. False when the entity has none.
bool firstRecordOfTable(platform::OdRecordIterator& iterator, platform::ObjectId entity,
                        const std::wstring& table, platform::OdRecord& record);

}  // namespace zarvel
