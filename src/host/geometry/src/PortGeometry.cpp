// Answers of the port's geometry, by the kind of each entity.
#include "host/geometry/PortGeometry.h"

#include <cmath>

#include "MTextCodes.h"
#include "Solids.h"
#include "Splines.h"
#include "host/geometry/Curves.h"
#include "host/geometry/Extents.h"
#include "host/geometry/Intersections.h"
#include "host/geometry/Ocs.h"

namespace host {

using geometry::CurveKind;
using platform::EntityClass;

const Entity* DbEntityGeometry::find(ObjectId id) const {
  if (auto it = made_.find(id.value()); it != made_.end()) return it->second.get();
  return db_.openEntity(id);
}

ObjectId DbEntityGeometry::keep(std::unique_ptr<Entity> curve) {
  if (!curve) return {};
  const ObjectId id(nextMade_--);
  made_[id.value()] = std::move(curve);
  return id;
}

EntityClass DbEntityGeometry::entityClass(ObjectId id) const {
  const Entity* e = find(id);
  return e != nullptr ? e->kind() : EntityClass::Unknown;
}

std::optional<platform::Extents> DbEntityGeometry::extents(ObjectId id) const {
  platform::Extents box;
  if (auto made = made_.find(id.value()); made != made_.end()) {
    box = geometry::extentsOf(db_, *made->second);
  } else {
    // Asked of every entity at each pick of a selection at a point.
    box = geometry::cachedExtentsOf(db_, id);
  }
  if (box.isEmpty()) return std::nullopt;
  return box;
}

std::vector<Point3d> DbEntityGeometry::intersectWith(ObjectId a, ObjectId b) const {
  const Entity* ea = find(a);
  const Entity* eb = find(b);
  if (ea == nullptr || eb == nullptr) return {};
  return geometry::intersectXY(db_, *ea, *eb);
}

std::optional<std::pair<double, double>> DbEntityGeometry::paramRange(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr) return std::nullopt;
  const auto range = geometry::paramRange(*e);
  if (!range) return std::nullopt;
  return std::make_pair(range->start, range->end);
}

std::optional<Point3d> DbEntityGeometry::pointAtParam(ObjectId id, double param) const {
  const Entity* e = find(id);
  return e != nullptr ? geometry::pointAtParam(*e, param) : std::nullopt;
}

std::optional<Point3d> DbEntityGeometry::startPoint(ObjectId id) const {
  const Entity* e = find(id);
  return e != nullptr ? geometry::startPoint(*e) : std::nullopt;
}

std::optional<Point3d> DbEntityGeometry::endPoint(ObjectId id) const {
  const Entity* e = find(id);
  return e != nullptr ? geometry::endPoint(*e) : std::nullopt;
}

std::optional<double> DbEntityGeometry::length(ObjectId id) const {
  const Entity* e = find(id);
  return e != nullptr ? geometry::curveLength(*e) : std::nullopt;
}

bool DbEntityGeometry::isClosed(ObjectId id) const {
  const Entity* e = find(id);
  return e != nullptr && geometry::isCurve(*e) && geometry::isClosed(*e);
}

std::optional<double> DbEntityGeometry::area(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr) return std::nullopt;
  const std::optional<CurveKind> kind = geometry::curveKindOf(e->kind());
  if (!kind) return std::nullopt;
  switch (*kind) {
    case CurveKind::LwPolyline:
      return geometry::area(static_cast<const LwPolylineEntity&>(*e));
    case CurveKind::Circle: {
      const double r = static_cast<const CircleEntity&>(*e).radius;
      return 3.14159265358979323846 * r * r;
    }
    case CurveKind::Line:
    case CurveKind::Arc:
    case CurveKind::Ellipse:
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Spline:
    case CurveKind::Mline: {
      // Other planar curves: the polygon of their points, closed by the chord.
      const std::vector<Point3d> points = vertices(id);
      if (points.size() < 3) return std::nullopt;
      return platform::planArea(points);
    }
  }
  return std::nullopt;
}

std::optional<double> DbEntityGeometry::volume(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::Solid3d) return std::nullopt;
  return geometry::solidVolume(db_.acisText(*e));
}

std::vector<Point3d> DbEntityGeometry::vertices(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr) return {};
  const std::optional<CurveKind> kind = geometry::curveKindOf(e->kind());
  if (!kind) return {};
  switch (*kind) {
    case CurveKind::Line: {
      const auto& l = static_cast<const LineEntity&>(*e);
      return {l.start, l.end};
    }
    case CurveKind::LwPolyline: {
      const auto& p = static_cast<const LwPolylineEntity&>(*e);
      std::vector<Point3d> points;
      points.reserve(p.vertices.size());
      for (int i = 0; i < geometry::numVerts(p); ++i) points.push_back(geometry::getPointAt(p, i));
      return points;
    }
    case CurveKind::Polyline2d:
    case CurveKind::Polyline3d:
    case CurveKind::Mline:
      return geometry::vertexPositions(*e);
    case CurveKind::Spline:
      return static_cast<const SplineEntity&>(*e).controlPoints;
    case CurveKind::Arc:
    case CurveKind::Circle:
    case CurveKind::Ellipse:
      return {};
  }
  return {};
}

std::vector<double> DbEntityGeometry::bulges(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::LwPolyline) return {};
  std::vector<double> out;
  for (const LwVertex& v : static_cast<const LwPolylineEntity&>(*e).vertices) out.push_back(v.bulge);
  return out;
}

std::vector<Point3d> DbEntityGeometry::fitPoints(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::Spline) return {};
  return static_cast<const SplineEntity&>(*e).fitPoints;
}

std::optional<Point3d> DbEntityGeometry::position(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr) return std::nullopt;
  auto world = [](const TextData& t) { return geometry::Ocs(t.normal).toWorld(t.position); };
  switch (e->kind()) {
    case EntityKind::Point: return static_cast<const PointEntity&>(*e).position;
    case EntityKind::Text: return world(static_cast<const TextEntity&>(*e).data);
    case EntityKind::Attribute: return world(static_cast<const AttributeEntity&>(*e).data);
    case EntityKind::AttributeDefinition:
      return world(static_cast<const AttributeDefinitionEntity&>(*e).data);
    case EntityKind::MText: return static_cast<const MTextEntity&>(*e).position;
    case EntityKind::BlockReference: {
      const auto& b = static_cast<const BlockReferenceEntity&>(*e);
      return geometry::Ocs(b.normal).toWorld(b.position);
    }
    case EntityKind::Line:
    case EntityKind::Arc:
    case EntityKind::Circle:
    case EntityKind::Ellipse:
    case EntityKind::LwPolyline:
    case EntityKind::Polyline2d:
    case EntityKind::Polyline3d:
    case EntityKind::Spline:
    case EntityKind::Mline:
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
    case EntityKind::Unknown:
      return std::nullopt;
  }
  return std::nullopt;
}

std::optional<std::wstring> DbEntityGeometry::plainText(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::MText) return text(id);
  return geometry::mtextPlainText(static_cast<const MTextEntity&>(*e).text);
}

std::optional<platform::TextAlignment> DbEntityGeometry::textAlignment(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::Text) return std::nullopt;
  const TextData& t = static_cast<const TextEntity&>(*e).data;
  return platform::TextAlignment{t.horizontalAlignment, t.verticalAlignment,
                                 geometry::Ocs(t.normal).toWorld(t.alignmentPoint)};
}

std::optional<std::wstring> DbEntityGeometry::text(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr) return std::nullopt;
  switch (e->kind()) {
    case EntityKind::Text: return static_cast<const TextEntity&>(*e).data.text;
    case EntityKind::Attribute: return static_cast<const AttributeEntity&>(*e).data.text;
    case EntityKind::AttributeDefinition:
      return static_cast<const AttributeDefinitionEntity&>(*e).data.text;
    case EntityKind::MText: return static_cast<const MTextEntity&>(*e).text;
    case EntityKind::Point:
    case EntityKind::Line:
    case EntityKind::Arc:
    case EntityKind::Circle:
    case EntityKind::Ellipse:
    case EntityKind::LwPolyline:
    case EntityKind::Polyline2d:
    case EntityKind::Polyline3d:
    case EntityKind::Spline:
    case EntityKind::Mline:
    case EntityKind::BlockReference:
    case EntityKind::Solid3d:
    case EntityKind::Region:
    case EntityKind::Hatch:
    case EntityKind::Unknown:
      return std::nullopt;
  }
  return std::nullopt;
}

std::vector<ObjectId> DbEntityGeometry::explode(ObjectId id) {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::LwPolyline) return {};
  std::vector<ObjectId> pieces;
  for (auto& piece : geometry::explode(static_cast<const LwPolylineEntity&>(*e))) {
    pieces.push_back(keep(std::move(piece)));
  }
  return pieces;
}

ObjectId DbEntityGeometry::spline(ObjectId id) {
  const Entity* e = find(id);
  if (e == nullptr) return {};
  return keep(geometry::splineOf(*e));
}

ObjectId DbEntityGeometry::toPolyline(ObjectId id, int precision) {
  const Entity* e = find(id);
  if (e == nullptr || e->kind() != EntityKind::Spline) return {};
  return keep(geometry::toPolyline(static_cast<const SplineEntity&>(*e), precision));
}

void DbEntityGeometry::release(ObjectId id) { made_.erase(id.value()); }

}  // namespace host
