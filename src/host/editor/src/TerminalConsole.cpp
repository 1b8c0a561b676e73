// The terminal console over editline's readline interface.
#include "host/editor/TerminalConsole.h"

#include <editline/readline.h>
#include <langinfo.h>
#include <unistd.h>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>

#include "host/editor/AnswerParsing.h"
#include "platform/Text.h"

namespace host {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void onInterrupt(int /*signal*/) {
  interrupted = 1;
}

bool consoleExists = false;

// The words the current prompt may complete, in UTF-8 as the editor wants them.
std::vector<std::string> completionWords;

char* nextCompletion(const char* text, int state) {
  static std::size_t next = 0;
  static std::wstring prefix;
  if (state == 0) {
    next = 0;
    prefix = platform::lowerCase(platform::fromUtf8(text));
  }
  while (next < completionWords.size()) {
    const std::string& word = completionWords[next++];
    if (platform::lowerCase(platform::fromUtf8(word)).compare(0, prefix.size(), prefix) == 0) {
      // The editor frees the match with free().
      return strdup(word.c_str());
    }
  }
  return nullptr;
}

char** completeAnswer(const char* text, int start, int /*end*/) {
  // Never fall back to file names: an answer is one word of a known list.
  rl_attempted_completion_over = 1;
  // A space after a command name would be part of the answer.
  rl_completion_append_character = '\0';
  if (start != 0 || completionWords.empty()) return nullptr;
  return rl_completion_matches(text, nextCompletion);
}

// Catches SIGINT for the span of one prompt. Without SA_RESTART the editor's
// read() fails with EINTR, and the editor gives up the line at once.
class InterruptScope {
 public:
  InterruptScope() {
    interrupted = 0;
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    sigemptyset(&action.sa_mask);
    action.sa_flags = 0;
    sigaction(SIGINT, &action, &previous_);
  }
  ~InterruptScope() { sigaction(SIGINT, &previous_, nullptr); }
  InterruptScope(const InterruptScope&) = delete;
  InterruptScope& operator=(const InterruptScope&) = delete;

 private:
  struct sigaction previous_ {};
};

// The part of a prompt after its last line feed: what stays on the input line.
std::wstring lastLine(const std::wstring& prompt) {
  const std::size_t feed = prompt.rfind(L'\n');
  return feed == std::wstring::npos ? prompt : prompt.substr(feed + 1);
}

}  // namespace

TerminalConsole::TerminalConsole(std::ostream& out) : out_(out) {
  if (consoleExists) throw std::logic_error("only one terminal console may exist");
  consoleExists = true;
  // The editor decodes keys with the C library's multibyte functions, so the
  // character type must be UTF-8 for non-ASCII input to survive. Only the
  // character type changes: number formatting stays in the "C" locale.
  const char* fromEnvironment = std::setlocale(LC_CTYPE, "");
  if (fromEnvironment == nullptr || std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
    std::setlocale(LC_CTYPE, "C.UTF-8");
  }
  rl_readline_name = "zarvel";
  // The editor's own handlers would re-raise SIGINT and end the program; a
  // prompt installs ours instead.
  rl_catch_signals = 0;
  rl_attempted_completion_function = completeAnswer;
  using_history();
}

TerminalConsole::~TerminalConsole() {
  rl_attempted_completion_function = nullptr;
  completionWords.clear();
  consoleExists = false;
}

bool TerminalConsole::available() {
  return isatty(STDIN_FILENO) != 0;
}

void TerminalConsole::print(const std::wstring& text) {
  out_ << platform::toUtf8(text);
}

void TerminalConsole::showCancelled(const std::wstring& prompt) {
  // Rewrite the input line, whatever was typed on it, so that it reads as the
  // transcript of a script would; ESC [K clears what the rewrite left over.
  out_ << '\r' << platform::toUtf8(lastLine(prompt)) << "*Cancel*\x1b[K\n";
  out_.flush();
}

// The user sees the line as typed, whatever part of it answers.
std::optional<std::wstring> TerminalConsole::read(const std::wstring& prompt,
                                                  const std::vector<std::wstring>& completions,
                                                  Answers /*answers*/) {
  // Earlier lines of a prompt go out as text; the editor redraws only the last.
  const std::size_t feed = prompt.rfind(L'\n');
  if (feed != std::wstring::npos) out_ << platform::toUtf8(prompt.substr(0, feed + 1));
  out_.flush();
  std::fflush(stdout);

  completionWords.clear();
  for (const std::wstring& word : completions) completionWords.push_back(platform::toUtf8(word));

  char* line = nullptr;
  bool cancelled = false;
  {
    InterruptScope scope;
    line = readline(platform::toUtf8(lastLine(prompt)).c_str());
    cancelled = interrupted != 0;
  }
  completionWords.clear();

  if (cancelled) {
    std::free(line);
    showCancelled(prompt);
    return std::wstring(L"*Cancel*");
  }
  if (line == nullptr) return std::nullopt;
  std::wstring answer = platform::fromUtf8(line);
  if (!trimBlanks(answer).empty() && lastHistory_ != line) {
    add_history(line);
    lastHistory_ = line;
  }
  std::free(line);
  return answer;
}

}  // namespace host
