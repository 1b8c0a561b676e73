// The translation: the files loaded and checked, then the values, columns and
// tables renamed in the order the direction needs.
#include "tables/Translate.h"

#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/TextFiles.h"
#include "tables/AliasFiles.h"
#include "tables/ODTranslate.h"
#include "tables/RenameColumns.h"
#include "tables/ValueTranslation.h"

namespace zarvel {
namespace {

struct FileTexts {
  Message<Text> loading;
  Message<Text> incorrect;
  Message<int> loaded;
};

// Reads one file into the maps; a file left unchosen is not read at all.
void loadAliasFile(const std::wstring& path, AliasFile kind, const FileTexts& texts,
                   AliasMaps& maps) {
  if (path.empty()) return;
  printMessage(texts.loading, path);
  std::optional<platform::TextFileLines> lines = openTextFile(path);
  if (!lines) {
    printMessage(kTxtUnableToRead, path);
    return;
  }
  const int loaded = readAliasLines(
      *lines, kind, maps, [&](const std::wstring& line) { printMessage(texts.incorrect, line); });
  printMessage(texts.loaded, loaded);
}

// False, with each repeated destination named, when two tables would take one
// name.
bool destinationsDiffer(const TableAliases& tables) {
  std::set<std::wstring> destinations;
  for (const auto& [name, alias] : tables) {
    if (!destinations.insert(alias).second) printMessage(kTxtDuplicateDestinationTable, alias);
  }
  if (destinations.size() == tables.size()) return true;
  printMessage(kTxtDuplicateDestinationTables);
  return false;
}

void renameTables(OdContainer& container, const TableAliases& tables) {
  for (const auto& [name, alias] : tables) {
    // A rename the project refuses (a name taken, a table missing) is passed
    // over without a word.
    platform::ignoreStatus(container.renameTable(name, alias));
  }
}

const std::wstring& lookUp(const AliasMap* map, const std::wstring& key) {
  if (map == nullptr) return key;
  const auto found = map->find(key);
  return found == map->end() ? key : found->second;
}

// Every column whose name has an alias, the alias for its table before the
// alias for every table.
std::vector<std::tuple<std::wstring, std::wstring, std::wstring>> plannedColumns(
    OdContainer& container, const AliasMaps& maps) {
  std::vector<std::tuple<std::wstring, std::wstring, std::wstring>> planned;
  for (const std::wstring& table : container.tableNames()) {
    std::unique_ptr<platform::OdTable> found = container.getTable(table);
    if (!found) continue;
    const auto byTable = maps.tableFields.find(table);
    const AliasMap* tableMap = byTable == maps.tableFields.end() ? nullptr : &byTable->second;
    for (const platform::OdColumnDef& column : found->definition().columns) {
      const std::wstring& perTable = lookUp(tableMap, column.name);
      const std::wstring& global = lookUp(&maps.fields, column.name);
      if (perTable != column.name) {
        planned.emplace_back(table, column.name, perTable);
      } else if (global != column.name) {
        planned.emplace_back(table, column.name, global);
      }
    }
  }
  return planned;
}

void renameColumns(OdContainer& container, const AliasMaps& maps) {
  int renamed = 0;
  for (const auto& [table, column, alias] : plannedColumns(container, maps)) {
    switch (renameTableColumns(container, table, {column}, {alias})) {
      case RenameResult::Ok:
        ++renamed;
        break;
      case RenameResult::UnequalLists:
        printMessage(kMsgOperationUnsuccessful);
        break;
      case RenameResult::DuplicateNames:
        printMessage(kTxtDuplicateColumnNames);
        break;
      case RenameResult::ColumnNotFound:
        printMessage(kTxtColumnNotFound);
        break;
      case RenameResult::TableNotFound:
        printMessage(kTxtTableNotFound);
        break;
    }
  }
  printMessage(kTxtUpdatedColumns, renamed);
}

void translateValues(OdContainer& container, const AliasMaps& maps,
                     const std::vector<ObjectId>& entities) {
  ValueTranslator translator(container, maps.values, maps.fieldValues, maps.tableFieldValues);
  int changed = 0;
  for (const ObjectId id : entities) changed += translator.translateEntity(id);
  printMessage(kTxtUpdatedRecordsWithValues, changed);
}

}  // namespace

void commandTranslate() {
  ResourceScope scope;
  ODTranslate dialog;
  const int button = port().ui().runModal(dialog);
  if (button != ODTranslate::kIdNameToAlias && button != ODTranslate::kIdAliasToName) return;

  AliasMaps maps;
  loadAliasFile(dialog.tablesPath(), AliasFile::Tables,
                {kTxtLoadingTableAliases, kTxtIncorrectTableAlias, kTxtTableAliasesLoaded}, maps);
  if (!destinationsDiffer(maps.tables)) return;
  loadAliasFile(dialog.fieldsPath(), AliasFile::Fields,
                {kTxtLoadingFieldAliases, kTxtIncorrectFieldAlias, kTxtFieldAliasesLoaded}, maps);
  loadAliasFile(dialog.valuesPath(), AliasFile::Values,
                {kTxtLoadingValueAliases, kTxtIncorrectValueAlias, kTxtValueAliasesLoaded}, maps);

  OdContainer& container = getODContainer();
  platform::Drawing& drawing = port().drawing();
  // Taken once and unfiltered: an entity that won't open simply has no records.
  const std::vector<ObjectId> entities = drawing.blockEntityIds(drawing.modelSpaceId());
  if (dialog.direction() == 0) {
    // Values and columns are matched while the drawing still bears the names
    // the files use; the tables are renamed last.
    translateValues(container, maps, entities);
    renameColumns(container, maps);
    renameTables(container, maps.tables);
  } else {
    maps.invert();
    renameTables(container, maps.tables);
    renameColumns(container, maps);
    translateValues(container, maps, entities);
  }
}

}  // namespace zarvel
