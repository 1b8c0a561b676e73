// The extents of the drawing's entities, kept between questions: a selection
// at a point asks for those of all of model space at every pick. They are kept
// beside the drawing, one box per id, and dropped whole whenever the drawing's
// change count moves, which every change, undo, redo, roll-back and load does.
#include "host/geometry/Extents.h"

#include <cstdint>
#include <vector>

namespace host::geometry {
namespace {

class ExtentsCache : public Database::Derived {
 public:
  std::uint64_t generation = ~std::uint64_t{0};
  std::vector<platform::Extents> boxes;  // by id, from the first
  std::vector<bool> known;
};

}  // namespace

platform::Extents cachedExtentsOf(const Database& db, ObjectId id) {
  ExtentsCache& cache = db.derived<ExtentsCache>();
  if (cache.generation != db.generation()) {
    cache.known.assign(cache.known.size(), false);
    cache.generation = db.generation();
  }
  // Whether an entity opens changes only with the generation too, so a known
  // box (empty for one that does not open) is answered without opening it.
  const std::size_t slot = id.value() - 1;
  if (slot < cache.known.size() && cache.known[slot]) return cache.boxes[slot];
  if (id.isNull() || id.value() > db.idCount()) return {};
  if (slot >= cache.known.size()) {
    cache.known.resize(db.idCount(), false);
    cache.boxes.resize(db.idCount());
  }
  const Entity* e = db.openEntity(id);
  cache.boxes[slot] = e != nullptr ? extentsOf(db, *e) : platform::Extents();
  cache.known[slot] = true;
  return cache.boxes[slot];
}

}  // namespace host::geometry
