// Tests of Object Data values, their text form and column lookup by name.
#include "platform/OdValue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "platform/OdTypes.h"

namespace platform {
namespace {

TEST(OdValueTest, ZeroOfEachType) {
  for (const OdValue& zero :
       {OdValue(std::int32_t{0}), OdValue(0.0), OdValue(L""), OdValue(Point3d{}), OdValue()}) {
    EXPECT_EQ(OdValue::zeroOf(zero.type()), zero) << static_cast<int>(zero.type());
  }
  // Equality is exact: the integer 0 is not the real 0.
  EXPECT_NE(OdValue::zeroOf(OdType::Integer), OdValue::zeroOf(OdType::Real));
}

TEST(OdValueTest, IntegerAndRealConvertIntoEachOther) {
  EXPECT_EQ(OdValue(std::int32_t{-12}).asReal(), -12.0);
  EXPECT_EQ(OdValue(1.9).asInt(), 1);
  EXPECT_EQ(OdValue(-1.9).asInt(), -1);  // toward zero, not down
  EXPECT_EQ(OdValue(1e10).asInt(), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(OdValue(-1e10).asInt(), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(OdValue(2147483647.9).asInt(), 2147483647);
  EXPECT_EQ(OdValue(std::numeric_limits<double>::quiet_NaN()).asInt(), 0);
}

TEST(OdValueTest, OtherConversionsGiveTheZeroOfTheAskedType) {
  const OdValue text(L"12");
  const OdValue point(Point3d{1, 2, 3});
  EXPECT_EQ(text.asInt(), 0);
  EXPECT_EQ(text.asReal(), 0.0);
  EXPECT_EQ(text.asText(), L"12");
  EXPECT_EQ(point.asInt(), 0);
  EXPECT_EQ(point.asText(), L"");
  EXPECT_EQ(point.asPoint(), (Point3d{1, 2, 3}));
  EXPECT_EQ(OdValue(3.5).asText(), L"");
  EXPECT_EQ(OdValue(3.5).asPoint(), Point3d{});
  EXPECT_EQ(OdValue().asReal(), 0.0);
}

TEST(OdValueTest, AssignmentChangesTheType) {
  OdValue v(std::int32_t{5});
  v = 2.5;
  EXPECT_EQ(v.type(), OdType::Real);
  v = L"x";
  EXPECT_EQ(v.type(), OdType::Character);
  EXPECT_EQ(v.asText(), L"x");
}

TEST(OdValueTest, TextFormOfEachType) {
  EXPECT_EQ(valueText(OdValue(std::int32_t{-42})), L"-42");
  EXPECT_EQ(valueText(OdValue(std::numeric_limits<std::int32_t>::min())), L"-2147483648");
  EXPECT_EQ(valueText(OdValue(1.5)), L"1.5");
  EXPECT_EQ(valueText(OdValue(2.0)), L"2.0");
  EXPECT_EQ(valueText(OdValue(0.0)), L"0.0");
  EXPECT_EQ(valueText(OdValue(-0.125)), L"-0.125");
  EXPECT_EQ(valueText(OdValue(100.0)), L"100.0");  // zeros before the point stay
  EXPECT_EQ(valueText(OdValue(0.1)), L"0.1");
  EXPECT_EQ(valueText(OdValue(1.0 / 3.0)), L"0.333333333333");
  EXPECT_EQ(valueText(OdValue(1e-13)), L"0.0");
  EXPECT_EQ(valueText(OdValue(1e20)), L"100000000000000000000.0");
  EXPECT_EQ(valueText(OdValue(std::numeric_limits<double>::infinity())), L"inf");
  EXPECT_EQ(valueText(OdValue(L"  a b ")), L"  a b ");
  EXPECT_EQ(valueText(OdValue(Point3d{1, -2.5, 1e-7})), L"1.000000,-2.500000,0.000000");
  EXPECT_EQ(valueText(OdValue()), L"");
}

OdTableDef tableOf(std::initializer_list<const wchar_t*> names) {
  OdTableDef def;
  for (const wchar_t* name : names) {
    OdColumnDef column;
    column.name = name;
    def.columns.push_back(column);
  }
  return def;
}

TEST(OdTableDefTest, ColumnIndexPrefersAnExactMatch) {
  const OdTableDef def = tableOf({L"ID", L"Name", L"name", L"\u00C9TAT"});
  EXPECT_EQ(def.columnIndex(L"ID"), 0);
  EXPECT_EQ(def.columnIndex(L"name"), 2);  // exact, though "Name" comes first
  EXPECT_EQ(def.columnIndex(L"Name"), 1);
  EXPECT_EQ(def.columnIndex(L"NAME"), 1);  // else the first case-insensitive match
  EXPECT_EQ(def.columnIndex(L"id"), 0);
  EXPECT_EQ(def.columnIndex(L"\u00E9tat"), 3);
  EXPECT_EQ(def.columnIndex(L"NAMES"), -1);
  EXPECT_EQ(def.columnIndex(L""), -1);
  EXPECT_EQ(tableOf({}).columnIndex(L"ID"), -1);
}

}  // namespace
}  // namespace platform
