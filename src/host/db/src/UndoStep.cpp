// Opening, marking, rolling back and closing undo steps by scope.
#include "host/db/UndoStep.h"

#include <exception>

namespace host {

UndoStep::UndoStep(Database& db, const std::wstring& name)
    : db_(db), opened_(!db.undo().recording()), exceptionsAtStart_(std::uncaught_exceptions()) {
  if (opened_) db_.undo().begin(name);
  mark_ = db_.undoMark();
}

UndoStep::~UndoStep() {
  if (std::uncaught_exceptions() > exceptionsAtStart_) rollBack();
  if (opened_) db_.undo().end();
}

void UndoStep::rollBack() {
  db_.rollBackTo(mark_);
}

}  // namespace host
