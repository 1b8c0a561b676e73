// The "Select objects: " grammar: every item kind, adding and removing, and
// errors that name the word at fault.
#include "host/editor/SelectionGrammar.h"

#include <gtest/gtest.h>

namespace host {
namespace {

using platform::Point3d;

SelectionParse parsed(const wchar_t* line) {
  SelectionParse parse = parseSelection(line);
  EXPECT_TRUE(parse.ok()) << "rejected '" << line << "': " << parse.error;
  return parse;
}

std::vector<SelectionKind> kinds(const SelectionParse& parse) {
  std::vector<SelectionKind> result;
  for (const SelectionItem& item : parse.items) result.push_back(item.kind);
  return result;
}

TEST(SelectionGrammarTest, ShortAndLongKeywordsInAnyCase) {
  const std::vector<SelectionKind> expected = {SelectionKind::All, SelectionKind::Last,
                                               SelectionKind::Previous};
  EXPECT_EQ(kinds(parsed(L"ALL L P")), expected);
  EXPECT_EQ(kinds(parsed(L"all last previous")), expected);
  EXPECT_EQ(kinds(parsed(L"All LaSt p")), expected);
  EXPECT_TRUE(parsed(L"").items.empty());
  EXPECT_TRUE(parsed(L"  \t ").items.empty());
}

TEST(SelectionGrammarTest, HandlesAndPickedPoints) {
  const SelectionParse parse = parsed(L"#1F #a0 3,4 1.5,-2,7");
  ASSERT_EQ(parse.items.size(), 4u);
  EXPECT_EQ(parse.items[0].kind, SelectionKind::ByHandle);
  EXPECT_EQ(parse.items[0].handle, 0x1Fu);
  EXPECT_EQ(parse.items[1].handle, 0xA0u);
  EXPECT_EQ(parse.items[2].kind, SelectionKind::Pick);
  EXPECT_EQ(parse.items[2].first, (Point3d{3, 4, 0}));
  EXPECT_EQ(parse.items[3].first, (Point3d{1.5, -2, 7}));
}

TEST(SelectionGrammarTest, WindowsAndCrossingsTakeTwoCorners) {
  const SelectionParse parse = parsed(L"W 0,0 10,5 crossing -1,-1,0 2,2,3 window 1,1 2,2");
  ASSERT_EQ(parse.items.size(), 3u);
  EXPECT_EQ(parse.items[0].kind, SelectionKind::Window);
  EXPECT_EQ(parse.items[0].first, (Point3d{0, 0, 0}));
  EXPECT_EQ(parse.items[0].second, (Point3d{10, 5, 0}));
  EXPECT_EQ(parse.items[1].kind, SelectionKind::Crossing);
  EXPECT_EQ(parse.items[1].first, (Point3d{-1, -1, 0}));
  EXPECT_EQ(parse.items[1].second, (Point3d{2, 2, 3}));
  EXPECT_EQ(parse.items[2].kind, SelectionKind::Window);
}

TEST(SelectionGrammarTest, BlanksNextToCommasStayInsideAPoint) {
  const SelectionParse parse = parsed(L"  c 0 , 0   10 ,10\t 5,  6 ");
  ASSERT_EQ(parse.items.size(), 2u);
  EXPECT_EQ(parse.items[0].kind, SelectionKind::Crossing);
  EXPECT_EQ(parse.items[0].second, (Point3d{10, 10, 0}));
  EXPECT_EQ(parse.items[1].kind, SelectionKind::Pick);
  EXPECT_EQ(parse.items[1].first, (Point3d{5, 6, 0}));
}

TEST(SelectionGrammarTest, RemoveAndAddSwitchTheRestOfTheLine) {
  const SelectionParse parse = parsed(L"ALL R #1F L A P REMOVE 1,1 add #2");
  ASSERT_EQ(parse.items.size(), 6u);
  const std::vector<bool> adds = {true, false, false, true, false, true};
  for (std::size_t i = 0; i < adds.size(); ++i) {
    EXPECT_EQ(parse.items[i].add, adds[i]) << "item " << i;
  }
}

TEST(SelectionGrammarTest, ErrorsNameTheWordAndSelectNothing) {
  const struct {
    const wchar_t* line;
    const wchar_t* error;
  } cases[] = {
      {L"ALL xyz", L"Invalid selection: 'xyz'"},
      {L"#1G", L"Invalid selection: '#1G'"},
      {L"#", L"Invalid selection: '#'"},
      {L"1,2,3,4", L"Invalid selection: '1,2,3,4'"},
      {L"W 0,0 abc", L"Invalid selection: 'abc'"},
      {L"C x 1,1", L"Invalid selection: 'x'"},
      {L"L W 0,0", L"Invalid selection: 'W' needs two corner points"},
      {L"window", L"Invalid selection: 'window' needs two corner points"},
      {L"AL", L"Invalid selection: 'AL'"},
      // A switch must be followed by what it adds or removes.
      {L"R", L"Invalid selection: 'R' needs the objects to remove after it"},
      {L"#1F remove", L"Invalid selection: 'remove' needs the objects to remove after it"},
      {L"R A #1F", L"Invalid selection: 'R' needs the objects to remove after it"},
      {L"R #1F a", L"Invalid selection: 'a' needs the objects to add after it"},
  };
  for (const auto& test : cases) {
    const SelectionParse parse = parseSelection(test.line);
    EXPECT_EQ(parse.error, test.error) << "line '" << test.line << "'";
    EXPECT_TRUE(parse.items.empty()) << "line '" << test.line << "'";
  }
}

}  // namespace
}  // namespace host
