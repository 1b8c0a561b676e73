// Conversions of Object Data values and the one text form they show in.
#include "platform/OdValue.h"

#include <cmath>
#include <limits>

#include "platform/Text.h"

namespace platform {
namespace {

// A real shows at least one decimal, so that it never reads as an integer.
std::wstring trimRealZeros(std::wstring text) {
  const size_t point = text.find(L'.');
  if (point == std::wstring::npos) return text;
  size_t keep = text.size();
  while (keep > point + 2 && text[keep - 1] == L'0') --keep;
  text.erase(keep);
  return text;
}

}  // namespace

OdValue OdValue::zeroOf(OdType type) {
  switch (type) {
    case OdType::Integer:
      return OdValue(std::int32_t{0});
    case OdType::Real:
      return OdValue(0.0);
    case OdType::Character:
      return OdValue(std::wstring());
    case OdType::Point:
      return OdValue(Point3d{});
    case OdType::Unknown:
      break;
  }
  return OdValue();
}

std::int32_t OdValue::asInt() const {
  if (const auto* integer = std::get_if<std::int32_t>(&data_)) return *integer;
  if (const auto* real = std::get_if<double>(&data_)) {
    constexpr double kMax = std::numeric_limits<std::int32_t>::max();
    constexpr double kMin = std::numeric_limits<std::int32_t>::min();
    if (std::isnan(*real)) return 0;
    if (*real >= kMax) return std::numeric_limits<std::int32_t>::max();
    if (*real <= kMin) return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(*real);
  }
  return 0;
}

double OdValue::asReal() const {
  if (const auto* integer = std::get_if<std::int32_t>(&data_)) return *integer;
  if (const auto* real = std::get_if<double>(&data_)) return *real;
  return 0.0;
}

const std::wstring& OdValue::asText() const {
  static const std::wstring kEmpty;
  const auto* text = std::get_if<std::wstring>(&data_);
  return text != nullptr ? *text : kEmpty;
}

Point3d OdValue::asPoint() const {
  const auto* point = std::get_if<Point3d>(&data_);
  return point != nullptr ? *point : Point3d{};
}

std::wstring valueText(const OdValue& value) {
  switch (value.type()) {
    case OdType::Integer:
      return format(L"%i", value.asInt());
    case OdType::Real:
      return trimRealZeros(format(L"%.12lf", value.asReal()));
    case OdType::Character:
      return value.asText();
    case OdType::Point: {
      const Point3d p = value.asPoint();
      return format(L"%lf,%lf,%lf", p.x, p.y, p.z);
    }
    case OdType::Unknown:
      break;
  }
  return std::wstring();
}

}  // namespace platform
