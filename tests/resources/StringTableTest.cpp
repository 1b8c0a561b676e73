// Properties of the module's message catalogue: each text's placeholders take
// the kinds its id declares (so the compiler's check of every use is sound),
// every id finds its own text, and failure lines end their line.
#include "resources/StringTable.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

#include "platform/Text.h"

namespace zarvel {
namespace {

// The conversions of a printf format, as 'i' for an integer and 's' for a text.
std::wstring conversions(const std::wstring& format) {
  std::wstring kinds;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != L'%') continue;
    std::size_t j = i + 1;
    while (j < format.size() &&
           std::wstring(L"-+ 0#.0123456789lhI").find(format[j]) != std::wstring::npos) {
      ++j;
    }
    if (j >= format.size()) return kinds + L'?';
    const wchar_t c = format[j];
    if (c != L'%') kinds += (c == L'd' || c == L'i') ? L'i' : c == L's' ? L's' : L'?';
    i = j;
  }
  return kinds;
}

template <typename... Args>
std::wstring declared(Message<Args...>) {
  return {(std::is_same_v<Args, int> ? L'i' : std::is_same_v<Args, Text> ? L's' : L'?')...};
}

struct Declared {
  const char* name;
  int id;
  std::wstring kinds;
  std::wstring text;
};

std::vector<Declared> everyText() {
  std::vector<Declared> all;
#define ZARVEL_COLLECT(name, id, kinds, text) all.push_back({#name, id, declared(name), text});
  ZARVEL_STRING_TABLE(ZARVEL_COLLECT)
  ZARVEL_DIALOG_TEXTS(ZARVEL_COLLECT)
  ZARVEL_COMMAND_TEXTS(ZARVEL_COLLECT)
#undef ZARVEL_COLLECT
  return all;
}

TEST(StringTableTest, PlaceholdersTakeTheKindsTheirIdDeclares) {
  for (const Declared& d : everyText()) {
    EXPECT_EQ(conversions(d.text), d.kinds) << d.name;
  }
}

TEST(StringTableTest, EveryIdFindsItsOwnTextAndNoOtherIdFindsOne) {
  std::vector<int> ids;
  for (const Declared& d : everyText()) {
    EXPECT_EQ(loadString(d.id), d.text) << d.name;
    ids.push_back(d.id);
  }
  // The string table stands whole, from the module's name to its last question.
  for (int id = kFirstMessageId; id <= kLastMessageId; ++id) {
    EXPECT_FALSE(loadString(id).empty()) << id;
  }
  EXPECT_EQ(kLastMessageId - kFirstMessageId + 1, 81);
  for (int id : {-1, 0, kFirstMessageId - 1, kLastMessageId + 1, 999}) {
    EXPECT_TRUE(loadString(id).empty()) << id;
  }
}

TEST(StringTableTest, FailureLinesEndTheirLine) {
  // Only the caption "Error" stands alone.
  for (const Declared& d : everyText()) {
    if (d.text.rfind(L"Error", 0) == 0 && d.text != L"Error") {
      EXPECT_EQ(d.text.back(), L'\n') << d.name;
    }
  }
  EXPECT_EQ(platform::format(loadString(kMsgCompletedOutOf), 3, 5), L"Completed: 3 out of 5\n");
}

}  // namespace
}  // namespace zarvel
