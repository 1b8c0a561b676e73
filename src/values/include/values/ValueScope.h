// The scope that the value dialogs share: which tables they offer for the
// entities given, and which entities the run then works on.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectId.h"

namespace zarvel {

// The tables of the entities' records, each once and in code-unit order; for
// no entities, the tables in use in the drawing.
std::vector<std::wstring> tablesForValueDialog(const std::vector<platform::ObjectId>& ids,
                                               bool userTablesOnly);

// After the dialog: no entities asks for a selection, and an empty one takes
// all of model space; then what can't be changed is dropped. False when the
// user cancelled or nothing is left.
bool completeValueScope(std::vector<platform::ObjectId>& ids);

}  // namespace zarvel
