// Drawing entities: the common part and one class per kind.
#pragma once

#include <string>
#include <vector>

#include "db/Objects.h"
#include "platform/Geometry.h"

namespace host {

using platform::Point3d;

enum class EntityKind : std::uint8_t { Point, Line, LwPolyline, Circle, Text };

// The DXF name of a kind, as listings print it.
const wchar_t* kindName(EntityKind kind);

class Entity : public DbObject {
 public:
  explicit Entity(EntityKind kind) : DbObject(ObjectType::Entity), kind_(kind) {}
  static constexpr ObjectType kObjectType = ObjectType::Entity;

  EntityKind kind() const { return kind_; }

  ObjectId layer;

 protected:
  Entity(const Entity&) = default;
  Entity& operator=(const Entity&) = default;

 private:
  EntityKind kind_;
};

template <typename Derived, EntityKind kKind>
class EntityOf : public Entity {
 public:
  static constexpr EntityKind kEntityKind = kKind;
  EntityOf() : Entity(kKind) {}
  std::unique_ptr<DbObject> clone() const override {
    return std::make_unique<Derived>(static_cast<const Derived&>(*this));
  }
};

class PointEntity : public EntityOf<PointEntity, EntityKind::Point> {
 public:
  Point3d position;
};

class LineEntity : public EntityOf<LineEntity, EntityKind::Line> {
 public:
  Point3d start;
  Point3d end;
};

struct LwVertex {
  double x = 0.0;
  double y = 0.0;
  double bulge = 0.0;
};

class LwPolylineEntity : public EntityOf<LwPolylineEntity, EntityKind::LwPolyline> {
 public:
  std::vector<LwVertex> vertices;
  double elevation = 0.0;
  bool closed = false;
};

class CircleEntity : public EntityOf<CircleEntity, EntityKind::Circle> {
 public:
  Point3d center;
  double radius = 0.0;
};

class TextEntity : public EntityOf<TextEntity, EntityKind::Text> {
 public:
  Point3d position;
  double height = 2.5;
  double rotation = 0.0;  // radians
  std::wstring text;
};

}  // namespace host
