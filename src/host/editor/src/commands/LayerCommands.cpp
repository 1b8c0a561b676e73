// -LAYER: layer creation, the current layer, and the layer states.
#include <algorithm>

#include "host/editor/CommandHelpers.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"

namespace host {
namespace {

using platform::PromptStatus;

const Keywords kLayerOptions = {L"New",  L"Set",    L"Freeze", L"Thaw", L"Lock",
                                L"Unlock", L"ON",   L"OFF",    L"Hide", L"Unhide"};

std::vector<ObjectId> matchingLayers(Database& db, const std::vector<std::wstring>& patterns) {
  std::vector<ObjectId> ids;
  for (ObjectId id : db.layerIds()) {
    const std::wstring& name = db.get<Layer>(id)->name;
    const bool match = std::any_of(patterns.begin(), patterns.end(), [&](const std::wstring& p) {
      return matchesWildcard(name, p);
    });
    if (match) ids.push_back(id);
  }
  return ids;
}

void newLayers(Session& s, const std::vector<std::wstring>& names) {
  Database& db = s.db();
  for (const std::wstring& name : names) {
    if (!isValidSymbolName(name)) {
      s.print(L"Invalid layer name \"" + name + L"\".\n");
    } else if (!db.findLayer(name).isNull()) {
      s.print(L"Layer \"" + name + L"\" already exists.\n");
    } else {
      db.addLayer(name);
    }
  }
}

void setCurrentLayer(Session& s, const std::wstring& name) {
  Database& db = s.db();
  if (!isValidSymbolName(name)) {
    s.print(L"Invalid layer name \"" + name + L"\".\n");
    return;
  }
  ObjectId id = db.findLayer(name);
  if (id.isNull()) id = db.addLayer(name);
  const Layer* layer = db.get<Layer>(id);
  if (layer->frozen || layer->hidden) {
    s.print(L"Cannot set layer \"" + layer->name + L"\" current: it is frozen or hidden.\n");
    return;
  }
  db.modifyHeader().currentLayer = id;
}

void changeState(Session& s, const std::wstring& option, const std::vector<std::wstring>& names) {
  Database& db = s.db();
  const std::vector<ObjectId> layers = matchingLayers(db, names);
  if (layers.empty()) {
    s.print(L"No matching layer names found.\n");
    return;
  }
  for (ObjectId id : layers) {
    const bool current = id == db.currentLayer();
    if (current && (option == L"Freeze" || option == L"Hide")) {
      s.print(L"Cannot " + std::wstring(option == L"Freeze" ? L"freeze" : L"hide") + L" layer \"" +
              db.get<Layer>(id)->name + L"\". It is the CURRENT layer.\n");
      continue;
    }
    Layer& layer = *db.modify<Layer>(id);
    if (option == L"Freeze") layer.frozen = true;
    if (option == L"Thaw") layer.frozen = false;
    if (option == L"Lock") layer.locked = true;
    if (option == L"Unlock") layer.locked = false;
    if (option == L"ON") layer.off = false;
    if (option == L"OFF") layer.off = true;
    if (option == L"Hide") layer.hidden = true;
    if (option == L"Unhide") layer.hidden = false;
  }
}

void layerCommand(Session& s) {
  Prompter& p = s.prompter();
  for (;;) {
    platform::StringReply option = p.getKeyword(
        L"Enter an option [New/Set/Freeze/Thaw/Lock/Unlock/ON/OFF/Hide/Unhide]: ", kLayerOptions);
    if (option.status != PromptStatus::Normal) return;
    platform::StringReply list = p.getString(L"Enter name list of layer(s): ", true);
    if (list.status == PromptStatus::Cancel) return;
    const std::vector<std::wstring> names = splitNameList(list.text);
    if (names.empty()) continue;
    if (option.text == L"New") {
      newLayers(s, names);
    } else if (option.text == L"Set") {
      setCurrentLayer(s, names.front());
    } else {
      changeState(s, option.text, names);
    }
  }
}

}  // namespace

void registerLayerCommands(Session& session) {
  session.addHostCommand({L"-LAYER", layerCommand, true,
                          L"creates layers, sets the current layer, changes layer states"});
}

}  // namespace host
