// Finding entities by whether they carry Object Data.
#pragma once

#include <vector>

#include "platform/ObjectId.h"

namespace zarvel {

// The question a presence search asks of each entity in scope.
enum SearchMode : int {
  kSearchNoOd = 0,        // no record of a user table
  kSearchNothing = 1,     // finds nothing; no command passes it
  kSearchHasOd = 2,       // at least one record of a user table
  kSearchMultipleOd = 3,  // more than one record of user tables
  kSearchDuplicateOd = 4, // two records of one table, system tables included
};

// The entities in scope that meet the mode's test, in scope order.
std::vector<platform::ObjectId> findByPresence(int mode);

void commandHasNoOd();
void commandHasOd();
void commandHasMultipleOd();
void commandHasDuplicateOd();

}  // namespace zarvel
