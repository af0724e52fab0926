// A work area that lies on the stack at ordinary sizes.
#pragma once

#include <cstddef>
#include <memory>

#include "foundation/new_array.h"

namespace kurvo {

// Room for `size` values, uninitialised; from the heap above kStackSize. Throws std::bad_alloc.
template <class T, std::size_t kStackSize>
class WorkArea {
 public:
  explicit WorkArea(std::size_t size) {
    if (size <= kStackSize) return;
    heap_ = NewArray<T>(size);
    data_ = heap_.get();
  }
  WorkArea(const WorkArea&) = delete;
  WorkArea& operator=(const WorkArea&) = delete;

  T* data() { return data_; }
  T& operator[](std::size_t i) { return data_[i]; }
  const T& operator[](std::size_t i) const { return data_[i]; }

 private:
  T stack_[kStackSize];
  std::unique_ptr<T[]> heap_;
  T* data_ = stack_;
};

}  // namespace kurvo
