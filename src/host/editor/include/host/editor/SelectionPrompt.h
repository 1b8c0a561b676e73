// The "Select objects: " prompt: lines of items until Enter, each line
// answered with what it found and removed.
#pragma once

#include <optional>
#include <vector>

#include "host/editor/Document.h"
#include "host/editor/Prompter.h"

namespace host {

// The entities chosen, in the order they were added; nullopt when the user
// cancelled.
std::optional<std::vector<ObjectId>> promptForObjects(Prompter& prompter, const Document& document);

}  // namespace host
