// -ALIASES and -ATTACHED: the session's path aliases, and the drawings
// attached to the project, whose table definitions the project may borrow.
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"

namespace host {
namespace {

using platform::PromptStatus;
using platform::Status;

// The answer to a prompt for a name or path; nothing when the user cancelled
// or gave nothing.
std::optional<std::wstring> askText(Session& s, const std::wstring& prompt) {
  const platform::StringReply reply = s.prompter().getString(prompt, true);
  if (reply.status != PromptStatus::Normal || reply.text.empty()) return std::nullopt;
  return reply.text;
}

void listAliases(Session& s) {
  const auto& aliases = s.pathAliases().entries();
  if (aliases.empty()) s.print(L"No path aliases.\n");
  for (const auto& [name, path] : aliases) s.print(L"  " + name + L" = \"" + path + L"\"\n");
}

void aliasesCommand(Session& s) {
  PathAliasTable& aliases = s.pathAliases();
  for (;;) {
    const platform::StringReply option = s.prompter().getKeyword(
        L"Enter an option [Add/Delete/List]: ", {L"Add", L"Delete", L"List"});
    if (option.status != PromptStatus::Normal) return;
    if (option.text == L"List") {
      listAliases(s);
      continue;
    }
    const std::optional<std::wstring> name = askText(s, L"Alias name: ");
    if (!name) continue;
    if (option.text == L"Delete") {
      if (aliases.deleteAlias(*name) != Status::Ok) s.print(L"No path alias \"" + *name + L"\".\n");
      continue;
    }
    const platform::StringReply path = s.prompter().getString(L"Path the alias stands for: ", true);
    if (path.status != PromptStatus::Normal) continue;
    if (aliases.addAlias(*name, path.text) != Status::Ok) {
      s.print(L"Invalid alias name \"" + *name + L"\": it is empty or holds a colon.\n");
    }
  }
}

void listAttached(Session& s) {
  const auto& drawings = s.document().attached.drawings();
  if (drawings.empty()) s.print(L"No attached drawings.\n");
  for (const auto& d : drawings) {
    s.print(L"  " + d->aliasPath() + (d->active() ? L" (active)\n" : L"\n"));
  }
}

void attachOption(Session& s, const std::wstring& option, const std::wstring& aliasPath) {
  AttachedDrawingSet& set = s.document().attached;
  if (option == L"Attach") {
    // The set says why a drawing won't attach.
    platform::AttachedDrawing* drawing = set.attachDrawing(aliasPath);
    if (drawing == nullptr) return;
    platform::ignoreStatus(drawing->activate());  // always succeeds on a fresh attachment
    platform::ignoreStatus(drawing->prepare());   // and so does this, after activate
    s.print(L"Attached " + aliasPath + L": " +
            std::to_wstring(drawing->tableNames(platform::kAllTableKinds).size()) +
            L" table(s) offered.\n");
    return;
  }
  AttachedSourceDrawing* drawing = set.find(aliasPath);
  if (drawing == nullptr) {
    s.print(L"No attached drawing \"" + aliasPath + L"\".\n");
  } else if (option == L"Tables") {
    for (const std::wstring& name : drawing->tableNames(platform::kAllTableKinds)) {
      s.print(L"  " + name + L"\n");
    }
  } else {
    drawing->closeDown();
    platform::ignoreStatus(set.detachDrawing(aliasPath));  // found just above
    s.print(L"Detached " + aliasPath + L".\n");
  }
}

void attachedCommand(Session& s) {
  for (;;) {
    const platform::StringReply option =
        s.prompter().getKeyword(L"Enter an option [Attach/Tables/Detach/List]: ",
                                {L"Attach", L"Tables", L"Detach", L"List"});
    if (option.status != PromptStatus::Normal) return;
    if (option.text == L"List") {
      listAttached(s);
      continue;
    }
    const std::optional<std::wstring> aliasPath = askText(s, L"Alias path (ALIAS:file): ");
    if (aliasPath) attachOption(s, option.text, *aliasPath);
  }
}

}  // namespace

void registerAttachCommands(Session& session) {
  session.addHostCommand(
      {L"-ALIASES", aliasesCommand, false, L"adds, deletes and lists the session's path aliases"});
  session.addHostCommand({L"-ATTACHED", attachedCommand, false,
                          L"attaches drawings whose table definitions the drawing may use"});
}

}  // namespace host
