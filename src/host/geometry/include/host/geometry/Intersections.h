// Where two entities meet, in the XY plane, as they are (neither extended).
// Curves meet as curves; texts and block references take part by the outline
// of their extents.
#pragma once

#include <vector>

#include "host/db/Database.h"
#include "platform/Geometry.h"

namespace host::geometry {

// The points where the two meet, each once (points closer than the tolerance
// count as one); a tangent contact counts as one point.
std::vector<platform::Point3d> intersectXY(const Database& db, const Entity& a, const Entity& b,
                                           double tolerance = 1e-9);

}  // namespace host::geometry
