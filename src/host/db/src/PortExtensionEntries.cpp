// Entries of extension dictionaries copied out for a module and put back on
// other entities. The dictionary holds an entity's Object Data records and
// its feature class, and each travels as an entry of its own. Entries of
// other applications are not offered: this database keeps them only as the
// text of the file they came from, bound to their own handles, so it cannot
// make a second object of one.
#include "host/db/PortDrawing.h"

namespace host {

std::vector<platform::ExtensionEntryCopy> DbDrawing::copyExtensionEntries(ObjectId entity) {
  std::vector<platform::ExtensionEntryCopy> copies;
  const Entity* e = db_.openEntity(entity);
  const ExtDictionary* dict = e != nullptr ? db_.get<ExtDictionary>(e->xdict) : nullptr;
  if (dict == nullptr || dict->erased) return copies;
  auto keep = [&](const wchar_t* name, KeptEntry entry) {
    const std::uint64_t token = nextEntryToken_++;
    keptEntries_.emplace(token, std::move(entry));
    copies.push_back({name, token});
  };
  if (!dict->od.empty()) keep(kRecordsEntry, dict->od);
  if (dict->extras && !dict->extras->featureClass.empty()) {
    keep(kFeatureClassEntry, FeatureClassName{dict->extras->featureClass});
  }
  return copies;
}

platform::Status DbDrawing::putExtensionEntry(ObjectId entity, const std::wstring& name,
                                              std::uint64_t copy) {
  const auto kept = keptEntries_.find(copy);
  if (kept == keptEntries_.end() || db_.openEntity(entity) == nullptr) {
    return platform::Status::Failed;
  }
  // Each entry has its one place in the dictionary, under its own name.
  const bool records = std::holds_alternative<OdRecordList>(kept->second);
  if (name != (records ? kRecordsEntry : kFeatureClassEntry)) return platform::Status::Failed;
  if (records) {
    *db_.modifyOdRecords(entity) = std::get<OdRecordList>(kept->second);
  } else {
    db_.modifyExtDictionary(entity)->extras.make().featureClass =
        std::get<FeatureClassName>(kept->second).name;
  }
  return platform::Status::Ok;
}

}  // namespace host
