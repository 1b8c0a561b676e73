// The table editor's palette: the one editor in a panel that stays open
// between commands. A front end without windows reaches it through its
// actions, each asking what it needs at the command line; the palette also
// watches the drawing's pick-first set, to keep the rows in step with it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Editor.h"
#include "platform/Palette.h"
#include "tableeditor/Zarvel.h"

namespace zarvel {

class ZarvelPalette : public platform::PaletteModel, public platform::EditorReactor {
 public:
  explicit ZarvelPalette(Zarvel& editor);

  Zarvel& editor() { return editor_; }

  std::vector<std::wstring> actions() const override;
  void runAction(const std::wstring& action) override;
  void pickfirstModified() override;

 private:
  // While an action runs, the user works in the grid: what changes the
  // selection then comes from it.
  class GridFocus;
  struct Action {
    const wchar_t* name;
    void (ZarvelPalette::*run)();
    bool needsRows;
  };
  static const std::vector<Action>& actionTable();

  void refresh();
  void deleteRows();
  void undo();
  void redo();
  void close();
  void chooseTable();
  void listRows();
  void selectRows();
  void editCell();
  void fillColumn();
  // One of the Edit menu's operations on the selected rows' entities, or on
  // every row's.
  void runOperation();
  // Select All, Invert Selection and Sort Selection.
  void viewMenu();
  void selectAllRows();
  void invertSelection();
  // An entry of the File, Edit or View menu by its label, as a click on it.
  void menuEntry();
  // Whether a selection made in the grid selects its entities too.
  void askSynchronize();
  void pasteCells();
  void sortColumn();
  void findRow();
  // One row as List shows it: its place, a mark when selected, its cells.
  std::wstring rowLine(int row) const;
  // A row's place as listed, asked until it is one; none at Esc.
  std::optional<int> askRow();
  // A column by its heading, asked until it is one; "#" only with the number
  // column allowed. None at Esc.
  std::optional<int> askColumn(bool numberColumn);

  Zarvel& editor_;
  bool gridFocused_ = false;
};

}  // namespace zarvel
