// The session's path aliases: "NAME:rest" stands for the alias's path
// followed by the rest, so that drawings can be named apart from where their
// files live.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "platform/AttachedDrawings.h"

namespace host {

class PathAliasTable : public platform::PathAliases {
 public:
  // A name that is empty or holds a colon fails; an alias of that name
  // already there takes the new path. The path may be empty: it then stands
  // for the start of every path.
  platform::Status addAlias(const std::wstring& name, const std::wstring& path) override;
  platform::Status deleteAlias(const std::wstring& name) override;
  // A relative file name is made absolute first; of the aliases whose paths
  // begin the path, the longest path wins.
  std::optional<std::wstring> aliasPathOf(const std::wstring& fullPath) override;

  // The file an alias path names; nothing when it names no known alias.
  std::optional<std::filesystem::path> resolve(const std::wstring& aliasPath) const;
  // Path by name, in name order.
  const std::map<std::wstring, std::wstring>& entries() const { return aliases_; }

 private:
  std::map<std::wstring, std::wstring> aliases_;
};

}  // namespace host
