// Loading the module as a shared object, the way the real host loads it: by
// its two exported entry points, with the host handed over in each message.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "platform/Host.h"

namespace host {

class PluginLoader {
 public:
  PluginLoader() = default;
  // Unloads the module if it is still loaded; the host given to load() must
  // still be alive then.
  ~PluginLoader();
  // The module keeps the address of the packet, so the loader stays put.
  PluginLoader(const PluginLoader&) = delete;
  PluginLoader& operator=(const PluginLoader&) = delete;

  // Opens the module and checks its API version; no message is sent yet. On
  // failure nothing stays loaded and the text says why, naming the file. A
  // path without a directory means the current one, not the library path.
  std::optional<std::wstring> load(const std::filesystem::path& path, platform::Host& host);
  bool isLoaded() const { return handle_ != nullptr; }
  const std::filesystem::path& path() const { return path_; }

  // Calls the entry point with the message and the packet; the module's
  // status, or kRetError when nothing is loaded or the module threw.
  int send(unsigned message);
  // Sends kUnloadApp and closes the module, whatever it answers.
  void unload();

 private:
  void* handle_ = nullptr;
  platform::EntryPointFunction entryPoint_ = nullptr;
  platform::AppPacket packet_;
  std::filesystem::path path_;
};

// Where the program finds the module when not told: <exe dir>/../lib/zarvel.so
// as installed, else <exe dir>/zarvel.so as built.
std::filesystem::path defaultPluginPath();
std::filesystem::path defaultPluginPath(const std::filesystem::path& executableDirectory);

}  // namespace host
