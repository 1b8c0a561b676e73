// Status codes that cross the port. Failures the module must react to are
// return values, never exceptions.
#pragma once

namespace platform {

// A platform status. Nothing may drop one unnoticed: a caller either acts on
// it or passes it to ignoreStatus with a word on why it may.
// (clang-format 14 lays out an attribute on an enum wrongly.)
// clang-format off
enum class [[nodiscard]] Status : int {
  Ok = 0,
  Failed = 1,
};
// clang-format on

// Drops a status on purpose. Every call says beside it why the failure changes
// nothing for the caller, so that a reader sees the decision, not an oversight.
inline void ignoreStatus(Status /*status*/) {}

// Result codes of an interactive prompt, with the host's numeric values.
enum class PromptStatus : int {
  Normal = 5100,    // an answer was given
  None = 5000,      // Enter on an empty input
  Keyword = -5005,  // a keyword was given where a value was asked
  Error = -5001,    // the prompt failed
  Cancel = -5002,   // the user pressed Esc
};

enum class OpenMode { Read, Write };

}  // namespace platform
