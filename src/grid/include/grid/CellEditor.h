// In-place editors as models: the text being typed into a cell, whether the
// user changed it, and an end that either takes the text or drops it. A front
// end shows an editor over the cell and forwards the user's typing and keys;
// the grid learns the outcome when the editor ends.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "grid/DateTime.h"
#include "grid/GridTypes.h"

namespace zarvel {

class DataGrid;

class CellEditor {
 public:
  // Keys that may end an edit; the wheel and a lost focus end it too.
  enum class Key { Tab, Enter, Escape };

  CellEditor(DataGrid& grid, int row, int column, std::wstring text);
  virtual ~CellEditor() = default;
  CellEditor(const CellEditor&) = delete;
  CellEditor& operator=(const CellEditor&) = delete;

  int GetRow() const { return row_; }
  int GetColumn() const { return column_; }
  const std::wstring& GetText() const { return text_; }
  // Text typed by the user, which marks the editor modified; false when the
  // editor cannot hold it and keeps its text.
  virtual bool SetText(const std::wstring& text);
  bool IsModified() const { return modified_; }
  bool IsEnded() const { return ended_; }

  // Tab and Enter end the edit taking the text, Escape drops it. True when
  // the key ended the edit.
  virtual bool OnKey(Key key);
  void OnMouseWheel() { End(true); }
  void OnKillFocus() { End(true); }
  // Ends once: the grid gets the text only when asked to take it and the
  // user changed it, so an edit with no key pressed changes nothing.
  void End(bool take);

 protected:
  // The text the grid gets when the edit is taken.
  virtual std::wstring ResultText() const { return text_; }

 private:
  DataGrid& grid_;
  int row_;
  int column_;
  std::wstring text_;
  bool modified_ = false;
  bool ended_ = false;
};

// A one-line edit box.
class CellEditorText : public CellEditor {
 public:
  CellEditorText(DataGrid& grid, int row, int column, std::wstring text, Align align = Align::Left,
                 int limit = -1);
  bool SetText(const std::wstring& text) override;
  Align GetAlign() const { return align_; }
  int GetLimit() const { return limit_; }

 private:
  Align align_;
  int limit_;  // -1 for none
};

// A multi-line edit box: Enter is a line break the front end types, not an
// end; the box grows by one line per line break up to its maximum.
class CellEditorMultiline : public CellEditorText {
 public:
  CellEditorMultiline(DataGrid& grid, int row, int column, std::wstring text, Align align,
                      int limit, int maxLines);
  bool OnKey(Key key) override;
  // Lines the box shows, for a front end sizing it by its font height.
  int GetVisibleLines() const;

 private:
  int maxLines_;
};

// A combo box of fixed items. A drop-down list takes only its items' texts;
// a drop-down also takes free text.
class CellEditorCombo : public CellEditor {
 public:
  struct Item {
    std::wstring text;
    std::uintptr_t data = 0;
  };
  enum class Style { DropDownList, DropDown };

  CellEditorCombo(DataGrid& grid, int row, int column, std::wstring text, std::vector<Item> items,
                  Style style, int limit);
  // A text equal to an item's, ignoring case, selects that item.
  bool SetText(const std::wstring& text) override;
  bool SelectItem(int index);
  int GetCurSel() const { return current_; }
  const std::vector<Item>& GetItems() const { return items_; }
  Style GetStyle() const { return style_; }

 private:
  int FindItem(const std::wstring& text) const;

  std::vector<Item> items_;
  Style style_;
  int limit_;
  int current_ = -1;
};

// A date and time control: its value, shown and handed over in a format.
class CellEditorDateTime : public CellEditor {
 public:
  CellEditorDateTime(DataGrid& grid, int row, int column, std::wstring text, std::wstring format);
  // Takes a text in the editor's format; false for any other.
  bool SetText(const std::wstring& text) override;
  void SetDateTime(const DateTime& value);
  // Empty when the cell's text did not read as a time and nothing was set.
  const std::optional<DateTime>& GetDateTime() const { return value_; }

 private:
  std::wstring format_;
  std::optional<DateTime> value_;
};

}  // namespace zarvel
