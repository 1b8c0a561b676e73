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
};

}  // namespace platform
