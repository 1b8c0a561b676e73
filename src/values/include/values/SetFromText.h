// Filling one field of entities from the texts in and near them: a closed
// outline takes the text inside it, anything else the text nearest to it.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"
#include "platform/ObjectId.h"

namespace zarvel {

using platform::ObjectId;

// The "Set OD from text" dialog: a table, one of its fields, and how far a
// text may stand from what it labels.
class ODSelect : public platform::DialogModel {
 public:
  static constexpr int kIdTableList = 101;
  static constexpr int kIdFieldList = 106;
  static constexpr int kIdTolerance = 130;

  // An empty list of tables offers every user table.
  explicit ODSelect(std::vector<std::wstring> tableLimit = {});

  void onInit() override;
  void onChange(int controlId) override;

  // The table and field chosen, kept while the module stays loaded: the table
  // comes back selected at the next run, the field does not.
  static const std::wstring& tableName();
  static const std::wstring& fieldName();
  static void forgetRemembered();

  std::vector<std::wstring> tableLimit;
  std::wstring lastGoodTolerance;
  double tolerance = 1.0;

 private:
  void tableChanged();
  void fillFields();
  void fieldChanged();
  void toleranceChanged();
  void setOkEnabled(bool enabled);
};

// The body: `ids` (taken from the selection when it comes empty) ends up
// holding only the targets, texts and entities that won't open taken out.
void setFromText(std::vector<ObjectId>& ids);
void commandSetText();

}  // namespace zarvel
