// The editor's palette and its actions at the command line: the table, the
// listing and the selection of rows. The writes are in PaletteWrites.cpp.
#include "tableeditor/ZarvelPalette.h"

#include "PaletteChoice.h"
#include "RowRanges.h"
#include "oddata/CommandFrame.h"
#include "oddata/Port.h"
#include "platform/Text.h"
#include "tableeditor/EditorState.h"

namespace zarvel {

using platform::PromptStatus;

namespace {

constexpr wchar_t kPaletteName[] = L"ZARVEL_TABLE";
constexpr wchar_t kSeparator[] = L" | ";

std::wstring padded(const std::wstring& text, std::size_t width) {
  return std::wstring(width > text.size() ? width - text.size() : 0, L' ') + text;
}

}  // namespace

class ZarvelPalette::GridFocus {
 public:
  explicit GridFocus(bool& focused) : focused_(focused), before_(focused) { focused_ = true; }
  ~GridFocus() { focused_ = before_; }
  GridFocus(const GridFocus&) = delete;
  GridFocus& operator=(const GridFocus&) = delete;

 private:
  bool& focused_;
  bool before_;
};

ZarvelPalette::ZarvelPalette(Zarvel& editor)
    : platform::PaletteModel(kPaletteName), editor_(editor) {}

// The actions in the order offered, each with whether it works on rows,
// which an empty grid has none of.
const std::vector<ZarvelPalette::Action>& ZarvelPalette::actionTable() {
  static const std::vector<Action> table = {
      {L"Table", &ZarvelPalette::chooseTable, false},
      {L"Refresh", &ZarvelPalette::refresh, false},
      {L"List", &ZarvelPalette::listRows, false},
      {L"Select", &ZarvelPalette::selectRows, true},
      {L"Edit", &ZarvelPalette::editCell, true},
      {L"Fill", &ZarvelPalette::fillColumn, true},
      {L"Paste", &ZarvelPalette::pasteCells, true},
      {L"Delete", &ZarvelPalette::deleteRows, true},
      {L"Sort", &ZarvelPalette::sortColumn, true},
      {L"Find", &ZarvelPalette::findRow, true},
      {L"Operation", &ZarvelPalette::runOperation, false},
      {L"View", &ZarvelPalette::viewMenu, true},
      {L"Menu", &ZarvelPalette::menuEntry, false},
      {L"Synchronize", &ZarvelPalette::askSynchronize, false},
      {L"Undo", &ZarvelPalette::undo, false},
      {L"Redo", &ZarvelPalette::redo, false},
      {L"Close", &ZarvelPalette::close, false},
  };
  return table;
}

std::vector<std::wstring> ZarvelPalette::actions() const {
  std::vector<std::wstring> names;
  for (const Action& action : actionTable()) names.push_back(action.name);
  return names;
}

void ZarvelPalette::runAction(const std::wstring& name) {
  ResourceScope scope;
  GridFocus focus(gridFocused_);
  for (const Action& action : actionTable()) {
    if (name != action.name) continue;
    if (action.needsRows && editor_.grid.GetItemCount() == 0) {
      port().editor().print(L"No rows are shown: choose a table with Table.\n");
      return;
    }
    (this->*action.run)();
    return;
  }
}

void ZarvelPalette::refresh() {
  editor_.refresh();
}

void ZarvelPalette::deleteRows() {
  editor_.deleteSelectedRows();
}

// The host's command runs once the one that offers these actions has ended,
// as it would beside a docked palette.
void ZarvelPalette::undo() {
  port().editor().postCommand(L"CANCELCMD");
  editor_.onKey(Zarvel::Key::Z, true, std::nullopt);
}

void ZarvelPalette::redo() {
  port().editor().postCommand(L"CANCELCMD");
  editor_.onKey(Zarvel::Key::Y, true, std::nullopt);
}

void ZarvelPalette::close() {
  editor_.shown = false;
}

void ZarvelPalette::pickfirstModified() {
  editor_.onPickfirstModified(gridFocused_);
}

void ZarvelPalette::chooseTable() {
  editor_.fillTableCombo();
  // The list's first item is the empty one, which the prompt does not offer.
  const std::vector<std::wstring>& items = editor_.tableItems();
  const std::vector<std::wstring> tables(items.begin() + (items.empty() ? 0 : 1), items.end());
  const int current = editor_.currentTableItem();
  std::optional<std::size_t> shown;
  if (current > 0) shown = static_cast<std::size_t>(current - 1);
  const std::optional<std::size_t> chosen = askChoice(L"Table", tables, L"table", true, shown);
  if (chosen) editor_.chooseTable(static_cast<int>(*chosen) + 1);
}

std::wstring ZarvelPalette::rowLine(int row) const {
  const std::wstring place = std::to_wstring(row + 1);
  const std::size_t width = std::to_wstring(editor_.rows.size()).size();
  std::wstring line = padded(place, width) + (editor_.grid.IsRowSelected(row) ? L"* " : L"  ");
  for (int column = 0; column < editor_.grid.GetColumnCount(); ++column) {
    if (column > 0) line += kSeparator;
    line += editor_.cellText(row, column);
  }
  return line + L"\n";
}

void ZarvelPalette::listRows() {
  platform::Editor& ed = port().editor();
  const int count = std::min(editor_.grid.GetItemCount(), static_cast<int>(editor_.rows.size()));
  const platform::StringReply reply = ed.getString(L"Rows <*>: ", false);
  if (reply.status != PromptStatus::Normal) return;
  const std::optional<std::vector<int>> rows =
      parseRowRanges(reply.text.empty() ? L"*" : reply.text, count);
  if (!rows) {
    ed.print(L"No rows " + reply.text + L": the rows are 1-" + std::to_wstring(count) + L".\n");
    return;
  }
  const std::wstring& table = tableEditorState().currentTableName;
  ed.print((table.empty() ? L"No table" : table) + L": " + std::to_wstring(count) + L" rows, " +
           std::to_wstring(editor_.grid.GetSelectedCount()) + L" selected\n");
  if (editor_.grid.GetColumnCount() == 0) return;
  std::wstring header = padded(L"", std::to_wstring(editor_.rows.size()).size()) + L"  #";
  for (const std::wstring& name : editor_.columnNames) header += kSeparator + name;
  ed.print(header + L"\n");
  for (int row : *rows) ed.print(rowLine(row));
}

std::optional<int> ZarvelPalette::askRow() {
  platform::Editor& ed = port().editor();
  const int count = std::min(editor_.grid.GetItemCount(), static_cast<int>(editor_.rows.size()));
  for (;;) {
    const platform::StringReply reply = ed.getString(L"Row: ", false);
    if (reply.status != PromptStatus::Normal || reply.text.empty()) return std::nullopt;
    const std::optional<std::vector<int>> rows = parseRowRanges(reply.text, count);
    if (rows && rows->size() == 1) return rows->front();
    ed.print(L"No row " + reply.text + L": give one of 1-" + std::to_wstring(count) + L".\n");
  }
}

std::optional<int> ZarvelPalette::askColumn(bool numberColumn) {
  platform::Editor& ed = port().editor();
  for (;;) {
    const platform::StringReply reply = ed.getString(L"Column: ", true);
    if (reply.status != PromptStatus::Normal || reply.text.empty()) return std::nullopt;
    if (numberColumn && reply.text == L"#") return 0;
    const int field = findName(editor_.columnNames, reply.text);
    if (field >= 0) return field + 1;
    ed.print(L"No column is named " + reply.text + L".\n");
  }
}

void ZarvelPalette::selectRows() {
  platform::Editor& ed = port().editor();
  const int count = std::min(editor_.grid.GetItemCount(), static_cast<int>(editor_.rows.size()));
  const std::wstring current = formatRowRanges(editor_.grid.GetSelectedRows());
  for (;;) {
    const platform::StringReply reply = ed.getString(L"Rows <" + current + L">: ", false);
    if (reply.status != PromptStatus::Normal || reply.text.empty()) return;
    if (const std::optional<std::vector<int>> rows = parseRowRanges(reply.text, count)) {
      editor_.grid.ClearSelection();
      for (int row : *rows) editor_.grid.SetRowSelected(row, true);
      editor_.syncSelection(true);
      return;
    }
    ed.print(L"No rows " + reply.text + L": the rows are 1-" + std::to_wstring(count) +
             L", * all, - none.\n");
  }
}

}  // namespace zarvel
