// Feature classification: the classes a map project defines and the class an
// entity belongs to.
#pragma once

#include <string>
#include <vector>

#include "platform/ObjectId.h"

namespace platform {

inline constexpr int kClassifyOk = 1;

class FeatureClasses {
 public:
  virtual ~FeatureClasses() = default;
  // The classes of an entity: their names and, in the same order, display names.
  virtual void getAllTags(ObjectId entity, std::vector<std::wstring>& names,
                          std::vector<std::wstring>& displayNames) = 0;
  // Puts the entity in the class; kClassifyOk on success.
  virtual int classify(ObjectId entity, const std::wstring& className) = 0;
};

}  // namespace platform
