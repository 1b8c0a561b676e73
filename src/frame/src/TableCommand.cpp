// The table editor's palette from its first showing until the module unloads.
#include "frame/TableCommand.h"

#include <algorithm>
#include <iterator>
#include <memory>

#include "oddata/CommandFrame.h"
#include "oddata/Port.h"
#include "tableeditor/ZarvelPalette.h"
#include "values/AddValues.h"
#include "values/CreateIDs.h"
#include "values/ReplaceValues.h"
#include "values/SetCoordinates.h"
#include "values/SetFromText.h"
#include "values/SetProperties.h"

namespace zarvel {
namespace {

std::unique_ptr<ZarvelPalette>& tablePalette() {
  static std::unique_ptr<ZarvelPalette> palette;
  return palette;
}

// The Edit menu runs the same bodies as the commands, given the rows' ids.
void setHooks(Zarvel& editor) {
  const Zarvel::Hook hooks[Zarvel::kHookCount] = {
      setFromCoordinates, setFromProperties, setFromText, createIDs, replaceValues, addFieldValues};
  std::copy(std::begin(hooks), std::end(hooks), std::begin(editor.hooks));
}

}  // namespace

void commandEditTable() {
  ResourceScope scope;
  std::unique_ptr<ZarvelPalette>& palette = tablePalette();
  if (!palette) {
    palette = std::make_unique<ZarvelPalette>(Zarvel::instance());
    setHooks(palette->editor());
    palette->editor().loadTable(true);
    port().editor().addReactor(palette.get());
  }
  palette->editor().shown = true;
  // A host without palettes shows nothing; the model waits for one that has.
  platform::ignoreStatus(port().ui().showPalette(*palette));
}

void tableDocumentActivated() {
  std::unique_ptr<ZarvelPalette>& palette = tablePalette();
  if (!palette) return;
  // Empty until the user picks a table again, even on a return to a drawing.
  palette->editor().resetEditor();
  palette->editor().loadTable(false);
}

void destroyTablePalette() {
  std::unique_ptr<ZarvelPalette>& palette = tablePalette();
  if (!palette) return;
  if (hasPort()) {
    port().editor().removeReactor(palette.get());
    port().ui().destroyPalette(*palette);
  }
  palette->editor().shown = false;
  palette->editor().resetEditor();
  palette.reset();
}

}  // namespace zarvel
