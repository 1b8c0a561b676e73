// Context menus by region. Only the header has a menu of its own: the
// columns that may be hidden, the profiles of the column state, and a way
// back to the default columns.
#include "grid/DataGrid.h"
#include "grid/ViewConfigSection.h"

namespace zarvel {
namespace {

MenuEntry entryOf(MenuEntry::Action action, std::wstring text) {
  MenuEntry entry;
  entry.action = action;
  entry.text = std::move(text);
  return entry;
}

}  // namespace

ContextMenu DataGrid::OnContextMenu(MenuRegion region, int row, int column) {
  EndEditing(true);
  switch (region) {
    case MenuRegion::Header:
      return OnHeaderContextMenu(column);
    case MenuRegion::Cell:
      if (ValidRow(row) && ValidColumn(column)) return OnCellContextMenu(row, column);
      break;
    case MenuRegion::CheckBox: {
      ContextMenu none;
      none.region = MenuRegion::CheckBox;
      none.row = row;
      none.column = column;
      return none;
    }
    case MenuRegion::Grid:
      break;
  }
  return OnGridContextMenu();
}

ContextMenu DataGrid::OnKeyboardContextMenu() {
  return OnContextMenu(ValidRow(focusRow_) ? MenuRegion::Cell : MenuRegion::Grid, focusRow_,
                       focusCell_);
}

ContextMenu DataGrid::OnCellContextMenu(int row, int column) {
  ContextMenu menu;
  menu.region = MenuRegion::Cell;
  menu.row = row;
  menu.column = column;
  return menu;
}

ContextMenu DataGrid::OnGridContextMenu() {
  return ContextMenu{};
}

MenuEntry DataGrid::ProfilesMenu() const {
  MenuEntry submenu = entryOf(MenuEntry::Action::Submenu, L"Column Profiles");
  const auto* profiles = dynamic_cast<const ViewConfigSectionProfiles*>(columnConfig_);
  if (!profiles) return submenu;
  const std::wstring active = profiles->GetActiveProfile();
  for (const std::wstring& name : profiles->GetProfiles()) {
    MenuEntry entry = entryOf(MenuEntry::Action::SwitchProfile, name);
    entry.profile = name;
    entry.checked = name == active;
    submenu.entries.push_back(std::move(entry));
  }
  return submenu;
}

ContextMenu DataGrid::OnHeaderContextMenu(int column) {
  ContextMenu menu;
  menu.region = MenuRegion::Header;
  menu.column = column;
  std::vector<MenuEntry>& entries = menu.entries;
  const std::wstring editor = GetColumnEditorText();
  if (!editor.empty()) entries.push_back(entryOf(MenuEntry::Action::ColumnEditor, editor));
  const std::wstring picker = GetColumnPickerText();
  if (!picker.empty()) {
    entries.push_back(entryOf(MenuEntry::Action::ColumnPicker, picker));
  } else {
    if (!entries.empty()) entries.push_back(MenuEntry::separator());
    for (int c = 0; c < GetColumnCount(); ++c) {
      if (IsColumnAlwaysHidden(c) || IsColumnAlwaysVisible(c)) continue;
      MenuEntry entry = entryOf(MenuEntry::Action::ToggleColumn, GetColumnHeading(c));
      entry.column = c;
      entry.checked = IsColumnVisible(c);
      entries.push_back(std::move(entry));
    }
  }
  MenuEntry profiles = ProfilesMenu();
  const bool hasProfiles = !profiles.entries.empty();
  if (hasProfiles) {
    entries.push_back(MenuEntry::separator());
    entries.push_back(std::move(profiles));
  }
  const auto* withDefaults = dynamic_cast<const ViewConfigSectionDefault*>(columnConfig_);
  if (withDefaults && withDefaults->HasDefaultConfig()) {
    if (!hasProfiles) entries.push_back(MenuEntry::separator());
    entries.push_back(entryOf(MenuEntry::Action::ResetColumns, L"Reset columns"));
  }
  return menu;
}

bool DataGrid::OnContextMenuCommand(const MenuEntry& entry) {
  switch (entry.action) {
    case MenuEntry::Action::ColumnEditor:
      OnShowColumnEditor();
      return true;
    case MenuEntry::Action::ColumnPicker:
      OnShowColumnPicker();
      return true;
    case MenuEntry::Action::ToggleColumn:
      return ShowColumn(entry.column, !IsColumnVisible(entry.column));
    case MenuEntry::Action::SwitchProfile:
      SwitchProfile(entry.profile);
      return true;
    case MenuEntry::Action::ResetColumns:
      ResetColumns();
      return true;
    case MenuEntry::Action::Separator:
    case MenuEntry::Action::Submenu:
    case MenuEntry::Action::Custom:
      break;
  }
  return false;
}

void DataGrid::SwitchProfile(const std::wstring& profile) {
  auto* profiles = dynamic_cast<ViewConfigSectionProfiles*>(columnConfig_);
  if (!profiles) return;
  SaveColumnState(*profiles);
  profiles->SetActiveProfile(profile);
  LoadColumnState(*profiles);
}

void DataGrid::ResetColumns() {
  auto* withDefaults = dynamic_cast<ViewConfigSectionDefault*>(columnConfig_);
  if (!withDefaults) return;
  withDefaults->ResetConfigDefault();
  LoadColumnState(*withDefaults);
  // The store has warned of a failed write; the columns are reset anyway.
  platform::ignoreStatus(withDefaults->Flush());
}

}  // namespace zarvel
