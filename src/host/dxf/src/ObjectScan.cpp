// The first look at an object's tags.
#include "ObjectScan.h"

#include "EntityCommon.h"

namespace host::dxf {

using entity::handleOf;

void scanObject(const std::vector<Tag>& body, bool dictionary, ObjectHead& head) {
  head.handle = 0;
  head.owner = 0;
  head.entries.clear();
  int groupDepth = 0;
  for (std::size_t i = 0; i < body.size(); ++i) {
    const Tag& t = body[i];
    if (t.code == 102) {
      groupDepth += !t.value.empty() && t.value.front() == '{' ? 1 : -1;
      continue;
    }
    if (groupDepth > 0) continue;
    if (t.code == 5 && head.handle == 0) head.handle = handleOf(t);
    if (t.code == 330 && head.owner == 0) head.owner = handleOf(t);
    if (dictionary && t.code == 3 && i + 1 < body.size() &&
        (body[i + 1].code == 350 || body[i + 1].code == 360)) {
      head.entries.push_back({t.value, handleOf(body[i + 1]), body[i + 1].code});
      ++i;
    }
  }
}

std::size_t xrecordDataStart(const std::vector<Tag>& body) {
  std::size_t i = 0;
  while (i < body.size() && !(body[i].code == 100 && body[i].value == "AcDbXrecord")) ++i;
  if (i < body.size()) ++i;
  if (i < body.size() && body[i].code == 280) ++i;
  return i;
}

}  // namespace host::dxf
