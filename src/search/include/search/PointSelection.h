// Selection at a point: the entities whose extents hold a picked point, and
// what crosses them or, for closed boundaries, lies within them.
#pragma once

#include <vector>

#include "platform/Geometry.h"
#include "platform/ObjectId.h"

namespace zarvel {

// Points in the XY plane; Z plays no part in a selection at a point.
using PointList = std::vector<platform::Point2d>;

// Every entity of model space, whatever its layer, whose box overlaps that of
// an entity holding the point and that crosses it or, when the holder is a
// closed boundary, lies within it; the holders themselves come last. An id may
// stand more than once.
std::vector<platform::ObjectId> entitiesAtPoint(const platform::Point3d& point);

// Overlap in X and in Y, touching included; Z is ignored.
bool boxesOverlap(const platform::Extents& a, const platform::Extents& b);

// A polyline, 3D polyline, spline or multiline that is closed, by its own
// property or by ends within the tolerance of each other in the plane. No
// other kind is a closed boundary here, not even a circle.
bool isClosedCurve(platform::ObjectId entity, double tolerance);

// The points that define a line, polyline, 3D polyline, multiline or spline
// (its control points), in the plane; nothing for other kinds.
PointList entityVertices2d(platform::ObjectId entity);

// Whether the segment from the point to the outside point crosses the edges
// between consecutive points of the list an odd number of times. An edge
// through the point itself does not count, and no edge runs from the last
// point back to the first.
bool pointInPolygon(const platform::Point2d& point, const PointList& polygon,
                    const platform::Point2d& outside);

// A point beyond the boundary's points to test pointInPolygon against.
platform::Point2d outsidePoint(const PointList& boundary);

void commandPsel();

}  // namespace zarvel
