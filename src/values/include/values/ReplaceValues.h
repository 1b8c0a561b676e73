// ZARVEL_REPLACE: find and replace over field values. The search is a text
// with stars or a comparison; the replacement may name the old value by "*".
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "grid/DataGrid.h"
#include "platform/Dialog.h"
#include "platform/ObjectData.h"

namespace zarvel {

// The "Replace OD values" dialog: tables to select, the fields they share to
// tick, the search expression and its replacement.
class OptionsReplace : public platform::DialogModel, private GridListener {
 public:
  static constexpr int kIdFieldGrid = 101;
  static constexpr int kIdTableGrid = 106;
  static constexpr int kIdSearch = 127;
  static constexpr int kIdReplace = 128;

  explicit OptionsReplace(std::vector<std::wstring> limitTables);

  void onInit() override;
  bool onButton(int buttonId) override;

  DataGrid& tableGrid() { return tableGrid_; }
  DataGrid& fieldGrid() { return fieldGrid_; }

  std::vector<std::wstring> chosenTables;
  std::vector<std::wstring> chosenFields;
  std::wstring searchText;
  std::wstring replaceText;

 private:
  // The fields follow the tables' selection. A front end without check boxes
  // chooses fields as rows, and the ticks follow the rows chosen.
  void OnSelectionChanged(DataGrid& grid) override;

  std::vector<std::wstring> limitTables_;
  DataGrid fieldGrid_;
  DataGrid tableGrid_;
};

// Finds the pattern in the text from offset on, ignoring case: start and end
// of the match in the whole text. A star at the front takes the match to the
// text's start, one at the back to its end.
bool findPattern(std::int32_t& start, std::int32_t& end, const std::wstring& text,
                 const std::wstring& pattern, std::int32_t offset);

// One search expression, read once for many values: whether a value matches
// and what it becomes.
class ValueReplacer {
 public:
  // The search text as the body passes it, lower-cased.
  ValueReplacer(std::wstring searchText, std::wstring replaceText);
  // True when the value matched, and was given its replacement.
  bool replace(platform::OdValue& value) const;

 private:
  enum class Rule { All, NotEqual, Smaller, Pattern };
  bool compares(const platform::OdValue& value) const;
  bool substitute(platform::OdValue& value) const;

  Rule rule_ = Rule::Pattern;
  std::wstring search_;
  std::wstring replace_;
  std::wstring operand_;
  std::int32_t integer_ = 0;
  double real_ = 0.0;
};

// Replaces in every record of the table on the entity; the number of records
// that matched.
std::int32_t replaceInField(platform::OdTable& table, platform::ObjectId entityId,
                            const std::wstring& fieldName, const std::wstring& searchText,
                            const std::wstring& replaceText);

void replaceValues(std::vector<platform::ObjectId>& ids);
void commandReplace();

}  // namespace zarvel
