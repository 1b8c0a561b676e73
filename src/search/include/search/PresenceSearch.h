// Finding entities by whether they carry Object Data.
#pragma once

#include <vector>

#include "platform/ObjectId.h"

namespace zarvel {

// The question a presence search asks of each entity in scope.
enum class PresenceMode : int {
  NoOd = 0,         // no record of a user table
  Nothing = 1,      // finds nothing; no command passes it
  HasOd = 2,        // at least one record of a user table
  MultipleOd = 3,   // more than one record of user tables
  DuplicateOd = 4,  // two records of one table, system tables included
};

// The entities in scope that meet the mode's test, in scope order.
std::vector<platform::ObjectId> findByPresence(PresenceMode mode);

void commandHasNoOd();
void commandHasOd();
void commandHasMultipleOd();
void commandHasDuplicateOd();

}  // namespace zarvel
