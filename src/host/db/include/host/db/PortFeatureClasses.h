// Feature classification over our database: the project's classes live in
// the header, an entity's class in its extension dictionary.
#pragma once

#include "host/db/Database.h"
#include "platform/FeatureClasses.h"

namespace host {

class DbFeatureClasses : public platform::FeatureClasses {
 public:
  explicit DbFeatureClasses(Database& db) : db_(db) {}

  void getAllTags(ObjectId entity, std::vector<std::wstring>& names,
                  std::vector<std::wstring>& displayNames) override;
  int classify(ObjectId entity, const std::wstring& className) override;

 private:
  Database& db_;
};

}  // namespace host
