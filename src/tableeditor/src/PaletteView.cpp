// The editor palette's View menu and its Synchronize check box: selections
// made in the grid as a whole, and whether they reach the drawing.
#include <algorithm>

#include "oddata/Port.h"
#include "platform/Text.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/ZarvelPalette.h"

namespace zarvel {

using platform::PromptStatus;

void ZarvelPalette::viewMenu() {
  platform::Editor& ed = port().editor();
  for (;;) {
    const platform::StringReply reply = ed.getString(L"View [All/Invert/Top]: ", false);
    if (reply.status != PromptStatus::Normal || reply.text.empty()) return;
    if (platform::equalsIgnoreCase(reply.text, L"All")) {
      editor_.grid.SelectAll();
      editor_.syncSelection(true);
      return;
    }
    if (platform::equalsIgnoreCase(reply.text, L"Invert")) {
      const int count =
          std::min(editor_.grid.GetItemCount(), static_cast<int>(editor_.rows.size()));
      for (int row = 0; row < count; ++row) {
        editor_.grid.SetRowSelected(row, !editor_.grid.IsRowSelected(row));
      }
      editor_.syncSelection(true);
      return;
    }
    if (platform::equalsIgnoreCase(reply.text, L"Top")) {
      // Only the order changes: the drawing's selection stays as it is.
      editor_.sortSelection();
      return;
    }
    ed.print(L"No view entry is named " + reply.text + L".\n");
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
