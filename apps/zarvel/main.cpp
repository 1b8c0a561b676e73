// The zarvel program: our host with the zarvel module loaded, interactive on a
// terminal or running a script.
#include <fstream>
#include <iostream>
#include <memory>

#include "host/editor/Console.h"
#include "host/editor/DrawingFiles.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Options.h"
#include "host/editor/PluginLoader.h"
#include "host/editor/Session.h"
#include "host/editor/TerminalConsole.h"
#include "platform/Text.h"

namespace {

int fail(const std::wstring& message) {
  std::cerr << platform::toUtf8(L"zarvel: " + message) << "\n";
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  const host::OptionsParse parse = host::parseOptions(argc, argv);
  if (!parse.ok()) {
    std::cerr << platform::toUtf8(L"zarvel: " + parse.error + L"\n\n" + host::usageText(L"zarvel"));
    return 2;
  }
  const host::Options& options = parse.options;
  if (options.help) {
    std::cout << platform::toUtf8(host::usageText(L"zarvel"));
    return 0;
  }
  if (options.version) {
    std::cout << "zarvel " << ZARVEL_VERSION << "\n";
    return 0;
  }
  std::unique_ptr<host::Document> drawing;
  if (!options.drawing.empty()) {
    host::OpenResult opened = host::openDocument(options.drawing);
    if (!opened.document) {
      std::cerr << platform::toUtf8(opened.error) << "\n";
      return 1;
    }
    std::cerr << platform::toUtf8(opened.warnings);
    drawing = std::move(opened.document);
  }

  std::ifstream scriptFile;
  std::unique_ptr<host::Console> console;
  if (options.script == "-" || (options.script.empty() && !host::TerminalConsole::available())) {
    console = std::make_unique<host::ScriptConsole>(std::cin, std::cout);
  } else if (!options.script.empty()) {
    scriptFile.open(options.script, std::ios::binary);
    if (!scriptFile) {
      return fail(L"cannot open script " + platform::fromUtf8(options.script));
    }
    console = std::make_unique<host::ScriptConsole>(scriptFile, std::cout);
  } else {
    console = std::make_unique<host::TerminalConsole>(std::cout);
  }

  host::Session session(*console, std::move(drawing));
  host::registerHostCommands(session);
  const std::filesystem::path plugin =
      options.plugin.empty() ? host::defaultPluginPath() : std::filesystem::path(options.plugin);
  if (auto error = session.loadModule(plugin)) return fail(*error);
  if (console->isInteractive()) {
    session.print(L"zarvel " ZARVEL_VERSION_W L" - type HELP for the commands, QUIT to leave.\n");
  }
  session.run();
  int status = 0;
  if (!options.output.empty()) {
    if (auto error = host::saveDocument(session.document(), options.output)) {
      std::cout.flush();
      std::cerr << platform::toUtf8(*error) << "\n";
      status = 1;
    }
  }
  session.unloadModule();
  std::cout.flush();
  return status;
}
