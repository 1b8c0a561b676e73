// LIST: what the drawing holds of each selected entity, in world coordinates.
#include <cmath>

#include "host/db/PortDrawing.h"
#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/Ocs.h"
#include "platform/Text.h"

namespace host {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kDegrees = 180.0 / kPi;

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
  bool tilted() const { return !ocs_.isWorld(); }
  const Point3d& normal() const { return normal_; }

 private:
  Point3d normal_;
  geometry::Ocs ocs_;
};

// Prints the lines of one entity, indented under its heading.
class Lister {
 public:
  explicit Lister(Session& s) : s_(s), db_(s.db()) {}

  void entity(const Entity& e) {
    switch (e.kind()) {
      case EntityKind::Point:
        line(L"at point: " + point(static_cast<const PointEntity&>(e).position));
        return;
      case EntityKind::Line:
        return lineEntity(static_cast<const LineEntity&>(e));
      case EntityKind::Circle:
        return circle(static_cast<const CircleEntity&>(e));
      case EntityKind::Arc:
        return arc(static_cast<const ArcEntity&>(e));
      case EntityKind::Ellipse:
        return ellipse(static_cast<const EllipseEntity&>(e));
      case EntityKind::LwPolyline:
        return lwPolyline(static_cast<const LwPolylineEntity&>(e));
      case EntityKind::Polyline2d:
        return polyline2d(static_cast<const Polyline2dEntity&>(e));
      case EntityKind::Polyline3d:
        return polyline3d(static_cast<const Polyline3dEntity&>(e));
      case EntityKind::Spline:
        return spline(static_cast<const SplineEntity&>(e));
      case EntityKind::Text:
        return text(static_cast<const TextEntity&>(e).data);
      case EntityKind::BlockReference:
        return reference(static_cast<const BlockReferenceEntity&>(e));
      case EntityKind::AttributeDefinition:
        return definition(static_cast<const AttributeDefinitionEntity&>(e));
      case EntityKind::Mline:
      case EntityKind::MText:
      case EntityKind::Attribute:
      case EntityKind::Solid3d:
      case EntityKind::Region:
      case EntityKind::Hatch:
      case EntityKind::Unknown:
        return;
    }
  }

 private:
  void line(const std::wstring& text) { s_.print(L"  " + text + L"\n"); }
  std::wstring point(const Point3d& p) const { return formatPoint(db_, p); }
  std::wstring real(double v) const { return formatReal(db_, v); }
  std::wstring degrees(double radians) const { return real(radians * kDegrees); }
  void extrusion(const PlaneListing& plane) {
    if (plane.tilted()) line(L"extrusion: " + point(plane.normal()));
  }

  void lineEntity(const LineEntity& l) {
    line(L"from point: " + point(l.start));
    line(L"to point: " + point(l.end));
    line(L"length: " +
         real(std::sqrt(std::pow(l.end.x - l.start.x, 2) + std::pow(l.end.y - l.start.y, 2) +
                        std::pow(l.end.z - l.start.z, 2))));
  }

  void circle(const CircleEntity& c) {
    const PlaneListing plane(c.normal);
    line(L"center point: " + point(plane.point(c.center)));
    line(L"radius: " + real(c.radius));
    extrusion(plane);
  }

  void arc(const ArcEntity& a) {
    const PlaneListing plane(a.normal);
    // Seen from above, a mirrored arc runs from its end to its start.
    const bool swap = plane.flipped();
    line(L"center point: " + point(plane.point(a.center)));
    line(L"radius: " + real(a.radius));
    line(L"start angle: " + degrees(plane.angle(swap ? a.endAngle : a.startAngle)));
    line(L"end angle: " + degrees(plane.angle(swap ? a.startAngle : a.endAngle)));
    extrusion(plane);
  }

  void ellipse(const EllipseEntity& el) {
    line(L"center point: " + point(el.center));
    line(L"major axis: " + point(el.majorAxis));
    line(L"radius ratio: " + real(el.ratio));
  }

  // The vertices of a polyline in its plane, at its elevation: in a level
  // plane X and Y, the elevation being the height; in a tilted one, points.
  void planeVertices(const PlaneListing& plane, const std::vector<LwVertex>& vertices,
                     double elevation) {
    if (plane.level()) line(L"elevation: " + real(plane.point({0.0, 0.0, elevation}).z));
    for (const LwVertex& v : vertices) {
      const Point3d at = plane.point({v.x, v.y, elevation});
      std::wstring text = plane.level() ? L"vertex: X=" + real(at.x) + L" Y=" + real(at.y)
                                        : L"vertex: " + point(at);
      if (v.bulge != 0.0) text += L" bulge=" + real(plane.bulge(v.bulge));
      line(text);
    }
    extrusion(plane);
  }

  void lwPolyline(const LwPolylineEntity& pl) {
    line(pl.closed ? L"closed" : L"open");
    planeVertices(PlaneListing(pl.normal), pl.vertices, pl.elevation);
  }

  void polyline2d(const Polyline2dEntity& pl) {
    line(std::wstring(pl.closed() ? L"closed" : L"open") + L" 2D polyline");
    std::vector<LwVertex> vertices;
    for (const PolylineVertex& v : pl.vertices) {
      vertices.push_back({v.position.x, v.position.y, v.bulge});
    }
    planeVertices(PlaneListing(pl.normal), vertices, pl.elevation);
  }

  void polyline3d(const Polyline3dEntity& pl) {
    line(std::wstring(pl.closed() ? L"closed" : L"open") + L" 3D polyline");
    for (const PolylineVertex& v : pl.vertices) line(L"vertex: " + point(v.position));
  }

  void spline(const SplineEntity& sp) {
    line(L"degree: " + std::to_wstring(sp.degree) + (sp.closed() ? L", closed" : L", open"));
    for (const Point3d& p : sp.fitPoints) line(L"fit point: " + point(p));
    line(L"control points: " + std::to_wstring(sp.controlPoints.size()));
  }

  void text(const TextData& t) {
    const PlaneListing plane(t.normal);
    line(L"text: \"" + t.text + L"\"");
    line(L"start point: " + point(plane.point(t.position)));
    line(L"height: " + real(t.height));
    line(L"rotation: " + degrees(plane.angle(t.rotation)));
    extrusion(plane);
  }

  void reference(const BlockReferenceEntity& b) {
    const BlockRecord* block = db_.get<BlockRecord>(b.block);
    const PlaneListing plane(b.normal);
    line(L"block: \"" + (block != nullptr ? block->name : std::wstring()) + L"\"");
    line(L"at point: " + point(plane.point(b.position)));
    line(L"scale: " + real(b.scale.x));
    line(L"rotation: " + degrees(plane.angle(b.rotation)));
    extrusion(plane);
    for (ObjectId id : b.attributes) {
      if (const auto* a = db_.get<AttributeEntity>(id)) {
        line(L"attribute " + a->tag + L": \"" + a->data.text + L"\"");
      }
    }
  }

  void definition(const AttributeDefinitionEntity& d) {
    line(L"tag: " + d.tag);
    line(L"prompt: \"" + d.prompt + L"\"");
    line(L"default: \"" + d.data.text + L"\"");
  }

  Session& s_;
  const Database& db_;
};

// The display properties that are not "by layer", as one line under the
// heading; empty when all of them are.
std::wstring displayProperties(const Database& db, const Entity& e) {
  std::wstring text;
  const auto add = [&text](const std::wstring& part) { text += L"  " + part; };
  if (e.color != kColorByLayer) {
    add(L"Color: " + (e.color == kColorByBlock ? L"BYBLOCK" : std::to_wstring(e.color)));
  }
  if (e.rare && e.rare->trueColor != -1) {
    const std::int32_t c = e.rare->trueColor;
    add(platform::format(L"True color: %d,%d,%d", (c >> 16) & 0xFF, (c >> 8) & 0xFF, c & 0xFF));
  }
  if (e.rare && !e.rare->colorName.empty()) add(L"Color book: \"" + e.rare->colorName + L"\"");
  if (!e.linetype().isNull()) {
    const auto* linetype = db.get<TaggedObject>(e.linetype());
    add(L"Linetype: \"" + (linetype != nullptr ? linetype->name : std::wstring()) + L"\"");
  }
  if (e.rare && e.rare->linetypeScale != 1.0) {
    add(L"Linetype scale: " + formatReal(db, e.rare->linetypeScale));
  }
  if (e.lineweight == -2) add(L"Lineweight: BYBLOCK");
  if (e.lineweight == -3) add(L"Lineweight: DEFAULT");
  if (e.lineweight >= 0) add(platform::format(L"Lineweight: %.2f mm", e.lineweight / 100.0));
  return text.empty() ? text : text + L"\n";
}

void listCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids) return;
  const Database& db = s.db();
  for (ObjectId id : *ids) {
    const Entity* e = db.entity(id);
    if (e == nullptr) continue;
    const Layer* layer = db.get<Layer>(e->layer);
    s.print(typeName(*e) + L"  Layer: \"" + (layer != nullptr ? layer->name : L"") +
            L"\"  Space: " + (e->owner == db.modelSpace() ? L"Model space" : L"Paper space") +
            L"  Handle = " + handleToText(e->handle) + L"\n");
    s.print(displayProperties(db, *e));
    Lister(s).entity(*e);
    if (const OdRecordList* od = db.odRecords(id)) {
      s.print(L"  Object Data records: " + std::to_wstring(od->count()) + L"\n");
    }
  }
}

}  // namespace

void registerListCommand(Session& session) {
  session.addHostCommand({L"LIST", listCommand, true, L"lists entities"});
}

}  // namespace host
