// Whole numbers in narrow text, as files write them.
#include <charconv>
#include <cmath>
#include <system_error>

#include "platform/Text.h"

namespace platform {
namespace {

std::string_view trimBlanks(std::string_view text) {
  const auto blank = [](char c) { return c == ' ' || c == '\t'; };
  while (!text.empty() && blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && blank(text.back())) text.remove_suffix(1);
  return text;
}

// Drops one leading '+', which from_chars does not take; "+-1" stays rejected because the
// sign that remains is then a second one.
bool dropPlus(std::string_view& text) {
  if (text.empty() || text.front() != '+') return true;
  text.remove_prefix(1);
  return !text.empty() && text.front() != '-';
}

}  // namespace

std::optional<double> parseDouble(std::string_view text) {
  text = trimBlanks(text);
  if (!dropPlus(text) || text.empty()) return std::nullopt;
  // from_chars would also read "inf" and "nan"; only digits, a point or a sign may start a real.
  const char first = text.front() == '-' && text.size() > 1 ? text[1] : text.front();
  if (!((first >= '0' && first <= '9') || first == '.')) return std::nullopt;
  double value = 0.0;
  const char* const end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value, std::chars_format::general);
  if (ec != std::errc() || ptr != end || !std::isfinite(value)) return std::nullopt;
  return value;
}

std::optional<std::int64_t> parseInt(std::string_view text) {
  text = trimBlanks(text);
  if (!dropPlus(text) || text.empty()) return std::nullopt;
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [ptr, ec] = std::from_chars(text.data(), end, value);
  if (ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

}  // namespace platform
