// The geometric questions the command line asks of entities when the user
// selects: how far an entity lies from a picked point, and whether it
// touches a crossing window.
#pragma once

#include "host/db/Database.h"
#include "platform/Geometry.h"

namespace host {

// Distance in the XY plane from the point to the entity: to the curve for
// curves, to the point for points, to the box of its extents for the rest.
double distanceXY(const Database& db, const Entity& entity, const Point3d& point);

// Whether any part of the entity lies inside the box (in XY), as a crossing
// window selects.
bool touchesBoxXY(const Database& db, const Entity& entity, const Point3d& corner1,
                  const Point3d& corner2);

}  // namespace host
