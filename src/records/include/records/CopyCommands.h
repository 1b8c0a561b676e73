// The commands that bring a reference entity's records, values and display
// properties to other entities.
#pragma once

#include "platform/ObjectData.h"
#include "platform/ObjectId.h"

namespace zarvel {

void commandCopyOd();
void commandCopyValue();
void commandCopyOdValue();
void commandCopyAll();
void commandCopyAllValue();

// Overwrites each of the target's records whose table the source also has
// (names compared exactly) with the values of the source's first record of
// that table. Topology tables are never written. Returns the number of records
// overwritten.
int copyRecordValues(platform::ObjectId target, platform::ObjectId source,
                     platform::OdContainer& container);

}  // namespace zarvel
