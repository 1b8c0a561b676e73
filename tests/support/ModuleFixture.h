// Loads the module into a scripted test host for each test.
#pragma once

#include <gtest/gtest.h>

#include "TestHost.h"
#include "frame/CzarvelApp.h"
#include "platform/Text.h"

namespace testing_support {

class ModuleTest : public ::testing::Test {
 protected:
  void SetUp() override {
    platform::AppPacket packet{&host, &host};
    ASSERT_EQ(zarvel::entryPoint(platform::AppMsg::kInitApp, &packet), 0);
  }
  void TearDown() override {
    platform::AppPacket packet{&host, &host};
    zarvel::entryPoint(platform::AppMsg::kUnloadApp, &packet);
  }

  // Runs a command and checks that it left the resource scope and the lock
  // as it found them.
  void run(const std::wstring& command) {
    host.runCommand(command);
    EXPECT_EQ(host.resourceDepth, 0) << "resource scope left open by a command";
    EXPECT_EQ(host.lockDepth, 0) << "document left locked by a command";
  }

  static platform::SelectionReply picked(std::vector<platform::ObjectId> ids) {
    return {platform::PromptStatus::Normal, std::move(ids)};
  }
  static platform::SelectionReply cancelled() { return {platform::PromptStatus::Cancel, {}}; }

  TestHost host;
};

}  // namespace testing_support
