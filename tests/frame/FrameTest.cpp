// Load, unload and the command table.
#include <gtest/gtest.h>

#include <set>

#include "ModuleFixture.h"
#include "tableeditor/EditorState.h"
#include "tableeditor/Zarvel.h"

namespace testing_support {
namespace {

using FrameTest = ModuleTest;
namespace Flags = platform::CommandFlags;

TEST_F(FrameTest, LoadRegistersTheDefaultEntriesThenEveryCommandOnceInTableOrder) {
  EXPECT_EQ(host.unlockCalls, 1);
  EXPECT_EQ(host.mdiCalls, 1);
  const std::vector<zarvel::CommandEntry>& table = zarvel::commandTable();
  ASSERT_EQ(table.size(), 38u);
  ASSERT_EQ(host.commands.size(), 3 + table.size());
  // The framework's default entries come first.
  EXPECT_EQ(host.commands[0].name, L"MyCommand");
  EXPECT_EQ(host.commands[1].flags, Flags::kUsePickSet);
  EXPECT_EQ(host.commands[2].flags, Flags::kSession);
  std::set<std::wstring> seen;
  for (std::size_t i = 0; i < table.size(); ++i) {
    const TestHost::Registered& c = host.commands[3 + i];
    EXPECT_EQ(c.name, table[i].globalName);
    EXPECT_TRUE(seen.insert(c.name).second) << "registered twice";
    EXPECT_EQ(c.group, L"ZARVEL");
    EXPECT_TRUE(c.handler);
    // Only the one that must not run inside another command is modal.
    const bool modal = c.name == L"ZARVEL_LOAD_DEFINITION";
    EXPECT_EQ(c.flags,
              modal ? Flags::kModal : Flags::kTransparent | Flags::kUsePickSet | Flags::kRedraw)
        << platform::toUtf8(c.name);
  }
}

TEST_F(FrameTest, UnloadRemovesEverythingItRegistered) {
  EXPECT_EQ(zarvel::apiVersion(), 0x130000);
  platform::AppPacket packet{&host, &host};
  zarvel::entryPoint(platform::AppMsg::kUnloadApp, &packet);
  EXPECT_TRUE(host.commands.empty());
  // Loaded again for the fixture's own unload.
  zarvel::entryPoint(platform::AppMsg::kInitApp, &packet);
}

TEST_F(FrameTest, TablePaletteIsMadeOnceEmptiedByAnotherDrawingAndGoesAtUnload) {
  run(L"ZARVEL_TABLE");
  run(L"ZARVEL_TABLE");
  ASSERT_EQ(host.openPalettes.size(), 1u);
  EXPECT_EQ(host.openPalettes.front()->name(), L"ZARVEL_TABLE");
  EXPECT_TRUE(zarvel::Zarvel::instance().shown);
  // A drawing opened empties the editor.
  zarvel::tableEditorState().currentTableName = L"Roads";
  zarvel::Zarvel::instance().rows.resize(2);
  platform::AppPacket packet{&host, &host};
  zarvel::entryPoint(platform::AppMsg::kLoadDwg, &packet);
  EXPECT_TRUE(zarvel::tableEditorState().currentTableName.empty());
  EXPECT_TRUE(zarvel::Zarvel::instance().rows.empty());
  zarvel::entryPoint(platform::AppMsg::kUnloadApp, &packet);
  EXPECT_TRUE(host.openPalettes.empty());
  EXPECT_FALSE(zarvel::Zarvel::instance().shown);
  zarvel::entryPoint(platform::AppMsg::kInitApp, &packet);
}

}  // namespace
}  // namespace testing_support
