// Moving entities: a displacement in world coordinates applied to whatever an
// entity keeps of its geometry.
#pragma once

#include "host/db/Entities.h"
#include "platform/Geometry.h"

namespace host::geometry {

// Moves the entity by the displacement. False for kinds whose geometry the
// host keeps only as file text (solids, regions, hatches, unknown kinds); those
// are left as they are. A block reference's attributes are entities of their
// own and move separately.
bool translate(Entity& entity, const platform::Point3d& delta);

}  // namespace host::geometry
