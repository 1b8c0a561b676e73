// Reading an attribute map: the line syntax, then the lookup of each mapped
// table and column in the drawing's tables.
#include "attributes/AttributeMap.h"

#include <vector>

#include "oddata/CommandFrame.h"
#include "oddata/TextFiles.h"
#include "oddata/ValueText.h"

namespace zarvel {
namespace {

// Fields are trimmed of blanks only: a tab separates, and other white space
// is part of what the user wrote.
std::wstring trimBlanks(const std::wstring& text) {
  const std::size_t first = text.find_first_not_of(L' ');
  if (first == std::wstring::npos) return std::wstring();
  return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

constexpr std::size_t kMappingFields = 4;

}  // namespace

MapLine parseMapLine(const std::wstring& line) {
  MapLine parsed;
  parsed.text = cutAtChar(line, L'?');
  if (parsed.text.empty()) return parsed;
  std::vector<std::wstring> fields = tabFields(parsed.text, trimBlanks);
  if (fields.size() != kMappingFields) {
    parsed.kind = MapLine::Kind::Invalid;
    return parsed;
  }
  parsed.kind = MapLine::Kind::Mapping;
  parsed.block = std::move(fields[0]);
  parsed.tag = std::move(fields[1]);
  parsed.table = std::move(fields[2]);
  parsed.column = std::move(fields[3]);
  return parsed;
}

namespace {

// Enters one mapping line: the block first, so that a block whose every line
// names a missing table or column still counts as mapped.
void addMapping(platform::OdContainer& container, const MapLine& line, AttributeMap& map) {
  BlockAttributeMap& block = map[toLowerCopy(line.block)];
  const std::wstring table = toLowerCopy(line.table);
  const std::unique_ptr<platform::OdTable> found = container.getTable(table);
  if (found == nullptr) {
    printMessage(kTxtMapTableNotFound, line.table);
    return;
  }
  const std::wstring column = toLowerCopy(line.column);
  if (found->definition().columnIndex(column) < 0) {
    printMessage(kTxtMapColumnNotFound, line.column, line.table);
    return;
  }
  // Where a block and tag repeat, the first line stands.
  block.emplace(line.tag, MappedColumn{table, column});
}

}  // namespace

bool loadAttributeMap(platform::OdContainer& container, const std::wstring& path,
                      AttributeMap& map) {
  std::optional<platform::TextFileLines> lines = openTextFile(path);
  if (!lines) {
    printMessage(kTxtUnableToRead, path);
    return false;
  }
  printMessage(kTxtLoadingAttributesMap, path);
  bool invalid = false;
  std::wstring piece;
  while (lines->next(piece)) {
    const MapLine line = parseMapLine(piece);
    if (line.kind == MapLine::Kind::Invalid) {
      printMessage(kTxtInvalidMapping, line.text);
      invalid = true;
    } else if (line.kind == MapLine::Kind::Mapping) {
      addMapping(container, line, map);
    }
  }
  // The count is of blocks, not of lines.
  printMessage(kTxtAttributeMappingsLoaded, static_cast<int>(map.size()));
  return !map.empty() && !invalid;
}

}  // namespace zarvel
