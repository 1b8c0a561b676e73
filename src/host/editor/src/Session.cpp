// The session: command dispatch with one undo step per command, the pick-first
// rules, and the port roles a loaded module calls.
#include "host/editor/Session.h"

#include <algorithm>

#include "host/db/PortDrawing.h"
#include "host/editor/AnswerParsing.h"
#include "host/editor/DrawingFiles.h"
#include "host/editor/SelectionResolver.h"
#include "platform/Text.h"

namespace host {

using platform::PromptStatus;

Session::Session(Console& console, std::unique_ptr<Document> document)
    : prompter_(console),
      ui_(prompter_),
      document_(document ? std::move(document) : newDocument()) {}

Session::~Session() { unloadModule(); }

std::optional<std::wstring> Session::loadModule(const std::filesystem::path& path) {
  if (auto error = plugin_.load(path, *this)) return error;
  if (plugin_.send(platform::AppMsg::kInitApp) != platform::kRetOk) {
    plugin_.unload();
    return L"The module " + path.wstring() + L" refused to load.";
  }
  plugin_.send(platform::AppMsg::kLoadDwg);
  return std::nullopt;
}

void Session::replaceDocument(std::unique_ptr<Document> document) {
  if (plugin_.isLoaded()) plugin_.send(platform::AppMsg::kUnloadDwg);
  document_ = std::move(document);
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
  std::vector<std::wstring> names;
  for (const auto& [name, command] : hostCommands_) names.push_back(name);
  for (const auto& [name, command] : moduleCommands_) names.push_back(command.globalName);
  std::sort(names.begin(), names.end());
  return names;
}

std::wstring Session::normalizeCommand(const std::wstring& text) {
  std::wstring_view name = trimBlanks(text);
  while (!name.empty() && (name.front() == L'_' || name.front() == L'.')) name.remove_prefix(1);
  std::wstring upper(name);
  for (wchar_t& c : upper) {
    if (c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
  }
  return upper;
}

void Session::run() {
  while (!quitting_) {
    std::optional<platform::StringReply> line = prompter_.getCommand(L"Command: ", commandNames());
    if (!line) break;
    if (line->status != PromptStatus::Normal || line->text.empty()) continue;
    if (!runCommand(line->text)) {
      print(L"Unknown command \"" + normalizeCommand(line->text) +
            L"\". Type HELP for a list of commands.\n");
    }
    if (prompter_.inputEnded()) break;
  }
}

CommandOutcome Session::runUndoable(const std::wstring& name, bool recordsUndo,
                                   const std::function<void()>& body) {
  Database& database = db();
  const bool outermost = commandDepth_ == 0;
  const bool opensStep = outermost && recordsUndo;
  if (outermost) pickFirstSetByCommand_ = false;
  if (opensStep) database.undo().begin(name);
  const int cancelsBefore = prompter_.cancels();
  const bool outerFailed = failed_;
  failed_ = false;
  ++commandDepth_;
  body();
  --commandDepth_;
  // Esc at any of its prompts cancels a command, as it does on the host.
  const CommandOutcome outcome = failed_                                  ? CommandOutcome::Failed
                                 : prompter_.cancels() != cancelsBefore ? CommandOutcome::Cancelled
                                                                        : CommandOutcome::Ended;
  failed_ = outerFailed;
  notify([&](platform::EditorReactor& r) {
    switch (outcome) {
      case CommandOutcome::Ended: r.commandEnded(name); break;
      case CommandOutcome::Cancelled: r.commandCancelled(name); break;
      case CommandOutcome::Failed: r.commandFailed(name); break;
    }
  });
  if (opensStep) database.undo().end();
  if (outermost) {
    // What was selected before a command is used up by it, unless the command
    // chose a new selection itself.
    if (!pickFirstSetByCommand_) changePickFirst({});
    resourceStack_.clear();
    document_->lockCount = 0;
  }
  return outcome;
}

bool Session::runCommand(const std::wstring& text) { return runCommandFor(text).has_value(); }

std::optional<CommandOutcome> Session::runCommandFor(const std::wstring& text) {
  const std::wstring name = normalizeCommand(text);
  if (auto host = hostCommands_.find(name); host != hostCommands_.end()) {
    const HostCommand command = host->second;
    return runUndoable(name, command.recordsUndo, [&] { command.run(*this); });
  }
  if (auto module = moduleCommands_.find(name); module != moduleCommands_.end()) {
    const platform::CommandFunction handler = module->second.handler;
    return runUndoable(module->second.globalName, true, [&] { handler(); });
  }
  return std::nullopt;
}

platform::PromptStatus Session::command(const std::vector<platform::CommandArgument>& arguments) {
  if (arguments.empty() || !std::holds_alternative<std::wstring>(arguments.front())) {
    return PromptStatus::Error;
  }
  std::vector<std::wstring> answers;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const platform::CommandArgument& a = arguments[i];
    if (const auto* text = std::get_if<std::wstring>(&a)) {
      answers.push_back(*text);
    } else if (const auto* id = std::get_if<ObjectId>(&a)) {
      const DbObject* o = db().object(*id);
      answers.push_back(L"#" + (o != nullptr ? handleToText(o->handle) : std::wstring(L"0")));
    } else {
      const Point3d& p = std::get<Point3d>(a);
      answers.push_back(platform::format(L"%.17g,%.17g,%.17g", p.x, p.y, p.z));
    }
  }
  prompter_.queueAnswers(answers);
  const std::optional<CommandOutcome> outcome = runCommandFor(std::get<std::wstring>(arguments[0]));
  // Answers the command did not ask for are not left for the next one.
  prompter_.clearQueuedAnswers();
  if (!outcome) return PromptStatus::Error;
  switch (*outcome) {
    case CommandOutcome::Ended: return PromptStatus::Normal;
    case CommandOutcome::Cancelled: return PromptStatus::Cancel;
    case CommandOutcome::Failed: break;
  }
  return PromptStatus::Error;
}

std::optional<std::vector<ObjectId>> Session::selectForCommand(bool usePickFirst) {
  if (usePickFirst) {
    std::vector<ObjectId> ids = impliedSelection();
    if (!ids.empty()) return ids;
  }
  platform::SelectionReply reply = selectObjects();
  if (reply.status == PromptStatus::Cancel) return std::nullopt;
  return std::move(reply.ids);
}

// --- Editor -----------------------------------------------------------------

std::vector<ObjectId> Session::impliedSelection() {
  std::vector<ObjectId> ids;
  for (ObjectId id : document_->pickFirst) {
    if (db().entity(id) != nullptr) ids.push_back(id);
  }
  return ids;
}

platform::SelectionReply Session::selectObjects() {
  std::vector<ObjectId> chosen;
  bool firstLine = true;
  for (;;) {
    Answer<std::vector<SelectionItem>> line = prompter_.getSelection(L"Select objects: ");
    if (line.status == PromptStatus::Cancel) {
      // Esc also drops whatever was highlighted.
      changePickFirst({});
      return {PromptStatus::Cancel, {}};
    }
    if (line.status != PromptStatus::Normal) break;
    int found = 0;
    int removed = 0;
    bool adding = false;
    bool removing = false;
    for (const SelectionItem& item : line.value) {
      const std::vector<ObjectId> ids = resolveSelectionItem(*document_, item);
      if (item.add) {
        adding = true;
        for (ObjectId id : ids) {
          ++found;
          if (std::find(chosen.begin(), chosen.end(), id) == chosen.end()) chosen.push_back(id);
        }
      } else {
        removing = true;
        for (ObjectId id : ids) {
          auto it = std::find(chosen.begin(), chosen.end(), id);
          if (it != chosen.end()) {
            chosen.erase(it);
            ++removed;
          }
        }
      }
    }
    std::wstring report;
    if (adding) report = std::to_wstring(found) + L" found";
    if (removing) report += (report.empty() ? L"" : L", ") + std::to_wstring(removed) + L" removed";
    if (!firstLine) report += L", " + std::to_wstring(chosen.size()) + L" total";
    print(report + L"\n");
    firstLine = false;
  }
  if (!chosen.empty()) document_->previous = chosen;
  return {PromptStatus::Normal, std::move(chosen)};
}

template <typename Event>
void Session::notify(Event event) {
  // A reactor may remove itself while it is told, so the list is copied.
  const std::vector<platform::EditorReactor*> reactors = reactors_;
  for (platform::EditorReactor* r : reactors) {
    if (std::find(reactors_.begin(), reactors_.end(), r) != reactors_.end()) event(*r);
  }
}

void Session::addReactor(platform::EditorReactor* reactor) {
  if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) {
    reactors_.push_back(reactor);
  }
}

void Session::removeReactor(platform::EditorReactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}

void Session::changePickFirst(std::vector<ObjectId> ids) {
  if (ids == document_->pickFirst) return;
  document_->pickFirst = std::move(ids);
  notify([](platform::EditorReactor& r) { r.pickfirstModified(); });
}

void Session::setPickFirst(const std::vector<ObjectId>& ids) {
  changePickFirst(ids);
  // A selection made by a command is the one "P" brings back.
  if (!ids.empty()) document_->previous = ids;
  pickFirstSetByCommand_ = true;
}

platform::StringReply Session::getString(const std::wstring& prompt, bool allowSpaces) {
  return prompter_.getString(prompt, allowSpaces);
}

platform::EntityReply Session::getEntity(const std::wstring& prompt) {
  platform::StringReply reply = prompter_.ask(prompt);
  if (reply.status != PromptStatus::Normal) return {reply.status, {}, {}};
  const std::wstring_view text = trimBlanks(reply.text);
  ObjectId id;
  platform::Point3d at;
  if (auto point = parsePoint(text)) {
    at = *point;
    id = pickEntityAt(db(), at);
  } else {
    // A handle, with or without its "#".
    const std::wstring handleText =
        !text.empty() && text.front() == L'#' ? std::wstring(text) : L"#" + std::wstring(text);
    if (auto handle = parseHandle(handleText)) {
      id = db().idOfHandle(*handle);
      if (db().entity(id) == nullptr) id = ObjectId();
    }
  }
  if (id.isNull()) return {PromptStatus::Error, {}, at, false};
  return {PromptStatus::Normal, id, at, parsePoint(text).has_value()};
}

platform::PointReply Session::getPoint(const std::wstring& prompt) {
  Answer<platform::Point3d> answer = prompter_.getPoint(prompt);
  return {answer.status, answer.value};
}

platform::IntReply Session::getInt(const std::wstring& prompt) {
  Answer<int> answer = prompter_.getInt(prompt);
  return {answer.status, answer.value};
}

std::optional<platform::SysVarValue> Session::getVar(const std::wstring& name) const {
  if (platform::equalsIgnoreCase(name, L"LUPREC")) {
    return platform::SysVarValue(document_->db.header().luprec);
  }
  return std::nullopt;
}

platform::Status Session::setVar(const std::wstring& name, const platform::SysVarValue& value) {
  if (platform::equalsIgnoreCase(name, L"LUPREC") && std::holds_alternative<short>(value)) {
    const short v = std::get<short>(value);
    if (v < 0 || v > 8) return platform::Status::Failed;
    db().modifyHeader().luprec = v;
    return platform::Status::Ok;
  }
  return platform::Status::Failed;
}

// --- Documents ----------------------------------------------------------------

void Session::popResourceHandle() {
  if (!resourceStack_.empty()) resourceStack_.pop_back();
}

platform::Status Session::lockDocument(platform::LockMode) {
  ++document_->lockCount;
  return platform::Status::Ok;
}

platform::Status Session::unlockDocument() {
  if (document_->lockCount == 0) return platform::Status::Failed;
  --document_->lockCount;
  return platform::Status::Ok;
}

// --- Command stack --------------------------------------------------------------

platform::Status Session::addCommand(const std::wstring& group, const std::wstring& globalName,
                                     const std::wstring&, int flags,
                                     platform::CommandFunction handler, void*) {
  const std::wstring key = normalizeCommand(globalName);
  if (key.empty() || handler == nullptr || moduleCommands_.count(key) > 0) {
    return platform::Status::Failed;
  }
  moduleCommands_[key] = ModuleCommand{group, globalName, flags, handler};
  return platform::Status::Ok;
}

platform::Status Session::removeCommand(const std::wstring& group, const std::wstring& globalName) {
  auto it = moduleCommands_.find(normalizeCommand(globalName));
  if (it == moduleCommands_.end() || it->second.group != group) return platform::Status::Failed;
  moduleCommands_.erase(it);
  return platform::Status::Ok;
}

platform::Status Session::removeGroup(const std::wstring& group) {
  bool any = false;
  for (auto it = moduleCommands_.begin(); it != moduleCommands_.end();) {
    if (it->second.group == group) {
      it = moduleCommands_.erase(it);
      any = true;
    } else {
      ++it;
    }
  }
  return any ? platform::Status::Ok : platform::Status::Failed;
}

}  // namespace host
