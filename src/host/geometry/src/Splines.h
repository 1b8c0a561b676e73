// Splines: evaluation of the (rational) B-spline, the spline that is the
// exact copy of an arc, a circle or an ellipse, and the polyline a spline
// becomes at a precision.
#pragma once

#include <memory>
#include <vector>

#include "host/db/Entities.h"
#include "platform/Geometry.h"

namespace host::geometry {

using platform::Point3d;

// The knots the spline runs on: its own, or uniform clamped ones when it has
// none but control points.
std::vector<double> effectiveKnots(const SplineEntity& spline);
Point3d evaluate(const SplineEntity& spline, double param);
// The part of the spline between two parameters of its domain, from < to, as
// a spline of its own, open and clamped at both ends; it has no fit points,
// which would no longer describe it, and keeps the source's properties.
std::unique_ptr<SplineEntity> splinePiece(const SplineEntity& spline, double from, double to);
// Two clamped pieces of one degree, the first ending where the second starts,
// as one spline that runs through both.
std::unique_ptr<SplineEntity> joinedSplines(const SplineEntity& first, const SplineEntity& second);
// Points on the curve close enough that no chord strays from it by more than
// the tolerance; the first and last are the curve's ends.
std::vector<Point3d> sample(const SplineEntity& spline, double tolerance);
// The exact spline of an arc, circle or ellipse (rational, degree 2); null for
// any other kind. The copy carries the source's layer and properties.
std::unique_ptr<SplineEntity> splineOf(const Entity& entity);
// The polyline the spline becomes: more precision, more vertices (precision
// times the spline's spans, at the least). A lightweight polyline when the
// spline lies in a plane parallel to XY, else a 3D polyline; closed when the
// spline is. Null for a precision below 1.
std::unique_ptr<Entity> toPolyline(const SplineEntity& spline, int precision);

}  // namespace host::geometry
