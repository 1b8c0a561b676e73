// The host's prompt conventions over a console: cancel, Enter, keywords,
// numbers, points and selection lines, each ending in a prompt status.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "host/editor/Console.h"
#include "host/editor/SelectionGrammar.h"
#include "platform/Editor.h"
#include "platform/Geometry.h"
#include "platform/Status.h"

namespace host {

using Keywords = std::vector<std::wstring>;

// The reply of a value prompt that also takes keywords ("Specify next point
// or [Close/Undo]: "): Normal with the value, Keyword with the keyword as it is
// spelled in the list, None for Enter without a default, or Cancel.
template <typename T>
struct Answer {
  platform::PromptStatus status = platform::PromptStatus::Normal;
  T value{};
  std::wstring keyword;

  bool isNormal() const { return status == platform::PromptStatus::Normal; }
};

// "<message> [A/B/C] <B>: ", the way keyword prompts are written.
std::wstring keywordPrompt(const std::wstring& message, const Keywords& keywords,
                           const std::optional<std::wstring>& defaultKeyword);

// Every prompt answers "*Cancel*" or "^C" (any case) with Cancel, and so does
// the end of the input, which the transcript shows as "<prompt>*Cancel*". An
// answer a prompt cannot use prints why and asks again.
class Prompter {
 public:
  explicit Prompter(Console& console) : console_(console) {}

  Console& console() { return console_; }
  void print(const std::wstring& text) { console_.print(text); }
  // Whether the input ran out; every later prompt is a cancel.
  bool inputEnded() const { return inputEnded_; }
  // How many prompts were cancelled so far, so a caller can tell whether the
  // user cancelled while a command ran.
  int cancels() const { return cancels_; }
  // Answers for the next prompts, given before they are asked (a command
  // started with its arguments); the user answers the rest.
  void queueAnswers(const std::vector<std::wstring>& answers) {
    queued_.insert(queued_.end(), answers.begin(), answers.end());
  }
  void clearQueuedAnswers() { queued_.clear(); }
  // Text as if typed at the command line before the input's next line, each
  // blank or line feed ending one answer: what a module queues to run once
  // the present command is over.
  void typeAhead(const std::wstring& text);
  // The next prompt of the running command is cancelled, as if Esc were
  // pressed there; the "Command: " prompt forgets it.
  void postCancel() { cancelPosted_ = true; }

  // One answer with the cancel convention applied: Cancel, None for an empty
  // answer, or Normal with the answer as typed. The base of the other prompts.
  platform::StringReply ask(const std::wstring& prompt, const Keywords& completions = {},
                            Console::Answers answers = Console::Answers::Line);

  // The "Command: " prompt: nullopt at the end of the input (with nothing
  // printed, since running out of commands is the normal way a script ends),
  // otherwise as ask() with the answer trimmed of blanks.
  std::optional<platform::StringReply> getCommand(const std::wstring& prompt,
                                                  const Keywords& commandNames);

  // Enter gives Normal with an empty text, as the host does. Without spaces
  // the answer is its first word, and what follows is shown as ignored.
  platform::StringReply getString(const std::wstring& prompt, bool allowSpaces);

  // The caller writes the whole prompt, keyword list and default included.
  // The answer picks a keyword by exact name or unique prefix, in any case;
  // the reply is Normal with the keyword as listed. Enter gives the default,
  // or None without one.
  platform::StringReply getKeyword(const std::wstring& prompt, const Keywords& keywords,
                                   const std::optional<std::wstring>& defaultKeyword = {});
  // The same, matching the answer's first word only; what follows it goes to
  // rest (empty when nothing does), for a keyword that takes an argument.
  platform::StringReply getKeyword(const std::wstring& prompt, const Keywords& keywords,
                                   std::wstring& rest);
  // "[Yes/No]" as a keyword prompt; the value is true for Yes.
  Answer<bool> getYesNo(const std::wstring& prompt, std::optional<bool> defaultValue = {});

  // A value, or one of the keywords when some are given. Enter gives the
  // default when there is one, else None.
  Answer<platform::Point3d> getPoint(const std::wstring& prompt, const Keywords& keywords = {});
  Answer<double> getReal(const std::wstring& prompt, std::optional<double> defaultValue = {},
                         const Keywords& keywords = {});
  Answer<int> getInt(const std::wstring& prompt, std::optional<int> defaultValue = {},
                     const Keywords& keywords = {});

  // One line of a "Select objects: " prompt, parsed. Enter gives None (the
  // end of the selection); a line that does not parse prints why and asks again.
  Answer<std::vector<SelectionItem>> getSelection(const std::wstring& prompt);

 private:
  template <typename T, typename Parse>
  Answer<T> getValue(const std::wstring& prompt, const Keywords& keywords,
                     std::optional<T> defaultValue, Parse parse, const wchar_t* complaint);

  platform::StringReply askKeyword(const std::wstring& prompt, const Keywords& keywords,
                                   const std::optional<std::wstring>& defaultKeyword,
                                   std::wstring* rest);
  // Prints why an answer matched no keyword or more than one.
  void complainAboutKeyword(const std::wstring& answer, const Keywords& keywords,
                            const std::vector<int>& candidates);

  Console& console_;
  bool inputEnded_ = false;
  int cancels_ = 0;
  bool cancelPosted_ = false;
  std::deque<std::wstring> queued_;
  std::deque<std::wstring> typed_;
};

}  // namespace host
