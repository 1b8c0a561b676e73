// The ACIS (SAT) text of 3D solids and regions: its records, the topology of
// its bodies down to the points of their vertices, and the outline of the
// bodies that their extents are taken from. The drawing's reader decodes the
// text from the entity's file form (Database::acisText).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/db/Entities.h"
#include "platform/Geometry.h"

namespace host::geometry {

using platform::Point3d;

// One record of the text. The fields every record starts with (its attribute,
// and in newer versions a history number and one more pointer) are left out.
struct AcisRecord {
  std::string type;                // as written: "plane-surface", "tedge-edge"...
  std::vector<long> pointers;      // in order; -1 for none
  std::vector<double> numbers;     // in order
  std::vector<std::string> words;  // senses, flags, strings, in order
  // Whether the record is of the kind: the last part of its type, as "edge"
  // of "tedge-edge" or "surface" of "plane-surface".
  bool is(std::string_view kind) const;
  // The first part of its type, as "plane" of "plane-surface".
  std::string_view subtype() const;
  // "forward" or "reversed", the first of them among its words; false if none.
  bool reversed() const;
};

class AcisModel {
 public:
  // Nothing when the text is not SAT text this host can read.
  static std::optional<AcisModel> read(std::string_view text);

  long version() const { return version_; }
  const std::vector<AcisRecord>& records() const { return records_; }
  const AcisRecord* at(long index) const {
    return index >= 0 && static_cast<std::size_t>(index) < records_.size() ? &records_[index]
                                                                           : nullptr;
  }
  // The record's pointer at the position among its pointers: -1 when it is
  // null, nothing when the record has no such position or the pointer leads
  // to a record of another kind, which only broken text does.
  std::optional<long> link(const AcisRecord& record, std::size_t position,
                           std::string_view kind) const;

 private:
  long version_ = 0;
  std::vector<AcisRecord> records_;
};

// Where a body stands: a point p goes to (p · matrix) · scale + translation,
// the matrix's rows as written.
struct AcisTransform {
  double matrix[3][3] = {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}};
  Point3d translation;
  double scale = 1.0;
  Point3d apply(const Point3d& p) const;
  Point3d applyLinear(const Point3d& v) const;
  // How much the transform multiplies volumes by.
  double volumeFactor() const;
};

struct AcisFace {
  long surface = -1;  // the index of its surface record
  bool reversed = false;
  // Each loop's coedges in order, as its next pointers run.
  std::vector<std::vector<long>> loops;
  AcisTransform transform;  // its body's
};

// The faces of every body of the model; nothing when the topology is broken
// (a chain that leads nowhere or never closes).
std::optional<std::vector<AcisFace>> acisFaces(const AcisModel& model);

// The edge a coedge runs along; nothing when it has none or it is unreadable.
std::optional<long> coedgeEdge(const AcisModel& model, long coedge);
// The point of the vertex a coedge starts at, in body coordinates.
std::optional<Point3d> coedgeStart(const AcisModel& model, long coedge);
// The point of an edge's start or end vertex, in body coordinates.
std::optional<Point3d> edgeVertex(const AcisModel& model, long edge, bool end);
// The record of the curve an edge lies on; null when it has none.
const AcisRecord* edgeCurve(const AcisModel& model, long edge);

// What the extents of the entity's bodies are made of, in world coordinates:
// the vertices as points, edges on ellipses as elliptic arcs, and spheres
// without edges as their six poles. Empty when the text cannot be read.
std::vector<std::unique_ptr<Entity>> acisOutline(std::string_view satText);

}  // namespace host::geometry
