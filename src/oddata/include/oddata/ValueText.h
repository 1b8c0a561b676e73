// The text form of Object Data values, its parsing, and the small string
// helpers that every command shares.
#pragma once

#include <string>
#include <vector>

#include "platform/OdTypes.h"
#include "platform/OdValue.h"

namespace zarvel {

// The one text form of a value: integer "%i", real "%.12lf" without trailing
// zeros, character as it is, point "%lf,%lf,%lf", unknown "".
std::wstring valueToText(const platform::OdValue& value);

// Parses text into the value by the value's present type; the type stays.
// Numbers take the leading number of the text (0 if none). False, with the
// value unchanged, for a point of fewer than three numbers or an unknown type.
bool textToValue(platform::OdValue& value, const std::wstring& text);

// Sets one value of the record from text by the value's present type: an
// integer by _wtoi, a real by _wtof, a character as it stands; a point from
// "x,y,z", or from one number that all three coordinates take, any other
// count of numbers leaving it as it is (where textToValue refuses the single
// number). Other types, and an index past the record's end, stay unchanged.
void setFieldFromText(platform::OdRecord& record, int fieldIndex, const std::wstring& text);

// Sets a value from text by the value's present type: an integer by _wtoi, a
// real by _wtof, a character as it stands, a point from the text's
// comma-separated parts as `point` reads them (the callers differ there). The
// unknown type stays.
void assignTextByType(platform::OdValue& value, const std::wstring& text,
                      platform::Point3d (*point)(const std::vector<std::wstring>& parts));

// As textToValue, except that every "*" in the text stands for the value's
// old text form: "x*y" on "abc" gives "xabcy".
bool assignTextPattern(platform::OdValue& value, const std::wstring& text);

// "integer", "real", "character", "point" or "unknown".
std::wstring typeName(const platform::OdValue& value);

// Cuts trailing zeros behind a decimal point, keeping the digit right behind
// it: "1.500" gives "1.5", "2.000" gives "2.0"; a text without "." stays.
std::wstring trimTrailingZeros(const std::wstring& text);

// What a report sums: mode 0 the value of an integer or real (0 for other
// types), mode 1 a count of one; any other mode 0.
double fieldNumber(int mode, const platform::OdValue& value);

// Lower-cased by the host's one-to-one rule (see platform::lowerCase).
std::wstring toLowerCopy(const std::wstring& text);

// White space (" \t\n\v\f\r") off both ends.
std::wstring trimBoth(const std::wstring& text);

// The comment stripper of the text files: cuts at the first `mark`, if any,
// then trims " \t\r\n" off the right end.
std::wstring cutAtChar(const std::wstring& text, wchar_t mark);

// Whether `prefix` begins `text`, case-sensitive; an empty prefix always does.
bool startsWithText(const std::wstring& text, const std::wstring& prefix);

// Appends to `out` the non-empty tokens of `text` between any characters of
// `delimiters`.
void splitText(const std::wstring& text, const std::wstring& delimiters,
               std::vector<std::wstring>& out);

// Doubles each '"' and wraps the whole in '"'.
std::wstring csvQuote(const std::wstring& text);

}  // namespace zarvel
