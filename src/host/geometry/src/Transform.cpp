// Translation of each kind. Planar kinds keep OCS points, so the displacement
// is taken into their plane's axes first.
#include "host/geometry/Transform.h"

#include "host/geometry/Ocs.h"

namespace host::geometry {
namespace {

void shift(Point3d& p, const Point3d& d) { p = plus(p, d); }

void shiftText(TextData& t, const Point3d& world) {
  const Point3d d = Ocs(t.normal).fromWorld(world);
  shift(t.position, d);
  shift(t.alignmentPoint, d);
}

}  // namespace

bool translate(Entity& entity, const Point3d& delta) {
  switch (entity.kind()) {
    case EntityKind::Point: shift(static_cast<PointEntity&>(entity).position, delta); return true;
    case EntityKind::Line: {
      auto& l = static_cast<LineEntity&>(entity);
      shift(l.start, delta);
      shift(l.end, delta);
      return true;
    }
    case EntityKind::Arc: {
      auto& a = static_cast<ArcEntity&>(entity);
      shift(a.center, Ocs(a.normal).fromWorld(delta));
      return true;
    }
    case EntityKind::Circle: {
      auto& c = static_cast<CircleEntity&>(entity);
      shift(c.center, Ocs(c.normal).fromWorld(delta));
      return true;
    }
    case EntityKind::Ellipse: shift(static_cast<EllipseEntity&>(entity).center, delta); return true;
    case EntityKind::LwPolyline: {
      auto& p = static_cast<LwPolylineEntity&>(entity);
      const Point3d d = Ocs(p.normal).fromWorld(delta);
      for (LwVertex& v : p.vertices) {
        v.x += d.x;
        v.y += d.y;
      }
      p.elevation += d.z;
      return true;
    }
    case EntityKind::Polyline2d: {
      auto& p = static_cast<Polyline2dEntity&>(entity);
      const Point3d d = Ocs(p.normal).fromWorld(delta);
      for (PolylineVertex& v : p.vertices) shift(v.position, {d.x, d.y, 0.0});
      p.elevation += d.z;
      return true;
    }
    case EntityKind::Polyline3d:
      for (PolylineVertex& v : static_cast<Polyline3dEntity&>(entity).vertices) {
        shift(v.position, delta);
      }
      return true;
    case EntityKind::Spline: {
      auto& s = static_cast<SplineEntity&>(entity);
      for (Point3d& p : s.controlPoints) shift(p, delta);
      for (Point3d& p : s.fitPoints) shift(p, delta);
      return true;
    }
    case EntityKind::Mline: {
      auto& m = static_cast<MlineEntity&>(entity);
      shift(m.start, delta);
      for (MlineVertex& v : m.vertices) shift(v.position, delta);
      return true;
    }
    case EntityKind::Text: shiftText(static_cast<TextEntity&>(entity).data, delta); return true;
    case EntityKind::Attribute:
      shiftText(static_cast<AttributeEntity&>(entity).data, delta);
      return true;
    case EntityKind::AttributeDefinition:
      shiftText(static_cast<AttributeDefinitionEntity&>(entity).data, delta);
      return true;
    case EntityKind::MText: shift(static_cast<MTextEntity&>(entity).position, delta); return true;
    case EntityKind::BlockReference: {
      auto& b = static_cast<BlockReferenceEntity&>(entity);
      shift(b.position, Ocs(b.normal).fromWorld(delta));
      return true;
    }
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
    case EntityKind::Unknown:
      return false;
  }
  return false;
}

}  // namespace host::geometry
