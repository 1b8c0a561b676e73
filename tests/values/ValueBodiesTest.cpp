// The bodies as the table editor calls them, with ids, and the counter's
// walk: what the transcripts can't reach or would need many drawings for.
#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "oddata/OdAccess.h"
#include "values/AddValues.h"
#include "values/CreateIDs.h"
#include "values/ReplaceValues.h"

namespace testing_support {
namespace {

using platform::OdColumnDef;
using platform::OdType;
using platform::OdValue;
using Names = std::vector<std::wstring>;

class ValueBodiesTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    platform::OdTableDef def;
    def.columns = {OdColumnDef{L"I", OdType::Integer, L"", OdValue(0)},
                   OdColumnDef{L"R", OdType::Real, L"", OdValue(0.0)},
                   OdColumnDef{L"C", OdType::Character, L"", OdValue(L"")},
                   OdColumnDef{L"P", OdType::Point, L"", OdValue(platform::Point3d{})}};
    host.db.createOdTable(L"T", def);
    host.defineTable(L"Other");
    zarvel::OptionsWild::forgetRemembered();
  }
  void TearDown() override {
    zarvel::OptionsWild::forgetRemembered();
    ModuleTest::TearDown();
  }

  // Attaches a record of T holding the character value.
  void attachText(ObjectId entity, const std::wstring& text) {
    auto table = host.project().odContainer().getTable(L"T");
    platform::OdRecord record;
    table->initRecord(record);
    record.value(2) = text;
    ASSERT_EQ(table->addRecord(record, entity), platform::Status::Ok);
  }
  std::vector<OdValue> column(ObjectId entity, int index) {
    std::vector<OdValue> values;
    for (const platform::OdRecord& r :
         zarvel::recordsOfEntity(host.project().odContainer(), entity)) {
      if (r.tableName() == L"T") values.push_back(r.value(index));
    }
    return values;
  }
};

TEST_F(ValueBodiesTest, CounterRunsFromTheLastEntityAndGivesEachRecordItsOwnNumber) {
  const ObjectId a = host.addLine();
  const ObjectId b = host.addLine();
  const ObjectId c = host.addLine();
  for (ObjectId id : {a, b, b, c}) attachText(id, L"old");
  const std::vector<ObjectId> ids = {a, b, c};
  EXPECT_EQ(zarvel::writeIDs(ids, L"T", L"I", L"P-", L"/1", 10), 4);
  EXPECT_EQ(column(c, 0), (std::vector<OdValue>{OdValue(10)}));
  EXPECT_EQ(column(b, 0), (std::vector<OdValue>{OdValue(11), OdValue(12)}));
  EXPECT_EQ(column(a, 0), (std::vector<OdValue>{OdValue(13)}));
  EXPECT_EQ(zarvel::writeIDs(ids, L"T", L"C", L"P-", L"/1", 32767), 4);
  EXPECT_EQ(column(a, 2), (std::vector<OdValue>{OdValue(L"P-32770/1")}));
  EXPECT_EQ(zarvel::writeIDs(ids, L"T", L"R", L"", L"", 1), 0);
  EXPECT_EQ(zarvel::writeIDs(ids, L"T", L"P", L"", L"", 1), 0);
  EXPECT_EQ(zarvel::writeIDs(ids, L"T", L"i", L"", L"", 1), 0);  // names are exact
  EXPECT_EQ(zarvel::writeIDs(ids, L"None", L"I", L"", L"", 1), 0);
}

TEST_F(ValueBodiesTest, FieldChoiceProposesTheNumberAfterTheHighest) {
  attachText(host.addLine(), L"A-41");
  attachText(host.addLine(), L"B-9x");
  zarvel::OptionsWild dialog({});
  dialog.onInit();
  ASSERT_EQ(dialog.control(zarvel::OptionsWild::kIdTableList).items, (Names{L"Other", L"T"}));
  platform::DialogControl& list = dialog.control(zarvel::OptionsWild::kIdTableList);
  list.selected = {false, true};
  dialog.onChange(zarvel::OptionsWild::kIdTableList);
  platform::DialogControl& field = dialog.control(zarvel::OptionsWild::kIdField);
  field.current = 2;
  dialog.onChange(zarvel::OptionsWild::kIdField);
  EXPECT_EQ(dialog.control(zarvel::OptionsWild::kIdFirst).text, L"42");
  EXPECT_EQ(zarvel::highestNumberInField(L"T", L"C"), 41);
  // Single digits at the ends count as no number.
  platform::OdTableDef sevens;
  sevens.columns = {OdColumnDef{L"S", OdType::Character, L"", OdValue(L"")}};
  host.db.createOdTable(L"Sevens", sevens);
  host.attach(host.addLine(), L"Sevens");
  auto table = host.project().odContainer().getTable(L"Sevens");
  ASSERT_EQ(table->addRecord(platform::OdRecord(L"Sevens", {OdValue(L"A7")}), host.addLine()),
            platform::Status::Ok);
  EXPECT_EQ(zarvel::highestNumberInField(L"Sevens", L"S"), 0);
}

TEST_F(ValueBodiesTest, EditorRowsOnLockedLayersAreDroppedBeforeTheDialog) {
  const ObjectId open = host.addLine();
  host.attach(open, L"Other");
  const ObjectId locked = host.addOnLayer(L"L", &host::Layer::locked);
  attachText(locked, L"x");
  attachText(host.addLine(), L"y");
  Names offered;
  host.dialogAnswer = [&](platform::DialogModel& dialog) {
    offered = dialog.control(zarvel::OptionsWild::kIdTableList).items;
    return platform::kIdCancel;
  };
  // Nothing left: the drawing's tables, and the prompt would come.
  std::vector<ObjectId> rows = {locked};
  zarvel::createIDs(rows);
  EXPECT_EQ(offered, (Names{L"Other", L"T"}));

  // Something left: only its tables, and no prompt.
  host.dialogAnswer = [&](platform::DialogModel& dialog) {
    auto& replace = static_cast<zarvel::OptionsReplace&>(dialog);
    offered.clear();
    for (int row = 0; row < replace.tableGrid().GetItemCount(); ++row) {
      offered.push_back(replace.tableGrid().GetItemText(row, 0));
    }
    replace.tableGrid().SetRowSelected(0, true);
    replace.fieldGrid().SetRowSelected(0, true);  // ticks follow the rows chosen
    replace.control(zarvel::OptionsReplace::kIdSearch).text = L"*";
    replace.control(zarvel::OptionsReplace::kIdReplace).text = L"5";
    return platform::kIdOk;
  };
  rows = {locked, open, open};
  zarvel::replaceValues(rows);
  EXPECT_EQ(offered, (Names{L"Other"}));
  EXPECT_EQ(host.selectionPrompts, 0);
  // The editor may name an entity twice; the replace visits it twice.
  EXPECT_EQ(host.printed, L"Completed: 2\n");
  EXPECT_EQ(host.recordsOn(open), L"Other5");
}

}  // namespace
}  // namespace testing_support
