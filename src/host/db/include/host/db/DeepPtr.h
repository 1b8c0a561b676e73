// An owning pointer that copies what it points to, for the rarely used parts
// of small objects: they cost one pointer until they are needed, and undo's
// copies of the object stay deep.
#pragma once

#include <memory>

namespace host {

template <typename T>
class DeepPtr {
 public:
  DeepPtr() = default;
  DeepPtr(const DeepPtr& other) : p_(other.p_ ? std::make_unique<T>(*other.p_) : nullptr) {}
  DeepPtr& operator=(const DeepPtr& other) {
    if (this != &other) p_ = other.p_ ? std::make_unique<T>(*other.p_) : nullptr;
    return *this;
  }
  DeepPtr(DeepPtr&&) noexcept = default;
  DeepPtr& operator=(DeepPtr&&) noexcept = default;

  explicit operator bool() const { return p_ != nullptr; }
  const T* get() const { return p_.get(); }
  const T* operator->() const { return p_.get(); }
  const T& operator*() const { return *p_; }
  // The part for change, made empty first if there is none.
  T& make() {
    if (!p_) p_ = std::make_unique<T>();
    return *p_;
  }
  void reset() { p_.reset(); }

 private:
  std::unique_ptr<T> p_;
};

}  // namespace host
