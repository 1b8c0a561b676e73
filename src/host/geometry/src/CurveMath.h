// The arithmetic the curve functions share: angles and sweeps, circular arcs
// in a plane, bulged segments, quadrature, and the search for the point of a
// smooth curve nearest to another. Private to the geometry library.
#pragma once

#include <functional>
#include <vector>

#include "host/geometry/Ocs.h"

namespace host::geometry {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kTwoPi = 6.283185307179586;

// An angle brought into [0, 2 pi).
double normalizedAngle(double angle);
// The counterclockwise sweep from one angle to another, in (0, 2 pi]: equal
// angles (or angles a whole number of turns apart) make a full turn, as a
// full ellipse runs from 0 to 2 pi.
double ccwSweep(double start, double end);

inline double distance(const Point3d& a, const Point3d& b) {
  return length(minus(a, b));
}

// A circular arc in the plane of an object coordinate system.
struct PlanarArc {
  Point3d center;  // in the plane's coordinates; z is the plane's elevation
  double radius = 0.0;
  double startAngle = 0.0;
  double sweep = 0.0;  // signed: positive runs counterclockwise about the normal

  Point3d pointAtAngle(const Ocs& ocs, double angle) const;
  // The point a fraction of the way along the arc, from 0 at its start to 1.
  Point3d pointAt(const Ocs& ocs, double fraction) const;
  // The fraction of the way to the arc's point nearest to a world point.
  double nearestFraction(const Ocs& ocs, const Point3d& world) const;
  double arcLength() const;
};

// The arc a bulge makes between two points of a plane (z ignored, the given
// elevation used); false for a straight segment: no bulge, or a chord of no
// length, which has no arc.
bool bulgeArc(double ax, double ay, double bx, double by, double bulge, double elevation,
              PlanarArc& arc);

// The signed area between a bulged segment's chord and its arc: positive when
// the arc runs counterclockwise, as the bulge's sign says.
double bulgeSegmentArea(double ax, double ay, double bx, double by, double bulge);

// The integral of a smooth function over [a, b] by adaptive Gauss-Legendre
// quadrature, to the given error relative to the result.
double integrate(const std::function<double(double)>& f, double a, double b, double relTol);

// A curve given by its point and (not necessarily unit) tangent at a parameter.
struct ParamCurve {
  std::function<Point3d(double)> at;
  std::function<Point3d(double)> tangent;
};
// The parameter of the curve's point nearest to a point. The samples are
// increasing parameters covering the curve (its ends first and last), close
// enough that every dip of the distance shows between them.
double nearestParam(const ParamCurve& curve, const std::vector<double>& samples, const Point3d& to);

}  // namespace host::geometry
