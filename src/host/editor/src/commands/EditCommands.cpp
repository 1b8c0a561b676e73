// SELECT, ERASE, ZOOM and FAILOPEN: working with selections of entities.
#include "host/db/PortDrawing.h"
#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"
#include "host/geometry/EntityGeometry.h"
#include "platform/Text.h"

namespace host {
namespace {

using platform::PromptStatus;

void selectCommand(Session& s) {
  platform::SelectionReply reply = s.editor().selectObjects();
  if (reply.status == PromptStatus::Cancel) return;
  s.editor().setPickFirst(reply.ids);
}

void eraseCommand(Session& s) {
  const auto ids = s.selectForCommand(true);
  if (!ids) return;
  Database& db = s.db();
  int locked = 0;
  for (ObjectId id : *ids) {
    if (isOnLockedLayer(db, *db.entity(id))) {
      ++locked;
    } else {
      db.eraseEntity(id);
    }
  }
  s.print(lockedLayerNotice(locked));
}

// Makes entities fail to open, or open again, so that the paths a damaged
// drawing takes can be tried.
void failOpenCommand(Session& s) {
  const platform::StringReply option =
      s.prompter().getKeyword(L"Enter an option [On/Off] <On>: ", {L"On", L"Off"}, L"On");
  if (option.status != PromptStatus::Normal) return;
  platform::SelectionReply reply = s.editor().selectObjects();
  if (reply.status == PromptStatus::Cancel) return;
  const bool fail = option.text == L"On";
  for (ObjectId id : reply.ids) s.db().setOpenFailure(id, fail);
  s.print(std::to_wstring(reply.ids.size()) +
          (fail ? L" object(s) will fail to open.\n" : L" object(s) open normally.\n"));
}

// Our command line shows no view, so ZOOM only takes its answers: a module
// that zooms to objects before selecting them again runs as it would.
void zoomCommand(Session& s) {
  const Keywords options = {L"All", L"Extents", L"Object", L"Previous", L"Window"};
  const platform::StringReply option =
      s.prompter().getKeyword(keywordPrompt(L"Enter an option", options, std::nullopt), options);
  if (option.status != PromptStatus::Normal) return;
  if (option.text == L"Object") {
    // The pick-first set stays for the next command, as after a zoom.
    const std::vector<ObjectId> kept = s.editor().impliedSelection();
    if (!s.selectForCommand(true)) return;
    s.editor().setPickFirst(kept);
  } else if (option.text == L"Window") {
    if (!s.prompter().getPoint(L"Specify first corner: ").isNormal()) return;
    if (!s.prompter().getPoint(L"Specify opposite corner: ").isNormal()) return;
  }
}

}  // namespace

void registerEditCommands(Session& session) {
  session.addHostCommand({L"ZOOM", zoomCommand, false, L"takes a zoom's answers; no view to zoom"});
  session.addHostCommand({L"SELECT", selectCommand, true, L"selects entities (pick-first set)"});
  session.addHostCommand({L"ERASE", eraseCommand, true, L"erases entities"});
  session.addHostCommand(
      {L"FAILOPEN", failOpenCommand, false, L"makes entities fail to open, for testing"});
}

}  // namespace host
