// Entries of extension dictionaries copied out for a module and put back on
// other entities. The dictionary holds an entity's Object Data records and
// its feature class, each offered as an entry of its own, and the entries of
// other applications. Those are objects this database keeps as the text they
// were read from; one that owns objects of its own is not offered, since its
// copy would need copies of them too.
#include "host/db/PortDrawing.h"

#include <algorithm>
#include <string_view>

namespace host {
namespace {

// Whether the text of an object names any object as its own (group code 360):
// codes stand on every other line, from the first.
bool ownsObjects(std::string_view text) {
  bool codeLine = true;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (codeLine) {
      while (!line.empty() && (line.front() == ' ' || line.back() == '\r' || line.back() == ' ')) {
        line = line.front() == ' ' ? line.substr(1) : line.substr(0, line.size() - 1);
      }
      if (line == "360") return true;
    }
    codeLine = !codeLine;
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
  return false;
}

}  // namespace

std::vector<platform::ExtensionEntryCopy> DbDrawing::copyExtensionEntries(ObjectId entity) {
  std::vector<platform::ExtensionEntryCopy> copies;
  const Entity* e = db_.openEntity(entity);
  const ExtDictionary* dict = e != nullptr ? db_.get<ExtDictionary>(e->xdict) : nullptr;
  if (dict == nullptr || dict->erased) return copies;
  auto keep = [&](const std::wstring& name, KeptEntry entry) {
    const std::uint64_t token = nextEntryToken_++;
    keptEntries_.emplace(token, std::move(entry));
    copies.push_back({name, token});
  };
  if (dict->extras) {
    for (const DictEntry& entry : dict->extras->entries) {
      const auto* object = db_.get<TaggedObject>(db_.idOfHandle(entry.handle));
      if (object == nullptr || object->erased || ownsObjects(db_.sourceText(*object))) continue;
      keep(entry.name, ForeignObject{*object, entry.code});
    }
  }
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
  if (const auto* foreign = std::get_if<ForeignObject>(&kept->second)) {
    const ObjectId dictId =
        db_.modifyExtDictionary(entity) != nullptr ? db_.get<Entity>(entity)->xdict : ObjectId();
    const Handle handle = db_.object(db_.addCopy(foreign->object, dictId))->handle;
    // An entry of that name gives way, as a dictionary holds one per name.
    std::vector<DictEntry>& entries = db_.modifyExtDictionary(entity)->extras.make().entries;
    entries.erase(std::remove_if(entries.begin(), entries.end(),
                                 [&](const DictEntry& e) { return e.name == name; }),
                  entries.end());
    entries.push_back({name, handle, foreign->code});
    return platform::Status::Ok;
  }
  // Records and the feature class have their one place each, under their names.
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
