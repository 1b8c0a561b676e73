// The error layer, its block and the markers placed with them.
#include "values/ErrorMarkers.h"

#include "oddata/Port.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"

namespace zarvel {

void ensureLayer(const std::wstring& name, const platform::RgbColor& color) {
  const std::wstring wanted = toLowerCopy(name);
  for (const std::wstring& existing : layerNames()) {
    if (toLowerCopy(existing) == wanted) return;
  }
  // A host that makes no layers leaves the markers on the current one.
  port().drawing().addLayer(name, color);
}

platform::ObjectId ensureBlock(const std::wstring& name, double radius) {
  platform::Drawing& drawing = port().drawing();
  platform::ObjectId block = drawing.blockIdByName(name);
  if (!block.isNull()) return block;
  block = drawing.addBlock(name, platform::Point3d{});
  if (!block.isNull()) {
    drawing.addCircle(block, platform::Point3d{}, radius, platform::kColorIndexByBlock);
  }
  return block;
}

void placeMarker(platform::ObjectId blockId, const std::wstring& layerName,
                 const platform::Point3d& point, double scale) {
  if (blockId.isNull()) return;
  platform::Drawing& drawing = port().drawing();
  const std::optional<platform::LayerInfo> layer = drawing.layerByName(layerName);
  drawing.addBlockReference(blockId, point, scale, layer ? layer->id : platform::ObjectId(),
                            platform::kColorIndexByLayer);
}

}  // namespace zarvel
