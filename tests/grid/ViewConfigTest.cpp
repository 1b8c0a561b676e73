// Column state kept as typed settings with profiles, and the settings file
// under the user's configuration folder.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "grid/DataGrid.h"
#include "grid/ViewConfigSection.h"
#include "grid/ViewConfigStore.h"

namespace zarvel {
namespace {

namespace fs = std::filesystem;

TEST(ViewConfigTest, TextFormsReadBackOrGiveTheDefault) {
  ViewConfigSectionApp config(L"View", nullptr);
  FontSpec font;
  font.faceName = L"Courier New";
  font.height = -13;
  font.weight = 700;
  font.italic = 1;
  font.clipPrecision = 2;
  font.pitchAndFamily = 49;
  config.SetFontSetting(L"Font", font);
  EXPECT_EQ(config.GetSetting(L"Font", L""),
            L"Courier New, -13, 0, 0, 0, 700, 1, 0, 0, 0, 0, 0, 49");
  font.clipPrecision = 0;  // not kept
  EXPECT_EQ(config.GetFontSetting(L"Font"), font);

  const struct {
    const wchar_t* text;
    bool boolean;
    ConfigRect rect;
    Color color;
    std::size_t fontFace;
  } cases[] = {
      {L"TRUE", true, {7, 7, 7, 7}, rgbColor(1, 2, 3), 0},
      {L"true", false, {7, 7, 7, 7}, rgbColor(1, 2, 3), 0},
      {L"1, 2, 3, 4", false, {1, 2, 3, 4}, rgbColor(1, 2, 3), 0},
      {L"256, 257, -1", false, {7, 7, 7, 7}, rgbColor(0, 1, 255), 0},
      {L"1,2,3", false, {7, 7, 7, 7}, rgbColor(1, 2, 3), 0},  // the delimiter is ", "
  };
  for (const auto& c : cases) {
    config.SetSetting(L"Key", c.text);
    EXPECT_EQ(config.GetBoolSetting(L"Key", false), c.boolean) << c.text;
    EXPECT_EQ(config.GetRectSetting(L"Key", {7, 7, 7, 7}), c.rect) << c.text;
    EXPECT_EQ(config.GetColorSetting(L"Key", rgbColor(1, 2, 3)), c.color) << c.text;
    EXPECT_EQ(config.GetFontSetting(L"Key"), FontSpec{}) << c.text;
  }
  EXPECT_EQ(config.SplitArrayString(L"", L", ").size(), 0u);
  EXPECT_EQ(config.SplitArrayString(L"a, , b,", L", "),
            (std::vector<std::wstring>{L"a", L"", L"b,"}));
  config.SetFloatSetting(L"F", 2.0 / 3.0, 3);
  EXPECT_EQ(config.GetSetting(L"F", L""), L"0.667");
}

TEST(ViewConfigTest, ProfilesAreSectionsOfTheView) {
  ViewConfigSectionApp config(L"Grid", nullptr);
  EXPECT_EQ(config.GetSectionName(), L"Grid");
  config.SetActiveProfile(L"wide__view");
  EXPECT_EQ(config.GetSectionName(), L"Grid__wide__view");
  EXPECT_EQ(config.GetActiveProfile(), L"wide__view");  // cut at the first "__" behind the view
  EXPECT_EQ(config.SplitSectionName(L"Other__wide"), L"");
  config.AddProfile(L"narrow");
  config.AddProfile(L"narrow");
  EXPECT_EQ(config.GetProfiles(), (std::vector<std::wstring>{L"wide__view", L"narrow"}));
  config.SetSetting(L"Key", L"1");
  EXPECT_EQ(config.ReadSetting(L"Grid__wide__view", L"Key", L""), L"1");
  EXPECT_FALSE(config.RemoveProfile(L""));
  EXPECT_TRUE(config.RemoveProfile(L"wide__view"));
  EXPECT_EQ(config.GetProfiles(), (std::vector<std::wstring>{L"narrow"}));

  // The view's own section as the active one keeps its list of profiles.
  ViewConfigSectionApp own(L"Own", nullptr);
  own.AddProfile(L"p");
  own.SetSetting(L"Key", L"1");
  own.RemoveCurrentConfig();
  EXPECT_EQ(own.GetSetting(L"Key", L"gone"), L"gone");
  EXPECT_EQ(own.GetProfiles(), (std::vector<std::wstring>{L"p"}));
}

// Four columns A B C D, kept in a section of an in-memory store.
struct Columns {
  DataGrid grid;
  ViewConfigSectionApp config{L"Cols", nullptr};
  Columns() {
    for (const wchar_t* heading : {L"A", L"B", L"C", L"D"}) {
      grid.InsertColumn(grid.GetColumnCount(), heading, Align::Left, 50);
    }
  }
  std::wstring shown() const {
    std::wstring text;
    for (int c : grid.GetVisibleColumns()) {
      text += grid.GetColumnHeading(c) + std::to_wstring(grid.GetColumnWidth(c)) + L" ";
    }
    return text;
  }
};

TEST(ViewConfigTest, ColumnStateSavedAndLoaded) {
  Columns c;
  c.grid.SetupColumnConfig(&c.config, false);
  c.grid.SetColumnWidth(2, 77);
  c.grid.SetColumnOrderArray({3, 2, 1, 0});
  c.grid.ShowColumn(1, false);
  EXPECT_EQ(c.config.GetSetting(L"ColumnCount", L""), L"3");
  EXPECT_EQ(c.config.GetSetting(L"ColumnData_1", L""), L"2");
  EXPECT_EQ(c.config.GetSetting(L"ColumnWidth_1", L""), L"77");

  Columns again;
  again.config.SetSetting(L"ColumnCount", L"3");
  for (const auto& [key, value] : {std::pair{L"ColumnData_0", L"3"},
                                   {L"ColumnData_1", L"2"},
                                   {L"ColumnData_2", L"0"},
                                   {L"ColumnWidth_1", L"77"}}) {
    again.config.SetSetting(key, value);
  }
  again.grid.GetColumnTrait(0).GetColumnState().alwaysHidden = true;  // since the save
  again.grid.LoadColumnState(again.config);
  EXPECT_EQ(again.shown(), L"D50 C77 ");

  again.grid.GetColumnTrait(1).GetColumnState().alwaysVisible = true;
  again.config.SetSetting(L"ColumnCount", L"0");
  again.grid.LoadColumnState(again.config);
  EXPECT_EQ(again.shown(), L"B50 ");
}

TEST(ViewConfigTest, HeaderMenuSwitchesProfilesAndResets) {
  Columns c;
  c.config.AddProfile(L"all");  // the first is active until one is chosen
  c.config.AddProfile(L"small");
  c.grid.SetupColumnConfig(&c.config, false);
  c.grid.ShowColumn(3, false);
  auto entry = [&c](const std::wstring& text) {
    for (const MenuEntry& e : c.grid.OnHeaderContextMenu(0).entries) {
      if (e.text == text && e.action != MenuEntry::Action::Separator) return e;
      for (const MenuEntry& sub : e.entries) {
        if (sub.text == text) return sub;
      }
    }
    ADD_FAILURE() << "no menu entry";
    return MenuEntry{};
  };
  EXPECT_TRUE(c.grid.OnContextMenuCommand(entry(L"small")));
  EXPECT_EQ(c.shown(), L"A50 B50 C50 D50 ");  // a new profile starts from the defaults
  c.grid.ShowColumn(0, false);
  EXPECT_TRUE(entry(L"small").checked);
  EXPECT_TRUE(c.grid.OnContextMenuCommand(entry(L"all")));
  EXPECT_EQ(c.shown(), L"A50 B50 C50 ");
  EXPECT_TRUE(c.grid.OnContextMenuCommand(entry(L"small")));
  EXPECT_EQ(c.shown(), L"B50 C50 D50 ");
  EXPECT_TRUE(c.grid.OnContextMenuCommand(entry(L"Reset columns")));
  EXPECT_EQ(c.shown(), L"A50 B50 C50 D50 ");
}

// A folder of its own as $XDG_CONFIG_HOME, and the warnings of the store.
struct ConfigFolder : ::testing::Test {
  fs::path home =
      fs::temp_directory_path() /
      ("zarvel-grid-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
       ::testing::UnitTest::GetInstance()->current_test_info()->name());
  std::vector<std::wstring> warnings;
  ConfigFolder() {
    fs::remove_all(home);
    setenv("XDG_CONFIG_HOME", home.c_str(), 1);
  }
  ~ConfigFolder() override { fs::remove_all(home); }
  std::shared_ptr<ViewConfigStore> open() {
    return ViewConfigStore::Open(ViewConfigStore::DefaultPath(),
                                 [this](const std::wstring& w) { warnings.push_back(w); });
  }
  static std::string read(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
  }
  static void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
  }
};

TEST_F(ConfigFolder, SettingsOutliveTheSession) {
  const fs::path file = home / "zarvel" / "views.conf";
  EXPECT_EQ(ViewConfigStore::DefaultPath(), file.string());
  {
    ViewConfigSectionApp config(L"Odd]=[#\\", open());
    config.SetActiveProfile(L"line\nbreak");
    config.SetSetting(L"=key", L" value = \\ \r\n");
    EXPECT_EQ(config.Flush(), platform::Status::Ok);  // the folder is made on demand
  }
  ViewConfigSectionApp config(L"Odd]=[#\\", open());
  EXPECT_EQ(config.GetActiveProfile(), L"line\nbreak");
  EXPECT_EQ(config.GetSetting(L"=key", L""), L" value = \\ \r\n");
  EXPECT_TRUE(warnings.empty());
  EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), fs::directory_iterator()),
            1);  // no temporary file left
}

TEST_F(ConfigFolder, ACorruptFileIsKeptAsideAndTheDefaultsHold) {
  const fs::path file = home / "zarvel" / "views.conf";
  const std::string corrupt = "[Cols]\n \t\nColumnCount=1\nColumnData_0\n";
  write(file, corrupt);
  write(file.string() + ".corrupt", "older");
  Columns c;
  ViewConfigSectionApp config(L"Cols", open());
  c.grid.SetupColumnConfig(&config, false);
  EXPECT_EQ(c.shown(), L"A50 B50 C50 D50 ");
  ASSERT_EQ(warnings.size(), 1u);
  EXPECT_EQ(warnings[0], file.wstring() +
                             L":4: no '=' between a name and its value; the file is "
                             L"kept as " +
                             file.wstring() +
                             L".corrupt.1 and the grid columns start from their defaults.");
  EXPECT_EQ(read(file.string() + ".corrupt.1"), corrupt);
  EXPECT_EQ(read(file.string() + ".corrupt"), "older");
}

TEST_F(ConfigFolder, AnUnreadableFileIsNeverWrittenOver) {
  const fs::path file = home / "zarvel" / "views.conf";
  fs::create_directories(file);  // reads as no file at all
  Columns c;
  ViewConfigSectionApp config(L"Cols", open());
  c.grid.SetupColumnConfig(&config, false);
  c.grid.ShowColumn(0, false);
  c.grid.ShowColumn(1, false);
  EXPECT_EQ(config.Flush(), platform::Status::Failed);
  ASSERT_EQ(warnings.size(), 2u);  // one on reading, one on the first refused write
  EXPECT_EQ(warnings[0], file.wstring() +
                             L": cannot be read; the grid columns start from "
                             L"their defaults, and it is not written over this "
                             L"session.");
  EXPECT_TRUE(fs::is_directory(file));
}

}  // namespace
}  // namespace zarvel
