// The allocator of the test program, which counts, limits and fails what the library asks for, and
// its mathematics, which is noticed.
#pragma once

#include <cstddef>
#include <cstdint>

namespace kurvo_test {

// Which requests inside a watched call fail.
struct MemoryFailure {
  int64_t granted = -1;    // requests before the first failure; negative: none fails
  bool from_then = false;  // whether all later ones fail too
};

struct MemoryUse {
  int64_t requests = 0;     // malloc, calloc, realloc and operator new
  int64_t refused = 0;      // of them
  int64_t dispensable = 0;  // of the refused ones: the caller said that it can do without
  int64_t peak = 0;         // bytes held at once, above what was held before
  std::size_t largest = 0;  // largest request in bytes
};

// Of this thread: blocks and bytes allocated and not yet freed, in a watched call or outside.
int64_t LiveBlocks();

// Between the two every request of this thread is counted and may fail. Fresh memory is filled with
// `fill`, so that results that hang on its content differ from fill to fill.
void WatchMemory(const MemoryFailure& failure, uint8_t fill);
MemoryUse UnwatchMemory();

// Whether requests of all threads that are not watched fail; of no library that is linked
// dynamically.
void FailUnwatched(bool fail);

// Whether this thread has computed a sine, cosine, arc tangent or power since the last question:
// their last bit may change with the version of the C library, that of other operations never.
bool UsedLibm();

// No request above this is granted, so that a test machine is never brought to its knees.
constexpr std::size_t kLargestRequest = std::size_t{1} << 30;

}  // namespace kurvo_test
