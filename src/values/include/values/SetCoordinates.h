// ZARVEL_SETXYZ: a coordinate of each entity written into up to three fields
// of the first record of one table on it.
#pragma once

#include <vector>

#include "platform/ObjectId.h"

namespace zarvel {

// The body, also run on the rows of the table editor. An empty list is filled
// by the selection; ids that won't open are taken out of it, keeping the order.
void setFromCoordinates(std::vector<platform::ObjectId>& ids);

void commandSetXyz();

}  // namespace zarvel
