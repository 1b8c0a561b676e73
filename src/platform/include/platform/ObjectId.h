// Identity of an object of a drawing, as the module sees it.
#pragma once

#include <cstdint>
#include <functional>

namespace platform {

// Opaque id of a database object. 0 is the null id; ids order by creation.
class ObjectId {
 public:
  constexpr ObjectId() = default;
  constexpr explicit ObjectId(std::uint64_t value) : value_(value) {}

  constexpr std::uint64_t value() const { return value_; }
  constexpr bool isNull() const { return value_ == 0; }

  friend constexpr bool operator==(ObjectId a, ObjectId b) { return a.value_ == b.value_; }
  friend constexpr bool operator!=(ObjectId a, ObjectId b) { return a.value_ != b.value_; }
  friend constexpr bool operator<(ObjectId a, ObjectId b) { return a.value_ < b.value_; }
  friend constexpr bool operator>(ObjectId a, ObjectId b) { return a.value_ > b.value_; }
  friend constexpr bool operator<=(ObjectId a, ObjectId b) { return a.value_ <= b.value_; }
  friend constexpr bool operator>=(ObjectId a, ObjectId b) { return a.value_ >= b.value_; }

 private:
  std::uint64_t value_ = 0;
};

}  // namespace platform

template <>
struct std::hash<platform::ObjectId> {
  std::size_t operator()(platform::ObjectId id) const noexcept {
    return std::hash<std::uint64_t>()(id.value());
  }
};
