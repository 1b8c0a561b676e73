// The spline through given points, as a user draws one by its fit points.
#pragma once

#include <vector>

#include "host/db/Entities.h"

namespace host::geometry {

// A clamped B-spline of degree 3 (less for fewer points) passing through the
// points, parameterised by chord length, with its fit points kept. At least
// two distinct points are needed; the result is empty otherwise.
SplineEntity splineThrough(const std::vector<platform::Point3d>& points);

}  // namespace host::geometry
