// The detach commands. Their transcripts show what they offer, detach and
// count; here are the dialog's own buttons and the document lock.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "records/PGUIODList.h"

namespace testing_support {
namespace {

using Names = std::vector<std::wstring>;
using zarvel::PGUIODList;

using DetachTest = ModuleTest;

TEST_F(DetachTest, DialogToggleSelectsAllThenNothing) {
  Names names = {L"b", L"A", L"c"};
  PGUIODList dialog(&names);
  dialog.onInit();
  auto& list = dialog.control(PGUIODList::kIdTableList);
  EXPECT_EQ(list.items, (Names{L"A", L"b", L"c"}));
  list.selected[1] = true;
  EXPECT_FALSE(dialog.onButton(PGUIODList::kIdToggleAll));
  EXPECT_EQ(list.selectedCount(), 3);
  EXPECT_FALSE(dialog.onButton(PGUIODList::kIdToggleAll));
  EXPECT_EQ(list.selectedCount(), 0);
  list.selected[2] = true;
  list.selected[0] = true;
  EXPECT_TRUE(dialog.onButton(platform::kIdOk));
  // The caller's order stays; only unselected names go.
  EXPECT_EQ(names, (Names{L"A", L"c"}));
}

TEST_F(DetachTest, RmAllLocksTheDrawingOnlyWhenThereAreEntitiesToChange) {
  host.defineTable(L"Roads");
  host.messageBoxAnswers = {platform::kIdYes, platform::kIdYes};
  host.pickFirst = {host.addOnLayer(L"F", &host::Layer::frozen)};
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.maxLockDepth, 0);
  const ObjectId e = host.addLine();
  host.attach(e, L"Roads");
  host.pickFirst = {e};
  run(L"ZARVEL_RM_ALL");
  EXPECT_EQ(host.printed, L"Completed: 1 out of 1\n");
  EXPECT_EQ(host.maxLockDepth, 1);
}

}  // namespace
}  // namespace testing_support
