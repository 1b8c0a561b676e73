// What the copy commands share: the targets and the reference they ask for,
// and the records of the reference gathered by table.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/ObjectData.h"
#include "platform/ObjectId.h"

namespace zarvel {

struct CopyScope {
  bool ok = false;  // false when the command has ended, its report printed if it has one
  std::vector<platform::ObjectId> targets;
  platform::ObjectId reference;
};

// The pick-first set, else a prompt, else all of model space, without what
// lies on unusable layers; then the reference entity, which may lie anywhere.
CopyScope copyScope();

// Number of records of each user table on the entity, by table name in
// code-unit order.
using TableCounts = std::map<std::wstring, std::int32_t>;
TableCounts userTableCounts(platform::OdContainer& container, platform::ObjectId entity);

// A table with one record of its defaults, ready to be added again and again.
struct DefaultRecord {
  std::unique_ptr<platform::OdTable> table;
  platform::OdRecord record;
  std::int32_t count = 0;
};
// Tables that cannot be found are left out: they have nothing to add.
std::vector<DefaultRecord> defaultRecords(platform::OdContainer& container,
                                          const TableCounts& counts);
void addDefaultRecords(std::vector<DefaultRecord>& records, platform::ObjectId target);

}  // namespace zarvel
