// Finds objects by handle. Built on first use, as a sorted array: a drawing of
// millions of objects costs sixteen bytes an object, where a hash map would
// cost three times that. Objects added afterwards go into a small map.
#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/ObjectId.h"

namespace host {

class HandleIndex {
 public:
  using Handle = std::uint64_t;
  using Entry = std::pair<Handle, platform::ObjectId>;

  bool built() const { return built_; }
  // Takes all entries at once; the array is sorted here.
  void build(std::vector<Entry> entries) {
    std::sort(entries.begin(), entries.end());
    sorted_ = std::move(entries);
    recent_.clear();
    built_ = true;
  }
  void add(Handle handle, platform::ObjectId id) {
    if (built_) recent_[handle] = id;
  }
  void clear() {
    sorted_.clear();
    sorted_.shrink_to_fit();
    recent_.clear();
    built_ = false;
  }
  // The ids filed under the handle, the most recent first; the caller checks
  // which still names an object.
  template <typename Check>
  platform::ObjectId find(Handle handle, Check exists) const {
    if (auto it = recent_.find(handle); it != recent_.end() && exists(it->second)) {
      return it->second;
    }
    auto it = std::lower_bound(sorted_.begin(), sorted_.end(), Entry{handle, platform::ObjectId()});
    for (; it != sorted_.end() && it->first == handle; ++it) {
      if (exists(it->second)) return it->second;
    }
    return {};
  }

 private:
  std::vector<Entry> sorted_;
  std::unordered_map<Handle, platform::ObjectId> recent_;
  bool built_ = false;
};

}  // namespace host
