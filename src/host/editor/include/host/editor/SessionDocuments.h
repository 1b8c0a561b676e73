// The document manager as a module sees it: the lock of the open document and
// the module's resource scope, neither of which outlives a command.
#pragma once

#include <vector>

#include "host/db/Database.h"

#include "platform/Documents.h"

namespace host {

class Session;

class SessionDocuments : public platform::Documents {
 public:
  explicit SessionDocuments(Session& session) : session_(session) {}

  void pushResourceHandle(void* module) override { resourceStack_.push_back(module); }
  void popResourceHandle() override;
  platform::Status lockDocument(platform::LockMode mode) override;
  platform::Status unlockDocument() override;
  // Typed ahead of the input: it runs when the running command is over.
  void sendStringToExecute(const std::wstring& text) override;

  // Drops what the command that ends left locked or pushed.
  void endCommand();

  // The name UNDO gives a lock span's step.
  static constexpr const wchar_t* kLockStepName = L"Palette edit";

 private:
  void endLockStep();

  Session& session_;
  // The drawing whose undo step the outermost lock span opened; null when
  // the span runs within a command's step.
  Database* lockStepDb_ = nullptr;
  std::vector<void*> resourceStack_;
};

}  // namespace host
