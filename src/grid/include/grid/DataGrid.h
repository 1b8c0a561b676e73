// The grid model: a report-style list that behaves like a grid. Columns carry
// traits that decide how their cells edit, sort and look; rows are either
// items the grid stores (for small dialogs) or a virtual list whose text is
// found on demand (owner data, for a million rows). On top: a focus cell in
// the focused row, in-place editing, keyboard search within a column, copying
// as tab-separated text, sorting, moving rows by drag and drop, context menus
// and column state kept in a configuration. A front end renders it and feeds
// it the user's clicks and keys; the command-line host asks it as prompts
// through platform::GridView.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "grid/CellEditor.h"
#include "grid/ColumnTrait.h"
#include "grid/ContextMenu.h"
#include "grid/GridListener.h"
#include "grid/GridTypes.h"
#include "grid/RowTrait.h"
#include "platform/GridView.h"

namespace zarvel {

class ViewConfigSection;

inline constexpr int kDefaultColumnWidth = 100;
inline constexpr const wchar_t* kDefaultEmptyMarkupText =
    L"There are no items to show in this view.";

class DataGrid : public platform::GridView {
 public:
  // The text of a cell of an owner-data grid, asked for as it is shown.
  using RowSource = std::function<std::wstring(int row, int column)>;
  // Seconds on a clock that only goes forward; the keyboard search times its
  // keys with it.
  using Clock = std::function<std::int64_t()>;

  explicit DataGrid(GridStyle style = {});
  ~DataGrid() override;
  DataGrid(const DataGrid&) = delete;
  DataGrid& operator=(const DataGrid&) = delete;

  // --- Style and holder --------------------------------------------------
  const GridStyle& GetStyle() const { return style_; }
  void SetSingleSelect(bool single);
  void SetCheckBoxes(bool on) { style_.checkBoxes = on; }
  void SetGridLines(bool on) { style_.gridLines = on; }
  void SetColumnHeader(bool on) { style_.columnHeader = on; }
  // Switches between stored items and a virtual list; the rows go.
  void SetOwnerData(bool on);
  bool IsOwnerData() const { return style_.ownerData; }
  void SetListener(GridListener* listener) { listener_ = listener; }
  GridListener* GetListener() const { return listener_; }

  // --- Columns -----------------------------------------------------------
  // Inserts a column at a list index with the trait that edits and draws it;
  // the grid owns the trait. subItem -1 takes the index. The index, or -1.
  int InsertColumnTrait(int position, const std::wstring& heading, Align format, int width,
                        int subItem, std::unique_ptr<ColumnTrait> trait);
  // A plain column, with a read-only text trait.
  int InsertColumn(int position, const std::wstring& heading, Align format = Align::Left,
                   int width = kDefaultColumnWidth, int subItem = -1);
  // An empty column 0 that can never be shown, so that the first real column
  // is free of the list's label-column rules.
  int InsertHiddenLabelColumn();
  bool DeleteColumn(int column);
  int GetColumnCount() const { return static_cast<int>(columns_.size()); }
  // The column's trait; an index out of range throws std::out_of_range.
  ColumnTrait& GetColumnTrait(int column) const;
  int GetColumnTraitSize() const { return GetColumnCount(); }
  // The trait that handles the cell; an override may vary it by row.
  virtual ColumnTrait& GetCellColumnTrait(int row, int column) const;

  const std::wstring& GetColumnHeading(int column) const;
  void SetColumnHeading(int column, const std::wstring& heading);
  Align GetColumnFormat(int column) const;
  int GetColumnSubItem(int column) const;
  int GetColumnWidth(int column) const;
  bool SetColumnWidth(int column, int width);
  // Column indices in display order, hidden columns included (in front).
  const std::vector<int>& GetColumnOrderArray() const { return order_; }
  bool SetColumnOrderArray(const std::vector<int>& order);
  int GetColumnPosition(int column) const;
  // The visible columns in display order.
  std::vector<int> GetVisibleColumns() const;

  // Hides by width 0 and a place in front of the visible columns; shows at
  // the width and place it had.
  bool ShowColumn(int column, bool show);
  bool IsColumnVisible(int column) const;
  bool IsColumnResizable(int column) const;
  bool IsColumnAlwaysVisible(int column) const;
  bool IsColumnAlwaysHidden(int column) const;
  // Sizes a column (-1: every visible one) to its widest text.
  bool SetColumnWidthAuto(int column = -1, bool includeHeader = false);
  // Measures a text for auto sizing; a front end with real fonts overrides.
  virtual int MeasureText(const std::wstring& text) const;
  void SetSortArrow(int column, bool ascending);
  int GetSortColumn() const { return sortColumn_; }
  bool IsSortAscending() const { return sortAscending_; }

  // --- Rows --------------------------------------------------------------
  int GetItemCount() const { return rowCount_; }
  // Stored items only: an owner-data grid answers -1 and false.
  int InsertItem(int row, const std::wstring& text);
  bool SetItemText(int row, int column, const std::wstring& text);
  bool DeleteItem(int row);
  bool DeleteAllItems();
  bool SetItemData(int row, std::uintptr_t data);
  std::uintptr_t GetItemData(int row) const;
  bool SetCellImage(int row, int column, int image);
  // The cell's image, -1 for none; OnDisplayCellImage may answer.
  int GetCellImage(int row, int column) const;
  // The text the cell shows: OnDisplayCellText, else the row source of an
  // owner-data grid, else the stored text.
  std::wstring GetItemText(int row, int column) const;
  // Owner data: the number of virtual rows and where their text comes from.
  void SetItemCount(int count);
  void SetRowSource(RowSource source) { rowSource_ = std::move(source); }

  // --- Selection, focus and checks ---------------------------------------
  bool IsRowSelected(int row) const;
  void SetRowSelected(int row, bool selected);
  void SelectAll();
  void ClearSelection();
  int GetSelectedCount() const;
  std::vector<int> GetSelectedRows() const;
  int GetFocusRow() const { return focusRow_; }
  void SetFocusRow(int row);
  bool GetCheck(int row) const;
  void SetCheck(int row, bool checked);

  int GetFocusCell() const { return focusCell_; }
  // Sets the focus cell's column; -1 gives row focus.
  void SetFocusCell(int column, bool redraw = false);
  // To the next visible column right, or left (from the first, row focus).
  void MoveFocusCell(bool right);

  // --- Editing -----------------------------------------------------------
  // Opens the trait's editor on the cell; null when the trait gives none or
  // the holder refuses. A click on an image flips it and gives none.
  CellEditor* EditCell(int row, int column, CellPart part = CellPart::Label);
  CellEditor* GetEditor() const { return editor_.get(); }
  // Ends an open editor, taking or dropping its text.
  void EndEditing(bool take);
  // Whether an ended edit changes the cell; the base asks the holder.
  virtual bool OnEditComplete(int row, int column, CellEditor* editor, const EditResult& result);
  // Where every edit ends, from an editor or a trait; true when the cell
  // took the result.
  bool OnEndLabelEdit(int row, int column, CellEditor* editor, const EditResult& result);
  // Whether a click opens an editor: never with Ctrl or Shift, nor on a
  // read-only cell; otherwise the trait's answer.
  virtual int OnClickEditStart(int row, int column, CellPart part, bool doubleClick,
                               KeyModifiers modifiers);

  // --- Input from a front end --------------------------------------------
  // A press of the left button on a cell (row -1: off the rows).
  void OnLButtonDown(int row, int column, CellPart part, KeyModifiers modifiers = {});
  void OnLButtonDblClk(int row, int column, CellPart part, KeyModifiers modifiers = {});
  void OnRButtonDown(int row, int column);
  // True when the grid handled the key.
  bool OnKeyDown(GridKey key, KeyModifiers modifiers = {});
  // A typed character: the keyboard search in the focus cell's column.
  bool OnChar(wchar_t ch, KeyModifiers modifiers = {});

  // --- Keyboard search, copy, sort, drag and drop ------------------------
  void SetSearchClock(Clock clock) { clock_ = std::move(clock); }
  // The first row from startRow on, round to the top, whose cell begins with
  // the text, ignoring case; -1 when none.
  virtual int OnKeyboardSearch(int column, int startRow, const std::wstring& text) const;
  // The selection as tab-separated lines; see the rules in the source.
  std::wstring GetSelectedText(bool includeHeader) const;
  virtual bool OnCopyToClipboard();
  // Stable sort of stored items by the column's trait; false for owner data.
  virtual bool SortColumn(int column, bool ascending);
  // A click on a sortable header: ascending, or flips a column sorted already.
  bool OnHeaderClick(int column);
  // Whether the grid takes drops of its own rows.
  virtual bool EnableOleDragDrop() { return true; }
  // What a drag of the selected rows carries: their text without headings.
  std::wstring OnBeginDrag() const { return GetSelectedText(false); }
  // Moves the selected rows before targetRow (the row count: to the end).
  // Refused for owner data, for a grid that takes no drops, and for a drop
  // that changes nothing.
  bool OnDropRows(int targetRow);

  // --- Context menus -----------------------------------------------------
  ContextMenu OnContextMenu(MenuRegion region, int row, int column);
  // The keyboard's menu, on the focus cell.
  ContextMenu OnKeyboardContextMenu();
  virtual ContextMenu OnHeaderContextMenu(int column);
  virtual ContextMenu OnCellContextMenu(int row, int column);
  virtual ContextMenu OnGridContextMenu();
  // Carries out a chosen entry; false when it names nothing the grid knows.
  virtual bool OnContextMenuCommand(const MenuEntry& entry);
  // Texts a derived grid gives to add its column editor or picker.
  virtual std::wstring GetColumnEditorText() const { return L""; }
  virtual std::wstring GetColumnPickerText() const { return L""; }
  virtual void OnShowColumnEditor() {}
  virtual void OnShowColumnPicker() {}

  // --- Display hooks: true means the value given out is to be used --------
  virtual bool OnDisplayCellText(int row, int column, std::wstring& text) const;
  virtual bool OnDisplayCellImage(int row, int column, int& image) const;
  virtual bool OnDisplayCellTooltip(int row, int column, std::wstring& text) const;
  virtual bool OnDisplayCellColor(int row, int column, Color& text, Color& back) const;
  virtual bool OnDisplayCellFont(int row, int column, FontSpec& font) const;
  virtual bool OnDisplayRowColor(int row, Color& text, Color& back) const;
  virtual bool OnDisplayRowFont(int row, FontSpec& font) const;
  // Everything a front end needs to draw the cell, from the row trait, the
  // column trait and the hooks.
  CellLook GetCellLook(int row, int column) const;
  std::wstring GetCellTooltip(int row, int column) const;

  void SetRowTrait(std::unique_ptr<RowTrait> trait);
  RowTrait& GetRowTrait() const { return *rowTrait_; }
  void SetFont(const FontSpec& font) { font_ = font; }
  // The font of the cells: the window's, scaled by the cell margin.
  FontSpec GetCellFont() const;
  void SetCellMargin(double factor) { cellMargin_ = factor; }
  double GetCellMargin() const { return cellMargin_; }

  // The text drawn over an empty grid; nothing while rows are shown.
  void SetEmptyMarkupText(std::wstring text) { emptyMarkupText_ = std::move(text); }
  std::wstring GetEmptyMarkupText() const;

  // --- Column state ------------------------------------------------------
  // Attaches where column state is kept, owned or not. A section with
  // defaults loads them; otherwise the present state becomes its defaults.
  void SetupColumnConfig(ViewConfigSection* section, bool owned);
  ViewConfigSection* GetColumnConfig() const { return columnConfig_; }
  void LoadColumnState(ViewConfigSection& section);
  void SaveColumnState(ViewConfigSection& section);
  void LoadColumnWidth(ViewConfigSection& section, int position, int column);
  void SaveColumnWidth(ViewConfigSection& section, int position, int column);

  // --- platform::GridView ------------------------------------------------
  int columnCount() const override { return GetColumnCount(); }
  std::wstring columnHeading(int column) const override { return GetColumnHeading(column); }
  bool isColumnVisible(int column) const override { return IsColumnVisible(column); }
  int rowCount() const override { return GetItemCount(); }
  std::wstring cellText(int row, int column) const override { return GetItemText(row, column); }
  bool isCellEditable(int row, int column) const override;
  // Opens the cell's editor, types the text and ends it with Enter.
  bool commitCellEdit(int row, int column, const std::wstring& text) override;
  bool isMultiSelect() const override { return !style_.singleSelect; }
  bool isRowSelected(int row) const override { return IsRowSelected(row); }
  void setRowSelected(int row, bool selected) override { SetRowSelected(row, selected); }

 private:
  // A stored text with its sort prefix, made while the text is at hand so
  // that a sort need not fetch a million texts to begin.
  struct StoredCell {
    std::wstring text;
    std::uint64_t prefixHigh = 0;
    std::uint64_t prefixLow = 0;
  };
  // Stored items keep their texts by column, so that a column's cells lie
  // side by side for a sort or a search over a million rows.
  struct Column {
    std::wstring heading;
    Align format = Align::Left;
    int width = 0;
    int subItem = 0;
    std::unique_ptr<ColumnTrait> trait;
    std::vector<StoredCell> cells;  // one per stored row
    std::vector<int> images;        // one per stored row, once any is set
  };
  enum : std::uint8_t { kSelected = 1, kChecked = 2 };

  bool ValidRow(int row) const { return row >= 0 && row < rowCount_; }
  bool ValidColumn(int column) const { return column >= 0 && column < GetColumnCount(); }
  const std::wstring& StoredText(int row, int column) const;
  void StoreText(int row, int column, const std::wstring& text);
  // The cell's text as GetItemText finds it, without a copy where it is
  // stored; scratch holds it otherwise.
  std::wstring_view CellText(int row, int column, std::wstring& scratch) const;
  void NotifySelection();
  void SelectOnly(int row);
  void ClickSelect(int row, KeyModifiers modifiers);
  void MoveFocusRow(int row, KeyModifiers modifiers);
  void RowsArrived();
  // Puts the rows in a new order: order[i] is the old index of new row i.
  void ApplyRowOrder(const std::vector<int>& order);
  void ResetSearch();
  std::wstring LineOfRow(int row, const std::vector<int>& columns) const;
  MenuEntry ProfilesMenu() const;
  void SwitchProfile(const std::wstring& profile);
  void ResetColumns();

  GridStyle style_;
  GridListener* listener_ = nullptr;
  std::vector<Column> columns_;
  std::vector<int> order_;
  std::vector<std::uintptr_t> itemData_;
  std::vector<std::uint8_t> rowState_;
  int rowCount_ = 0;
  RowSource rowSource_;

  ViewConfigSection* columnConfig_ = nullptr;
  bool columnConfigOwned_ = false;
  std::unique_ptr<RowTrait> rowTrait_;
  int focusRow_ = -1;
  int anchorRow_ = -1;
  int focusCell_ = -1;

  std::wstring searchText_;
  std::int64_t searchTime_ = 0;
  int searchCell_ = -1;
  int searchRow_ = -1;
  int searchRepeat_ = 0;
  Clock clock_;

  int sortColumn_ = -1;
  bool sortAscending_ = false;

  std::unique_ptr<CellEditor> editor_;
  // Ended editors live until the next edit opens outside any ending, as a
  // window closes only after the message that ended it has returned: an
  // editor's End may still be running below the holder's notification.
  std::vector<std::unique_ptr<CellEditor>> closingEditors_;
  int endingDepth_ = 0;
  bool lastEditTaken_ = false;

  FontSpec font_;
  double cellMargin_ = 1.0;
  std::wstring emptyMarkupText_ = kDefaultEmptyMarkupText;
  bool invalidateMarkupText_ = true;
};

// The table editor's grid: its first column is drawn apart, and its header
// menu goes to the holder for every column but the first.
class EditorGrid : public DataGrid {
 public:
  using DataGrid::DataGrid;
  bool OnDisplayCellColor(int row, int column, Color& text, Color& back) const override;
  ContextMenu OnHeaderContextMenu(int column) override;
  // The back colour of the first column.
  void SetLabelColumnColor(Color color) { labelColumnColor_ = color; }

 private:
  Color labelColumnColor_ = rgbColor(0xF0, 0xF0, 0xF0);
};

// A grid that takes no drops.
class NoDropGrid : public DataGrid {
 public:
  using DataGrid::DataGrid;
  bool EnableOleDragDrop() override { return false; }
};

}  // namespace zarvel
