// What the attribute commands read of block references.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectId.h"

namespace zarvel {

// The ids that open as block references of that exact class, in order.
std::vector<platform::ObjectId> blockReferencesIn(const std::vector<platform::ObjectId>& ids);

struct ReferenceAttribute {
  platform::ObjectId id;
  std::wstring tag;
};

// The reference's attributes that open, with their tags, in its order.
std::vector<ReferenceAttribute> attributesOf(platform::ObjectId reference);

}  // namespace zarvel
