// Arrays that are filled later.
#pragma once

#include <cstddef>
#include <memory>

namespace kurvo {

// `size` values, uninitialised: std::make_unique_for_overwrite, which C++20 has but not every
// standard library in use. Throws std::bad_alloc.
template <class T>
std::unique_ptr<T[]> NewArray(std::size_t size) {
  return std::unique_ptr<T[]>(new T[size]);
}

}  // namespace kurvo
