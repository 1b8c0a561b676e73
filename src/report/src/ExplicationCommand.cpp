// ZARVEL_EXPL: the explication report of the selection, written to a file.
#include <set>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "oddata/Selection.h"
#include "report/Explication.h"
#include "report/SelectSharedCol.h"

namespace zarvel {
namespace {

// The distinct tables of the entities' records, in code-unit order.
std::vector<std::wstring> tablesInUse(const std::vector<ObjectId>& entities) {
  OdContainer& container = getODContainer();
  std::unique_ptr<platform::OdRecordIterator> iterator = container.newIterator();
  std::set<std::wstring> names;
  for (const ObjectId id : entities) {
    initWalk(*iterator, id, platform::OpenMode::Read);
    for (; !iterator->isDone(); iterator->next()) names.insert(iterator->recordTableName());
  }
  return {names.begin(), names.end()};
}

// The file the report goes to; empty when the user cancelled.
std::wstring askReportFile() {
  platform::FileDialogRequest request;
  request.title = loadString(kDlgExplicationTitle);
  request.defaultExtension = L"csv";
  request.filter = loadString(kDlgCsvFilter);
  request.save = true;
  request.confirmOverwrite = true;
  request.folderMustExist = true;
  return port().ui().fileDialog(request);
}

}  // namespace

// Says nothing of its own: a cancel, an empty choice or a file that cannot be
// written ends it without a word from the module (the host tells of a file it
// could not write), and the drawing is only read.
void commandExpl() {
  ResourceScope scope;
  const SelectionResult selection = commandScope();
  if (!selection.ok || selection.ids.empty()) return;

  SelectSharedCol dialog(tablesInUse(selection.ids));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  ExplicationOptions options;
  options.tables = dialog.chosenTables();
  options.typeField = dialog.typeField();
  options.field = dialog.field();
  options.separator = dialog.separator();
  if (options.tables.empty() || options.separator.empty()) return;
  if (options.typeField && options.field.empty()) return;

  const std::wstring path = askReportFile();
  if (path.empty()) return;
  platform::Files& files = port().files();
  // Found unwritable before the report is made, rather than after.
  if (files.checkWritable(path) != platform::Status::Ok) return;
  const UnicodeFileText report = explicationReport(selection.ids, options);
  // A failed write leaves any earlier file whole, and the host has said why.
  platform::ignoreStatus(files.writeWholeFile(path, report.view()));
}

}  // namespace zarvel
