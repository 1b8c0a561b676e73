// Drawing entities: the properties all of them share, and one class per kind.
// Angles are in radians. What a kind keeps here is what the host works with;
// whatever else its file form holds stays in the entity's source text.
#pragma once

#include <string>
#include <vector>

#include "host/db/DeepPtr.h"
#include "host/db/Objects.h"
#include "platform/EntityClass.h"
#include "platform/Geometry.h"

namespace host {

using platform::Point3d;

// The port's kinds are the host's: one list, with each kind's names and
// whether it is a curve. Unknown is a kind this host does not model, kept as
// its text.
using EntityKind = platform::EntityClass;

inline constexpr std::int16_t kColorByBlock = 0;
inline constexpr std::int16_t kColorByLayer = 256;
inline constexpr std::int16_t kLineweightByLayer = -1;

// A hyperlink, as the host keeps it on an entity.
struct Hyperlink {
  std::wstring url;
  std::wstring description;
  std::wstring subLocation;
};

// Properties most entities leave at their defaults; they cost a pointer until set.
struct RareProperties {
  ObjectId linetype;               // null: by layer
  std::int32_t trueColor = -1;     // 0x00RRGGBB, -1 for none
  std::wstring colorName;          // a colour book's name, empty for none
  std::int32_t transparency = -1;  // -1 by layer
  double linetypeScale = 1.0;
  Handle plotStyle = 0;  // 0 by layer
  std::vector<Hyperlink> hyperlinks;
};

class Entity : public DbObject {
 public:
  explicit Entity(EntityKind kind) : DbObject(ObjectType::Entity), kind_(kind) {}
  static constexpr ObjectType kObjectType = ObjectType::Entity;

  EntityKind kind() const { return kind_; }

  ObjectId layer;
  std::int16_t color = kColorByLayer;
  std::int16_t lineweight = kLineweightByLayer;
  bool invisible = false;
  DeepPtr<RareProperties> rare;

  // Most entities draw with their layer's linetype, so it lives with the rare ones.
  ObjectId linetype() const { return rare ? rare->linetype : ObjectId(); }
  void setLinetype(ObjectId id) {
    if (!id.isNull() || rare) rare.make().linetype = id;
  }

 protected:
  Entity(const Entity&) = default;
  Entity& operator=(const Entity&) = default;

 private:
  EntityKind kind_;
};

// Copies the properties every entity has (layer, linetype, colour, lineweight,
// visibility and the rare ones) from one entity to another of any kind.
inline void copyCommonProperties(const Entity& from, Entity& to) {
  to.layer = from.layer;
  to.color = from.color;
  to.lineweight = from.lineweight;
  to.invisible = from.invisible;
  to.rare = from.rare;
}

template <typename Derived, EntityKind kKind>
class EntityOf : public Entity {
 public:
  static constexpr EntityKind kEntityKind = kKind;
  EntityOf() : Entity(kKind) {}
  std::unique_ptr<DbObject> clone() const override {
    return std::make_unique<Derived>(static_cast<const Derived&>(*this));
  }
};

inline constexpr Point3d kUnitZ{0.0, 0.0, 1.0};

class PointEntity : public EntityOf<PointEntity, EntityKind::Point> {
 public:
  Point3d position;
};

class LineEntity : public EntityOf<LineEntity, EntityKind::Line> {
 public:
  Point3d start;
  Point3d end;
};

// Arcs and circles lie in the plane of their normal; the centre is in the
// entity's coordinate system of that plane, as the file keeps it.
class ArcEntity : public EntityOf<ArcEntity, EntityKind::Arc> {
 public:
  Point3d center;
  double radius = 0.0;
  double startAngle = 0.0;
  double endAngle = 0.0;
  Point3d normal = kUnitZ;
};

class CircleEntity : public EntityOf<CircleEntity, EntityKind::Circle> {
 public:
  Point3d center;
  double radius = 0.0;
  Point3d normal = kUnitZ;
};

// Centre and major axis in world coordinates; the parameters run from 0 to 2 pi
// for a full ellipse.
class EllipseEntity : public EntityOf<EllipseEntity, EntityKind::Ellipse> {
 public:
  Point3d center;
  Point3d majorAxis{1.0, 0.0, 0.0};
  double ratio = 1.0;
  double startParam = 0.0;
  double endParam = 6.283185307179586;
  Point3d normal = kUnitZ;
};

struct LwVertex {
  double x = 0.0;
  double y = 0.0;
  double bulge = 0.0;
};

struct SegmentWidth {
  double start = 0.0;
  double end = 0.0;
};

class LwPolylineEntity : public EntityOf<LwPolylineEntity, EntityKind::LwPolyline> {
 public:
  std::vector<LwVertex> vertices;
  // Empty, or one per vertex.
  std::vector<SegmentWidth> widths;
  double constantWidth = 0.0;
  double elevation = 0.0;
  bool closed = false;
  Point3d normal = kUnitZ;
};

// A vertex of an old-style polyline; in files each is an entity of its own.
struct PolylineVertex {
  Point3d position;
  double bulge = 0.0;
  double startWidth = 0.0;
  double endWidth = 0.0;
  std::int16_t flags = 0;
  Handle handle = 0;
};

class Polyline2dEntity : public EntityOf<Polyline2dEntity, EntityKind::Polyline2d> {
 public:
  std::vector<PolylineVertex> vertices;
  double elevation = 0.0;
  std::int16_t flags = 0;  // 1 closed; the file's other bits are kept
  Point3d normal = kUnitZ;
  Handle seqendHandle = 0;
  bool closed() const { return (flags & 1) != 0; }
};

class Polyline3dEntity : public EntityOf<Polyline3dEntity, EntityKind::Polyline3d> {
 public:
  std::vector<PolylineVertex> vertices;
  std::int16_t flags = 8;  // 8 marks a 3D polyline; 1 closed
  Handle seqendHandle = 0;
  bool closed() const { return (flags & 1) != 0; }
};

class SplineEntity : public EntityOf<SplineEntity, EntityKind::Spline> {
 public:
  std::int16_t degree = 3;
  std::int16_t flags = 0;  // 1 closed, 2 periodic, 4 rational, 8 planar
  std::vector<double> knots;
  std::vector<Point3d> controlPoints;
  std::vector<double> weights;  // empty, or one per control point
  std::vector<Point3d> fitPoints;
  Point3d normal = kUnitZ;
  bool closed() const { return (flags & 1) != 0; }
};

struct MlineVertex {
  Point3d position;
  Point3d direction;
  Point3d miter;
  // Per element of the style: its parameters and its fill parameters.
  std::vector<std::vector<double>> elementParams;
  std::vector<std::vector<double>> fillParams;
};

class MlineEntity : public EntityOf<MlineEntity, EntityKind::Mline> {
 public:
  std::wstring styleName;
  Handle styleHandle = 0;
  double scale = 1.0;
  std::int16_t justification = 0;
  std::int16_t flags = 0;  // 2 closed
  std::int16_t styleElements = 0;
  Point3d start;
  std::vector<MlineVertex> vertices;
  Point3d normal = kUnitZ;
  bool closed() const { return (flags & 2) != 0; }
};

// What single-line texts, attributes and attribute definitions share.
struct TextData {
  Point3d position;
  Point3d alignmentPoint;
  double height = 2.5;
  double rotation = 0.0;
  double widthFactor = 1.0;
  double oblique = 0.0;
  std::wstring styleName = L"Standard";
  std::int16_t horizontalAlignment = 0;  // 0 left, 1 centre, 2 right, 3 aligned, 4 middle, 5 fit
  std::int16_t verticalAlignment = 0;    // 0 baseline, 1 bottom, 2 middle, 3 top
  std::int16_t generation = 0;           // 2 backwards, 4 upside down
  std::wstring text;
  Point3d normal = kUnitZ;
};

class TextEntity : public EntityOf<TextEntity, EntityKind::Text> {
 public:
  TextData data;
};

class AttributeEntity : public EntityOf<AttributeEntity, EntityKind::Attribute> {
 public:
  TextData data;
  std::wstring tag;
  std::int16_t flags = 0;  // 1 invisible, 2 constant, 4 verify, 8 preset
};

class AttributeDefinitionEntity
    : public EntityOf<AttributeDefinitionEntity, EntityKind::AttributeDefinition> {
 public:
  TextData data;
  std::wstring tag;
  std::wstring prompt;
  std::int16_t flags = 0;
};

class MTextEntity : public EntityOf<MTextEntity, EntityKind::MText> {
 public:
  Point3d position;
  double height = 2.5;
  double referenceWidth = 0.0;
  std::int16_t attachment = 1;  // 1 top left ... 9 bottom right
  Point3d direction{1.0, 0.0, 0.0};
  double rotation = 0.0;
  double lineSpacing = 1.0;
  std::wstring styleName = L"Standard";
  std::wstring text;  // with its formatting codes
  Point3d normal = kUnitZ;
  // Files before 2018 keep each further column of a text in columns as an
  // MTEXT of its own, which the first names: the handles of those, in order.
  std::vector<Handle> columns;
};

class BlockReferenceEntity : public EntityOf<BlockReferenceEntity, EntityKind::BlockReference> {
 public:
  ObjectId block;
  Point3d position;
  Point3d scale{1.0, 1.0, 1.0};
  double rotation = 0.0;
  std::int16_t columns = 1;
  std::int16_t rows = 1;
  double columnSpacing = 0.0;
  double rowSpacing = 0.0;
  Point3d normal = kUnitZ;
  // Attribute entities, owned by the reference, in order.
  std::vector<ObjectId> attributes;
  Handle seqendHandle = 0;
};

// Solids, regions and hatches keep their data as their source text; the
// geometry reads what it needs from there.
class Solid3dEntity : public EntityOf<Solid3dEntity, EntityKind::Solid3d> {};
class RegionEntity : public EntityOf<RegionEntity, EntityKind::Region> {};
class HatchEntity : public EntityOf<HatchEntity, EntityKind::Hatch> {};

class UnknownEntity : public EntityOf<UnknownEntity, EntityKind::Unknown> {
 public:
  std::string dxfName;
  // Handles of the entities that follow it in the file up to its SEQEND (a
  // mesh's vertices), which are its own.
  std::vector<Handle> followers;
};

// The DXF name of an entity, its own for a kind the host does not model.
std::wstring typeName(const Entity& entity);

}  // namespace host
