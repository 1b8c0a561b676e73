// Dialog models and message boxes driven through prompts by scripted answers.
#include "host/editor/PromptUi.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace host {
namespace {

using platform::ControlKind;
using platform::DialogControl;
using platform::kIdCancel;
using platform::kIdOk;

enum : int { kTables = 10, kSimultaneous, kField, kValue, kAdvanced, kHelp, kDetach };

DialogControl makeControl(int id, ControlKind kind, const wchar_t* label) {
  DialogControl control;
  control.id = id;
  control.kind = kind;
  control.label = label;
  return control;
}

// A script of answers and the transcript it leaves.
struct Script {
  explicit Script(const std::string& answers) : in(answers) {}
  std::istringstream in;
  std::ostringstream out;
  ScriptConsole console{in, out};
  Prompter prompter{console};
  PromptUi ui{prompter};
};

// Behaves like a typical module dialog: choosing tables refills the field
// combo, a field enables the value edit, and Attach needs a table. Each call
// the model gets goes into the transcript, in brackets.
class AttachDialog : public platform::DialogModel {
 public:
  explicit AttachDialog(std::ostream& log) : DialogModel(L"Attach Object Data"), log_(log) {
    DialogControl tables = makeControl(kTables, ControlKind::ListBox, L"&Tables:");
    tables.multiSelect = true;
    addControl(tables);
    addControl(makeControl(kSimultaneous, ControlKind::CheckBox, L"&Simultaneous"));
    DialogControl field = makeControl(kField, ControlKind::ComboBox, L"");
    field.name = L"Field X";
    addControl(field);
    DialogControl value = makeControl(kValue, ControlKind::Edit, L"Value of NAME");
    value.text = L"abc";
    addControl(value);
    DialogControl advanced = makeControl(kAdvanced, ControlKind::CheckBox, L"Advanced");
    advanced.visible = false;
    addControl(advanced);
    addControl(DialogControl::button(kIdOk, L"&Attach", true, true));
    addControl(DialogControl::button(kDetach, L"&Detach", true));
    addControl(DialogControl::button(kIdCancel, L"Cancel", true));
    addControl(DialogControl::button(kHelp, L"&Help", false));
  }

  void onInit() override {
    log_ << "(init)\n";
    control(kTables).setItems({L"Roads", L"Parcels"});
    control(kTables).selected[0] = true;
    refillFields();
  }
  void onChange(int id) override {
    log_ << "(change " << id << ")\n";
    if (id == kTables) refillFields();
    if (id == kField) enableValue();
  }
  bool onButton(int id) override {
    log_ << "(button " << id << ")\n";
    if (id == kIdOk && control(kTables).selectedCount() == 0) return false;
    return DialogModel::onButton(id);
  }

  // The values the user leaves: tables selected, the check box, the field, the text.
  std::string state() {
    std::ostringstream text;
    for (bool selected : control(kTables).selected) text << selected;
    text << ' ' << control(kSimultaneous).checked << ' ' << control(kField).current << " '";
    for (wchar_t c : control(kValue).text) text << static_cast<char>(c);
    return text.str() + "'";
  }

 private:
  void refillFields() {
    std::vector<std::wstring> fields = {L"<none>"};
    const DialogControl& tables = control(kTables);
    if (tables.selected[0]) fields.insert(fields.end(), {L"ID", L"NAME"});
    if (tables.selected[1]) fields.insert(fields.end(), {L"ID", L"AREA"});
    control(kField).setItems(fields);
    control(kField).current = 0;
    enableValue();
  }
  void enableValue() { control(kValue).enabled = control(kField).current > 0; }

  std::ostream& log_;
};

TEST(PromptUiTest, ADialogIsAskedControlByControlUntilAButtonClosesIt) {
  const struct {
    const char* name;
    const char* answers;
    int button;
    const char* transcript;
    const char* state;
  } cases[] = {
      {"each control in order with its value as default", "Roads,Parcels\nY\nID\nxyz\n\n", kIdOk,
       "(init)\nTables [Roads/Parcels] <Roads>: Roads,Parcels\n(change 10)\n"
       "Simultaneous [Yes/No] <No>: Y\n(change 11)\n"
       "Field X [<none>/ID/NAME/ID/AREA] <<none>>: ID\n(change 12)\n"
       "Value of NAME <abc>: xyz\n(change 13)\n"
       "Action [Attach/Detach/Cancel] <Attach>: \n(button 1)\n",
       "11 1 1 'xyz'"},
      // The value edit stays disabled while no field is chosen.
      {"Enter keeps values and disabled controls are skipped", "\n\n\n\n", kIdOk,
       "(init)\nTables [Roads/Parcels] <Roads>: \nSimultaneous [Yes/No] <No>: \n"
       "Field X [<none>/ID/NAME] <<none>>: \n"
       "Action [Attach/Detach/Cancel] <Attach>: \n(button 1)\n",
       "10 0 0 'abc'"},
      {"a change refills and enables later controls before they are asked",
       "parcels\n\nAREA\n  two words \nd\n", kDetach,
       "(init)\nTables [Roads/Parcels] <Roads>: parcels\n(change 10)\n"
       "Simultaneous [Yes/No] <No>: \nField X [<none>/ID/AREA] <<none>>: AREA\n(change 12)\n"
       "Value of NAME <abc>:   two words \n(change 13)\n"
       "Action [Attach/Detach/Cancel] <Attach>: d\n(button 16)\n",
       "01 0 2 '  two words '"},
      {"a refused button asks the controls again", "-\n\n\n\nRoads\n\n\n\n", kIdOk,
       "(init)\nTables [Roads/Parcels] <Roads>: -\n(change 10)\nSimultaneous [Yes/No] <No>: \n"
       "Field X [<none>] <<none>>: \nAction [Attach/Detach/Cancel] <Attach>: \n(button 1)\n"
       "Tables [Roads/Parcels] <->: Roads\n(change 10)\nSimultaneous [Yes/No] <No>: \n"
       "Field X [<none>/ID/NAME] <<none>>: \n"
       "Action [Attach/Detach/Cancel] <Attach>: \n(button 1)\n",
       "10 0 0 'abc'"},
      // "ROADS ," names the selection there already is: no change to report.
      {"unknown items are named and asked again", "Roads, nowhere\nROADS ,\n\nAREA\n*Cancel*\n",
       kIdCancel,
       "(init)\nTables [Roads/Parcels] <Roads>: Roads, nowhere\nTables has no item 'nowhere'.\n"
       "Tables [Roads/Parcels] <Roads>: ROADS ,\nSimultaneous [Yes/No] <No>: \n"
       "Field X [<none>/ID/NAME] <<none>>: AREA\nField X has no item 'AREA'.\n"
       "Field X [<none>/ID/NAME] <<none>>: *Cancel*\n(button 2)\n",
       "10 0 0 'abc'"},
      // The model hears of its Cancel button only.
      {"cancel at any prompt closes with Cancel", "Parcels\n^C\n", kIdCancel,
       "(init)\nTables [Roads/Parcels] <Roads>: Parcels\n(change 10)\n"
       "Simultaneous [Yes/No] <No>: ^C\n(button 2)\n",
       "01 0 0 'abc'"},
      {"a script that ends in a dialog cancels it", "\n\n\n", kIdCancel,
       "(init)\nTables [Roads/Parcels] <Roads>: \nSimultaneous [Yes/No] <No>: \n"
       "Field X [<none>/ID/NAME] <<none>>: \n"
       "Action [Attach/Detach/Cancel] <Attach>: *Cancel*\n(button 2)\n",
       "10 0 0 'abc'"},
      {"the Cancel button is a keyword too", "\n\nNAME\n\"\"\nc\n", kIdCancel,
       "(init)\nTables [Roads/Parcels] <Roads>: \nSimultaneous [Yes/No] <No>: \n"
       "Field X [<none>/ID/NAME] <<none>>: NAME\n(change 12)\n"
       "Value of NAME <abc>: \"\"\n(change 13)\n"
       "Action [Attach/Detach/Cancel] <Attach>: c\n(button 2)\n",
       "10 0 2 ''"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Script script(c.answers);
    AttachDialog dialog(script.out);
    EXPECT_EQ(script.ui.runModal(dialog), c.button);
    EXPECT_EQ(script.out.str(), c.transcript);
    EXPECT_EQ(dialog.state(), c.state);
  }
}

// A dialog of the controls a test gives it, recording the buttons pressed.
// Checking "More" (51) puts a new control in front of it; "Retry" (60) only
// goes round the controls again.
class BareDialog : public platform::DialogModel {
 public:
  explicit BareDialog(const std::vector<DialogControl>& controls) : DialogModel(L"Bare") {
    for (const DialogControl& control : controls) addControl(control);
  }
  void onChange(int id) override {
    if (id != 51 || !control(51).checked) return;
    controls().insert(controls().begin(), makeControl(52, ControlKind::Edit, L"Extra"));
  }
  bool onButton(int id) override {
    pressed.push_back(id);
    return id != 60 && DialogModel::onButton(id);
  }
  std::vector<int> pressed;
};

TEST(PromptUiTest, TheActionPromptOffersTheClosingButtons) {
  const DialogControl name = makeControl(50, ControlKind::Edit, L"Name");
  DialogControl disabledOk = DialogControl::button(kIdOk, L"OK", true, true);
  disabledOk.enabled = false;
  DialogControl used = makeControl(54, ControlKind::ListBox, L"Used:");
  used.items = {L"Roads", L"Parcels"};
  used.readOnly = true;
  DialogControl none = used;
  none.id = 55;
  none.items.clear();
  DialogControl text = makeControl(56, ControlKind::Edit, L"");
  text.text = L"one\r\n\r\ntwo\r";
  text.readOnly = true;
  const struct {
    const char* name;
    std::vector<DialogControl> controls;
    const char* answers;
    int button;
    const char* transcript;
    std::vector<int> pressed;
  } cases[] = {
      {"without a marked default Enter presses OK",
       {DialogControl::button(7, L"Apply", true), DialogControl::button(kIdOk, L"OK", true)},
       "\n",
       kIdOk,
       "Action [OK/Apply] <OK>: \n",
       {kIdOk}},
      {"without any default Enter asks again",
       {DialogControl::button(7, L"Apply", true), DialogControl::button(8, L"Skip", true)},
       "\ns\n",
       8,
       "Action [Apply/Skip]: \nAction [Apply/Skip]: s\n",
       {8}},
      // The round goes on after "More" rather than asking it twice, and asks
      // the new control next round.
      {"controls added by a change do not derail the round",
       {name, makeControl(51, ControlKind::CheckBox, L"More"),
        makeControl(53, ControlKind::Edit, L"Last"), DialogControl::button(kIdOk, L"OK", true),
        DialogControl::button(60, L"Retry", true, true)},
       "a\ny\nz\nr\n\n\n\n\nOK\n",
       kIdOk,
       "Name <>: a\nMore [Yes/No] <No>: y\nLast <>: z\nAction [Retry/OK] <Retry>: r\n"
       "Extra <>: \nName <a>: \nMore [Yes/No] <Yes>: \nLast <z>: \n"
       "Action [Retry/OK] <Retry>: OK\n",
       {60, kIdOk}},
      {"cancelling a dialog without a Cancel button presses nothing",
       {name, DialogControl::button(kIdOk, L"OK", true, true)},
       "*Cancel*\n",
       kIdCancel,
       "Name <>: *Cancel*\n",
       {}},
      {"read-only controls are printed, not asked",
       {used, none, text, DialogControl::button(kIdOk, L"OK", true)},
       "\n",
       kIdOk,
       "Used: Roads, Parcels\nUsed: -\n** Bare **\none\n\ntwo\nAction [OK] <OK>: \n",
       {kIdOk}},
      {"a text without buttons is shown and closed",
       {text},
       "",
       kIdCancel,
       "** Bare **\none\n\ntwo\n",
       {}},
      {"a dialog that no button can close is cancelled",
       {makeControl(50, ControlKind::CheckBox, L"Flag"), disabledOk},
       "y\n",
       kIdCancel,
       "Flag [Yes/No] <No>: y\n",
       {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Script script(c.answers);
    BareDialog dialog(c.controls);
    EXPECT_EQ(script.ui.runModal(dialog), c.button);
    EXPECT_EQ(script.out.str(), c.transcript);
    EXPECT_EQ(dialog.pressed, c.pressed);
  }
}

TEST(PromptLabelTest, WindowDecorationsAreDropped) {
  EXPECT_EQ(promptLabel(makeControl(1, ControlKind::Edit, L"&Table name:")), L"Table name");
  EXPECT_EQ(promptLabel(makeControl(1, ControlKind::Edit, L" Roads && Rails : ")),
            L"Roads & Rails");
  DialogControl unlabelled = makeControl(1, ControlKind::Edit, L"");
  unlabelled.name = L"Value";
  EXPECT_EQ(promptLabel(unlabelled), L"Value");
}

TEST(PromptUiTest, MessageBoxesAskForTheirButtons) {
  const struct {
    int flags;
    const char* answer;
    int expected;
    const char* buttons;
  } cases[] = {
      {platform::kMbYesNo, "y", platform::kIdYes, "[Yes/No] <No>: "},
      {platform::kMbYesNo, "", platform::kIdNo, "[Yes/No] <No>: "},
      {platform::kMbYesNo, "*Cancel*", platform::kIdNo, "[Yes/No] <No>: "},
      {platform::kMbYesNo | platform::kMbIconExclamation, "Yes", platform::kIdYes,
       "[Yes/No] <No>: "},
      {platform::kMbOkCancel, "ok", kIdOk, "[OK/Cancel] <Cancel>: "},
      {platform::kMbOkCancel, "", kIdCancel, "[OK/Cancel] <Cancel>: "},
      {platform::kMbYesNoCancel, "n", platform::kIdNo, "[Yes/No/Cancel] <Cancel>: "},
      {platform::kMbYesNoCancel, "^C", kIdCancel, "[Yes/No/Cancel] <Cancel>: "},
      {platform::kMbOk, "", kIdOk, "[OK] <OK>: "},
      {platform::kMbOk | platform::kMbIconExclamation, "*Cancel*", kIdOk, "[OK] <OK>: "},
  };
  for (const auto& test : cases) {
    Script script(std::string(test.answer) + "\n");
    EXPECT_EQ(script.ui.messageBox(L"Table Roads exists.\nReplace it?\n\n", L"Define", test.flags),
              test.expected)
        << "flags " << test.flags << ", answer '" << test.answer << "'";
    EXPECT_EQ(script.out.str(), std::string("** Define **\nTable Roads exists.\nReplace it?\n") +
                                    test.buttons + test.answer + "\n");
  }
  // Without a caption there is no caption line.
  Script script("x\no\n");
  EXPECT_EQ(script.ui.messageBox(L"Done.", L"", platform::kMbOk), kIdOk);
  EXPECT_EQ(script.out.str(), "Done.\n[OK] <OK>: x\nInvalid option keyword.\n[OK] <OK>: o\n");
}

// A grid kept in vectors: rows of cells, the columns after the first
// editable, a value "bad" refused as the grid model would refuse it.
class VectorGrid : public platform::GridView {
 public:
  VectorGrid(std::vector<std::wstring> headings, std::vector<std::vector<std::wstring>> rows,
             bool editable, bool multi)
      : rows_(std::move(rows)),
        selected_(rows_.size(), false),
        headings_(std::move(headings)),
        editable_(editable),
        multi_(multi) {}
  int columnCount() const override { return static_cast<int>(headings_.size()); }
  std::wstring columnHeading(int column) const override { return headings_[column]; }
  bool isColumnVisible(int) const override { return true; }
  int rowCount() const override { return static_cast<int>(rows_.size()); }
  std::wstring cellText(int row, int column) const override { return rows_[row][column]; }
  bool isCellEditable(int, int column) const override { return editable_ && column > 0; }
  bool commitCellEdit(int row, int column, const std::wstring& text) override {
    if (text == L"bad") return false;
    rows_[row][column] = text;
    return true;
  }
  bool isMultiSelect() const override { return multi_; }
  bool isRowSelected(int row) const override { return selected_[row]; }
  void setRowSelected(int row, bool on) override {
    if (on && !multi_) selected_.assign(selected_.size(), false);
    selected_[row] = on;
  }
  std::vector<std::vector<std::wstring>> rows_;
  std::vector<bool> selected_;

 private:
  std::vector<std::wstring> headings_;
  bool editable_;
  bool multi_;
};

// Choosing tables in one grid fills the other with their fields.
class GridDialog : public platform::DialogModel {
 public:
  GridDialog(bool multi, std::ostream& log)
      : DialogModel(L"Find"),
        tables_({L""}, {{L"Roads"}, {L"Parcels"}}, false, multi),
        values_({L"Field", L"Value"}, {}, true, true),
        log_(log) {
    addControl(DialogControl::gridOf(kTables, L"Tables", tables_));
    addControl(DialogControl::gridOf(kValue, L"Values", values_));
    addControl(DialogControl::button(kIdOk, L"OK", true));
    addControl(DialogControl::button(kIdCancel, L"Cancel", true));
  }
  void onChange(int id) override {
    log_ << "(change " << id << ")\n";
    if (id != kTables) return;
    values_.rows_.clear();
    if (tables_.isRowSelected(0)) values_.rows_.push_back({L"ID", L"*"});
    if (tables_.isRowSelected(1)) values_.rows_.push_back({L"AREA", L"*"});
  }
  VectorGrid tables_;
  VectorGrid values_;

 private:
  std::ostream& log_;
};

TEST(PromptUiTest, GridsAreChosenFromAsListsOrFilledCellByCell) {
  const struct {
    const char* name;
    bool multi;
    const char* answers;
    int button;
    const char* transcript;
    const char* values;
  } cases[] = {
      {"chosen rows refill the dependent grid before it is asked", true, "Roads,Parcels\n>5\n\n\n",
       kIdOk,
       "Tables [Roads/Parcels] <->: Roads,Parcels\n(change 10)\n"
       "Value of ID <*>: >5\nValue of AREA <*>: \n(change 13)\n"
       "Action [OK/Cancel] <OK>: \n",
       "ID=>5 AREA=* "},
      {"a single-selection grid keeps one row; a refused text keeps the cell", false,
       "Parcels\nbad\n\n", kIdOk,
       "Tables [Roads/Parcels]: Parcels\n(change 10)\n"
       "Value of AREA <*>: bad\nValue of AREA keeps <*>.\nAction [OK/Cancel] <OK>: \n",
       "AREA=* "},
      {"\"\" empties a cell and Esc cancels", true, "Roads\n\"\"\n*Cancel*\n", kIdCancel,
       "Tables [Roads/Parcels] <->: Roads\n(change 10)\nValue of ID <*>: \"\"\n(change 13)\n"
       "Action [OK/Cancel] <OK>: *Cancel*\n",
       "ID= "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    Script script(c.answers);
    GridDialog dialog(c.multi, script.out);
    EXPECT_EQ(script.ui.runModal(dialog), c.button);
    EXPECT_EQ(script.out.str(), c.transcript);
    std::wstring values;
    for (const auto& row : dialog.values_.rows_) values += row[0] + L"=" + row[1] + L" ";
    EXPECT_EQ(values, std::wstring(c.values, c.values + std::strlen(c.values)));
  }
}

}  // namespace
}  // namespace host
