// The alias files of the translation: table, field and value aliases, the
// maps their lines fill, and the turn of those maps for the way back.
#pragma once

#include <functional>
#include <map>
#include <string>

#include "platform/TextFile.h"

namespace zarvel {

// Keys compare by code unit, case-sensitively; where a key repeats, the first
// line holds.
using AliasMap = std::map<std::wstring, std::wstring>;
using TableAliases = AliasMap;
using FieldAliases = AliasMap;
using ValueAliases = AliasMap;
using TableFieldAliases = std::map<std::wstring, AliasMap>;
using FieldValueAliases = std::map<std::wstring, AliasMap>;
using TableFieldValueAliases = std::map<std::wstring, std::map<std::wstring, AliasMap>>;

struct AliasMaps {
  TableAliases tables;
  FieldAliases fields;
  TableFieldAliases tableFields;
  ValueAliases values;
  FieldValueAliases fieldValues;
  TableFieldValueAliases tableFieldValues;

  // Every name-to-alias map becomes alias-to-name; in the nested maps only the
  // innermost level turns. Two names with one alias give the first of them.
  void invert();
};

enum class AliasFile { Tables, Fields, Values };

// Reads the lines of one file into the maps its kind and each line's number
// of fields select: tables take 2 fields, fields 2 or 3, values 2, 3 or 4. A
// line with any other number, a blank or comment-only line too, goes to
// `rejected` as it was read. Gives the number of lines taken.
int readAliasLines(platform::TextFileLines& lines, AliasFile kind, AliasMaps& maps,
                   const std::function<void(const std::wstring&)>& rejected);

}  // namespace zarvel
