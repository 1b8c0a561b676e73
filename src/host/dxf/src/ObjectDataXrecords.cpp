// Values are coded by type: 90 integer, 40 real, 1 character, 10/20/30 point.
#include "ObjectDataXrecords.h"

#include <optional>

#include "EntityCommon.h"
#include "GroupCodes.h"
#include "host/dxf/ParseError.h"
#include "platform/Text.h"

namespace host::dxf {
namespace {

using platform::OdType;
using platform::OdValue;

void writeValue(const OdValue& value, TagWriter& out, const TextCodec& codec) {
  switch (value.type()) {
    case OdType::Integer:
      out.write(90, value.asInt());
      break;
    case OdType::Real:
      out.write(40, value.asReal());
      break;
    case OdType::Character:
      out.write(1, codec.encode(value.asText()));
      break;
    case OdType::Point: {
      const platform::Point3d p = value.asPoint();
      out.write(10, p.x);
      out.write(20, p.y);
      out.write(30, p.z);
      break;
    }
    case OdType::Unknown:
      // A value of no type has no file form; it reads back as the column's default.
      break;
  }
}

using entity::int16Of;
using entity::int32Of;
using entity::realOf;

// Reads the value at tags[i] if it is one, moving i past it.
bool readValue(const std::vector<Tag>& tags, std::size_t& i, const TextCodec& codec,
               OdValue& value) {
  const Tag& tag = tags[i];
  switch (tag.code) {
    case 90:
      value = OdValue(int32Of(tag));
      ++i;
      return true;
    case 40:
      value = OdValue(realOf(tag));
      ++i;
      return true;
    case 1:
      value = OdValue(codec.decode(tag.value));
      ++i;
      return true;
    case 10: {
      platform::Point3d p{realOf(tag), 0.0, 0.0};
      ++i;
      if (i < tags.size() && tags[i].code == 20) p.y = realOf(tags[i++]);
      if (i < tags.size() && tags[i].code == 30) p.z = realOf(tags[i++]);
      value = OdValue(p);
      return true;
    }
    default:
      return false;
  }
}

const char* typeWord(OdType type) {
  switch (type) {
    case OdType::Integer:
      return "an integer";
    case OdType::Real:
      return "a real";
    case OdType::Character:
      return "a character value";
    case OdType::Point:
      return "a point";
    case OdType::Unknown:
      break;
  }
  return "no value";
}

// What keeps a record from matching its table, as a warning; none when it matches.
std::optional<FileWarning> mismatchOf(const std::wstring& table,
                                      const platform::OdTableDef& definition,
                                      const std::vector<OdValue>& values,
                                      const std::vector<std::size_t>& lines,
                                      std::size_t recordLine) {
  const std::size_t columns = definition.columns.size();
  std::size_t k = 0;
  while (k < values.size() && k < columns && values[k].type() == definition.columns[k].type) ++k;
  if (k == values.size() && k == columns) return std::nullopt;
  const std::string kept = "; it is kept as it was read until it is changed";
  const std::string record = "a record of the Object Data table '" + platform::toUtf8(table) + "'";
  if (k < values.size() && k < columns) {
    const platform::OdColumnDef& column = definition.columns[k];
    return FileWarning{lines[k], "the value of column '" + platform::toUtf8(column.name) + "' in " +
                                     record + " is " + typeWord(values[k].type()) + ", not " +
                                     typeWord(column.type) + kept};
  }
  const auto count = [](std::size_t n, const char* what) {
    return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
  };
  const std::string counts =
      " has " + count(values.size(), "value") + " for " + count(columns, "column");
  return FileWarning{values.size() > columns ? lines[columns] : recordLine, record + counts + kept};
}

// The text of the tags from first to last, with the last one's line end.
std::string_view textOf(std::string_view fileText, const Tag& first, const Tag& last) {
  std::size_t end =
      static_cast<std::size_t>(last.value.data() - fileText.data()) + last.value.size();
  if (end < fileText.size() && fileText[end] == '\r') ++end;
  if (end < fileText.size() && fileText[end] == '\n') ++end;
  return fileText.substr(first.offset, end - first.offset);
}

OdType typeOf(const Tag& tag) {
  const std::int16_t code = int16Of(tag);
  if (code < 1 || code > 4) throw ParseError(tag.line, "a column type must be 1 to 4");
  return static_cast<OdType>(code);
}

}  // namespace

void writeTableDefinition(const platform::OdTableDef& definition, TagWriter& out,
                          const TextCodec& codec) {
  for (const platform::OdColumnDef& column : definition.columns) {
    out.write(2, codec.encode(column.name));
    out.write(70, static_cast<int>(column.type));
    out.write(3, codec.encode(column.description));
    writeValue(column.defaultValue, out, codec);
  }
}

platform::OdTableDef readTableDefinition(const std::vector<Tag>& data, std::size_t from,
                                         const TextCodec& codec, const std::wstring& table) {
  platform::OdTableDef definition;
  std::size_t i = from;
  while (i < data.size()) {
    if (data[i].code != 2) {
      throw ParseError(data[i].line, "a column of an Object Data table must begin with its name");
    }
    platform::OdColumnDef column;
    column.name = codec.decode(data[i].value);
    for (const platform::OdColumnDef& before : definition.columns) {
      // The second could not be told from the first by its name.
      if (before.name == column.name) {
        throw ParseError(data[i].line, "the Object Data table '" + platform::toUtf8(table) +
                                           "' has two columns named '" +
                                           platform::toUtf8(column.name) + "'");
      }
    }
    ++i;
    if (i >= data.size() || data[i].code != 70) {
      throw ParseError(data[i - 1].line,
                       "the column '" + platform::toUtf8(column.name) + "' has no type");
    }
    column.type = typeOf(data[i++]);
    if (i < data.size() && data[i].code == 3) column.description = codec.decode(data[i++].value);
    column.defaultValue = OdValue::zeroOf(column.type);
    if (i < data.size() && data[i].code != 2) {
      OdValue value;
      if (!readValue(data, i, codec, value)) {
        throw ParseError(data[i].line, "unexpected group " + std::to_string(data[i].code) +
                                           " in an Object Data table definition");
      }
      // A default of another type is brought to the column's type.
      platform::OdTableDef single;
      single.columns = {column};
      column.defaultValue = Database::conformValues(single, {value})[0];
    }
    definition.columns.push_back(std::move(column));
  }
  return definition;
}

void writeRecords(const Database& db, const OdRecordList& records, TagWriter& out,
                  const TextCodec& codec) {
  std::vector<OdValue> values;
  for (auto pos = records.begin(); pos < records.end(); pos = records.next(pos)) {
    const std::wstring& name = db.odTableAt(records.tableAt(pos))->name;
    if (const std::string_view text = records.textAt(pos); !text.empty()) {
      // The table may have been renamed since; its name is the record's first tag.
      TagReader reader(text);
      const std::optional<Tag> first = reader.next();
      if (first && codec.decode(first->value) == name) {
        out.writeRaw(text);
      } else {
        out.write(2, codec.encode(name));
        out.writeRaw(text.substr(reader.position().offset));
      }
      continue;
    }
    out.write(2, codec.encode(name));
    records.valuesAt(pos, values);
    for (const OdValue& value : values) writeValue(value, out, codec);
  }
}

TableLookup::TableLookup(const Database& db) {
  for (ObjectId id : db.odTableIds()) tables_.emplace(db.odTable(id)->name, db.odTable(id));
}

const OdTableObject* TableLookup::find(const std::wstring& name) const {
  auto it = tables_.find(name);
  return it != tables_.end() ? it->second : nullptr;
}

void readRecords(const TableLookup& tables, const std::vector<Tag>& data, std::size_t from,
                 const TextCodec& codec, std::string_view fileText, OdRecordList& records,
                 std::vector<FileWarning>& warnings) {
  std::size_t i = from;
  std::vector<OdValue> values;
  std::vector<std::size_t> lines;
  while (i < data.size()) {
    if (data[i].code != 2) {
      throw ParseError(data[i].line, "an Object Data record must begin with its table's name");
    }
    const std::size_t first = i;
    const std::wstring name = codec.decode(data[i].value);
    ++i;
    const OdTableObject* table = tables.find(name);
    if (table == nullptr) {
      throw ParseError(data[first].line, "a record of the Object Data table '" +
                                             platform::toUtf8(name) +
                                             "', which the drawing does not define");
    }
    values.clear();
    lines.clear();
    while (i < data.size() && data[i].code != 2) {
      lines.push_back(data[i].line);
      OdValue value;
      if (!readValue(data, i, codec, value)) {
        throw ParseError(data[i].line, "unexpected group " + std::to_string(data[i].code) +
                                           " in an Object Data record");
      }
      values.push_back(std::move(value));
    }
    std::optional<FileWarning> mismatch =
        mismatchOf(table->name, table->definition, values, lines, data[first].line);
    if (!mismatch) {
      records.append(table->index, values);
      continue;
    }
    warnings.push_back(std::move(*mismatch));
    records.append(table->index, Database::conformValues(table->definition, std::move(values)),
                   textOf(fileText, data[first], data[i - 1]));
  }
}

}  // namespace host::dxf
