// The packed record list keeps every value exactly through its edits.
#include <gtest/gtest.h>

#include "host/db/OdRecordList.h"

namespace {

using host::OdRecordList;
using platform::OdValue;
using platform::Point3d;

std::vector<OdValue> valuesAt(const OdRecordList& list, int index) {
  auto pos = list.begin();
  for (int i = 0; i < index; ++i) pos = list.next(pos);
  std::vector<OdValue> values;
  list.valuesAt(pos, values);
  return values;
}

TEST(OdRecordList, EveryTypeRoundTripsExactly) {
  const std::vector<OdValue> values = {
      OdValue(-2147483647 - 1),    OdValue(0.1),  OdValue(-0.0),
      OdValue(L""),                OdValue(L"Zürich \U0001F600 €"),
      OdValue(Point3d{1e300, -2.5, 3}), OdValue()};
  OdRecordList list;
  list.append(7, values);
  list.append(3, {});
  EXPECT_EQ(list.count(), 2);
  EXPECT_EQ(list.tableAt(list.begin()), 7u);
  EXPECT_EQ(valuesAt(list, 0), values);
  EXPECT_TRUE(valuesAt(list, 1).empty());
  EXPECT_EQ(list.tableAt(list.next(list.begin())), 3u);
  // One value read alone is the value read with the others, after a record's
  // text as read too; past the last there is none.
  list.append(5, values, "kept text");
  const auto third = list.next(list.next(list.begin()));
  for (int i = 0; i < static_cast<int>(values.size()); ++i) {
    OdValue one(L"stale");
    EXPECT_TRUE(list.valueAt(third, i, one)) << i;
    EXPECT_EQ(one, values[static_cast<std::size_t>(i)]) << i;
  }
  OdValue none;
  EXPECT_FALSE(list.valueAt(third, static_cast<int>(values.size()), none));
  EXPECT_FALSE(list.valueAt(third, -1, none));
  EXPECT_FALSE(list.valueAt(list.next(list.begin()), 0, none));
}

TEST(OdRecordList, RemoveAndReplaceKeepTheOthersInPlace) {
  OdRecordList list;
  for (int i = 0; i < 4; ++i) list.append(static_cast<std::uint32_t>(i), {OdValue(i)});
  const auto second = list.next(list.begin());
  list.remove(second);
  EXPECT_EQ(list.count(), 3);
  EXPECT_EQ(list.tableAt(second), 2u);
  list.replace(second, 9, {OdValue(L"a longer value than before"), OdValue(1.5)});
  EXPECT_EQ(valuesAt(list, 1), (std::vector<OdValue>{OdValue(L"a longer value than before"),
                                                     OdValue(1.5)}));
  EXPECT_EQ(valuesAt(list, 2), (std::vector<OdValue>{OdValue(3)}));
  EXPECT_EQ(valuesAt(list, 0), (std::vector<OdValue>{OdValue(0)}));
  // At its own length a record is rewritten in place; a copy taken before
  // (as undo takes one) keeps the old record.
  const OdRecordList before = list;
  list.replace(list.begin(), 5, {OdValue(7)});
  EXPECT_EQ(list.tableAt(list.begin()), 5u);
  EXPECT_EQ(valuesAt(list, 0), (std::vector<OdValue>{OdValue(7)}));
  EXPECT_EQ(valuesAt(list, 2), (std::vector<OdValue>{OdValue(3)}));
  EXPECT_EQ(valuesAt(before, 0), (std::vector<OdValue>{OdValue(0)}));
  list.remove(list.begin());
  list.remove(list.begin());
  list.remove(list.begin());
  EXPECT_TRUE(list.empty());
}

TEST(OdRecordList, CopiesAreDeepAndCompareByContent) {
  OdRecordList a;
  a.append(1, {OdValue(L"x")});
  OdRecordList b = a;
  EXPECT_EQ(a, b);
  b.append(2, {});
  EXPECT_FALSE(a == b);
  EXPECT_EQ(a.count(), 1);
  a = b;
  EXPECT_EQ(a, b);
}

}  // namespace
