// The host as a whole, as a loaded module reaches it: its registries by role.
#pragma once

#include <string>

#include "platform/Dialog.h"
#include "platform/Documents.h"
#include "platform/Drawing.h"
#include "platform/Editor.h"
#include "platform/FeatureClasses.h"
#include "platform/Files.h"
#include "platform/Geometry3d.h"
#include "platform/ObjectData.h"
#include "platform/Status.h"

namespace platform {

using CommandFunction = void (*)();

namespace CommandFlags {
inline constexpr int kModal = 0x0;
inline constexpr int kTransparent = 0x1;
inline constexpr int kUsePickSet = 0x2;
inline constexpr int kRedraw = 0x4;
inline constexpr int kSession = 0x200000;
}  // namespace CommandFlags

class CommandStack {
 public:
  virtual ~CommandStack() = default;
  virtual Status addCommand(const std::wstring& group, const std::wstring& globalName,
                            const std::wstring& localName, int flags, CommandFunction handler,
                            void* resourceHandle) = 0;
  virtual Status removeCommand(const std::wstring& group, const std::wstring& globalName) = 0;
  virtual Status removeGroup(const std::wstring& group) = 0;
};

class DynamicLinker {
 public:
  virtual ~DynamicLinker() = default;
  // The application may be unloaded while the host runs.
  virtual void unlockApplication(void* packet) = 0;
  virtual void registerAppMDIAware(void* packet) = 0;
};

class Host {
 public:
  virtual ~Host() = default;

  virtual CommandStack& commandStack() = 0;
  virtual DynamicLinker& dynamicLinker() = 0;
  virtual Documents& documents() = 0;
  // The editor, project and database of the current document.
  virtual Editor& editor() = 0;
  virtual Ui& ui() = 0;
  virtual Project& project() = 0;
  virtual Drawing& drawing() = 0;
  virtual FeatureClasses& featureClasses() = 0;
  virtual EntityGeometry& geometry() = 0;
  // A host without a file service writes nothing.
  virtual Files& files() {
    static Files none;
    return none;
  }

  // The session's path aliases; a host without them adds none.
  virtual PathAliases& pathAliases() {
    static PathAliases none;
    return none;
  }

  // Functions callable from the host's scripting language; a host without one
  // accepts and ignores them.
  virtual void defineFunction(const std::wstring& /*name*/, int /*index*/) {}
  virtual void undefineFunction(const std::wstring& /*name*/, int /*index*/) {}
  // The index of the function being called, -1 when none is.
  virtual int functionCode() { return -1; }
};

// What a host passes with every message to a module's entry point.
struct AppPacket {
  Host* host = nullptr;
  void* moduleHandle = nullptr;
};

// Messages of a module's entry point, by code.
namespace AppMsg {
inline constexpr unsigned kNull = 0;
inline constexpr unsigned kInitApp = 1;
inline constexpr unsigned kUnloadApp = 2;
inline constexpr unsigned kLoadDwg = 3;
inline constexpr unsigned kUnloadDwg = 4;
inline constexpr unsigned kInvokeSubr = 5;
inline constexpr unsigned kLast = 15;
}  // namespace AppMsg

// What a function called from the host's scripting language returns when it
// ran normally (RTNORM).
inline constexpr int kRtNorm = static_cast<int>(PromptStatus::Normal);

// Return status of a module's entry point.
inline constexpr int kRetOk = 0;
inline constexpr int kRetError = 3;

// The exported entry points of a module, as a host looks them up.
using EntryPointFunction = int (*)(unsigned message, void* packet);
using ApiVersionFunction = int (*)();
inline constexpr int kApiVersion = 0x130000;

}  // namespace platform
