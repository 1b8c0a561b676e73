// What the two polyline conversions share: the curves they build on, the
// approximation of a curve through its spline, and their common ending.
#pragma once

#include <vector>

#include "platform/Geometry.h"
#include "platform/Geometry3d.h"
#include "platform/ObjectId.h"

namespace zarvel {

using platform::ObjectId;
using platform::Point3d;

platform::EntityGeometry& geometry();

// A polyline on its way: a curve of the module's own until the ending
// appends it, or an entity that a conversion had to append at once.
struct Built {
  ObjectId id;
  bool inModelSpace = false;
  bool empty() const { return id.isNull(); }
};

// The polyline a curve's spline becomes at the precision, the spline released
// again; null when there is none.
ObjectId approximate(ObjectId curve, int precision);

// What toPolyline gave for a spline of the drawing, made an entity of model
// space at once, as a polyline's vertices are walked only once it stands in
// the drawing; null, the curve released, when it can't be.
ObjectId appendAtOnce(ObjectId curve);

// The curve's vertices, and the curve gone: released when it is the module's,
// erased when it stands in model space.
std::vector<Point3d> takeVertices(ObjectId curve, bool inModelSpace);

// Sets the flag of a polyline the module built or appended itself, which
// takes it.
void setClosed(ObjectId polyline, bool closed);

// Gives the built polyline a place in model space, the source's properties,
// feature classes and records, system tables' too; the new entity's id, or
// null, the curve released, when it can't be appended.
ObjectId finishConversion(const Built& built, ObjectId source);

}  // namespace zarvel
