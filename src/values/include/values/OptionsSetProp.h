// The "Set OD from object properties" dialog: a table, and a field of it for
// each of length, area and volume, with the decimals to round to.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

class OptionsSetProp : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 120;
  static constexpr int kIdLength = 121;
  static constexpr int kIdArea = 122;
  static constexpr int kIdVolume = 123;
  static constexpr int kIdPrecision = 130;

  // The user tables offered are those of the project that stand in the
  // limit, or all of them for an empty limit.
  explicit OptionsSetProp(std::vector<std::wstring> limit);

  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;

  // The precision shown at the next start and read at OK; the command sets it
  // to the drawing's before each run.
  static int& setPropPrecision();

  // Set at OK: the chosen table and fields, empty for none.
  std::wstring tableName;
  std::wstring lengthField;
  std::wstring areaField;
  std::wstring volumeField;

 private:
  void refillFields();

  std::vector<std::wstring> limit_;
};

}  // namespace zarvel
