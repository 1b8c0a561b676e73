// The natural order's keys. A number's text ("-12.5") orders by its parts:
// the minus sign is a character below every digit, and each digit run is a
// number, so the negatives come first by growing magnitude, then the others
// by value, the digits behind the point compared as a number of their own.
// Any other column orders by the places of its distinct texts.
#include "SortKeys.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>

#include "oddata/ValueText.h"
#include "platform/Text.h"
#include "tableeditor/NaturalCompare.h"

namespace zarvel {
namespace {

constexpr std::uint32_t kIntMax = std::numeric_limits<std::int32_t>::max();

bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

// Sign first, then the whole part, then the fraction (0 for none, which
// natural order counts equal to any fraction). Parts are read as _wtoi reads
// them, saturating at the greatest integer.
std::uint64_t numberKey(bool negative, std::uint32_t whole, std::uint64_t fractionPlusOne) {
  return (negative ? 0 : std::uint64_t{1} << 63) | (std::uint64_t{whole} << 32) | fractionPlusOne;
}

// The key of a text made of "-"?, digits, and "." with digits, if it is one.
bool numberTextKey(std::wstring_view text, std::uint64_t& key) {
  const bool negative = !text.empty() && text.front() == L'-';
  std::size_t i = negative ? 1 : 0;
  auto run = [&](std::uint32_t& value) {
    const std::size_t begin = i;
    while (i < text.size() && isDigit(text[i])) ++i;
    value = static_cast<std::uint32_t>(platform::wtoi(text.substr(begin, i - begin)));
    return i > begin;
  };
  std::uint32_t whole = 0;
  std::uint32_t fraction = 0;
  if (!run(whole)) return false;
  const bool hasFraction = i < text.size() && text[i] == L'.';
  if (hasFraction) {
    ++i;
    if (!run(fraction)) return false;
  }
  if (i != text.size()) return false;
  key = numberKey(negative, whole, hasFraction ? std::uint64_t{fraction} + 1 : 0);
  return true;
}

// Integers need no text: the key comes from the value.
bool integerKeys(const std::vector<EditorRow>& rows, std::size_t field,
                 std::vector<std::uint64_t>& keys) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const std::vector<CellValue>& values = rows[i].values;
    if (field >= values.size() || values[field].type() != platform::OdType::Integer) return false;
    const std::int64_t v = values[field].value().asInt();
    const std::uint32_t magnitude =
        static_cast<std::uint32_t>(std::min<std::int64_t>(v < 0 ? -v : v, kIntMax));
    keys[i] = numberKey(v < 0, magnitude, 0);
  }
  return true;
}

std::wstring displayText(const std::vector<EditorRow>& rows, std::size_t row, std::size_t field) {
  const std::vector<CellValue>& values = rows[row].values;
  if (field >= values.size()) return {};
  const CellValue& cell = values[field];
  return cell.type() == platform::OdType::Character ? std::wstring(cell.text())
                                                    : valueToText(cell.value());
}

// Reals and numbers kept as text: each text made and read at once, none kept.
bool numberKeys(const std::vector<EditorRow>& rows, std::size_t field,
                std::vector<std::uint64_t>& keys) {
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!numberTextKey(displayText(rows, i, field), keys[i])) return false;
  }
  return true;
}

// A column repeats its values, and a million comparisons of texts strewn
// over the heap cost far more than sorting the distinct ones once.
void distinctTextKeys(const std::vector<EditorRow>& rows, std::size_t field,
                      std::vector<std::uint64_t>& keys) {
  std::vector<std::wstring> distinct;
  std::unordered_map<std::wstring, std::size_t> index;
  std::vector<std::size_t> textOfRow(rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::wstring text = displayText(rows, i, field);
    const auto found = index.emplace(std::move(text), distinct.size());
    if (found.second) distinct.push_back(found.first->first);
    textOfRow[i] = found.first->second;
  }
  // Two empty texts compare below each other, and a text equals any that it
  // begins: no order a sort may rely on. A merge sort stays within its range
  // whatever the comparison answers; a text is never below itself.
  std::vector<std::size_t> order(distinct.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(), [&](std::size_t l, std::size_t r) {
    return l != r && naturalCompare(distinct[l], distinct[r]) < 0;
  });
  std::vector<std::uint64_t> place(distinct.size());
  for (std::size_t i = 0; i < order.size(); ++i) place[order[i]] = i;
  for (std::size_t i = 0; i < rows.size(); ++i) keys[i] = place[textOfRow[i]];
}

}  // namespace

std::vector<std::uint64_t> naturalSortKeys(const std::vector<EditorRow>& rows, std::size_t field) {
  std::vector<std::uint64_t> keys(rows.size());
  if (!integerKeys(rows, field, keys) && !numberKeys(rows, field, keys)) {
    distinctTextKeys(rows, field, keys);
  }
  return keys;
}

}  // namespace zarvel
