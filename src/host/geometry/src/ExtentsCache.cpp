// The extents of the drawing's entities, kept between questions: a selection
// at a point asks for those of all of model space at every pick. They are kept
// beside the drawing, one box per id, and dropped whole whenever the drawing's
// change count moves, which every change, undo, redo, roll-back and load does.
#include "host/geometry/Extents.h"

#include "host/db/KeptById.h"

namespace host::geometry {
namespace {

struct ExtentsCache : KeptById<platform::Extents> {};

}  // namespace

platform::Extents cachedExtentsOf(const Database& db, ObjectId id) {
  if (id.isNull() || id.value() > db.idCount()) return {};
  // Whether an entity opens changes only with the drawing too, so a kept box
  // (empty for one that does not open) is answered without opening it.
  return db.derived<ExtentsCache>().get(db, id, [&db](ObjectId entity) {
    const Entity* e = db.openEntity(entity);
    return e != nullptr ? extentsOf(db, *e) : platform::Extents();
  });
}

}  // namespace host::geometry
