// Row places typed at the command line and shown back as defaults.
#include "RowRanges.h"

#include <cwctype>

namespace zarvel {

namespace {

std::wstring trimmed(const std::wstring& text) {
  std::size_t first = 0;
  std::size_t last = text.size();
  while (first < last && std::iswspace(text[first])) ++first;
  while (last > first && std::iswspace(text[last - 1])) --last;
  return text.substr(first, last - first);
}

// A place from 1 to count, digits only.
std::optional<int> parsePlace(const std::wstring& text, int count) {
  const std::wstring t = trimmed(text);
  if (t.empty() || t.size() > 9) return std::nullopt;
  int value = 0;
  for (wchar_t c : t) {
    if (c < L'0' || c > L'9') return std::nullopt;
    value = value * 10 + (c - L'0');
  }
  if (value < 1 || value > count) return std::nullopt;
  return value;
}

}  // namespace

std::optional<std::vector<int>> parseRowRanges(const std::wstring& text, int count) {
  const std::wstring all = trimmed(text);
  std::vector<int> rows;
  if (all == L"-") return rows;
  if (all == L"*") {
    for (int i = 0; i < count; ++i) rows.push_back(i);
    return rows;
  }
  std::size_t pos = 0;
  while (pos <= all.size()) {
    std::size_t comma = all.find(L',', pos);
    if (comma == std::wstring::npos) comma = all.size();
    const std::wstring part = all.substr(pos, comma - pos);
    const std::size_t dash = part.find(L'-');
    const std::optional<int> from = parsePlace(part.substr(0, dash), count);
    const std::optional<int> to =
        dash == std::wstring::npos ? from : parsePlace(part.substr(dash + 1), count);
    if (!from || !to || *to < *from) return std::nullopt;
    for (int place = *from; place <= *to; ++place) rows.push_back(place - 1);
    pos = comma + 1;
  }
  return rows;
}

std::wstring formatRowRanges(const std::vector<int>& rows) {
  if (rows.empty()) return L"-";
  std::wstring text;
  std::size_t i = 0;
  while (i < rows.size()) {
    std::size_t j = i;
    while (j + 1 < rows.size() && rows[j + 1] == rows[j] + 1) ++j;
    if (!text.empty()) text += L",";
    text += std::to_wstring(rows[i] + 1);
    if (j > i) text += L"-" + std::to_wstring(rows[j] + 1);
    i = j + 1;
  }
  return text;
}

}  // namespace zarvel
