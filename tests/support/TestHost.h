// A host for driving the module in unit tests: our real drawing database, and
// an editor and dialogs whose answers the test scripts in advance.
#pragma once

#include <algorithm>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "host/db/Database.h"
#include "host/db/PortDrawing.h"
#include "host/db/PortFeatureClasses.h"
#include "host/db/PortObjectData.h"
#include "host/geometry/PortGeometry.h"
#include "platform/Host.h"
#include "platform/TextFile.h"

namespace testing_support {

using platform::EntityReply;
using platform::IntReply;
using platform::ObjectId;
using platform::PointReply;

class TestHost : public platform::Host,
                 public platform::Editor,
                 public platform::Documents,
                 public platform::Ui,
                 public platform::Files,
                 public platform::CommandStack,
                 public platform::DynamicLinker {
 public:
  TestHost() : project_(db), drawing_(db) {}

  // --- Scripted answers ---------------------------------------------------
  std::vector<ObjectId> pickFirst;
  std::deque<platform::SelectionReply> selections;  // what selectObjects returns
  std::deque<platform::StringReply> strings;        // what getString returns
  std::deque<PointReply> points;                    // what getPoint returns
  std::deque<EntityReply> entities;                 // what getEntity returns
  std::deque<int> messageBoxAnswers;
  // Fills in a dialog and returns the button that closes it.
  std::function<int(platform::DialogModel&)> dialogAnswer;
  std::deque<std::wstring> fileNames;  // what fileDialog returns; "" or none cancels
  std::vector<std::wstring> unwritable;  // paths the file service refuses

  // --- What happened -------------------------------------------------------
  std::wstring printed;
  std::vector<std::wstring> prompts;
  int selectionPrompts = 0;
  int dialogsShown = 0;
  int resourceDepth = 0;
  int lockDepth = 0;
  int maxLockDepth = 0;
  std::map<std::wstring, platform::SysVarValue> vars{{L"LUPREC", short{4}}};
  struct Registered {
    std::wstring group;
    std::wstring name;
    int flags;
    platform::CommandFunction handler;
  };
  std::vector<Registered> commands;
  int unlockCalls = 0;
  int mdiCalls = 0;
  // The progress meter: its range as last started, steps since, and whether
  // the status bar is back.
  int progressMax = -1;
  int progressSteps = 0;
  bool statusBarRestored = true;
  std::vector<platform::FileDialogRequest> fileDialogs;
  std::map<std::wstring, std::string> writtenFiles;  // by path, as last written whole
  std::vector<platform::PaletteModel*> openPalettes;  // in the order first shown
  std::vector<std::wstring> posted;                   // postCommand's commands
  std::vector<std::wstring> sent;                     // text queued for the command line
  // Files the module may read, by path: their bytes, decoded as our host does
  // with Latin-1 as the narrow code page.
  std::map<std::wstring, std::string> readableFiles;

  host::Database db;

  // Helpers to build drawings.
  ObjectId addLine(ObjectId layer = {});
  // A line on the named layer, made if need be; then the state given
  // (&host::Layer::frozen, locked, off or hidden) is set on the layer.
  ObjectId addOnLayer(const std::wstring& layerName, bool host::Layer::*state = nullptr);
  ObjectId defineTable(const std::wstring& name, int columns = 1);
  // Records written as "Roads Parcels7": a table's name, then the record's
  // first value when it is not 0. attach adds them, recordsOn reads them back
  // in iterator order ("" for an entity that won't open).
  void attach(ObjectId entity, const std::wstring& records);
  std::wstring recordsOn(ObjectId entity);
  void runCommand(const std::wstring& name);

  // --- platform::Host ------------------------------------------------------
  platform::CommandStack& commandStack() override { return *this; }
  platform::DynamicLinker& dynamicLinker() override { return *this; }
  platform::Documents& documents() override { return *this; }
  platform::Editor& editor() override { return *this; }
  platform::Ui& ui() override { return *this; }
  platform::Project& project() override { return project_; }
  platform::Drawing& drawing() override { return drawing_; }
  platform::FeatureClasses& featureClasses() override { return featureClasses_; }
  platform::EntityGeometry& geometry() override { return geometry_; }
  platform::Files& files() override { return *this; }

  // --- platform::Editor ----------------------------------------------------
  std::vector<ObjectId> impliedSelection() override { return pickFirst; }
  platform::SelectionReply selectObjects() override;
  // As a selection set, each id once.
  void setPickFirst(const std::vector<ObjectId>& ids) override;
  platform::StringReply getString(const std::wstring& prompt, bool allowSpaces) override;
  EntityReply getEntity(const std::wstring& prompt) override;
  // No test answers an integer prompt: each is cancelled.
  PointReply getPoint(const std::wstring& prompt) override;
  IntReply getInt(const std::wstring& prompt) override { return refuse<IntReply>(prompt); }
  void print(const std::wstring& text) override { printed += text; }
  std::optional<platform::SysVarValue> getVar(const std::wstring& name) const override;
  platform::Status setVar(const std::wstring& name, const platform::SysVarValue& value) override;
  void startProgress(const std::wstring&, int, int max) override {
    progressMax = max;
    progressSteps = 0;
    statusBarRestored = false;
  }
  void setProgress(int position) override { progressSteps += position < 0 ? 1 : 0; }
  void restoreStatusBar() override { statusBarRestored = true; }

  // --- platform::Documents -------------------------------------------------
  void pushResourceHandle(void*) override { ++resourceDepth; }
  void popResourceHandle() override { --resourceDepth; }
  platform::Status lockDocument(platform::LockMode) override {
    maxLockDepth = std::max(maxLockDepth, ++lockDepth);
    return platform::Status::Ok;
  }
  platform::Status unlockDocument() override {
    --lockDepth;
    return platform::Status::Ok;
  }

  // --- platform::Ui --------------------------------------------------------
  int runModal(platform::DialogModel& dialog) override;
  int messageBox(const std::wstring& text, const std::wstring& caption, int flags) override;
  std::wstring fileDialog(const platform::FileDialogRequest& request) override {
    fileDialogs.push_back(request);
    if (fileNames.empty()) return std::wstring();
    std::wstring name = fileNames.front();
    fileNames.pop_front();
    return name;
  }
  platform::Status showPalette(platform::PaletteModel& palette) override {
    if (std::count(openPalettes.begin(), openPalettes.end(), &palette) == 0) {
      openPalettes.push_back(&palette);
    }
    return platform::Status::Ok;
  }
  void destroyPalette(platform::PaletteModel& palette) override {
    openPalettes.erase(std::remove(openPalettes.begin(), openPalettes.end(), &palette),
                       openPalettes.end());
  }
  void postCommand(const std::wstring& command) override { posted.push_back(command); }
  void sendStringToExecute(const std::wstring& text) override { sent.push_back(text); }

  // --- platform::Files -----------------------------------------------------
  platform::Status checkWritable(const std::wstring& path) override {
    const bool refused = std::count(unwritable.begin(), unwritable.end(), path) > 0;
    return refused ? platform::Status::Failed : platform::Status::Ok;
  }
  platform::Status writeWholeFile(const std::wstring& path, std::string_view bytes) override {
    if (checkWritable(path) != platform::Status::Ok) return platform::Status::Failed;
    writtenFiles[path] = std::string(bytes);
    return platform::Status::Ok;
  }
  std::optional<std::wstring> readTextFile(const std::wstring& path) override {
    const auto found = readableFiles.find(path);
    if (found == readableFiles.end()) return std::nullopt;
    return platform::decodeTextFile(found->second, platform::latin1Text);
  }

  // --- platform::CommandStack / DynamicLinker ------------------------------
  platform::Status addCommand(const std::wstring& group, const std::wstring& globalName,
                              const std::wstring& localName, int flags,
                              platform::CommandFunction handler, void* resources) override;
  platform::Status removeCommand(const std::wstring& group, const std::wstring& name) override;
  platform::Status removeGroup(const std::wstring& group) override;
  void unlockApplication(void*) override { ++unlockCalls; }
  void registerAppMDIAware(void*) override { ++mdiCalls; }

 private:
  template <typename Matches>
  platform::Status removeCommands(Matches matches) {
    commands.erase(std::remove_if(commands.begin(), commands.end(), matches), commands.end());
    return platform::Status::Ok;
  }
  template <typename Reply>
  Reply refuse(const std::wstring& prompt) {
    prompts.push_back(prompt);
    Reply reply;
    reply.status = platform::PromptStatus::Cancel;
    return reply;
  }

  host::DbProject project_;
  host::DbDrawing drawing_;
  host::DbFeatureClasses featureClasses_{db};
  host::DbEntityGeometry geometry_{db};
};

}  // namespace testing_support
