// The "Detach OD" dialog: a list of table names from which the user keeps the
// ones to detach.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

class PGUIODList : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 101;
  static constexpr int kIdToggleAll = 102;

  // The dialog fills its list from the names and, at OK, shrinks the same
  // vector to the names the user selected.
  explicit PGUIODList(std::vector<std::wstring>* names);

  void onInit() override;
  bool onButton(int buttonId) override;

 private:
  std::vector<std::wstring>* names_;
};

}  // namespace zarvel
