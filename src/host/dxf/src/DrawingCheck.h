// What the writer relies on in a database, checked before a save begins, so that a database
// broken by a fault elsewhere is refused whole instead of crashing the writer or losing entities.
#pragma once

#include <optional>
#include <string>

#include "host/db/Database.h"

namespace host::dxf {

// The first thing that would make the file wrong, naming the entity by its kind and handle;
// nothing when the database can be written.
std::optional<std::string> findInconsistency(const Database& db);

}  // namespace host::dxf
