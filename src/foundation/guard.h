// The seam between internal code, which may throw on failed allocation, and the C interface.
#pragma once

#include <utility>

#include "foundation/error_codes.h"

namespace kurvo {

// Runs `body`; when an allocation in it throws, records the memory error and returns `neutral`.
// Allocation is the only thing inside the library that throws.
template <class Result, class Body>
Result Guard(GlobalVar& g, Result neutral, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    Fail(g, KURVO_ERR_MEMORY);
    return neutral;
  }
}

}  // namespace kurvo
