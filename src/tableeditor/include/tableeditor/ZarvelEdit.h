// The box in which a whole column's new value is typed: one edit, titled
// with the column's heading and type; Enter takes the text.
#pragma once

#include <string>

#include "platform/Dialog.h"

namespace zarvel {

class ZarvelEdit : public platform::DialogModel {
 public:
  static constexpr int kIdValue = 130;

  ZarvelEdit(std::wstring columnName, std::wstring columnType);

  void onInit() override;
  bool onButton(int buttonId) override;
  // Keeps the size for the next box and lets the edit follow the width.
  void onSize(platform::DialogSize size) override;

  const std::wstring& columnName() const { return columnName_; }
  const std::wstring& columnType() const { return columnType_; }
  // What was typed, read at OK.
  const std::wstring& text() const { return text_; }

 private:
  std::wstring columnName_;
  std::wstring columnType_;
  std::wstring text_;
};

}  // namespace zarvel
