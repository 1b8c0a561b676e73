// Drawings a project borrows from: path aliases that name where files live,
// and the set of other drawings attached to the project. Every operation fails
// in these bases, the safe default of a host that attaches nothing.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Status.h"

namespace platform {

// The session's table of path aliases: a name standing for the start of a
// path, written "NAME:" before the rest.
class PathAliases {
 public:
  virtual ~PathAliases() = default;

  virtual Status addAlias(const std::wstring& /*name*/, const std::wstring& /*path*/) {
    return Status::Failed;
  }
  virtual Status deleteAlias(const std::wstring& /*name*/) { return Status::Failed; }
  // The file's full path written under the alias whose path begins it;
  // nothing when no alias does.
  virtual std::optional<std::wstring> aliasPathOf(const std::wstring& /*fullPath*/) {
    return std::nullopt;
  }
};

// Another drawing attached to the project. Its tables are seen by the
// project's queries only between activate and closeDown.
class AttachedDrawing {
 public:
  virtual ~AttachedDrawing() = default;

  virtual Status activate() = 0;
  // Makes an activated drawing ready for queries.
  virtual Status prepare() = 0;
  // Names of the drawing's tables of the kinds in the mask, in ascending
  // code-unit order.
  virtual std::vector<std::wstring> tableNames(int kindMask) const = 0;
  virtual void closeDown() = 0;
};

class DrawingSet {
 public:
  virtual ~DrawingSet() = default;

  // The drawing of that alias path, attached; null when it can't be. The set
  // keeps it until it is detached.
  virtual AttachedDrawing* attachDrawing(const std::wstring& /*aliasPath*/) { return nullptr; }
  virtual Status detachDrawing(const std::wstring& /*aliasPath*/) { return Status::Failed; }
};

}  // namespace platform
