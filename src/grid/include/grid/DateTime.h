// A calendar date and time of day, as a date-time cell holds one, with its
// text in a format of fields: "yyyy" year, "MM" month, "dd" day, "HH" hour,
// "mm" minute, "ss" second; any other character stands for itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zarvel {

struct DateTime {
  int year = 1970;
  int month = 1;
  int day = 1;
  int hour = 0;
  int minute = 0;
  int second = 0;

  // Seconds since 1970-01-01 00:00:00 of the proleptic Gregorian calendar.
  std::int64_t toSeconds() const;
  bool operator==(const DateTime& o) const { return toSeconds() == o.toSeconds(); }
};

inline constexpr const wchar_t* kDefaultDateTimeFormat = L"yyyy-MM-dd";

std::wstring formatDateTime(const DateTime& value, const std::wstring& format);
// The text read in the format, whole; nothing when it does not fit or names
// no real date or time.
std::optional<DateTime> parseDateTime(const std::wstring& text, const std::wstring& format);

}  // namespace zarvel
