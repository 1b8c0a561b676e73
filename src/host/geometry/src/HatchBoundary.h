// The boundary paths of a hatch as the drawing entities they trace, in the
// world.
#pragma once

#include <memory>
#include <vector>

#include "host/db/KeptText.h"

namespace host::geometry {

// Places the edges that the hatch's text gives in its plane into the world:
// polyline paths stay lightweight polylines and arcs stay arcs in the hatch's
// plane; lines, elliptic arcs and splines move into world coordinates.
std::vector<std::unique_ptr<Entity>> hatchBoundary(HatchPaths paths);

}  // namespace host::geometry
