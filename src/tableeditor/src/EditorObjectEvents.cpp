// What the editor would do when told by the drawing that an entity changed or
// went. Nothing attaches it to the drawing's database: values reach the rows
// only through a load, as each write path says. The handlers stand ready for
// a front end that does attach them, and the flags that guard them are live.
#include <vector>

#include "oddata/OdAccess.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/RecordWrites.h"
#include "tableeditor/Zarvel.h"

namespace zarvel {

using platform::ObjectId;

// Takes one row out as a list deletes an item: the row deselected, the rows
// below moving up with their selection.
void Zarvel::eraseRow(int index) {
  std::vector<int> selected = grid.GetSelectedRows();
  rows.erase(rows.begin() + index);
  grid.ClearSelection();
  grid.SetItemCount(static_cast<int>(rows.size()));
  for (const int row : selected) {
    if (row != index) grid.SetRowSelected(row > index ? row - 1 : row, true);
  }
}

void Zarvel::objectModified(ObjectId id) {
  if (objectEventsEnabled) applyEntityChange(getODContainer(), id);
}

void Zarvel::applyEntityChange(platform::OdContainer& container, ObjectId id) {
  pickFirstEnabled = false;
  objectEventsEnabled = false;
  const std::wstring& table = tableEditorState().currentTableName;
  bool found = false;
  for (std::size_t i = 0; i < rows.size();) {
    if (rows[i].entityId != id) {
      ++i;
      continue;
    }
    found = true;
    // Read afresh for each row: the next row of the entity takes the first
    // record again.
    std::vector<std::vector<OdValue>> records = recordsOfEntityTable(container, table, id);
    if (!records.empty()) {
      rows[i].values = toCells(records.front());
      if (records.size() == 1) break;
      ++i;
      continue;
    }
    if (rows.size() == 1) {
      resetEditor();
      break;
    }
    eraseRow(static_cast<int>(i));
  }
  if (!found) {
    // No layer test on this path: what the drawing reports is listed.
    const std::uint64_t number = rows.empty() ? 1 : rows.back().rowNumber + 1;
    for (const std::vector<OdValue>& record : recordsOfEntityTable(container, table, id)) {
      EditorRow row;
      row.entityId = id;
      row.values = toCells(record);
      row.rowNumber = number;
      rows.push_back(std::move(row));
    }
  }
  grid.SetItemCount(static_cast<int>(rows.size()));
  invalidate();
  pickFirstEnabled = true;
  objectEventsEnabled = true;
}

void Zarvel::objectErased(ObjectId id) {
  std::size_t first = 0;
  while (first < rows.size() && rows[first].entityId != id) ++first;
  if (first == rows.size()) return;
  erasedRowNumbers.push_back(static_cast<std::int32_t>(rows[first].rowNumber & 0xFFFF));
  std::vector<int> indices;
  for (std::size_t i = first; i < rows.size(); ++i) {
    if (rows[i].entityId == id) indices.push_back(static_cast<int>(i));
  }
  removeRows(std::move(indices));
}

}  // namespace zarvel
