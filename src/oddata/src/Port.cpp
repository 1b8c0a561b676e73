// Holds the host given to the module at load.
#include "oddata/Port.h"

#include <cassert>

namespace zarvel {
namespace {
platform::Host* gHost = nullptr;
void* gModule = nullptr;
}  // namespace

platform::Host& port() {
  assert(gHost != nullptr && "the module is used before it was loaded");
  return *gHost;
}

void setPort(platform::Host* host, void* module) {
  gHost = host;
  gModule = module;
}

bool hasPort() { return gHost != nullptr; }

void* moduleHandle() { return gModule; }

}  // namespace zarvel
