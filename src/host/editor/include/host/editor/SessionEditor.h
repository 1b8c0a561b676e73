// The editor as a module sees it: selections and the pick-first set, prompts,
// printing, system variables, host commands started with arguments, and the
// reactors told of what happens.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/editor/CommandOutcome.h"
#include "platform/Editor.h"

namespace host {

class Session;

class SessionEditor : public platform::Editor {
 public:
  explicit SessionEditor(Session& session) : session_(session) {}

  std::vector<platform::ObjectId> impliedSelection() override;
  platform::SelectionReply selectObjects() override;
  // A selection made by a command: kept when the command ends, and the one
  // "P" brings back.
  void setPickFirst(const std::vector<platform::ObjectId>& ids) override;
  platform::StringReply getString(const std::wstring& prompt, bool allowSpaces) override;
  platform::EntityReply getEntity(const std::wstring& prompt) override;
  platform::PointReply getPoint(const std::wstring& prompt) override;
  platform::IntReply getInt(const std::wstring& prompt) override;
  void print(const std::wstring& text) override;
  std::optional<platform::SysVarValue> getVar(const std::wstring& name) const override;
  platform::Status setVar(const std::wstring& name, const platform::SysVarValue& value) override;
  platform::PromptStatus command(const std::vector<platform::CommandArgument>& arguments) override;
  // "CANCELCMD" cancels the running command's next prompt, as Esc would; any
  // other command is typed ahead of the input, to run when the running one is over.
  void postCommand(const std::wstring& command) override;
  void addReactor(platform::EditorReactor* reactor) override;
  void removeReactor(platform::EditorReactor* reactor) override;

  // Replaces the pick-first set and tells the reactors if it changed.
  void changePickFirst(std::vector<platform::ObjectId> ids);
  // Forgets whether the command before set the pick-first set.
  void startCommand() { pickFirstSetByCommand_ = false; }
  // Whether the command running set the pick-first set itself.
  bool pickFirstSetByCommand() const { return pickFirstSetByCommand_; }
  // Tells the reactors how a command came out.
  void tellOutcome(const std::wstring& name, CommandOutcome outcome);

 private:
  template <typename Event>
  void notify(Event event);

  Session& session_;
  std::vector<platform::EditorReactor*> reactors_;
  bool pickFirstSetByCommand_ = false;
};

}  // namespace host
