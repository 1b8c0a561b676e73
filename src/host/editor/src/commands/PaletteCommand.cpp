// PALETTE: the command line's way into the open palettes, since it has no
// window to dock them in. It offers the chosen palette's actions by name until
// Enter, as a docked palette stays at hand while the user works.
#include <optional>
#include <string>
#include <vector>

#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "platform/Palette.h"

namespace host {
namespace {

using platform::PaletteModel;
using platform::PromptStatus;

// The palette to work in: the only one, or the one the user names, the last
// used being the default. Null when none is open or the user cancelled.
PaletteModel* choosePalette(Session& s) {
  PromptUi& ui = s.promptUi();
  const std::vector<PaletteModel*>& open = ui.palettes();
  if (open.empty()) {
    s.print(L"No palette is open.\n");
    return nullptr;
  }
  PaletteModel* last = ui.lastPalette() != nullptr ? ui.lastPalette() : open.front();
  if (open.size() == 1) return last;
  Keywords names;
  for (const PaletteModel* p : open) names.push_back(p->name());
  const platform::StringReply reply =
      s.prompter().getKeyword(keywordPrompt(L"Palette", names, last->name()), names, last->name());
  if (reply.status != PromptStatus::Normal) return nullptr;
  for (PaletteModel* p : open) {
    if (p->name() == reply.text) return p;
  }
  return nullptr;
}

bool stillOpen(const PromptUi& ui, const PaletteModel* palette) {
  for (const PaletteModel* p : ui.palettes()) {
    if (p == palette) return true;
  }
  return false;
}

void paletteCommand(Session& s) {
  PaletteModel* palette = choosePalette(s);
  if (palette == nullptr) return;
  s.promptUi().setLastPalette(palette);
  // An action that starts another command first cancels this one at its next
  // prompt; and a palette may go while its action runs.
  Prompter& p = s.prompter();
  while (stillOpen(s.promptUi(), palette)) {
    const Keywords actions = palette->actions();
    // What follows the action's name answers its first prompt: "List 1-20".
    std::wstring rest;
    const platform::StringReply reply =
        p.getKeyword(keywordPrompt(palette->name(), actions, std::nullopt), actions, rest);
    if (reply.status != PromptStatus::Normal) return;
    if (!rest.empty()) p.queueAnswers({rest});
    palette->runAction(reply.text);
    // An answer the action did not ask for is not left for the next prompt.
    p.clearQueuedAnswers();
  }
}

}  // namespace

void registerPaletteCommand(Session& session) {
  // No step of its own: each edit of a palette, one lock span, is one step,
  // as when the palette is used beside the command line.
  session.addHostCommand({L"PALETTE", paletteCommand, false,
                          L"works in an open palette: its actions by name, until Enter"});
}

}  // namespace host
