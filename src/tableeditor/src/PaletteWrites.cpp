// The editor palette's actions that change values or the order of the rows:
// a cell typed, a column filled, cells pasted, a sort and a find. Each asks
// its answers first and then does what the grid's own gesture does.
#include "PaletteChoice.h"
#include "oddata/CommandFrame.h"
#include "oddata/Port.h"
#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "tableeditor/ZarvelPalette.h"

namespace zarvel {

using platform::PromptStatus;

namespace {

// A cell's value typed at a prompt: Enter keeps it, "" empties it.
std::optional<std::wstring> askValue(const std::wstring& current) {
  const platform::StringReply reply =
      port().editor().getString(L"Value <" + current + L">: ", true);
  if (reply.status != PromptStatus::Normal || reply.text.empty()) return std::nullopt;
  if (reply.text == L"\"\"") return std::wstring();
  return reply.text;
}

// The Edit menu's operations, in the order of the editor's hooks.
const wchar_t* const kOperations[Zarvel::kHookCount] = {L"Coordinates", L"Properties", L"Text",
                                                        L"IDs",         L"Replace",    L"Values"};

}  // namespace

void ZarvelPalette::runOperation() {
  const std::vector<std::wstring> names(std::begin(kOperations), std::end(kOperations));
  if (const auto hook = askChoice(L"Operation", names, L"operation", false)) {
    editor_.runHook(static_cast<int>(*hook));
  }
}

void ZarvelPalette::editCell() {
  const std::optional<int> row = askRow();
  if (!row) return;
  const std::optional<int> column = askColumn(false);
  if (!column) return;
  const std::optional<std::wstring> text = askValue(editor_.cellText(*row, *column));
  if (!text) return;
  // The click that starts the edit selects the row, as the grid's does.
  editor_.grid.ClearSelection();
  editor_.grid.SetRowSelected(*row, true);
  editor_.grid.SetFocusRow(*row);
  editor_.syncSelection(true);
  EditResult result;
  result.text = *text;
  editor_.OnEndLabelEdit(editor_.grid, *row, *column, result);
}

void ZarvelPalette::fillColumn() {
  if (const std::optional<int> column = askColumn(false)) editor_.fillColumn(*column);
}

void ZarvelPalette::pasteCells() {
  // The lines as the clipboard would hold them, each with its line feed.
  std::wstring text;
  for (;;) {
    const platform::StringReply reply = port().editor().getString(L"Cells: ", true);
    if (reply.status != PromptStatus::Normal) return;
    if (reply.text.empty()) break;
    text += reply.text + L"\n";
  }
  editor_.paste(text);
}

void ZarvelPalette::sortColumn() {
  if (const std::optional<int> column = askColumn(true)) editor_.sortRows(*column);
}

void ZarvelPalette::findRow() {
  platform::Editor& ed = port().editor();
  switch (editor_.findNext()) {
    case Zarvel::FindOutcome::Found:
      ed.print(rowLine(editor_.grid.GetFocusRow()));
      return;
    case Zarvel::FindOutcome::NotFound:
      ed.print(L"No further row matches.\n");
      return;
    case Zarvel::FindOutcome::Cancelled:
      return;
  }
}

}  // namespace zarvel
