// Data the module keeps per open document. Nothing reads or writes a
// document's record, so the map stays empty; the manager exists so that a
// closing document is forgotten the way the host expects of a module.
#pragma once

#include <map>

namespace zarvel {

// One document's record; it has no fields.
struct CDocData {};

class DocDataManager {
 public:
  // A closing document loses its record.
  void documentToBeDestroyed(const void* document) { records_.erase(document); }
  std::size_t size() const { return records_.size(); }

 private:
  std::map<const void*, CDocData> records_;
};

// The one instance, made with the module.
DocDataManager& docDataManager();

}  // namespace zarvel
