// The small grammar shared by every prompt of the command line: blanks,
// cancel answers, numbers, points, handles and keyword matching. Parsing is
// strict and never depends on the machine's locale, so a script reads the same
// everywhere.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Geometry.h"

namespace host {

// Space and tab: what separates the words of an answer.
bool isBlank(wchar_t c);
std::wstring_view trimBlanks(std::wstring_view text);
// The first word of an answer and what follows it, each without blanks around:
// a prompt where a blank ends the answer takes the word and ignores the rest.
struct FirstWord {
  std::wstring_view word;
  std::wstring_view rest;
};
FirstWord splitFirstWord(std::wstring_view text);

// "*Cancel*" or "^C", in any case, blanks around ignored: the Esc of a script.
bool isCancelAnswer(std::wstring_view answer);

// A decimal real: optional sign, digits with an optional point, optional
// exponent. The whole text (blanks around ignored) must be the number; values
// a double cannot hold are rejected rather than rounded to infinity or zero.
std::optional<double> parseReal(std::wstring_view text);
// A decimal 32-bit integer with an optional sign; the whole text must be it.
std::optional<std::int32_t> parseInt(std::wstring_view text);
// "x,y" or "x,y,z" with blanks allowed around each number; z defaults to 0.
std::optional<platform::Point3d> parsePoint(std::wstring_view text);
// "#1F": '#' then 1 to 16 hexadecimal digits in any case.
std::optional<std::uint64_t> parseHandle(std::wstring_view text);

// How an answer matched a keyword list: a case-insensitive exact match wins
// over prefixes, else the prefix must fit one keyword only. Among ON/OFF, "on"
// picks ON, "of" picks OFF and "o" is ambiguous.
struct KeywordMatch {
  int index = -1;               // the keyword chosen, -1 if none
  std::vector<int> candidates;  // when ambiguous: every keyword the prefix fits
  bool found() const { return index >= 0; }
  bool ambiguous() const { return index < 0 && candidates.size() > 1; }
};
KeywordMatch matchKeyword(std::wstring_view answer, const std::vector<std::wstring>& keywords);

// Index of a name in a list: an exact match first, else the first match
// ignoring case; -1 if none. Names of tables and fields may differ only in
// case, so no prefix guessing here.
int findName(std::wstring_view name, const std::vector<std::wstring>& names);

}  // namespace host
