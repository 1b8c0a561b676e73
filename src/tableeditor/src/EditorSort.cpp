// The table editor's rows by selection, by a column's order and by a search.
#include <algorithm>
#include <unordered_set>

#include "SortKeys.h"
#include "oddata/Port.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/NaturalCompare.h"
#include "tableeditor/Zarvel.h"
#include "tableeditor/ZarvelFind.h"

namespace zarvel {

using platform::ObjectId;

void Zarvel::selectedIds(std::vector<ObjectId>& ids) const {
  const int count = std::min(grid.GetItemCount(), static_cast<int>(rows.size()));
  for (int row = 0; row < count; ++row) {
    if (grid.IsRowSelected(row)) ids.push_back(rows[static_cast<std::size_t>(row)].entityId);
  }
}

std::vector<ObjectId> Zarvel::selectedUniqueIds() const {
  std::vector<ObjectId> ids;
  selectedIds(ids);
  std::unordered_set<ObjectId> seen;
  std::size_t kept = 0;
  for (ObjectId id : ids) {
    if (seen.insert(id).second) ids[kept++] = id;
  }
  ids.resize(kept);
  return ids;
}

std::vector<ObjectId> Zarvel::allRowIds() const {
  std::vector<ObjectId> ids;
  ids.reserve(rows.size());
  for (const EditorRow& row : rows) ids.push_back(row.entityId);
  return ids;
}

namespace {

// Puts the rows in the order of their keys, rows of equal keys as they were.
void sortByKeys(std::vector<EditorRow>& rows, const std::vector<std::uint64_t>& keys,
                bool descending) {
  std::vector<std::size_t> order(rows.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](std::size_t l, std::size_t r) {
    return descending ? keys[l] > keys[r] : keys[l] < keys[r];
  });
  std::vector<EditorRow> sorted;
  sorted.reserve(rows.size());
  for (std::size_t i : order) sorted.push_back(std::move(rows[i]));
  rows = std::move(sorted);
}

}  // namespace

void Zarvel::sortRows(int column) {
  TableEditorState& state = tableEditorState();
  // The selected rows, by number and values, to be found again after the sort.
  const std::vector<int> selected = grid.GetSelectedRows();
  std::vector<std::pair<std::uint64_t, std::vector<CellValue>>> snapshot;
  for (int row : selected) {
    if (row < static_cast<int>(rows.size())) {
      const EditorRow& r = rows[static_cast<std::size_t>(row)];
      snapshot.emplace_back(r.rowNumber, r.values);
    }
  }
  if (column != state.sortColumn) state.sortDescending = 0;
  state.sortColumn = column;
  const bool descending = state.sortDescending != 0;
  if (column != 0) {
    sortByKeys(rows, naturalSortKeys(rows, static_cast<std::size_t>(column - 1)), descending);
  } else {
    std::stable_sort(rows.begin(), rows.end(),
                     [descending](const EditorRow& l, const EditorRow& r) {
                       return descending ? l.rowNumber > r.rowNumber : l.rowNumber < r.rowNumber;
                     });
  }
  state.sortDescending = descending ? 0 : 1;
  if (!snapshot.empty() && snapshot.size() < rows.size()) {
    for (std::size_t i = 0; i < rows.size() && static_cast<int>(i) < grid.GetItemCount(); ++i) {
      auto found = std::find_if(snapshot.begin(), snapshot.end(), [&](const auto& entry) {
        return entry.first == rows[i].rowNumber && entry.second == rows[i].values;
      });
      const bool keep = found != snapshot.end();
      if (keep) snapshot.erase(found);
      grid.SetRowSelected(static_cast<int>(i), keep);
    }
  }
  invalidate();
}

void Zarvel::sortSelection() {
  const std::vector<int> selected = grid.GetSelectedRows();
  if (selected.empty()) return;
  grid.ClearSelection();
  std::vector<bool> moved(rows.size(), false);
  std::vector<EditorRow> reordered;
  reordered.reserve(rows.size());
  for (int index : selected) {
    if (static_cast<std::size_t>(index) >= rows.size()) continue;
    grid.SetRowSelected(static_cast<int>(reordered.size()), true);
    reordered.push_back(std::move(rows[static_cast<std::size_t>(index)]));
    moved[static_cast<std::size_t>(index)] = true;
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!moved[i]) reordered.push_back(std::move(rows[i]));
  }
  rows = std::move(reordered);
  invalidate();
}

void Zarvel::runHook(int hook) {
  if (hook < 0 || hook >= kHookCount) return;
  std::vector<ObjectId> ids;
  selectedIds(ids);
  pickFirstEnabled = false;
  objectEventsEnabled = false;
  if (ids.empty()) {
    ids = allRowIds();
    if (hook == kCreateIdsHook) std::reverse(ids.begin(), ids.end());
  }
  if (hooks[hook] != nullptr) hooks[hook](ids);
  // Whatever the operation changed comes back as a fresh load.
  loadTable(false);
  pickFirstEnabled = true;
  objectEventsEnabled = true;
}

int Zarvel::findRow(int field, const std::wstring& text, bool whole, int start) const {
  if (start < 0 || field < 0 || static_cast<std::size_t>(start) >= rows.size()) return -1;
  const std::wstring wanted = platform::lowerCase(text);
  for (std::size_t i = static_cast<std::size_t>(start); i < rows.size(); ++i) {
    const std::vector<CellValue>& values = rows[i].values;
    const std::wstring cell = static_cast<std::size_t>(field) < values.size()
                                  ? platform::lowerCase(valueToText(values[field].value()))
                                  : std::wstring();
    if (whole ? cell == wanted : cell.find(wanted) != std::wstring::npos) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

Zarvel::FindOutcome Zarvel::findNext() {
  ZarvelFind find(columnNames);
  if (port().ui().runModal(find) != platform::kIdOk) return FindOutcome::Cancelled;
  const TableEditorState& state = tableEditorState();
  const int row =
      findRow(find.column(), state.lastFindText, state.lastFindWholeString, grid.GetFocusRow() + 1);
  if (row < 0) return FindOutcome::NotFound;
  grid.ClearSelection();
  grid.SetRowSelected(row, true);
  grid.SetFocusRow(row);
  return FindOutcome::Found;
}

}  // namespace zarvel
