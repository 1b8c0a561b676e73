// The dialog of the translation: a file for each kind of alias, and the
// direction as the button that closes it.
#pragma once

#include <string>

#include "platform/Dialog.h"

namespace zarvel {

class ODTranslate : public platform::DialogModel {
 public:
  static constexpr int kIdTablesFile = 1000;
  static constexpr int kIdFieldsFile = 1001;
  static constexpr int kIdValuesFile = 1002;
  // Both close the dialog as OK does.
  static constexpr int kIdNameToAlias = 1003;
  static constexpr int kIdAliasToName = 1004;

  ODTranslate();

  bool onButton(int buttonId) override;

  // The chosen files; empty for a file left unchosen.
  const std::wstring& tablesPath() const { return paths_[0]; }
  const std::wstring& fieldsPath() const { return paths_[1]; }
  const std::wstring& valuesPath() const { return paths_[2]; }
  // 0 turns names into aliases, 1 aliases back into names.
  int direction() const { return direction_; }

 private:
  std::wstring paths_[3];
  int direction_ = 0;
};

}  // namespace zarvel
