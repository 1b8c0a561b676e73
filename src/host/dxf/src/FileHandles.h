// The handles a drawing file gives its objects. The database finds objects by
// handle, so every object needs one, and no two the same one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/Objects.h"

namespace host::dxf {

class FileHandles {
 public:
  // The handle of an object; 0, for none, is let be.
  void add(Handle handle) {
    if (handle != 0) seen_.push_back(handle);
  }
  // The same for an object that must have a handle (an entity, an object of
  // the OBJECTS section), which begins on the line: none or 0 is refused at
  // once with a ParseError.
  void addRequired(Handle handle, std::size_t line, const std::string& what);
  // Throws a ParseError for a handle given twice in the file's text, on the
  // line of the second that comes first in the file.
  void checkUnique(std::string_view text);

 private:
  std::vector<Handle> seen_;
};

}  // namespace host::dxf
