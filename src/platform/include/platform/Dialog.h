// Toolkit-neutral dialogs. A module describes a dialog as a model: its
// controls as data and its behaviour on each change. A host renders the model
// (as windows, or as prompts on a command line) and reports changes back.
#pragma once

#include <string>
#include <vector>

#include "platform/GridView.h"
#include "platform/Palette.h"
#include "platform/Status.h"

namespace platform {

// Ids of the buttons that close a dialog by convention.
inline constexpr int kIdOk = 1;
inline constexpr int kIdCancel = 2;

enum class ControlKind { ListBox, CheckBox, ComboBox, Edit, Button, Grid };

// A client size, and a control's place in it, in the dialog's pixels.
struct DialogSize {
  int width = 0;
  int height = 0;
};
struct DialogRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  friend bool operator==(const DialogRect& a, const DialogRect& b) {
    return a.x == b.x && a.y == b.y && a.width == b.width && a.height == b.height;
  }
};

struct DialogControl {
  int id = 0;
  ControlKind kind = ControlKind::Edit;
  // The name under which a non-graphical renderer asks for the control when it
  // has no visible label.
  std::wstring name;
  std::wstring label;
  bool enabled = true;
  bool visible = true;
  // Shown but not changed by the user: a list that takes no selection, a text
  // to read.
  bool readOnly = false;
  // Where a model that lays itself out placed the control; empty otherwise.
  DialogRect rect;

  // ListBox and ComboBox.
  std::vector<std::wstring> items;
  std::vector<bool> selected;  // ListBox: one flag per item
  bool multiSelect = false;
  bool sorted = false;  // the list keeps its items sorted, ignoring case
  int current = -1;     // ComboBox: the chosen item, -1 for none

  // CheckBox.
  bool checked = false;
  // Edit; a read-only one may hold several lines, ended by CR LF.
  std::wstring text;
  // Button. A renderer without windows offers a button that does not close
  // the dialog only when it has a name, and under that name.
  bool closes = false;
  bool isDefault = false;
  // Grid: the model behind it, the dialog's own; the control only points to it.
  GridView* grid = nullptr;

  static DialogControl button(int id, std::wstring label, bool closes, bool isDefault = false) {
    DialogControl c;
    c.id = id;
    c.kind = ControlKind::Button;
    c.label = std::move(label);
    c.closes = closes;
    c.isDefault = isDefault;
    return c;
  }
  static DialogControl gridOf(int id, std::wstring name, GridView& view) {
    DialogControl c;
    c.id = id;
    c.kind = ControlKind::Grid;
    c.name = std::move(name);
    c.grid = &view;
    return c;
  }
  static DialogControl listBox(int id, std::wstring name, bool multiSelect, bool sorted) {
    DialogControl c;
    c.id = id;
    c.kind = ControlKind::ListBox;
    c.name = std::move(name);
    c.multiSelect = multiSelect;
    c.sorted = sorted;
    return c;
  }

  // Replaces the items (sorting them if the list is sorted) and clears the selection.
  void setItems(std::vector<std::wstring> newItems);
  int selectedCount() const;
  std::wstring promptName() const { return label.empty() ? name : label; }
};

class DialogModel {
 public:
  explicit DialogModel(std::wstring title) : title_(std::move(title)) {}
  virtual ~DialogModel() = default;
  DialogModel(const DialogModel&) = delete;
  DialogModel& operator=(const DialogModel&) = delete;

  const std::wstring& title() const { return title_; }
  std::vector<DialogControl>& controls() { return controls_; }
  const std::vector<DialogControl>& controls() const { return controls_; }
  // The control of that id; a missing id is a programming error.
  DialogControl& control(int id);
  const DialogControl& control(int id) const;

  // The client size a resizable dialog opens at; 0 by 0 for a dialog whose
  // front end sizes it.
  DialogSize size() const { return size_; }
  // A front end that resizes the dialog reports each new client size, the
  // first included; the model places its controls and may remember the size.
  virtual void onSize(DialogSize size) { size_ = size; }

  // Called once before the dialog is shown.
  virtual void onInit() {}
  // Called after the user changed a control's value.
  virtual void onChange(int /*controlId*/) {}
  // Called when a button is pressed. True closes the dialog with that id; the
  // default closes on the buttons marked as closing.
  virtual bool onButton(int buttonId);

 protected:
  DialogControl& addControl(DialogControl control);
  // For a dialog whose caller names its window.
  void setTitle(std::wstring title) { title_ = std::move(title); }

 private:
  std::wstring title_;
  std::vector<DialogControl> controls_;
  DialogSize size_;
};

// Message box flags and answers, with the values the module passes.
inline constexpr int kMbOk = 0x0;
inline constexpr int kMbOkCancel = 0x1;
inline constexpr int kMbYesNoCancel = 0x3;
inline constexpr int kMbYesNo = 0x4;
inline constexpr int kMbIconError = 0x10;
inline constexpr int kMbIconQuestion = 0x20;
inline constexpr int kMbIconExclamation = 0x30;
inline constexpr int kIdYes = 6;
inline constexpr int kIdNo = 7;

// What a file dialog asks for. The filter is written "Description|*.ext||".
struct FileDialogRequest {
  std::wstring title;
  std::wstring defaultName;
  std::wstring defaultExtension;  // without the dot; added to a name that has none
  std::wstring filter;
  bool save = false;
  bool confirmOverwrite = false;  // asks before a save dialog names an existing file
  bool folderMustExist = true;
};

class Ui {
 public:
  virtual ~Ui() = default;
  // Runs the dialog modally; the result is the id of the button that closed it
  // (kIdCancel when the user cancelled).
  virtual int runModal(DialogModel& dialog) = 0;
  virtual int messageBox(const std::wstring& text, const std::wstring& caption, int flags) = 0;
  // The path the user chose; empty when cancelled, as in a host without file dialogs.
  virtual std::wstring fileDialog(const FileDialogRequest& /*request*/) { return std::wstring(); }
  // Shows the palette, made on its first showing and shown again after; the
  // module keeps the model alive until it destroys the palette. Failed from a
  // host without palettes.
  virtual Status showPalette(PaletteModel& /*palette*/) { return Status::Failed; }
  virtual void destroyPalette(PaletteModel& /*palette*/) {}
};

}  // namespace platform
