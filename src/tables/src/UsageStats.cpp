// The usage statistics: one walk of model space that counts entities by the
// records they carry and records by their table.
#include "tables/UsageStats.h"

#include <map>
#include <memory>
#include <vector>

#include "oddata/CommandFrame.h"
#include "oddata/OdAccess.h"
#include "tables/ODTextBox.h"

namespace zarvel {
namespace {

struct UsageCounts {
  int objects = 0;
  int noOd = 0;
  int withOd = 0;
  int duplicated = 0;
  int multiple = 0;
  int unusedTables = 0;
  // Records per user table, names compared case-sensitively.
  std::map<std::wstring, unsigned, std::less<>> records;
};

bool hasRepeatedName(const std::vector<std::wstring>& names, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = i + 1; j < count; ++j) {
      if (names[i] == names[j]) return true;
    }
  }
  return false;
}

// The names of the entity's records of user tables, one per record, into the
// front of names, whose strings are reused from one entity to the next; the
// number of them.
std::size_t userNamesInto(platform::OdRecordIterator& it, ObjectId entity,
                          std::vector<std::wstring>& names) {
  std::size_t count = 0;
  for (initWalk(it, entity, platform::OpenMode::Read); !it.isDone(); it.next()) {
    const std::wstring& name = it.recordTableName();
    if (!isUserTable(name)) continue;
    if (count == names.size()) {
      names.push_back(name);
    } else {
      names[count] = name;
    }
    ++count;
  }
  return count;
}

void countEntity(UsageCounts& counts, const std::vector<std::wstring>& names, std::size_t count) {
  ++counts.objects;
  if (count == 0) {
    ++counts.noOd;
    return;
  }
  ++counts.withOd;
  for (std::size_t i = 0; i < count; ++i) {
    // A record of a table that the project does not list is passed over.
    const auto entry = counts.records.find(names[i]);
    if (entry != counts.records.end()) ++entry->second;
  }
  // By records, not tables: two records of one table make an entity multiple.
  if (count > 1) ++counts.multiple;
  if (hasRepeatedName(names, count)) ++counts.duplicated;
}

UsageCounts countUsage() {
  UsageCounts counts;
  for (const std::wstring& name : port().project().tableNames(platform::kAllTableKinds)) {
    if (isUserTable(name)) counts.records.emplace(name, 0u);
  }
  counts.unusedTables = static_cast<int>(counts.records.size());

  platform::Drawing& drawing = port().drawing();
  std::unique_ptr<platform::OdRecordIterator> it = getODContainer().newIterator();
  std::vector<std::wstring> names;
  for (ObjectId id : drawing.blockEntityIds(drawing.modelSpaceId())) {
    if (id.isNull()) continue;
    countEntity(counts, names, userNamesInto(*it, id, names));
  }
  return counts;
}

// The heading and a line per table in use; nothing at all when no entity
// carries records. Each table in use is one less unused.
std::wstring tableList(UsageCounts& counts) {
  std::wstring list = loadString(kMsgStatsGraphicalObjects);
  for (const auto& [name, records] : counts.records) {
    if (records == 0) continue;
    list += platform::format(L"\t%s: %lu\n", name, records);
    --counts.unusedTables;
  }
  return counts.withOd == 0 ? std::wstring() : list;
}

}  // namespace

std::wstring usageReport() {
  UsageCounts counts = countUsage();
  const std::wstring tables = tableList(counts);
  using platform::format;
  return format(loadString(kMsgStatsObjects), counts.objects) +
         format(loadString(kMsgStatsObjectsWithoutData), counts.noOd) + tables +
         format(loadString(kMsgStatsObjectsWithData), counts.withOd) +
         format(loadString(kMsgStatsDuplicatedData), counts.duplicated) +
         format(loadString(kMsgStatsMultipleData), counts.multiple) +
         format(loadString(kMsgStatsObjectData), static_cast<int>(counts.records.size())) +
         format(loadString(kMsgStatsUnusedData), counts.unusedTables);
}

void commandStat() {
  ResourceScope scope;
  ODTextBox box;
  box.setCaption(loadString(kMsgStatisticsTitle));
  box.setText(usageReport());
  box.setSize(350, 400);
  // The box only shows the report; however it is closed, the command is done.
  static_cast<void>(port().ui().runModal(box));
}

}  // namespace zarvel
