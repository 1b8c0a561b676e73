// Registering and finding a module's commands.
#include "host/editor/ModuleCommandStack.h"

#include "host/editor/AnswerParsing.h"

namespace host {

std::wstring commandKey(const std::wstring& text) {
  std::wstring_view name = trimBlanks(text);
  while (!name.empty() && (name.front() == L'_' || name.front() == L'.')) name.remove_prefix(1);
  std::wstring upper(name);
  for (wchar_t& c : upper) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  return upper;
}

const ModuleCommand* ModuleCommandStack::find(const std::wstring& key) const {
  auto it = commands_.find(key);
  return it == commands_.end() ? nullptr : &it->second;
}

std::vector<std::wstring> ModuleCommandStack::globalNames() const {
  std::vector<std::wstring> names;
  names.reserve(commands_.size());
  for (const auto& [key, command] : commands_) names.push_back(command.globalName);
  return names;
}

platform::Status ModuleCommandStack::addCommand(const std::wstring& group,
                                                const std::wstring& globalName, const std::wstring&,
                                                int flags, platform::CommandFunction handler,
                                                void*) {
  const std::wstring key = commandKey(globalName);
  if (key.empty() || handler == nullptr || commands_.count(key) > 0) {
    return platform::Status::Failed;
  }
  commands_[key] = ModuleCommand{group, globalName, flags, handler};
  return platform::Status::Ok;
}

platform::Status ModuleCommandStack::removeCommand(const std::wstring& group,
                                                   const std::wstring& globalName) {
  auto it = commands_.find(commandKey(globalName));
  if (it == commands_.end() || it->second.group != group) return platform::Status::Failed;
  commands_.erase(it);
  return platform::Status::Ok;
}

platform::Status ModuleCommandStack::removeGroup(const std::wstring& group) {
  bool any = false;
  for (auto it = commands_.begin(); it != commands_.end();) {
    if (it->second.group == group) {
      it = commands_.erase(it);
      any = true;
    } else {
      ++it;
    }
  }
  return any ? platform::Status::Ok : platform::Status::Failed;
}

}  // namespace host
