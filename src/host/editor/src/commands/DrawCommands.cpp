// Drawing commands: POINT, LINE, PLINE, CIRCLE and TEXT. New entities go on
// the current layer in the current space.
#include <cmath>

#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/SplineFit.h"

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

// The angle of a world point around a centre, in the XY plane.
double angleAround(const Point3d& center, const Point3d& p) {
  return std::atan2(p.y - center.y, p.x - center.x);
}

void arcCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> center = p.getPoint(L"Specify center point of arc: ");
  if (!center.isNormal()) return;
  Answer<Point3d> start;
  for (;;) {
    start = p.getPoint(L"Specify start point of arc: ");
    if (!start.isNormal()) return;
    if (std::hypot(start.value.x - center.value.x, start.value.y - center.value.y) > 0.0) break;
    s.print(L"The start point must not be the center.\n");
  }
  Answer<Point3d> end = p.getPoint(L"Specify end point of arc: ");
  if (!end.isNormal()) return;
  auto arc = std::make_unique<ArcEntity>();
  arc->center = center.value;
  arc->radius = std::hypot(start.value.x - center.value.x, start.value.y - center.value.y);
  // Counterclockwise from the start point to the direction of the end point.
  arc->startAngle = angleAround(center.value, start.value);
  arc->endAngle = angleAround(center.value, end.value);
  add(s, std::move(arc));
}

void ellipseCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> center = p.getPoint(L"Specify center of ellipse: ");
  if (!center.isNormal()) return;
  Answer<Point3d> axisEnd;
  for (;;) {
    axisEnd = p.getPoint(L"Specify endpoint of axis: ");
    if (!axisEnd.isNormal()) return;
    if (axisEnd.value != center.value) break;
    s.print(L"The axis must have a length.\n");
  }
  Point3d axis{axisEnd.value.x - center.value.x, axisEnd.value.y - center.value.y,
               axisEnd.value.z - center.value.z};
  const double axisLength = std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
  double other = 0.0;
  for (;;) {
    const Answer<double> d = p.getReal(L"Specify distance to other axis: ");
    if (!d.isNormal()) return;
    if (d.value > 0.0) {
      other = d.value;
      break;
    }
    s.print(L"Value must be positive and nonzero.\n");
  }
  auto ellipse = std::make_unique<EllipseEntity>();
  ellipse->center = center.value;
  if (other <= axisLength) {
    ellipse->majorAxis = axis;
    ellipse->ratio = other / axisLength;
  } else {
    // The other axis is the longer one: it becomes the major axis, a quarter
    // turn from the given one in the XY plane.
    const double f = other / axisLength;
    ellipse->majorAxis = {-axis.y * f, axis.x * f, 0.0};
    ellipse->ratio = axisLength / other;
  }
  add(s, std::move(ellipse));
}

void splineCommand(Session& s) {
  Prompter& p = s.prompter();
  std::vector<Point3d> points;
  const Answer<Point3d> first = p.getPoint(L"Specify first point: ");
  if (!first.isNormal()) return;
  points.push_back(first.value);
  for (;;) {
    const Answer<Point3d> next = p.getPoint(L"Specify next point or [Undo]: ", {L"Undo"});
    if (next.status == PromptStatus::Cancel) return;
    if (next.status == PromptStatus::Keyword) {
      if (points.size() > 1) points.pop_back();
      continue;
    }
    if (!next.isNormal()) break;
    points.push_back(next.value);
  }
  SplineEntity spline = geometry::splineThrough(points);
  if (spline.controlPoints.empty()) {
    s.print(L"A spline needs two different points.\n");
    return;
  }
  add(s, std::make_unique<SplineEntity>(std::move(spline)));
}

void poly3dCommand(Session& s) {
  Prompter& p = s.prompter();
  const Answer<Point3d> first = p.getPoint(L"Specify start point of polyline: ");
  if (!first.isNormal()) return;
  auto polyline = std::make_unique<Polyline3dEntity>();
  polyline->vertices.push_back({first.value});
  for (;;) {
    const Answer<Point3d> next =
        p.getPoint(L"Specify endpoint of line or [Close/Undo]: ", {L"Close", L"Undo"});
    if (next.status == PromptStatus::Cancel) return;
    if (next.status == PromptStatus::Keyword && next.keyword == L"Undo") {
      if (polyline->vertices.size() > 1) polyline->vertices.pop_back();
      continue;
    }
    if (next.status == PromptStatus::Keyword) {
      if (polyline->vertices.size() < 3) {
        s.print(L"A closed polyline needs at least three points.\n");
        continue;
      }
      polyline->flags |= 1;
      break;
    }
    if (!next.isNormal()) break;
    polyline->vertices.push_back({next.value});
  }
  if (polyline->vertices.size() < 2) return;
  // Each vertex, and the mark that ends them, is an object of its own in a file.
  Database& db = s.db();
  for (PolylineVertex& v : polyline->vertices) v.handle = db.takeHandle();
  polyline->seqendHandle = db.takeHandle();
  add(s, std::move(polyline));
}

}  // namespace

void registerDrawCommands(Session& session) {
  session.addHostCommand({L"POINT", pointCommand, true, L"draws a point"});
  session.addHostCommand({L"LINE", lineCommand, true, L"draws lines, one entity per segment"});
  session.addHostCommand({L"PLINE", plineCommand, true, L"draws a lightweight polyline"});
  session.addHostCommand({L"CIRCLE", circleCommand, true, L"draws a circle"});
  session.addHostCommand({L"TEXT", textCommand, true, L"writes a single-line text"});
  session.addHostCommand({L"ARC", arcCommand, true, L"draws an arc by centre, start and end"});
  session.addHostCommand({L"ELLIPSE", ellipseCommand, true, L"draws an ellipse"});
  session.addHostCommand({L"SPLINE", splineCommand, true, L"draws a spline through points"});
  session.addHostCommand({L"3DPOLY", poly3dCommand, true, L"draws a 3D polyline"});
}

}  // namespace host
