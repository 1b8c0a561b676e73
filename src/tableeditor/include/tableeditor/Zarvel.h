// The table editor as a model: a spreadsheet over one Object Data table,
// one row for each record of the table on each usable entity of model space.
// The grid is a virtual list that holds no text: each cell's text is made
// from the rows when it is shown. A front end renders the model and calls
// its handlers for the user's choices; the writes go back to the drawing
// under the document lock, one host undo step each.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "grid/DataGrid.h"
#include "grid/GridListener.h"
#include "platform/ObjectData.h"
#include "platform/ObjectId.h"
#include "tableeditor/EditorRow.h"

namespace zarvel {

class Zarvel : public GridListener {
 public:
  static constexpr int kIdGrid = 101;
  static constexpr int kIdRefresh = 102;
  static constexpr int kIdTables = 110;
  static constexpr int kIdSynchronize = 134;
  // The operations of the Edit menu, each given the ids of the rows chosen.
  using Hook = void (*)(std::vector<platform::ObjectId>&);
  static constexpr int kHookCount = 6;
  // The hook that numbers its rows: with none selected it numbers from the
  // last row up.
  static constexpr int kCreateIdsHook = 3;

  // The keys the list answers besides its own.
  enum class Key { A, C, F, Z, Y, V, Delete };

  Zarvel();
  Zarvel(const Zarvel&) = delete;
  Zarvel& operator=(const Zarvel&) = delete;

  // The one editor of the module.
  static Zarvel& instance();

  // --- Loading -------------------------------------------------------------
  // The table list: an empty entry, then the project's user tables in its
  // order; the current table's entry chosen, or the empty one.
  void fillTableCombo();
  const std::vector<std::wstring>& tableItems() const { return tableItems_; }
  int currentTableItem() const { return currentTableItem_; }
  // The user chose an entry of the table list.
  void chooseTable(int item);
  // Reloads the current table from model space, in model-space order.
  void loadTable(bool rebuildCombo);
  void refresh() { loadTable(false); }
  // Forgets the table and the rows, as when the drawing goes.
  void resetEditor();
  // The text of a cell: the row number in column 0, a field's text after.
  std::wstring cellText(int row, int column) const;

  // --- Selection, sort and find ---------------------------------------------
  // Appends the entity of each selected row, in row order, repeats kept.
  void selectedIds(std::vector<platform::ObjectId>& ids) const;
  std::vector<platform::ObjectId> selectedUniqueIds() const;
  std::vector<platform::ObjectId> allRowIds() const;
  // A click on a column's heading: ascending at a first click, reversed at
  // the next on the same column; the selected rows stay selected.
  void sortRows(int column);
  // The first row from start on whose field holds the text (ignoring case),
  // or equals it with whole; -1 when none, with no wrap to the top.
  int findRow(int field, const std::wstring& text, bool whole, int start) const;
  // Moves the selected rows to the top, in their order, still selected.
  void sortSelection();
  // Runs an Edit menu operation on the selected rows' entities, or on every
  // row's with none selected, then loads the table afresh.
  void runHook(int hook);
  // Runs the find box over the rows, from the row after the focus on, and
  // selects and focuses the row found.
  enum class FindOutcome { Cancelled, NotFound, Found };
  FindOutcome findNext();

  // --- Writes -------------------------------------------------------------
  // Fills a whole field column with one value typed in the fill box: the
  // selected rows' records, or with none selected every record of every row.
  void fillColumn(int column);
  // Pastes clipboard text, a line per selected row and a cell per field.
  void paste(const std::optional<std::wstring>& clipboardText);
  // Detaches the selected rows' records, after asking.
  void deleteSelectedRows();
  // Re-reads the entities into their rows, records to rows by position.
  void refreshRowsOfIds(platform::OdContainer& container,
                        const std::vector<platform::ObjectId>& ids);
  // Takes rows out of the list.
  void removeRows(std::vector<int> indices);

  // --- Keys and the host's commands ------------------------------------------
  // A key in the list: with Ctrl the first of A, C, F, Z, Y, V that matches;
  // without, Delete only. The clipboard's text goes to a paste.
  void onKey(Key key, bool ctrl, const std::optional<std::wstring>& clipboardText);
  // Queues the text and a line feed at the host's command line.
  static void runCommandString(const std::wstring& text);
  // Zooms to the pick-first set and selects it again, after the handler.
  static void showSelectionInDrawing();

  // --- Synchronisation with the drawing --------------------------------------
  // Carries a selection across: from the grid to the pick-first set when the
  // grid has the focus (and synchronising is on), else from the pick-first set
  // to the rows.
  void syncSelection(bool gridFocused);
  // Selects the rows of these entities and deselects the others; with none,
  // deselects every row.
  void markRowsOfIds(const std::vector<platform::ObjectId>& ids);
  // The drawing's database told of an entity: changed (while the editor is
  // not writing itself) or erased. No front end attaches them to the
  // database, so rows change only through loads.
  void objectModified(platform::ObjectId id);
  void objectErased(platform::ObjectId id);
  // The rows of the entity take its records afresh, in order; rows whose
  // record went are removed, the editor reset when it was the last; an entity
  // with no row gets a row per record at the end.
  void applyEntityChange(platform::OdContainer& container, platform::ObjectId id);
  // The drawing's pick-first set changed: reloads when the table's definition
  // changed meanwhile, else marks the rows of what is selected.
  void onPickfirstModified(bool gridFocused);

  // --- GridListener ---------------------------------------------------------
  // Typing into a cell writes the record at once.
  bool OnEndLabelEdit(DataGrid& source, int row, int column, const EditResult& result) override;
  // A right click on a field's heading fills the column.
  void OnHeaderColumnMenu(DataGrid& /*source*/, int column) override { fillColumn(column); }

  // --- Members --------------------------------------------------------------
  // From the palette's showing until it closes.
  bool shown = false;
  // The table in memory, in display order.
  std::vector<EditorRow> rows;
  // The fields' names; name i heads grid column i + 1.
  std::vector<std::wstring> columnNames;
  // False while the editor itself sets the pick-first set.
  bool pickFirstEnabled = true;
  // False while the editor itself writes records.
  bool objectEventsEnabled = true;
  // Row numbers of erased entities, low word; emptied by each load.
  std::vector<std::int32_t> erasedRowNumbers;
  EditorGrid grid;
  Hook hooks[kHookCount] = {};
  // A front end's repaint of the list, told when the rows changed in place.
  std::function<void()> invalidated;

 private:
  void invalidate() const {
    if (invalidated) invalidated();
  }
  void writeTypedCell(int row, int column, const std::wstring& text);
  void eraseRow(int index);

  std::vector<std::wstring> tableItems_;
  int currentTableItem_ = -1;
};

}  // namespace zarvel
