// The script console: answers from a stream, prompts and answers echoed.
#include "host/editor/Console.h"

#include "host/editor/AnswerParsing.h"
#include "platform/Text.h"

namespace host {

void ScriptConsole::print(const std::wstring& text) {
  out_ << platform::toUtf8(text);
}

void ScriptConsole::showCancelled(const std::wstring& prompt) {
  out_ << platform::toUtf8(prompt) << "*Cancel*\n";
  out_.flush();
}

namespace {

// A line that begins with a semicolon is a comment of the script: it answers
// no prompt and stays out of the transcript.
bool isComment(const std::string& line) {
  const auto first = line.find_first_not_of(" \t");
  return first != std::string::npos && line[first] == ';';
}

}  // namespace

std::optional<std::wstring> ScriptConsole::read(const std::wstring& prompt,
                                                const std::vector<std::wstring>& /*completions*/,
                                                Answers answers) {
  // Whatever a command printed so far belongs before this prompt, also when
  // the transcript is interleaved with messages on another stream.
  out_.flush();
  std::string line;
  // The line is read before the prompt is written, so that a script that runs
  // out leaves no dangling prompt; the caller decides how to show that.
  do {
    if (!std::getline(in_, line)) return std::nullopt;
    if (firstLine_) {
      firstLine_ = false;
      // Editors on some systems start UTF-8 files with a byte order mark.
      if (line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
    }
    if (!line.empty() && line.back() == '\r') line.pop_back();
  } while (isComment(line));
  std::wstring answer = platform::fromUtf8(line);
  // Echo the decoded answer so that a transcript is valid UTF-8 even when the
  // script was not.
  const std::wstring echo =
      answers == Answers::Word ? std::wstring(splitFirstWord(answer).word) : answer;
  out_ << platform::toUtf8(prompt + echo) << '\n';
  return answer;
}

}  // namespace host
