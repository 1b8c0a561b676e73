// Curves of the drawing: lines, arcs, circles, ellipses, lightweight, 2D and
// 3D polylines, splines and mlines, in world coordinates. Parameters follow
// each kind's natural measure: a line's runs from 0 to its length, an arc's,
// circle's and ellipse's over its angle in radians, a polyline's from 0 to its
// number of segments (vertex i at parameter i), a spline's over its knots.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "host/db/Entities.h"
#include "platform/Geometry.h"

namespace host::geometry {

using platform::Point3d;

bool isCurve(const Entity& entity);

// The kinds that are curves, for the switches over curves alone: a new kind of
// entity reaches curveKindOf, the one switch over every kind here, and a new
// curve kind reaches every switch over curves.
enum class CurveKind { Line, Arc, Circle, Ellipse, LwPolyline, Polyline2d, Polyline3d, Spline, Mline };
// Nothing for a kind that is no curve.
std::optional<CurveKind> curveKindOf(EntityKind kind);

// The range of the parameter; nothing for what is no curve.
struct ParamRange {
  double start = 0.0;
  double end = 0.0;
};
std::optional<ParamRange> paramRange(const Entity& curve);
std::optional<Point3d> pointAtParam(const Entity& curve, double param);
std::optional<Point3d> startPoint(const Entity& curve);
std::optional<Point3d> endPoint(const Entity& curve);
// A closed curve's start and end meet (circles, full ellipses, closed
// polylines and splines, closed mlines).
bool isClosed(const Entity& curve);
std::optional<double> curveLength(const Entity& curve);
// The parameter of the curve's point nearest to the given one, and that point.
struct Nearest {
  double param = 0.0;
  Point3d point;
  double distance = 0.0;
};
std::optional<Nearest> nearestPoint(const Entity& curve, const Point3d& to);
// The same seen from above: the point of the curve nearest to the given one
// along the view direction (Z), as a point picked in a plan view meets the
// curve; the distance is measured in the XY plane.
std::optional<Nearest> nearestPointInPlan(const Entity& curve, const Point3d& to);

// One segment of a lightweight polyline: a line, or the arc its bulge makes.
struct BulgeSegment {
  Point3d start;
  Point3d end;
  double bulge = 0.0;
  // For an arc: centre (world), radius, start angle and signed sweep (radians)
  // in the polyline's plane.
  Point3d center;
  double radius = 0.0;
  double startAngle = 0.0;
  double sweep = 0.0;
  bool isArc() const { return bulge != 0.0; }
};
int numVerts(const LwPolylineEntity& polyline);
// Vertex i in world coordinates (elevation and plane applied).
Point3d getPointAt(const LwPolylineEntity& polyline, int index);
std::vector<BulgeSegment> segments(const LwPolylineEntity& polyline);
// The lines and arcs the polyline is made of, each with the polyline's
// layer and properties, in order; an empty vector for one without segments.
std::vector<std::unique_ptr<Entity>> explode(const LwPolylineEntity& polyline);
// The area enclosed; an open polyline is closed by the chord from its last
// vertex to its first. Bulges add or take away their circular segments.
double area(const LwPolylineEntity& polyline);

// Vertices in world coordinates, for old-style polylines and mlines.
std::vector<Point3d> vertexPositions(const Entity& polylineOrMline);

}  // namespace host::geometry
