// The "Detach OD" dialog model.
#include "records/PGUIODList.h"

#include <algorithm>

#include "resources/StringTable.h"

namespace zarvel {

using platform::DialogControl;

PGUIODList::PGUIODList(std::vector<std::wstring>* names)
    : platform::DialogModel(loadString(kDlgDetachOdTitle)), names_(names) {
  addControl(DialogControl::listBox(kIdTableList, loadString(kDlgTablesLabel), true, true));
  addControl(DialogControl::button(platform::kIdOk, loadString(kDlgOk), true, true));
  addControl(DialogControl::button(platform::kIdCancel, loadString(kDlgCancel), true));
  addControl(DialogControl::button(kIdToggleAll, loadString(kDlgSelectAllNothing), false));
}

void PGUIODList::onInit() { control(kIdTableList).setItems(*names_); }

bool PGUIODList::onButton(int buttonId) {
  DialogControl& list = control(kIdTableList);
  switch (buttonId) {
    case platform::kIdOk: {
      std::vector<std::wstring> kept;
      for (std::size_t i = 0; i < list.items.size(); ++i) {
        if (list.selected[i]) kept.push_back(list.items[i]);
      }
      auto unselected = [&kept](const std::wstring& name) {
        return std::find(kept.begin(), kept.end(), name) == kept.end();
      };
      names_->erase(std::remove_if(names_->begin(), names_->end(), unselected), names_->end());
      return true;
    }
    case kIdToggleAll: {
      const bool selectAll = list.selectedCount() != static_cast<int>(list.items.size());
      std::fill(list.selected.begin(), list.selected.end(), selectAll);
      return false;
    }
    default:
      return platform::DialogModel::onButton(buttonId);
  }
}

}  // namespace zarvel
