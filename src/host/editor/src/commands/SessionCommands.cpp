// UNDO, MREDO, QUIT, HELP, the spaces, and system variables.
#include <algorithm>

#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"

namespace host {
namespace {

using platform::PromptStatus;

std::wstring joined(const std::vector<std::wstring>& names) {
  std::wstring text;
  for (const auto& name : names) text += (text.empty() ? L"" : L" ") + name;
  return text;
}

void undoCommand(Session& s) {
  Answer<int> count;
  for (;;) {
    count = s.prompter().getInt(L"Enter the number of operations to undo <1>: ", 1);
    if (!count.isNormal()) return;
    if (count.value > 0) break;
    s.print(L"Requires a positive integer.\n");
  }
  const std::vector<std::wstring> names = s.db().undoSteps(count.value);
  if (!names.empty()) s.print(joined(names) + L"\n");
  if (static_cast<int>(names.size()) < count.value) s.print(L"Everything has been undone\n");
}

void redoCommand(Session& s) {
  Answer<int> count;
  for (;;) {
    count = s.prompter().getInt(L"Enter number of actions or [All/Last] <1>: ", 1,
                                {L"All", L"Last"});
    if (count.status == PromptStatus::Keyword) {
      count.value = count.keyword == L"All" ? static_cast<int>(s.db().undo().redoableCount()) : 1;
      break;
    }
    if (!count.isNormal()) return;
    if (count.value > 0) break;
    s.print(L"Requires a positive integer.\n");
  }
  const std::vector<std::wstring> names = s.db().redoSteps(count.value);
  s.print(names.empty() ? L"Nothing to redo\n" : joined(names) + L"\n");
}

void helpCommand(Session& s) {
  s.print(L"Host commands:\n");
  for (const auto& [name, command] : s.hostCommands()) {
    s.print(L"  " + name + std::wstring(std::max<std::size_t>(1, 12 - name.size()), L' ') +
            command.help + L"\n");
  }
  std::wstring module;
  for (const std::wstring& name : s.commandNames()) {
    if (s.hostCommands().count(name) == 0) module += L"  " + name + L"\n";
  }
  if (!module.empty()) s.print(L"Module commands:\n" + module);
}

void setSpace(Session& s, bool model) {
  Database& db = s.db();
  db.modifyHeader().currentSpace = model ? db.modelSpace() : db.paperSpace();
}

void luprecCommand(Session& s) {
  const int current = s.db().header().luprec;
  for (;;) {
    const Answer<int> value = s.prompter().getInt(
        L"Enter new value for LUPREC <" + std::to_wstring(current) + L">: ", current);
    if (!value.isNormal()) return;
    if (value.value >= 0 && value.value <= 8) {
      s.db().modifyHeader().luprec = static_cast<short>(value.value);
      return;
    }
    s.print(L"Requires an integer between 0 and 8.\n");
  }
}

}  // namespace

void registerSessionCommands(Session& session) {
  session.addHostCommand({L"UNDO", undoCommand, false, L"undoes whole commands"});
  session.addHostCommand({L"MREDO", redoCommand, false, L"redoes what UNDO undid"});
  session.addHostCommand({L"QUIT", [](Session& s) { s.quit(); }, false, L"ends the session"});
  session.addHostCommand({L"HELP", helpCommand, false, L"lists the commands"});
  session.addHostCommand(
      {L"MSPACE", [](Session& s) { setSpace(s, true); }, true, L"draws and selects in model space"});
  session.addHostCommand(
      {L"PSPACE", [](Session& s) { setSpace(s, false); }, true, L"draws and selects in paper space"});
  session.addHostCommand({L"LUPREC", luprecCommand, true, L"sets the decimals of lengths"});
}

void registerHostCommands(Session& session) {
  registerLayerCommands(session);
  registerObjectDataCommands(session);
  registerDrawCommands(session);
  registerEditCommands(session);
  registerListCommand(session);
  registerSessionCommands(session);
  registerFileCommands(session);
  registerBlockCommands(session);
  registerModifyCommands(session);
  registerBreakCommand(session);
  registerPaletteCommand(session);
  registerAttachCommands(session);
}

}  // namespace host
