// Reading and setting the feature class of an entity.
#include "host/db/PortFeatureClasses.h"

namespace host {

void DbFeatureClasses::getAllTags(ObjectId entity, std::vector<std::wstring>& names,
                                  std::vector<std::wstring>& displayNames) {
  names.clear();
  displayNames.clear();
  const Entity* e = db_.openEntity(entity);
  if (e == nullptr || e->xdict.isNull()) return;
  const auto& extras = db_.get<ExtDictionary>(e->xdict)->extras;
  if (!extras || extras->featureClass.empty()) return;
  const std::wstring& name = extras->featureClass;
  const auto& classes = db_.header().featureClasses;
  auto it = classes.find(name);
  names.push_back(name);
  displayNames.push_back(it != classes.end() && !it->second.empty() ? it->second : name);
}

int DbFeatureClasses::classify(ObjectId entity, const std::wstring& className) {
  // An entity can only join a class that the project defines.
  if (db_.openEntity(entity) == nullptr || db_.header().featureClasses.count(className) == 0) {
    return 0;
  }
  db_.modifyExtDictionary(entity)->extras.make().featureClass = className;
  return platform::kClassifyOk;
}

}  // namespace host
