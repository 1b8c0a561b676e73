// Objects kept as text name other objects by handle: a group its members, an
// image definition the reactors of its images. An erased object is not
// written, so neither is what names it there.
#pragma once

#include <functional>
#include <string_view>

#include "TagWriter.h"
#include "host/db/Objects.h"

namespace host::dxf {

// Writes the text of an object of the DXF name without its reactors and group
// members that `gone` says are gone, the rest as it was; false, with nothing
// written, when it names none of those.
bool writeWithoutGone(std::string_view text, std::string_view dxfName,
                      const std::function<bool(Handle)>& gone, TagWriter& out);

}  // namespace host::dxf
