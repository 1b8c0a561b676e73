// -ODDEFINE, -ODATTACH and ODLIST: defining tables, attaching records and
// listing what entities carry.
#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

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

struct FieldValue {
  std::wstring name;
  std::wstring value;
};

// What the values prompt of -ODATTACH takes, shown when "?" is answered.
constexpr const wchar_t* kFieldValuesHelp =
    L"Give values as name=value pairs separated by \";\", as in ID=7;NAME=Main Street.\n"
    L"A value in double quotes may hold \";\" and \"=\", as in NAME=\"A;B\"; within the\n"
    L"quotes two double quotes stand for one, as in NAME=\"5\"\" pipe\". Columns left out\n"
    L"take their defaults; Enter takes every default.\n";

// The quoted value that starts at text[at], a double quote; the index past
// its closing quote, or nullopt if none closes it.
std::optional<std::size_t> readQuoted(std::wstring_view text, std::size_t at, std::wstring& value) {
  for (std::size_t i = at + 1; i < text.size(); ++i) {
    if (text[i] != L'"') {
      value += text[i];
    } else if (i + 1 < text.size() && text[i + 1] == L'"') {
      value += L'"';
      ++i;
    } else {
      return i + 1;
    }
  }
  return std::nullopt;
}

// Splits "name=value;name=value" into its pairs; an error text if a pair is
// no pair or a quoted value is left open or followed by more than blanks.
std::optional<std::wstring> splitFieldValues(std::wstring_view text,
                                             std::vector<FieldValue>& fields) {
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t eq = std::min(text.find_first_of(L"=;", at), text.size());
    if (eq == text.size() || text[eq] == L';') {
      const std::wstring_view piece = trimBlanks(text.substr(at, eq - at));
      if (!piece.empty()) return L"Expected name=value, not \"" + std::wstring(piece) + L"\".";
      at = eq + 1;
      continue;
    }
    FieldValue field{std::wstring(trimBlanks(text.substr(at, eq - at))), {}};
    const std::size_t first = std::min(text.find_first_not_of(L" \t", eq + 1), text.size());
    if (first < text.size() && text[first] == L'"') {
      const std::optional<std::size_t> past = readQuoted(text, first, field.value);
      if (!past) return L"The quoted value of \"" + field.name + L"\" has no closing quote.";
      const std::size_t end = std::min(text.find(L';', *past), text.size());
      const std::wstring_view after = trimBlanks(text.substr(*past, end - *past));
      if (!after.empty()) {
        return L"Expected \";\" after the quoted value of \"" + field.name + L"\", not \"" +
               std::wstring(after) + L"\".";
      }
      at = end + 1;
    } else {
      // Blanks at the end of a value are the separator's, not the value's.
      const std::size_t end = std::min(text.find(L';', eq + 1), text.size());
      std::wstring_view value = text.substr(eq + 1, end - eq - 1);
      while (!value.empty() && isBlank(value.back())) value.remove_suffix(1);
      field.value = value;
      at = end + 1;
    }
    fields.push_back(std::move(field));
  }
  return std::nullopt;
}

// Reads the pairs into a record of the table; an error text if a name or a
// value is wrong, or a column is given twice.
std::optional<std::wstring> fillRecord(const platform::OdTableDef& def, const std::wstring& text,
                                       platform::OdRecord& record) {
  std::vector<FieldValue> fields;
  if (auto error = splitFieldValues(text, fields)) return error;
  std::vector<bool> given(static_cast<std::size_t>(def.count()), false);
  for (const FieldValue& field : fields) {
    const int index = def.columnIndex(field.name);
    if (index < 0) return L"Unknown column \"" + field.name + L"\".";
    const platform::OdColumnDef& column = def.column(index);
    if (given[static_cast<std::size_t>(index)]) {
      return L"Column \"" + column.name + L"\" is given more than once.";
    }
    given[static_cast<std::size_t>(index)] = true;
    const auto value = parseValue(column.type, field.value);
    if (!value) {
      return L"Invalid " + std::wstring(typeWord(column.type)) + L" value \"" + field.value +
             L"\" for column \"" + column.name + L"\".";
    }
    record.value(index) = *value;
  }
  return std::nullopt;
}

void odAttachCommand(Session& s) {
  Prompter& p = s.prompter();
  const platform::StringReply name = p.getString(L"Enter table name: ", false);
  if (name.status != PromptStatus::Normal || name.text.empty()) return;
  // Through the container, which offers the tables of active attached
  // drawings too: a record of one of them copies its definition here.
  const std::unique_ptr<platform::OdTable> found =
      s.document().project.odContainer().getTable(name.text);
  if (!found) {
    s.print(L"Table \"" + name.text + L"\" not found.\n");
    return;
  }
  platform::OdTable& table = *found;
  platform::OdRecord record;
  for (;;) {
    table.initRecord(record);
    const platform::StringReply values = p.getString(L"Field values <defaults>: ", true);
    if (values.status == PromptStatus::Cancel) return;
    if (trimBlanks(values.text) == L"?") {
      s.print(kFieldValuesHelp);
      continue;
    }
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

// Each table in the project's order, with its columns: name, type, default.
void odTablesCommand(Session& s) {
  DbProject& project = s.document().project;
  platform::OdContainer& container = project.odContainer();
  const std::vector<std::wstring> names = project.tableNames(platform::kAllTableKinds);
  if (names.empty()) s.print(L"No tables.\n");
  for (const std::wstring& name : names) {
    const std::unique_ptr<platform::OdTable> table = container.getTable(name);
    if (!table) continue;
    std::wstring line = name + L":";
    const platform::OdTableDef def = table->definition();
    for (int i = 0; i < def.count(); ++i) {
      const platform::OdColumnDef& column = def.column(i);
      const std::wstring value = platform::valueText(column.defaultValue);
      line += (i == 0 ? L" " : L", ") + column.name + L" " + typeWord(column.type) + L" " +
              (value.empty() ? L"\"\"" : value);
    }
    s.print(line + L"\n");
  }
}

}  // namespace

void registerObjectDataCommands(Session& session) {
  session.addHostCommand({L"ODTABLES", odTablesCommand, true,
                          L"lists the Object Data tables with their columns and defaults"});
  session.addHostCommand({L"-ODDEFINE", odDefineCommand, true, L"defines an Object Data table"});
  session.addHostCommand(
      {L"-ODATTACH", odAttachCommand, true,
       L"attaches a record of a table to entities (? at its values prompt: how to write them)"});
  session.addHostCommand({L"ODLIST", odListCommand, true, L"lists the Object Data of entities"});
}

}  // namespace host
