// What kind of value each group code carries, and locale-independent parsers for the value
// lines of those kinds.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/Text.h"

namespace host::dxf {

enum class ValueType { String, Int16, Int32, Int64, Double, Bool, Handle, Binary, Comment };

// The type of the values of a group code. Codes no range defines (80-89, 482-998, codes past
// 1071, negative codes...) are String, so that they are kept as text.
ValueType valueType(int code);
// Whether a range of known codes contains the code.
bool isDefinedCode(int code);

// Handle references by the kind of link they make.
bool isSoftPointer(int code);  // 320-329
bool isSoftOwner(int code);    // 330-339, 350-359
bool isHardPointer(int code);  // 340-349, 390-399, 480-481
bool isHardOwner(int code);    // 360-369

// Value lines of numbers read as the port's text services read whole numbers:
// blanks around, nothing else.
using platform::parseDouble;
using platform::parseInt;
// A handle: 1 to 16 hexadecimal digits of either case, no prefix; blanks around
// as for numbers.
std::optional<std::uint64_t> parseHandle(std::string_view text);

}  // namespace host::dxf
