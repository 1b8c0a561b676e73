// Finds objects by handle. Built on first use, as a sorted array: a drawing of
// millions of objects costs sixteen bytes an object, where a hash map would
// cost three times that. Objects added afterwards go into a second array,
// sorted when next searched (new handles only grow, so it mostly is).
#pragma once

#include <algorithm>
#include <cstdint>
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
    if (!built_) return;
    if (!recent_.empty() && handle < recent_.back().first) recentSorted_ = false;
    recent_.emplace_back(handle, id);
  }
  void clear() {
    sorted_.clear();
    sorted_.shrink_to_fit();
    recent_.clear();
    recent_.shrink_to_fit();
    recentSorted_ = true;
    built_ = false;
  }
  // The ids filed under the handle, the most recent first; the caller checks
  // which still names an object.
  template <typename Check>
  platform::ObjectId find(Handle handle, Check exists) const {
    if (!recentSorted_) {
      std::stable_sort(recent_.begin(), recent_.end(),
                       [](const Entry& a, const Entry& b) { return a.first < b.first; });
      recentSorted_ = true;
    }
    // The most recent object filed under a handle wins.
    const std::vector<Entry>* const lists[] = {&recent_, &sorted_};
    for (const std::vector<Entry>* entries : lists) {
      auto it = std::upper_bound(entries->begin(), entries->end(), handle,
                                 [](Handle h, const Entry& e) { return h < e.first; });
      while (it != entries->begin()) {
        --it;
        if (it->first != handle) break;
        if (exists(it->second)) return it->second;
      }
    }
    return {};
  }

 private:
  std::vector<Entry> sorted_;
  mutable std::vector<Entry> recent_;
  mutable bool recentSorted_ = true;
  bool built_ = false;
};

}  // namespace host
