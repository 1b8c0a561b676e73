// A session of our host: the open document, the command line, the commands
// (the host's own and those a loaded module registers), and the port through
// which a module reaches all of it, one adapter per role.
//
// Each command is one undo step. A command that throws, the module's or the
// host's own, fails rather than ending the session: its step is rolled back,
// the error is printed as "Error: <command> failed: <what>", and the
// reactors are told that it failed.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/editor/CommandOutcome.h"
#include "host/editor/Console.h"
#include "host/editor/Document.h"
#include "host/editor/ModuleCommandStack.h"
#include "host/editor/PathAliasTable.h"
#include "host/editor/PluginLoader.h"
#include "host/editor/PromptUi.h"
#include "host/editor/Prompter.h"
#include "host/editor/SessionDocuments.h"
#include "host/editor/SessionEditor.h"
#include "host/editor/SessionHost.h"
#include "host/editor/SessionLinker.h"

namespace host {

class Session;

struct HostCommand {
  std::wstring name;
  std::function<void(Session&)> run;
  // Commands that only move through the undo history make no step of their own.
  bool recordsUndo = true;
  std::wstring help;
};

class Session {
 public:
  // Starts with the document, or with a new drawing.
  explicit Session(Console& console, std::unique_ptr<Document> document = nullptr);
  ~Session();
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
  void print(const std::wstring& text) { prompter_.print(text); }

  void addHostCommand(HostCommand command);
  // Names of every command, host and module, for completion and help.
  std::vector<std::wstring> commandNames() const;
  const std::map<std::wstring, HostCommand>& hostCommands() const { return hostCommands_; }

  // What a host command works on: the pick-first set if allowed and present,
  // else what the user selects. nullopt when the user cancelled.
  std::optional<std::vector<ObjectId>> selectForCommand(bool usePickFirst);

  // The port, as a loaded module is handed it, and its roles.
  platform::Host& host() { return host_; }
  SessionEditor& editor() { return editor_; }
  SessionDocuments& documents() { return documents_; }
  ModuleCommandStack& moduleCommands() { return moduleCommands_; }
  PathAliasTable& pathAliases() { return aliases_; }
  platform::DynamicLinker& linker() { return linker_; }

 private:
  // What the session does around a command besides running it.
  struct CommandRules {
    bool recordsUndo = true;
    // The pick-first set found at the start stays when the command ends.
    bool keepsPickFirst = false;
  };

  CommandOutcome runUndoable(const std::wstring& name, CommandRules rules,
                             const std::function<void()>& body);
  CommandOutcome runInStep(const std::wstring& name, bool recordsUndo,
                           const std::function<void()>& body);
  // Runs the body; false when it threw, having said so.
  bool runCaught(const std::wstring& name, const std::function<void()>& body);
  void endOutermostCommand(bool keepsPickFirst);
  // Lets the document's attached drawings resolve the session's aliases.
  void connectDocument();

  Prompter prompter_;
  PromptUi ui_;
  std::unique_ptr<Document> document_;
  // Documents replaced while a command ran, kept until it ends: its undo step
  // closes on the drawing it was opened on.
  std::vector<std::unique_ptr<Document>> retired_;
  std::map<std::wstring, HostCommand> hostCommands_;
  PathAliasTable aliases_;
  SessionEditor editor_{*this};
  SessionDocuments documents_{*this};
  ModuleCommandStack moduleCommands_;
  SessionLinker linker_;
  SessionHost host_{*this, prompter_};
  // Last, so that a module still loaded when the session goes finds the
  // roles above alive while it unloads.
  PluginLoader plugin_;
  bool quitting_ = false;
  bool failed_ = false;
  int commandDepth_ = 0;
};

}  // namespace host
