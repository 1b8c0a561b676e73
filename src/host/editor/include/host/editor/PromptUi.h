// Dialogs and message boxes rendered as command-line prompts, so that any
// dialog model of the module can be driven from a script.
#pragma once

#include <vector>

#include "host/editor/Prompter.h"
#include "platform/Dialog.h"

namespace host {

// A dialog is asked one control at a time in control order, each prompt
// showing the control's current value as its default (Enter keeps it):
//
//   Tables [Roads/Parcels] <Roads>: Roads,Parcels   multi-select list: names
//                                                   comma separated, * all, - none
//   Simultaneous [Yes/No] <No>: Y                   check box
//   Field X [<none>/ID/NAME] <<none>>: ID           combo box, single-select list
//   Value of NAME <abc>: xyz                        edit ("" empties it); also a grid's
//                                                   editable cell: <column> of <row key>
//   Tables [Roads/Parcels] <Roads>: Parcels         a grid of rows to choose, as a list
//   Action [Attach/Detach/Cancel] <Attach>:         the buttons that close it
//
//   Used: Roads, Parcels                            a read-only list, printed
//   ** Object Data statistics. **                   a read-only text: the dialog's title,
//   Objects: 12                                     then the text line by line
//
// Disabled, invisible and empty controls are skipped, and so are buttons that
// do not close the dialog. An empty item of a list is shown and named
// "<none>". List items are named exactly, else by their first
// match ignoring case. Each change goes to the model before the next prompt,
// since it may refill or enable other controls. When the model refuses the
// chosen button the controls are asked again. Cancel at any prompt closes the
// dialog with kIdCancel.
class PromptUi : public platform::Ui {
 public:
  explicit PromptUi(Prompter& prompter) : prompter_(prompter) {}

  int runModal(platform::DialogModel& dialog) override;
  // Prints "** caption **", then the text, then asks for one of the buttons
  // the low four bits of flags choose; Cancel picks the safe answer (No, or
  // Cancel when there is one).
  int messageBox(const std::wstring& text, const std::wstring& caption, int flags) override;
  // "Enter file name: " (with the default name, if any, in angle brackets); the
  // default extension is added to a name without one. A folder that does not
  // exist, or No when asked whether to replace a file, asks again.
  std::wstring fileDialog(const platform::FileDialogRequest& request) override;
  // A palette stays open until the module destroys it; the host command
  // PALETTE works in the open ones.
  platform::Status showPalette(platform::PaletteModel& palette) override;
  void destroyPalette(platform::PaletteModel& palette) override;

  // The open palettes in the order they were first shown.
  const std::vector<platform::PaletteModel*>& palettes() const { return palettes_; }
  // The palette shown or worked in last; null when none is open.
  platform::PaletteModel* lastPalette() const { return last_; }
  void setLastPalette(platform::PaletteModel* palette) { last_ = palette; }

 private:
  Prompter& prompter_;
  std::vector<platform::PaletteModel*> palettes_;
  platform::PaletteModel* last_ = nullptr;
};

// The text a control is asked by: its label or name without the '&' of
// mnemonics, blanks or a trailing colon, which suit a window but not a prompt.
std::wstring promptLabel(const platform::DialogControl& control);

}  // namespace host
