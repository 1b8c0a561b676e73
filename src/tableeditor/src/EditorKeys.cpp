// The table editor's keys and the strings it hands to the host's command
// line: undo and redo are the host's, and so is the value search.
#include "oddata/Port.h"
#include "tableeditor/Zarvel.h"

namespace zarvel {

void Zarvel::runCommandString(const std::wstring& text) {
  port().documents().sendStringToExecute(text + L"\n");
}

void Zarvel::showSelectionInDrawing() {
  // The zoom uses the pick-first set up; the selection brings it back.
  port().documents().sendStringToExecute(L"_.zoom _o\n");
  port().documents().sendStringToExecute(L"_.select _p\n\n");
}

void Zarvel::onKey(Key key, bool ctrl, const std::optional<std::wstring>& clipboardText) {
  if (!ctrl) {
    if (key == Key::Delete) deleteSelectedRows();
    return;
  }
  switch (key) {
    case Key::A:
      grid.SelectAll();
      return;
    case Key::C:
      grid.OnCopyToClipboard();
      return;
    case Key::F:
      runCommandString(L"ZARVEL_HAS_SPECIFIC_VALUES");
      return;
    case Key::Z:
      // The added line feed takes the prompt's default of one step.
      runCommandString(L"_UNDO\n");
      return;
    case Key::Y:
      runCommandString(L"_MREDO\n");
      return;
    case Key::V:
      paste(clipboardText);
      return;
    case Key::Delete:
      return;
  }
}

}  // namespace zarvel
