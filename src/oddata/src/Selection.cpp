// The scope of a command: selections, the filter of unusable entities, and
// the pick-first set.
#include "oddata/Selection.h"

#include <algorithm>
#include <set>
#include <unordered_set>
#include <utility>

#include "oddata/Port.h"

namespace zarvel {

std::vector<ObjectId> impliedSelection() { return port().editor().impliedSelection(); }

std::vector<ObjectId> visibleImpliedSelection() {
  std::vector<ObjectId> ids;
  for (ObjectId id : impliedSelection()) {
    if (isOnVisibleLayer(id)) ids.push_back(id);
  }
  return ids;
}

SelectionResult promptSelection() {
  platform::SelectionReply reply = port().editor().selectObjects();
  if (reply.status == platform::PromptStatus::Cancel) return {false, {}};
  return {true, std::move(reply.ids)};
}

std::vector<ObjectId> modelSpaceEntities() {
  platform::Drawing& drawing = port().drawing();
  std::vector<ObjectId> ids = drawing.blockEntityIds(drawing.modelSpaceId());
  std::size_t kept = 0;
  for (ObjectId id : ids) {
    if (drawing.canOpen(id)) ids[kept++] = id;
  }
  ids.resize(kept);
  return ids;
}

namespace {

// The layers whose entities a command may touch: neither frozen, hidden,
// locked nor off.
std::set<ObjectId> usableLayerIds(const platform::Drawing& drawing) {
  std::set<ObjectId> usable;
  for (const platform::LayerInfo& layer : drawing.layers()) {
    if (!layer.frozen && !layer.hidden && !layer.locked && !layer.off) usable.insert(layer.id);
  }
  return usable;
}

// An entity that won't open has no layer, and so none that is usable.
bool isUsable(const platform::Drawing& drawing, const std::set<ObjectId>& usable, ObjectId id) {
  const std::optional<ObjectId> layer = drawing.entityLayerId(id);
  return layer && usable.count(*layer) > 0;
}

}  // namespace

std::vector<ObjectId> availableModelSpaceEntities(std::size_t atMost) {
  platform::Drawing& drawing = port().drawing();
  const std::set<ObjectId> usable = usableLayerIds(drawing);
  std::vector<ObjectId> ids;
  for (ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (!isUsable(drawing, usable, id)) continue;
    ids.push_back(id);
    if (ids.size() > atMost) break;
  }
  return ids;
}

void dropUnavailableEntities(std::vector<ObjectId>& ids) {
  platform::Drawing& drawing = port().drawing();
  const std::set<ObjectId> usable = usableLayerIds(drawing);
  for (std::size_t i = 0; i < ids.size();) {
    if (!isUsable(drawing, usable, ids[i])) {
      swapEraseId(ids, i);
    } else {
      ++i;
    }
  }
}

bool isOnVisibleLayer(ObjectId id) {
  platform::Drawing& drawing = port().drawing();
  const std::optional<std::wstring> name = drawing.entityLayerName(id);
  if (!name) return false;
  const std::optional<platform::LayerInfo> layer = drawing.layerByName(*name);
  return layer && !layer->hidden && !layer->frozen && !layer->off;
}

void setPickFirst(const std::vector<ObjectId>& ids) { port().editor().setPickFirst(ids); }

SelectionResult commandScope() { return commandScope(impliedSelection()); }

SelectionResult commandScope(std::vector<ObjectId> implied) {
  SelectionResult scope{true, std::move(implied)};
  if (scope.ids.empty()) {
    scope = promptSelection();
    if (!scope.ok) return scope;
  }
  if (scope.ids.empty()) scope.ids = modelSpaceEntities();
  dropUnavailableEntities(scope.ids);
  return scope;
}

void lockDoc() {
  // Taken untested, as the commands have always taken it: the host refuses a
  // write lock only to another document's command, and a body runs in the
  // active document's own.
  platform::ignoreStatus(port().documents().lockDocument(platform::LockMode::Write));
}

platform::Status unlockDoc() { return port().documents().unlockDocument(); }

bool containsId(const std::vector<ObjectId>& ids, ObjectId id) {
  for (ObjectId x : ids) {
    if (x == id) return true;
  }
  return false;
}

void removeDuplicateIds(std::vector<ObjectId>& ids) {
  // Ids in ascending order, as model space gives them, repeat only side by side.
  if (std::is_sorted(ids.begin(), ids.end())) {
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return;
  }
  // Otherwise a set of the ids met, so that a long list is not searched once per id.
  std::unordered_set<ObjectId> seen;
  seen.reserve(ids.size());
  std::size_t kept = 0;
  for (ObjectId id : ids) {
    if (seen.insert(id).second) ids[kept++] = id;
  }
  ids.resize(kept);
}

void swapEraseId(std::vector<ObjectId>& ids, std::size_t index) {
  ids[index] = ids.back();
  ids.pop_back();
}

std::wstring handleTextOfId(ObjectId id) { return port().drawing().handleText(id); }

std::wstring blockNameOfReference(ObjectId reference) {
  return port().drawing().blockNameOfReference(reference);
}

std::vector<std::wstring> layerNames() {
  std::vector<std::wstring> names;
  for (const platform::LayerInfo& layer : port().drawing().layers()) names.push_back(layer.name);
  return names;
}

}  // namespace zarvel
