// ZARVEL_STAT: how the entities of model space use the drawing's tables, shown
// in a read-only text box. It changes nothing.
#pragma once

#include <string>

namespace zarvel {

// The text the box shows, before its lines take their CR LF.
std::wstring usageReport();
void commandStat();

}  // namespace zarvel
