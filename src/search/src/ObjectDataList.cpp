// The table list dialog of the table searches.
#include "search/ObjectDataList.h"

#include "oddata/OdAccess.h"
#include "oddata/Port.h"
#include "resources/StringTable.h"

namespace zarvel {
namespace {

using platform::DialogControl;

// What the dialog remembers between two showings, for as long as the module
// stays loaded.
bool& rememberedSimultaneous() {
  static bool simultaneous = false;
  return simultaneous;
}

std::vector<std::wstring>& rememberedTables() {
  static std::vector<std::wstring> tables;
  return tables;
}

}  // namespace

ObjectDataList::ObjectDataList(const std::wstring& caption, std::vector<std::wstring> tables)
    : platform::DialogModel(caption.empty() ? loadString(kDlgObjectDataTitle) : caption),
      tables_(std::move(tables)) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), true, false));
  DialogControl box;
  box.id = kIdSimultaneous;
  box.kind = platform::ControlKind::CheckBox;
  box.label = loadString(kDlgSimultaneous);
  addControl(std::move(box));
  addControl(DialogControl::button(kIdToggleAll, loadString(kDlgSelectAllNothing), false));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void ObjectDataList::onInit() {
  if (tables_.empty()) tables_ = port().project().tableNames(platform::kAllTableKinds);
  const std::vector<std::wstring>& remembered = rememberedTables();
  std::vector<std::wstring> lines;
  std::vector<bool> selected;
  for (std::size_t i = 0; i < tables_.size(); ++i) {
    if (!isUserTable(tables_[i])) continue;
    lines.push_back(tables_[i]);
    selected.push_back(i == 0);
    // A remembered table selects the line of its place in the array, which is
    // its own line only while no topology table was passed over before it.
    if (i < lines.size() && containsText(remembered, tables_[i])) selected[i] = true;
  }
  DialogControl& list = control(kIdTableList);
  list.setItems(std::move(lines));
  list.selected = std::move(selected);
  control(kIdSimultaneous).checked = rememberedSimultaneous();
}

bool ObjectDataList::onButton(int buttonId) {
  switch (buttonId) {
    case platform::kIdOk:
      storeChoice();
      return true;
    case kIdToggleAll: {
      DialogControl& list = control(kIdTableList);
      const bool selectAll = list.selectedCount() == 0;
      list.selected.assign(list.items.size(), selectAll);
      return false;
    }
    default:
      return platform::DialogModel::onButton(buttonId);
  }
}

void ObjectDataList::storeChoice() {
  const DialogControl& list = control(kIdTableList);
  std::vector<std::wstring>& remembered = rememberedTables();
  remembered.clear();
  for (std::size_t i = 0; i < list.items.size() && i < list.selected.size(); ++i) {
    if (remembered.size() == kMaxSelectedLines) break;
    if (list.selected[i]) remembered.push_back(list.items[i]);
  }
  rememberedSimultaneous() = control(kIdSimultaneous).checked;
}

std::vector<std::wstring> ObjectDataList::chosenTables() {
  return rememberedTables();
}

void ObjectDataList::clearChosenTables() {
  rememberedTables().clear();
}

bool ObjectDataList::simultaneous() {
  return rememberedSimultaneous();
}

}  // namespace zarvel
