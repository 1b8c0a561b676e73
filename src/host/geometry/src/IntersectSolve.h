// Where two pieces meet in XY: in closed form for segments, circles and lines
// against conics, by refined samples for the rest.
#pragma once

#include <cstddef>
#include <vector>

#include "IntersectPieces.h"

namespace host::geometry {

struct Hit {
  std::size_t piece = 0;  // of the first entity
  double param = 0.0;     // along that piece
  Point3d point;          // on the first entity
  // Hits closer than this are one: the tolerance, or more for a tangent
  // contact found numerically, whose place along the tangent is less sure.
  double mergeRadius = 0.0;
};

// Appends the points where piece a (the first entity's piece number index)
// meets piece b. The scale is the size of the two entities together.
void meet(const Piece& a, std::size_t index, const Piece& b, double tolerance, double scale,
          std::vector<Hit>& hits);

}  // namespace host::geometry
