// The list dialog of the table searches: the user picks tables, and whether
// an entity must match them all at once ("Simultaneous").
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

class ObjectDataList : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 101;
  static constexpr int kIdToggleAll = 102;
  static constexpr int kIdSimultaneous = 134;

  // An empty caption keeps the dialog's own; with no tables to offer the
  // dialog offers every table of the project.
  ObjectDataList(const std::wstring& caption, std::vector<std::wstring> tables);

  void onInit() override;
  bool onButton(int buttonId) override;

  // What the dialog remembers while the module is loaded: the tables chosen at
  // the last OK, and the state of its box.
  static std::vector<std::wstring> chosenTables();
  static void clearChosenTables();
  static bool simultaneous();

  // More selected lines than this are not read at OK.
  static constexpr std::size_t kMaxSelectedLines = 1024;

 private:
  void storeChoice();

  std::vector<std::wstring> tables_;
};

}  // namespace zarvel
