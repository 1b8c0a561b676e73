// The value search over records: the fields common to chosen tables, the test
// of an entity's records against a condition, and the search that combines
// them, which must answer as the tests it is built from.
#include "search/ValueSearch.h"

#include <gtest/gtest.h>

#include "ModuleFixture.h"
#include "platform/Text.h"
#include "search/SelectByOD.h"

namespace testing_support {
namespace {

using platform::OdColumnDef;
using platform::OdType;
using platform::OdValue;
using zarvel::Condition;
using zarvel::SelectByOD;
using Names = std::vector<std::wstring>;

class ValueSearchTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    table(L"Roads", {{L"ID", OdType::Integer}, {L"NAME", OdType::Character}});
    // Its name and columns differ from the first table's only in case.
    table(L"roads", {{L"id", OdType::Integer}, {L"Name", OdType::Character}, {L"W", OdType::Real}});
    table(L"Parcels", {{L"ID", OdType::Integer}, {L"AREA", OdType::Real}});
  }

  void table(const std::wstring& name,
             const std::vector<std::pair<std::wstring, OdType>>& columns) {
    platform::OdTableDef definition;
    for (const auto& [column, type] : columns) {
      definition.columns.push_back(OdColumnDef{column, type, L"", OdValue::zeroOf(type)});
    }
    ASSERT_FALSE(host.db.createOdTable(name, definition).isNull());
  }

  void record(ObjectId entity, const std::wstring& table, std::vector<OdValue> values) {
    auto t = host.project().odContainer().getTable(table);
    ASSERT_TRUE(t && t->addRecord(platform::OdRecord(table, std::move(values)), entity) ==
                         platform::Status::Ok);
  }
};

TEST_F(ValueSearchTest, CommonFieldsKeepTheFirstTablesOrderAndSpellingIgnoringCase) {
  using zarvel::commonFields;
  EXPECT_EQ(commonFields({}), Names{});
  EXPECT_EQ(commonFields({L"Roads"}), (Names{L"ID", L"NAME"}));
  EXPECT_EQ(commonFields({L"Roads", L"roads"}), (Names{L"ID", L"NAME"}));
  EXPECT_EQ(commonFields({L"roads", L"Roads"}), (Names{L"id", L"Name"}));
  EXPECT_EQ(commonFields({L"roads", L"Parcels", L"Roads"}), (Names{L"id"}));
  EXPECT_EQ(commonFields({L"Gone"}), Names{});
  EXPECT_EQ(commonFields({L"Roads", L"Gone"}), Names{});
}

TEST_F(ValueSearchTest, SearchAnswersAsEveryConditionOnAnyTableWould) {
  const ObjectId twoRoads = host.addLine();
  record(twoRoads, L"Roads", {OdValue(1), OdValue(L"a")});
  record(twoRoads, L"Roads", {OdValue(2), OdValue(L"b")});
  const ObjectId lower = host.addLine();
  record(lower, L"roads", {OdValue(2), OdValue(L"B"), OdValue(0.5)});
  const ObjectId parcel = host.addLine();
  record(parcel, L"Parcels", {OdValue(2), OdValue(1.0)});
  const ObjectId bare = host.addLine();
  const std::vector<ObjectId> entities = {twoRoads, lower, parcel, bare};

  const struct {
    Names tables;
    std::vector<Condition> conditions;
    bool extended;
    std::vector<bool> kept;  // per entity above
  } cases[] = {
      // The second record may pass; "*" still asks for a record of a table.
      {{L"Roads"}, {{L"ID", L"2"}}, true, {true, false, false, false}},
      {{L"Roads"}, {{L"ID", L"3"}}, true, {false, false, false, false}},
      {{L"Roads"}, {{L"ID", L"*"}}, true, {true, false, false, false}},
      {{L"Roads"}, {{L"AREA", L"*"}}, true, {true, false, false, false}},
      {{L"Roads"}, {{L"AREA", L"1"}}, true, {false, false, false, false}},
      // One passing table is enough, and each table is asked for the spelling
      // shown, which a table finds ignoring case when it has no exact match.
      {{L"Roads", L"roads", L"Parcels"}, {{L"ID", L">1"}}, true, {true, true, true, false}},
      {{L"roads"}, {{L"NAME", L"b"}}, true, {false, false, false, false}},
      {{L"roads"}, {{L"NAME", L"b"}}, false, {false, true, false, false}},
      // Conditions all hold, each on a table of its own if need be.
      {{L"Roads", L"roads"}, {{L"ID", L"2"}, {L"NAME", L"a"}}, true, {true, false, false, false}},
      {{L"Roads", L"roads"},
       {{L"ID", L"<3"}, {L"NAME", L"<>b"}},
       true,
       {true, false, false, false}},
      // No conditions keep everything, records or not.
      {{L"Roads"}, {}, true, {true, true, true, true}},
  };
  for (const auto& c : cases) {
    zarvel::ValueSearch search(c.tables, c.conditions, c.extended);
    for (std::size_t e = 0; e < entities.size(); ++e) {
      bool expected = true;
      for (const Condition& condition : c.conditions) {
        bool any = false;
        for (const std::wstring& t : c.tables) {
          any = any || zarvel::entityMatchesCondition(t, entities[e], condition, c.extended);
        }
        expected = expected && any;
      }
      EXPECT_EQ(expected, c.kept[e]) << "case of " << c.conditions.size() << " conditions, " << e;
      EXPECT_EQ(search.matches(entities[e]), c.kept[e]) << e;
    }
    std::vector<ObjectId> ids = entities;
    search.filter(ids);
    EXPECT_EQ(ids.size(), static_cast<std::size_t>(std::count(c.kept.begin(), c.kept.end(), true)));
  }
}

TEST_F(ValueSearchTest, DialogRemembersItsSizeAndTheExtendedBoxUntilTheModuleUnloads) {
  {
    SelectByOD dialog({}, true);
    EXPECT_EQ(dialog.size().width, 800);
    dialog.onInit();
    EXPECT_TRUE(dialog.control(SelectByOD::kIdExtended).checked);
    dialog.control(SelectByOD::kIdExtended).checked = false;
    dialog.onSize({900, 400});
    EXPECT_EQ(dialog.control(SelectByOD::kIdValuesGrid).rect,
              (platform::DialogRect{210, 5, 685, 363}));
    EXPECT_EQ(dialog.control(platform::kIdOk).rect, (platform::DialogRect{323, 373, 125, 22}));
    EXPECT_EQ(dialog.valuesGrid().GetColumnWidth(1), 342);
    EXPECT_TRUE(dialog.onButton(platform::kIdOk));
  }
  SelectByOD again({}, false);
  again.onInit();
  EXPECT_EQ(again.size().width, 900);
  EXPECT_FALSE(again.control(SelectByOD::kIdExtended).checked);
  EXPECT_FALSE(again.control(SelectByOD::kIdExtended).visible);
  EXPECT_FALSE(SelectByOD::extended());

  platform::AppPacket packet{&host, &host};
  zarvel::entryPoint(platform::AppMsg::kUnloadApp, &packet);
  EXPECT_TRUE(SelectByOD::extended());
  EXPECT_EQ(SelectByOD({}, true).size().height, 300);
  ASSERT_EQ(zarvel::entryPoint(platform::AppMsg::kInitApp, &packet), 0);
}

}  // namespace
}  // namespace testing_support
