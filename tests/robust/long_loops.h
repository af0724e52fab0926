// Calls long enough for several threads, where the build has them.
#pragma once

#include <cstdint>

namespace kurvo_test {

// Of splines through many points and distances of splines; null in tests of the second library.
[[gnu::weak]] uint64_t LongLoopsDigest();

}  // namespace kurvo_test
