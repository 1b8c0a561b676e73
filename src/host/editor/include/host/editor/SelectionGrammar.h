// What one answer at "Select objects: " asks for, as items the caller
// resolves against its drawing.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace host {

enum class SelectionKind {
  All,       // ALL
  ByHandle,  // #1F
  Last,      // L, LAST: the last entity created
  Previous,  // P, PREVIOUS: the previous selection set
  Window,    // W, WINDOW x1,y1 x2,y2: entities inside the box
  Crossing,  // C, CROSSING x1,y1 x2,y2: entities inside or crossing the box
  Pick,      // x,y or x,y,z: the entity at that point
};

struct SelectionItem {
  SelectionKind kind = SelectionKind::All;
  // False once R (REMOVE) switched the rest of the line to removing, until A
  // (ADD) switches back.
  bool add = true;
  std::uint64_t handle = 0;  // Handle
  platform::Point3d first;   // Pick; Window and Crossing: the first corner
  platform::Point3d second;  // Window and Crossing: the opposite corner
};

struct SelectionParse {
  std::vector<SelectionItem> items;
  // Empty when the whole line parsed; otherwise names the offending word, and
  // items is empty, because a half-understood line should select nothing.
  std::wstring error;
  bool ok() const { return error.empty(); }
};

// Items are separated by blanks; keywords are case-insensitive. Blanks next to
// the commas of a point are allowed ("W 0, 0 10 ,10"). R and A must be
// followed by an item: alone they would do nothing the user could see.
SelectionParse parseSelection(std::wstring_view line);

}  // namespace host
