// The "Attach/detach OD" dialog: the user tables on the left, the chosen
// table's fields with their default values on the right to be overtyped, and
// two buttons that choose between attaching and detaching.
#pragma once

#include <string>
#include <vector>

#include "grid/DataGrid.h"
#include "platform/Dialog.h"
#include "platform/ObjectData.h"

namespace zarvel {

class AttachOD : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 103;
  static constexpr int kIdDetach = 104;
  static constexpr int kIdAttach = 105;
  static constexpr int kIdGrid = 115;
  static constexpr int kModeDetach = 0;
  static constexpr int kModeAttach = 1;

  AttachOD();

  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;
  void onSize(platform::DialogSize size) override;

  // Whether the dialog closed by one of its two actions.
  static bool isAction(int result) { return result == kIdAttach || result == kIdDetach; }
  // The table chosen last: the command's table once the dialog has closed,
  // and the one chosen first the next time.
  static const std::wstring& lastODTableName();
  // Back to the first state, as when the module is loaded anew.
  static void forgetRemembered();

  // The two columns of the grid as they stood when the dialog closed.
  std::vector<std::wstring> fieldNames;
  std::vector<std::wstring> fieldValues;
  int mode = kModeDetach;
  DataGrid grid;

 private:
  void refillGrid();
  void readRows();
  void placeControls();
};

// The default values of the table's columns, in column order. The platform
// gives them only on a record attached to an entity, so a scratch point is
// made for it and erased again.
std::vector<platform::OdValue> defaultValuesOfTable(platform::OdContainer& container,
                                                    const std::wstring& tableName);

}  // namespace zarvel
