// The document manager: locks, the resource scope of a module, and queued
// command strings.
#pragma once

#include <string>

#include "platform/Status.h"

namespace platform {

enum class LockMode : int { Read = 1, Write = 4 };

class Documents {
 public:
  virtual ~Documents() = default;

  virtual void pushResourceHandle(void* module) = 0;
  virtual void popResourceHandle() = 0;

  // Locks the MDI-active document.
  virtual Status lockDocument(LockMode mode) = 0;
  virtual Status unlockDocument() = 0;

  // Queues text as if typed at the command line of the current document.
  virtual void sendStringToExecute(const std::wstring& /*text*/) {}
};

}  // namespace platform
