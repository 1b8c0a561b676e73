// The kinds the host keeps as their file text (hatches, solids and regions,
// kinds it does not model) and what the geometry needs out of that text. The
// drawing file's reader knows the text's form and answers on demand, so that
// nothing is decoded for entities nobody measures, and the geometry never
// reads file tags itself.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/Entities.h"

namespace host {

// A hatch's boundary as its text gives it: the edges in the coordinates of the
// hatch's plane, positions at the plane's elevation (lines, arcs, elliptic arcs
// and splines; polyline paths as lightweight polylines). Arcs and polylines
// carry the plane's normal and are whole entities as they stand; the others
// still have to be placed in the world by that normal.
struct HatchPaths {
  Point3d normal = kUnitZ;
  double elevation = 0.0;
  std::vector<std::unique_ptr<Entity>> edges;
};

// The points a text of an unmodelled kind holds, and the normal of its plane
// when it names one (its points are then in that plane's coordinates).
struct TextPoints {
  std::vector<Point3d> points;
  std::optional<Point3d> normal;
};

class KeptTextReader {
 public:
  virtual ~KeptTextReader() = default;
  // The paths read before anything the text does not hold as expected; none
  // for text without paths.
  virtual HatchPaths hatchPaths(std::string_view source) const = 0;
  // The SAT text of a solid or region, decoded; empty when the entity keeps
  // none (newer files keep the body elsewhere, in binary).
  virtual std::string acisText(std::string_view source) const = 0;
  virtual TextPoints points(std::string_view source) const = 0;
};

}  // namespace host
