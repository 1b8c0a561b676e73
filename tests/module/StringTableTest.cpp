// Tests of the module's message catalogue.
#include "resources/StringTable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/Text.h"

namespace zarvel {
namespace {

TEST(StringTableTest, TextsStandCharacterForCharacter) {
  EXPECT_EQ(loadString(kMsgModuleName), L"zarvel");
  EXPECT_EQ(loadString(kMsgSelected), L"Selected: %i\n");
  EXPECT_EQ(loadString(kMsgCompleted), L"Completed: %i\n");
  EXPECT_EQ(loadString(112), L"Completed: %i out of %i\n");
  EXPECT_EQ(loadString(120), L"Completed (Length/Area/Volume): %i/%i/%i out of %i\n");
  EXPECT_EQ(loadString(127),
            L"Active document contains Object Data definitions which can cause errors during "
            L"program operation. Recommend removal of existing Object Data definitions.\n");
  EXPECT_EQ(loadString(180), L"This will detach ALL tables from selected objects. Continue?\n");
  EXPECT_EQ(loadString(kMsgDrawingAndTemplateFilter),
            L"Drawings; Drawing Templates (*.dwg;*.dwt)|*.dwg;*.dwt||");
  EXPECT_EQ(loadString(kMsgTextFileFilter), L"Text files (*.txt)|*.txt||");
  EXPECT_EQ(loadString(kMsgPromptModeFirstLast), L"Mode (First, Last)<First>: ");
  EXPECT_EQ(loadString(kMsgPromptLayer), L"Layer<");
  EXPECT_EQ(loadString(kMsgInvalidType), L"Error: '%s':'%s': invalid type.\n");
  EXPECT_EQ(loadString(kMsgWarningCaption), L"Warning");
  EXPECT_EQ(loadString(kMsgErrorCaption), L"Error");
  EXPECT_EQ(loadString(kMsgCompletedOutOfRangeMultiple),
            L"Completed: %i out of %i (%i out of range, %i multiple)\n");
  EXPECT_EQ(loadString(kMsgCompletedOutOfRange), L"Completed: %i out of %i (%i out of range)\n");
  EXPECT_EQ(loadString(kMsgCompletedMultiple), L"Completed: %i out of %i (%i multiple)\n");
  EXPECT_EQ(loadString(kMsgSelectedOpenList), L"Selected: %i ( ");
  EXPECT_EQ(loadString(kMsgPromptReferenceObject), L"Select reference object: ");
}

TEST(StringTableTest, EightyOneIdsAndNothingElse) {
  std::set<std::wstring> distinct;
  int present = 0;
  for (int id = 0; id < 1000; ++id) {
    const std::wstring& text = loadString(id);
    if (text.empty()) continue;
    EXPECT_GE(id, kFirstMessageId);
    EXPECT_LE(id, kLastMessageId);
    distinct.insert(text);
    ++present;
  }
  EXPECT_EQ(present, 81);
  EXPECT_EQ(distinct.size(), 81u);
  EXPECT_TRUE(loadString(-1).empty());
  EXPECT_TRUE(loadString(kLastMessageId + 1).empty());
}

TEST(StringTableTest, ReportLinesFormat) {
  EXPECT_EQ(platform::format(loadString(kMsgCompletedOutOf), 3, 5), L"Completed: 3 out of 5\n");
  EXPECT_EQ(platform::format(loadString(kMsgNamedTableNotFound), L"Roads"),
            L"Error: table 'Roads' not found.\n");
  // Every printed failure line ends its line; only the caption "Error" stands alone.
  for (int id = kFirstMessageId; id <= kLastMessageId; ++id) {
    const std::wstring& text = loadString(id);
    if (text.rfind(L"Error", 0) == 0 && text != L"Error") {
      EXPECT_EQ(text.back(), L'\n') << "id " << id;
    }
  }
}

}  // namespace
}  // namespace zarvel
