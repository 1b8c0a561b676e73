// The program's command line: which drawing, script, output and module.
#pragma once

#include <string>
#include <vector>

namespace host {

// File names stay as the bytes the system gave, since that is what opens them.
struct Options {
  std::string drawing;  // empty: start with a new drawing
  std::string script;   // empty: none; "-" reads the script from standard input
  std::string output;   // empty: none
  std::string plugin;   // empty: the default module path
  bool help = false;
  bool version = false;
};

struct OptionsParse {
  Options options;
  std::wstring error;  // empty when the command line is fine
  bool ok() const { return error.empty(); }
};

// args are the arguments after the program name. Options may come in any
// order; "--" ends them, so that a drawing may be named "-x.dxf".
OptionsParse parseOptions(const std::vector<std::string>& args);
OptionsParse parseOptions(int argc, const char* const* argv);

std::wstring usageText(const std::wstring& programName);

}  // namespace host
