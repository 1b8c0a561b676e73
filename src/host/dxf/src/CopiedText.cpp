// Handles are matched by position: the copy's followers and columns stand in
// the order of the original's, which is the order of the original's text.
#include "CopiedText.h"

#include <unordered_map>

#include "EntityCommon.h"
#include "EntityKinds.h"
#include "GroupCodes.h"
#include "host/db/PortDrawing.h"
#include "platform/Text.h"

namespace host::dxf {
namespace {

using HandleMap = std::unordered_map<Handle, Handle>;

// The handles of the entities that follow the copy in a file, in order.
std::vector<Handle> followerHandles(const Entity& e, const WriteContext& context) {
  std::vector<Handle> handles;
  const auto addVertices = [&](const auto& polyline) {
    for (const PolylineVertex& v : polyline.vertices) handles.push_back(v.handle);
    handles.push_back(polyline.seqendHandle);
  };
  switch (e.kind()) {
    case EntityKind::Polyline2d:
      addVertices(static_cast<const Polyline2dEntity&>(e));
      break;
    case EntityKind::Polyline3d:
      addVertices(static_cast<const Polyline3dEntity&>(e));
      break;
    case EntityKind::BlockReference: {
      const auto& reference = static_cast<const BlockReferenceEntity&>(e);
      for (ObjectId a : reference.attributes) handles.push_back(context.handleOf(a));
      handles.push_back(reference.seqendHandle);
      break;
    }
    case EntityKind::Unknown:
      handles = static_cast<const UnknownEntity&>(e).followers;
      break;
    default:
      break;
  }
  return handles;
}

void pair(HandleMap& map, Handle original, Handle copy) {
  if (original != 0 && copy != 0 && original != copy) map.emplace(original, copy);
}

HandleMap handleMap(const Tag* begin, const Tag* end, const Entity& copy,
                    const WriteContext& context) {
  HandleMap map;
  const Tag* own = entity::entityEnd(begin, end);
  pair(map, entity::handleOfEntity(begin, own), copy.handle);
  const std::vector<Handle> followers = followerHandles(copy, context);
  std::size_t i = 0;
  for (const Tag* p = own; p < end && i < followers.size(); ++i) {
    const Tag* next = entity::entityEnd(p, end);
    pair(map, entity::handleOfEntity(p, next), followers[i]);
    p = next;
  }
  if (copy.kind() == EntityKind::MText) {
    const std::vector<Handle> original = entity::mtextColumnHandles(begin, own);
    const std::vector<Handle>& columns = static_cast<const MTextEntity&>(copy).columns;
    for (std::size_t k = 0; k < original.size() && k < columns.size(); ++k) {
      pair(map, original[k], columns[k]);
    }
  }
  return map;
}

bool isHandleCode(int code) {
  return code == 5 || valueType(code) == ValueType::Handle;
}

}  // namespace

std::vector<Tag> tagsForCopy(const std::vector<Tag>& original, const Entity& copy,
                             const WriteContext& context, std::deque<std::string>& storage) {
  std::vector<Tag> tags;
  if (original.empty()) return tags;
  const HandleMap map =
      handleMap(original.data(), original.data() + original.size(), copy, context);
  tags.reserve(original.size());
  bool inMain = true;
  int depth = 0;
  for (std::size_t i = 0; i < original.size(); ++i) {
    const Tag& t = original[i];
    if (t.code == 0) inMain = i == 0;
    if (t.code == 102) {
      const bool opens = !t.value.empty() && t.value.front() == '{';
      const bool dropped =
          t.value == "{ACAD_REACTORS" || (!inMain && t.value == "{ACAD_XDICTIONARY");
      if (opens && dropped) {
        while (i + 1 < original.size() && original[i + 1].code != 0) {
          ++i;
          if (original[i].code == 102 && original[i].value == "}") break;
        }
        continue;
      }
      depth += opens ? 1 : (depth > 0 ? -1 : 0);
    } else if (isHandleCode(t.code)) {
      const auto handle = parseHandle(t.value);
      const auto to = handle ? map.find(*handle) : map.end();
      if (to != map.end()) {
        Tag translated = t;
        translated.value = storage.emplace_back(platform::toUtf8(handleToText(to->second)));
        tags.push_back(translated);
        continue;
      }
      if (depth == 0 && isHardOwner(t.code) && handle && *handle != 0) continue;
    }
    tags.push_back(t);
  }
  return tags;
}

}  // namespace host::dxf
