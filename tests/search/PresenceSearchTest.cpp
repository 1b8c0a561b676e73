// The presence searches, through their commands. The transcript of the
// searches shows each mode over a drawing; here is what it does not show.
#include <gtest/gtest.h>

#include "ModuleFixture.h"

namespace testing_support {
namespace {

using PresenceSearchTest = ModuleTest;

TEST_F(PresenceSearchTest, NamesDifferingInCaseAreTwoTablesAndFindingNoneEmptiesThePickFirstSet) {
  host.defineTable(L"A");
  host.defineTable(L"a");
  const ObjectId mixed = host.addLine();
  host.attach(mixed, L"A a");
  host.pickFirst = {mixed};
  run(L"ZARVEL_HAS_DUPLICATE_OD");
  EXPECT_TRUE(host.pickFirst.empty());
  host.pickFirst = {mixed};
  run(L"ZARVEL_HAS_MULTIPLE_OD");
  EXPECT_EQ(host.pickFirst, std::vector<ObjectId>{mixed});
  EXPECT_EQ(host.printed, L"Selected: 0\nSelected: 1\n");
  EXPECT_EQ(host.selectionPrompts, 0);
}

}  // namespace
}  // namespace testing_support
