// Choosing entities a line at a time, and the line that answers each one:
// "N found (D duplicate), M removed, K total".
#include "host/editor/SelectionPrompt.h"

#include <algorithm>
#include <string>
#include <unordered_set>

#include "host/editor/SelectionResolver.h"

namespace host {
namespace {

// What one line did.
struct LineTally {
  bool adding = false;
  bool removing = false;
  int found = 0;       // the entities the line named, each counted once
  int duplicates = 0;  // namings of an entity that was already chosen
  int removed = 0;
};

std::wstring tallyText(const LineTally& tally) {
  std::wstring text;
  // A line always says something, if only that it found nothing.
  if (tally.adding || !tally.removing) {
    text = std::to_wstring(tally.found) + L" found";
    if (tally.duplicates > 0) text += L" (" + std::to_wstring(tally.duplicates) + L" duplicate)";
  }
  if (tally.removing) {
    text += (text.empty() ? L"" : L", ") + std::to_wstring(tally.removed) + L" removed";
  }
  return text;
}

// The entities chosen so far. Membership is a set, so that choosing all of a
// large drawing stays linear; the order of additions is kept beside it.
class Chosen {
 public:
  bool add(ObjectId id) {
    if (!members_.insert(id).second) return false;
    order_.push_back(id);
    return true;
  }
  bool remove(ObjectId id) { return members_.erase(id) > 0; }
  std::size_t size() const { return members_.size(); }

  // In the order of their last addition: one removed and added again comes
  // where it was added again.
  std::vector<ObjectId> ids() const {
    std::vector<ObjectId> ids;
    std::unordered_set<ObjectId> taken;
    for (auto it = order_.rbegin(); it != order_.rend(); ++it) {
      if (members_.count(*it) > 0 && taken.insert(*it).second) ids.push_back(*it);
    }
    std::reverse(ids.begin(), ids.end());
    return ids;
  }

 private:
  std::unordered_set<ObjectId> members_;
  // Removed ids stay here until ids() leaves them out.
  std::vector<ObjectId> order_;
};

LineTally applyLine(Chosen& chosen, const Document& document,
                    const std::vector<SelectionItem>& items) {
  LineTally tally;
  std::unordered_set<ObjectId> named;
  for (const SelectionItem& item : items) {
    const std::vector<ObjectId> ids = resolveSelectionItem(document, item);
    if (item.add) {
      tally.adding = true;
      for (ObjectId id : ids) {
        if (named.insert(id).second) ++tally.found;
        if (!chosen.add(id)) ++tally.duplicates;
      }
    } else {
      tally.removing = true;
      for (ObjectId id : ids) {
        if (chosen.remove(id)) ++tally.removed;
      }
    }
  }
  return tally;
}

}  // namespace

std::optional<std::vector<ObjectId>> promptForObjects(Prompter& prompter,
                                                      const Document& document) {
  Chosen chosen;
  bool firstLine = true;
  for (;;) {
    Answer<std::vector<SelectionItem>> line = prompter.getSelection(L"Select objects: ");
    if (line.status == platform::PromptStatus::Cancel) return std::nullopt;
    if (line.status != platform::PromptStatus::Normal) break;
    const LineTally tally = applyLine(chosen, document, line.value);
    std::wstring text = tallyText(tally);
    // From the second line on, the total tells what the lines came to.
    if (!firstLine) text += L", " + std::to_wstring(chosen.size()) + L" total";
    prompter.print(text + L"\n");
    firstLine = false;
  }
  return chosen.ids();
}

}  // namespace host
