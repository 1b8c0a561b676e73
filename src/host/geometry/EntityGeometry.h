// The geometric questions the command line asks of entities: extents, the
// distance to a picked point, and whether an entity crosses a window.
#pragma once

#include "db/Entities.h"
#include "platform/Geometry.h"

namespace host {

// Geometric extents in 3D. Text uses a simple font model: each character is
// 0.6 times the height wide, the box rotated with the text.
platform::Extents entityExtents(const Entity& entity);

// Distance in the XY plane from the point to the entity's geometry.
double distanceXY(const Entity& entity, const Point3d& point);

// Whether any part of the entity lies inside the box (in XY), as a crossing
// window selects.
bool touchesBoxXY(const Entity& entity, const Point3d& corner1, const Point3d& corner2);

}  // namespace host
