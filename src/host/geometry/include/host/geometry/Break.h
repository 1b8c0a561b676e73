// Breaking a curve between two of its parameters: what is left of the source,
// and the part that becomes an entity of its own.
#pragma once

#include <memory>
#include <string>

#include "host/db/Entities.h"

namespace host::geometry {

struct BreakResult {
  // What the source becomes (possibly of another kind: a circle becomes an
  // arc); null when the curve cannot be broken there.
  std::unique_ptr<Entity> source;
  // The other part, with the source's properties; null when there is none.
  std::unique_ptr<Entity> part;
  std::wstring error;
};

// Lines, arcs, circles, lightweight polylines and 3D polylines break. The
// stretch between the parameters goes (on a circle, counterclockwise from the
// first to the second); an open curve keeps its start in the source and its
// end in the new part, a closed one becomes one open curve. Equal parameters
// break an open curve in two at that point.
BreakResult breakCurve(const Entity& curve, double first, double second);

}  // namespace host::geometry
