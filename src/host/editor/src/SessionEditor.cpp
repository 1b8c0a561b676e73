// The editor's prompts over the session's prompter, the pick-first set of the
// open document, and the reactors' events.
#include "host/editor/SessionEditor.h"

#include <algorithm>

#include "host/db/PortDrawing.h"
#include "host/editor/AnswerParsing.h"
#include "host/editor/SelectionPrompt.h"
#include "host/editor/SelectionResolver.h"
#include "host/editor/Session.h"
#include "platform/Text.h"

namespace host {

using platform::PromptStatus;

std::vector<ObjectId> SessionEditor::impliedSelection() {
  std::vector<ObjectId> ids;
  for (ObjectId id : session_.document().pickFirst) {
    if (session_.db().entity(id) != nullptr) ids.push_back(id);
  }
  return ids;
}

platform::SelectionReply SessionEditor::selectObjects() {
  std::optional<std::vector<ObjectId>> chosen =
      promptForObjects(session_.prompter(), session_.document());
  if (!chosen) {
    // Esc also drops whatever was highlighted.
    changePickFirst({});
    return {PromptStatus::Cancel, {}};
  }
  if (!chosen->empty()) session_.document().previous = *chosen;
  return {PromptStatus::Normal, std::move(*chosen)};
}

void SessionEditor::setPickFirst(const std::vector<ObjectId>& ids) {
  // A selection set holds each entity once, at its first place, and nothing
  // that is no object of the drawing. Searches set a million at a time, so
  // what was seen is marked by id, not hashed.
  std::vector<bool> seen(session_.db().idCount() + 1, false);
  std::vector<ObjectId> set;
  set.reserve(ids.size());
  for (ObjectId id : ids) {
    if (id.isNull() || id.value() >= seen.size() || seen[id.value()]) continue;
    seen[id.value()] = true;
    set.push_back(id);
  }
  if (!set.empty()) session_.document().previous = set;
  changePickFirst(std::move(set));
  pickFirstSetByCommand_ = true;
}

void SessionEditor::changePickFirst(std::vector<ObjectId> ids) {
  std::vector<ObjectId>& pickFirst = session_.document().pickFirst;
  if (ids == pickFirst) return;
  pickFirst = std::move(ids);
  notify([](platform::EditorReactor& r) { r.pickfirstModified(); });
}

platform::StringReply SessionEditor::getString(const std::wstring& prompt, bool allowSpaces) {
  return session_.prompter().getString(prompt, allowSpaces);
}

platform::EntityReply SessionEditor::getEntity(const std::wstring& prompt) {
  // A caller that gives no words of its own gets the host's.
  platform::StringReply reply =
      session_.prompter().ask(prompt.empty() ? L"Select object: " : prompt);
  if (reply.status != PromptStatus::Normal) return {reply.status, {}, {}};
  const Database& db = session_.db();
  const std::wstring_view text = trimBlanks(reply.text);
  ObjectId id;
  platform::Point3d at;
  const std::optional<platform::Point3d> point = parsePoint(text);
  if (point) {
    at = *point;
    id = pickEntityAt(db, at);
  } else {
    // A handle, with or without its "#".
    const std::wstring handleText =
        !text.empty() && text.front() == L'#' ? std::wstring(text) : L"#" + std::wstring(text);
    if (auto handle = parseHandle(handleText)) {
      id = db.idOfHandle(*handle);
      if (db.entity(id) == nullptr) id = ObjectId();
    }
  }
  if (id.isNull()) return {PromptStatus::Error, {}, at, false};
  return {PromptStatus::Normal, id, at, point.has_value()};
}

platform::PointReply SessionEditor::getPoint(const std::wstring& prompt) {
  // A caller that gives no words of its own gets the host's.
  Answer<platform::Point3d> answer =
      session_.prompter().getPoint(prompt.empty() ? L"Specify point: " : prompt);
  return {answer.status, answer.value};
}

platform::IntReply SessionEditor::getInt(const std::wstring& prompt) {
  Answer<int> answer = session_.prompter().getInt(prompt);
  return {answer.status, answer.value};
}

void SessionEditor::print(const std::wstring& text) {
  session_.print(text);
}

std::optional<platform::SysVarValue> SessionEditor::getVar(const std::wstring& name) const {
  if (platform::equalsIgnoreCase(name, L"LUPREC")) {
    return platform::SysVarValue(session_.db().header().luprec);
  }
  return std::nullopt;
}

platform::Status SessionEditor::setVar(const std::wstring& name,
                                       const platform::SysVarValue& value) {
  if (platform::equalsIgnoreCase(name, L"LUPREC") && std::holds_alternative<short>(value)) {
    const short v = std::get<short>(value);
    if (v < 0 || v > 8) return platform::Status::Failed;
    session_.db().modifyHeader().luprec = v;
    return platform::Status::Ok;
  }
  return platform::Status::Failed;
}

platform::PromptStatus SessionEditor::command(
    const std::vector<platform::CommandArgument>& arguments) {
  if (arguments.empty() || !std::holds_alternative<std::wstring>(arguments.front())) {
    return PromptStatus::Error;
  }
  std::vector<std::wstring> answers;
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    const platform::CommandArgument& a = arguments[i];
    if (const auto* text = std::get_if<std::wstring>(&a)) {
      answers.push_back(*text);
    } else if (const auto* id = std::get_if<ObjectId>(&a)) {
      const DbObject* o = session_.db().object(*id);
      answers.push_back(L"#" + (o != nullptr ? handleToText(o->handle) : std::wstring(L"0")));
    } else {
      const Point3d& p = std::get<Point3d>(a);
      answers.push_back(platform::format(L"%.17g,%.17g,%.17g", p.x, p.y, p.z));
    }
  }
  Prompter& prompter = session_.prompter();
  prompter.queueAnswers(answers);
  const std::optional<CommandOutcome> outcome =
      session_.runCommandFor(std::get<std::wstring>(arguments[0]));
  // Answers the command did not ask for are not left for the next one.
  prompter.clearQueuedAnswers();
  if (!outcome) return PromptStatus::Error;
  switch (*outcome) {
    case CommandOutcome::Ended:
      return PromptStatus::Normal;
    case CommandOutcome::Cancelled:
      return PromptStatus::Cancel;
    case CommandOutcome::Failed:
      break;
  }
  return PromptStatus::Error;
}

template <typename Event>
void SessionEditor::notify(Event event) {
  // A reactor may remove itself while it is told, so the list is copied.
  const std::vector<platform::EditorReactor*> reactors = reactors_;
  for (platform::EditorReactor* r : reactors) {
    if (std::find(reactors_.begin(), reactors_.end(), r) != reactors_.end()) event(*r);
  }
}

void SessionEditor::postCommand(const std::wstring& command) {
  if (platform::equalsIgnoreCase(command, L"CANCELCMD")) {
    session_.prompter().postCancel();
  } else {
    session_.prompter().typeAhead(command + L"\n");
  }
}

void SessionEditor::addReactor(platform::EditorReactor* reactor) {
  if (std::find(reactors_.begin(), reactors_.end(), reactor) == reactors_.end()) {
    reactors_.push_back(reactor);
  }
}

void SessionEditor::removeReactor(platform::EditorReactor* reactor) {
  reactors_.erase(std::remove(reactors_.begin(), reactors_.end(), reactor), reactors_.end());
}

void SessionEditor::tellOutcome(const std::wstring& name, CommandOutcome outcome) {
  notify([&](platform::EditorReactor& r) {
    switch (outcome) {
      case CommandOutcome::Ended:
        r.commandEnded(name);
        break;
      case CommandOutcome::Cancelled:
        r.commandCancelled(name);
        break;
      case CommandOutcome::Failed:
        r.commandFailed(name);
        break;
    }
  });
}

}  // namespace host
