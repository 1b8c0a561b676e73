// Alias paths are plain text joins: resolving one and writing it back give
// the same path, whatever form the alias's own path has.
#include "host/editor/PathAliasTable.h"

#include "platform/Text.h"

namespace host {

using platform::Status;

Status PathAliasTable::addAlias(const std::wstring& name, const std::wstring& path) {
  if (name.empty() || name.find(L':') != std::wstring::npos) return Status::Failed;
  aliases_[name] = path;
  return Status::Ok;
}

Status PathAliasTable::deleteAlias(const std::wstring& name) {
  return aliases_.erase(name) > 0 ? Status::Ok : Status::Failed;
}

std::optional<std::wstring> PathAliasTable::aliasPathOf(const std::wstring& fullPath) {
  std::filesystem::path file(platform::toUtf8(fullPath));
  if (file.is_relative()) {
    std::error_code error;
    file = std::filesystem::absolute(file, error);
    if (error) return std::nullopt;
  }
  const std::wstring full = platform::fromUtf8(file.string());
  const std::pair<const std::wstring, std::wstring>* best = nullptr;
  for (const auto& alias : aliases_) {
    if (full.compare(0, alias.second.size(), alias.second) != 0) continue;
    if (best == nullptr || alias.second.size() > best->second.size()) best = &alias;
  }
  if (best == nullptr) return std::nullopt;
  return best->first + L":" + full.substr(best->second.size());
}

std::optional<std::filesystem::path> PathAliasTable::resolve(const std::wstring& aliasPath) const {
  const std::size_t colon = aliasPath.find(L':');
  if (colon == std::wstring::npos) return std::nullopt;
  auto alias = aliases_.find(aliasPath.substr(0, colon));
  if (alias == aliases_.end()) return std::nullopt;
  return std::filesystem::path(platform::toUtf8(alias->second + aliasPath.substr(colon + 1)));
}

}  // namespace host
