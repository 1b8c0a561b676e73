// The program's command line.
#include "host/editor/Options.h"

#include <gtest/gtest.h>

namespace host {
namespace {

OptionsParse parse(const std::vector<std::string>& args) {
  return parseOptions(args);
}

TEST(OptionsTest, NothingGivenMeansANewDrawingOnTheTerminal) {
  const OptionsParse result = parse({});
  ASSERT_TRUE(result.ok());
  EXPECT_EQ(result.options.drawing, "");
  EXPECT_EQ(result.options.script, "");
  EXPECT_EQ(result.options.output, "");
  EXPECT_EQ(result.options.plugin, "");
  EXPECT_FALSE(result.options.help);
  EXPECT_FALSE(result.options.version);
}

TEST(OptionsTest, EveryOptionInAnyOrder) {
  const OptionsParse result =
      parse({"-o", "out.dxf", "map.dxf", "--plugin", "lib/z.so", "-s", "run.scr"});
  ASSERT_TRUE(result.ok()) << result.error;
  EXPECT_EQ(result.options.drawing, "map.dxf");
  EXPECT_EQ(result.options.script, "run.scr");
  EXPECT_EQ(result.options.output, "out.dxf");
  EXPECT_EQ(result.options.plugin, "lib/z.so");

  const OptionsParse longForms =
      parse({"--script=a.scr", "--output", "b.dxf", "--plugin=c.so", "--", "-odd.dxf"});
  ASSERT_TRUE(longForms.ok()) << longForms.error;
  EXPECT_EQ(longForms.options.script, "a.scr");
  EXPECT_EQ(longForms.options.output, "b.dxf");
  EXPECT_EQ(longForms.options.plugin, "c.so");
  EXPECT_EQ(longForms.options.drawing, "-odd.dxf");
}

TEST(OptionsTest, ADashScriptIsStandardInput) {
  const OptionsParse result = parse({"map.dxf", "-s", "-"});
  ASSERT_TRUE(result.ok()) << result.error;
  EXPECT_EQ(result.options.script, "-");
  EXPECT_EQ(result.options.drawing, "map.dxf");
}

TEST(OptionsTest, HelpAndVersion) {
  EXPECT_TRUE(parse({"-h"}).options.help);
  EXPECT_TRUE(parse({"map.dxf", "--help"}).options.help);
  EXPECT_TRUE(parse({"--version"}).options.version);
  EXPECT_FALSE(parse({"--version"}).options.help);
}

TEST(OptionsTest, MistakesAreNamed) {
  const struct {
    std::vector<std::string> args;
    const wchar_t* error;
  } cases[] = {
      {{"-x"}, L"unknown option '-x'"},
      {{"--scrip", "a"}, L"unknown option '--scrip'"},
      {{"-"}, L"unknown option '-'"},
      {{"-s"}, L"option '-s' needs a value: a script file, or - for standard input"},
      {{"-s", "-o", "x.dxf"}, L"option '-s' needs a value: a script file, or - for standard input"},
      {{"-o", "-"}, L"option '-o' needs a value: the file to write the drawing to"},
      {{"--plugin="}, L"option '--plugin' needs a value: the module's file"},
      {{"-o", "a.dxf", "--output", "b.dxf"}, L"option '--output' given twice"},
      {{"a.dxf", "b.dxf"}, L"more than one drawing given: 'a.dxf' and 'b.dxf'"},
      {{"--help=yes"}, L"option '--help' takes no value"},
      {{""}, L"the drawing's file name is empty"},
  };
  for (const auto& test : cases) {
    const OptionsParse result = parse(test.args);
    EXPECT_EQ(result.error, test.error) << "first argument '" << test.args.front() << "'";
  }
}

TEST(OptionsTest, ArgvSkipsTheProgramName) {
  const char* argv[] = {"zarvel", "map.dxf", "-s", "go.scr"};
  const OptionsParse result = parseOptions(4, argv);
  ASSERT_TRUE(result.ok());
  EXPECT_EQ(result.options.drawing, "map.dxf");
  EXPECT_EQ(result.options.script, "go.scr");
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
