// The attribute map: which attribute of which block goes with which column of
// which table, as a user writes it in a text file of tab-separated lines.
#pragma once

#include <map>
#include <string>

#include "platform/ObjectData.h"

namespace zarvel {

// A column of a table, both names lower-cased.
struct MappedColumn {
  std::wstring table;
  std::wstring column;
};

// Attribute tag, exactly as written, to its column.
using BlockAttributeMap = std::map<std::wstring, MappedColumn>;
// Lower-cased block name to the block's attributes.
using AttributeMap = std::map<std::wstring, BlockAttributeMap>;

// One line of a map file as read, before any table is looked up.
struct MapLine {
  enum class Kind { Empty, Invalid, Mapping };
  Kind kind = Kind::Empty;
  // The line less its comment, as an invalid one is reported.
  std::wstring text;
  // For a mapping: block, tag, table and column, as written.
  std::wstring block;
  std::wstring tag;
  std::wstring table;
  std::wstring column;
};

// Reads one line (or one piece of an over-long line): everything from the
// first '?' on is a comment, a line empty without it is Empty; the rest must
// be four fields between runs of tabs, each trimmed of blanks.
MapLine parseMapLine(const std::wstring& line);

// Loads the map file at path, reporting as it goes: what can't be read, each
// invalid line, each table or column the container lacks, and the count.
// False when the command must stop: the file won't read, a line was invalid,
// or nothing was mapped. Unknown tables and columns only drop their line.
bool loadAttributeMap(platform::OdContainer& container, const std::wstring& path,
                      AttributeMap& map);

}  // namespace zarvel
