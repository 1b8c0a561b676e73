// The break runs in two halves: the command body saves the source's entries
// and starts the host's BREAK, and the watcher's callback, once that command
// has ended, hands the entries to what it made. What ties the halves together
// lives at file scope, since the body has returned by the time the host's
// command ends.
#include "frame/BreakCommand.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "frame/HostCommandWatch.h"
#include "oddata/CommandFrame.h"
#include "oddata/Selection.h"

namespace zarvel {
namespace {

platform::ObjectId breakSourceId;
std::vector<platform::ExtensionEntryCopy> breakSavedEntries;

void releaseSavedEntries() {
  if (hasPort()) {
    for (const platform::ExtensionEntryCopy& entry : breakSavedEntries) {
      port().drawing().releaseExtensionEntry(entry.copy);
    }
  }
  breakSavedEntries.clear();
}

// Every entity of model space that the snapshot lacks, in block order.
std::vector<platform::ObjectId> newModelSpaceEntities(
    const std::vector<platform::ObjectId>& snapshot) {
  // Block order is mostly creation order, which ids follow: sorted already
  // as a rule, and then not sorted again.
  std::vector<platform::ObjectId> before = snapshot;
  if (!std::is_sorted(before.begin(), before.end())) std::sort(before.begin(), before.end());
  std::vector<platform::ObjectId> made;
  platform::Drawing& drawing = port().drawing();
  for (platform::ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (!id.isNull() && !std::binary_search(before.begin(), before.end(), id)) {
      made.push_back(id);
    }
  }
  return made;
}

void afterBreak(std::int64_t /*value*/) {
  platform::Drawing& drawing = port().drawing();
  if (!breakSavedEntries.empty()) {
    for (platform::ObjectId piece : newModelSpaceEntities(detail::breakCommandWatch().snapshot())) {
      for (const platform::ExtensionEntryCopy& entry : breakSavedEntries) {
        // A piece that will not take an entry keeps what it has; the break
        // itself is done, and no message belongs to it.
        platform::ignoreStatus(drawing.putExtensionEntry(piece, entry.name, entry.copy));
      }
    }
  }
  releaseSavedEntries();
}

}  // namespace

void commandBreak() {
  ResourceScope scope;
  platform::Editor& editor = port().editor();
  const std::vector<platform::ObjectId> chosen = visibleImpliedSelection();
  if (chosen.size() == 1) {
    breakSourceId = chosen.front();
  } else {
    // Several chosen is no error: the user picks the one to break.
    const platform::EntityReply reply = editor.getEntity(L"");
    if (reply.status != platform::PromptStatus::Normal) return;
    breakSourceId = reply.id;
  }
  releaseSavedEntries();
  breakSavedEntries = port().drawing().copyExtensionEntries(breakSourceId);
  detail::breakCommandWatch().start(L"break", afterBreak, 0);
  // How the host's command ends reaches the watcher, not this body.
  editor.command({std::wstring(L"_.break"), breakSourceId});
}

void forgetBreakEntries() {
  releaseSavedEntries();
  breakSourceId = platform::ObjectId();
}

}  // namespace zarvel
