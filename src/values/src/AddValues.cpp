// Adding one field's value to another's: the two dialogs, the addition by
// types and the walks over each entity's records.
#include "values/AddValues.h"

#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "platform/Text.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"

namespace zarvel {
namespace {

using platform::DialogControl;
using platform::OdType;
using platform::OdValue;
using platform::OpenMode;
using platform::Status;

// The column of that exact name in the table's definition, -1 for a missing
// table or column.
int columnOfTable(OdContainer& container, const std::wstring& table, const std::wstring& field) {
  std::unique_ptr<platform::OdTable> t = container.getTable(table);
  return t ? exactColumnIndex(t->definition(), field) : -1;
}

// Sums that wrap as the field's 32 bits hold them.
std::int32_t wrappingSum(std::int32_t a, std::int32_t b) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

// The source's text as a character target appends it.
bool appendedText(const OdValue& source, std::wstring& text) {
  switch (source.type()) {
    case OdType::Character:
      text = source.asText();
      return true;
    case OdType::Integer:
      text = platform::format(L"%i", source.asInt());
      return true;
    case OdType::Real:
      text = platform::format(L"%.16g", source.asReal());
      return true;
    case OdType::Point:
    case OdType::Unknown:
      break;
  }
  return false;
}

// The walk of ZARVEL_ADDVAL, its columns found once for all the entities.
class FieldAdder {
 public:
  FieldAdder(OdContainer& container, std::wstring table, const std::wstring& toField,
             const std::wstring& fromField)
      : table_(std::move(table)),
        to_(columnOfTable(container, table_, toField)),
        from_(columnOfTable(container, table_, fromField)),
        records_(container.newIterator()) {}

  // Only the entity's first record of the table changes.
  bool add(ObjectId entity) {
    if (!walkToRecordOfTable(*records_, entity, table_, OpenMode::Write) || to_ < 0 || from_ < 0) {
      return false;
    }
    if (records_->getRecord(record_) != Status::Ok) return false;
    if (to_ >= record_.count() || from_ >= record_.count()) return false;
    if (!addValue(record_.value(to_), record_.value(from_))) return false;
    return records_->updateRecord(record_) == Status::Ok;
  }

 private:
  std::wstring table_;
  int to_;
  int from_;
  std::unique_ptr<platform::OdRecordIterator> records_;
  platform::OdRecord record_;
};

// The walk of ZARVEL_ADDVAL_OD2OD: the source record found first, then the
// target's first record of its table takes the sum.
class TableAdder {
 public:
  TableAdder(OdContainer& container, std::wstring fromTable, std::wstring toTable,
             const std::wstring& fromField, const std::wstring& toField)
      : fromTable_(std::move(fromTable)),
        toTable_(std::move(toTable)),
        from_(columnOfTable(container, fromTable_, fromField)),
        to_(columnOfTable(container, toTable_, toField)),
        records_(container.newIterator()) {}

  bool add(ObjectId entity) {
    if (!findSource(entity)) return false;
    if (!walkToRecordOfTable(*records_, entity, toTable_, OpenMode::Write) ||
        records_->getRecord(target_) != Status::Ok) {
      return false;
    }
    if (to_ >= target_.count() || from_ >= source_.count()) return false;
    if (!addValue(target_.value(to_), source_.value(from_))) return false;
    return records_->updateRecord(target_) == Status::Ok;
  }

 private:
  // Each record of the source table met before both columns are found is
  // taken anew as the source; with one table for both, its first record serves.
  bool findSource(ObjectId entity) {
    bool fromFound = false;
    bool toFound = false;
    initWalk(*records_, entity, OpenMode::Write);
    for (; !records_->isDone() && !(fromFound && toFound); records_->next()) {
      const std::wstring& name = records_->recordTableName();
      const bool isTarget = name == toTable_;
      if (name == fromTable_ && records_->getRecord(source_) == Status::Ok) fromFound = from_ >= 0;
      if (isTarget) toFound = to_ >= 0;
    }
    return fromFound && toFound;
  }

  std::wstring fromTable_;
  std::wstring toTable_;
  int from_;
  int to_;
  std::unique_ptr<platform::OdRecordIterator> records_;
  platform::OdRecord source_;
  platform::OdRecord target_;
};

// Both bodies walk their entities under the document lock and report how
// many of them took a sum.
template <typename Adder>
void addOverEntities(Adder& adder, const std::vector<ObjectId>& ids) {
  lockDoc();
  int count = 0;
  for (ObjectId id : ids) {
    if (adder.add(id)) ++count;
  }
  // Releasing the lock taken above cannot fail, and the report follows anyway.
  platform::ignoreStatus(unlockDoc());
  printMessage(kMsgCompletedOutOf, count, static_cast<int>(ids.size()));
}

}  // namespace

bool addValue(OdValue& target, const OdValue& source) {
  const OdType s = source.type();
  if (s != OdType::Integer && s != OdType::Real && s != OdType::Character) return false;
  switch (target.type()) {
    case OdType::Character: {
      std::wstring text;
      if (!appendedText(source, text)) return false;
      target = target.asText() + text;
      return true;
    }
    case OdType::Integer: {
      // A real is cut to an integer before the sum: 2 + 1.9 is 3.
      const std::int32_t addend =
          s == OdType::Character ? platform::wtoi(source.asText()) : source.asInt();
      target = wrappingSum(target.asInt(), addend);
      return true;
    }
    case OdType::Real: {
      const double addend =
          s == OdType::Character ? platform::wtof(source.asText()) : source.asReal();
      target = target.asReal() + addend;
      return true;
    }
    case OdType::Point:
    case OdType::Unknown:
      break;
  }
  return false;
}

bool addFieldToField(OdContainer& container, ObjectId entityId, const std::wstring& tableName,
                     const std::wstring& toField, const std::wstring& fromField) {
  FieldAdder adder(container, tableName, toField, fromField);
  return adder.add(entityId);
}

bool addTableToTable(OdContainer& container, ObjectId entityId, const std::wstring& fromTable,
                     const std::wstring& toTable, const std::wstring& fromField,
                     const std::wstring& toField) {
  TableAdder adder(container, fromTable, toTable, fromField, toField);
  return adder.add(entityId);
}

OptionsCopyVal::OptionsCopyVal(std::vector<std::wstring> limitTables)
    : platform::DialogModel(loadString(kDlgAddValuesTitle)), limitTables_(std::move(limitTables)) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), false, true));
  addControl(comboBox(kIdToField, loadString(kDlgTo)));
  addControl(comboBox(kIdFromField, loadString(kDlgFrom)));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void OptionsCopyVal::onInit() {
  std::vector<std::wstring> names;
  for (std::wstring& name : port().project().tableNames(platform::kAllTableKinds)) {
    if (!isUserTable(name)) continue;
    if (limitTables_.empty() || containsText(limitTables_, name)) names.push_back(std::move(name));
  }
  if (fillTableList(control(kIdTableList), std::move(names))) refillFields();
}

void OptionsCopyVal::onChange(int controlId) {
  if (controlId == kIdTableList) refillFields();
}

void OptionsCopyVal::refillFields() {
  const std::vector<std::wstring> fields = columnNamesOf(chosenText(control(kIdTableList)));
  control(kIdToField).setItems(fields);
  control(kIdFromField).setItems(fields);
}

bool OptionsCopyVal::onButton(int buttonId) {
  if (buttonId == platform::kIdOk) {
    tableName = chosenText(control(kIdTableList));
    toField = chosenText(control(kIdToField));
    fromField = chosenText(control(kIdFromField));
  }
  return platform::DialogModel::onButton(buttonId);
}

OptionsCopyValSameEnt::OptionsCopyValSameEnt(std::vector<std::wstring> limitTables)
    : platform::DialogModel(loadString(kDlgAddValuesTitle)), limitTables_(std::move(limitTables)) {
  addControl(DialogControl::listBox(kIdFromTable, loadString(kDlgFromTable), false, true));
  DialogControl fromCombo = comboBox(kIdFromField, std::wstring());
  fromCombo.name = loadString(kDlgFromField);
  addControl(std::move(fromCombo));
  addControl(DialogControl::listBox(kIdToTable, loadString(kDlgToTable), false, true));
  DialogControl toCombo = comboBox(kIdToField, std::wstring());
  toCombo.name = loadString(kDlgToField);
  addControl(std::move(toCombo));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void OptionsCopyValSameEnt::onInit() {
  // Internal tables may be a source, never a target.
  std::vector<std::wstring> sources;
  std::vector<std::wstring> targets;
  for (std::wstring& name : port().project().tableNames(platform::kAllTableKinds)) {
    if (!limitTables_.empty() && !containsText(limitTables_, name)) continue;
    if (isUserTable(name)) targets.push_back(name);
    sources.push_back(std::move(name));
  }
  if (fillTableList(control(kIdFromTable), std::move(sources))) {
    refillFields(kIdFromTable, kIdFromField);
  }
  if (fillTableList(control(kIdToTable), std::move(targets))) refillFields(kIdToTable, kIdToField);
  enableOk();
}

void OptionsCopyValSameEnt::onChange(int controlId) {
  if (controlId == kIdFromTable) refillFields(kIdFromTable, kIdFromField);
  if (controlId == kIdToTable) refillFields(kIdToTable, kIdToField);
  enableOk();
}

void OptionsCopyValSameEnt::refillFields(int tableList, int fieldCombo) {
  control(fieldCombo).setItems(columnNamesOf(chosenText(control(tableList))));
}

void OptionsCopyValSameEnt::enableOk() {
  const std::wstring names[] = {chosenText(control(kIdFromTable)), chosenText(control(kIdToTable)),
                                chosenText(control(kIdFromField)), chosenText(control(kIdToField))};
  bool allChosen = true;
  for (const std::wstring& name : names) allChosen = allChosen && !name.empty();
  control(platform::kIdOk).enabled = allChosen && (names[0] != names[1] || names[2] != names[3]);
}

bool OptionsCopyValSameEnt::onButton(int buttonId) {
  if (buttonId == platform::kIdOk) {
    fromTable = chosenText(control(kIdFromTable));
    toTable = chosenText(control(kIdToTable));
    fromField = chosenText(control(kIdFromField));
    toField = chosenText(control(kIdToField));
  }
  return platform::DialogModel::onButton(buttonId);
}

void addFieldValues(std::vector<ObjectId>& ids) {
  dropUnavailableEntities(ids);
  OptionsCopyVal dialog(tablesForValueDialog(ids, true));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (!completeValueScope(ids)) return;
  if (dialog.toField == dialog.fromField) return;
  switch (checkFieldPair(dialog.tableName, dialog.toField, dialog.fromField)) {
    case FieldPair::NoTable:
      printMessage(kMsgNamedTableNotFound, dialog.tableName);
      return;
    case FieldPair::MissingColumn:
      printMessage(kMsgColumnNotFound);
      return;
    case FieldPair::Matching:
    case FieldPair::TypesDiffer:
      // Columns of two types still add: the values' own types decide.
      break;
  }
  FieldAdder adder(getODContainer(), dialog.tableName, dialog.toField, dialog.fromField);
  addOverEntities(adder, ids);
}

void addTableValues(std::vector<ObjectId>& ids) {
  dropUnavailableEntities(ids);
  OptionsCopyValSameEnt dialog(tablesForValueDialog(ids, false));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (!completeValueScope(ids)) return;
  if (dialog.fromTable.empty() || dialog.toTable.empty() || dialog.fromField.empty() ||
      dialog.toField.empty()) {
    return;
  }
  if (dialog.fromTable == dialog.toTable && dialog.fromField == dialog.toField) {
    printMessage(kMsgDuplicateColumnNames);
    return;
  }
  TableAdder adder(getODContainer(), dialog.fromTable, dialog.toTable, dialog.fromField,
                   dialog.toField);
  addOverEntities(adder, ids);
}

void commandAddVal() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();
  addFieldValues(ids);
}

void commandAddValOd2Od() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();
  addTableValues(ids);
}

}  // namespace zarvel
