// A typed value of an Object Data field.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "platform/Geometry.h"

namespace platform {

// Type codes, as the platform reports them.
enum class OdType : int { Unknown = 0, Integer = 1, Real = 2, Character = 3, Point = 4 };

class OdValue {
 public:
  OdValue() = default;
  explicit OdValue(std::int32_t v) : data_(v) {}
  explicit OdValue(double v) : data_(v) {}
  explicit OdValue(std::wstring v) : data_(std::move(v)) {}
  explicit OdValue(const wchar_t* v) : data_(std::wstring(v)) {}
  explicit OdValue(const Point3d& v) : data_(v) {}

  // A value of the given type holding that type's zero (0, 0.0, "", origin).
  static OdValue zeroOf(OdType type);

  OdType type() const { return static_cast<OdType>(data_.index()); }

  // Conversions: integer and real convert into each other (real truncates),
  // everything else gives the zero of the asked type.
  std::int32_t asInt() const;
  double asReal() const;
  const std::wstring& asText() const;  // empty unless Character
  Point3d asPoint() const;             // origin unless Point

  // Assignment sets both value and type.
  OdValue& operator=(std::int32_t v) { data_ = v; return *this; }
  OdValue& operator=(double v) { data_ = v; return *this; }
  OdValue& operator=(std::wstring v) { data_ = std::move(v); return *this; }
  OdValue& operator=(const wchar_t* v) { data_ = std::wstring(v); return *this; }
  OdValue& operator=(const Point3d& v) { data_ = v; return *this; }

  // Exact equality: same type and the same value.
  friend bool operator==(const OdValue& a, const OdValue& b) { return a.data_ == b.data_; }
  friend bool operator!=(const OdValue& a, const OdValue& b) { return !(a == b); }

 private:
  // The index of each alternative is its type code.
  std::variant<std::monostate, std::int32_t, double, std::wstring, Point3d> data_;
};

// The text form in which values are shown to the user: integer "%i"; real
// "%.12lf" without trailing zeros but with at least one decimal; character as
// it is; point "%lf,%lf,%lf"; unknown as the empty string.
std::wstring valueText(const OdValue& value);

}  // namespace platform
