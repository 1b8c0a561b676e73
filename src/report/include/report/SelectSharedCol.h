// The dialog of the explication report: the tables to report on, the field
// they share that may group the rows instead of the tables, and the text that
// separates the fields of the file.
#pragma once

#include <string>
#include <vector>

#include "grid/DataGrid.h"
#include "platform/Dialog.h"

namespace zarvel {

class SelectSharedCol : public platform::DialogModel, private GridListener {
 public:
  static constexpr int kIdTableList = 1000;
  static constexpr int kIdTypeField = 1001;
  static constexpr int kIdField = 1002;
  static constexpr int kIdSeparator = 1003;

  // The tables to offer; with none, every table of the project. The topology
  // tables are left out either way.
  explicit SelectSharedCol(std::vector<std::wstring> candidates);

  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;

  DataGrid& tablesList() { return tablesList_; }

  // What OK read: the tables in row order, the flag, the field (empty when
  // none was current) and the separator.
  const std::vector<std::wstring>& chosenTables() const { return chosenTables_; }
  bool typeField() const { return typeField_; }
  const std::wstring& field() const { return field_; }
  const std::wstring& separator() const { return separator_; }

 private:
  void OnSelectionChanged(DataGrid& grid) override;
  std::vector<std::wstring> selectedTables() const;

  std::vector<std::wstring> candidates_;
  DataGrid tablesList_;
  std::vector<std::wstring> chosenTables_;
  bool typeField_ = false;
  std::wstring field_;
  std::wstring separator_;
};

// The columns that every table shares, in the first table's order and
// writing; the others are matched ignoring case. None for no tables.
std::vector<std::wstring> sharedColumns(const std::vector<std::wstring>& tables);

}  // namespace zarvel
