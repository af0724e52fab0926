// Records that are changed in place.
#pragma once

namespace kurvo {

// Views are read-only; what an operation changes in place is written to through them.
template <class T>
T* Writable(const T* part) {
  return const_cast<T*>(part);
}

}  // namespace kurvo
