// ZARVEL_TRANSLATE: renames the drawing's tables, columns and values in bulk
// along three alias files, names to aliases or back.
#pragma once

namespace zarvel {

void commandTranslate();

}  // namespace zarvel
