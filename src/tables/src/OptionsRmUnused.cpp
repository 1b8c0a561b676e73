// The two lists of the table removal and its select-all button.
#include "tables/OptionsRmUnused.h"

#include "oddata/OdAccess.h"
#include "resources/StringTable.h"

namespace zarvel {
namespace {

using platform::DialogControl;

std::vector<std::wstring> userTables(const std::vector<std::wstring>& names) {
  std::vector<std::wstring> lines;
  for (const std::wstring& name : names) {
    if (isUserTable(name)) lines.push_back(name);
  }
  return lines;
}

}  // namespace

OptionsRmUnused::OptionsRmUnused(std::vector<std::wstring> unused, std::vector<std::wstring> used)
    : platform::DialogModel(loadString(kDlgRemoveUnusedTitle)),
      unused_(std::move(unused)),
      used_(std::move(used)) {
  DialogControl usedList = DialogControl::listBox(kIdUsedList, L"", false, true);
  usedList.label = loadString(kDlgUsedLabel);
  usedList.readOnly = true;
  addControl(std::move(usedList));
  DialogControl unusedList = DialogControl::listBox(kIdUnusedList, L"", true, true);
  unusedList.label = loadString(kDlgUnusedLabel);
  addControl(std::move(unusedList));
  addControl(DialogControl::button(kIdToggleAll, loadString(kDlgSelectAllNothing), false));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
}

void OptionsRmUnused::onInit() {
  control(kIdUsedList).setItems(userTables(used_));
  control(kIdUnusedList).setItems(userTables(unused_));
}

bool OptionsRmUnused::onButton(int buttonId) {
  DialogControl& list = control(kIdUnusedList);
  switch (buttonId) {
    case kIdToggleAll:
      list.selected.assign(list.items.size(), list.selectedCount() == 0);
      return false;
    case platform::kIdOk:
      chosen_.clear();
      for (std::size_t i = 0; i < list.items.size() && i < list.selected.size(); ++i) {
        if (list.selected[i]) chosen_.push_back(list.items[i]);
      }
      return true;
    default:
      return platform::DialogModel::onButton(buttonId);
  }
}

}  // namespace zarvel
