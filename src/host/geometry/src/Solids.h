// Volumes of 3D solids, read from the ACIS text the drawing file keeps.
#pragma once

#include <optional>
#include <string_view>

namespace host::geometry {

// The volume of the body described by the solid's source text, for bodies
// whose faces are all planar; nothing for any other body or for data that is
// not the ACIS text this host reads.
std::optional<double> solidVolume(std::string_view satText);

}  // namespace host::geometry
