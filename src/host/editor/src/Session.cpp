// The session: command dispatch with one undo step per command, the
// pick-first rules, and the plug-in boundary where a command's exception
// stops.
#include "host/editor/Session.h"

#include <algorithm>
#include <exception>

#include "host/db/UndoStep.h"
#include "host/editor/DrawingFiles.h"
#include "platform/Text.h"

namespace host {

using platform::PromptStatus;

Session::Session(Console& console, std::unique_ptr<Document> document)
    : prompter_(console),
      ui_(prompter_),
      document_(document ? std::move(document) : newDocument()) {
  connectDocument();
}

void Session::connectDocument() {
  document_->attached.connect(&aliases_, [this](const std::wstring& text) { print(text); });
}

Session::~Session() { unloadModule(); }

std::optional<std::wstring> Session::loadModule(const std::filesystem::path& path) {
  if (auto error = plugin_.load(path, host_)) return error;
  if (plugin_.send(platform::AppMsg::kInitApp) != platform::kRetOk) {
    plugin_.unload();
    return L"The module " + path.wstring() + L" refused to load.";
  }
  plugin_.send(platform::AppMsg::kLoadDwg);
  return std::nullopt;
}

void Session::replaceDocument(std::unique_ptr<Document> document) {
  if (plugin_.isLoaded()) plugin_.send(platform::AppMsg::kUnloadDwg);
  if (commandDepth_ > 0) {
    retired_.push_back(std::move(document_));
  }
  document_ = std::move(document);
  connectDocument();
  if (plugin_.isLoaded()) plugin_.send(platform::AppMsg::kLoadDwg);
}

void Session::unloadModule() {
  if (!plugin_.isLoaded()) return;
  plugin_.send(platform::AppMsg::kUnloadDwg);
  plugin_.unload();
}

void Session::addHostCommand(HostCommand command) {
  std::wstring key = command.name;
  hostCommands_[key] = std::move(command);
}

std::vector<std::wstring> Session::commandNames() const {
  std::vector<std::wstring> names = moduleCommands_.globalNames();
  for (const auto& [name, command] : hostCommands_) names.push_back(name);
  std::sort(names.begin(), names.end());
  return names;
}

void Session::run() {
  while (!quitting_) {
    std::optional<platform::StringReply> line = prompter_.getCommand(L"Command: ", commandNames());
    if (!line) break;
    if (line->status != PromptStatus::Normal || line->text.empty()) continue;
    if (!runCommand(line->text)) {
      print(L"Unknown command \"" + commandKey(line->text) +
            L"\". Type HELP for a list of commands.\n");
    }
    if (prompter_.inputEnded()) break;
  }
}

CommandOutcome Session::runUndoable(const std::wstring& name, CommandRules rules,
                                    const std::function<void()>& body) {
  const bool outermost = commandDepth_ == 0;
  if (outermost) editor_.startCommand();
  const CommandOutcome outcome = runInStep(name, rules.recordsUndo, body);
  if (outermost) endOutermostCommand(rules.keepsPickFirst);
  return outcome;
}

CommandOutcome Session::runInStep(const std::wstring& name, bool recordsUndo,
                                  const std::function<void()>& body) {
  // A command run by another one marks the step it runs in, so that failing
  // it undoes its part alone.
  std::optional<UndoStep> step;
  if (recordsUndo) step.emplace(db(), name);
  const int cancelsBefore = prompter_.cancels();
  const bool outerFailed = failed_;
  failed_ = false;
  ++commandDepth_;
  const bool completed = runCaught(name, body);
  --commandDepth_;
  if (!completed) {
    if (step) step->rollBack();
    failed_ = true;
  }
  // Esc at any of its prompts cancels a command, as it does on the host.
  const CommandOutcome outcome = failed_                                  ? CommandOutcome::Failed
                                 : prompter_.cancels() != cancelsBefore ? CommandOutcome::Cancelled
                                                                        : CommandOutcome::Ended;
  failed_ = outerFailed;
  // Told while the step is open: what a reactor changes belongs to the command.
  editor_.tellOutcome(name, outcome);
  return outcome;
}

bool Session::runCaught(const std::wstring& name, const std::function<void()>& body) {
  std::wstring what;
  try {
    body();
    return true;
  } catch (const std::exception& error) {
    what = platform::fromUtf8(error.what());
  } catch (...) {
    what = L"an exception of unknown type";
  }
  print(L"Error: " + name + L" failed: " + what + L"\n");
  return false;
}

void Session::endOutermostCommand(bool keepsPickFirst) {
  // What was selected before a command is used up by it, unless the command
  // chose a new selection itself. A module's command that redraws leaves it
  // for the next one, as the module's searches and its table editor expect.
  if (!keepsPickFirst && !editor_.pickFirstSetByCommand()) editor_.changePickFirst({});
  documents_.endCommand();
  retired_.clear();
}

bool Session::runCommand(const std::wstring& text) { return runCommandFor(text).has_value(); }

std::optional<CommandOutcome> Session::runCommandFor(const std::wstring& text) {
  const std::wstring name = commandKey(text);
  if (auto host = hostCommands_.find(name); host != hostCommands_.end()) {
    const HostCommand command = host->second;
    return runUndoable(name, {command.recordsUndo, false}, [&] { command.run(*this); });
  }
  if (const ModuleCommand* module = moduleCommands_.find(name)) {
    // Copied: the handler may unregister the command while it runs.
    const ModuleCommand command = *module;
    const bool redraws = (command.flags & platform::CommandFlags::kRedraw) != 0;
    return runUndoable(command.globalName, {true, redraws}, [&] { command.handler(); });
  }
  return std::nullopt;
}

std::optional<std::vector<ObjectId>> Session::selectForCommand(bool usePickFirst) {
  if (usePickFirst) {
    std::vector<ObjectId> ids = editor_.impliedSelection();
    if (!ids.empty()) return ids;
  }
  platform::SelectionReply reply = editor_.selectObjects();
  if (reply.status == PromptStatus::Cancel) return std::nullopt;
  return std::move(reply.ids);
}

}  // namespace host
