// Only the handles are kept while reading, sorted once at the end; a handle
// given twice is rare enough that its lines are found by reading the text again.
#include "FileHandles.h"

#include <algorithm>
#include <unordered_map>

#include "GroupCodes.h"
#include "TagReader.h"
#include "host/db/PortDrawing.h"
#include "host/dxf/ParseError.h"
#include "platform/Text.h"

namespace host::dxf {

void FileHandles::addRequired(Handle handle, std::size_t line, const std::string& what) {
  if (handle == 0) throw ParseError(line, "the " + what + " has no handle (group 5), or handle 0");
  seen_.push_back(handle);
}

void FileHandles::checkUnique(std::string_view text) {
  std::sort(seen_.begin(), seen_.end());
  // The lines where each handle given twice begins an object.
  std::unordered_map<Handle, std::vector<std::size_t>> twice;
  for (std::size_t i = 1; i < seen_.size(); ++i) {
    if (seen_[i] == seen_[i - 1]) twice[seen_[i]];
  }
  seen_.clear();
  seen_.shrink_to_fit();
  if (twice.empty()) return;
  TagReader reader(text);
  std::size_t objectLine = 0;
  bool looking = false;  // for the handle of the object that began last
  while (auto tag = reader.next()) {
    if (tag->code == 0) {
      objectLine = tag->line;
      // A section's header variables hold handles that are no object's.
      looking = tag->value != "SECTION";
    } else if (tag->code == 100) {
      looking = false;
    } else if (looking && (tag->code == 5 || tag->code == 105)) {
      looking = false;
      auto it = twice.find(parseHandle(tag->value).value_or(0));
      if (it != twice.end()) it->second.push_back(objectLine);
    }
  }
  const std::pair<const Handle, std::vector<std::size_t>>* first = nullptr;
  for (const auto& entry : twice) {
    if (entry.second.size() < 2) continue;
    if (first == nullptr || entry.second[1] < first->second[1]) first = &entry;
  }
  if (first == nullptr) return;
  throw ParseError(first->second[1], "the handle " + platform::toUtf8(handleToText(first->first)) +
                                         " is already the handle of the object on line " +
                                         std::to_string(first->second[0]));
}

}  // namespace host::dxf
