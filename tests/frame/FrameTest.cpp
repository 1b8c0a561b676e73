// Load, unload and the command table.
#include <gtest/gtest.h>

#include "ModuleFixture.h"

namespace testing_support {
namespace {

using FrameTest = ModuleTest;

TEST_F(FrameTest, LoadRegistersTheDefaultEntriesThenTheGroupInOrder) {
  EXPECT_EQ(host.unlockCalls, 1);
  EXPECT_EQ(host.mdiCalls, 1);
  ASSERT_EQ(host.commands.size(), 3u + 38u);
  EXPECT_EQ(host.commands[0].name, L"MyCommand");
  EXPECT_EQ(host.commands[1].flags, 2);
  EXPECT_EQ(host.commands[2].flags, 0x200000);
  EXPECT_EQ(host.commands[3].name, L"ZARVEL_PSEL");
  EXPECT_EQ(host.commands[3 + 37].name, L"ZARVEL_ATTR_TEMPLATE");
  for (std::size_t i = 3; i < host.commands.size(); ++i) {
    const auto& c = host.commands[i];
    EXPECT_EQ(c.group, L"ZARVEL");
    EXPECT_EQ(c.flags, c.name == L"ZARVEL_LOAD_DEFINITION" ? 0 : 7) << i;
  }
}

TEST_F(FrameTest, UnloadRemovesEverythingItRegistered) {
  platform::AppPacket packet{&host, &host};
  zarvel::entryPoint(platform::AppMsg::kUnloadApp, &packet);
  EXPECT_TRUE(host.commands.empty());
  // Loaded again for the fixture's own unload.
  zarvel::entryPoint(platform::AppMsg::kInitApp, &packet);
}

TEST_F(FrameTest, MessagesAboveTheRangeAreAnsweredWithoutAHandler) {
  platform::AppPacket packet{&host, &host};
  EXPECT_EQ(zarvel::entryPoint(16, &packet), 0);
  EXPECT_EQ(zarvel::entryPoint(0xFFFFFFFFu, &packet), 0);
  EXPECT_EQ(host.commands.size(), 41u);
  EXPECT_EQ(zarvel::apiVersion(), 0x130000);
}

TEST_F(FrameTest, CommandsNotBuiltYetSayTheyDidNothing) {
  run(L"ZARVEL_SETXYZ");
  EXPECT_EQ(host.printed, L"Error. Operation unsuccessful.\n");
}

}  // namespace
}  // namespace testing_support
