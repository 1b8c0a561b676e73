// The host's prompt conventions, driven by scripts and checked by status,
// value and transcript.
#include "host/editor/Prompter.h"

#include <gtest/gtest.h>

#include <sstream>

namespace host {
namespace {

using platform::PromptStatus;

class PrompterTest : public ::testing::Test {
 protected:
  void answers(const std::string& text) { in_.str(text); }
  std::string transcript() const { return out_.str(); }

 private:
  std::istringstream in_;
  std::ostringstream out_;
  ScriptConsole console_{in_, out_};

 protected:
  Prompter prompter{console_};
};

TEST_F(PrompterTest, CancelAnswersCancelEveryKindOfPrompt) {
  answers("*Cancel*\n^C\n  *cancel*  \n^c\n*CANCEL*\n^C\n");
  EXPECT_EQ(prompter.getString(L"Name: ", true).status, PromptStatus::Cancel);
  EXPECT_EQ(prompter.getKeyword(L"Mode [A/B] <A>: ", {L"A", L"B"}, L"A").status,
            PromptStatus::Cancel);
  EXPECT_EQ(prompter.getPoint(L"Point: ").status, PromptStatus::Cancel);
  EXPECT_EQ(prompter.getInt(L"Count <3>: ", 3).status, PromptStatus::Cancel);
  EXPECT_EQ(prompter.getReal(L"Width: ").status, PromptStatus::Cancel);
  EXPECT_EQ(prompter.getSelection(L"Select objects: ").status, PromptStatus::Cancel);
  EXPECT_FALSE(prompter.inputEnded());
  // The cancel is the answer, echoed like any other.
  EXPECT_EQ(transcript(),
            "Name: *Cancel*\nMode [A/B] <A>: ^C\nPoint:   *cancel*  \nCount <3>: ^c\n"
            "Width: *CANCEL*\nSelect objects: ^C\n");
}

// A posted cancel ends the next prompt of the running command without reading
// an answer; at the command prompt there is nothing to end, and it is dropped.
TEST_F(PrompterTest, PostedCancelEndsTheNextPromptOnly) {
  answers("1,2\nLINE\n3,4\n");
  const int before = prompter.cancels();
  prompter.postCancel();
  EXPECT_EQ(prompter.getPoint(L"Point: ").status, PromptStatus::Cancel);
  EXPECT_EQ(prompter.cancels(), before + 1);
  EXPECT_EQ(prompter.getPoint(L"Point: ").status, PromptStatus::Normal);
  prompter.postCancel();
  EXPECT_EQ(prompter.getCommand(L"Command: ", {})->text, L"LINE");
  EXPECT_EQ(prompter.getPoint(L"Point: ").status, PromptStatus::Normal);
  EXPECT_EQ(transcript(), "Point: *Cancel*\nPoint: 1,2\nCommand: LINE\nPoint: 3,4\n");
}

TEST_F(PrompterTest, CommandPromptTrimsAndEndOfInputIsACancelShownInTheTranscript) {
  answers("  _odlist \n\n*Cancel*\nLINE\n");
  EXPECT_EQ(prompter.getCommand(L"Command: ", {})->text, L"_odlist");
  EXPECT_EQ(prompter.getCommand(L"Command: ", {})->status, PromptStatus::None);
  EXPECT_EQ(prompter.getCommand(L"Command: ", {})->status, PromptStatus::Cancel);
  EXPECT_EQ(prompter.getCommand(L"Command: ", {})->text, L"LINE");
  EXPECT_EQ(prompter.getPoint(L"Specify first point: ").status, PromptStatus::Cancel);
  EXPECT_TRUE(prompter.inputEnded());
  // Running out of commands is the normal end of a script: nothing is shown.
  EXPECT_FALSE(prompter.getCommand(L"Command: ", {}).has_value());
  EXPECT_EQ(transcript(),
            "Command:   _odlist \nCommand: \nCommand: *Cancel*\nCommand: LINE\n"
            "Specify first point: *Cancel*\n");
}

TEST_F(PrompterTest, StringsEndAtTheFirstBlankUnlessSpacesAreAllowed) {
  answers("Main Street  West\nMain Street\n\n   \n  Side\n");
  EXPECT_EQ(prompter.getString(L"Layer: ", false).text, L"Main");
  EXPECT_EQ(prompter.getString(L"Text: ", true).text, L"Main Street");
  // Enter is a normal, empty answer: the host's way.
  const platform::StringReply enter = prompter.getString(L"Text: ", true);
  EXPECT_EQ(enter.status, PromptStatus::Normal);
  EXPECT_EQ(enter.text, L"");
  EXPECT_EQ(prompter.getString(L"Text: ", true).status, PromptStatus::Normal);
  // Blanks before the word end nothing; a queued answer is echoed the same way.
  EXPECT_EQ(prompter.getString(L"Layer: ", false).text, L"Side");
  prompter.queueAnswers({L"Back Lane"});
  EXPECT_EQ(prompter.getString(L"Layer: ", false).text, L"Back");
  // The echo is what was taken; what was dropped is said.
  EXPECT_EQ(transcript(),
            "Layer: Main\nIgnored: Street  West\nText: Main Street\nText: \nText:    \n"
            "Layer: Side\nLayer: Back\nIgnored: Lane\n");
}

TEST_F(PrompterTest, KeywordsAreChosenByExactNameOrUniquePrefixElseAskedAgain) {
  answers("on\nof\nu\nHIDE\no\nLock\nOF\n\n\n");
  const Keywords keywords = {L"New", L"ON", L"OFF", L"Hide", L"Unhide"};
  const std::wstring prompt = L"Option [New/ON/OFF/Hide/Unhide]: ";
  for (const wchar_t* expected : {L"ON", L"OFF", L"Unhide", L"Hide", L"OFF"}) {
    const platform::StringReply reply = prompter.getKeyword(prompt, keywords);
    EXPECT_EQ(reply.status, PromptStatus::Normal);
    EXPECT_EQ(reply.text, expected);  // spelled as listed, not as typed
  }
  // Enter gives the default, or None without one.
  const platform::StringReply withDefault = prompter.getKeyword(prompt, keywords, L"Hide");
  EXPECT_EQ(withDefault.status, PromptStatus::Normal);
  EXPECT_EQ(withDefault.text, L"Hide");
  EXPECT_EQ(prompter.getKeyword(prompt, keywords).status, PromptStatus::None);
  EXPECT_NE(transcript().find("Option [New/ON/OFF/Hide/Unhide]: o\n"
                              "Ambiguous keyword 'o': could be ON or OFF.\n"
                              "Option [New/ON/OFF/Hide/Unhide]: Lock\n"
                              "Invalid option keyword.\n"
                              "Option [New/ON/OFF/Hide/Unhide]: OF\n"),
            std::string::npos)
      << transcript();
}

TEST_F(PrompterTest, YesNoPrompts) {
  answers("y\nNO\n\n\n");
  EXPECT_TRUE(prompter.getYesNo(L"Continue? [Yes/No] <No>: ", false).value);
  EXPECT_FALSE(prompter.getYesNo(L"Continue? [Yes/No] <Yes>: ", true).value);
  const Answer<bool> enterYes = prompter.getYesNo(L"Continue? [Yes/No] <Yes>: ", true);
  EXPECT_TRUE(enterYes.isNormal());
  EXPECT_TRUE(enterYes.value);
  EXPECT_EQ(prompter.getYesNo(L"Continue? [Yes/No]: ").status, PromptStatus::None);
}

TEST_F(PrompterTest, PointsAskAgainUntilValidAndAlsoTakeTheirKeywords) {
  answers("1\n1,2,3,4\n 1.5 , -2e1 ,3 \n\nc\n4,5\nx\nu\n");
  const Answer<platform::Point3d> point = prompter.getPoint(L"Point: ");
  EXPECT_EQ(point.status, PromptStatus::Normal);
  EXPECT_EQ(point.value, (platform::Point3d{1.5, -20, 3}));
  EXPECT_EQ(prompter.getPoint(L"Point: ").status, PromptStatus::None);
  const Keywords keywords = {L"Close", L"Undo"};
  const std::wstring prompt = L"Next or [Close/Undo]: ";
  const Answer<platform::Point3d> close = prompter.getPoint(prompt, keywords);
  EXPECT_EQ(close.status, PromptStatus::Keyword);
  EXPECT_EQ(close.keyword, L"Close");
  EXPECT_EQ(prompter.getPoint(prompt, keywords).value, (platform::Point3d{4, 5, 0}));
  EXPECT_EQ(prompter.getPoint(prompt, keywords).keyword, L"Undo");
  EXPECT_EQ(transcript(),
            "Point: 1\nInvalid point.\nPoint: 1,2,3,4\nInvalid point.\n"
            "Point:  1.5 , -2e1 ,3 \nPoint: \nNext or [Close/Undo]: c\n"
            "Next or [Close/Undo]: 4,5\nNext or [Close/Undo]: x\n"
            "Invalid point or option keyword.\nNext or [Close/Undo]: u\n");
}

TEST_F(PrompterTest, NumbersParseStrictlyEnterGivesTheDefaultAndKeywordsAreTaken) {
  answers("12abc\n1.5\n7\n\n1,5\n-2.5e1\n\n\nDefault\nz\n2\n");
  EXPECT_EQ(prompter.getInt(L"Count: ").value, 7);
  const Answer<int> defaultInt = prompter.getInt(L"Count <3>: ", 3);
  EXPECT_EQ(defaultInt.status, PromptStatus::Normal);
  EXPECT_EQ(defaultInt.value, 3);
  EXPECT_EQ(prompter.getReal(L"Width: ").value, -25.0);
  EXPECT_EQ(prompter.getReal(L"Width <0.5>: ", 0.5).value, 0.5);
  EXPECT_EQ(prompter.getReal(L"Width: ").status, PromptStatus::None);
  const Answer<double> keyword = prompter.getReal(L"Height or [Default]: ", {}, {L"Default"});
  EXPECT_EQ(keyword.status, PromptStatus::Keyword);
  EXPECT_EQ(keyword.keyword, L"Default");
  EXPECT_EQ(prompter.getInt(L"Sides or [Edge]: ", {}, {L"Edge"}).value, 2);
  EXPECT_EQ(transcript(),
            "Count: 12abc\nRequires an integer value.\nCount: 1.5\nRequires an integer value.\n"
            "Count: 7\nCount <3>: \nWidth: 1,5\nRequires a real value.\nWidth: -2.5e1\n"
            "Width <0.5>: \nWidth: \nHeight or [Default]: Default\nSides or [Edge]: z\n"
            "Requires an integer value or option keyword.\nSides or [Edge]: 2\n");
}

TEST_F(PrompterTest, SelectionLinesAreParsedAndBadOnesAskedAgain) {
  answers("W 0,0 oops\n#1F L\n\n");
  const Answer<std::vector<SelectionItem>> items = prompter.getSelection(L"Select objects: ");
  ASSERT_EQ(items.status, PromptStatus::Normal);
  ASSERT_EQ(items.value.size(), 2u);
  EXPECT_EQ(items.value[0].handle, 0x1Fu);
  EXPECT_EQ(items.value[1].kind, SelectionKind::Last);
  EXPECT_EQ(prompter.getSelection(L"Select objects: ").status, PromptStatus::None);
  EXPECT_EQ(transcript(),
            "Select objects: W 0,0 oops\n"
            "Invalid selection: 'oops'\n"
            "Select objects: #1F L\n"
            "Select objects: \n");
}

TEST(KeywordPromptTest, ListsKeywordsAndTheDefault) {
  EXPECT_EQ(keywordPrompt(L"Column type", {L"Integer", L"Real"}, L"Real"),
            L"Column type [Integer/Real] <Real>: ");
  EXPECT_EQ(keywordPrompt(L"Enter an option", {L"ON", L"OFF"}, std::nullopt),
            L"Enter an option [ON/OFF]: ");
  EXPECT_EQ(keywordPrompt(L"", {L"Yes", L"No"}, L"No"), L"[Yes/No] <No>: ");
}

}  // namespace
}  // namespace host
