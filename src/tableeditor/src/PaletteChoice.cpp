// One name out of a list, at the editor's prompts.
#include "PaletteChoice.h"

#include "oddata/Port.h"
#include "platform/Text.h"

namespace zarvel {

int findName(const std::vector<std::wstring>& names, const std::wstring& name) {
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<int>(i);
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (platform::equalsIgnoreCase(names[i], name)) return static_cast<int>(i);
  }
  return -1;
}

std::optional<std::size_t> askChoice(const std::wstring& label,
                                     const std::vector<std::wstring>& names,
                                     const std::wstring& what, bool allowSpaces,
                                     std::optional<std::size_t> currentItem) {
  std::wstring prompt = label + L" [";
  for (std::size_t i = 0; i < names.size(); ++i) prompt += (i > 0 ? L"/" : L"") + names[i];
  prompt += L"]";
  if (currentItem) prompt += L" <" + names[*currentItem] + L">";
  prompt += L": ";
  platform::Editor& ed = port().editor();
  for (;;) {
    const platform::StringReply reply = ed.getString(prompt, allowSpaces);
    if (reply.status != platform::PromptStatus::Normal) return std::nullopt;
    if (reply.text.empty()) return currentItem;
    const int found = findName(names, reply.text);
    if (found >= 0) return static_cast<std::size_t>(found);
    ed.print(L"No " + what + L" is named " + reply.text + L".\n");
  }
}

}  // namespace zarvel
