// The drawing database as the module reads it: spaces, layers and entities.
// Every query opens the object for read and closes it again; an object that
// cannot be opened answers with an empty optional (or the empty string).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/ObjectId.h"
#include "platform/Status.h"

namespace platform {

struct RgbColor {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

// Colour indices with a meaning of their own.
inline constexpr std::int16_t kColorIndexByBlock = 0;
inline constexpr std::int16_t kColorIndexByLayer = 256;

struct LayerInfo {
  ObjectId id;
  std::wstring name;
  bool frozen = false;
  bool locked = false;
  bool off = false;
  bool hidden = false;
};

// An entity's colour: an index (0 by block, 256 by layer, 1 to 255 the
// palette's) and, for a true colour, its 0x00RRGGBB and a colour book's name.
struct EntityColor {
  short index = 256;
  std::int32_t trueColor = -1;
  std::wstring bookName;
};

// The display properties one entity can hand on to another.
struct EntityProperties {
  EntityColor color;
  ObjectId layer;
  ObjectId linetype;  // null: by layer
  double linetypeScale = 1.0;
  short lineWeight = -1;  // hundredths of a millimetre; -1 by layer, -2 by block, -3 default
};

// An entry of an extension dictionary copied by copyExtensionEntries: its
// name and the token of the copy the host keeps.
struct ExtensionEntryCopy {
  std::wstring name;
  std::uint64_t copy = 0;
};

class Drawing {
 public:
  virtual ~Drawing() = default;

  // Block table records of the two spaces.
  virtual ObjectId modelSpaceId() const = 0;
  virtual ObjectId paperSpaceId() const = 0;
  // The block of that name, null if there is none.
  virtual ObjectId blockIdByName(const std::wstring& name) const = 0;
  // Ids of the entities of a block record in its iteration order; no entity is
  // opened, so entities that would fail to open are included.
  virtual std::vector<ObjectId> blockEntityIds(ObjectId block) const = 0;

  // Whether the entity can be opened for read.
  virtual bool canOpen(ObjectId entity) const = 0;
  virtual std::optional<ObjectId> entityLayerId(ObjectId entity) const = 0;
  virtual std::optional<std::wstring> entityLayerName(ObjectId entity) const = 0;
  // The handle as upper-case hexadecimal text; empty if it won't open.
  virtual std::wstring handleText(ObjectId object) const = 0;

  // The layer table in its order.
  virtual std::vector<LayerInfo> layers() const = 0;
  virtual std::optional<LayerInfo> layerByName(const std::wstring& name) const = 0;

  // A point entity appended to model space on the current layer, for a module
  // that needs an entity of its own for a moment; null if the host makes none.
  virtual ObjectId addPoint(const Point3d& /*position*/) { return ObjectId(); }
  virtual Status eraseEntity(ObjectId /*entity*/) { return Status::Failed; }

  // The entity's display properties; empty if it won't open (or the host
  // keeps none).
  virtual std::optional<EntityProperties> entityProperties(ObjectId /*entity*/) const {
    return std::nullopt;
  }
  // Gives the entity those properties, and its own parts with it (a block
  // reference's attributes); Failed if it won't open for write.
  virtual Status setEntityProperties(ObjectId /*entity*/, const EntityProperties& /*properties*/) {
    return Status::Failed;
  }

  // A block reference's block name; a dynamic block's reference goes by the
  // dynamic block's own name, not by its anonymous block's. Empty if the
  // reference or its block won't open.
  virtual std::wstring blockNameOfReference(ObjectId /*reference*/) const { return {}; }
  // The attributes a block reference owns, in its order; none if it won't open.
  virtual std::vector<ObjectId> attributeIds(ObjectId /*reference*/) const { return {}; }
  // An attribute's tag; empty if it won't open. Its text is the geometry's.
  virtual std::optional<std::wstring> attributeTag(ObjectId /*attribute*/) const {
    return std::nullopt;
  }
  // Gives an attribute a new text within the command's undo step; Failed if
  // it won't open for write.
  virtual Status setAttributeText(ObjectId /*attribute*/, const std::wstring& /*text*/) {
    return Status::Failed;
  }
  // Gives the target the source's colour, layer, linetype, line weight,
  // visibility, transparency, linetype scale, plot style and hyperlinks, as
  // far as the host keeps them; Failed if either won't open. A host that keeps
  // no more than EntityProperties carries those.
  virtual Status copyEntityProperties(ObjectId target, ObjectId source) {
    const std::optional<EntityProperties> properties = entityProperties(source);
    return properties ? setEntityProperties(target, *properties) : Status::Failed;
  }

  // Objects a module adds to the drawing for good, each within the command's
  // undo step; a host that makes none answers null.
  // A layer thawed, on and unlocked, in that colour; null if the name is taken.
  virtual ObjectId addLayer(const std::wstring& /*name*/, const RgbColor& /*color*/) {
    return ObjectId();
  }
  // An empty block definition; null if the name is taken.
  virtual ObjectId addBlock(const std::wstring& /*name*/, const Point3d& /*origin*/) {
    return ObjectId();
  }
  // A circle in the plane of XY, appended to a block definition.
  virtual ObjectId addCircle(ObjectId /*block*/, const Point3d& /*center*/, double /*radius*/,
                             std::int16_t /*colorIndex*/) {
    return ObjectId();
  }
  // A reference of the block in model space, scaled alike along all three axes.
  virtual ObjectId addBlockReference(ObjectId /*block*/, const Point3d& /*position*/,
                                     double /*scale*/, ObjectId /*layer*/,
                                     std::int16_t /*colorIndex*/) {
    return ObjectId();
  }

  // Entries of an entity's extension dictionary, copied out of the drawing:
  // each copy belongs to no drawing and stays with the host, under its token,
  // until it is released. An entity without a dictionary (or one that won't
  // open, or a host that keeps none) has no entries.
  virtual std::vector<ExtensionEntryCopy> copyExtensionEntries(ObjectId /*entity*/) { return {}; }
  // Puts a fresh copy of a kept one into the entity's extension dictionary
  // under the name, making the dictionary if the entity has none; Failed if
  // the entity won't open for write or the token names no kept copy.
  virtual Status putExtensionEntry(ObjectId /*entity*/, const std::wstring& /*name*/,
                                   std::uint64_t /*copy*/) {
    return Status::Failed;
  }
  virtual void releaseExtensionEntry(std::uint64_t /*copy*/) {}
};

}  // namespace platform
