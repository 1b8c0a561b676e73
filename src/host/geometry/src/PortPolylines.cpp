// The polylines a caller of the port's geometry builds: made empty, given
// vertices, elevation and the closed flag, then appended to model space.
#include <algorithm>
#include <memory>

#include "host/geometry/Ocs.h"
#include "host/geometry/PortGeometry.h"

namespace host {

using platform::Status;

template <typename T>
T* DbEntityGeometry::edit(ObjectId id) {
  if (auto it = made_.find(id.value()); it != made_.end()) {
    Entity* e = it->second.get();
    return e->kind() == T::kEntityKind ? static_cast<T*>(e) : nullptr;
  }
  const Entity* e = db_.openEntity(id);
  if (e == nullptr || e->kind() != T::kEntityKind) return nullptr;
  return db_.modify<T>(id);
}

std::optional<Point3d> DbEntityGeometry::center(ObjectId id) const {
  const Entity* e = find(id);
  if (e == nullptr) return std::nullopt;
  if (Database::isA<ArcEntity>(e)) {
    const auto& a = static_cast<const ArcEntity&>(*e);
    return geometry::Ocs(a.normal).toWorld(a.center);
  }
  if (Database::isA<CircleEntity>(e)) {
    const auto& c = static_cast<const CircleEntity&>(*e);
    return geometry::Ocs(c.normal).toWorld(c.center);
  }
  if (Database::isA<EllipseEntity>(e)) return static_cast<const EllipseEntity&>(*e).center;
  return std::nullopt;
}

ObjectId DbEntityGeometry::newPolyline() {
  return keep(std::make_unique<LwPolylineEntity>());
}

ObjectId DbEntityGeometry::newPolyline3d() {
  return keep(std::make_unique<Polyline3dEntity>());
}

Status DbEntityGeometry::addVertexAt(ObjectId id, std::size_t index,
                                     const platform::Point2d& point) {
  auto* p = edit<LwPolylineEntity>(id);
  if (p == nullptr) return Status::Failed;
  const std::size_t at = std::min(index, p->vertices.size());
  p->vertices.insert(p->vertices.begin() + static_cast<std::ptrdiff_t>(at),
                     {point.x, point.y, 0.0});
  // Widths are kept per vertex only once one differs from the constant width.
  if (!p->widths.empty()) {
    p->widths.insert(p->widths.begin() + static_cast<std::ptrdiff_t>(at),
                     {p->constantWidth, p->constantWidth});
  }
  return Status::Ok;
}

Status DbEntityGeometry::setElevation(ObjectId id, double elevation) {
  auto* p = edit<LwPolylineEntity>(id);
  if (p == nullptr) return Status::Failed;
  p->elevation = elevation;
  return Status::Ok;
}

Status DbEntityGeometry::appendVertex(ObjectId id, const Point3d& point) {
  auto* p = edit<Polyline3dEntity>(id);
  if (p == nullptr) return Status::Failed;
  PolylineVertex vertex;
  vertex.position = point;
  vertex.flags = 32;  // a 3D polyline's vertex, as files mark it
  p->vertices.push_back(vertex);
  return Status::Ok;
}

Status DbEntityGeometry::setClosed(ObjectId id, bool closed) {
  if (find(id) == nullptr) return Status::Failed;
  if (entityClass(id) == EntityKind::LwPolyline) {
    edit<LwPolylineEntity>(id)->closed = closed;
    return Status::Ok;
  }
  auto* p = edit<Polyline3dEntity>(id);
  if (p == nullptr) return Status::Failed;
  p->flags = static_cast<std::int16_t>(closed ? p->flags | 1 : p->flags & ~1);
  return Status::Ok;
}

ObjectId DbEntityGeometry::appendToModelSpace(ObjectId curve) {
  auto it = made_.find(curve.value());
  if (it == made_.end()) return ObjectId();
  std::unique_ptr<Entity> entity = std::move(it->second);
  made_.erase(it);
  const ObjectId id = db_.addEntity(std::move(entity), db_.modelSpace());
  // A 3D polyline's vertices, and the mark after them, are objects of their
  // own in a file, with handles after the polyline's.
  if (db_.get<Polyline3dEntity>(id) != nullptr) {
    auto& p = *db_.modify<Polyline3dEntity>(id);
    for (PolylineVertex& v : p.vertices) v.handle = db_.takeHandle();
    p.seqendHandle = db_.takeHandle();
  }
  return id;
}

}  // namespace host
