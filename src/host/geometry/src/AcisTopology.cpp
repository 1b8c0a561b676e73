// The topology of SAT bodies: bodies hold lumps, lumps shells, shells faces,
// faces loops of coedges, and coedges run along edges between vertices.
#include <cmath>

#include "Acis.h"

namespace host::geometry {
namespace {

// Where each record keeps the pointers the walk follows, the same in every
// version this host reads.
constexpr std::size_t kBodyLump = 0, kBodyTransform = 2;
constexpr std::size_t kLumpNext = 0, kLumpShell = 1;
constexpr std::size_t kShellNext = 0, kShellFace = 2;
constexpr std::size_t kFaceNext = 0, kFaceLoop = 1, kFaceSurface = 4;
constexpr std::size_t kLoopNext = 0, kLoopCoedge = 1;
constexpr std::size_t kCoedgeNext = 0, kCoedgeEdge = 3;
constexpr std::size_t kEdgeStart = 0, kEdgeEnd = 1, kEdgeCurve = 3;
constexpr std::size_t kVertexPoint = 1;

AcisTransform transformOf(const AcisRecord* record) {
  AcisTransform t;
  if (record == nullptr || record->numbers.size() < 13) return t;
  const std::vector<double>& n = record->numbers;
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) t.matrix[row][column] = n[row * 3 + column];
  }
  t.translation = {n[9], n[10], n[11]};
  t.scale = n[12];
  return t;
}

// Follows chains of next pointers with a shared budget, so that text whose
// chains run in circles ends the walk instead of running forever.
class Walk {
 public:
  explicit Walk(const AcisModel& model) : model_(model), budget_(model.records().size() + 8) {}

  // The next pointer of the record, or nothing when the walk must stop.
  std::optional<long> step(long index, std::size_t position, std::string_view kind) {
    if (budget_ == 0) return std::nullopt;
    --budget_;
    const AcisRecord* record = model_.at(index);
    if (record == nullptr) return std::nullopt;
    return model_.link(*record, position, kind);
  }

 private:
  const AcisModel& model_;
  std::size_t budget_;
};

bool readLoops(const AcisModel& model, Walk& walk, long faceIndex, AcisFace& face) {
  auto loopIndex = walk.step(faceIndex, kFaceLoop, "loop");
  for (; loopIndex && *loopIndex != -1; loopIndex = walk.step(*loopIndex, kLoopNext, "loop")) {
    const auto first = model.link(*model.at(*loopIndex), kLoopCoedge, "coedge");
    if (!first || *first == -1) return false;
    std::vector<long> coedges;
    std::optional<long> c = first;
    do {
      coedges.push_back(*c);
      c = walk.step(*c, kCoedgeNext, "coedge");
    } while (c && *c != -1 && *c != *first);
    if (!c || *c != *first) return false;
    face.loops.push_back(std::move(coedges));
  }
  return loopIndex.has_value();
}

}  // namespace

Point3d AcisTransform::applyLinear(const Point3d& v) const {
  const double(&m)[3][3] = matrix;
  return {scale * (v.x * m[0][0] + v.y * m[1][0] + v.z * m[2][0]),
          scale * (v.x * m[0][1] + v.y * m[1][1] + v.z * m[2][1]),
          scale * (v.x * m[0][2] + v.y * m[1][2] + v.z * m[2][2])};
}

Point3d AcisTransform::apply(const Point3d& p) const {
  const Point3d v = applyLinear(p);
  return {v.x + translation.x, v.y + translation.y, v.z + translation.z};
}

double AcisTransform::volumeFactor() const {
  const double(&m)[3][3] = matrix;
  const double det = m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
                     m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
                     m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
  return std::fabs(det * scale * scale * scale);
}

std::optional<std::vector<AcisFace>> acisFaces(const AcisModel& model) {
  std::vector<AcisFace> faces;
  Walk walk(model);
  const auto& records = model.records();
  for (std::size_t b = 0; b < records.size(); ++b) {
    const AcisRecord& bodyRecord = records[b];
    if (!bodyRecord.is("body")) continue;
    const auto transformIndex = model.link(bodyRecord, kBodyTransform, "transform");
    const AcisTransform transform =
        transformOf(transformIndex ? model.at(*transformIndex) : nullptr);
    auto lumpIndex = model.link(bodyRecord, kBodyLump, "lump");
    for (; lumpIndex && *lumpIndex != -1; lumpIndex = walk.step(*lumpIndex, kLumpNext, "lump")) {
      auto shellIndex = walk.step(*lumpIndex, kLumpShell, "shell");
      for (; shellIndex && *shellIndex != -1;
           shellIndex = walk.step(*shellIndex, kShellNext, "shell")) {
        auto faceIndex = walk.step(*shellIndex, kShellFace, "face");
        for (; faceIndex && *faceIndex != -1;
             faceIndex = walk.step(*faceIndex, kFaceNext, "face")) {
          const AcisRecord& faceRecord = *model.at(*faceIndex);
          AcisFace f;
          const auto surface = model.link(faceRecord, kFaceSurface, "surface");
          if (!surface) return std::nullopt;
          f.surface = *surface;
          f.reversed = faceRecord.reversed();
          f.transform = transform;
          if (!readLoops(model, walk, *faceIndex, f)) return std::nullopt;
          faces.push_back(std::move(f));
        }
        if (!faceIndex) return std::nullopt;
      }
      if (!shellIndex) return std::nullopt;
    }
    if (!lumpIndex) return std::nullopt;
  }
  return faces;
}

std::optional<Point3d> edgeVertex(const AcisModel& model, long edgeIndex, bool end) {
  const AcisRecord* edgeRecord = model.at(edgeIndex);
  if (edgeRecord == nullptr) return std::nullopt;
  const auto vertexIndex = model.link(*edgeRecord, end ? kEdgeEnd : kEdgeStart, "vertex");
  if (!vertexIndex || *vertexIndex == -1) return std::nullopt;
  const auto pointIndex = model.link(*model.at(*vertexIndex), kVertexPoint, "point");
  if (!pointIndex || *pointIndex == -1) return std::nullopt;
  const std::vector<double>& n = model.at(*pointIndex)->numbers;
  if (n.size() < 3) return std::nullopt;
  return Point3d{n[0], n[1], n[2]};
}

std::optional<long> coedgeEdge(const AcisModel& model, long coedgeIndex) {
  const AcisRecord* record = model.at(coedgeIndex);
  if (record == nullptr) return std::nullopt;
  const auto edgeIndex = model.link(*record, kCoedgeEdge, "edge");
  if (!edgeIndex || *edgeIndex == -1) return std::nullopt;
  return edgeIndex;
}

const AcisRecord* edgeCurve(const AcisModel& model, long edgeIndex) {
  const AcisRecord* record = model.at(edgeIndex);
  if (record == nullptr) return nullptr;
  const auto curveIndex = model.link(*record, kEdgeCurve, "curve");
  return curveIndex ? model.at(*curveIndex) : nullptr;
}

std::optional<Point3d> coedgeStart(const AcisModel& model, long coedgeIndex) {
  const auto edgeIndex = coedgeEdge(model, coedgeIndex);
  if (!edgeIndex) return std::nullopt;
  // A reversed coedge runs its edge from the end to the start.
  return edgeVertex(model, *edgeIndex, model.at(coedgeIndex)->reversed());
}

}  // namespace host::geometry
