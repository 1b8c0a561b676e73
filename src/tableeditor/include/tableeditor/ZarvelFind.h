// The find box of the table editor's rows: a field, a text, and whether the
// text must match the whole value. The text and the flag are remembered.
#pragma once

#include <string>
#include <vector>

#include "platform/Dialog.h"

namespace zarvel {

class ZarvelFind : public platform::DialogModel {
 public:
  static constexpr int kIdField = 110;
  static constexpr int kIdValue = 130;
  static constexpr int kIdWhole = 134;

  explicit ZarvelFind(std::vector<std::wstring> columnNames);

  void onInit() override;
  bool onButton(int buttonId) override;

  // The field chosen at Find, an index into the names given.
  int column() const { return column_; }

 private:
  std::vector<std::wstring> columnNames_;
  int column_ = 0;
};

}  // namespace zarvel
