// Reading only the Object Data table definitions of a drawing file, for a
// drawing that lends its tables without being opened.
#pragma once

#include <string_view>
#include <vector>

#include "host/db/SourceTables.h"

namespace host::dxf {

// The definitions of the drawing's tables, in the file's order, read without
// building any entity, block or object. Throws ParseError, with the line, for
// a malformed file, as readDrawing would for the same faults.
std::vector<NamedTableDefinition> readTableDefinitions(std::string_view text);

}  // namespace host::dxf
