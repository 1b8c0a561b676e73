// The grammar shared by all prompts: numbers, points, handles and keywords.
#include "host/editor/AnswerParsing.h"

#include <charconv>
#include <limits>
#include <system_error>

#include "platform/Text.h"

namespace host {

namespace {

bool isDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  return -1;
}

// Checks the decimal grammar by hand: from_chars alone would also take
// "inf", "nan" and hexadecimal forms, which a user never means at a prompt.
// Returns the ASCII text without a leading '+', which from_chars refuses.
std::optional<std::string> decimalText(std::wstring_view text, bool allowFraction) {
  std::size_t i = 0;
  std::string out;
  if (i < text.size() && (text[i] == L'+' || text[i] == L'-')) {
    if (text[i] == L'-') out += '-';
    ++i;
  }
  std::size_t digits = 0;
  while (i < text.size() && isDigit(text[i])) {
    out += static_cast<char>(text[i++]);
    ++digits;
  }
  if (allowFraction) {
    if (i < text.size() && text[i] == L'.') {
      out += '.';
      ++i;
      while (i < text.size() && isDigit(text[i])) {
        out += static_cast<char>(text[i++]);
        ++digits;
      }
    }
    if (digits > 0 && i < text.size() && (text[i] == L'e' || text[i] == L'E')) {
      out += 'e';
      ++i;
      if (i < text.size() && (text[i] == L'+' || text[i] == L'-'))
        out += static_cast<char>(text[i++]);
      std::size_t exponentDigits = 0;
      while (i < text.size() && isDigit(text[i])) {
        out += static_cast<char>(text[i++]);
        ++exponentDigits;
      }
      if (exponentDigits == 0) return std::nullopt;
    }
  }
  if (digits == 0 || i != text.size()) return std::nullopt;
  return out;
}

}  // namespace

bool isBlank(wchar_t c) {
  return c == L' ' || c == L'\t';
}

std::wstring_view trimBlanks(std::wstring_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

FirstWord splitFirstWord(std::wstring_view text) {
  text = trimBlanks(text);
  std::size_t end = 0;
  while (end < text.size() && !isBlank(text[end])) ++end;
  return {text.substr(0, end), trimBlanks(text.substr(end))};
}

bool isCancelAnswer(std::wstring_view answer) {
  const std::wstring_view word = trimBlanks(answer);
  return platform::equalsIgnoreCase(word, L"*Cancel*") || platform::equalsIgnoreCase(word, L"^C");
}

std::optional<double> parseReal(std::wstring_view text) {
  const std::optional<std::string> ascii = decimalText(trimBlanks(text), true);
  if (!ascii) return std::nullopt;
  double value = 0.0;
  const char* end = ascii->data() + ascii->size();
  const auto [ptr, ec] = std::from_chars(ascii->data(), end, value);
  if (ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

std::optional<std::int32_t> parseInt(std::wstring_view text) {
  const std::optional<std::string> ascii = decimalText(trimBlanks(text), false);
  if (!ascii) return std::nullopt;
  std::int32_t value = 0;
  const char* end = ascii->data() + ascii->size();
  const auto [ptr, ec] = std::from_chars(ascii->data(), end, value);
  if (ec != std::errc() || ptr != end) return std::nullopt;
  return value;
}

std::optional<platform::Point3d> parsePoint(std::wstring_view text) {
  double coordinates[3] = {0.0, 0.0, 0.0};
  int count = 0;
  for (;;) {
    const std::size_t comma = text.find(L',');
    if (count == 3) return std::nullopt;
    const std::optional<double> value = parseReal(text.substr(0, comma));
    if (!value) return std::nullopt;
    coordinates[count++] = *value;
    if (comma == std::wstring_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  if (count < 2) return std::nullopt;
  return platform::Point3d{coordinates[0], coordinates[1], coordinates[2]};
}

std::optional<std::uint64_t> parseHandle(std::wstring_view text) {
  text = trimBlanks(text);
  if (text.size() < 2 || text.size() > 17 || text.front() != L'#') return std::nullopt;
  std::uint64_t value = 0;
  for (wchar_t c : text.substr(1)) {
    const int digit = hexDigit(c);
    if (digit < 0) return std::nullopt;
    value = value << 4 | static_cast<std::uint64_t>(digit);
  }
  return value;
}

KeywordMatch matchKeyword(std::wstring_view answer, const std::vector<std::wstring>& keywords) {
  KeywordMatch match;
  const std::wstring word = platform::lowerCase(trimBlanks(answer));
  if (word.empty()) return match;
  for (std::size_t i = 0; i < keywords.size(); ++i) {
    const std::wstring keyword = platform::lowerCase(keywords[i]);
    if (keyword == word) {
      match.index = static_cast<int>(i);
      match.candidates.clear();
      return match;
    }
    if (keyword.compare(0, word.size(), word) == 0) match.candidates.push_back(static_cast<int>(i));
  }
  if (match.candidates.size() == 1) match.index = match.candidates.front();
  return match;
}

int findName(std::wstring_view name, const std::vector<std::wstring>& names) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<int>(i);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (platform::equalsIgnoreCase(names[i], name)) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace host
