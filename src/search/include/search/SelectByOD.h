// The dialog of the value search, "Find entities with specific OD values":
// tables on the left, the fields they share on the right with a condition
// each, and the box that switches the conditions' extended language on.
#pragma once

#include <string>
#include <vector>

#include "grid/DataGrid.h"
#include "platform/Dialog.h"
#include "search/ValueCondition.h"

namespace zarvel {

class SelectByOD : public platform::DialogModel, private GridListener {
 public:
  static constexpr int kIdValuesGrid = 101;
  static constexpr int kIdTableList = 106;
  static constexpr int kIdExtended = 134;

  // The tables to offer (the topology tables among them are left out); the
  // extended box shows only when asked for.
  SelectByOD(std::vector<std::wstring> tables, bool showExtended);

  void onInit() override;
  bool onButton(int buttonId) override;
  void onSize(platform::DialogSize size) override;

  // What OK read from the two lists.
  const std::vector<std::wstring>& chosenTables() const { return chosenTables_; }
  const std::vector<Condition>& conditions() const { return conditions_; }

  DataGrid& tablesList() { return tablesList_; }
  DataGrid& valuesGrid() { return valuesGrid_; }

  // The state of the extended box at the last OK, ticked at first.
  static bool extended();
  // Back to the first state, as when the module is loaded anew.
  static void forgetRemembered();

 private:
  // A change of the tables' selection rebuilds the conditions from the
  // fields that the chosen tables share.
  void OnSelectionChanged(DataGrid& grid) override;
  void placeControls();

  std::vector<std::wstring> tables_;
  bool showExtended_;
  DataGrid valuesGrid_;
  std::vector<std::wstring> chosenTables_;
  std::vector<Condition> conditions_;
  DataGrid tablesList_;
};

}  // namespace zarvel
