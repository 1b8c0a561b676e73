// The frame every command body keeps: the module's resources in scope for its
// whole run, and one report line from the message catalogue.
#pragma once

#include "oddata/Port.h"
#include "platform/Text.h"
#include "resources/StringTable.h"

namespace zarvel {

// Makes the module's texts and dialogs the current resources until it goes
// out of scope, on every way out of a command.
class ResourceScope {
 public:
  ResourceScope() { port().documents().pushResourceHandle(moduleHandle()); }
  ~ResourceScope() { port().documents().popResourceHandle(); }
  ResourceScope(const ResourceScope&) = delete;
  ResourceScope& operator=(const ResourceScope&) = delete;
};

// Prints a catalogue text, formatted with the arguments as printf would.
template <typename... Args>
void printMessage(int id, const Args&... args) {
  port().editor().print(platform::format(loadString(id), args...));
}

// A message box with a catalogue text and caption.
int messageBox(int textId, int captionId, int flags);

}  // namespace zarvel
