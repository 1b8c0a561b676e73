// The "Set OD from object coordinates" dialog: a table, a field of it for
// each of X, Y and Z (or none), how an entity becomes a plan point and a
// height, and the decimals of each.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

// The choices of the dialog, kept while the module stays loaded. An empty
// field is a coordinate not written; the modes are the combo boxes' indices
// (PlanMode, HeightMode); the precisions are set anew at every run.
struct SetXyzChoices {
  int setXYMode = 2;
  int setZMode = 2;
  std::wstring setXYZTableName;
  std::wstring setXField;
  std::wstring setYField;
  std::wstring setZField;
  int setXYPrecision = 0;
  int setZPrecision = 0;
};

class ODSelectXYZ : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 101;
  static constexpr int kIdFieldX = 110;
  static constexpr int kIdFieldY = 111;
  static constexpr int kIdFieldZ = 112;
  static constexpr int kIdHeightMode = 124;
  static constexpr int kIdPlanMode = 125;
  static constexpr int kIdPrecisionXY = 130;
  static constexpr int kIdPrecisionZ = 131;

  // The user tables offered are those of the project that stand in the
  // limit, or all of them for an empty limit.
  explicit ODSelectXYZ(std::vector<std::wstring> limit);

  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;

  static SetXyzChoices& choices();
  // Back to the first state, as when the module is loaded anew.
  static void forgetRemembered();

 private:
  // Each field combo box: an empty entry, then the chosen table's columns in
  // their order, with the empty one chosen.
  void refillFields();
  std::wstring chosenTable() const;

  std::vector<std::wstring> limit_;
};

}  // namespace zarvel
