// The text of the empty drawing that a new session starts from: an empty
// drawing of the 2018 format with the tables, blocks and objects every drawing
// file carries, kept as data/new_drawing.dxf and built into the library.
#pragma once

#include <string>

namespace host::dxf {

const std::string& newDrawingText();

}  // namespace host::dxf
