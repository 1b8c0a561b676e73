// The removal of unused tables: a walk of model space that moves each table it
// meets from the unused to the used, then the user's pick among the rest.
#include "tables/RemoveUnused.h"

#include <algorithm>
#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "oddata/Selection.h"
#include "tables/OptionsRmUnused.h"

namespace zarvel {

TableUse tableUse() {
  TableUse use;
  use.unused = port().project().tableNames(platform::kAllTableKinds);
  platform::Drawing& drawing = port().drawing();
  std::unique_ptr<platform::OdRecordIterator> it = getODContainer().newIterator();
  // Topology tables are never met, so they stay; once the user tables are all
  // met, the rest of the walk could move nothing.
  auto userTablesLeft = std::count_if(use.unused.begin(), use.unused.end(),
                                      [](const std::wstring& name) { return isUserTable(name); });
  for (ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (userTablesLeft == 0) break;
    if (id.isNull()) continue;
    for (initWalk(*it, id, platform::OpenMode::Read); !it->isDone(); it->next()) {
      const std::wstring& name = it->recordTableName();
      if (!isUserTable(name)) continue;
      const auto found = std::find(use.unused.begin(), use.unused.end(), name);
      if (found == use.unused.end()) continue;
      use.used.push_back(name);
      use.unused.erase(found);
      --userTablesLeft;
    }
  }
  return use;
}

void commandRmUnused() {
  ResourceScope scope;
  TableUse use = tableUse();
  OptionsRmUnused dialog(std::move(use.unused), std::move(use.used));
  if (port().ui().runModal(dialog) != platform::kIdOk) return;
  if (dialog.chosen().empty()) {
    printMessage(kMsgCompleted, 0);
    return;
  }
  lockDoc();
  const int removed = removeTables(dialog.chosen());
  // The tables are gone whether or not the lock comes off cleanly.
  platform::ignoreStatus(unlockDoc());
  printMessage(kMsgCompleted, removed);
}

}  // namespace zarvel
