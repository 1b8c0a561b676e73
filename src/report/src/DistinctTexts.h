// Counting the distinct cell texts of a report column without a copy of any.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string_view>
#include <vector>

#include "report/UnicodeFileText.h"

namespace zarvel {

// The distinct cell texts of a column, found where the report wrote them, so
// that none is copied: an open-addressed table of places in the report's bytes,
// which only grow.
class DistinctTexts {
 public:
  explicit DistinctTexts(const UnicodeFileText& text) : text_(&text), slots_(16, Slot{0, 0, 0}) {}

  // No cell starts at offset 0, where the byte-order mark stands.
  void insert(std::size_t offset, std::size_t length) {
    const std::string_view text(text_->data() + offset, length);
    const std::size_t full = std::hash<std::string_view>()(text);
    const auto hash = static_cast<std::uint32_t>(full ^ (full >> 32));
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = hash & mask;; i = (i + 1) & mask) {
      Slot& slot = slots_[i];
      if (slot.offset == 0) {
        slot = Slot{offset, static_cast<std::uint32_t>(length), hash};
        if (++size_ * 2 > slots_.size()) grow();
        return;
      }
      if (slot.hash == hash && slot.length == length &&
          std::memcmp(text_->data() + slot.offset, text.data(), length) == 0) {
        return;
      }
    }
  }
  std::size_t size() const { return size_; }

 private:
  struct Slot {
    std::size_t offset;  // 0 for an empty slot
    std::uint32_t length;
    std::uint32_t hash;
  };

  void grow() {
    std::vector<Slot> old(slots_.size() * 2, Slot{0, 0, 0});
    old.swap(slots_);
    const std::size_t mask = slots_.size() - 1;
    for (const Slot& slot : old) {
      if (slot.offset == 0) continue;
      std::size_t i = slot.hash & mask;
      while (slots_[i].offset != 0) i = (i + 1) & mask;
      slots_[i] = slot;
    }
  }

  const UnicodeFileText* text_;
  std::vector<Slot> slots_;
  std::size_t size_ = 0;
};

}  // namespace zarvel
