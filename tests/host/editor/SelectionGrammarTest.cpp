// The "Select objects: " grammar: every item kind, adding and removing, and
// errors that name the word at fault.
#include "host/editor/SelectionGrammar.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "platform/Text.h"

namespace host {
namespace {

using platform::Point3d;

std::string coordinates(const Point3d& p) {
  std::ostringstream text;
  text << '(' << p.x << ',' << p.y << ',' << p.z << ')';
  return text.str();
}

// The items of a line that parses, written out: a "-" before an item that is
// removed, then the kind with its handle or points.
std::string items(const wchar_t* line) {
  const SelectionParse parse = parseSelection(line);
  EXPECT_TRUE(parse.ok()) << "rejected: " << platform::toUtf8(parse.error);
  const char* const names[] = {"all", "#", "last", "previous", "window", "crossing", "pick"};
  std::ostringstream text;
  for (const SelectionItem& item : parse.items) {
    text << (item.add ? " " : " -") << names[static_cast<int>(item.kind)];
    if (item.kind == SelectionKind::ByHandle) text << std::hex << std::uppercase << item.handle;
    if (item.kind >= SelectionKind::Window) text << coordinates(item.first);
    if (item.kind == SelectionKind::Window || item.kind == SelectionKind::Crossing) {
      text << coordinates(item.second);
    }
  }
  return text.str();
}

TEST(SelectionGrammarTest, EveryItemKindAndTheSwitchesBetweenAddingAndRemoving) {
  const struct {
    const wchar_t* line;
    const char* items;
  } cases[] = {
      {L"", ""},
      {L"  \t ", ""},
      {L"ALL L P", " all last previous"},
      {L"all last previous", " all last previous"},
      {L"All LaSt p", " all last previous"},
      {L"#1F #a0 3,4 1.5,-2,7", " #1F #A0 pick(3,4,0) pick(1.5,-2,7)"},
      {L"W 0,0 10,5 crossing -1,-1,0 2,2,3 window 1,1 2,2",
       " window(0,0,0)(10,5,0) crossing(-1,-1,0)(2,2,3) window(1,1,0)(2,2,0)"},
      // Blanks next to commas stay inside a point.
      {L"  c 0 , 0   10 ,10\t 5,  6 ", " crossing(0,0,0)(10,10,0) pick(5,6,0)"},
      {L"ALL R #1F L A P REMOVE 1,1 add #2", " all -#1F -last previous -pick(1,1,0) #2"},
  };
  for (const auto& c : cases) EXPECT_EQ(items(c.line), c.items) << platform::toUtf8(c.line);
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
    EXPECT_EQ(parse.error, test.error) << platform::toUtf8(test.line);
    EXPECT_TRUE(parse.items.empty()) << platform::toUtf8(test.line);
  }
}

}  // namespace
}  // namespace host
