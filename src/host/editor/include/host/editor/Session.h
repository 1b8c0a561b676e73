// A session of our host: the open document, the command line, the commands
// (the host's own and those a loaded module registers), and the port through
// which a module reaches all of it.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/editor/Console.h"
#include "host/editor/Document.h"
#include "host/editor/PluginLoader.h"
#include "host/editor/PromptUi.h"
#include "host/editor/Prompter.h"
#include "platform/Host.h"

namespace host {

class Session;

enum class CommandOutcome { Ended, Cancelled, Failed };

struct HostCommand {
  std::wstring name;
  std::function<void(Session&)> run;
  // Commands that only move through the undo history make no step of their own.
  bool recordsUndo = true;
  std::wstring help;
};

class Session : public platform::Host,
                public platform::Editor,
                public platform::Documents,
                public platform::CommandStack,
                public platform::DynamicLinker {
 public:
  // Starts with the document, or with a new drawing.
  explicit Session(Console& console, std::unique_ptr<Document> document = nullptr);
  ~Session() override;
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Loads a module and tells it that a drawing is open; an error text on failure.
  std::optional<std::wstring> loadModule(const std::filesystem::path& path);
  void unloadModule();

  // Reads and runs commands until QUIT or the end of the input.
  void run();
  // Runs one command by name; false if there is no such command.
  bool runCommand(const std::wstring& name);
  // The same, telling how the command came out; nothing if there is no such command.
  std::optional<CommandOutcome> runCommandFor(const std::wstring& name);
  // A host command says that it failed, for the editor's event.
  void failCommand() { failed_ = true; }
  void quit() { quitting_ = true; }

  Document& document() { return *document_; }
  // Puts another drawing in place of the open one, telling the module.
  void replaceDocument(std::unique_ptr<Document> document);
  Database& db() { return document_->db; }
  Prompter& prompter() { return prompter_; }
  PromptUi& promptUi() { return ui_; }

  void addHostCommand(HostCommand command);
  // Names of every command, host and module, for completion and help.
  std::vector<std::wstring> commandNames() const;
  const std::map<std::wstring, HostCommand>& hostCommands() const { return hostCommands_; }

  // What a host command works on: the pick-first set if allowed and present,
  // else what the user selects. nullopt when the user cancelled.
  std::optional<std::vector<ObjectId>> selectForCommand(bool usePickFirst);

  // --- platform::Host ------------------------------------------------------
  platform::CommandStack& commandStack() override { return *this; }
  platform::DynamicLinker& dynamicLinker() override { return *this; }
  platform::Documents& documents() override { return *this; }
  platform::Editor& editor() override { return *this; }
  platform::Ui& ui() override { return ui_; }
  platform::Project& project() override { return document_->project; }
  platform::Drawing& drawing() override { return document_->drawing; }
  platform::FeatureClasses& featureClasses() override { return document_->featureClasses; }
  platform::EntityGeometry& geometry() override { return document_->geometry; }

  // --- platform::Editor ----------------------------------------------------
  std::vector<ObjectId> impliedSelection() override;
  platform::SelectionReply selectObjects() override;
  void setPickFirst(const std::vector<ObjectId>& ids) override;
  platform::StringReply getString(const std::wstring& prompt, bool allowSpaces) override;
  platform::EntityReply getEntity(const std::wstring& prompt) override;
  platform::PointReply getPoint(const std::wstring& prompt) override;
  platform::IntReply getInt(const std::wstring& prompt) override;
  void print(const std::wstring& text) override { prompter_.print(text); }
  void addReactor(platform::EditorReactor* reactor) override;
  platform::PromptStatus command(const std::vector<platform::CommandArgument>& arguments) override;
  void removeReactor(platform::EditorReactor* reactor) override;
  std::optional<platform::SysVarValue> getVar(const std::wstring& name) const override;
  platform::Status setVar(const std::wstring& name, const platform::SysVarValue& value) override;

  // --- platform::Documents -------------------------------------------------
  void pushResourceHandle(void* module) override { resourceStack_.push_back(module); }
  void popResourceHandle() override;
  platform::Status lockDocument(platform::LockMode mode) override;
  platform::Status unlockDocument() override;

  // --- platform::CommandStack ----------------------------------------------
  platform::Status addCommand(const std::wstring& group, const std::wstring& globalName,
                              const std::wstring& localName, int flags,
                              platform::CommandFunction handler, void* resourceHandle) override;
  platform::Status removeCommand(const std::wstring& group,
                                 const std::wstring& globalName) override;
  platform::Status removeGroup(const std::wstring& group) override;

  // --- platform::DynamicLinker ---------------------------------------------
  void unlockApplication(void*) override {}
  void registerAppMDIAware(void*) override {}

 private:
  struct ModuleCommand {
    std::wstring group;
    std::wstring globalName;
    int flags = 0;
    platform::CommandFunction handler = nullptr;
  };

  // A command line's name, upper-cased, without the "_" and "." prefixes.
  static std::wstring normalizeCommand(const std::wstring& text);
  // Replaces the pick-first set and tells the reactors if it changed.
  void changePickFirst(std::vector<ObjectId> ids);
  template <typename Event>
  void notify(Event event);
  CommandOutcome runUndoable(const std::wstring& name, bool recordsUndo,
                             const std::function<void()>& body);

  Prompter prompter_;
  PromptUi ui_;
  std::unique_ptr<Document> document_;
  std::map<std::wstring, HostCommand> hostCommands_;
  std::map<std::wstring, ModuleCommand> moduleCommands_;
  PluginLoader plugin_;
  std::vector<void*> resourceStack_;
  std::vector<platform::EditorReactor*> reactors_;
  bool quitting_ = false;
  bool failed_ = false;
  bool pickFirstSetByCommand_ = false;
  int commandDepth_ = 0;
};

}  // namespace host
