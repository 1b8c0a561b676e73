// The script console: one line per prompt, and a transcript that reads like
// the host's command history.
#include "host/editor/Console.h"

#include <gtest/gtest.h>

#include <sstream>

namespace host {
namespace {

struct Script {
  explicit Script(const std::string& text) : in(text) {}
  std::istringstream in;
  std::ostringstream out;
  ScriptConsole console{in, out};
};

TEST(ConsoleTest, EachLineAnswersOnePromptAndIsEchoedAfterIt) {
  Script script("LINE\n0,0\n\n");
  script.console.print(L"Zarvel ready.\n");
  EXPECT_EQ(script.console.readAnswer(L"Command: "), L"LINE");
  EXPECT_EQ(script.console.readAnswer(L"Specify first point: "), L"0,0");
  script.console.print(L"Line done.\n");
  EXPECT_EQ(script.console.readAnswer(L"Specify next point: "), L"");
  EXPECT_EQ(script.out.str(),
            "Zarvel ready.\n"
            "Command: LINE\n"
            "Specify first point: 0,0\n"
            "Line done.\n"
            "Specify next point: \n");
}

TEST(ConsoleTest, CommentLinesAnswerNothingAndStayOutOfTheTranscript) {
  Script script("; set up\nLINE\n  ; indented too\n;\nNAME=a;b\n; last\n");
  EXPECT_EQ(script.console.readAnswer(L"Command: "), L"LINE");
  EXPECT_EQ(script.console.readAnswer(L"Values: "), L"NAME=a;b");
  EXPECT_EQ(script.console.readAnswer(L"Command: "), std::nullopt);
  EXPECT_EQ(script.out.str(), "Command: LINE\nValues: NAME=a;b\n");
}

TEST(ConsoleTest, EndOfInputPrintsNothing) {
  Script script("ONLY");  // the last line needs no line feed
  EXPECT_EQ(script.console.readAnswer(L"Command: "), L"ONLY");
  EXPECT_EQ(script.console.readAnswer(L"Command: "), std::nullopt);
  EXPECT_EQ(script.console.readAnswer(L"Command: "), std::nullopt);
  EXPECT_EQ(script.out.str(), "Command: ONLY\n");
}

TEST(ConsoleTest, LineEndsAndByteOrderMarkAreNotPartOfAnswers) {
  Script script("\xEF\xBB\xBFQUIT\r\n\r\n\xEF\xBB\xBFx\n");
  EXPECT_EQ(script.console.readAnswer(L"A: "), L"QUIT");
  EXPECT_EQ(script.console.readAnswer(L"B: "), L"");
  // Only a file starts with a byte order mark; later it is text (U+FEFF).
  EXPECT_EQ(script.console.readAnswer(L"C: "), L"\uFEFFx");
  EXPECT_EQ(script.out.str(), "A: QUIT\nB: \nC: \xEF\xBB\xBFx\n");
}

TEST(ConsoleTest, TextIsUtf8OnTheStreams) {
  Script script(
      "Stra\xC3\x9F"
      "e \xE2\x82\xAC\nbad\xFF\n");
  EXPECT_EQ(script.console.readAnswer(L"Name: "), L"Stra\u00DFe \u20AC");
  // Invalid bytes become U+FFFD, and the echo stays valid UTF-8.
  EXPECT_EQ(script.console.readAnswer(L"Next: "), L"bad\uFFFD");
  script.console.print(L"\u00E9t\u00E9\n");
  EXPECT_EQ(script.out.str(),
            "Name: Stra\xC3\x9F"
            "e \xE2\x82\xAC\n"
            "Next: bad\xEF\xBF\xBD\n"
            "\xC3\xA9t\xC3\xA9\n");
}

TEST(ConsoleTest, PrintAddsNothingAndCancelShowsAfterThePrompt) {
  Script script("");
  script.console.print(L"no line feed");
  script.console.print(L"");
  script.console.print(L" here\n");
  script.console.showCancelled(L"Select objects: ");
  EXPECT_EQ(script.out.str(), "no line feed here\nSelect objects: *Cancel*\n");
  EXPECT_FALSE(script.console.isInteractive());
}

}  // namespace
}  // namespace host
