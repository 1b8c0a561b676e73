// The text of the empty drawing that a new session starts from.
#pragma once

#include <string>

namespace host::dxf {

const std::string& newDrawingText();

}  // namespace host::dxf
