// Undo by whole objects: the first change of an object within a step saves a
// copy of it; undoing swaps the copies back, and the swapped-out state is what
// redo puts back. A step is one command. A mark inside a step lets a part of
// it (a command run by another) be rolled back alone.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/db/Objects.h"

namespace host {

class UndoJournal {
 public:
  struct Change {
    ObjectId id;
    std::unique_ptr<DbObject> saved;  // null: the object did not exist
  };
  struct Step {
    std::wstring name;
    std::vector<Change> changes;
  };
  // Where the open step stood: its changes so far, and the next handle then.
  struct Mark {
    std::size_t changeCount = 0;
    Handle nextHandle = 0;
  };

  void begin(const std::wstring& name);
  void end();
  // Marks the open step. An object changed after the mark is saved again even
  // if it was saved before it, so that rolling back to the mark finds the
  // object's state at the mark.
  Mark mark(Handle nextHandle);
  bool recording() const { return recording_; }
  std::uint32_t stamp() const { return stamp_; }

  // Saves an object's state before its first change in the open step.
  void save(ObjectId id, const DbObject& object);
  void saveCreation(ObjectId id);

  std::size_t undoableCount() const { return done_.size(); }
  std::size_t redoableCount() const { return undone_.size(); }
  std::vector<Step>& done() { return done_; }
  std::vector<Step>& undone() { return undone_; }

 private:
  std::vector<Step> done_;
  std::vector<Step> undone_;
  bool recording_ = false;
  std::uint32_t stamp_ = 0;
};

}  // namespace host
