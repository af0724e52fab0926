// The linker renames the allocator and four functions of <math.h>, and the one that compilers merge
// two of them to (--wrap), in everything that is linked statically, the library's
// objects included; operator new comes here too.
#include "robust/allocation.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace kurvo_test {
namespace {

struct State {
  bool watched = false;
  int64_t live_blocks = 0;
  int64_t live_bytes = 0;
  int64_t bytes_before = 0;
  MemoryFailure failure;
  MemoryUse use;
  uint8_t fill = 0;
};

thread_local State state;
thread_local bool used_libm = false;
std::atomic<bool> unwatched_fail = false;

bool Grants(std::size_t size) {
  if (!state.watched) return !unwatched_fail.load(std::memory_order_relaxed);
  ++state.use.requests;
  state.use.largest = std::max(state.use.largest, size);
  const int64_t granted = state.failure.granted;
  const bool fails =
      size > kLargestRequest ||
      (granted >= 0 && (state.failure.from_then ? state.use.requests > granted
                                                : state.use.requests == granted + 1));
  if (fails) ++state.use.refused;
  return !fails;
}

void Gain(void* p) {
  if (!p) return;
  ++state.live_blocks;
  state.live_bytes += static_cast<int64_t>(malloc_usable_size(p));
  if (state.watched)
    state.use.peak = std::max(state.use.peak, state.live_bytes - state.bytes_before);
}

void Lose(void* p) {
  state.live_blocks -= p != nullptr;
  state.live_bytes -= static_cast<int64_t>(malloc_usable_size(p));  // 0 of null
}

}  // namespace

int64_t LiveBlocks() { return state.live_blocks; }
void FailUnwatched(bool fail) { unwatched_fail = fail; }
bool UsedLibm() { return std::exchange(used_libm, false); }

void WatchMemory(const MemoryFailure& failure, uint8_t fill) {
  state = {true, state.live_blocks, state.live_bytes, state.live_bytes, failure, {}, fill};
}
MemoryUse UnwatchMemory() { return state.watched = false, state.use; }

}  // namespace kurvo_test

using kurvo_test::Gain;
using kurvo_test::Grants;
using kurvo_test::Lose;
using kurvo_test::state;
using kurvo_test::used_libm;

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* p, std::size_t size);
void __real_free(void* p);

void* __wrap_malloc(std::size_t size) {
  if (!Grants(size)) return nullptr;
  void* const p = __real_malloc(size);
  if (p && state.watched) std::memset(p, state.fill, size);
  Gain(p);
  return p;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
  if (!Grants(size > 0 && count > SIZE_MAX / size ? SIZE_MAX : count * size)) return nullptr;
  void* const p = __real_calloc(count, size);
  Gain(p);
  return p;
}

void* __wrap_realloc(void* p, std::size_t size) {
  if (!Grants(size)) return nullptr;
  Lose(p);
  void* const grown = __real_realloc(p, size);
  Gain(grown ? grown : p);
  return grown;
}

void __wrap_free(void* p) {
  Lose(p);
  __real_free(p);
}

// clang-format off
#define WATCHED(result, name, declared, passed) \
  result __real_##name declared; \
  result __wrap_##name declared { used_libm = true; return __real_##name passed; }
WATCHED(double, sin, (double x), (x))
WATCHED(double, cos, (double x), (x))
WATCHED(double, atan2, (double y, double x), (y, x))
WATCHED(double, pow, (double x, double y), (x, y))
WATCHED(void, sincos, (double x, double* sine, double* cosine), (x, sine, cosine))
// clang-format on
}

[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* const p = std::malloc(std::max<std::size_t>(size, 1))) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
// What asks this way can do without, such as a sort that may work in place.
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  void* const p = std::malloc(std::max<std::size_t>(size, 1));
  if (!p && state.watched) ++state.use.dispensable;
  return p;
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { operator delete(p); }
void operator delete(void* p, std::size_t) noexcept { operator delete(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { operator delete(p); }
void operator delete[](void* p, std::size_t) noexcept { operator delete(p); }
