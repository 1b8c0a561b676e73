// SELECT, ERASE, LIST and FAILOPEN: working with selections of entities.
#include <cmath>

#include "host/db/PortDrawing.h"
#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/EntityGeometry.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::PromptStatus;

constexpr double kDegrees = 180.0 / 3.14159265358979323846;

void selectCommand(Session& s) {
  platform::SelectionReply reply = s.selectObjects();
  if (reply.status == PromptStatus::Cancel) return;
  s.setPickFirst(reply.ids);
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
      line(L"center point: " + formatPoint(db, c.center));
      line(L"radius: " + formatReal(db, c.radius));
      break;
    }
    case EntityKind::LwPolyline: {
      const auto& pl = static_cast<const LwPolylineEntity&>(e);
      line(pl.closed ? L"closed" : L"open");
      line(L"elevation: " + formatReal(db, pl.elevation));
      for (const LwVertex& v : pl.vertices) {
        std::wstring text = L"vertex: X=" + formatReal(db, v.x) + L" Y=" + formatReal(db, v.y);
        if (v.bulge != 0.0) text += L" bulge=" + formatReal(db, v.bulge);
        line(text);
      }
      break;
    }
    case EntityKind::Text: {
      const TextData& t = static_cast<const TextEntity&>(e).data;
      line(L"text: \"" + t.text + L"\"");
      line(L"start point: " + formatPoint(db, t.position));
      line(L"height: " + formatReal(db, t.height));
      line(L"rotation: " + formatReal(db, t.rotation * kDegrees));
      break;
    }
    case EntityKind::Arc: {
      const auto& a = static_cast<const ArcEntity&>(e);
      line(L"center point: " + formatPoint(db, a.center));
      line(L"radius: " + formatReal(db, a.radius));
      line(L"start angle: " + formatReal(db, a.startAngle * kDegrees));
      line(L"end angle: " + formatReal(db, a.endAngle * kDegrees));
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
      line(L"block: \"" + (block != nullptr ? block->name : std::wstring()) + L"\"");
      line(L"at point: " + formatPoint(db, b.position));
      line(L"scale: " + formatReal(db, b.scale.x));
      line(L"rotation: " + formatReal(db, b.rotation * kDegrees));
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
    case EntityKind::Polyline2d:
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
  platform::SelectionReply reply = s.selectObjects();
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
