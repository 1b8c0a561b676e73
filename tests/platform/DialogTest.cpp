// Tests of the shared behaviour of dialog models and their controls.
#include "platform/Dialog.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

class TwoButtons : public DialogModel {
 public:
  TwoButtons() : DialogModel(L"Test") {
    addControl(DialogControl::button(kIdOk, L"OK", true));
    addControl(DialogControl::button(10, L"Apply", false));
    addControl(DialogControl::listBox(11, L"", false, false));
  }
};

TEST(DialogControlTest, SortedItemsIgnoreCaseThenCompareCodeUnits) {
  DialogControl list;
  list.sorted = true;
  list.current = 2;
  list.selected = {true};
  list.setItems(
      {L"beta", L"Alpha", L"\u00C9cole", L"alpha", L"ALPHA", L"Beta", L"_x", L"\u00E9t\u00E9"});
  // Compared lower-cased, "_" (0x5F) goes before the letters.
  EXPECT_EQ(list.items, (std::vector<std::wstring>{L"_x", L"ALPHA", L"Alpha", L"alpha", L"Beta",
                                                   L"beta", L"\u00C9cole", L"\u00E9t\u00E9"}));
  EXPECT_EQ(list.selected, std::vector<bool>(8, false));
  EXPECT_EQ(list.current, -1);
  EXPECT_EQ(list.selectedCount(), 0);
}

TEST(DialogControlTest, UnsortedItemsKeepTheirOrder) {
  DialogControl list;
  list.setItems({L"b", L"A", L"a"});
  EXPECT_EQ(list.items, (std::vector<std::wstring>{L"b", L"A", L"a"}));
  list.selected[0] = list.selected[2] = true;
  EXPECT_EQ(list.selectedCount(), 2);
  list.setItems({});
  EXPECT_TRUE(list.selected.empty());
}

TEST(DialogModelTest, ControlsByIdAndClosingButtons) {
  TwoButtons dialog;
  EXPECT_EQ(dialog.control(11).kind, ControlKind::ListBox);
  dialog.control(11).label = L"Tables";
  EXPECT_EQ(static_cast<const DialogModel&>(dialog).control(11).label, L"Tables");
  EXPECT_TRUE(dialog.onButton(kIdOk));
  EXPECT_FALSE(dialog.onButton(10));
  EXPECT_DEATH(dialog.control(99), "");
}

}  // namespace
}  // namespace platform
