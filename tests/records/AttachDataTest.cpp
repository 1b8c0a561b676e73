// The "Attach/detach OD" dialog and its command, for what the transcripts
// can't show: the scratch entity gone, the cut of long values, the first
// table when the remembered one is gone, the progress meter and the cleared
// pick-first set.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "records/AttachOD.h"

namespace testing_support {
namespace {

using platform::OdColumnDef;
using platform::OdType;
using platform::OdValue;
using zarvel::AttachOD;
using Names = std::vector<std::wstring>;

class AttachDataTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    platform::OdTableDef zeta;
    zeta.columns = {OdColumnDef{L"I", OdType::Integer, L"", OdValue(7)},
                    OdColumnDef{L"R", OdType::Real, L"", OdValue(1.1234567)},
                    OdColumnDef{L"C", OdType::Character, L"", OdValue(L"x")},
                    OdColumnDef{L"P", OdType::Point, L"", OdValue(platform::Point3d{1, 2, 3})}};
    host.db.createOdTable(L"Zeta", zeta);
    host.defineTable(L"CNTR_net");
    host.defineTable(L"Alpha");
  }

  static void choose(AttachOD& dialog, std::size_t item) {
    platform::DialogControl& list = dialog.control(AttachOD::kIdTableList);
    list.selected.assign(list.items.size(), false);
    list.selected[item] = true;
    dialog.onChange(AttachOD::kIdTableList);
  }
};

TEST_F(AttachDataTest, DialogCutsLongValuesAndFallsBackToTheFirstTable) {
  {
    AttachOD dialog;
    dialog.onInit();
    choose(dialog, 1);
    EXPECT_EQ(AttachOD::lastODTableName(), L"Zeta");
    ASSERT_EQ(dialog.grid.GetItemCount(), 4);
    EXPECT_EQ(dialog.grid.GetItemText(1, 1), L"1.123457");
    // The scratch entity that gave the defaults is gone again.
    EXPECT_TRUE(host.db.blockEntities(host.db.modelSpace()).empty());
    EXPECT_TRUE(dialog.grid.commitCellEdit(2, 1, std::wstring(300, L'v')));
    EXPECT_TRUE(dialog.onButton(AttachOD::kIdDetach));
    EXPECT_EQ(dialog.mode, AttachOD::kModeDetach);
    EXPECT_EQ(dialog.fieldNames, (Names{L"I", L"R", L"C", L"P"}));
    EXPECT_EQ(dialog.fieldValues[2], std::wstring(255, L'v'));
  }
  ASSERT_EQ(host.project().odContainer().removeTable(L"Zeta"), platform::Status::Ok);
  AttachOD without;
  without.onInit();
  EXPECT_EQ(AttachOD::lastODTableName(), L"Alpha");
}

TEST_F(AttachDataTest, CommandStepsTheMeterPerEntityAndClearsThePickFirstSet) {
  host.dialogAnswer = [](platform::DialogModel&) { return AttachOD::kIdAttach; };
  const ObjectId locked = host.addOnLayer(L"L", &host::Layer::locked);
  host.pickFirst = {host.addLine(), locked, ObjectId()};
  run(L"ZARVEL_ADEATTACHDATA");
  EXPECT_EQ(host.printed, L"Completed: 2\n");
  EXPECT_EQ(host.progressMax, 3);
  EXPECT_EQ(host.progressSteps, 3);
  EXPECT_TRUE(host.statusBarRestored);
  EXPECT_TRUE(host.pickFirst.empty());
  EXPECT_EQ(host.recordsOn(locked), L"Alpha");
}

}  // namespace
}  // namespace testing_support
