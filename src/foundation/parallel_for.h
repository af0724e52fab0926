// A loop over indices whose stretches may run on several threads at once.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <new>
#include <span>

namespace kurvo {

// Whether ParallelFor divides the range: only a build with KURVO_PARALLEL does, from `least`
// indices on.
inline bool RunsParallel([[maybe_unused]] std::ptrdiff_t count,
                         [[maybe_unused]] std::ptrdiff_t least) {
#ifdef KURVO_PARALLEL
  return count >= least && count > 1;
#else
  return false;
#endif
}

namespace internal {

// A part of a range and what has become of it.
template <class Body>
struct Stretch {
  enum State { kOpen, kDone, kFailed };

  // Whoever runs it sees all that was written before it was opened, and whoever finds it done sees
  // all that was written by it.
  void Run() noexcept {
    if (state.load(std::memory_order_acquire) != kOpen) return;
    State become = kDone;
    try {
      (*body)(begin, end);
    } catch (...) {
      become = kFailed;
    }
    state.store(become, std::memory_order_release);
  }

  std::atomic<State> state;
  const Body* body;
  std::ptrdiff_t begin;
  std::ptrdiff_t end;
};

// Calls run(stretches, i) for 0 <= i < count on as many threads as there are; not for all of them
// when the system grants no threads or no memory for them.
void OnThreads(void* stretches, std::ptrdiff_t count, void (*run)(void* stretches, std::ptrdiff_t));

}  // namespace internal

// Calls body(begin, end) for stretches that make up 0 .. count - 1, in any order and on any thread;
// with fewer than `least` indices, which are not worth a thread, body(0, count) on this one. The
// result must not hang on how the range is divided. Throws std::bad_alloc, when all have ended, if
// any of them has: allocation is the only thing inside the library that throws.
template <class Body>
void ParallelFor(std::ptrdiff_t count, std::ptrdiff_t least, const Body& body) {
  if (!RunsParallel(count, least)) return body(std::ptrdiff_t{0}, count);
#ifdef KURVO_PARALLEL
  using Stretch = internal::Stretch<Body>;
  constexpr std::ptrdiff_t kMostStretches = 64;  // more than threads: who ends first takes another
  Stretch stretches[kMostStretches];
  const std::ptrdiff_t n = std::min(kMostStretches, count);
  for (std::ptrdiff_t i = 0, begin = 0; i < n; ++i) {
    stretches[i].body = &body;
    stretches[i].begin = begin;
    stretches[i].end = begin += count / n + (i < count % n ? 1 : 0);
    stretches[i].state.store(Stretch::kOpen, std::memory_order_release);
  }
  internal::OnThreads(stretches, n,
                      [](void* all, std::ptrdiff_t i) { static_cast<Stretch*>(all)[i].Run(); });
  bool failed = false;
  for (Stretch& stretch : std::span(stretches, static_cast<std::size_t>(n))) {
    stretch.Run();  // unless that has been done
    failed = failed || stretch.state.load(std::memory_order_acquire) == Stretch::kFailed;
  }
  if (failed) throw std::bad_alloc();
#endif
}

// Whether holds(begin, end) is true of all stretches of such a loop; all are asked.
template <class Holds>
bool ParallelAll(std::ptrdiff_t count, std::ptrdiff_t least, const Holds& holds) {
  std::atomic<bool> all = true;
  ParallelFor(count, least, [&](std::ptrdiff_t begin, std::ptrdiff_t end) {
    if (!holds(begin, end)) all.store(false, std::memory_order_relaxed);
  });
  return all.load(std::memory_order_relaxed);
}

}  // namespace kurvo
