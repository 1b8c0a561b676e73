// What the readers need of an object's tags before they know what to make of
// it: its handle, owner and dictionary entries, and where an XRECORD's data
// groups begin.
#pragma once

#include <string_view>
#include <vector>

#include "TagReader.h"
#include "host/db/Database.h"

namespace host::dxf {

// What the reader needs of an object's tags: its handle, its owner (the 330
// outside the reactor groups) and, for a dictionary, its entries.
struct ObjectHead {
  Handle handle = 0;
  Handle owner = 0;
  // Entries of a dictionary: name as in the file, the handle, its group code.
  struct Entry {
    std::string_view name;
    Handle handle;
    int code;
  };
  std::vector<Entry> entries;
};

void scanObject(const std::vector<Tag>& body, bool dictionary, ObjectHead& head);

// Where the data groups of an XRECORD begin: after its subclass marker and
// the cloning flag that may open them.
std::size_t xrecordDataStart(const std::vector<Tag>& body);

}  // namespace host::dxf
