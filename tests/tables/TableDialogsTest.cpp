// The report box's text rule and the removal dialog's lists and button, which
// the prompts of a transcript cannot press.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "tables/ODTextBox.h"
#include "tables/OptionsRmUnused.h"

namespace testing_support {
namespace {

using Names = std::vector<std::wstring>;
using zarvel::ODTextBox;
using zarvel::OptionsRmUnused;

TEST(ODTextBoxTest, LinesEndInCrLfAndWhatFollowsTheLastLfIsDropped) {
  const struct {
    const wchar_t* source;
    const wchar_t* shown;
  } cases[] = {
      {L"one\ntwo\n", L"one\r\ntwo\r"},
      {L"one\ntwo", L"one\r"},
      {L"no line feed", L""},
      {L"", L""},
      {L"\n\n", L"\r\n\r"},
      {L"a\r\nb\n", L"a\r\r\nb\r"},
  };
  for (const auto& c : cases) {
    ODTextBox box;
    box.setText(L"stale\n");
    box.setText(c.source);
    EXPECT_EQ(box.text(), c.shown) << "source: " << testing::PrintToString(c.source);
  }
  ODTextBox box;
  box.setSize(350, 400);
  EXPECT_EQ(box.size().width, 350);
  EXPECT_EQ(box.control(ODTextBox::kIdText).rect, (platform::DialogRect{1, 1, 349, 399}));
}

class OptionsRmUnusedTest : public ModuleTest {};

TEST_F(OptionsRmUnusedTest, ListsHideTopologyTablesAndTheButtonTogglesTheSelection) {
  OptionsRmUnused dialog({L"zeta", L"TPMID_x", L"Alpha", L"beta"}, {L"Roads", L"CNTR_a", L"apex"});
  dialog.onInit();
  const platform::DialogControl& used = dialog.control(OptionsRmUnused::kIdUsedList);
  platform::DialogControl& unused = dialog.control(OptionsRmUnused::kIdUnusedList);
  EXPECT_EQ(used.items, (Names{L"apex", L"Roads"}));
  EXPECT_TRUE(used.readOnly);
  EXPECT_EQ(unused.items, (Names{L"Alpha", L"beta", L"zeta"}));

  unused.selected = {false, true, false};
  EXPECT_FALSE(dialog.onButton(OptionsRmUnused::kIdToggleAll));
  EXPECT_EQ(unused.selected, (std::vector<bool>{false, false, false}));
  EXPECT_FALSE(dialog.onButton(OptionsRmUnused::kIdToggleAll));
  EXPECT_EQ(unused.selected, (std::vector<bool>{true, true, true}));

  unused.selected = {true, false, true};
  EXPECT_TRUE(dialog.onButton(platform::kIdOk));
  EXPECT_EQ(dialog.chosen(), (Names{L"Alpha", L"zeta"}));
}

}  // namespace
}  // namespace testing_support
