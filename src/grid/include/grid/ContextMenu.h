// A grid's context menu as data: where it was asked for, and its entries,
// which a front end shows as a pop-up menu and hands back when one is chosen.
#pragma once

#include <string>
#include <vector>

namespace zarvel {

// Where the menu was asked for; the keyboard's menu lands on the focus cell.
enum class MenuRegion { Header, Cell, Grid, CheckBox };

struct MenuEntry {
  enum class Action {
    Separator,
    Submenu,        // a title over its own entries
    ColumnEditor,   // a derived grid's column editor
    ColumnPicker,   // a derived grid's column picker
    ToggleColumn,   // shows or hides `column`
    SwitchProfile,  // makes `profile` the active profile
    ResetColumns,   // back to the default column state
    Custom,         // a derived grid's own, by `id`
  };

  Action action = Action::Separator;
  std::wstring text;
  bool checked = false;
  int column = -1;
  std::wstring profile;
  int id = 0;
  std::vector<MenuEntry> entries;  // of a submenu

  static MenuEntry separator() { return MenuEntry{}; }
};

struct ContextMenu {
  MenuRegion region = MenuRegion::Grid;
  int row = -1;
  int column = -1;
  std::vector<MenuEntry> entries;
};

}  // namespace zarvel
