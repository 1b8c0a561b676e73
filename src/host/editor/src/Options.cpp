// Parsing of the program's command line.
#include "host/editor/Options.h"

#include <optional>

#include "platform/Text.h"

namespace host {

namespace {

std::wstring wide(const std::string& text) {
  return platform::fromUtf8(text);
}

// The option an argument names, with a value written into it ("--plugin=x").
struct Named {
  std::string name;
  std::optional<std::string> value;
};

Named splitLongOption(const std::string& arg) {
  const std::size_t equals = arg.find('=');
  if (arg.compare(0, 2, "--") != 0 || equals == std::string::npos) return {arg, std::nullopt};
  return {arg.substr(0, equals), arg.substr(equals + 1)};
}

}  // namespace

OptionsParse parseOptions(const std::vector<std::string>& args) {
  OptionsParse parse;
  Options& options = parse.options;
  bool optionsEnded = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (optionsEnded || arg.empty() || arg[0] != '-') {
      if (!options.drawing.empty()) {
        parse.error = L"more than one drawing given: '" + wide(options.drawing) + L"' and '" +
                      wide(arg) + L"'";
        return parse;
      }
      if (arg.empty()) {
        parse.error = L"the drawing's file name is empty";
        return parse;
      }
      options.drawing = arg;
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
      continue;
    }
    const Named named = splitLongOption(arg);
    if (named.name == "-h" || named.name == "--help" || named.name == "--version") {
      if (named.value) {
        parse.error = L"option '" + wide(named.name) + L"' takes no value";
        return parse;
      }
      (named.name == "--version" ? options.version : options.help) = true;
      continue;
    }

    std::string* target = nullptr;
    const wchar_t* what = L"";
    if (named.name == "-s" || named.name == "--script") {
      target = &options.script;
      what = L"a script file, or - for standard input";
    } else if (named.name == "-o" || named.name == "--output") {
      target = &options.output;
      what = L"the file to write the drawing to";
    } else if (named.name == "--plugin") {
      target = &options.plugin;
      what = L"the module's file";
    } else {
      parse.error = L"unknown option '" + wide(arg) + L"'";
      return parse;
    }
    if (!target->empty()) {
      parse.error = L"option '" + wide(named.name) + L"' given twice";
      return parse;
    }
    std::optional<std::string> value = named.value;
    // A following option is a forgotten value rather than a file of that name;
    // only the script takes "-" for standard input.
    if (!value && i + 1 < args.size() &&
        (args[i + 1].empty() || args[i + 1][0] != '-' ||
         (target == &options.script && args[i + 1] == "-"))) {
      value = args[++i];
    }
    if (!value || value->empty()) {
      parse.error = L"option '" + wide(named.name) + L"' needs a value: " + what;
      return parse;
    }
    *target = *value;
  }
  return parse;
}

OptionsParse parseOptions(int argc, const char* const* argv) {
  std::vector<std::string> args;
  for (int i = 1; i < argc; ++i) args.emplace_back(argv[i]);
  return parseOptions(args);
}

std::wstring usageText(const std::wstring& programName) {
  return L"Usage: " + programName +
         L" [DRAWING.dxf] [-s SCRIPT|-] [-o OUT.dxf] [--plugin PATH]\n"
         L"\n"
         L"Opens DRAWING.dxf, or a new drawing, and reads commands from the terminal.\n"
         L"\n"
         L"  -s, --script SCRIPT   read the answers from SCRIPT, one line per prompt;\n"
         L"                        - reads them from standard input\n"
         L"  -o, --output OUT.dxf  write the drawing to OUT.dxf at the end\n"
         L"      --plugin PATH     load the module from PATH instead of the default\n"
         L"  -h, --help            show this help and end\n"
         L"      --version         show the version and end\n";
}

}  // namespace host
