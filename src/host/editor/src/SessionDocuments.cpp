// Locks and resource scopes a module takes while its commands run.
#include "host/editor/SessionDocuments.h"

#include "host/editor/Session.h"

namespace host {

void SessionDocuments::popResourceHandle() {
  if (!resourceStack_.empty()) resourceStack_.pop_back();
}

platform::Status SessionDocuments::lockDocument(platform::LockMode) {
  // Outside a command's step (a palette's edit) the outermost lock span is
  // one undo step of its own, as a command is.
  if (session_.document().lockCount++ == 0 && !session_.db().undo().recording()) {
    lockStepDb_ = &session_.db();
    lockStepDb_->undo().begin(kLockStepName);
  }
  return platform::Status::Ok;
}

platform::Status SessionDocuments::unlockDocument() {
  int& count = session_.document().lockCount;
  if (count == 0) return platform::Status::Failed;
  if (--count == 0) endLockStep();
  return platform::Status::Ok;
}

void SessionDocuments::endLockStep() {
  // A drawing opened within the span ended it with its document.
  if (lockStepDb_ != nullptr && lockStepDb_ == &session_.db()) lockStepDb_->undo().end();
  lockStepDb_ = nullptr;
}

void SessionDocuments::endCommand() {
  resourceStack_.clear();
  session_.document().lockCount = 0;
  endLockStep();
}

void SessionDocuments::sendStringToExecute(const std::wstring& text) {
  session_.prompter().typeAhead(text);
}

}  // namespace host
