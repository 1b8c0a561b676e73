// The host's file service: the module builds a file's bytes and the host puts
// them on disk, so that the host decides how a file is written safely.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Status.h"

namespace platform {

// Every operation fails in this base, the safe default of a host that writes
// no files. A host reports each failure to the user itself (the module may end
// without a word), naming the file and the reason.
class Files {
 public:
  virtual ~Files() = default;

  // Whether the file could be replaced or created, without changing anything.
  virtual Status checkWritable(const std::wstring& /*path*/) { return Status::Failed; }
  // Replaces the file's contents with the bytes, whole or not at all: on
  // failure any earlier file stays as it was.
  virtual Status writeWholeFile(const std::wstring& /*path*/, std::string_view /*bytes*/) {
    return Status::Failed;
  }
  // The text of a file as the platform's wide text mode reads it (see
  // platform/TextFile.h), in the code page of the current drawing where it is
  // neither UTF-16 nor UTF-8. Nothing when it can't be read; the module tells
  // the user, so the host says nothing.
  virtual std::optional<std::wstring> readTextFile(const std::wstring& /*path*/) {
    return std::nullopt;
  }
};

}  // namespace platform
