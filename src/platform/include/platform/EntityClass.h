// The kinds of entity, in one list with what is known of each kind: its name in
// DXF files, the class name the system's own host gives it, and whether it is a
// curve. Hosts keep their entities by this same enum, so a kind is added here
// and nowhere else; no switch over kinds has a default, so the compiler then
// names each one that must learn of the new kind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace platform {

// X(enumerator, DXF name, class name, curve), in the enum's order. A curve is
// what the geometry answers curve questions of (parameters, points, length).
#define PLATFORM_ENTITY_CLASSES(X)                                   \
  X(Point, "POINT", "AcDbPoint", false)                              \
  X(Line, "LINE", "AcDbLine", true)                                  \
  X(Arc, "ARC", "AcDbArc", true)                                     \
  X(Circle, "CIRCLE", "AcDbCircle", true)                            \
  X(Ellipse, "ELLIPSE", "AcDbEllipse", true)                         \
  X(LwPolyline, "LWPOLYLINE", "AcDbPolyline", true)                  \
  /* The two old-style polylines share their file name. */           \
  X(Polyline2d, "POLYLINE", "AcDb2dPolyline", true)                  \
  X(Polyline3d, "POLYLINE", "AcDb3dPolyline", true)                  \
  X(Spline, "SPLINE", "AcDbSpline", true)                            \
  X(Mline, "MLINE", "AcDbMline", true)                               \
  X(Text, "TEXT", "AcDbText", false)                                 \
  X(MText, "MTEXT", "AcDbMText", false)                              \
  X(BlockReference, "INSERT", "AcDbBlockReference", false)           \
  X(Attribute, "ATTRIB", "AcDbAttribute", false)                     \
  X(AttributeDefinition, "ATTDEF", "AcDbAttributeDefinition", false) \
  X(Solid3d, "3DSOLID", "AcDb3dSolid", false)                        \
  X(Region, "REGION", "AcDbRegion", false)                           \
  X(Hatch, "HATCH", "AcDbHatch", false)

// The exact class of an entity, as the module tells kinds apart.
enum class EntityClass : std::uint8_t {
#define PLATFORM_ENTITY_CLASS_ENUMERATOR(kind, dxf, cls, curve) kind,
  PLATFORM_ENTITY_CLASSES(PLATFORM_ENTITY_CLASS_ENUMERATOR)
#undef PLATFORM_ENTITY_CLASS_ENUMERATOR
  // A kind outside the list, which a host keeps as it found it; also the
  // class of an entity that does not open.
  Unknown,
};

struct EntityClassInfo {
  EntityClass kind;
  std::string_view dxfName;
  std::string_view className;
  bool curve;
};

// Every listed kind, in the enum's order; Unknown is not among them.
inline constexpr EntityClassInfo kEntityClasses[] = {
#define PLATFORM_ENTITY_CLASS_INFO(kind, dxf, cls, curve) {EntityClass::kind, dxf, cls, curve},
    PLATFORM_ENTITY_CLASSES(PLATFORM_ENTITY_CLASS_INFO)
#undef PLATFORM_ENTITY_CLASS_INFO
};

#undef PLATFORM_ENTITY_CLASSES

static_assert(std::size(kEntityClasses) == static_cast<std::size_t>(EntityClass::Unknown));

// Unknown has empty names and is no curve.
constexpr EntityClassInfo entityClassInfo(EntityClass kind) {
  const auto i = static_cast<std::size_t>(kind);
  return i < std::size(kEntityClasses) ? kEntityClasses[i]
                                       : EntityClassInfo{EntityClass::Unknown, {}, {}, false};
}

constexpr std::string_view dxfName(EntityClass kind) {
  return entityClassInfo(kind).dxfName;
}
constexpr std::string_view className(EntityClass kind) {
  return entityClassInfo(kind).className;
}
constexpr bool isCurve(EntityClass kind) {
  return entityClassInfo(kind).curve;
}

// The first listed kind of a DXF name, Unknown for a name not listed. The name
// of the old-style polylines gives the 2D one: only the entity's own tags tell
// the two apart.
constexpr EntityClass entityClassOfDxfName(std::string_view name) {
  for (const EntityClassInfo& info : kEntityClasses) {
    if (info.dxfName == name) return info.kind;
  }
  return EntityClass::Unknown;
}

}  // namespace platform
