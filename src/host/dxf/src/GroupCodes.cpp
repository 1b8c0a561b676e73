// The group-code table and the value parsers.
#include "GroupCodes.h"

#include <array>

namespace host::dxf {
namespace {

constexpr int kTableSize = 1072;

// Undefined codes keep the default entry: String, not defined.
struct Entry {
  ValueType type = ValueType::String;
  bool defined = false;
};

constexpr void fill(std::array<Entry, kTableSize>& table, int first, int last, ValueType type) {
  for (int code = first; code <= last; ++code) {
    table[static_cast<std::size_t>(code)] = Entry{type, true};
  }
}

constexpr std::array<Entry, kTableSize> makeTable() {
  std::array<Entry, kTableSize> t{};
  fill(t, 0, 9, ValueType::String);
  fill(t, 10, 59, ValueType::Double);
  fill(t, 60, 79, ValueType::Int16);
  fill(t, 90, 99, ValueType::Int32);
  fill(t, 100, 100, ValueType::String);  // subclass marker
  fill(t, 101, 101, ValueType::String);  // embedded object marker
  fill(t, 102, 102, ValueType::String);  // "{NAME" / "}" group brackets
  fill(t, 105, 105, ValueType::Handle);
  fill(t, 110, 149, ValueType::Double);
  fill(t, 160, 169, ValueType::Int64);
  fill(t, 170, 179, ValueType::Int16);
  fill(t, 210, 239, ValueType::Double);
  fill(t, 270, 289, ValueType::Int16);
  fill(t, 290, 299, ValueType::Bool);
  fill(t, 300, 309, ValueType::String);
  fill(t, 310, 319, ValueType::Binary);
  fill(t, 320, 369, ValueType::Handle);
  fill(t, 370, 389, ValueType::Int16);
  fill(t, 390, 399, ValueType::Handle);
  fill(t, 400, 409, ValueType::Int16);
  fill(t, 410, 419, ValueType::String);
  fill(t, 420, 429, ValueType::Int32);
  fill(t, 430, 439, ValueType::String);
  fill(t, 440, 449, ValueType::Int32);
  fill(t, 450, 459, ValueType::Int32);
  fill(t, 460, 469, ValueType::Double);
  fill(t, 470, 479, ValueType::String);
  fill(t, 480, 481, ValueType::Handle);
  fill(t, 999, 999, ValueType::Comment);
  fill(t, 1000, 1009, ValueType::String);
  // Extended data keeps a binary chunk and a handle among its strings; both must be told
  // apart, the chunk to stay hex text and the handle to follow when objects are renumbered.
  fill(t, 1004, 1004, ValueType::Binary);
  fill(t, 1005, 1005, ValueType::Handle);
  fill(t, 1010, 1059, ValueType::Double);
  fill(t, 1060, 1070, ValueType::Int16);
  fill(t, 1071, 1071, ValueType::Int32);
  return t;
}

constexpr std::array<Entry, kTableSize> kTable = makeTable();

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}

bool inRange(int code, int first, int last) {
  return code >= first && code <= last;
}

}  // namespace

ValueType valueType(int code) {
  if (code < 0 || code >= kTableSize) return ValueType::String;
  return kTable[static_cast<std::size_t>(code)].type;
}

bool isDefinedCode(int code) {
  return code >= 0 && code < kTableSize && kTable[static_cast<std::size_t>(code)].defined;
}

bool isSoftPointer(int code) {
  return inRange(code, 320, 329);
}
bool isSoftOwner(int code) {
  return inRange(code, 330, 339) || inRange(code, 350, 359);
}
bool isHardPointer(int code) {
  return inRange(code, 340, 349) || inRange(code, 390, 399) || inRange(code, 480, 481);
}
bool isHardOwner(int code) {
  return inRange(code, 360, 369);
}

std::optional<std::uint64_t> parseHandle(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  if (text.empty() || text.size() > 16) return std::nullopt;
  std::uint64_t value = 0;
  for (char c : text) {
    unsigned digit = 0;
    if (c >= '0' && c <= '9') {
      digit = static_cast<unsigned>(c - '0');
    } else if (c >= 'A' && c <= 'F') {
      digit = static_cast<unsigned>(c - 'A' + 10);
    } else if (c >= 'a' && c <= 'f') {
      digit = static_cast<unsigned>(c - 'a' + 10);
    } else {
      return std::nullopt;
    }
    value = (value << 4) | digit;
  }
  return value;
}

}  // namespace host::dxf
