// Bookkeeping of undo steps; the database applies them.
#include "host/db/UndoJournal.h"

namespace host {

void UndoJournal::begin(const std::wstring& name) {
  recording_ = true;
  ++stamp_;
  done_.push_back(Step{name, {}});
}

void UndoJournal::end() {
  if (!recording_) return;
  recording_ = false;
  // A command that changed nothing leaves nothing to undo, and UNDO after it
  // goes back to the last change; nor does it end what could be redone.
  if (done_.back().changes.empty()) {
    done_.pop_back();
  } else {
    undone_.clear();
  }
}

UndoJournal::Mark UndoJournal::mark(Handle nextHandle) {
  ++stamp_;
  return Mark{done_.back().changes.size(), nextHandle};
}

void UndoJournal::save(ObjectId id, const DbObject& object) {
  done_.back().changes.push_back(Change{id, object.clone()});
}

void UndoJournal::saveCreation(ObjectId id) { done_.back().changes.push_back(Change{id, nullptr}); }

}  // namespace host
