// -ODDEFINE, -ODATTACH and ODLIST: defining tables, attaching records and
// listing what entities carry.
#include <optional>

#include "host/db/PortObjectData.h"
#include "host/editor/AnswerParsing.h"
#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::OdType;
using platform::OdValue;
using platform::PromptStatus;

const wchar_t* typeWord(OdType type) {
  switch (type) {
    case OdType::Integer: return L"integer";
    case OdType::Real: return L"real";
    case OdType::Character: return L"character";
    case OdType::Point: return L"point";
    case OdType::Unknown: break;
  }
  return L"unknown";
}

// A value typed in the text form in which values are shown; the empty text
// is the type's zero.
std::optional<OdValue> parseValue(OdType type, const std::wstring& text) {
  if (type == OdType::Character) return OdValue(text);
  if (trimBlanks(text).empty()) return OdValue::zeroOf(type);
  switch (type) {
    case OdType::Integer:
      if (auto v = parseInt(text)) return OdValue(*v);
      break;
    case OdType::Real:
      if (auto v = parseReal(text)) return OdValue(*v);
      break;
    case OdType::Point:
      if (auto v = parsePoint(text)) return OdValue(*v);
      break;
    default:
      break;
  }
  return std::nullopt;
}

void odDefineCommand(Session& s) {
  Prompter& p = s.prompter();
  Database& db = s.db();
  const platform::StringReply name = p.getString(L"Enter table name: ", false);
  if (name.status != PromptStatus::Normal || name.text.empty()) return;
  if (!isValidSymbolName(name.text)) {
    s.print(L"Invalid table name \"" + name.text + L"\".\n");
    return;
  }
  for (ObjectId id : db.odTableIds()) {
    if (db.odTable(id)->name == name.text) {
      s.print(L"Table \"" + name.text + L"\" already exists.\n");
      return;
    }
  }
  platform::OdTableDef definition;
  for (;;) {
    const platform::StringReply column = p.getString(L"Enter column name or <done>: ", false);
    if (column.status == PromptStatus::Cancel) return;
    if (column.text.empty()) break;
    if (!isValidSymbolName(column.text)) {
      s.print(L"Invalid column name \"" + column.text + L"\".\n");
      continue;
    }
    if (definition.columnIndex(column.text) >= 0) {
      s.print(L"Column \"" + column.text + L"\" already exists.\n");
      continue;
    }
    const platform::StringReply type =
        p.getKeyword(L"Column type [Integer/Real/Character/Point] <Character>: ",
                     {L"Integer", L"Real", L"Character", L"Point"}, L"Character");
    if (type.status != PromptStatus::Normal) return;
    platform::OdColumnDef def;
    def.name = column.text;
    def.type = type.text == L"Integer" ? OdType::Integer
               : type.text == L"Real"  ? OdType::Real
               : type.text == L"Point" ? OdType::Point
                                       : OdType::Character;
    for (;;) {
      const platform::StringReply text = p.getString(L"Default value <>: ", true);
      if (text.status == PromptStatus::Cancel) return;
      if (auto value = parseValue(def.type, text.text)) {
        def.defaultValue = *value;
        break;
      }
      s.print(L"Invalid " + std::wstring(typeWord(def.type)) + L" value \"" + text.text +
              L"\".\n");
    }
    definition.columns.push_back(def);
  }
  db.createOdTable(name.text, definition);
  s.print(L"Table \"" + name.text + L"\" defined with " + std::to_wstring(definition.count()) +
          L" column(s).\n");
}

// Reads "name=value;name=value" into a record of the table; an error text if
// a name or a value is wrong.
std::optional<std::wstring> fillRecord(const platform::OdTableDef& def, const std::wstring& text,
                                       platform::OdRecord& record) {
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find(L';', start);
    if (end == std::wstring::npos) end = text.size();
    const std::wstring pair(trimBlanks(std::wstring_view(text).substr(start, end - start)));
    start = end + 1;
    if (pair.empty()) continue;
    const std::size_t eq = pair.find(L'=');
    if (eq == std::wstring::npos) return L"Expected name=value, not \"" + pair + L"\".";
    const std::wstring column(trimBlanks(std::wstring_view(pair).substr(0, eq)));
    const std::wstring valueText = pair.substr(eq + 1);
    const int index = def.columnIndex(column);
    if (index < 0) return L"Unknown column \"" + column + L"\".";
    const auto value = parseValue(def.column(index).type, valueText);
    if (!value) {
      return L"Invalid " + std::wstring(typeWord(def.column(index).type)) + L" value \"" +
             valueText + L"\" for column \"" + def.column(index).name + L"\".";
    }
    record.value(index) = *value;
  }
  return std::nullopt;
}

void odAttachCommand(Session& s) {
  Prompter& p = s.prompter();
  Database& db = s.db();
  const platform::StringReply name = p.getString(L"Enter table name: ", false);
  if (name.status != PromptStatus::Normal || name.text.empty()) return;
  const ObjectId tableId = db.findOdTable(name.text);
  if (tableId.isNull()) {
    s.print(L"Table \"" + name.text + L"\" not found.\n");
    return;
  }
  DbOdTable table(db, tableId);
  platform::OdRecord record;
  for (;;) {
    table.initRecord(record);
    const platform::StringReply values = p.getString(L"Field values <defaults>: ", true);
    if (values.status == PromptStatus::Cancel) return;
    const auto error = fillRecord(table.definition(), values.text, record);
    if (!error) break;
    s.print(*error + L"\n");
  }
  const auto ids = s.selectForCommand(true);
  if (!ids) return;
  int attached = 0;
  for (ObjectId id : *ids) {
    if (table.addRecord(record, id) == platform::Status::Ok) ++attached;
  }
  s.print(L"Attached " + std::to_wstring(attached) + L" record(s).\n");
}

void odListCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids) return;
  Database& db = s.db();
  for (ObjectId id : *ids) {
    s.print(entitySummary(db, id) + L"\n");
    // The listing is the host's own view, so an entity set to fail opening
    // for the module still shows its records.
    const OdRecordList* list = db.odRecords(id);
    if (list == nullptr) continue;
    std::vector<OdValue> values;
    for (auto pos = list->begin(); pos < list->end(); pos = list->next(pos)) {
      list->valuesAt(pos, values);
      std::wstring line = L"  " + db.odTableAt(list->tableAt(pos))->name + L":";
      for (std::size_t i = 0; i < values.size(); ++i) {
        line += (i == 0 ? L" " : L", ") + platform::valueText(values[i]);
      }
      s.print(line + L"\n");
    }
  }
}

}  // namespace

void registerObjectDataCommands(Session& session) {
  session.addHostCommand({L"-ODDEFINE", odDefineCommand, true, L"defines an Object Data table"});
  session.addHostCommand(
      {L"-ODATTACH", odAttachCommand, true, L"attaches a record of a table to entities"});
  session.addHostCommand({L"ODLIST", odListCommand, true, L"lists the Object Data of entities"});
}

}  // namespace host
