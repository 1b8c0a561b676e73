// The dialog of the table removal: the tables in use, to look at, and the
// unused ones, to pick for removal.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

class OptionsRmUnused : public platform::DialogModel {
 public:
  static constexpr int kIdUsedList = 1000;
  static constexpr int kIdUnusedList = 1001;
  static constexpr int kIdToggleAll = 1002;

  // Topology tables in either vector take no line.
  OptionsRmUnused(std::vector<std::wstring> unused, std::vector<std::wstring> used);

  void onInit() override;
  bool onButton(int buttonId) override;

  // The unused tables chosen at OK, in the order of their lines.
  const std::vector<std::wstring>& chosen() const { return chosen_; }

 private:
  std::vector<std::wstring> unused_;
  std::vector<std::wstring> used_;
  std::vector<std::wstring> chosen_;
};

}  // namespace zarvel
