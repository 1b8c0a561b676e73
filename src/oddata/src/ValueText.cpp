// Text forms of Object Data values and the shared string helpers.
#include "oddata/ValueText.h"

#include "platform/Text.h"

namespace zarvel {

using platform::OdType;
using platform::OdValue;

std::wstring valueToText(const OdValue& value) {
  return platform::valueText(value);
}

bool textToValue(OdValue& value, const std::wstring& text) {
  switch (value.type()) {
    case OdType::Integer:
      value = platform::wtoi(text);
      return true;
    case OdType::Real:
      value = platform::wtof(text);
      return true;
    case OdType::Character:
      value = text;
      return true;
    case OdType::Point: {
      // Parsed aside: a refused point must keep all three old coordinates.
      platform::Point3d point;
      if (platform::scanPoint(text, point) < 3) return false;
      value = point;
      return true;
    }
    case OdType::Unknown:
      break;
  }
  return false;
}

void setFieldFromText(platform::OdRecord& record, int fieldIndex, const std::wstring& text) {
  if (fieldIndex < 0 || fieldIndex >= record.count()) return;
  OdValue& value = record.value(fieldIndex);
  if (value.type() != OdType::Point) {
    // Numbers and characters read text as textToValue does; it refuses only
    // the unknown type, which is to stay unchanged anyway.
    textToValue(value, text);
    return;
  }
  std::vector<std::wstring> numbers;
  splitText(text, L",", numbers);
  if (numbers.size() == 1) {
    const double all = platform::wtof(numbers[0]);
    value = platform::Point3d{all, all, all};
  } else if (numbers.size() == 3) {
    value = platform::Point3d{platform::wtof(numbers[0]), platform::wtof(numbers[1]),
                              platform::wtof(numbers[2])};
  }
}

void assignTextByType(OdValue& value, const std::wstring& text,
                      platform::Point3d (*point)(const std::vector<std::wstring>& parts)) {
  switch (value.type()) {
    case OdType::Integer:
      value = platform::wtoi(text);
      break;
    case OdType::Real:
      value = platform::wtof(text);
      break;
    case OdType::Character:
      value = text;
      break;
    case OdType::Point: {
      std::vector<std::wstring> parts;
      splitText(text, L",", parts);
      value = point(parts);
      break;
    }
    case OdType::Unknown:
      break;
  }
}

bool assignTextPattern(OdValue& value, const std::wstring& text) {
  if (text.find(L'*') == std::wstring::npos) return textToValue(value, text);
  const std::wstring old = valueToText(value);
  std::wstring expanded;
  expanded.reserve(text.size() + old.size());
  for (wchar_t c : text) {
    if (c == L'*')
      expanded += old;
    else
      expanded += c;
  }
  // A character value takes the text as it stands, without another copy.
  if (value.type() == OdType::Character) {
    value = std::move(expanded);
    return true;
  }
  return textToValue(value, expanded);
}

std::wstring typeName(const OdValue& value) {
  switch (value.type()) {
    case OdType::Integer:
      return L"integer";
    case OdType::Real:
      return L"real";
    case OdType::Character:
      return L"character";
    case OdType::Point:
      return L"point";
    case OdType::Unknown:
      break;
  }
  return L"unknown";
}

std::wstring trimTrailingZeros(const std::wstring& text) {
  const size_t point = text.find(L'.');
  if (point == std::wstring::npos) return text;
  size_t keep = text.size();
  while (keep > point + 2 && text[keep - 1] == L'0') --keep;
  return text.substr(0, keep);
}

double fieldNumber(int mode, const OdValue& value) {
  if (mode == 1) return 1.0;
  if (mode != 0) return 0.0;
  const OdType type = value.type();
  return (type == OdType::Integer || type == OdType::Real) ? value.asReal() : 0.0;
}

std::wstring toLowerCopy(const std::wstring& text) {
  return platform::lowerCase(text);
}

std::wstring trimBoth(const std::wstring& text) {
  static const wchar_t* const kWhiteSpace = L" \t\n\v\f\r";
  const size_t first = text.find_first_not_of(kWhiteSpace);
  if (first == std::wstring::npos) return std::wstring();
  const size_t last = text.find_last_not_of(kWhiteSpace);
  return text.substr(first, last - first + 1);
}

std::wstring cutAtChar(const std::wstring& text, wchar_t mark) {
  std::wstring cut = text.substr(0, text.find(mark));
  const size_t last = cut.find_last_not_of(L" \t\r\n");
  cut.erase(last == std::wstring::npos ? 0 : last + 1);
  return cut;
}

bool startsWithText(const std::wstring& text, const std::wstring& prefix) {
  return prefix.size() <= text.size() && text.compare(0, prefix.size(), prefix) == 0;
}

void splitText(const std::wstring& text, const std::wstring& delimiters,
               std::vector<std::wstring>& out) {
  size_t start = text.find_first_not_of(delimiters);
  while (start != std::wstring::npos) {
    const size_t end = text.find_first_of(delimiters, start);
    out.push_back(text.substr(start, end == std::wstring::npos ? end : end - start));
    start = text.find_first_not_of(delimiters, end);
  }
}

std::wstring csvQuote(const std::wstring& text) {
  std::wstring quoted = L"\"";
  for (wchar_t c : text) {
    if (c == L'"') quoted += L'"';
    quoted += c;
  }
  quoted += L'"';
  return quoted;
}

}  // namespace zarvel
