// Block references and their attributes, through the port's drawing.
#include "BlockReferences.h"

#include <optional>

#include "oddata/Port.h"
#include "platform/EntityClass.h"

namespace zarvel {

std::vector<platform::ObjectId> blockReferencesIn(const std::vector<platform::ObjectId>& ids) {
  platform::EntityGeometry& geometry = port().geometry();
  std::vector<platform::ObjectId> references;
  for (const platform::ObjectId id : ids) {
    // An entity that won't open has no class, so it drops out here too.
    if (geometry.entityClass(id) == platform::EntityClass::BlockReference) {
      references.push_back(id);
    }
  }
  return references;
}

std::vector<ReferenceAttribute> attributesOf(platform::ObjectId reference) {
  platform::Drawing& drawing = port().drawing();
  std::vector<ReferenceAttribute> attributes;
  for (const platform::ObjectId id : drawing.attributeIds(reference)) {
    std::optional<std::wstring> tag = drawing.attributeTag(id);
    if (tag) attributes.push_back({id, std::move(*tag)});
  }
  return attributes;
}

}  // namespace zarvel
