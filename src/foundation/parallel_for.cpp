// Long loops on the threads of oneTBB. Nothing else is in this file, so that the thread sanitizer
// can be spared it: libtbb is not instrumented, and the order that it keeps would not show.
#include "foundation/parallel_for.h"

#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace kurvo::internal {

// Not by an algorithm of the standard library with a policy: that ends the program where the system
// grants no threads.
void OnThreads(void* stretches, std::ptrdiff_t count, void (*run)(void*, std::ptrdiff_t)) {
  try {
    // A thread that waits takes no other work of the caller's meanwhile.
    tbb::this_task_arena::isolate([=] {
      tbb::parallel_for(std::ptrdiff_t{0}, count, [=](std::ptrdiff_t i) { run(stretches, i); });
    });
  } catch (...) {
  }
}

}  // namespace kurvo::internal
