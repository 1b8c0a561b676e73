// What the transcript of the two commands cannot show plainly: the decimals a
// value keeps in each type of field, and a run on ids handed over by a caller
// with LUPREC raised throughout.
#include <gtest/gtest.h>

#include <memory>

#include "ModuleFixture.h"
#include "oddata/OdAccess.h"
#include "values/ODSelectXYZ.h"
#include "values/OptionsSetProp.h"
#include "values/SetCoordinates.h"
#include "values/SetProperties.h"

namespace testing_support {
namespace {

using platform::DialogControl;
using platform::DialogModel;
using platform::ObjectId;
using platform::OdType;
using platform::OdValue;
using platform::Point3d;
using zarvel::ODSelectXYZ;
using zarvel::OptionsSetProp;

class SetGeometryTest : public ModuleTest {
 protected:
  void SetUp() override {
    ModuleTest::SetUp();
    ODSelectXYZ::forgetRemembered();
    platform::OdTableDef def;
    def.columns = {{L"I", OdType::Integer, L"", OdValue(0)},
                   {L"R", OdType::Real, L"", OdValue(0.0)},
                   {L"C", OdType::Character, L"", OdValue(L"")},
                   {L"P", OdType::Point, L"", OdValue(Point3d{})}};
    host.db.createOdTable(L"T", def);
  }

  template <typename E>
  ObjectId withRecord(std::unique_ptr<E> entity) {
    const ObjectId id = host.db.addEntity(std::move(entity), host.db.modelSpace());
    host.attach(id, L"T");
    return id;
  }
  ObjectId line(Point3d a, Point3d b) {
    auto e = std::make_unique<host::LineEntity>();
    e->start = a;
    e->end = b;
    return withRecord(std::move(e));
  }
  OdValue field(ObjectId id, int column) {
    return zarvel::recordsOfEntity(zarvel::getODContainer(), id).at(0).value(column);
  }

  // Chooses the table T and the field of each role by name, and types the
  // precisions into the edit boxes given.
  static void choose(DialogModel& d, int list,
                     std::initializer_list<std::pair<int, const wchar_t*>> fields,
                     std::initializer_list<std::pair<int, int>> precisions) {
    DialogControl& tables = d.control(list);
    tables.selected.assign(tables.items.size(), false);
    for (std::size_t i = 0; i < tables.items.size(); ++i)
      tables.selected[i] = tables.items[i] == L"T";
    d.onChange(list);
    for (const auto& [id, name] : fields) {
      DialogControl& combo = d.control(id);
      for (std::size_t i = 0; i < combo.items.size(); ++i) {
        if (combo.items[i] == name) combo.current = static_cast<int>(i);
      }
    }
    for (const auto& [id, value] : precisions) d.control(id).text = std::to_wstring(value);
  }
};

// The text handed over has six decimals whatever the precision, and each
// type of field takes from it what it can.
TEST_F(SetGeometryTest, CoordinateReachesEachFieldTypeThroughSixDecimals) {
  struct Case {
    double x;
    const wchar_t* field;
    int column;
    int precision;
    OdValue expected;
  } const cases[] = {
      {12.3456, L"C", 2, 2, OdValue(L"12.350000")},
      {12.3456789, L"C", 2, 8, OdValue(L"12.345679")},
      {12.3456789, L"R", 1, 8, OdValue(12.345679)},
      {2.5, L"R", 1, 0, OdValue(2.0)},  // the print rounds the tie to even
      {-12.9, L"I", 0, 1, OdValue(-12)},
      {1234.5, L"P", 3, 3, OdValue(Point3d{1234.5, 1234.5, 1234.5})},
  };
  for (const Case& c : cases) {
    const ObjectId id = line({c.x, 0, 0}, {c.x + 1, 1, 0});
    host.dialogAnswer = [&c](DialogModel& d) {
      choose(d, ODSelectXYZ::kIdTableList, {{ODSelectXYZ::kIdFieldX, c.field}},
             {{ODSelectXYZ::kIdPrecisionXY, c.precision}});
      d.control(ODSelectXYZ::kIdPlanMode).current = 0;  // First
      return platform::kIdOk;
    };
    std::vector<ObjectId> ids{id};
    zarvel::setFromCoordinates(ids);
    EXPECT_EQ(field(id, c.column), c.expected) << c.x << " at precision " << c.precision;
  }
}

TEST_F(SetGeometryTest, MeasureReachesEachFieldTypeDirectly) {
  auto rectangle = std::make_unique<host::LwPolylineEntity>();
  rectangle->vertices = {{0, 0}, {5, 0}, {5, 2.5}, {0, 2.5}};
  rectangle->closed = true;
  const ObjectId outline = withRecord(std::move(rectangle));  // length 15, area 12.5
  const ObjectId slanted = line({0, 0, 0}, {12.9, 0, 0});
  struct Case {
    ObjectId entity;
    const wchar_t* lengthField;
    const wchar_t* areaField;
    int precision;
    int column;
    OdValue expected;
  } const cases[] = {
      {slanted, L"I", L"", 3, 0, OdValue(12)},  // cut, not rounded
      {slanted, L"C", L"", 3, 2, OdValue(L"12.900")},
      {outline, L"", L"C", 3, 2, OdValue(L"12.5")},  // an area shows what tells it apart
      {outline, L"R", L"I", 0, 1, OdValue(15.0)},
      {outline, L"R", L"I", 0, 0, OdValue(12)},  // 12.5 printed without decimals
  };
  for (const Case& c : cases) {
    host.dialogAnswer = [&c](DialogModel& d) {
      choose(d, OptionsSetProp::kIdTableList,
             {{OptionsSetProp::kIdLength, c.lengthField}, {OptionsSetProp::kIdArea, c.areaField}},
             {{OptionsSetProp::kIdPrecision, c.precision}});
      return platform::kIdOk;
    };
    std::vector<ObjectId> ids{c.entity};
    zarvel::setFromProperties(ids);
    EXPECT_EQ(field(c.entity, c.column), c.expected) << c.lengthField << c.areaField;
  }
}

// Run on a caller's ids: the dialog offers only their tables, nothing is
// asked of the user, and LUPREC stands at 8 until the body returns, also
// when the dialog is cancelled.
TEST_F(SetGeometryTest, CallerIdsLimitTablesAndLuprecIsRestored) {
  platform::OdTableDef other;
  other.columns = {{L"N", OdType::Integer, L"", OdValue(0)}};
  host.db.createOdTable(L"Unused", other);
  const ObjectId id = line({1, 2, 3}, {3, 4, 5});
  for (const int button : {platform::kIdOk, platform::kIdCancel}) {
    for (const bool coordinates : {true, false}) {
      std::vector<std::wstring> offered;
      short luprecInDialog = 0;
      host.dialogAnswer = [&](DialogModel& d) {
        offered =
            d.control(coordinates ? ODSelectXYZ::kIdTableList : OptionsSetProp::kIdTableList).items;
        luprecInDialog = std::get<short>(host.vars[L"LUPREC"]);
        choose(d, coordinates ? ODSelectXYZ::kIdTableList : OptionsSetProp::kIdTableList,
               {{coordinates ? ODSelectXYZ::kIdFieldX : OptionsSetProp::kIdLength, L"R"}}, {});
        return button;
      };
      std::vector<ObjectId> ids{id};
      coordinates ? zarvel::setFromCoordinates(ids) : zarvel::setFromProperties(ids);
      EXPECT_EQ(offered, std::vector<std::wstring>{L"T"});
      EXPECT_EQ(luprecInDialog, 8);
      EXPECT_EQ(std::get<short>(host.vars[L"LUPREC"]), 4);
    }
  }
  EXPECT_EQ(host.selectionPrompts, 0);
  EXPECT_EQ(host.lockDepth, 0);
  // The last OK measured the line's length, 2 * sqrt(3) at LUPREC's 4 decimals.
  EXPECT_EQ(field(id, 1), OdValue(3.4641));
  EXPECT_EQ(host.printed,
            L"Completed: 1 out of 1\nCompleted (Length/Area/Volume): 1/0/0 out of 1\n");
}

}  // namespace
}  // namespace testing_support
