// Loading a module by its exports, messaging it, and the errors a user sees
// when the file is not a usable module. The stand-in modules come from
// fixtures/FakeModule.cpp; their paths are compile definitions.
#include "host/editor/PluginLoader.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <vector>

#include "platform/Text.h"

namespace host {
namespace {

namespace fs = std::filesystem;

// Only what the stand-in module calls is implemented; its commands are taken
// and left to the session's tests.
class RecordingHost : public platform::Host, public platform::CommandStack {
 public:
  platform::CommandStack& commandStack() override { return *this; }
  platform::DynamicLinker& dynamicLinker() override { std::abort(); }
  platform::Documents& documents() override { std::abort(); }
  platform::Editor& editor() override { std::abort(); }
  platform::Ui& ui() override { std::abort(); }
  platform::Project& project() override { std::abort(); }
  platform::Drawing& drawing() override { std::abort(); }
  platform::FeatureClasses& featureClasses() override { std::abort(); }
  platform::EntityGeometry& geometry() override { std::abort(); }
  void defineFunction(const std::wstring& /*name*/, int message) override {
    messages.push_back(static_cast<unsigned>(message));
  }
  platform::Status addCommand(const std::wstring&, const std::wstring&, const std::wstring&, int,
                              platform::CommandFunction, void*) override {
    return platform::Status::Ok;
  }
  platform::Status removeCommand(const std::wstring&, const std::wstring&) override {
    return platform::Status::Ok;
  }
  platform::Status removeGroup(const std::wstring&) override { return platform::Status::Ok; }
  std::vector<unsigned> messages;
};

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = (fs::temp_directory_path() / "zarvel-loader-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~TemporaryDirectory() {
    std::error_code error;
    fs::remove_all(path_, error);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

TEST(PluginLoaderTest, SendsMessagesWithTheHostAndUnloads) {
  RecordingHost host;
  PluginLoader loader;
  const std::optional<std::wstring> error = loader.load(FAKE_MODULE_PATH, host);
  ASSERT_FALSE(error.has_value()) << platform::toUtf8(*error);
  EXPECT_TRUE(loader.isLoaded());
  EXPECT_EQ(loader.path().string(), FAKE_MODULE_PATH);
  EXPECT_TRUE(host.messages.empty()) << "loading alone sends nothing";

  EXPECT_EQ(loader.send(platform::AppMsg::kInitApp), platform::kRetOk);
  EXPECT_EQ(loader.send(platform::AppMsg::kInvokeSubr), platform::kRetError);
  loader.unload();
  EXPECT_FALSE(loader.isLoaded());
  EXPECT_EQ(host.messages,
            (std::vector<unsigned>{platform::AppMsg::kInitApp, platform::AppMsg::kInvokeSubr,
                                   platform::AppMsg::kUnloadApp}));
  EXPECT_EQ(loader.send(platform::AppMsg::kInitApp), platform::kRetError);
  EXPECT_EQ(host.messages.size(), 3u);
}

TEST(PluginLoaderTest, DestructionUnloadsAndAModuleLoadsOnce) {
  RecordingHost host;
  {
    PluginLoader loader;
    ASSERT_FALSE(loader.load(FAKE_MODULE_PATH, host).has_value());
    const std::optional<std::wstring> again = loader.load(FAKE_MODULE_PATH, host);
    ASSERT_TRUE(again.has_value());
    EXPECT_NE(again->find(L"is loaded"), std::wstring::npos) << platform::toUtf8(*again);
  }
  EXPECT_EQ(host.messages, (std::vector<unsigned>{platform::AppMsg::kUnloadApp}));
}

TEST(PluginLoaderTest, UnusableFilesAreRefusedWithTheirNameAndReason) {
  TemporaryDirectory directory;
  const fs::path text = directory.path() / "notes.so";
  std::ofstream(text) << "not a module\n";

  const struct {
    fs::path file;
    const wchar_t* reason;
  } cases[] = {
      {directory.path() / "missing.so", L"No such file"},
      {text, L"notes.so"},
      {FAKE_MODULE_NO_ENTRY_PATH, L"acrxEntryPoint"},
      {FAKE_MODULE_OLD_PATH, L"built for API version 0x120000, this host has 0x130000"},
  };
  for (const auto& test : cases) {
    RecordingHost host;
    PluginLoader loader;
    const std::optional<std::wstring> error = loader.load(test.file, host);
    ASSERT_TRUE(error.has_value()) << test.file.string();
    const std::wstring start = L"Cannot load '" + platform::fromUtf8(test.file.string()) + L"': ";
    EXPECT_EQ(error->rfind(start, 0), 0u) << platform::toUtf8(*error);
    EXPECT_NE(error->find(test.reason), std::wstring::npos) << platform::toUtf8(*error);
    EXPECT_FALSE(loader.isLoaded());
    EXPECT_TRUE(host.messages.empty());
  }
}

TEST(PluginLoaderTest, ABareFileNameMeansTheCurrentDirectory) {
  TemporaryDirectory directory;
  fs::copy_file(FAKE_MODULE_PATH, directory.path() / "module.so");
  const fs::path previous = fs::current_path();
  fs::current_path(directory.path());
  RecordingHost host;
  PluginLoader loader;
  const std::optional<std::wstring> local = loader.load("module.so", host);
  // A library the system would find on its search path is not taken.
  PluginLoader system;
  const std::optional<std::wstring> searched = system.load("libc.so.6", host);
  fs::current_path(previous);
  EXPECT_FALSE(local.has_value()) << platform::toUtf8(*local);
  EXPECT_TRUE(searched.has_value());
}

TEST(PluginLoaderTest, DefaultPathPrefersTheInstalledLayout) {
  TemporaryDirectory directory;
  const fs::path bin = directory.path() / "bin";
  fs::create_directories(bin);
  EXPECT_EQ(defaultPluginPath(bin).string(), (bin / "zarvel.so").string());
  fs::create_directories(directory.path() / "lib");
  std::ofstream(directory.path() / "lib" / "zarvel.so") << "";
  EXPECT_EQ(defaultPluginPath(bin).string(), (directory.path() / "lib" / "zarvel.so").string());

  // The running program's own directory is where the search starts.
  const fs::path executableDirectory = fs::read_symlink("/proc/self/exe").parent_path();
  EXPECT_EQ(defaultPluginPath().string(), defaultPluginPath(executableDirectory).string());
}

}  // namespace
}  // namespace host
