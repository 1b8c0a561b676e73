// The line syntax of the alias files: a "#" comment, fields between runs of
// tabs, each trimmed; the field count says what the line means.
#include "tables/AliasFiles.h"

#include <vector>

#include "oddata/TextFiles.h"
#include "oddata/ValueText.h"

namespace zarvel {
namespace {

AliasMap inverted(const AliasMap& map) {
  AliasMap turned;
  for (const auto& [name, alias] : map) turned.emplace(alias, name);
  return turned;
}

// Puts the line's fields where a file of that kind keeps that many; false for
// a count the kind does not take.
bool store(AliasFile kind, const std::vector<std::wstring>& f, AliasMaps& maps) {
  switch (kind) {
    case AliasFile::Tables:
      if (f.size() != 2) return false;
      maps.tables.emplace(f[0], f[1]);
      return true;
    case AliasFile::Fields:
      if (f.size() == 2) {
        maps.fields.emplace(f[0], f[1]);
      } else if (f.size() == 3) {
        maps.tableFields[f[0]].emplace(f[1], f[2]);
      } else {
        return false;
      }
      return true;
    case AliasFile::Values:
      if (f.size() == 2) {
        maps.values.emplace(f[0], f[1]);
      } else if (f.size() == 3) {
        maps.fieldValues[f[0]].emplace(f[1], f[2]);
      } else if (f.size() == 4) {
        maps.tableFieldValues[f[0]][f[1]].emplace(f[2], f[3]);
      } else {
        return false;
      }
      return true;
  }
  return false;
}

}  // namespace

void AliasMaps::invert() {
  tables = inverted(tables);
  fields = inverted(fields);
  values = inverted(values);
  // The outer keys name tables and fields that the renames before have given
  // their names back by the time these maps are read.
  for (auto& [table, byField] : tableFields) byField = inverted(byField);
  for (auto& [field, byValue] : fieldValues) byValue = inverted(byValue);
  for (auto& [table, byField] : tableFieldValues) {
    for (auto& [field, byValue] : byField) byValue = inverted(byValue);
  }
}

int readAliasLines(platform::TextFileLines& lines, AliasFile kind, AliasMaps& maps,
                   const std::function<void(const std::wstring&)>& rejected) {
  int taken = 0;
  for (std::wstring line; lines.next(line);) {
    if (store(kind, tabFields(cutAtChar(line, L'#'), trimBoth), maps)) {
      ++taken;
    } else {
      rejected(line);
    }
  }
  return taken;
}

}  // namespace zarvel
