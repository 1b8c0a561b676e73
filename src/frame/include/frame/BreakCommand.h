// ZARVEL_BREAK: the host's own BREAK, after which every new piece carries a
// copy of what the source entity's extension dictionary held, and so its
// Object Data.
#pragma once

namespace zarvel {

void commandBreak();
// Lets go of the entries a break that never ended still holds, at unload.
void forgetBreakEntries();

}  // namespace zarvel
