// Text files through the host's file service.
#include "oddata/TextFiles.h"

#include <utility>

#include "oddata/Port.h"

namespace zarvel {

std::optional<platform::TextFileLines> openTextFile(const std::wstring& path) {
  std::optional<std::wstring> text = port().files().readTextFile(path);
  if (!text) return std::nullopt;
  return platform::TextFileLines(std::move(*text));
}

}  // namespace zarvel
