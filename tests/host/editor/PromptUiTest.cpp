// Dialog models and message boxes driven through prompts by scripted answers.
#include "host/editor/PromptUi.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace host {
namespace {

using platform::ControlKind;
using platform::DialogControl;

enum : int { kTables = 10, kSimultaneous, kField, kValue, kAdvanced, kHelp, kDetach };

DialogControl makeControl(int id, ControlKind kind, const wchar_t* label) {
  DialogControl control;
  control.id = id;
  control.kind = kind;
  control.label = label;
  return control;
}

DialogControl makeButton(int id, const wchar_t* label, bool closes, bool isDefault = false) {
  DialogControl button = makeControl(id, ControlKind::Button, label);
  button.closes = closes;
  button.isDefault = isDefault;
  return button;
}

// Behaves like a typical module dialog: choosing tables refills the field
// combo, a field enables the value edit, and Attach needs a table.
class AttachDialog : public platform::DialogModel {
 public:
  AttachDialog() : DialogModel(L"Attach Object Data") {
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
    addControl(makeButton(platform::kIdOk, L"&Attach", true, true));
    addControl(makeButton(kDetach, L"&Detach", true));
    addControl(makeButton(platform::kIdCancel, L"Cancel", true));
    addControl(makeButton(kHelp, L"&Help", false));
  }

  void onInit() override {
    calls.push_back("init");
    control(kTables).setItems({L"Roads", L"Parcels"});
    control(kTables).selected[0] = true;
    refillFields();
  }

  void onChange(int id) override {
    calls.push_back("change " + std::to_string(id));
    if (id == kTables) refillFields();
    if (id == kField) enableValue();
  }

  bool onButton(int id) override {
    calls.push_back("button " + std::to_string(id));
    if (id == platform::kIdOk && control(kTables).selectedCount() == 0) return false;
    return DialogModel::onButton(id);
  }

  std::vector<std::string> calls;

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
};

class PromptUiTest : public ::testing::Test {
 protected:
  void answers(const std::string& text) { in_.str(text); }
  std::string transcript() const { return out_.str(); }

 private:
  std::istringstream in_;
  std::ostringstream out_;
  ScriptConsole console_{in_, out_};
  Prompter prompter_{console_};

 protected:
  PromptUi ui{prompter_};
  AttachDialog dialog;
};

TEST_F(PromptUiTest, EachControlIsAskedInOrderWithItsValueAsDefault) {
  answers("Roads,Parcels\nY\nID\nxyz\n\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdOk);
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: Roads,Parcels\n"
            "Simultaneous [Yes/No] <No>: Y\n"
            "Field X [<none>/ID/NAME/ID/AREA] <<none>>: ID\n"
            "Value of NAME <abc>: xyz\n"
            "Action [Attach/Detach/Cancel] <Attach>: \n");
  EXPECT_EQ(dialog.calls, (std::vector<std::string>{"init", "change 10", "change 11", "change 12",
                                                    "change 13", "button 1"}));
  EXPECT_EQ(dialog.control(kTables).selected, (std::vector<bool>{true, true}));
  EXPECT_TRUE(dialog.control(kSimultaneous).checked);
  EXPECT_EQ(dialog.control(kField).current, 1);
  EXPECT_EQ(dialog.control(kValue).text, L"xyz");
}

TEST_F(PromptUiTest, EnterKeepsValuesAndSkipsDisabledControls) {
  answers("\n\n\n\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdOk);
  // The value edit stays disabled while no field is chosen.
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: \n"
            "Simultaneous [Yes/No] <No>: \n"
            "Field X [<none>/ID/NAME] <<none>>: \n"
            "Action [Attach/Detach/Cancel] <Attach>: \n");
  EXPECT_EQ(dialog.calls, (std::vector<std::string>{"init", "button 1"}));
}

TEST_F(PromptUiTest, AChangeRefillsAndEnablesLaterControlsBeforeTheyAreAsked) {
  answers("parcels\n\nAREA\n  two words \nd\n");
  EXPECT_EQ(ui.runModal(dialog), kDetach);
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: parcels\n"
            "Simultaneous [Yes/No] <No>: \n"
            "Field X [<none>/ID/AREA] <<none>>: AREA\n"
            "Value of NAME <abc>:   two words \n"
            "Action [Attach/Detach/Cancel] <Attach>: d\n");
  EXPECT_EQ(dialog.control(kTables).selected, (std::vector<bool>{false, true}));
  EXPECT_EQ(dialog.control(kValue).text, L"  two words ");
}

TEST_F(PromptUiTest, ARefusedButtonAsksTheControlsAgain) {
  answers("-\n\n\n\nRoads\n\n\n\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdOk);
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: -\n"
            "Simultaneous [Yes/No] <No>: \n"
            "Field X [<none>] <<none>>: \n"
            "Action [Attach/Detach/Cancel] <Attach>: \n"
            "Tables [Roads/Parcels] <->: Roads\n"
            "Simultaneous [Yes/No] <No>: \n"
            "Field X [<none>/ID/NAME] <<none>>: \n"
            "Action [Attach/Detach/Cancel] <Attach>: \n");
  EXPECT_EQ(dialog.calls,
            (std::vector<std::string>{"init", "change 10", "button 1", "change 10", "button 1"}));
}

TEST_F(PromptUiTest, AStarSelectsEveryItem) {
  answers("*\n\n\n\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdOk);
  EXPECT_EQ(dialog.control(kTables).selected, (std::vector<bool>{true, true}));
  EXPECT_EQ(dialog.calls, (std::vector<std::string>{"init", "change 10", "button 1"}));
}

TEST_F(PromptUiTest, UnknownItemsAreNamedAndAskedAgain) {
  answers("Roads, nowhere\nROADS ,\n\nAREA\n*Cancel*\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdCancel);
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: Roads, nowhere\n"
            "Tables has no item 'nowhere'.\n"
            "Tables [Roads/Parcels] <Roads>: ROADS ,\n"
            "Simultaneous [Yes/No] <No>: \n"
            "Field X [<none>/ID/NAME] <<none>>: AREA\n"
            "Field X has no item 'AREA'.\n"
            "Field X [<none>/ID/NAME] <<none>>: *Cancel*\n");
  // "ROADS ," named the selection it already had: no change to report.
  EXPECT_EQ(dialog.calls, (std::vector<std::string>{"init", "button 2"}));
}

TEST_F(PromptUiTest, CancelAtAnyPromptClosesWithCancel) {
  answers("Parcels\n^C\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdCancel);
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: Parcels\n"
            "Simultaneous [Yes/No] <No>: ^C\n");
  // The model hears of its Cancel button only.
  EXPECT_EQ(dialog.calls, (std::vector<std::string>{"init", "change 10", "button 2"}));
}

TEST_F(PromptUiTest, AScriptEndingInADialogCancelsIt) {
  answers("\n\n\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdCancel);
  EXPECT_EQ(transcript(),
            "Tables [Roads/Parcels] <Roads>: \n"
            "Simultaneous [Yes/No] <No>: \n"
            "Field X [<none>/ID/NAME] <<none>>: \n"
            "Action [Attach/Detach/Cancel] <Attach>: *Cancel*\n");
}

TEST_F(PromptUiTest, TheCancelButtonIsAKeywordToo) {
  answers("\n\n\nc\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdCancel);
  EXPECT_EQ(dialog.calls.back(), "button 2");
}

TEST_F(PromptUiTest, TwoQuotesEmptyAnEdit) {
  answers("\n\nNAME\n\"\"\n\n");
  EXPECT_EQ(ui.runModal(dialog), platform::kIdOk);
  EXPECT_EQ(dialog.control(kValue).text, L"");
  EXPECT_NE(transcript().find("Value of NAME <abc>: \"\"\n"), std::string::npos) << transcript();
}

// A dialog with only what a test puts in it, recording the buttons pressed.
class BareDialog : public platform::DialogModel {
 public:
  BareDialog() : DialogModel(L"Bare") {}
  using DialogModel::addControl;
  bool onButton(int id) override {
    pressed.push_back(id);
    return DialogModel::onButton(id);
  }
  std::vector<int> pressed;
};

TEST_F(PromptUiTest, WithoutAMarkedDefaultEnterPressesOk) {
  BareDialog bare;
  bare.addControl(makeButton(7, L"Apply", true));
  bare.addControl(makeButton(platform::kIdOk, L"OK", true));
  answers("\n");
  EXPECT_EQ(ui.runModal(bare), platform::kIdOk);
  EXPECT_EQ(transcript(), "Action [OK/Apply] <OK>: \n");
}

TEST_F(PromptUiTest, WithoutAnyDefaultEnterAsksAgain) {
  BareDialog bare;
  bare.addControl(makeButton(7, L"Apply", true));
  bare.addControl(makeButton(8, L"Skip", true));
  answers("\ns\n");
  EXPECT_EQ(ui.runModal(bare), 8);
  EXPECT_EQ(transcript(), "Action [Apply/Skip]: \nAction [Apply/Skip]: s\n");
}

// Checking "More" puts a new control in front of it: the round goes on after
// "More" rather than asking it twice, and asks the new control next round.
class GrowingDialog : public BareDialog {
 public:
  void onChange(int id) override {
    if (id != 51 || !control(51).checked) return;
    controls().insert(controls().begin(), makeControl(52, ControlKind::Edit, L"Extra"));
  }
  // Retry only goes round the controls again.
  bool onButton(int id) override { return id != 60 && BareDialog::onButton(id); }
};

TEST_F(PromptUiTest, ControlsAddedByAChangeDoNotDerailTheRound) {
  GrowingDialog growing;
  growing.addControl(makeControl(50, ControlKind::Edit, L"Name"));
  growing.addControl(makeControl(51, ControlKind::CheckBox, L"More"));
  growing.addControl(makeControl(53, ControlKind::Edit, L"Last"));
  DialogControl ok = makeButton(platform::kIdOk, L"OK", true, false);
  growing.addControl(ok);
  DialogControl retry = makeButton(60, L"Retry", true, true);
  growing.addControl(retry);
  answers("a\ny\nz\nr\n\n\n\n\nOK\n");
  EXPECT_EQ(ui.runModal(growing), platform::kIdOk);
  EXPECT_EQ(transcript(),
            "Name <>: a\n"
            "More [Yes/No] <No>: y\n"
            "Last <>: z\n"
            "Action [Retry/OK] <Retry>: r\n"
            "Extra <>: \n"
            "Name <a>: \n"
            "More [Yes/No] <Yes>: \n"
            "Last <z>: \n"
            "Action [Retry/OK] <Retry>: OK\n");
}

TEST_F(PromptUiTest, CancellingADialogWithoutCancelButtonPressesNothing) {
  BareDialog bare;
  bare.addControl(makeControl(50, ControlKind::Edit, L"Name"));
  bare.addControl(makeButton(platform::kIdOk, L"OK", true, true));
  answers("*Cancel*\n");
  EXPECT_EQ(ui.runModal(bare), platform::kIdCancel);
  EXPECT_TRUE(bare.pressed.empty());
}

TEST_F(PromptUiTest, ADialogThatCannotBeClosedByAButtonIsCancelled) {
  BareDialog bare;
  bare.addControl(makeControl(50, ControlKind::CheckBox, L"Flag"));
  DialogControl disabled = makeButton(platform::kIdOk, L"OK", true, true);
  disabled.enabled = false;
  bare.addControl(disabled);
  answers("y\n");
  EXPECT_EQ(ui.runModal(bare), platform::kIdCancel);
  EXPECT_EQ(transcript(), "Flag [Yes/No] <No>: y\n");
  EXPECT_TRUE(bare.pressed.empty());
}

TEST(PromptLabelTest, WindowDecorationsAreDropped) {
  EXPECT_EQ(promptLabel(makeControl(1, ControlKind::Edit, L"&Table name:")), L"Table name");
  EXPECT_EQ(promptLabel(makeControl(1, ControlKind::Edit, L" Roads && Rails : ")),
            L"Roads & Rails");
  DialogControl unlabelled = makeControl(1, ControlKind::Edit, L"");
  unlabelled.name = L"Value";
  EXPECT_EQ(promptLabel(unlabelled), L"Value");
}

struct MessageBoxCase {
  int flags;
  const char* answer;
  int expected;
  const char* buttons;
};

TEST_F(PromptUiTest, MessageBoxesAskForTheirButtons) {
  const MessageBoxCase cases[] = {
      {platform::kMbYesNo, "y", platform::kIdYes, "[Yes/No] <No>: "},
      {platform::kMbYesNo, "", platform::kIdNo, "[Yes/No] <No>: "},
      {platform::kMbYesNo, "*Cancel*", platform::kIdNo, "[Yes/No] <No>: "},
      {platform::kMbYesNo | platform::kMbIconExclamation, "Yes", platform::kIdYes,
       "[Yes/No] <No>: "},
      {platform::kMbOkCancel, "ok", platform::kIdOk, "[OK/Cancel] <Cancel>: "},
      {platform::kMbOkCancel, "", platform::kIdCancel, "[OK/Cancel] <Cancel>: "},
      {platform::kMbYesNoCancel, "n", platform::kIdNo, "[Yes/No/Cancel] <Cancel>: "},
      {platform::kMbYesNoCancel, "^C", platform::kIdCancel, "[Yes/No/Cancel] <Cancel>: "},
      {platform::kMbOk, "", platform::kIdOk, "[OK] <OK>: "},
      {platform::kMbOk | platform::kMbIconExclamation, "*Cancel*", platform::kIdOk, "[OK] <OK>: "},
  };
  for (const MessageBoxCase& test : cases) {
    std::istringstream in(std::string(test.answer) + "\n");
    std::ostringstream out;
    ScriptConsole console(in, out);
    Prompter prompter(console);
    PromptUi boxUi(prompter);
    EXPECT_EQ(boxUi.messageBox(L"Table Roads exists.\nReplace it?\n\n", L"Define", test.flags),
              test.expected)
        << "flags " << test.flags << ", answer '" << test.answer << "'";
    EXPECT_EQ(out.str(), std::string("** Define **\nTable Roads exists.\nReplace it?\n") +
                             test.buttons + test.answer + "\n");
  }
}

TEST_F(PromptUiTest, MessageBoxWithoutCaptionPrintsNoCaptionLine) {
  answers("x\no\n");
  EXPECT_EQ(ui.messageBox(L"Done.", L"", platform::kMbOk), platform::kIdOk);
  EXPECT_EQ(transcript(), "Done.\n[OK] <OK>: x\nInvalid option keyword.\n[OK] <OK>: o\n");
}

}  // namespace
}  // namespace host
