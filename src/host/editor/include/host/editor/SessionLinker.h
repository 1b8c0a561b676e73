// The dynamic linker as a module sees it. Our host keeps a module loaded until
// the session ends and has a single document window, so what a module asks of
// it here needs no record.
#pragma once

#include "platform/Host.h"

namespace host {

class SessionLinker : public platform::DynamicLinker {
 public:
  void unlockApplication(void*) override {}
  void registerAppMDIAware(void*) override {}
};

}  // namespace host
