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

// Keeps the kinds of a message's values from being deduced from the call, so
// that the call converts to them or fails to compile.
template <typename T>
struct ValueOf {
  using type = T;
};

// Prints a catalogue text, formatted with the values as printf would.
template <typename... Args>
void printMessage(Message<Args...> message, typename ValueOf<Args>::type... values) {
  port().editor().print(platform::format(loadString(message), values...));
}

// A message box with a catalogue text and caption.
int messageBox(Message<> text, Message<> caption, int flags);

}  // namespace zarvel
