// The interactive console: line editing, history and completion on a
// terminal, through the editline library.
#pragma once

#include <ostream>
#include <string>

#include "host/editor/Console.h"

namespace host {

// Reads from standard input, which must be a terminal. The line editor keeps
// process-wide state, so only one terminal console may exist at a time.
//
// Ctrl-C at a prompt discards the line and answers "*Cancel*", the Esc of the
// real host. Outside a prompt (while a command runs) Ctrl-C keeps its default
// effect and ends the program, so that a runaway command can always be
// stopped. Ctrl-D on an empty line ends the input.
class TerminalConsole : public Console {
 public:
  // Output goes to out (normally std::cout); the line editor itself writes the
  // prompt and the echo to standard output.
  explicit TerminalConsole(std::ostream& out);
  ~TerminalConsole() override;
  TerminalConsole(const TerminalConsole&) = delete;
  TerminalConsole& operator=(const TerminalConsole&) = delete;

  // Whether standard input is a terminal, so that this console can be used.
  static bool available();

  void print(const std::wstring& text) override;
  void showCancelled(const std::wstring& prompt) override;
  bool isInteractive() const override { return true; }

 private:
  std::optional<std::wstring> read(const std::wstring& prompt,
                                   const std::vector<std::wstring>& completions,
                                   Answers answers) override;

  std::ostream& out_;
  // The editor keeps every line; repeating the last one would only clutter.
  std::string lastHistory_;
};

}  // namespace host
