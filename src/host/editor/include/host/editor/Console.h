// Where the command line's answers come from and its transcript goes: a
// script read line by line, or a terminal (see TerminalConsole.h).
#pragma once

#include <istream>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace host {

class Console {
 public:
  virtual ~Console() = default;

  // How much of a line answers a prompt: all of it, or its first word where a
  // blank ends the answer (the caller says what it ignored).
  enum class Answers { Line, Word };

  // The answer to one prompt, without its line feed; nullopt at the end of the
  // input, with nothing printed. Completions are the words a terminal user may
  // complete the answer with (a script ignores them).
  std::optional<std::wstring> readAnswer(const std::wstring& prompt,
                                         const std::vector<std::wstring>& completions = {},
                                         Answers answers = Answers::Line) {
    return read(prompt, completions, answers);
  }
  // Writes text as it is; the text carries its own line feeds.
  virtual void print(const std::wstring& text) = 0;
  // Shows that a prompt ended in a cancel nobody typed (the input ran out), so
  // that the transcript reads "<prompt>*Cancel*".
  virtual void showCancelled(const std::wstring& prompt) = 0;
  // Whether a person answers (and sees the prompts as they are asked).
  virtual bool isInteractive() const = 0;

 private:
  virtual std::optional<std::wstring> read(const std::wstring& prompt,
                                           const std::vector<std::wstring>& completions,
                                           Answers answers) = 0;
};

// Answers from a stream of UTF-8 lines, one line per prompt; an empty line is
// Enter. The transcript echoes each answer after its prompt, as the host's
// command history shows it: of a word's answer, the word.
class ScriptConsole : public Console {
 public:
  ScriptConsole(std::istream& in, std::ostream& out) : in_(in), out_(out) {}

  void print(const std::wstring& text) override;
  void showCancelled(const std::wstring& prompt) override;
  bool isInteractive() const override { return false; }

 private:
  std::optional<std::wstring> read(const std::wstring& prompt,
                                   const std::vector<std::wstring>& completions,
                                   Answers answers) override;

  std::istream& in_;
  std::ostream& out_;
  bool firstLine_ = true;
};

}  // namespace host
