// Dates and times of date-time cells: their seconds, and their text in a
// format of fields.
#include "grid/DateTime.h"

#include <array>
#include <cwchar>

namespace zarvel {
namespace {

struct Field {
  const wchar_t* token;
  int DateTime::*member;
  int digits;  // fixed width when written; read with as many digits
  int low;
  int high;
};

const std::array<Field, 6> kFields = {{
    {L"yyyy", &DateTime::year, 4, 1, 9999},
    {L"MM", &DateTime::month, 2, 1, 12},
    {L"dd", &DateTime::day, 2, 1, 31},
    {L"HH", &DateTime::hour, 2, 0, 23},
    {L"mm", &DateTime::minute, 2, 0, 59},
    {L"ss", &DateTime::second, 2, 0, 59},
}};

const Field* fieldAt(const std::wstring& format, std::size_t at) {
  for (const Field& f : kFields) {
    if (format.compare(at, std::wcslen(f.token), f.token) == 0) return &f;
  }
  return nullptr;
}

// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
std::int64_t daysFromCivil(std::int64_t y, int m, int d) {
  y -= m <= 2 ? 1 : 0;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yoe = y - era * 400;
  const std::int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

int daysInMonth(int year, int month) {
  static const std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

}  // namespace

std::int64_t DateTime::toSeconds() const {
  return daysFromCivil(year, month, day) * 86400 + hour * 3600 + minute * 60 + second;
}

std::wstring formatDateTime(const DateTime& value, const std::wstring& format) {
  std::wstring text;
  for (std::size_t at = 0; at < format.size();) {
    if (const Field* f = fieldAt(format, at)) {
      std::wstring number = std::to_wstring(value.*(f->member));
      if (static_cast<int>(number.size()) < f->digits) {
        number.insert(0, static_cast<std::size_t>(f->digits) - number.size(), L'0');
      }
      text += number;
      at += std::wcslen(f->token);
    } else {
      text += format[at++];
    }
  }
  return text;
}

std::optional<DateTime> parseDateTime(const std::wstring& text, const std::wstring& format) {
  DateTime value;
  std::size_t pos = 0;
  for (std::size_t at = 0; at < format.size();) {
    const Field* f = fieldAt(format, at);
    if (!f) {
      if (pos >= text.size() || text[pos] != format[at]) return std::nullopt;
      ++pos;
      ++at;
      continue;
    }
    int number = 0;
    int digits = 0;
    while (pos < text.size() && text[pos] >= L'0' && text[pos] <= L'9' && digits < f->digits) {
      number = number * 10 + (text[pos++] - L'0');
      ++digits;
    }
    if (digits == 0 || number < f->low || number > f->high) return std::nullopt;
    value.*(f->member) = number;
    at += std::wcslen(f->token);
  }
  if (pos != text.size() || value.day > daysInMonth(value.year, value.month)) return std::nullopt;
  return value;
}

}  // namespace zarvel
