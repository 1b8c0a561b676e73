// The commands palette: the lookup of a command by its label, what a
// double-click on each kind of item does, and the palette's life from the
// first ZARVEL_CTL to unload.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "frame/CommandsPalette.h"

namespace testing_support {
namespace {

using zarvel::MenuNode;

TEST(CommandsPaletteTest, FindCommandByLabelTakesTheFirstMatchAndLabelsAreOnlyKeys) {
  const std::vector<MenuNode> menu = zarvel::commandsMenu();
  const struct {
    const wchar_t* label;
    const wchar_t* command;  // null: not found
  } cases[] = {
      {L"Covert to 2D polylines", L"ZARVEL_2POLY"},
      {L"Find entities with specific OD values", L"ZARVEL_HAS_SPECIFIC_VALUES"},
      {L"Explication", L"ZARVEL_EXPL"},
      {L"OD table", L"ZARVEL_TABLE"},  // a node without leaves is its own command
      {L"About", L"ZARVEL_ABOUT"},
      {L"OD management", nullptr},  // a heading with leaves is none
      {L"break", nullptr},          // labels match exactly
      {L"", nullptr},
  };
  for (const auto& c : cases) {
    std::pair<std::wstring, std::wstring> found;
    EXPECT_EQ(zarvel::findCommandByLabel(c.label, menu, found), c.command != nullptr) << c.label;
    if (c.command != nullptr) {
      EXPECT_EQ(found, std::make_pair(std::wstring(c.command), std::wstring(c.label)));
    }
  }
  // Nine headings, 35 commands: the palette, the point pick and the template stay out.
  EXPECT_EQ(menu.size(), 9u);

  // The walk goes down into a node's children after its leaves; the first match wins.
  MenuNode inner{L"", {{L"INNER", L"X"}, {L"LATER", L"Y"}}, L"Inner", {}};
  MenuNode outer{L"", {{L"OUTER", L"Z"}}, L"Outer", {inner}};
  const std::vector<MenuNode> nested = {outer, MenuNode{L"LAST", {}, L"Y", {}}};
  std::pair<std::wstring, std::wstring> found;
  ASSERT_TRUE(zarvel::findCommandByLabel(L"Y", nested, found));
  EXPECT_EQ(found.first, L"LATER");
}

TEST_F(ModuleTest, DoubleClickEndsTheRunningCommandAndQueuesOnlyALeafsCommand) {
  run(L"ZARVEL_CTL");
  run(L"ZARVEL_CTL");
  ASSERT_EQ(host.openPalettes.size(), 1u);  // made once, shown again
  auto& palette = static_cast<zarvel::CommandsPalette&>(*host.openPalettes.front());
  for (const wchar_t* label : {L"Covert to 2D polylines", L"OD management", L"", L"About"}) {
    palette.onDoubleClick(label);
  }
  EXPECT_EQ(host.posted, std::vector<std::wstring>(4, L"CANCELCMD"));
  EXPECT_EQ(host.sent, (std::vector<std::wstring>{L"ZARVEL_2POLY\n", L"ZARVEL_ABOUT\n"}));

  // Unload takes the palette away before the model goes.
  platform::AppPacket packet{&host, &host};
  zarvel::entryPoint(platform::AppMsg::kUnloadApp, &packet);
  EXPECT_TRUE(host.openPalettes.empty());
  zarvel::entryPoint(platform::AppMsg::kInitApp, &packet);
  run(L"ZARVEL_CTL");
  EXPECT_EQ(host.openPalettes.size(), 1u);
}

}  // namespace
}  // namespace testing_support
