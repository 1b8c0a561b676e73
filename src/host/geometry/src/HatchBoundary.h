// The boundary paths of a hatch, read from the hatch's source text, as the
// drawing entities they trace.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "host/db/Entities.h"

namespace host::geometry {

// Polyline paths become lightweight polylines in the hatch's plane; edges
// become lines, arcs, ellipses and splines. The paths read before anything the
// text does not hold as expected are returned; empty for text without paths.
std::vector<std::unique_ptr<Entity>> hatchBoundary(std::string_view hatchSource);

}  // namespace host::geometry
