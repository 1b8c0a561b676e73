// Bookkeeping of undo steps; the database applies them.
#include "db/UndoJournal.h"

namespace host {

void UndoJournal::begin(const std::wstring& name) {
  recording_ = true;
  ++stamp_;
  done_.push_back(Step{name, {}});
}

void UndoJournal::end() {
  if (!recording_) return;
  recording_ = false;
  // Like any command, a step that changed nothing is still one to undo, and it
  // ends what could be redone.
  undone_.clear();
}

void UndoJournal::save(ObjectId id, const DbObject& object) {
  done_.back().changes.push_back(Change{id, object.clone()});
}

void UndoJournal::saveCreation(ObjectId id) { done_.back().changes.push_back(Change{id, nullptr}); }

}  // namespace host
