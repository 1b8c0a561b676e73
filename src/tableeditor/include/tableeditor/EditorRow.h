// What the table editor holds of a table: one row per record on an entity,
// and the key by which a row finds its record again, since the records give
// no index or handle of their own.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/ObjectId.h"
#include "platform/OdValue.h"
#include "tableeditor/CellValue.h"

namespace zarvel {

struct EditorRow {
  platform::ObjectId entityId;
  // A copy of the record's values, in the table's column order.
  std::vector<CellValue> values;
  // Counts entities, not records: an entity's records share one number.
  std::uint64_t rowNumber = 0;
};

// One column of a row's identity: the column's name and the value the row
// held there.
struct FieldKey {
  std::wstring name;
  platform::OdValue value;
};

// A row's identity, one key per column in column order. The record it names
// is the first on the entity whose every keyed field equals the key's value.
using RowKey = std::vector<FieldKey>;

// The key of a row with these values under these column names.
RowKey makeRowKey(const std::vector<std::wstring>& columnNames,
                  const std::vector<CellValue>& values);

}  // namespace zarvel
