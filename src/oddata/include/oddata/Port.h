// The module's one way to its host: the port handed over at load.
#pragma once

#include "platform/Host.h"

namespace zarvel {

// The host the module is loaded into. Only valid between load and unload.
platform::Host& port();
// Set at load (and by tests that drive the module without loading it); the
// module handle is what the resource scope pushes.
void setPort(platform::Host* host, void* moduleHandle = nullptr);
bool hasPort();
void* moduleHandle();

}  // namespace zarvel
