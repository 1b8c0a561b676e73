// MOVE and COPY: entities displaced, or copied with what belongs to them.
#include <unordered_set>

#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/Transform.h"

namespace host {
namespace {

struct Displacement {
  bool ok = false;
  Point3d delta;
};

Displacement askDisplacement(Session& s) {
  const Answer<Point3d> base = s.prompter().getPoint(L"Specify base point: ");
  if (!base.isNormal()) return {};
  const Answer<Point3d> to = s.prompter().getPoint(L"Specify second point: ");
  if (!to.isNormal()) return {};
  return {true,
          {to.value.x - base.value.x, to.value.y - base.value.y, to.value.z - base.value.z}};
}

// Moves an entity and, for a block reference, its attributes, for a multiline
// text the texts of its further columns; false if the host cannot move its kind.
bool moveEntity(Database& db, ObjectId id, const Point3d& delta) {
  Entity& e = *db.modify<Entity>(id);
  if (!geometry::translate(e, delta)) return false;
  if (e.kind() == EntityKind::BlockReference) {
    for (ObjectId a : static_cast<BlockReferenceEntity&>(e).attributes) {
      if (Entity* attribute = db.modify<Entity>(a)) geometry::translate(*attribute, delta);
    }
  }
  if (e.kind() == EntityKind::MText) {
    const std::vector<Handle> columns = static_cast<MTextEntity&>(e).columns;
    for (Handle h : columns) {
      const ObjectId column = db.idOfHandle(h);
      if (column != id && db.entity(column) != nullptr) {
        geometry::translate(*db.modify<Entity>(column), delta);
      }
    }
  }
  return true;
}

// The selection without the column texts of the multiline texts in it, which
// go where their text goes.
std::vector<ObjectId> withoutColumns(const Database& db, const std::vector<ObjectId>& ids) {
  std::unordered_set<Handle> columns;
  for (ObjectId id : ids) {
    if (const auto* text = db.get<MTextEntity>(id)) {
      columns.insert(text->columns.begin(), text->columns.end());
    }
  }
  if (columns.empty()) return ids;
  std::vector<ObjectId> kept;
  for (ObjectId id : ids) {
    if (columns.count(db.entity(id)->handle) == 0) kept.push_back(id);
  }
  return kept;
}

void reportSkipped(Session& s, int locked, int fixed, const wchar_t* verb) {
  s.print(lockedLayerNotice(locked));
  if (fixed > 0) s.print(std::to_wstring(fixed) + L" could not be " + verb + L".\n");
}

void moveCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids || ids->empty()) return;
  const Displacement d = askDisplacement(s);
  if (!d.ok) return;
  Database& db = s.db();
  int locked = 0;
  int fixed = 0;
  for (ObjectId id : withoutColumns(db, *ids)) {
    if (isOnLockedLayer(db, *db.entity(id))) {
      ++locked;
    } else if (!moveEntity(db, id, d.delta)) {
      ++fixed;
    }
  }
  reportSkipped(s, locked, fixed, L"moved");
}

void copyCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids || ids->empty()) return;
  const Displacement d = askDisplacement(s);
  if (!d.ok) return;
  Database& db = s.db();
  int fixed = 0;
  for (ObjectId id : withoutColumns(db, *ids)) {
    const ObjectId copy = db.copyEntity(id, db.entity(id)->owner);
    if (!moveEntity(db, copy, d.delta)) {
      // A copy that cannot be placed is no copy at all.
      db.eraseEntity(copy);
      ++fixed;
    }
  }
  reportSkipped(s, 0, fixed, L"copied");
}

}  // namespace

void registerModifyCommands(Session& session) {
  session.addHostCommand({L"MOVE", moveCommand, true, L"moves entities"});
  session.addHostCommand(
      {L"COPY", copyCommand, true, L"copies entities with their Object Data"});
}

}  // namespace host
