// Find and replace over field values: the dialog, the search expression and
// the walk over the records.
#include "values/ReplaceValues.h"

#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "search/ValueCondition.h"
#include "search/ValueSearch.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"

namespace zarvel {
namespace {

using platform::DialogControl;
using platform::OdType;
using platform::OdValue;
using platform::OpenMode;
using platform::Status;

GridStyle listStyle(bool checkBoxes) {
  GridStyle style;
  style.singleSelect = false;
  style.checkBoxes = checkBoxes;
  return style;
}

// An operator's operand: the text from that index on, without blanks, tabs
// and line feeds at either end.
std::wstring operandFrom(const std::wstring& text, std::size_t index) {
  return trimmedOf(text.size() > index ? text.substr(index) : std::wstring(), L" \t\n");
}

bool startsWith(const std::wstring& text, const wchar_t* prefix) {
  return text.rfind(prefix, 0) == 0;
}

// Replaces in the records of the iterator's table on the entity; the number
// of records that matched. Every record is written back, matched or not.
std::int32_t replaceInRecords(platform::OdRecordIterator& it, ObjectId entity, int column,
                              const ValueReplacer& replacer, platform::OdRecord& record) {
  std::int32_t count = 0;
  initWalk(it, entity, OpenMode::Write);
  for (; !it.isDone(); it.next()) {
    if (it.getRecord(record) != Status::Ok) continue;
    if (column < record.count() && replacer.replace(record.value(column))) ++count;
    // A record held for write takes its update whether or not it changed.
    platform::ignoreStatus(it.updateRecord(record));
  }
  return count;
}

}  // namespace

OptionsReplace::OptionsReplace(std::vector<std::wstring> limitTables)
    : platform::DialogModel(loadString(kDlgReplaceValuesTitle)),
      limitTables_(std::move(limitTables)),
      fieldGrid_(listStyle(true)),
      tableGrid_(listStyle(false)) {
  tableGrid_.InsertColumn(0, L"");
  fieldGrid_.InsertColumn(0, loadString(kMsgFieldHeader));
  tableGrid_.SetListener(this);
  fieldGrid_.SetListener(this);
  addControl(DialogControl::gridOf(kIdTableGrid, loadString(kDlgTablesLabel), tableGrid_));
  addControl(DialogControl::gridOf(kIdFieldGrid, loadString(kMsgFieldHeader), fieldGrid_));
  DialogControl search = editBox(kIdSearch, std::wstring());
  search.name = loadString(kDlgSearchFor);
  addControl(std::move(search));
  DialogControl replacement = editBox(kIdReplace, std::wstring());
  replacement.name = loadString(kDlgReplaceWith);
  addControl(std::move(replacement));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void OptionsReplace::onInit() {
  tableGrid_.DeleteAllItems();
  for (const std::wstring& table : limitTables_) {
    if (isUserTable(table)) tableGrid_.InsertItem(tableGrid_.GetItemCount(), table);
  }
}

void OptionsReplace::OnSelectionChanged(DataGrid& grid) {
  if (&grid == &fieldGrid_) {
    for (int row = 0; row < fieldGrid_.GetItemCount(); ++row) {
      fieldGrid_.SetCheck(row, fieldGrid_.IsRowSelected(row));
    }
    return;
  }
  fieldGrid_.DeleteAllItems();
  std::vector<std::wstring> tables;
  for (int row : tableGrid_.GetSelectedRows()) tables.push_back(tableGrid_.GetItemText(row, 0));
  for (const std::wstring& field : commonFields(tables)) {
    fieldGrid_.InsertItem(fieldGrid_.GetItemCount(), field);
  }
}

bool OptionsReplace::onButton(int buttonId) {
  if (buttonId == platform::kIdOk) {
    chosenTables.clear();
    for (int row : tableGrid_.GetSelectedRows()) {
      chosenTables.push_back(tableGrid_.GetItemText(row, 0));
    }
    chosenFields.clear();
    for (int row = 0; row < fieldGrid_.GetItemCount(); ++row) {
      if (fieldGrid_.GetCheck(row)) chosenFields.push_back(fieldGrid_.GetItemText(row, 0));
    }
    searchText = control(kIdSearch).text;
    replaceText = control(kIdReplace).text;
  }
  return platform::DialogModel::onButton(buttonId);
}

bool findPattern(std::int32_t& start, std::int32_t& end, const std::wstring& text,
                 const std::wstring& pattern, std::int32_t offset) {
  if (pattern.empty() || offset < 0 || static_cast<std::size_t>(offset) > text.size()) {
    return false;
  }
  const std::wstring rest = platform::lowerCase(std::wstring_view(text).substr(offset));
  const std::wstring lower = platform::lowerCase(pattern);
  if (lower.find(L'*') == std::wstring::npos) {
    const std::size_t found = rest.find(lower);
    if (found == std::wstring::npos) return false;
    start = static_cast<std::int32_t>(found) + offset;
    end = start + static_cast<std::int32_t>(lower.size());
    return true;
  }
  std::vector<std::wstring> pieces;
  splitText(lower, L"*", pieces);
  const bool leadingStar = lower.front() == L'*';
  std::size_t from = leadingStar ? 1 : 0;
  std::size_t first = 0;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const std::size_t found = rest.find(pieces[i], from);
    if (found == std::wstring::npos) return false;
    if (i == 0) first = found;
    from = found + pieces[i].size();
  }
  if (pieces.empty()) from = 0;
  start = static_cast<std::int32_t>(leadingStar ? 0 : first) + offset;
  end = static_cast<std::int32_t>(lower.back() == L'*' ? rest.size() : from) + offset;
  return true;
}

ValueReplacer::ValueReplacer(std::wstring searchText, std::wstring replaceText)
    : search_(std::move(searchText)), replace_(std::move(replaceText)) {
  if (search_ == L"*") {
    rule_ = Rule::All;
  } else if (startsWith(search_, L"<>")) {
    rule_ = Rule::NotEqual;
    operand_ = operandFrom(search_, 2);
  } else if (startsWith(search_, L">")) {
    rule_ = Rule::Smaller;
    operand_ = operandFrom(search_, 1);
  } else if (startsWith(search_, L"<")) {
    // Its operand, too, begins at the third character, so "<10" reads as 0:
    // a blank belongs behind the "<".
    rule_ = Rule::Smaller;
    operand_ = operandFrom(search_, 2);
  }
  integer_ = platform::wtoi(operand_);
  real_ = platform::wtof(operand_);
}

bool ValueReplacer::replace(OdValue& value) const {
  if (rule_ == Rule::Pattern) return substitute(value);
  if (rule_ != Rule::All && !compares(value)) return false;
  assignTextPattern(value, replace_);
  return true;
}

// Both ">" and "<" take the values smaller than the operand.
bool ValueReplacer::compares(const OdValue& value) const {
  const bool notEqual = rule_ == Rule::NotEqual;
  switch (value.type()) {
    case OdType::Integer:
      return notEqual ? integer_ != value.asInt() : integer_ > value.asInt();
    case OdType::Real:
      return notEqual ? real_ != value.asReal() : real_ > value.asReal();
    case OdType::Character:
      return notEqual ? operand_ != platform::lowerCase(value.asText())
                      : operand_.compare(value.asText()) > 0;
    case OdType::Point:
    case OdType::Unknown:
      break;
  }
  return false;
}

// Every find is replaced, the next search starting behind the inserted text;
// what was not replaced keeps its case.
bool ValueReplacer::substitute(OdValue& value) const {
  std::wstring text = valueToText(value);
  std::int32_t start = 0;
  std::int32_t end = 0;
  if (!findPattern(start, end, text, search_, 0)) return false;
  do {
    text = text.substr(0, static_cast<std::size_t>(start)) + replace_ +
           text.substr(static_cast<std::size_t>(end));
    start += static_cast<std::int32_t>(replace_.size());
    // A pattern of stars alone would find the empty rest again and again.
  } while (static_cast<std::size_t>(start) < text.size() &&
           findPattern(start, end, text, search_, start));
  assignTextPattern(value, text);
  return true;
}

std::int32_t replaceInField(platform::OdTable& table, ObjectId entityId,
                            const std::wstring& fieldName, const std::wstring& searchText,
                            const std::wstring& replaceText) {
  const int column = exactColumnIndex(table.definition(), fieldName);
  if (column < 0) return 0;
  std::unique_ptr<platform::OdRecordIterator> it = table.newIterator();
  platform::OdRecord record;
  return replaceInRecords(*it, entityId, column, ValueReplacer(searchText, replaceText), record);
}

void replaceValues(std::vector<ObjectId>& ids) {
  dropUnavailableEntities(ids);
  OptionsReplace dialog(tablesForValueDialog(ids, true));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (dialog.chosenTables.empty() || dialog.chosenFields.empty()) return;
  if (!completeValueScope(ids)) return;
  const ValueReplacer replacer(toLowerCopy(dialog.searchText), dialog.replaceText);

  lockDoc();
  OdContainer& container = getODContainer();
  std::int32_t count = 0;
  platform::OdRecord record;
  for (const std::wstring& name : dialog.chosenTables) {
    std::unique_ptr<platform::OdTable> table = container.getTable(name);
    if (!table) continue;
    // Each field's column found once for all the entities.
    const platform::OdTableDef definition = table->definition();
    std::vector<int> columns;
    for (const std::wstring& field : dialog.chosenFields) {
      columns.push_back(exactColumnIndex(definition, field));
    }
    std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
    for (ObjectId id : ids) {
      for (int column : columns) {
        if (column >= 0) count += replaceInRecords(*it, id, column, replacer, record);
      }
    }
  }
  // Releasing the lock taken above cannot fail, and the report follows anyway.
  platform::ignoreStatus(unlockDoc());
  printMessage(kMsgCompleted, count);
}

void commandReplace() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();
  replaceValues(ids);
}

}  // namespace zarvel
