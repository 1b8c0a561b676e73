// The table editor's loading: the table list, the scan of model space into
// rows, the grid's columns, and the text of a cell made on demand.
#include <memory>
#include <set>

#include "grid/ColumnTraitEdit.h"
#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/RecordWrites.h"
#include "tableeditor/Zarvel.h"

namespace zarvel {

using platform::ObjectId;
using platform::OdRecord;
using platform::OpenMode;
using platform::Status;

namespace {

constexpr int kFieldColumnWidth = 120;
constexpr int kNumberColumnWidth = 60;

// The layers whose entities take no row: frozen, hidden, locked or off.
std::set<ObjectId> excludedLayers(const platform::Drawing& drawing) {
  std::set<ObjectId> excluded;
  for (const platform::LayerInfo& layer : drawing.layers()) {
    if (layer.frozen || layer.hidden || layer.locked || layer.off) excluded.insert(layer.id);
  }
  return excluded;
}

// One row per record of the table on each usable entity of model space, the
// entities numbered from 1 in the order met. An entity that won't open is
// still asked for its records. One iterator serves the whole walk, so that a
// million entities cost no million table lookups.
void scanModelSpace(std::vector<EditorRow>& rows, const std::wstring& tableName) {
  platform::OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdTable> table = container.getTable(tableName);
  if (!table) return;
  std::unique_ptr<platform::OdRecordIterator> it = table->newIterator();
  platform::Drawing& drawing = port().drawing();
  const std::set<ObjectId> excluded = excludedLayers(drawing);
  std::uint64_t counter = 1;
  OdRecord record;
  for (ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (id.isNull()) continue;
    if (!excluded.empty()) {
      const std::optional<ObjectId> layer = drawing.entityLayerId(id);
      if (layer && excluded.count(*layer) > 0) continue;
    }
    initWalk(*it, id, OpenMode::Read);
    bool any = false;
    for (; !it->isDone(); it->next()) {
      if (it->getRecord(record) != Status::Ok) continue;
      rows.push_back({id, toCells(record.values()), counter});
      any = true;
    }
    if (any) ++counter;
  }
}

}  // namespace

TableEditorState& tableEditorState() {
  static TableEditorState state;
  return state;
}

Zarvel::Zarvel() : grid(GridStyle{false, true, false, true, true}) {
  grid.SetListener(this);
  grid.SetRowSource([this](int row, int column) { return cellText(row, column); });
}

Zarvel& Zarvel::instance() {
  static Zarvel editor;
  return editor;
}

void Zarvel::fillTableCombo() {
  TableEditorState& state = tableEditorState();
  const std::vector<std::wstring> names = port().project().tableNames(platform::kAllTableKinds);
  if (!containsText(names, state.currentTableName)) state.currentTableName.clear();
  tableItems_.assign(1, std::wstring());
  currentTableItem_ = 0;
  const std::wstring current = platform::lowerCase(state.currentTableName);
  for (const std::wstring& name : names) {
    if (!isUserTable(name)) continue;
    tableItems_.push_back(name);
    if (platform::lowerCase(name) == current) {
      currentTableItem_ = static_cast<int>(tableItems_.size()) - 1;
    }
  }
}

void Zarvel::chooseTable(int item) {
  if (item < 0 || item >= static_cast<int>(tableItems_.size())) return;
  currentTableItem_ = item;
  TableEditorState& state = tableEditorState();
  const std::wstring& name = tableItems_[static_cast<std::size_t>(item)];
  if (name == state.currentTableName) return;
  state.currentTableName = name;
  std::unique_ptr<platform::OdTable> table = getODContainer().getTable(name);
  state.currentTableDefinition = table ? table->definition() : platform::OdTableDef{};
  loadTable(false);
}

void Zarvel::loadTable(bool rebuildCombo) {
  if (!hasPort()) return;
  TableEditorState& state = tableEditorState();
  if (rebuildCombo) fillTableCombo();
  grid.SetItemCount(0);
  for (int column = grid.GetColumnCount() - 1; column >= 0; --column) grid.DeleteColumn(column);
  // Choosing the empty entry leaves the last table's rows behind: the Edit
  // menu's operations still fall back on them.
  if (state.currentTableName.empty()) return;
  rows.clear();
  columnNames.clear();
  scanModelSpace(rows, state.currentTableName);
  // The slack of the vector's growth is a third of a million rows' worth.
  rows.shrink_to_fit();
  platform::OdTableDef definition;
  if (std::unique_ptr<platform::OdTable> table =
          getODContainer().getTable(state.currentTableName)) {
    definition = table->definition();
  }
  for (int i = 0; i < definition.count(); ++i) {
    const std::wstring& name = definition.column(i).name;
    grid.InsertColumnTrait(i, name, Align::Left, kFieldColumnWidth, -1,
                           std::make_unique<ColumnTraitEdit>());
    columnNames.push_back(name);
  }
  // The number column takes the plain text trait, which edits nothing.
  if (grid.GetColumnCount() > 0) grid.InsertColumn(0, L"#", Align::Left, kNumberColumnWidth);
  erasedRowNumbers.clear();
  grid.SetItemCount(static_cast<int>(rows.size()));
  state.sortDescending = 0;
}

void Zarvel::resetEditor() {
  TableEditorState& state = tableEditorState();
  state.currentTableName.clear();
  state.currentTableDefinition = {};
  grid.SetItemCount(0);
  for (int column = grid.GetColumnCount() - 1; column >= 0; --column) grid.DeleteColumn(column);
  rows.clear();
  columnNames.clear();
  erasedRowNumbers.clear();
  tableItems_.clear();
  currentTableItem_ = -1;
}

std::wstring Zarvel::cellText(int row, int column) const {
  if (row < 0 || static_cast<std::size_t>(row) >= rows.size() || column < 0) return {};
  const EditorRow& r = rows[static_cast<std::size_t>(row)];
  if (column == 0) return std::to_wstring(r.rowNumber);
  if (static_cast<std::size_t>(column) > r.values.size()) return {};
  return valueToText(r.values[static_cast<std::size_t>(column - 1)].value());
}

}  // namespace zarvel
