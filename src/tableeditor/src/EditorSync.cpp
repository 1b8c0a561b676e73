// The table editor in step with the drawing: a selection travels both ways
// between the rows and the pick-first set, and a table whose columns changed
// comes back as a fresh load. The flags keep the editor from answering the
// events its own changes cause.
#include <algorithm>
#include <memory>
#include <unordered_set>

#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/Zarvel.h"

namespace zarvel {

using platform::ObjectId;

void Zarvel::syncSelection(bool gridFocused) {
  if (!gridFocused) {
    pickFirstEnabled = false;
    markRowsOfIds(port().editor().impliedSelection());
    pickFirstEnabled = true;
  } else if (tableEditorState().synchronizeEnabled) {
    pickFirstEnabled = false;
    std::vector<ObjectId> ids;
    selectedIds(ids);
    port().editor().setPickFirst(ids);
    pickFirstEnabled = true;
  }
  invalidate();
}

void Zarvel::markRowsOfIds(const std::vector<ObjectId>& ids) {
  // Hashed once, so that a search's million entities against a million rows
  // cost a pass over each, not their product.
  const std::unordered_set<ObjectId> chosen(ids.begin(), ids.end());
  const int count = std::min(grid.GetItemCount(), static_cast<int>(rows.size()));
  for (int row = 0; row < count; ++row) {
    grid.SetRowSelected(row, chosen.count(rows[static_cast<std::size_t>(row)].entityId) > 0);
  }
}

void Zarvel::onPickfirstModified(bool gridFocused) {
  TableEditorState& state = tableEditorState();
  if (!pickFirstEnabled || !shown || state.currentTableName.empty()) return;
  std::unique_ptr<platform::OdTable> table = getODContainer().getTable(state.currentTableName);
  if (!table) {
    // The rows stay until the next load; only the name goes.
    state.currentTableName.clear();
    syncSelection(gridFocused);
    return;
  }
  if (!(table->definition() == state.currentTableDefinition)) {
    state.currentTableDefinition = table->definition();
    loadTable(true);
    return;
  }
  syncSelection(gridFocused);
}

}  // namespace zarvel
