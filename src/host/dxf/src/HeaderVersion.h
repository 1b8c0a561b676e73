// The drawing versions this host reads, shared by the readers of whole
// drawings and of their table definitions alone.
#pragma once

#include <cstddef>
#include <string>

namespace host::dxf {

// The version a header's $ACADVER gives (empty when the header has none, which
// means an old file). Throws ParseError, at the variable's line or else the
// header's, for a version this host does not read.
std::string supportedVersion(const std::string& acadVersion, std::size_t versionLine,
                             std::size_t headerLine);

}  // namespace host::dxf
