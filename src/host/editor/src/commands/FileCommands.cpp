// OPEN, SAVE and SAVEAS.
#include "host/editor/DrawingFiles.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::PromptStatus;

std::filesystem::path askPath(Session& s, const std::wstring& prompt) {
  const platform::StringReply reply = s.prompter().getString(prompt, true);
  if (reply.status != PromptStatus::Normal || reply.text.empty()) return {};
  return std::filesystem::path(platform::toUtf8(reply.text));
}

void openCommand(Session& s) {
  const std::filesystem::path path = askPath(s, L"Enter name of drawing to open: ");
  if (path.empty()) return;
  OpenResult opened = openDocument(path);
  if (!opened.document) {
    s.print(opened.error + L"\n");
    return;
  }
  s.print(opened.warnings);
  s.replaceDocument(std::move(opened.document));
  s.print(L"Opened " + s.document().name + L".\n");
}

void saveTo(Session& s, const std::filesystem::path& path) {
  if (auto error = saveDocument(s.document(), path)) {
    s.print(*error + L"\n");
    return;
  }
  s.print(L"Saved " + platform::fromUtf8(path.string()) + L".\n");
}

void saveCommand(Session& s) {
  if (s.document().path.empty()) {
    const std::filesystem::path path = askPath(s, L"Enter file name: ");
    if (!path.empty()) saveTo(s, path);
    return;
  }
  saveTo(s, s.document().path);
}

void saveAsCommand(Session& s) {
  const std::filesystem::path path = askPath(s, L"Enter file name: ");
  if (!path.empty()) saveTo(s, path);
}

}  // namespace

void registerFileCommands(Session& session) {
  session.addHostCommand({L"OPEN", openCommand, false, L"opens a drawing file"});
  session.addHostCommand({L"SAVE", saveCommand, false, L"saves the drawing to its file"});
  session.addHostCommand({L"SAVEAS", saveAsCommand, false, L"saves the drawing to another file"});
}

}  // namespace host
