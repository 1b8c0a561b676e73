// The commands that take records off entities.
#pragma once

namespace zarvel {

void commandRm();
void commandRmAll();
void commandRemoveDuplicateOd();

}  // namespace zarvel
