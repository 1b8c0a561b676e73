// Load and unload of the module, and the static tables of entries that the
// application framework carries by default.
#include "frame/CzarvelApp.h"

#include "frame/BreakCommand.h"
#include "frame/CommandsPalette.h"
#include "frame/DocData.h"
#include "frame/HostCommandWatch.h"
#include "frame/TableCommand.h"
#include "oddata/Port.h"
#include "oddata/Selection.h"
#include "records/AttachOD.h"
#include "search/SelectByOD.h"

namespace zarvel {
namespace {

using platform::AppPacket;
using platform::kRetOk;
namespace CommandFlags = platform::CommandFlags;

void myCommand() {}
void myPickFirst() { (void)impliedSelection(); }
void mySessionCmd() {}
int myLispFunction() { return platform::kRtNorm; }  // and no value

struct StaticCommand {
  const wchar_t* group;
  const wchar_t* globalName;
  const wchar_t* localName;
  int flags;
  platform::CommandFunction handler;
};

const StaticCommand kStaticCommands[] = {
    {L"MyGroup", L"MyCommand", L"MyCommandLocal", CommandFlags::kModal, myCommand},
    {L"MyGroup", L"MyPickFirst", L"MyPickFirstLocal", CommandFlags::kUsePickSet, myPickFirst},
    {L"MyGroup", L"MySessionCmd", L"MySessionCmdLocal", CommandFlags::kSession, mySessionCmd},
};

struct LispEntry {
  const wchar_t* name;
  int (*handler)();
};

const LispEntry kLispEntries[] = {{L"MyLispFunction", myLispFunction}};

// Made with the module, as the static tables are.
DocDataManager theDocDataManager;

platform::Host* hostOf(void* packet) {
  return packet != nullptr ? static_cast<AppPacket*>(packet)->host : nullptr;
}

}  // namespace

DocDataManager& docDataManager() {
  return theDocDataManager;
}

CzarvelApp& theApp() {
  static CzarvelApp app;
  return app;
}

int CzarvelApp::dispatch(unsigned message, void* packet) {
  switch (message) {
    case platform::AppMsg::kInitApp: return onInitApp(packet);
    case platform::AppMsg::kUnloadApp: return onUnloadApp(packet);
    case platform::AppMsg::kLoadDwg: return onLoadDwg(packet);
    case platform::AppMsg::kUnloadDwg: return onUnloadDwg(packet);
    case platform::AppMsg::kInvokeSubr: return onInvokeSubr(packet);
    default: return kRetOk;
  }
}

int CzarvelApp::onInitApp(void* packet) {
  platform::Host* host = hostOf(packet);
  if (host == nullptr) return platform::kRetError;
  moduleInstance_ = static_cast<AppPacket*>(packet)->moduleHandle;
  setPort(host, moduleInstance_);
  if (unlockFlag_) host->dynamicLinker().unlockApplication(packet);
  if (mdiAware_) host->dynamicLinker().registerAppMDIAware(packet);
  for (const StaticCommand& c : kStaticCommands) {
    void* resources = (c.flags & CommandFlags::kSession) != 0 ? nullptr : moduleInstance_;
    // A registration's status is not read at load: a name the stack refuses is
    // one it already has, and the module gives no message of its own there.
    platform::ignoreStatus(host->commandStack().addCommand(c.group, c.globalName, c.localName,
                                                           c.flags, c.handler, resources));
  }
  // Nothing else happens at load: palettes, reactors and tables wait for the
  // first command that needs them.
  for (const CommandEntry& c : commandTable()) {
    // As above: every command is registered, whatever the others' statuses.
    platform::ignoreStatus(host->commandStack().addCommand(kCommandGroup, c.globalName,
                                                           c.globalName, c.flags, c.handler,
                                                           nullptr));
  }
  return kRetOk;
}

int CzarvelApp::onUnloadApp(void* /*packet*/) {
  if (!hasPort()) return kRetOk;
  // The palettes go first, while the commands they would start still stand.
  destroyTablePalette();
  destroyCommandsPalette();
  platform::Host& host = port();
  // Unloading goes on whatever the stack answers: a group or command it no
  // longer holds is already gone.
  platform::ignoreStatus(host.commandStack().removeGroup(kCommandGroup));
  for (const StaticCommand& c : kStaticCommands) {
    platform::ignoreStatus(host.commandStack().removeCommand(c.group, c.globalName));
  }
  // The dialogs' remembered choices last as long as the module stays loaded.
  SelectByOD::forgetRemembered();
  AttachOD::forgetRemembered();
  // A break still waiting for the host's command would be called back into a
  // module that is gone.
  if (detail::breakCommandWatch().active()) detail::breakCommandWatch().stop();
  forgetBreakEntries();
  setPort(nullptr);
  return kRetOk;
}

int CzarvelApp::onLoadDwg(void* /*packet*/) {
  if (!hasPort()) return kRetOk;
  tableDocumentActivated();
  for (int i = 0; i < static_cast<int>(std::size(kLispEntries)); ++i) {
    port().defineFunction(kLispEntries[i].name, i);
  }
  return kRetOk;
}

int CzarvelApp::onUnloadDwg(void* /*packet*/) {
  if (!hasPort()) return kRetOk;
  // The drawing going is its document closing; the drawing stands for it.
  docDataManager().documentToBeDestroyed(&port().drawing());
  for (int i = 0; i < static_cast<int>(std::size(kLispEntries)); ++i) {
    port().undefineFunction(kLispEntries[i].name, i);
  }
  return kRetOk;
}

int CzarvelApp::onInvokeSubr(void* /*packet*/) {
  if (!hasPort()) return kRetOk;
  const int index = port().functionCode();
  if (index >= 0 && index < static_cast<int>(std::size(kLispEntries))) kLispEntries[index].handler();
  return kRetOk;
}

int entryPoint(unsigned message, void* packet) {
  if (message > platform::AppMsg::kLast) return 0;
  return theApp().dispatch(message, packet);
}

int apiVersion() { return platform::kApiVersion; }

}  // namespace zarvel
