// Status codes that cross the port. Failures the module must react to are
// return values, never exceptions.
#pragma once

namespace platform {

// A platform status: 0 is success, anything else a failure.
using Status = int;
inline constexpr Status kOk = 0;
inline constexpr Status kFailed = 1;

// Result codes of an interactive prompt, with the host's numeric values.
enum class PromptStatus : int {
  Normal = 5100,   // an answer was given
  None = 5000,     // Enter on an empty input
  Keyword = -5005, // a keyword was given where a value was asked
  Error = -5001,   // the prompt failed
  Cancel = -5002,  // the user pressed Esc
};

enum class OpenMode { Read, Write };

}  // namespace platform
