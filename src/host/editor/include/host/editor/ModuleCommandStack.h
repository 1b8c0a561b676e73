// The command stack as a module sees it: the commands a loaded module
// registers, filed by name, each with its group and flags.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/Host.h"

namespace host {

// A command line's name as commands are filed: upper-cased, without the "_"
// and "." prefixes the host's users may type before it.
std::wstring commandKey(const std::wstring& text);

struct ModuleCommand {
  std::wstring group;
  std::wstring globalName;
  int flags = 0;
  platform::CommandFunction handler = nullptr;
};

class ModuleCommandStack : public platform::CommandStack {
 public:
  // The command filed under a key (see commandKey); null if there is none.
  const ModuleCommand* find(const std::wstring& key) const;
  // The global names of every command, in key order.
  std::vector<std::wstring> globalNames() const;

  platform::Status addCommand(const std::wstring& group, const std::wstring& globalName,
                              const std::wstring& localName, int flags,
                              platform::CommandFunction handler, void* resourceHandle) override;
  platform::Status removeCommand(const std::wstring& group,
                                 const std::wstring& globalName) override;
  platform::Status removeGroup(const std::wstring& group) override;

 private:
  std::map<std::wstring, ModuleCommand> commands_;
};

}  // namespace host
