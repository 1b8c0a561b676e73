// Shared pieces of the host's commands.
#include "host/editor/CommandHelpers.h"

#include "host/db/PortDrawing.h"
#include "host/editor/AnswerParsing.h"
#include "platform/Text.h"

namespace host {

std::wstring formatReal(const Database& db, double value) {
  return platform::format(L"%.*f", static_cast<int>(db.header().luprec), value);
}

std::wstring formatPoint(const Database& db, const Point3d& p) {
  return L"X=" + formatReal(db, p.x) + L" Y=" + formatReal(db, p.y) + L" Z=" + formatReal(db, p.z);
}

std::wstring entitySummary(const Database& db, ObjectId id) {
  const Entity* e = db.entity(id);
  if (e == nullptr) return L"";
  const Layer* layer = db.get<Layer>(e->layer);
  return handleToText(e->handle) + L" " + typeName(*e) + L" " +
         (layer != nullptr ? layer->name : std::wstring());
}

bool isOnLockedLayer(const Database& db, const Entity& entity) {
  const Layer* layer = db.get<Layer>(entity.layer);
  return layer != nullptr && layer->locked;
}

std::wstring lockedLayerNotice(int count) {
  if (count <= 0) return {};
  return std::to_wstring(count) + (count == 1 ? L" was" : L" were") + L" on a locked layer.\n";
}

std::vector<std::wstring> splitNameList(const std::wstring& text) {
  std::vector<std::wstring> names;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t comma = text.find(L',', start);
    if (comma == std::wstring::npos) comma = text.size();
    const std::wstring_view name = trimBlanks(std::wstring_view(text).substr(start, comma - start));
    if (!name.empty()) names.emplace_back(name);
    start = comma + 1;
  }
  return names;
}

bool matchesWildcard(std::wstring_view name, std::wstring_view pattern) {
  const std::wstring n = platform::lowerCase(name);
  const std::wstring p = platform::lowerCase(pattern);
  // Iterative matching with one backtrack point for the last star.
  std::size_t i = 0, j = 0, star = std::wstring::npos, mark = 0;
  while (i < n.size()) {
    if (j < p.size() && (p[j] == L'?' || p[j] == n[i])) {
      ++i;
      ++j;
    } else if (j < p.size() && p[j] == L'*') {
      star = j++;
      mark = i;
    } else if (star != std::wstring::npos) {
      j = star + 1;
      i = ++mark;
    } else {
      return false;
    }
  }
  while (j < p.size() && p[j] == L'*') ++j;
  return j == p.size();
}

bool isValidSymbolName(const std::wstring& name) {
  if (name.empty() || trimBlanks(name).size() != name.size()) return false;
  for (wchar_t c : name) {
    if (c < 0x20 || std::wstring_view(L"<>/\\\":;?*|,=`").find(c) != std::wstring_view::npos) {
      return false;
    }
  }
  return true;
}

}  // namespace host
