// Object Data in its file form: table definitions and an entity's records as
// the data groups of XRECORDs. See docs/dxf-object-data.md.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "TagReader.h"
#include "TagWriter.h"
#include "TextCodec.h"
#include "host/db/Database.h"
#include "host/dxf/DrawingReader.h"

namespace host::dxf {

// The data groups of a definition: per column its name, type, description and
// default value.
void writeTableDefinition(const platform::OdTableDef& definition, TagWriter& out,
                          const TextCodec& codec);
// Reads the data groups (the tags after the XRECORD's subclass marker and its
// cloning flag), tags[from] on, of the table of that name. Throws ParseError for
// a column without a name or type, a value of the wrong kind, or a column name
// given twice.
platform::OdTableDef readTableDefinition(const std::vector<Tag>& tags, std::size_t from,
                                         const TextCodec& codec, const std::wstring& table);

// Tables by their exact names, for reading many records; a record names its
// table exactly, so a table that differs only in case is another table.
class TableLookup {
 public:
  explicit TableLookup(const Database& db);
  const OdTableObject* find(const std::wstring& name) const;

 private:
  std::unordered_map<std::wstring, const OdTableObject*> tables_;
};

// The data groups of an entity's records, in order; a record that keeps the
// text it was read from is written as that text.
void writeRecords(const Database& db, const OdRecordList& records, TagWriter& out,
                  const TextCodec& codec);
// Appends the records in the data groups to the list. Throws ParseError for a
// record of a table the drawing does not define, or a stray value. A record
// that does not match its table (too many or too few values, or values of
// other types) is taken conformed to it, with a warning, and keeps its text,
// a view of fileText, which every tag is.
void readRecords(const TableLookup& tables, const std::vector<Tag>& tags, std::size_t from,
                 const TextCodec& codec, std::string_view fileText, OdRecordList& records,
                 std::vector<FileWarning>& warnings);

}  // namespace host::dxf
