// How a command came out, as the editor's events and a command started by a
// module tell it.
#pragma once

namespace host {

enum class CommandOutcome { Ended, Cancelled, Failed };

}  // namespace host
