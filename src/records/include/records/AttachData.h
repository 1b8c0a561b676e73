// ZARVEL_ADEATTACHDATA: one record of the chosen table, with the values typed
// in the dialog, put on the selected entities, or one record of it taken off.
#pragma once

namespace zarvel {

void commandAdeAttachData();

}  // namespace zarvel
