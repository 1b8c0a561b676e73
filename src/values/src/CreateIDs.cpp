// Numbering records: the "Generate IDs" dialog and the counter it runs.
#include "values/CreateIDs.h"

#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "values/ValueDialogs.h"
#include "values/ValueScope.h"

namespace zarvel {
namespace {

using platform::DialogControl;
using platform::OdType;
using platform::OpenMode;
using platform::Status;

struct Remembered {
  std::int32_t first = 0;
  std::wstring tableName;
  std::wstring fieldName;
};

Remembered& remembered() {
  static Remembered values;
  return values;
}

bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

// The first number as typed: anything but digits marks it as no number; an
// empty text is 0.
std::int32_t readFirstNumber(const std::wstring& text) {
  for (wchar_t c : text) {
    if (!isDigit(c)) return -1;
  }
  return platform::wtoi(text);
}

// The number a field's value stands for when the highest one is sought; false
// for a type that holds none.
bool numberOfValue(const platform::OdValue& value, std::int32_t& number) {
  switch (value.type()) {
    case OdType::Character:
      number = platform::wtoi(firstDigitRun(value.asText(), L"0"));
      return true;
    case OdType::Integer:
    case OdType::Real:
      // A real is cut towards zero.
      number = value.asInt();
      return true;
    case OdType::Point:
    case OdType::Unknown:
      break;
  }
  return false;
}

}  // namespace

OptionsWild::OptionsWild(std::vector<std::wstring> limitTables)
    : platform::DialogModel(loadString(kDlgGenerateIdsTitle)),
      limitTables_(std::move(limitTables)) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), false, true));
  addControl(comboBox(kIdField, loadString(kMsgFieldHeader)));
  addControl(editBox(kIdPrefix, loadString(kDlgPrefix)));
  addControl(editBox(kIdSuffix, loadString(kDlgSuffix)));
  addControl(editBox(kIdFirst, loadString(kDlgFirst)));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void OptionsWild::onInit() {
  std::vector<std::wstring> names;
  for (std::wstring& name : port().project().tableNames(platform::kAllTableKinds)) {
    if (!isUserTable(name)) continue;
    if (limitTables_.empty() || containsText(limitTables_, name)) names.push_back(std::move(name));
  }
  const std::int32_t first = remembered().first;
  control(kIdFirst).text = std::to_wstring(first < 0 ? 0 : first);
  if (fillTableList(control(kIdTableList), std::move(names))) tableChosen();
}

void OptionsWild::onChange(int controlId) {
  if (controlId == kIdTableList) tableChosen();
  if (controlId == kIdField) fieldChosen();
}

void OptionsWild::tableChosen() {
  remembered().tableName = chosenText(control(kIdTableList));
  control(kIdField).setItems(columnNamesOf(remembered().tableName));
}

// Proposes the field's default as the prefix and the number after the
// highest in use as the first.
void OptionsWild::fieldChosen() {
  Remembered& r = remembered();
  r.fieldName = chosenText(control(kIdField));
  std::unique_ptr<platform::OdTable> table = getODContainer().getTable(r.tableName);
  const platform::OdTableDef definition = table ? table->definition() : platform::OdTableDef();
  const int column = exactColumnIndex(definition, r.fieldName);
  const OdType type = column < 0 ? OdType::Unknown : definition.column(column).defaultValue.type();
  if (type == OdType::Integer || type == OdType::Real || type == OdType::Character) {
    control(kIdPrefix).text = valueToText(definition.column(column).defaultValue);
  } else {
    printMessage(kMsgNoDefaultValue, r.fieldName);
  }
  const std::int32_t highest = highestNumberInField(r.tableName, r.fieldName);
  control(kIdFirst).text = std::to_wstring(highest < 1 ? 0 : highest + 1);
}

bool OptionsWild::onButton(int buttonId) {
  if (buttonId == platform::kIdOk) {
    Remembered& r = remembered();
    r.tableName = chosenText(control(kIdTableList));
    r.fieldName = chosenText(control(kIdField));
    prefix = control(kIdPrefix).text;
    suffix = control(kIdSuffix).text;
    r.first = readFirstNumber(control(kIdFirst).text);
  }
  return platform::DialogModel::onButton(buttonId);
}

std::int32_t OptionsWild::setIDFirst() {
  return remembered().first;
}
const std::wstring& OptionsWild::setIDTableName() {
  return remembered().tableName;
}
const std::wstring& OptionsWild::setIDFieldName() {
  return remembered().fieldName;
}
void OptionsWild::forgetRemembered() {
  remembered() = Remembered();
}

std::wstring firstDigitRun(const std::wstring& text, const std::wstring& fallback) {
  std::size_t index = 0;
  while (index < text.size() && !isDigit(text[index])) ++index;
  // A single digit that ends the text is not taken for a number.
  if (index + 1 == text.size()) return fallback;
  std::size_t end = index;
  while (end < text.size() && isDigit(text[end])) ++end;
  return text.substr(index, end - index);
}

std::int32_t highestNumberInField(const std::wstring& tableName, const std::wstring& fieldName) {
  OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdTable> table = container.getTable(tableName);
  if (!table) return 0;
  const int column = exactColumnIndex(table->definition(), fieldName);
  if (column < 0) return 0;
  platform::Drawing& drawing = port().drawing();
  std::unique_ptr<platform::OdRecordIterator> it = container.newIterator();
  std::int32_t highest = 0;
  platform::OdValue value;
  for (ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (id.isNull()) continue;
    if (!walkToRecordOfTable(*it, id, tableName, OpenMode::Read) ||
        it->getValue(column, value) != Status::Ok) {
      continue;
    }
    std::int32_t number = 0;
    if (numberOfValue(value, number) && number >= highest) highest = number;
  }
  return highest;
}

std::int32_t writeIDs(const std::vector<ObjectId>& ids, const std::wstring& tableName,
                      const std::wstring& fieldName, const std::wstring& prefix,
                      const std::wstring& suffix, std::int32_t first) {
  if (ids.empty()) return 0;
  std::unique_ptr<platform::OdTable> table = getODContainer().getTable(tableName);
  if (!table) return 0;
  const int column = exactColumnIndex(table->definition(), fieldName);
  if (column < 0) return 0;
  std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
  // Wide enough that a long run goes past the 32-bit range without overflow;
  // each number written wraps as the field's 32 bits hold it.
  std::int64_t counter = first;
  platform::OdRecord record;
  for (auto id = ids.rbegin(); id != ids.rend(); ++id) {
    initWalk(*it, *id, OpenMode::Write);
    for (; !it->isDone(); it->next()) {
      if (it->getRecord(record) != Status::Ok || column >= record.count()) return 0;
      platform::OdValue& value = record.value(column);
      const auto number = static_cast<std::int32_t>(static_cast<std::uint32_t>(counter));
      switch (value.type()) {
        case OdType::Integer:
          value = number;
          ++counter;
          break;
        case OdType::Character:
          value = platform::format(L"%s%i%s", prefix, number, suffix);
          ++counter;
          break;
        case OdType::Real:
          break;
        case OdType::Point:
        case OdType::Unknown:
          return 0;
      }
      // A record held for write takes its update; a real one is written back
      // as it was.
      platform::ignoreStatus(it->updateRecord(record));
    }
  }
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(counter - first));
}

void createIDs(std::vector<ObjectId>& ids) {
  dropUnavailableEntities(ids);
  OptionsWild dialog(tablesForValueDialog(ids, true));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (OptionsWild::setIDFirst() < 0) return;
  if (!completeValueScope(ids)) return;
  // Rows of the table editor may name an entity more than once.
  removeDuplicateIds(ids);
  lockDoc();
  printMessage(kMsgCompleted,
               writeIDs(ids, OptionsWild::setIDTableName(), OptionsWild::setIDFieldName(),
                        dialog.prefix, dialog.suffix, OptionsWild::setIDFirst()));
  // Releasing the lock taken above cannot fail, and the report is out.
  platform::ignoreStatus(unlockDoc());
}

void commandSetId() {
  ResourceScope scope;
  std::vector<ObjectId> ids = impliedSelection();
  createIDs(ids);
}

}  // namespace zarvel
