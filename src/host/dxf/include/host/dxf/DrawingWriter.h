// Writing a database back into the file it was read from (or the template a
// new drawing began as): what nobody changed goes out as it came in.
#pragma once

#include <string>

#include "host/db/Database.h"
#include "host/dxf/DrawingReader.h"

namespace host::dxf {

// The text of the drawing file. May give handles to objects the file needs
// and the drawing lacks (the dictionary of Object Data tables), so the
// database changes, though not in anything undo would see.
std::string writeDrawing(Database& db, FileImage& image, const ProgressFunction& progress = {});

}  // namespace host::dxf
