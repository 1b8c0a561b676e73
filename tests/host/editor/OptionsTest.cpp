// The program's command line.
#include "host/editor/Options.h"

#include <gtest/gtest.h>

#include "platform/Text.h"

namespace host {
namespace {

// What a command line asks for, written out, or its error.
std::string asked(const OptionsParse& parse) {
  if (!parse.ok()) return "error: " + platform::toUtf8(parse.error);
  const Options& o = parse.options;
  return "drawing=" + o.drawing + " script=" + o.script + " output=" + o.output +
         " plugin=" + o.plugin + (o.help ? " help" : "") + (o.version ? " version" : "");
}

TEST(OptionsTest, EveryOptionInAnyOrderAndMistakesNamed) {
  const struct {
    std::vector<std::string> args;
    const char* asked;
  } cases[] = {
      {{}, "drawing= script= output= plugin="},  // a new drawing on the terminal
      {{"-o", "out.dxf", "map.dxf", "--plugin", "lib/z.so", "-s", "run.scr"},
       "drawing=map.dxf script=run.scr output=out.dxf plugin=lib/z.so"},
      {{"--script=a.scr", "--output", "b.dxf", "--plugin=c.so", "--", "-odd.dxf"},
       "drawing=-odd.dxf script=a.scr output=b.dxf plugin=c.so"},
      {{"map.dxf", "-s", "-"}, "drawing=map.dxf script=- output= plugin="},
      {{"-h"}, "drawing= script= output= plugin= help"},
      {{"map.dxf", "--help"}, "drawing=map.dxf script= output= plugin= help"},
      {{"--version"}, "drawing= script= output= plugin= version"},
      // Mistakes are named.
      {{"-x"}, "error: unknown option '-x'"},
      {{"--scrip", "a"}, "error: unknown option '--scrip'"},
      {{"-"}, "error: unknown option '-'"},
      {{"-s"}, "error: option '-s' needs a value: a script file, or - for standard input"},
      {{"-s", "-o", "x.dxf"},
       "error: option '-s' needs a value: a script file, or - for standard input"},
      {{"-o", "-"}, "error: option '-o' needs a value: the file to write the drawing to"},
      {{"--plugin="}, "error: option '--plugin' needs a value: the module's file"},
      {{"-o", "a.dxf", "--output", "b.dxf"}, "error: option '--output' given twice"},
      {{"a.dxf", "b.dxf"}, "error: more than one drawing given: 'a.dxf' and 'b.dxf'"},
      {{"--help=yes"}, "error: option '--help' takes no value"},
      {{""}, "error: the drawing's file name is empty"},
  };
  for (const auto& c : cases) EXPECT_EQ(asked(parseOptions(c.args)), c.asked);
  const char* argv[] = {"zarvel", "map.dxf", "-s", "go.scr"};
  EXPECT_EQ(asked(parseOptions(4, argv)), "drawing=map.dxf script=go.scr output= plugin=")
      << "the program's name is skipped";
}

TEST(OptionsTest, UsageNamesTheProgramAndEveryOption) {
  const std::wstring usage = usageText(L"zarvel");
  EXPECT_EQ(usage.rfind(L"Usage: zarvel [DRAWING.dxf]", 0), 0u);
  for (const wchar_t* option :
       {L"-s", L"--script", L"-o", L"--output", L"--plugin", L"--help", L"--version"}) {
    EXPECT_NE(usage.find(option), std::wstring::npos) << option;
  }
}

}  // namespace
}  // namespace host
