// The port's entity geometry over our database and the geometry library,
// with the curves it makes for the caller kept apart from the drawing.
#pragma once

#include <memory>
#include <unordered_map>

#include "host/db/Database.h"
#include "platform/Geometry3d.h"

namespace host {

class DbEntityGeometry : public platform::EntityGeometry {
 public:
  explicit DbEntityGeometry(Database& db) : db_(db) {}

  platform::EntityClass entityClass(ObjectId entity) const override;
  std::optional<platform::Extents> extents(ObjectId entity) const override;
  std::vector<Point3d> intersectWith(ObjectId a, ObjectId b) const override;
  std::optional<std::pair<double, double>> paramRange(ObjectId curve) const override;
  std::optional<Point3d> pointAtParam(ObjectId curve, double param) const override;
  std::optional<Point3d> startPoint(ObjectId curve) const override;
  std::optional<Point3d> endPoint(ObjectId curve) const override;
  std::optional<double> length(ObjectId curve) const override;
  bool isClosed(ObjectId curve) const override;
  std::optional<double> area(ObjectId curve) const override;
  std::optional<double> volume(ObjectId solid) const override;
  std::vector<Point3d> vertices(ObjectId entity) const override;
  std::vector<double> bulges(ObjectId polyline) const override;
  std::vector<Point3d> fitPoints(ObjectId spline) const override;
  std::optional<Point3d> center(ObjectId curve) const override;
  std::optional<Point3d> position(ObjectId entity) const override;
  std::optional<std::wstring> text(ObjectId entity) const override;
  std::optional<std::wstring> plainText(ObjectId entity) const override;
  std::optional<platform::TextAlignment> textAlignment(ObjectId text) const override;
  std::vector<ObjectId> explode(ObjectId polyline) override;
  ObjectId spline(ObjectId curve) override;
  ObjectId toPolyline(ObjectId spline, int precision) override;
  void release(ObjectId curve) override;
  // Polylines the caller builds (PortPolylines.cpp).
  ObjectId newPolyline() override;
  ObjectId newPolyline3d() override;
  platform::Status addVertexAt(ObjectId polyline, std::size_t index,
                               const platform::Point2d& point) override;
  platform::Status setElevation(ObjectId polyline, double elevation) override;
  platform::Status appendVertex(ObjectId polyline3d, const Point3d& point) override;
  platform::Status setClosed(ObjectId polyline, bool closed) override;
  ObjectId appendToModelSpace(ObjectId curve) override;

  // Curves made for the caller and not yet released, for tests of callers
  // that must release them.
  std::size_t heldCurves() const { return made_.size(); }

 private:
  // An entity of the drawing that opens, or a curve made for the caller.
  const Entity* find(ObjectId id) const;
  ObjectId keep(std::unique_ptr<Entity> curve);
  // A curve made for the caller, or an entity of the drawing saved for undo,
  // to be changed; null if it is none or not a T.
  template <typename T>
  T* edit(ObjectId id);

  Database& db_;
  // Ids of made curves count down from the top, far from the drawing's.
  std::unordered_map<std::uint64_t, std::unique_ptr<Entity>> made_;
  std::uint64_t nextMade_ = ~std::uint64_t{0};
};

}  // namespace host
