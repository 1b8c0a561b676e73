// The editor's palette and its actions at the command line: the table, the
// listing and the selection of rows. The writes are in PaletteWrites.cpp.
#include "tableeditor/ZarvelPalette.h"

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

std::wstring joinedNames(const std::vector<std::wstring>& names, std::size_t first) {
  std::wstring text;
  for (std::size_t i = first; i < names.size(); ++i) {
    if (i > first) text += L"/";
    text += names[i];
  }
  return text;
}

// The place of a name in the list: exactly, else ignoring case; -1 when none.
int findName(const std::vector<std::wstring>& names, const std::wstring& name, std::size_t first) {
  for (std::size_t i = first; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<int>(i);
  }
  const std::wstring lower = platform::lowerCase(name);
  for (std::size_t i = first; i < names.size(); ++i) {
    if (platform::lowerCase(names[i]) == lower) return static_cast<int>(i);
  }
  return -1;
}

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
  const std::vector<std::wstring>& items = editor_.tableItems();
  const int current = editor_.currentTableItem();
  std::wstring prompt = L"Table [" + joinedNames(items, 1) + L"]";
  if (current > 0) prompt += L" <" + items[static_cast<std::size_t>(current)] + L">";
  prompt += L": ";
  platform::Editor& ed = port().editor();
  for (;;) {
    const platform::StringReply reply = ed.getString(prompt, true);
    if (reply.status != PromptStatus::Normal) return;
    if (reply.text.empty()) {
      if (current > 0) editor_.chooseTable(current);
      return;
    }
    const int item = findName(items, reply.text, 1);
    if (item > 0) {
      editor_.chooseTable(item);
      return;
    }
    ed.print(L"No table is named " + reply.text + L".\n");
  }
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
    const int field = findName(editor_.columnNames, reply.text, 0);
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
