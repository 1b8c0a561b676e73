// Drawing commands: POINT, LINE, PLINE, CIRCLE and TEXT. New entities go on
// the current layer in the current space.
#include <cmath>

#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"

namespace host {
namespace {

using platform::PromptStatus;

constexpr double kPi = 3.14159265358979323846;

template <typename T>
ObjectId add(Session& s, std::unique_ptr<T> entity) {
  Database& db = s.db();
  return db.addEntity(std::move(entity), db.header().currentSpace);
}

void pointCommand(Session& s) {
  const Answer<Point3d> at = s.prompter().getPoint(L"Specify a point: ");
  if (!at.isNormal()) return;
  auto point = std::make_unique<PointEntity>();
  point->position = at.value;
  add(s, std::move(point));
}

void lineCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> first = p.getPoint(L"Specify first point: ");
  if (!first.isNormal()) return;
  std::vector<Point3d> points = {first.value};
  std::vector<ObjectId> segments;
  for (;;) {
    const Answer<Point3d> next = p.getPoint(L"Specify next point or [Undo]: ", {L"Undo"});
    if (next.status == PromptStatus::Keyword) {
      if (segments.empty()) {
        s.print(L"All segments already undone.\n");
        continue;
      }
      s.db().eraseEntity(segments.back());
      segments.pop_back();
      points.pop_back();
      continue;
    }
    if (!next.isNormal()) return;
    auto line = std::make_unique<LineEntity>();
    line->start = points.back();
    line->end = next.value;
    segments.push_back(add(s, std::move(line)));
    points.push_back(next.value);
  }
}

void plineCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> first = p.getPoint(L"Specify start point: ");
  if (!first.isNormal()) return;
  auto pl = std::make_unique<LwPolylineEntity>();
  pl->elevation = first.value.z;
  pl->vertices.push_back({first.value.x, first.value.y, 0.0});
  for (;;) {
    const Answer<Point3d> next =
        p.getPoint(L"Specify next point or [Close/Undo]: ", {L"Close", L"Undo"});
    if (next.status == PromptStatus::Cancel) return;
    if (next.status == PromptStatus::Keyword && next.keyword == L"Undo") {
      if (pl->vertices.size() > 1) pl->vertices.pop_back();
      continue;
    }
    if (next.status == PromptStatus::Keyword) {
      if (pl->vertices.size() < 2) {
        s.print(L"A closed polyline needs at least two points.\n");
        continue;
      }
      pl->closed = true;
      break;
    }
    if (!next.isNormal()) break;
    pl->vertices.push_back({next.value.x, next.value.y, 0.0});
  }
  if (pl->vertices.size() >= 2) add(s, std::move(pl));
}

void circleCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> center = p.getPoint(L"Specify center point for circle: ");
  if (!center.isNormal()) return;
  for (;;) {
    const Answer<double> radius = p.getReal(L"Specify radius of circle: ");
    if (!radius.isNormal()) return;
    if (!(radius.value > 0.0)) {
      s.print(L"Value must be positive and nonzero.\n");
      continue;
    }
    auto circle = std::make_unique<CircleEntity>();
    circle->center = center.value;
    circle->radius = radius.value;
    add(s, std::move(circle));
    return;
  }
}

void textCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> at = p.getPoint(L"Specify start point of text: ");
  if (!at.isNormal()) return;
  // The height of the last text is offered as the next one's default.
  const double lastHeight = s.db().header().textSize;
  double height = 0.0;
  for (;;) {
    const Answer<double> h = p.getReal(
        L"Specify height <" + formatReal(s.db(), lastHeight) + L">: ", lastHeight);
    if (!h.isNormal()) return;
    if (h.value > 0.0) {
      height = h.value;
      break;
    }
    s.print(L"Value must be positive and nonzero.\n");
  }
  const Answer<double> angle = p.getReal(L"Specify rotation angle of text <0>: ", 0.0);
  if (!angle.isNormal()) return;
  const platform::StringReply text = p.getString(L"Enter text: ", true);
  if (text.status != PromptStatus::Normal || text.text.empty()) return;
  s.db().modifyHeader().textSize = height;
  auto entity = std::make_unique<TextEntity>();
  entity->data.position = at.value;
  entity->data.alignmentPoint = at.value;
  entity->data.height = height;
  entity->data.rotation = angle.value * kPi / 180.0;
  entity->data.text = text.text;
  add(s, std::move(entity));
}

}  // namespace

void registerDrawCommands(Session& session) {
  session.addHostCommand({L"POINT", pointCommand, true, L"draws a point"});
  session.addHostCommand({L"LINE", lineCommand, true, L"draws lines, one entity per segment"});
  session.addHostCommand({L"PLINE", plineCommand, true, L"draws a lightweight polyline"});
  session.addHostCommand({L"CIRCLE", circleCommand, true, L"draws a circle"});
  session.addHostCommand({L"TEXT", textCommand, true, L"writes a single-line text"});
}

}  // namespace host
