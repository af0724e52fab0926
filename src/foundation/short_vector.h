// A list that allocates nothing while it is short.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "foundation/clamped_size.h"
#include "foundation/new_array.h"

namespace kurvo {

// As std::vector, for values that can be copied as bytes: up to kShort of them lie in the list
// itself. What grows throws std::bad_alloc. Neither copied nor moved.
template <class T, std::size_t kShort>
class ShortVector {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  ShortVector() = default;
  ShortVector(const ShortVector&) = delete;
  ShortVector& operator=(const ShortVector&) = delete;

  T* begin() { return data_; }
  T* end() { return data_ + size_; }
  const T* begin() const { return data_; }
  const T* end() const { return data_ + size_; }
  T* data() { return data_; }
  const T* data() const { return data_; }
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T& operator[](std::size_t i) { return data_[i]; }
  const T& operator[](std::size_t i) const { return data_[i]; }
  T& back() { return data_[size_ - 1]; }

  // The value may be one of the list.
  void push_back(T value) {
    if (size_ == capacity_) Grow(size_ + 1);
    new (data_ + size_++) T(value);
  }
  void reserve(std::size_t size) {
    if (size > capacity_) Grow(size);
  }
  void clear() { size_ = 0; }
  // Leaves the first ones.
  void shrink(std::size_t size) { size_ = std::min(size, size_); }
  void erase(T* first, T* last) {
    std::move(last, end(), first);
    size_ -= static_cast<std::size_t>(last - first);
  }
  template <class Unwanted>
  void erase_if(const Unwanted& unwanted) {
    erase(std::remove_if(begin(), end(), unwanted), end());
  }

 private:
  // At least doubles: many small steps cost no more than one large one.
  void Grow(std::size_t size) {
    const std::size_t capacity = std::max(size, 2 * capacity_);
    auto grown = NewArray<std::byte>((ClampedSize(capacity) * sizeof(T)).value());
    std::memcpy(grown.get(), static_cast<const void*>(data_), size_ * sizeof(T));
    heap_ = std::move(grown);
    data_ = reinterpret_cast<T*>(heap_.get());
    capacity_ = capacity;
  }

  alignas(T) std::byte short_[kShort * sizeof(T)];
  std::unique_ptr<std::byte[]> heap_;
  T* data_ = reinterpret_cast<T*>(short_);
  std::size_t size_ = 0;
  std::size_t capacity_ = kShort;
};

}  // namespace kurvo
