// ZARVEL_SETID: numbers records with a running counter, with an optional
// prefix and suffix on character fields. The dialog proposes the number that
// follows the highest already in the field.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/Dialog.h"
#include "platform/ObjectId.h"

namespace zarvel {

// The "Generate IDs" dialog.
class OptionsWild : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 116;
  static constexpr int kIdField = 117;
  static constexpr int kIdPrefix = 118;
  static constexpr int kIdSuffix = 119;
  static constexpr int kIdFirst = 130;

  // Offers the user tables among the limit; an empty limit offers all the
  // drawing's user tables.
  explicit OptionsWild(std::vector<std::wstring> limitTables);

  void onInit() override;
  void onChange(int controlId) override;
  bool onButton(int buttonId) override;

  std::wstring prefix;
  std::wstring suffix;

  // What the dialog remembers while the module stays loaded.
  static std::int32_t setIDFirst();  // -1 after a first number that was no number
  static const std::wstring& setIDTableName();
  static const std::wstring& setIDFieldName();
  static void forgetRemembered();

 private:
  void tableChosen();
  void fieldChosen();

  std::vector<std::wstring> limitTables_;
};

void createIDs(std::vector<platform::ObjectId>& ids);
// Numbers from the last entity of the list to the first; returns how many
// numbers went out, 0 when the table or field is missing or is a point.
std::int32_t writeIDs(const std::vector<platform::ObjectId>& ids, const std::wstring& tableName,
                      const std::wstring& fieldName, const std::wstring& prefix,
                      const std::wstring& suffix, std::int32_t first);
// The highest number in the field over all of model space, 0 at least.
std::int32_t highestNumberInField(const std::wstring& tableName, const std::wstring& fieldName);
// The digits that follow the first digit of the text; the fallback when that
// digit is the text's last character. "K-117" gives "117", "A7" the fallback.
std::wstring firstDigitRun(const std::wstring& text, const std::wstring& fallback);

void commandSetId();

}  // namespace zarvel
