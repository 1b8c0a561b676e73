// The value search: common fields, the tests of records against conditions,
// and the command. It only reads records, so it takes no lock; its result
// replaces the pick-first set.
#include "search/ValueSearch.h"

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "search/SelectByOD.h"

namespace zarvel {

using platform::OpenMode;
using platform::Status;

namespace {

// Walks on from where the iterator stands, up to the first record whose value
// in the column passes.
bool anyRecordPasses(platform::OdRecordIterator& it, int column, const ValueTest& test,
                     platform::OdValue& value) {
  for (; !it.isDone(); it.next()) {
    if (column < 0) return false;
    if (it.getValue(column, value) == Status::Ok && test.matches(value)) return true;
  }
  return false;
}

std::vector<std::wstring> lowerColumnNames(const platform::OdTableDef& definition) {
  std::vector<std::wstring> names;
  for (const platform::OdColumnDef& column : definition.columns) {
    names.push_back(toLowerCopy(column.name));
  }
  return names;
}

platform::OdTableDef definitionOf(OdContainer& container, const std::wstring& table) {
  std::unique_ptr<platform::OdTable> t = container.getTable(table);
  return t ? t->definition() : platform::OdTableDef();
}

}  // namespace

std::vector<std::wstring> commonFields(const std::vector<std::wstring>& tables) {
  std::vector<std::wstring> fields;
  if (tables.empty()) return fields;
  OdContainer& container = getODContainer();
  for (const platform::OdColumnDef& column : definitionOf(container, tables.front()).columns) {
    fields.push_back(column.name);
  }
  for (std::size_t t = 1; t < tables.size(); ++t) {
    const std::vector<std::wstring> names = lowerColumnNames(definitionOf(container, tables[t]));
    std::vector<std::wstring> kept;
    for (std::wstring& field : fields) {
      if (containsText(names, toLowerCopy(field))) kept.push_back(std::move(field));
    }
    fields = std::move(kept);
  }
  return fields;
}

bool entityMatchesCondition(const std::wstring& table, ObjectId entity, const Condition& condition,
                            bool extended) {
  if (!hasRecordOfTableCurrent(entity, table)) return false;
  std::unique_ptr<platform::OdTable> t = getODContainer().getTable(table);
  return t && recordsMatchCondition(*t, entity, condition, extended);
}

bool recordsMatchCondition(platform::OdTable& table, ObjectId entity, const Condition& condition,
                           bool extended) {
  const ValueTest test(condition.second, extended);
  if (test.acceptsAll()) return true;
  std::unique_ptr<platform::OdRecordIterator> it = table.newIterator();
  initWalk(*it, entity, OpenMode::Read);
  platform::OdValue value;
  return anyRecordPasses(*it, table.definition().columnIndex(condition.first), test, value);
}

ValueSearch::ValueSearch(const std::vector<std::wstring>& tables,
                         const std::vector<Condition>& conditions, bool extended) {
  OdContainer& container = getODContainer();
  for (const Condition& condition : conditions) tests_.emplace_back(condition.second, extended);
  for (const std::wstring& name : tables) {
    Table table{container.getTable(name), nullptr, {}};
    // A table that is gone has no records, so it passes no condition.
    if (!table.table) continue;
    table.records = table.table->newIterator();
    const platform::OdTableDef definition = table.table->definition();
    for (const Condition& condition : conditions) {
      table.columns.push_back(definition.columnIndex(condition.first));
    }
    tables_.push_back(std::move(table));
  }
}

bool ValueSearch::tablePasses(Table& table, std::size_t condition, ObjectId entity) {
  // The table's own iterator sees only its records, so an entity without one
  // is done at once: the presence test and the walk are one.
  initWalk(*table.records, entity, OpenMode::Read);
  if (table.records->isDone()) return false;
  if (tests_[condition].acceptsAll()) return true;
  return anyRecordPasses(*table.records, table.columns[condition], tests_[condition], value_);
}

bool ValueSearch::matches(ObjectId entity) {
  for (std::size_t c = 0; c < tests_.size(); ++c) {
    bool passed = false;
    for (Table& table : tables_) {
      if (tablePasses(table, c, entity)) {
        passed = true;
        break;
      }
    }
    if (!passed) return false;
  }
  return true;
}

void ValueSearch::filter(std::vector<ObjectId>& ids) {
  for (std::size_t i = 0; i < ids.size();) {
    if (matches(ids[i])) {
      ++i;
    } else {
      swapEraseId(ids, i);
    }
  }
}

void commandHasSpecificValues() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();
  dropUnavailableEntities(ids);
  // With a pick-first set, the tables of its records, topology tables among
  // them (the dialog shows only the user's); else those in use in the drawing.
  const std::vector<std::wstring> offer =
      ids.empty() ? allTableNames(true) : listTableNames(ids, false);
  SelectByOD dialog(offer, true);
  if (port().ui().runModal(dialog) != platform::kIdOk || dialog.chosenTables().empty()) return;

  if (ids.empty()) {
    SelectionResult selection = promptSelection();
    if (!selection.ok) return;
    ids = selection.ids.empty() ? modelSpaceEntities() : std::move(selection.ids);
    dropUnavailableEntities(ids);
  }
  if (ids.empty()) return;

  std::vector<Condition> conditions = dialog.conditions();
  // Without the tabs and line feeds that a paste can bring.
  for (Condition& condition : conditions) condition.second = trimmedOf(condition.second, L"\t\n");
  ValueSearch(dialog.chosenTables(), conditions, SelectByOD::extended()).filter(ids);
  setPickFirst(ids);
  printMessage(kMsgSelected, static_cast<int>(ids.size()));
}

}  // namespace zarvel
