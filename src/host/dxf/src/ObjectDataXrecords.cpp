// Values are coded by type: 90 integer, 40 real, 1 character, 10/20/30 point.
#include "ObjectDataXrecords.h"


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
                                         const TextCodec& codec) {
  platform::OdTableDef definition;
  std::size_t i = from;
  while (i < data.size()) {
    if (data[i].code != 2) {
      throw ParseError(data[i].line, "a column of an Object Data table must begin with its name");
    }
    platform::OdColumnDef column;
    column.name = codec.decode(data[i].value);
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
    out.write(2, codec.encode(db.odTableAt(records.tableAt(pos))->name));
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
                 const TextCodec& codec, OdRecordList& records) {
  std::size_t i = from;
  std::vector<OdValue> values;
  while (i < data.size()) {
    if (data[i].code != 2) {
      throw ParseError(data[i].line, "an Object Data record must begin with its table's name");
    }
    const std::wstring name = codec.decode(data[i].value);
    const std::size_t line = data[i].line;
    ++i;
    const OdTableObject* table = tables.find(name);
    if (table == nullptr) {
      throw ParseError(line, "a record of the Object Data table '" + platform::toUtf8(name) +
                                 "', which the drawing does not define");
    }
    values.clear();
    while (i < data.size() && data[i].code != 2) {
      OdValue value;
      if (!readValue(data, i, codec, value)) {
        throw ParseError(data[i].line, "unexpected group " + std::to_string(data[i].code) +
                                           " in an Object Data record");
      }
      values.push_back(std::move(value));
    }
    records.append(table->index, Database::conformValues(table->definition, std::move(values)));
  }
}

}  // namespace host::dxf
