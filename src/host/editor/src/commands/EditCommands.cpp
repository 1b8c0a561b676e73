// SELECT, ERASE, LIST and FAILOPEN: working with selections of entities.
#include <cmath>

#include "host/db/PortDrawing.h"
#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/EntityGeometry.h"
#include "host/geometry/Ocs.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::PromptStatus;

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegrees = 180.0 / kPi;

void selectCommand(Session& s) {
  platform::SelectionReply reply = s.editor().selectObjects();
  if (reply.status == PromptStatus::Cancel) return;
  s.editor().setPickFirst(reply.ids);
}

void eraseCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids) return;
  Database& db = s.db();
  int locked = 0;
  for (ObjectId id : *ids) {
    if (isOnLockedLayer(db, *db.entity(id))) {
      ++locked;
    } else {
      db.eraseEntity(id);
    }
  }
  s.print(lockedLayerNotice(locked));
}

// An entity that keeps its points in its own plane is listed in world
// coordinates. Its angles and bulges are turned to the world's too when the
// plane lies level, seen from above; a tilted plane keeps its own, and its
// extrusion is listed with them so that they can be read.
class PlaneListing {
 public:
  explicit PlaneListing(const Point3d& normal) : normal_(normal), ocs_(normal) {}

  Point3d point(const Point3d& p) const { return ocs_.toWorld(p); }
  bool level() const { return ocs_.zAxis().x == 0.0 && ocs_.zAxis().y == 0.0; }
  // A level plane whose normal points down: seen from above, mirrored.
  bool flipped() const { return level() && ocs_.zAxis().z < 0.0; }
  // Such a plane's X axis is the world's -X, its Y axis the world's Y.
  double angle(double a) const {
    if (!flipped()) return a;
    const double mirrored = std::fmod(kPi - a, 2.0 * kPi);
    return mirrored < 0.0 ? mirrored + 2.0 * kPi : mirrored;
  }
  double bulge(double b) const { return flipped() ? -b : b; }
  void listExtrusion(Session& s) const {
    if (!ocs_.isWorld()) s.print(L"  extrusion: " + formatPoint(s.db(), normal_) + L"\n");
  }

 private:
  Point3d normal_;
  geometry::Ocs ocs_;
};

// The vertices of a polyline in its plane, at its elevation: in a level
// plane X and Y, the elevation being the height; in a tilted one, points.
void listPlaneVertices(Session& s, const PlaneListing& plane, const std::vector<LwVertex>& vertices,
                       double elevation) {
  const Database& db = s.db();
  if (plane.level()) {
    s.print(L"  elevation: " + formatReal(db, plane.point({0.0, 0.0, elevation}).z) + L"\n");
  }
  for (const LwVertex& v : vertices) {
    const Point3d at = plane.point({v.x, v.y, elevation});
    std::wstring text = plane.level()
                            ? L"vertex: X=" + formatReal(db, at.x) + L" Y=" + formatReal(db, at.y)
                            : L"vertex: " + formatPoint(db, at);
    if (v.bulge != 0.0) text += L" bulge=" + formatReal(db, plane.bulge(v.bulge));
    s.print(L"  " + text + L"\n");
  }
  plane.listExtrusion(s);
}

void listGeometry(Session& s, const Entity& e) {
  const Database& db = s.db();
  auto line = [&](const std::wstring& text) { s.print(L"  " + text + L"\n"); };
  switch (e.kind()) {
    case EntityKind::Point:
      line(L"at point: " + formatPoint(db, static_cast<const PointEntity&>(e).position));
      break;
    case EntityKind::Line: {
      const auto& l = static_cast<const LineEntity&>(e);
      line(L"from point: " + formatPoint(db, l.start));
      line(L"to point: " + formatPoint(db, l.end));
      line(L"length: " + formatReal(db, std::sqrt(std::pow(l.end.x - l.start.x, 2) +
                                                  std::pow(l.end.y - l.start.y, 2) +
                                                  std::pow(l.end.z - l.start.z, 2))));
      break;
    }
    case EntityKind::Circle: {
      const auto& c = static_cast<const CircleEntity&>(e);
      const PlaneListing plane(c.normal);
      line(L"center point: " + formatPoint(db, plane.point(c.center)));
      line(L"radius: " + formatReal(db, c.radius));
      plane.listExtrusion(s);
      break;
    }
    case EntityKind::LwPolyline: {
      const auto& pl = static_cast<const LwPolylineEntity&>(e);
      line(pl.closed ? L"closed" : L"open");
      listPlaneVertices(s, PlaneListing(pl.normal), pl.vertices, pl.elevation);
      break;
    }
    case EntityKind::Polyline2d: {
      const auto& pl = static_cast<const Polyline2dEntity&>(e);
      line(std::wstring(pl.closed() ? L"closed" : L"open") + L" 2D polyline");
      std::vector<LwVertex> vertices;
      for (const PolylineVertex& v : pl.vertices) {
        vertices.push_back({v.position.x, v.position.y, v.bulge});
      }
      listPlaneVertices(s, PlaneListing(pl.normal), vertices, pl.elevation);
      break;
    }
    case EntityKind::Text: {
      const TextData& t = static_cast<const TextEntity&>(e).data;
      const PlaneListing plane(t.normal);
      line(L"text: \"" + t.text + L"\"");
      line(L"start point: " + formatPoint(db, plane.point(t.position)));
      line(L"height: " + formatReal(db, t.height));
      line(L"rotation: " + formatReal(db, plane.angle(t.rotation) * kDegrees));
      plane.listExtrusion(s);
      break;
    }
    case EntityKind::Arc: {
      const auto& a = static_cast<const ArcEntity&>(e);
      const PlaneListing plane(a.normal);
      // Seen from above, a mirrored arc runs from its end to its start.
      const bool swap = plane.flipped();
      line(L"center point: " + formatPoint(db, plane.point(a.center)));
      line(L"radius: " + formatReal(db, a.radius));
      line(L"start angle: " +
           formatReal(db, plane.angle(swap ? a.endAngle : a.startAngle) * kDegrees));
      line(L"end angle: " +
           formatReal(db, plane.angle(swap ? a.startAngle : a.endAngle) * kDegrees));
      plane.listExtrusion(s);
      break;
    }
    case EntityKind::Ellipse: {
      const auto& el = static_cast<const EllipseEntity&>(e);
      line(L"center point: " + formatPoint(db, el.center));
      line(L"major axis: " + formatPoint(db, el.majorAxis));
      line(L"radius ratio: " + formatReal(db, el.ratio));
      break;
    }
    case EntityKind::Spline: {
      const auto& sp = static_cast<const SplineEntity&>(e);
      line(L"degree: " + std::to_wstring(sp.degree) + (sp.closed() ? L", closed" : L", open"));
      for (const Point3d& p : sp.fitPoints) line(L"fit point: " + formatPoint(db, p));
      line(L"control points: " + std::to_wstring(sp.controlPoints.size()));
      break;
    }
    case EntityKind::Polyline3d: {
      const auto& pl = static_cast<const Polyline3dEntity&>(e);
      line(std::wstring(pl.closed() ? L"closed" : L"open") + L" 3D polyline");
      for (const PolylineVertex& v : pl.vertices) line(L"vertex: " + formatPoint(db, v.position));
      break;
    }
    case EntityKind::BlockReference: {
      const auto& b = static_cast<const BlockReferenceEntity&>(e);
      const BlockRecord* block = db.get<BlockRecord>(b.block);
      const PlaneListing plane(b.normal);
      line(L"block: \"" + (block != nullptr ? block->name : std::wstring()) + L"\"");
      line(L"at point: " + formatPoint(db, plane.point(b.position)));
      line(L"scale: " + formatReal(db, b.scale.x));
      line(L"rotation: " + formatReal(db, plane.angle(b.rotation) * kDegrees));
      plane.listExtrusion(s);
      for (ObjectId id : b.attributes) {
        if (const auto* a = db.get<AttributeEntity>(id)) {
          line(L"attribute " + a->tag + L": \"" + a->data.text + L"\"");
        }
      }
      break;
    }
    case EntityKind::AttributeDefinition: {
      const auto& d = static_cast<const AttributeDefinitionEntity&>(e);
      line(L"tag: " + d.tag);
      line(L"prompt: \"" + d.prompt + L"\"");
      line(L"default: \"" + d.data.text + L"\"");
      break;
    }
    case EntityKind::Mline:
    case EntityKind::MText:
    case EntityKind::Attribute:
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
    case EntityKind::Unknown:
      break;
  }
}

void listCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids) return;
  const Database& db = s.db();
  for (ObjectId id : *ids) {
    const Entity* e = db.entity(id);
    if (e == nullptr) continue;
    const Layer* layer = db.get<Layer>(e->layer);
    s.print(typeName(*e) + L"  Layer: \"" +
            (layer != nullptr ? layer->name : L"") + L"\"  Space: " +
            (e->owner == db.modelSpace() ? L"Model space" : L"Paper space") + L"  Handle = " +
            handleToText(e->handle) + L"\n");
    listGeometry(s, *e);
    if (const OdRecordList* od = db.odRecords(id)) {
      s.print(L"  Object Data records: " + std::to_wstring(od->count()) + L"\n");
    }
  }
}

// Makes entities fail to open, or open again, so that the paths a damaged
// drawing takes can be tried.
void failOpenCommand(Session& s) {
  const platform::StringReply option =
      s.prompter().getKeyword(L"Enter an option [On/Off] <On>: ", {L"On", L"Off"}, L"On");
  if (option.status != PromptStatus::Normal) return;
  platform::SelectionReply reply = s.editor().selectObjects();
  if (reply.status == PromptStatus::Cancel) return;
  const bool fail = option.text == L"On";
  for (ObjectId id : reply.ids) s.db().setOpenFailure(id, fail);
  s.print(std::to_wstring(reply.ids.size()) +
          (fail ? L" object(s) will fail to open.\n" : L" object(s) open normally.\n"));
}

}  // namespace

void registerEditCommands(Session& session) {
  session.addHostCommand({L"SELECT", selectCommand, true, L"selects entities (pick-first set)"});
  session.addHostCommand({L"ERASE", eraseCommand, true, L"erases entities"});
  session.addHostCommand({L"LIST", listCommand, true, L"lists entities"});
  session.addHostCommand(
      {L"FAILOPEN", failOpenCommand, false, L"makes entities fail to open, for testing"});
}

}  // namespace host
