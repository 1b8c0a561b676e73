// The points of an entity as the value operations read them: the vertex list
// of a curve, a curve sampled into points, the middle of a path, and the one
// point that stands for an entity in plan and height.
#pragma once

#include <cmath>
#include <vector>

#include "platform/Geometry.h"
#include "platform/ObjectId.h"

namespace zarvel {

using PointList3d = std::vector<platform::Point3d>;

// The distance between two points in space; inline, as the matching of texts
// asks it in its inner loop.
inline double distance3d(const platform::Point3d& a, const platform::Point3d& b) {
  return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                   (a.z - b.z) * (a.z - b.z));
}

// The point of an entity that could not be determined: the largest finite
// double in all three coordinates.
platform::Point3d undeterminedPoint();

// By the entity's exact class: a 3D polyline's, multiline's or lightweight
// polyline's vertices, a line's two ends, a spline's control points; nothing
// for other classes (old-style 2D polylines among them). A lightweight
// polyline with bulges gives the points of its pieces, each arc sampled, the
// joints twice. A closed polyline (lightweight or 3D) whose last point stands
// further than 0.1 to the power LUPREC from its first gets the first again.
PointList3d vertexList(platform::ObjectId entity);

// As vertexList, but a spline is sampled as the polyline it becomes at the
// precision, and an arc or circle as its spline; any class vertexList does
// not list gives nothing.
PointList3d curvePoints(platform::ObjectId curve, int precision);

// The point halfway along the path through the points; their mean for two,
// undeterminedPoint() for fewer.
platform::Point3d pathMidpoint(const PointList3d& points);

// The indices the dialog's combo boxes give for the plan point and height.
enum class PlanMode : int { First = 0, Last = 1, Center = 2 };
enum class HeightMode : int { Min = 0, Max = 1, Average = 2 };

// The point that stands for an entity: a block reference's or text's
// position; for a line, polyline, 3D polyline or multiline the plan point of
// its vertex list (first, last, or its middle: the mean of the vertices of a
// closed polyline, else the middle of the path) with the height of its box;
// for any other class, the corners of its box. undeterminedPoint() when the
// entity won't open or has no box.
platform::Point3d coordinatePoint(platform::ObjectId entity, PlanMode planMode,
                                  HeightMode heightMode);

}  // namespace zarvel
