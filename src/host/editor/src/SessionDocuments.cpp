// Locks and resource scopes a module takes while its commands run.
#include "host/editor/SessionDocuments.h"

#include "host/editor/Session.h"

namespace host {

void SessionDocuments::popResourceHandle() {
  if (!resourceStack_.empty()) resourceStack_.pop_back();
}

platform::Status SessionDocuments::lockDocument(platform::LockMode) {
  ++session_.document().lockCount;
  return platform::Status::Ok;
}

platform::Status SessionDocuments::unlockDocument() {
  int& count = session_.document().lockCount;
  if (count == 0) return platform::Status::Failed;
  --count;
  return platform::Status::Ok;
}

void SessionDocuments::endCommand() {
  resourceStack_.clear();
  session_.document().lockCount = 0;
}

void SessionDocuments::sendStringToExecute(const std::wstring& text) {
  session_.prompter().typeAhead(text);
}

}  // namespace host
