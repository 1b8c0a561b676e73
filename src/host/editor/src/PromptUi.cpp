// Dialog models and message boxes as prompts.
#include "host/editor/PromptUi.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

#include "host/editor/AnswerParsing.h"
#include "platform/Text.h"

namespace host {

using platform::ControlKind;
using platform::DialogControl;
using platform::DialogModel;
using platform::PromptStatus;

namespace {

enum class Outcome { Kept, Changed, Cancelled };

const wchar_t* const kYes = L"Yes";
const wchar_t* const kNo = L"No";
const wchar_t* const kNoItem = L"<none>";

bool isAsked(const DialogControl& control) {
  if (!control.enabled || !control.visible || control.readOnly) return false;
  switch (control.kind) {
    case ControlKind::Button:
      return false;
    case ControlKind::ListBox:
    case ControlKind::ComboBox:
      // Nothing to choose from.
      return !control.items.empty();
    case ControlKind::CheckBox:
    case ControlKind::Edit:
      return true;
    case ControlKind::Grid:
      return control.grid != nullptr && control.grid->rowCount() > 0;
  }
  return false;
}

// The lines of a text, ended by CR LF, LF or a lone CR; nothing follows the
// last line end.
std::vector<std::wstring> textLines(const std::wstring& text) {
  std::vector<std::wstring> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = text.find_first_of(L"\r\n", start);
    lines.push_back(text.substr(start, end - start));
    if (end == std::wstring::npos) break;
    start = end + (text.compare(end, 2, L"\r\n") == 0 ? 2 : 1);
  }
  return lines;
}

// A read-only control is printed where a window would show it: a list as its
// items on one line, a text as its lines under the dialog's title.
void showReadOnly(Prompter& prompter, const DialogModel& dialog, const DialogControl& control) {
  if (!control.visible) return;
  if (control.kind == ControlKind::ListBox) {
    std::wstring items;
    for (const std::wstring& item : control.items) items += (items.empty() ? L"" : L", ") + item;
    prompter.print(promptLabel(control) + L": " + (items.empty() ? L"-" : items) + L"\n");
  } else if (control.kind == ControlKind::Edit) {
    if (!dialog.title().empty()) prompter.print(L"** " + dialog.title() + L" **\n");
    for (const std::wstring& line : textLines(control.text)) prompter.print(line + L"\n");
  }
}

// Whether a grid is filled in cell by cell: some visible column takes text.
// Otherwise its rows are what the user chooses, as from a list.
bool hasEditableColumn(const platform::GridView& grid) {
  for (int column = 0; column < grid.columnCount(); ++column) {
    if (!grid.isColumnVisible(column)) continue;
    for (int row = 0; row < grid.rowCount(); ++row) {
      if (grid.isCellEditable(row, column)) return true;
    }
  }
  return false;
}

// What names a row at a prompt: the text of its first visible column that
// takes no typing, else its number.
std::wstring rowKey(const platform::GridView& grid, int row) {
  for (int column = 0; column < grid.columnCount(); ++column) {
    if (grid.isColumnVisible(column) && !grid.isCellEditable(row, column)) {
      return grid.cellText(row, column);
    }
  }
  return std::to_wstring(row + 1);
}

// The chosen item of a combo box or single-select list, -1 for none.
int chosenItem(const DialogControl& control) {
  const int count = static_cast<int>(control.items.size());
  if (control.kind == ControlKind::ComboBox) {
    return control.current >= 0 && control.current < count ? control.current : -1;
  }
  for (int i = 0; i < count && i < static_cast<int>(control.selected.size()); ++i) {
    if (control.selected[static_cast<std::size_t>(i)]) return i;
  }
  return -1;
}

// The selection flags of a list, one per item whatever the model left.
std::vector<bool> selectionFlags(const DialogControl& control) {
  std::vector<bool> flags = control.selected;
  flags.resize(control.items.size(), false);
  return flags;
}

std::wstring selectionText(const DialogControl& control) {
  const std::vector<bool> flags = selectionFlags(control);
  std::wstring text;
  for (std::size_t i = 0; i < flags.size(); ++i) {
    if (!flags[i]) continue;
    if (!text.empty()) text += L',';
    text += control.items[i];
  }
  return text.empty() ? L"-" : text;
}

std::wstring withoutMnemonics(const std::wstring& label) {
  std::wstring text;
  for (std::size_t i = 0; i < label.size(); ++i) {
    if (label[i] != L'&') {
      text += label[i];
    } else if (i + 1 < label.size() && label[i + 1] == L'&') {
      text += L'&';  // "&&" is how a window label writes a literal ampersand
      ++i;
    }
  }
  return text;
}

class ControlAsker {
 public:
  explicit ControlAsker(Prompter& prompter) : prompter_(prompter) {}

  Outcome ask(DialogControl& control) {
    switch (control.kind) {
      case ControlKind::CheckBox:
        return askCheckBox(control);
      case ControlKind::ComboBox:
        return askChoice(control);
      case ControlKind::ListBox:
        return control.multiSelect ? askMultiSelect(control) : askChoice(control);
      case ControlKind::Edit:
        return askEdit(control);
      case ControlKind::Grid:
        return hasEditableColumn(*control.grid) ? askGridCells(control) : askGridRows(control);
      case ControlKind::Button:
        break;
    }
    return Outcome::Kept;
  }

 private:
  Outcome askCheckBox(DialogControl& control) {
    const std::wstring current = control.checked ? kYes : kNo;
    const Keywords keywords = {kYes, kNo};
    const platform::StringReply reply = prompter_.getKeyword(
        keywordPrompt(promptLabel(control), keywords, current), keywords, current);
    if (reply.status != PromptStatus::Normal) return Outcome::Cancelled;
    const bool checked = reply.text == kYes;
    if (checked == control.checked) return Outcome::Kept;
    control.checked = checked;
    return Outcome::Changed;
  }

  Outcome askChoice(DialogControl& control) {
    const std::wstring label = promptLabel(control);
    const int current = chosenItem(control);
    // An empty item, a combo box's "no field", could be neither shown nor typed.
    std::vector<std::wstring> names = control.items;
    for (std::wstring& name : names) {
      if (name.empty()) name = kNoItem;
    }
    std::optional<std::wstring> shown;
    if (current >= 0) shown = names[static_cast<std::size_t>(current)];
    const std::wstring prompt = keywordPrompt(label, names, shown);
    for (;;) {
      const platform::StringReply reply = prompter_.ask(prompt, names);
      if (reply.status == PromptStatus::Cancel) return Outcome::Cancelled;
      if (reply.status == PromptStatus::None) return Outcome::Kept;
      const int chosen = itemIndex(names, label, reply.text);
      if (chosen < 0) continue;
      if (chosen == current) return Outcome::Kept;
      if (control.kind == ControlKind::ComboBox) {
        control.current = chosen;
      } else {
        control.selected.assign(control.items.size(), false);
        control.selected[static_cast<std::size_t>(chosen)] = true;
      }
      return Outcome::Changed;
    }
  }

  Outcome askMultiSelect(DialogControl& control) {
    const std::wstring label = promptLabel(control);
    const std::wstring prompt = keywordPrompt(label, control.items, selectionText(control));
    for (;;) {
      const platform::StringReply reply = prompter_.ask(prompt, control.items);
      if (reply.status == PromptStatus::Cancel) return Outcome::Cancelled;
      if (reply.status == PromptStatus::None) return Outcome::Kept;
      const std::optional<std::vector<bool>> flags = parseSelection(control, label, reply.text);
      if (!flags) continue;
      if (*flags == selectionFlags(control)) return Outcome::Kept;
      control.selected = *flags;
      return Outcome::Changed;
    }
  }

  Outcome askEdit(DialogControl& control) {
    const platform::StringReply reply =
        prompter_.ask(promptLabel(control) + L" <" + control.text + L">: ");
    if (reply.status == PromptStatus::Cancel) return Outcome::Cancelled;
    if (reply.status == PromptStatus::None) return Outcome::Kept;
    // Enter keeps the text, so emptying it needs a word of its own.
    const std::wstring text = trimBlanks(reply.text) == L"\"\"" ? std::wstring() : reply.text;
    if (text == control.text) return Outcome::Kept;
    control.text = text;
    return Outcome::Changed;
  }

  // A grid of rows to choose is asked as a list of its rows' keys.
  Outcome askGridRows(DialogControl& control) {
    platform::GridView& grid = *control.grid;
    DialogControl list =
        DialogControl::listBox(control.id, control.name, grid.isMultiSelect(), false);
    list.label = control.label;
    for (int row = 0; row < grid.rowCount(); ++row) {
      list.items.push_back(rowKey(grid, row));
      list.selected.push_back(grid.isRowSelected(row));
    }
    const Outcome outcome = list.multiSelect ? askMultiSelect(list) : askChoice(list);
    if (outcome != Outcome::Changed) return outcome;
    // Clearing first, so that a single-selection grid ends with the chosen row.
    for (int row = 0; row < grid.rowCount(); ++row) {
      if (!list.selected[static_cast<std::size_t>(row)]) grid.setRowSelected(row, false);
    }
    for (int row = 0; row < grid.rowCount(); ++row) {
      if (list.selected[static_cast<std::size_t>(row)]) grid.setRowSelected(row, true);
    }
    return outcome;
  }

  // A grid that takes text is asked one prompt per editable cell, row by row:
  // "<column> of <row key> <current>: ". Enter keeps the text; "" empties it.
  Outcome askGridCells(DialogControl& control) {
    platform::GridView& grid = *control.grid;
    bool changed = false;
    for (int row = 0; row < grid.rowCount(); ++row) {
      for (int column = 0; column < grid.columnCount(); ++column) {
        if (!grid.isColumnVisible(column) || !grid.isCellEditable(row, column)) continue;
        const std::wstring current = grid.cellText(row, column);
        const std::wstring where = grid.columnHeading(column) + L" of " + rowKey(grid, row);
        const platform::StringReply reply = prompter_.ask(where + L" <" + current + L">: ");
        if (reply.status == PromptStatus::Cancel) return Outcome::Cancelled;
        if (reply.status == PromptStatus::None) continue;
        const std::wstring text = trimBlanks(reply.text) == L"\"\"" ? std::wstring() : reply.text;
        if (text == current) continue;
        if (grid.commitCellEdit(row, column, text)) {
          changed = true;
        } else {
          prompter_.print(where + L" keeps <" + grid.cellText(row, column) + L">.\n");
        }
      }
    }
    return changed ? Outcome::Changed : Outcome::Kept;
  }

  // "*" for all, "-" for none, else item names separated by commas.
  std::optional<std::vector<bool>> parseSelection(const DialogControl& control,
                                                  const std::wstring& label,
                                                  const std::wstring& answer) {
    const std::wstring_view text = trimBlanks(answer);
    std::vector<bool> flags(control.items.size(), text == L"*");
    if (text == L"*" || text == L"-") return flags;
    std::size_t start = 0;
    for (;;) {
      const std::size_t comma = text.find(L',', start);
      const std::wstring_view name = trimBlanks(text.substr(start, comma - start));
      if (!name.empty()) {
        const int index = itemIndex(control, label, name);
        if (index < 0) return std::nullopt;
        flags[static_cast<std::size_t>(index)] = true;
      }
      if (comma == std::wstring_view::npos) break;
      start = comma + 1;
    }
    return flags;
  }

  // The item so named, or -1 after saying that there is none.
  int itemIndex(const DialogControl& control, const std::wstring& label, std::wstring_view answer) {
    return itemIndex(control.items, label, answer);
  }
  int itemIndex(const std::vector<std::wstring>& items, const std::wstring& label,
                std::wstring_view answer) {
    const std::wstring_view name = trimBlanks(answer);
    const int index = findName(name, items);
    if (index < 0) prompter_.print(label + L" has no item '" + std::wstring(name) + L"'.\n");
    return index;
  }

  Prompter& prompter_;
};

// Where to go on after a change to the control of that id: past it, found
// anew, since the change may have added or removed controls.
std::size_t positionAfter(const DialogModel& dialog, int id, std::size_t previous) {
  const std::vector<DialogControl>& controls = dialog.controls();
  for (std::size_t i = 0; i < controls.size(); ++i) {
    if (controls[i].id == id) return i + 1;
  }
  return previous;
}

// The buttons that close the dialog as they are offered: the default first.
struct Action {
  std::vector<int> ids;
  Keywords labels;
  std::optional<std::wstring> defaultLabel;
};

// A button that opens something of its own (a file dialog) and leaves the
// dialog open is offered under its name, since its caption may be no word.
bool isNamedInnerButton(const DialogControl& control) {
  return !control.closes && !control.name.empty();
}

Action dialogButtons(const DialogModel& dialog) {
  Action action;
  const DialogControl* defaultButton = nullptr;
  const DialogControl* okButton = nullptr;
  std::vector<const DialogControl*> buttons;
  std::vector<const DialogControl*> innerButtons;
  for (const DialogControl& control : dialog.controls()) {
    if (control.kind != ControlKind::Button || !control.enabled || !control.visible) continue;
    if (isNamedInnerButton(control)) {
      innerButtons.push_back(&control);
      continue;
    }
    if (!control.closes) continue;
    if (control.isDefault && defaultButton == nullptr) {
      defaultButton = &control;
    } else {
      buttons.push_back(&control);
    }
    if (control.id == platform::kIdOk && okButton == nullptr) okButton = &control;
  }
  // Without a marked default, Enter presses OK as it does in a window.
  if (defaultButton == nullptr) defaultButton = okButton;
  if (defaultButton != nullptr) {
    action.ids.push_back(defaultButton->id);
    action.labels.push_back(promptLabel(*defaultButton));
    action.defaultLabel = action.labels.front();
  }
  for (const DialogControl* button : buttons) {
    if (button == defaultButton) continue;
    action.ids.push_back(button->id);
    action.labels.push_back(promptLabel(*button));
  }
  for (const DialogControl* button : innerButtons) {
    action.ids.push_back(button->id);
    action.labels.push_back(withoutMnemonics(button->name));
  }
  return action;
}

int cancelDialog(DialogModel& dialog) {
  for (const DialogControl& control : dialog.controls()) {
    if (control.kind == ControlKind::Button && control.id == platform::kIdCancel) {
      // The model may want to undo what its controls did; it cannot refuse.
      dialog.onButton(platform::kIdCancel);
      break;
    }
  }
  return platform::kIdCancel;
}

// The buttons of a message box and the one Cancel (or Enter) stands for: the
// answer that changes nothing.
struct BoxButtons {
  struct Choice {
    const wchar_t* keyword;
    int id;
  };
  std::vector<Choice> choices;
  int onCancel;
};

BoxButtons boxButtons(int flags) {
  switch (flags & 0xF) {
    case platform::kMbYesNo:
      return {{{kYes, platform::kIdYes}, {kNo, platform::kIdNo}}, platform::kIdNo};
    case platform::kMbOkCancel:
      return {{{L"OK", platform::kIdOk}, {L"Cancel", platform::kIdCancel}}, platform::kIdCancel};
    case platform::kMbYesNoCancel:
      return {{{kYes, platform::kIdYes}, {kNo, platform::kIdNo}, {L"Cancel", platform::kIdCancel}},
              platform::kIdCancel};
    default:
      // A box with an OK button only, also for button sets no caller uses.
      return {{{L"OK", platform::kIdOk}}, platform::kIdOk};
  }
}

}  // namespace

std::wstring promptLabel(const DialogControl& control) {
  std::wstring label = withoutMnemonics(control.promptName());
  std::wstring_view text = trimBlanks(label);
  if (!text.empty() && text.back() == L':') text = trimBlanks(text.substr(0, text.size() - 1));
  return std::wstring(text);
}

int PromptUi::runModal(DialogModel& dialog) {
  dialog.onInit();
  ControlAsker asker(prompter_);
  for (;;) {
    std::size_t i = 0;
    while (i < dialog.controls().size()) {
      DialogControl& control = dialog.controls()[i];
      if (control.readOnly) showReadOnly(prompter_, dialog, control);
      if (!isAsked(control)) {
        ++i;
        continue;
      }
      const int id = control.id;
      const Outcome outcome = asker.ask(control);
      if (outcome == Outcome::Cancelled) return cancelDialog(dialog);
      if (outcome == Outcome::Kept) {
        ++i;
        continue;
      }
      dialog.onChange(id);
      i = positionAfter(dialog, id, i);
    }

    const Action action = dialogButtons(dialog);
    // Only Esc closes a dialog without closing buttons.
    if (action.ids.empty()) return cancelDialog(dialog);
    const std::wstring prompt = keywordPrompt(L"Action", action.labels, action.defaultLabel);
    platform::StringReply reply;
    do {
      reply = prompter_.getKeyword(prompt, action.labels, action.defaultLabel);
    } while (reply.status == PromptStatus::None);
    if (reply.status != PromptStatus::Normal) return cancelDialog(dialog);
    const int button = action.ids[static_cast<std::size_t>(findName(reply.text, action.labels))];
    if (dialog.onButton(button)) return button;
  }
}

int PromptUi::messageBox(const std::wstring& text, const std::wstring& caption, int flags) {
  if (!caption.empty()) prompter_.print(L"** " + caption + L" **\n");
  std::wstring body = text;
  while (!body.empty() && (body.back() == L'\n' || body.back() == L'\r')) body.pop_back();
  prompter_.print(body + L"\n");

  const BoxButtons buttons = boxButtons(flags);
  Keywords keywords;
  std::optional<std::wstring> defaultKeyword;
  for (const BoxButtons::Choice& choice : buttons.choices) {
    keywords.emplace_back(choice.keyword);
    if (choice.id == buttons.onCancel) defaultKeyword = choice.keyword;
  }
  const platform::StringReply reply =
      prompter_.getKeyword(keywordPrompt(L"", keywords, defaultKeyword), keywords, defaultKeyword);
  if (reply.status != PromptStatus::Normal) return buttons.onCancel;
  return buttons.choices[static_cast<std::size_t>(findName(reply.text, keywords))].id;
}

std::wstring PromptUi::fileDialog(const platform::FileDialogRequest& request) {
  const std::wstring prompt = request.defaultName.empty()
                                  ? std::wstring(L"Enter file name: ")
                                  : L"Enter file name <" + request.defaultName + L">: ";
  for (;;) {
    const platform::StringReply reply = prompter_.getString(prompt, true);
    if (reply.status != PromptStatus::Normal) return std::wstring();
    std::wstring name(trimBlanks(reply.text));
    if (name.empty()) name = request.defaultName;
    if (name.empty()) return std::wstring();
    std::filesystem::path path(platform::toUtf8(name));
    if (!path.has_extension() && !request.defaultExtension.empty()) {
      name += L"." + request.defaultExtension;
      path = std::filesystem::path(platform::toUtf8(name));
    }
    std::error_code error;
    const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
    if (request.folderMustExist && !std::filesystem::is_directory(folder, error)) {
      prompter_.print(platform::fromUtf8(folder.string()) + L": no such folder.\n");
      continue;
    }
    if (request.save && request.confirmOverwrite && std::filesystem::exists(path, error) &&
        messageBox(name + L" already exists.\nDo you want to replace it?", request.title,
                   platform::kMbYesNo) != platform::kIdYes) {
      continue;
    }
    return name;
  }
}

platform::Status PromptUi::showPalette(platform::PaletteModel& palette) {
  if (std::find(palettes_.begin(), palettes_.end(), &palette) == palettes_.end()) {
    palettes_.push_back(&palette);
    prompter_.print(L"Palette " + palette.name() + L" is open; PALETTE works in it.\n");
  }
  last_ = &palette;
  return platform::Status::Ok;
}

void PromptUi::destroyPalette(platform::PaletteModel& palette) {
  palettes_.erase(std::remove(palettes_.begin(), palettes_.end(), &palette), palettes_.end());
  if (last_ == &palette) last_ = palettes_.empty() ? nullptr : palettes_.back();
}

}  // namespace host
