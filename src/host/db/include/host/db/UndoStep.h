// A command's undo step as a scope: every way out of the scope closes the
// step, whether the body ends, returns early or throws.
#pragma once

#include <string>

#include "host/db/Database.h"

namespace host {

class UndoStep {
 public:
  // Opens a step of that name. Inside a step that is already open (a command
  // that another one runs) it opens none and marks the open one instead, so
  // that its own part can still be rolled back alone.
  UndoStep(Database& db, const std::wstring& name);
  // Closes the step it opened. An exception on its way through rolls back
  // first: a step is never left half-done.
  ~UndoStep();
  UndoStep(const UndoStep&) = delete;
  UndoStep& operator=(const UndoStep&) = delete;

  // Puts the drawing back as it was when the step began. The step stays open;
  // if nothing changes after, it leaves nothing to undo.
  void rollBack();

 private:
  Database& db_;
  bool opened_;
  UndoJournal::Mark mark_;
  int exceptionsAtStart_;
};

}  // namespace host
