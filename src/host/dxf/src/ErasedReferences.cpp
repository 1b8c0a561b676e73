// Tags that stay are copied as bytes of the source, so that everything but the
// references left out reads as it did.
#include "ErasedReferences.h"

#include <algorithm>
#include <vector>

#include "GroupCodes.h"
#include "TagReader.h"

namespace host::dxf {

bool writeWithoutGone(std::string_view text, std::string_view dxfName,
                      const std::function<bool(Handle)>& gone, TagWriter& out) {
  const bool group = dxfName == "GROUP";
  if (!group && text.find("{ACAD_REACTORS") == std::string_view::npos) return false;
  std::vector<Tag> tags;
  TagReader reader(text);
  while (auto tag = reader.next()) tags.push_back(*tag);
  // The tags to leave out, by index.
  std::vector<std::size_t> dropped;
  bool inGroupData = false;
  bool inReactors = false;
  std::size_t groupStart = 0;
  std::size_t droppedBefore = 0;  // how many were dropped before the reactor group
  for (std::size_t i = 0; i < tags.size(); ++i) {
    const Tag& t = tags[i];
    if (t.code == 100) inGroupData = group && t.value == "AcDbGroup";
    if (t.code == 102) {
      if (inReactors && i > groupStart + 1 &&
          dropped.size() - droppedBefore == i - groupStart - 1) {
        // A reactor group left empty goes as a whole.
        dropped.push_back(groupStart);
        dropped.push_back(i);
      }
      inReactors = t.value == "{ACAD_REACTORS";
      groupStart = i;
      droppedBefore = dropped.size();
      continue;
    }
    const bool names = (inReactors && t.code == 330) || (inGroupData && t.code == 340);
    const auto handle = names ? parseHandle(t.value) : std::nullopt;
    if (handle && gone(*handle)) dropped.push_back(i);
  }
  if (dropped.empty()) return false;
  std::sort(dropped.begin(), dropped.end());
  std::size_t copied = 0;
  for (std::size_t i : dropped) {
    out.writeRaw(text.substr(copied, tags[i].offset - copied));
    copied = i + 1 < tags.size() ? tags[i + 1].offset : text.size();
  }
  out.writeRaw(text.substr(copied));
  return true;
}

}  // namespace host::dxf
