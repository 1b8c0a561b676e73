// How commands find the entities they work on, which they must leave alone,
// how results go back as the pick-first set, and the document lock.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectId.h"
#include "platform/Status.h"

namespace zarvel {

using platform::ObjectId;

struct SelectionResult {
  bool ok = true;  // false when the user cancelled
  std::vector<ObjectId> ids;
};

std::vector<ObjectId> impliedSelection();
std::vector<ObjectId> visibleImpliedSelection();
SelectionResult promptSelection();
// Entities of model space that open, in block order.
std::vector<ObjectId> modelSpaceEntities();
// Drops entities that won't open or lie on a frozen, hidden, locked or off
// layer. Removes by swapping the last id in, so the order is not kept.
void dropUnavailableEntities(std::vector<ObjectId>& ids);
// The entities of model space that dropUnavailableEntities keeps, in block
// order, but no more than one past atMost: enough to tell whether there are
// more, without walking a large drawing to its end.
std::vector<ObjectId> availableModelSpaceEntities(std::size_t atMost);
// True unless the entity's layer is hidden, frozen or off; locked passes.
bool isOnVisibleLayer(ObjectId id);
void setPickFirst(const std::vector<ObjectId>& ids);
// The entities a command works on: pick-first set, else a prompt, else all of
// model space; then dropUnavailableEntities. ok is false when cancelled.
SelectionResult commandScope();
// The same for a pick-first set that the command took before its own prompts.
SelectionResult commandScope(std::vector<ObjectId> implied);

void lockDoc();
platform::Status unlockDoc();

bool containsId(const std::vector<ObjectId>& ids, ObjectId id);
void removeDuplicateIds(std::vector<ObjectId>& ids);
void swapEraseId(std::vector<ObjectId>& ids, std::size_t index);
std::wstring handleTextOfId(ObjectId id);
// The name a block reference goes by, a dynamic block's own name for its
// references; empty if it won't open.
std::wstring blockNameOfReference(ObjectId reference);
std::vector<std::wstring> layerNames();

}  // namespace zarvel
