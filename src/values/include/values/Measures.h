// The length, area and volume of an entity as the properties command writes
// them: each by the entity's exact class, 0 where the class has none.
#pragma once

#include "platform/ObjectId.h"
#include "values/VertexLists.h"

namespace zarvel {

struct Measures {
  double length = 0.0;
  double area = 0.0;
  double volume = 0.0;
};

// A line's 3D length; a polyline's chords (a bulge counts as its chord) and
// its true area, open or closed; a 3D polyline's or multiline's 3D length
// along its vertex list and, when its ends meet, the area of its plan; a 3D
// solid's volume. Nothing for other classes, arcs, circles and splines among
// them.
Measures measuresOf(platform::ObjectId entity);

}  // namespace zarvel
