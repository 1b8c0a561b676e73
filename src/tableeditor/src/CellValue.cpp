// The compact field values of the table editor's rows.
#include "tableeditor/CellValue.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace zarvel {

using platform::OdType;
using platform::OdValue;
using platform::Point3d;

CellValue::CellValue(const OdValue& value) : type_(static_cast<std::uint8_t>(value.type())) {
  switch (value.type()) {
    case OdType::Integer:
      integer_ = value.asInt();
      break;
    case OdType::Real:
      real_ = value.asReal();
      break;
    case OdType::Character: {
      const std::wstring& text = value.asText();
      length_ = static_cast<std::uint32_t>(text.size());
      text_ = length_ == 0 ? nullptr : new wchar_t[length_];
      std::copy(text.begin(), text.end(), text_);
      break;
    }
    case OdType::Point:
      point_ = new Point3d(value.asPoint());
      break;
    case OdType::Unknown:
      integer_ = 0;
      break;
  }
}

CellValue::CellValue(const CellValue& other) {
  copyFrom(other);
}

CellValue::CellValue(CellValue&& other) noexcept : type_(other.type_), length_(other.length_) {
  // The union is taken whole through its widest member; the other keeps no
  // block of its own.
  std::memcpy(&real_, &other.real_, sizeof(real_));
  other.type_ = 0;
  other.length_ = 0;
}

CellValue& CellValue::operator=(const CellValue& other) {
  if (this != &other) {
    release();
    copyFrom(other);
  }
  return *this;
}

CellValue& CellValue::operator=(CellValue&& other) noexcept {
  if (this != &other) {
    release();
    type_ = other.type_;
    length_ = other.length_;
    std::memcpy(&real_, &other.real_, sizeof(real_));
    other.type_ = 0;
    other.length_ = 0;
  }
  return *this;
}

CellValue::~CellValue() {
  release();
}

void CellValue::release() {
  if (type() == OdType::Character) delete[] text_;
  if (type() == OdType::Point) delete point_;
  type_ = 0;
  length_ = 0;
}

void CellValue::copyFrom(const CellValue& other) {
  type_ = other.type_;
  length_ = other.length_;
  switch (other.type()) {
    case OdType::Character:
      text_ = length_ == 0 ? nullptr : new wchar_t[length_];
      std::copy(other.text_, other.text_ + length_, text_);
      break;
    case OdType::Point:
      point_ = new Point3d(*other.point_);
      break;
    default:
      std::memcpy(&real_, &other.real_, sizeof(real_));
      break;
  }
}

std::vector<CellValue> toCells(const std::vector<OdValue>& values) {
  std::vector<CellValue> cells;
  cells.reserve(values.size());
  for (const OdValue& value : values) cells.emplace_back(value);
  return cells;
}

OdValue CellValue::value() const {
  switch (type()) {
    case OdType::Integer:
      return OdValue(integer_);
    case OdType::Real:
      return OdValue(real_);
    case OdType::Character:
      return OdValue(std::wstring(text_, length_));
    case OdType::Point:
      return OdValue(*point_);
    case OdType::Unknown:
      break;
  }
  return OdValue();
}

bool operator==(const CellValue& a, const CellValue& b) {
  if (a.type_ != b.type_) return false;
  switch (a.type()) {
    case OdType::Integer:
      return a.integer_ == b.integer_;
    case OdType::Real:
      return a.real_ == b.real_;
    case OdType::Character:
      return a.length_ == b.length_ && std::equal(a.text_, a.text_ + a.length_, b.text_);
    case OdType::Point:
      return *a.point_ == *b.point_;
    case OdType::Unknown:
      break;
  }
  return true;
}

}  // namespace zarvel
