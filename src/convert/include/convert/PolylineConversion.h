// ZARVEL_2POLY and ZARVEL_23DPOLY: curves replaced by polylines in model
// space that keep their properties, feature classes and Object Data.
#pragma once

#include "platform/ObjectId.h"

namespace zarvel {

using platform::ObjectId;

// The new polyline in model space, its source still standing; null when the
// entity won't open, is of no class that converts, or its curve gave nothing.
// A lightweight polyline runs against its source; a precision below 1 takes
// the approximated classes (arcs, circles, ellipses, splines) out of the 3D one.
ObjectId convertTo2dPolyline(ObjectId entity, int precision);
ObjectId convertTo3dPolyline(ObjectId entity, int precision);

void command2Poly();
void command23DPoly();

}  // namespace zarvel
