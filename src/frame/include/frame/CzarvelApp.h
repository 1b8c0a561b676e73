// The application object: the module's door to the host. It answers the
// host's messages, in load and unload order, and owns the command table.
#pragma once

#include <string>
#include <vector>

#include "platform/Host.h"

namespace zarvel {

struct CommandEntry {
  const wchar_t* globalName;
  int flags;
  platform::CommandFunction handler;
};

// The group of the module's commands.
inline constexpr const wchar_t* kCommandGroup = L"ZARVEL";

// The 38 commands in the order of registration.
const std::vector<CommandEntry>& commandTable();

class CzarvelApp {
 public:
  // Dispatches a message to its handler, as the exported entry point does.
  int dispatch(unsigned message, void* packet);

  int onInitApp(void* packet);
  int onUnloadApp(void* packet);
  int onLoadDwg(void* packet);
  int onUnloadDwg(void* packet);
  int onInvokeSubr(void* packet);

  void* moduleInstance() const { return moduleInstance_; }

 private:
  void* moduleInstance_ = nullptr;
  bool unlockFlag_ = true;
  bool mdiAware_ = true;
};

CzarvelApp& theApp();

// The body of the exported entry point and version query.
int entryPoint(unsigned message, void* packet);
int apiVersion();

}  // namespace zarvel
