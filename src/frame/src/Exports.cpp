// The two functions through which a host finds and drives the plug-in.
#include "frame/CzarvelApp.h"

#define ZARVEL_EXPORT extern "C" __attribute__((visibility("default")))

ZARVEL_EXPORT int acrxEntryPoint(unsigned message, void* packet) {
  return zarvel::entryPoint(message, packet);
}

ZARVEL_EXPORT int acrxGetApiVersion() { return zarvel::apiVersion(); }
