// The editor palette's View menu and its Synchronize check box: selections
// made in the grid as a whole, and whether they reach the drawing.
#include <algorithm>

#include "PaletteChoice.h"
#include "oddata/Port.h"
#include "platform/Text.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/ZarvelPalette.h"

namespace zarvel {

using platform::PromptStatus;

void ZarvelPalette::selectAllRows() {
  editor_.grid.SelectAll();
  editor_.syncSelection(true);
}

void ZarvelPalette::invertSelection() {
  const int count = std::min(editor_.grid.GetItemCount(), static_cast<int>(editor_.rows.size()));
  for (int row = 0; row < count; ++row) {
    editor_.grid.SetRowSelected(row, !editor_.grid.IsRowSelected(row));
  }
  editor_.syncSelection(true);
}

void ZarvelPalette::viewMenu() {
  switch (askChoice(L"View", {L"All", L"Invert", L"Top"}, L"view entry", false).value_or(3)) {
    case 0:
      return selectAllRows();
    case 1:
      return invertSelection();
    case 2:
      // Only the order changes: the drawing's selection stays as it is.
      return editor_.sortSelection();
    default:
      return;
  }
}

// The entries of the File, Edit and View menus, in that order, by their labels.
void ZarvelPalette::menuEntry() {
  enum class Entry { SaveAs, Undo, Redo, Hook, RenameFields, SelectAll, FindValues, Invert, SortSelection, ShowSelection };
  struct Item {
    const wchar_t* label;
    Entry entry;
    int hook;
  };
  static const Item kItems[] = {
      {L"Save As...", Entry::SaveAs, 0},
      {L"Undo", Entry::Undo, 0},
      {L"Redo", Entry::Redo, 0},
      {L"Input Coordinates", Entry::Hook, 0},
      {L"Input Graphical Properties", Entry::Hook, 1},
      {L"Input Text", Entry::Hook, 2},
      {L"Create IDs", Entry::Hook, 3},
      {L"Replace Values", Entry::Hook, 4},
      {L"Copy Values", Entry::Hook, 5},
      {L"Rename Fields", Entry::RenameFields, 0},
      {L"Select All", Entry::SelectAll, 0},
      {L"Find Values", Entry::FindValues, 0},
      {L"Invert Selection", Entry::Invert, 0},
      {L"Sort Selection", Entry::SortSelection, 0},
      {L"Show Selection", Entry::ShowSelection, 0},
  };
  std::vector<std::wstring> labels;
  for (const Item& item : kItems) labels.push_back(item.label);
  const std::optional<std::size_t> index = askChoice(L"Menu item", labels, L"menu item", true);
  if (!index) return;
  const Item* const chosen = &kItems[*index];
  platform::Editor& ed = port().editor();
  // What goes to the command line runs once the palette's own command ends.
  const auto toCommandLine = [&ed] { ed.postCommand(L"CANCELCMD"); };
  switch (chosen->entry) {
    case Entry::SaveAs:
      // The entry is there and does nothing.
      return;
    case Entry::Undo:
      return undo();
    case Entry::Redo:
      return redo();
    case Entry::Hook:
      return editor_.runHook(chosen->hook);
    case Entry::RenameFields:
      toCommandLine();
      return Zarvel::runCommandString(L"ZARVEL_RENAME_COLUMNS");
    case Entry::SelectAll:
      return selectAllRows();
    case Entry::FindValues:
      toCommandLine();
      return port().documents().sendStringToExecute(L"zarvel_has_specific_values\n");
    case Entry::Invert:
      return invertSelection();
    case Entry::SortSelection:
      return editor_.sortSelection();
    case Entry::ShowSelection:
      toCommandLine();
      return editor_.showSelectionInDrawing();
  }
}

void ZarvelPalette::askSynchronize() {
  TableEditorState& state = tableEditorState();
  platform::Editor& ed = port().editor();
  const std::wstring current = state.synchronizeEnabled ? L"Yes" : L"No";
  for (;;) {
    const platform::StringReply reply =
        ed.getString(L"Synchronize [Yes/No] <" + current + L">: ", false);
    if (reply.status != PromptStatus::Normal || reply.text.empty()) return;
    if (platform::equalsIgnoreCase(reply.text, L"Yes") ||
        platform::equalsIgnoreCase(reply.text, L"No")) {
      state.synchronizeEnabled = platform::equalsIgnoreCase(reply.text, L"Yes");
      return;
    }
    ed.print(L"Answer Yes or No.\n");
  }
}

}  // namespace zarvel
