// The text files users write for the module (alias files, attribute maps):
// opened through the host, and their lines split into fields.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "oddata/ValueText.h"
#include "platform/TextFile.h"

namespace zarvel {

// The lines of the file as the module's text mode reads them; nothing when
// the host can't read it.
std::optional<platform::TextFileLines> openTextFile(const std::wstring& path);

// The fields of a line between tabs, runs of tabs counting as one separator,
// each field trimmed by `trim`.
template <typename Trim>
std::vector<std::wstring> tabFields(const std::wstring& line, Trim trim) {
  std::vector<std::wstring> fields;
  splitText(line, L"\t", fields);
  for (std::wstring& field : fields) field = trim(field);
  return fields;
}

}  // namespace zarvel
