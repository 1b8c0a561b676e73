// Parsing of a "Select objects: " answer into selection items.
#include "host/editor/SelectionGrammar.h"

#include <optional>

#include "host/editor/AnswerParsing.h"
#include "platform/Text.h"

namespace host {

namespace {

// Drops the blanks next to commas, so that "1, 2" stays one word.
std::wstring joinPointParts(std::wstring_view line) {
  std::wstring out;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const wchar_t c = line[i];
    if (isBlank(c)) {
      std::size_t j = i;
      while (j < line.size() && isBlank(line[j])) ++j;
      const bool beforeComma = j < line.size() && line[j] == L',';
      const bool afterComma = !out.empty() && out.back() == L',';
      if (!beforeComma && !afterComma) out += L' ';
      i = j - 1;
      continue;
    }
    out += c;
  }
  return out;
}

std::vector<std::wstring> words(std::wstring_view line) {
  std::vector<std::wstring> result;
  const std::wstring joined = joinPointParts(line);
  std::size_t i = 0;
  while (i < joined.size()) {
    while (i < joined.size() && joined[i] == L' ') ++i;
    const std::size_t start = i;
    while (i < joined.size() && joined[i] != L' ') ++i;
    if (i > start) result.push_back(joined.substr(start, i - start));
  }
  return result;
}

bool isWord(const std::wstring& lowered, const wchar_t* shortForm, const wchar_t* longForm) {
  return lowered == shortForm || lowered == longForm;
}

std::wstring invalid(const std::wstring& word) {
  return L"Invalid selection: '" + word + L"'";
}

// R and A switch the rest of the line; one with nothing after it would do
// nothing, so it is refused with what it expects.
std::wstring switchWithoutItems(const std::wstring& word, bool adding) {
  return invalid(word) + (adding ? L" needs the objects to add after it"
                                 : L" needs the objects to remove after it");
}

}  // namespace

SelectionParse parseSelection(std::wstring_view line) {
  SelectionParse parse;
  const std::vector<std::wstring> list = words(line);
  bool adding = true;
  // The R or A last read, while no item has followed it.
  const std::wstring* pendingSwitch = nullptr;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::wstring& word = list[i];
    const std::wstring lowered = platform::lowerCase(word);
    SelectionItem item;
    item.add = adding;
    const bool removeWord = isWord(lowered, L"r", L"remove");
    if (removeWord || isWord(lowered, L"a", L"add")) {
      if (pendingSwitch != nullptr) {
        parse.error = switchWithoutItems(*pendingSwitch, adding);
        break;
      }
      adding = !removeWord;
      pendingSwitch = &word;
      continue;
    }
    if (lowered == L"all") {
      item.kind = SelectionKind::All;
    } else if (isWord(lowered, L"l", L"last")) {
      item.kind = SelectionKind::Last;
    } else if (isWord(lowered, L"p", L"previous")) {
      item.kind = SelectionKind::Previous;
    } else if (isWord(lowered, L"w", L"window") || isWord(lowered, L"c", L"crossing")) {
      item.kind = lowered.front() == L'w' ? SelectionKind::Window : SelectionKind::Crossing;
      if (i + 2 >= list.size()) {
        parse.error = invalid(word) + L" needs two corner points";
        break;
      }
      const std::optional<platform::Point3d> first = parsePoint(list[i + 1]);
      if (!first) {
        parse.error = invalid(list[i + 1]);
        break;
      }
      const std::optional<platform::Point3d> second = parsePoint(list[i + 2]);
      if (!second) {
        parse.error = invalid(list[i + 2]);
        break;
      }
      item.first = *first;
      item.second = *second;
      i += 2;
    } else if (word.front() == L'#') {
      const std::optional<std::uint64_t> handle = parseHandle(word);
      if (!handle) {
        parse.error = invalid(word);
        break;
      }
      item.kind = SelectionKind::ByHandle;
      item.handle = *handle;
    } else if (const std::optional<platform::Point3d> point = parsePoint(word)) {
      item.kind = SelectionKind::Pick;
      item.first = *point;
    } else {
      parse.error = invalid(word);
      break;
    }
    parse.items.push_back(item);
    pendingSwitch = nullptr;
  }
  if (parse.ok() && pendingSwitch != nullptr) {
    parse.error = switchWithoutItems(*pendingSwitch, adding);
  }
  if (!parse.ok()) parse.items.clear();
  return parse;
}

}  // namespace host
