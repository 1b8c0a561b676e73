// The platform has no call that copies a definition from another drawing,
// but it copies one into the active drawing whenever a record of an attached
// drawing's table is added there. So the source is attached and activated, one
// blank record of each user table goes onto a throw-away point, and then the
// point, the attachment and the temporary alias go away again.
#include "tables/LoadDefinition.h"

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Port.h"

namespace zarvel {
namespace {

const std::wstring kAliasName = L"OBJECT_DATA";

// Deletes the temporary alias on every way out.
class TemporaryAlias {
 public:
  explicit TemporaryAlias(const std::wstring& path) : aliases_(port().pathAliases()) {
    // What follows fails, and says so, if the alias is missing: the path
    // can't be named under it then.
    platform::ignoreStatus(aliases_.addAlias(kAliasName, path));
  }
  ~TemporaryAlias() {
    // An alias that was never added has nothing to delete.
    platform::ignoreStatus(aliases_.deleteAlias(kAliasName));
  }
  TemporaryAlias(const TemporaryAlias&) = delete;
  TemporaryAlias& operator=(const TemporaryAlias&) = delete;

 private:
  platform::PathAliases& aliases_;
};

// The drive of the path: up to and with its first colon; empty without one.
std::wstring driveOf(const std::wstring& path) {
  const std::size_t colon = path.find(L':');
  return path.substr(0, colon == std::wstring::npos ? 0 : colon + 1);
}

// Adds one blank record of each user table to a point of its own, which
// then goes; only the definitions the records brought along stay.
void useTables(const std::vector<std::wstring>& names) {
  platform::Drawing& drawing = port().drawing();
  OdContainer& container = getODContainer();
  const ObjectId point = drawing.addPoint({0, 0, 0});
  for (const std::wstring& name : names) {
    // A table that takes no record is simply not copied.
    if (isUserTable(name)) attachBlankRecord(container, name, point);
  }
  // A point that won't erase was never made: there is nothing left behind.
  platform::ignoreStatus(drawing.eraseEntity(point));
}

}  // namespace

bool loadDefinitions(const std::wstring& path) {
  platform::Project& project = port().project();
  const TemporaryAlias alias(driveOf(path));
  const std::optional<std::wstring> aliasPath = port().pathAliases().aliasPathOf(path);
  platform::AttachedDrawing* source =
      aliasPath ? project.drawingSet().attachDrawing(*aliasPath) : nullptr;
  if (source == nullptr) {
    printMessage(kMsgUnableToOpen, path);
    return false;
  }
  // A drawing that won't activate offers no table: nothing is copied, and the
  // call still ends cleanly.
  platform::ignoreStatus(source->activate());
  platform::ignoreStatus(source->prepare());
  useTables(source->tableNames(platform::kAllTableKinds));
  source->closeDown();
  // Attached just above, so it is there to detach.
  platform::ignoreStatus(project.drawingSet().detachDrawing(*aliasPath));
  return true;
}

void commandLoadDefinition() {
  ResourceScope scope;
  platform::FileDialogRequest request;
  request.filter = loadString(kMsgDrawingAndTemplateFilter);
  const std::wstring path = port().ui().fileDialog(request);
  if (path.empty()) return;
  if (!loadDefinitions(path)) printMessage(kMsgOperationUnsuccessful);
  // Said after a failure too, so that a failure shows both lines.
  printMessage(kMsgOperationCompleted);
}

}  // namespace zarvel
