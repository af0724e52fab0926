// Loops on all cores.
#pragma once

#include <cstddef>
#include <functional>

#include "geometry/plane.h"

namespace kurvo::tools {

// As many threads as the machine runs at once.
std::size_t CoreCount();

// Calls step(i, context) for i from 0 to count - 1, each in one of `threads` threads, which has the
// context to itself. A step writes to no place but its own, so that the results do not depend on
// the number of threads. Throws what the step with the lowest number has thrown; those that follow
// it may not have run then.
void ParallelFor(std::size_t count, const std::function<void(std::size_t, Context&)>& step,
                 std::size_t threads = CoreCount());

}  // namespace kurvo::tools
