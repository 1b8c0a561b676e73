// ZARVEL_ADDVAL and ZARVEL_ADDVAL_OD2OD: add one field's value to another's
// on each entity, between two fields of one table or of two tables. Numbers
// are summed, texts appended.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"
#include "platform/ObjectData.h"

namespace zarvel {

// The dialog of ZARVEL_ADDVAL: a table, the field that receives and the one
// that is added.
class OptionsCopyVal : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 101;
  static constexpr int kIdToField = 110;
  static constexpr int kIdFromField = 111;

  explicit OptionsCopyVal(std::vector<std::wstring> limitTables);
  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;

  std::wstring tableName;
  std::wstring toField;
  std::wstring fromField;

 private:
  void refillFields();
  std::vector<std::wstring> limitTables_;
};

// The dialog of ZARVEL_ADDVAL_OD2OD: a source table and field (internal
// tables too) and a target table and field (user tables only).
class OptionsCopyValSameEnt : public platform::DialogModel {
 public:
  static constexpr int kIdFromTable = 101;
  static constexpr int kIdToTable = 106;
  static constexpr int kIdFromField = 110;
  static constexpr int kIdToField = 111;

  explicit OptionsCopyValSameEnt(std::vector<std::wstring> limitTables);
  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;

  std::wstring fromTable;
  std::wstring toTable;
  std::wstring fromField;
  std::wstring toField;

 private:
  void refillFields(int tableList, int fieldCombo);
  // OK only while all four are chosen and they name two different fields.
  void enableOk();
  std::vector<std::wstring> limitTables_;
};

// The target's value with the source's added by their types; false, leaving
// the target as it was, for a pair the addition does not know.
bool addValue(platform::OdValue& target, const platform::OdValue& source);

bool addFieldToField(platform::OdContainer& container, platform::ObjectId entityId,
                     const std::wstring& tableName, const std::wstring& toField,
                     const std::wstring& fromField);
bool addTableToTable(platform::OdContainer& container, platform::ObjectId entityId,
                     const std::wstring& fromTable, const std::wstring& toTable,
                     const std::wstring& fromField, const std::wstring& toField);

void addFieldValues(std::vector<platform::ObjectId>& ids);
void addTableValues(std::vector<platform::ObjectId>& ids);
void commandAddVal();
void commandAddValOd2Od();

}  // namespace zarvel
