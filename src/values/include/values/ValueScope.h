// The scope that the value operations share: which tables their dialogs offer
// for the entities given, which entities a run then works on, and the one
// record of a table on each entity that the geometric fills change.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectData.h"
#include "platform/ObjectId.h"

namespace zarvel {

// --- Counters, replace and additions ------------------------------------------

// The tables of the entities' records, each once and in code-unit order; for
// no entities, the tables in use in the drawing.
std::vector<std::wstring> tablesForValueDialog(const std::vector<platform::ObjectId>& ids,
                                               bool userTablesOnly);

// After the dialog: no entities asks for a selection, and an empty one takes
// all of model space; then what can't be changed is dropped. False when the
// user cancelled or nothing is left.
bool completeValueScope(std::vector<platform::ObjectId>& ids);

// --- Fills from geometry and text, which test no layer ------------------------

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
