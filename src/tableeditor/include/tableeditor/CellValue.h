// A field value as the table editor keeps it in memory: the value of a
// record in 16 bytes, a text or a point held apart in a block of its exact
// size, so that a table of a million rows costs little more than its values.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "platform/OdValue.h"

namespace zarvel {

class CellValue {
 public:
  CellValue() = default;
  explicit CellValue(const platform::OdValue& value);
  CellValue(const CellValue& other);
  CellValue(CellValue&& other) noexcept;
  CellValue& operator=(const CellValue& other);
  CellValue& operator=(CellValue&& other) noexcept;
  ~CellValue();

  platform::OdType type() const { return static_cast<platform::OdType>(type_); }
  // The value, made afresh.
  platform::OdValue value() const;
  // A character value's text, in place; empty for the other kinds.
  std::wstring_view text() const {
    return type() == platform::OdType::Character ? std::wstring_view(text_, length_)
                                                 : std::wstring_view();
  }

  // Exact equality, as the values' own.
  friend bool operator==(const CellValue& a, const CellValue& b);
  friend bool operator!=(const CellValue& a, const CellValue& b) { return !(a == b); }
  friend bool operator==(const CellValue& a, const platform::OdValue& b) { return a.value() == b; }

 private:
  void release();
  void copyFrom(const CellValue& other);

  std::uint8_t type_ = 0;
  std::uint32_t length_ = 0;  // of a text
  union {
    std::int32_t integer_;
    double real_;
    wchar_t* text_;
    platform::Point3d* point_;
  };
};

std::vector<CellValue> toCells(const std::vector<platform::OdValue>& values);

}  // namespace zarvel
