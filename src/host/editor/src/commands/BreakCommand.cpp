// BREAK: takes a stretch out of a curve (a line, arc, circle, ellipse,
// polyline or spline). The source keeps its id and one part;
// another part becomes an entity of its own, with the source's properties but
// not its extension dictionary, so it carries no Object Data.
#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/Break.h"
#include "host/geometry/Curves.h"

namespace host {
namespace {

using platform::PromptStatus;

// Vertices of an old-style polyline, and the mark after them, are objects of
// their own in a file; pieces get handles of their own. The source keeps its
// end mark; the new part, a copy of the source, must not share it.
void giveVertexHandles(Database& db, Entity& e, bool newEndMark) {
  auto renumber = [&](auto& p) {
    for (PolylineVertex& v : p.vertices) v.handle = db.takeHandle();
    if (p.seqendHandle == 0 || newEndMark) p.seqendHandle = db.takeHandle();
  };
  if (e.kind() == EntityKind::Polyline3d) renumber(static_cast<Polyline3dEntity&>(e));
  if (e.kind() == EntityKind::Polyline2d) renumber(static_cast<Polyline2dEntity&>(e));
}

void breakCommand(Session& s) {
  Prompter& p = s.prompter();
  Database& db = s.db();
  const platform::EntityReply picked = s.editor().getEntity(L"Select object: ");
  if (picked.status == PromptStatus::Cancel) return;
  if (picked.status != PromptStatus::Normal) {
    s.print(L"No object found there.\n");
    s.failCommand();
    return;
  }
  const Entity& entity = *db.entity(picked.id);
  if (isOnLockedLayer(db, entity)) {
    s.print(L"The object is on a locked layer.\n");
    s.failCommand();
    return;
  }
  Point3d first = picked.pickPoint;
  Answer<Point3d> second =
      p.getPoint(L"Specify second break point or [First point]: ", {L"First"});
  if (second.status == PromptStatus::Keyword) {
    const Answer<Point3d> chosen = p.getPoint(L"Specify first break point: ");
    if (!chosen.isNormal()) return;
    first = chosen.value;
    second = p.getPoint(L"Specify second break point: ");
  }
  if (!second.isNormal()) return;
  // Without a picked point (the object named by its handle) the break is at
  // the one point given.
  if (!picked.picked && second.status == PromptStatus::Normal && first == Point3d{}) {
    first = second.value;
  }
  // Points are picked in a plan view: each meets the curve along Z.
  const auto near1 = geometry::nearestPointInPlan(entity, first);
  const auto near2 = geometry::nearestPointInPlan(entity, second.value);
  geometry::BreakResult result;
  if (near1 && near2) {
    result = geometry::breakCurve(entity, near1->param, near2->param);
  } else {
    result.error = L"Only curves can be broken.";
  }
  if (!result.source) {
    s.print(result.error + L"\n");
    s.failCommand();
    return;
  }
  const ObjectId owner = entity.owner;
  giveVertexHandles(db, *result.source, false);
  db.replaceEntity(picked.id, std::move(result.source));
  if (result.part) {
    giveVertexHandles(db, *result.part, true);
    db.addEntity(std::move(result.part), owner);
  }
}

}  // namespace

void registerBreakCommand(Session& session) {
  session.addHostCommand({L"BREAK", breakCommand, true, L"breaks a curve between two points"});
}

}  // namespace host
