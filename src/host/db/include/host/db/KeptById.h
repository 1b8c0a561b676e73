// What a library works out for each object of a drawing and keeps beside it
// until the drawing changes: the database's change count moves with every
// change, undo, redo, roll-back and load, and drops all that is kept.
#pragma once

#include <cstdint>
#include <vector>

#include "host/db/Database.h"

namespace host {

template <typename T>
class KeptById : public Database::Derived {
 public:
  // The value kept for the id, made by make(id) unless it was made since the
  // drawing last changed. The id is one of the drawing's, not null.
  template <typename Make>
  const T& get(const Database& db, ObjectId id, Make&& make) {
    if (generation_ != db.generation()) {
      known_.assign(known_.size(), false);
      generation_ = db.generation();
    }
    const std::size_t slot = id.value() - 1;
    if (slot >= known_.size()) {
      known_.resize(db.idCount(), false);
      values_.resize(db.idCount());
    }
    if (!known_[slot]) {
      values_[slot] = make(id);
      known_[slot] = true;
    }
    return values_[slot];
  }

 private:
  std::uint64_t generation_ = ~std::uint64_t{0};
  std::vector<bool> known_;  // by id, from the first
  std::vector<T> values_;
};

}  // namespace host
