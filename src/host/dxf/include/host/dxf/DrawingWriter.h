// Writing a database back into the file it was read from (or the template a
// new drawing began as): what nobody changed goes out as it came in.
#pragma once

#include <stdexcept>
#include <string>

#include "host/db/Database.h"
#include "host/dxf/DrawingReader.h"

namespace host::dxf {

// A database the file cannot be written from (an entity in a block that is gone, a record of a
// table that is gone): the message names the entity by its kind and handle.
class InconsistentDrawing : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The text of the drawing file. May give handles to objects the file needs
// and the drawing lacks (the dictionary of Object Data tables), so the
// database changes, though not in anything undo would see. Throws InconsistentDrawing, before
// changing anything, when the database breaks what the file relies on.
std::string writeDrawing(Database& db, FileImage& image, const ProgressFunction& progress = {});

}  // namespace host::dxf
