// The slots of a database's objects, by id. Slots come in fixed chunks, so a
// drawing of millions of objects neither copies them as it grows nor holds
// the half-empty reserve a doubling array keeps.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

namespace host {

class DbObject;

class ObjectTable {
 public:
  std::size_t size() const { return size_; }
  std::unique_ptr<DbObject>& operator[](std::size_t index) {
    return (*chunks_[index / kChunk])[index % kChunk];
  }
  const std::unique_ptr<DbObject>& operator[](std::size_t index) const {
    return (*chunks_[index / kChunk])[index % kChunk];
  }
  std::unique_ptr<DbObject>& back() { return (*this)[size_ - 1]; }
  void push_back(std::unique_ptr<DbObject> object) {
    if (size_ % kChunk == 0) chunks_.push_back(std::make_unique<Chunk>());
    (*this)[size_++] = std::move(object);
  }

 private:
  static constexpr std::size_t kChunk = 4096;
  using Chunk = std::array<std::unique_ptr<DbObject>, kChunk>;
  std::vector<std::unique_ptr<Chunk>> chunks_;
  std::size_t size_ = 0;
};

}  // namespace host
