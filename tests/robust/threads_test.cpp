// The whole table on a thread with a small stack, and on many threads at once.
//   KURVO_STACK_CALLS=10000  calls of each function
//   KURVO_THREAD_CALLS=1000  calls of each function in each thread
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <thread>

#include "robust/table.h"

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kWiderFrames = true;
#elif defined(__has_feature)
constexpr bool kWiderFrames = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool kWiderFrames = false;
#endif

namespace kurvo_test {
namespace {

constexpr std::size_t kStackBytes = 256 << 10;
constexpr std::size_t kGuardBytes = 64 << 10;  // below it: whoever gets there dies
constexpr int kPaint = 0xC5;
constexpr int64_t kStackCalls = 300, kThreadCalls = 16;
constexpr int kThreads = 16;
constexpr int kCurves = 200;  // of each mode, in the gallery

// Runs the body in a thread on a stack of its own, painted, so that what was used of it shows.
// Result: bytes used.
template <class Body>
std::size_t OnSmallStack(Body body) {
  void* const guard = mmap(nullptr, kGuardBytes + kStackBytes, PROT_READ | PROT_WRITE,
                           MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  EXPECT_NE(guard, MAP_FAILED);
  EXPECT_EQ(mprotect(guard, kGuardBytes, PROT_NONE), 0);
  auto* const bottom = static_cast<unsigned char*>(guard) + kGuardBytes;
  std::memset(bottom, kPaint, kStackBytes);
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  EXPECT_EQ(pthread_attr_setstack(&attributes, bottom, kStackBytes), 0);
  pthread_t thread;
  const auto run = [](void* given) -> void* { return (*static_cast<Body*>(given))(), nullptr; };
  EXPECT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
  const auto* const top = bottom + kStackBytes;
  const auto* const used =
      std::find_if(bottom, bottom + kStackBytes, [](int x) { return x != kPaint; });
  const auto bytes = static_cast<std::size_t>(top - used);
  munmap(guard, kGuardBytes + kStackBytes);
  return bytes;
}

TEST(SmallStack, IsEnough) {
  if (kWiderFrames) GTEST_SKIP() << "instrumented frames are several times as large";
  const auto calls = uint64_t(Setting("KURVO_STACK_CALLS", kStackCalls));
  std::size_t most = 0;
  const char* hungriest = "";
  for (const Entry& entry : Table()) {
    const std::size_t used = OnSmallStack([&] {
      for (uint64_t number = 0; number < calls; ++number)
        RunNumbered(entry, number, {.mode = HostileIf(number % 2)});
    });
    if (used > most) hungriest = entry.name;
    most = std::max(most, used);
    if (used > kStackBytes / 8) std::printf("%-24s %zu bytes\n", entry.name, used);
  }
  std::printf("at most %zu bytes, in %s\n", most, hungriest);
}

// The digests of the calls of all functions from the one with index `first` on, so that threads are
// at different functions at any time.
std::vector<uint64_t> RunTable(const Gallery& gallery, std::size_t first) {
  const auto calls = uint64_t(Setting("KURVO_THREAD_CALLS", kThreadCalls));
  std::vector<uint64_t> digests(Table().size());
  for (std::size_t i = 0; i < Table().size(); ++i) {
    const std::size_t index = (first + i) % Table().size();
    Digest digest;
    for (uint64_t number = 0; number < calls; ++number) {
      const RunOptions options{.mode = HostileIf(number % 2), .gallery = &gallery};
      digest.Add(RunNumbered(Table()[index], number, options).digest);
    }
    digests[index] = digest.value();
  }
  return digests;
}

TEST(SharedCurves, GiveEveryThreadTheSameBits) {
  const Gallery gallery(Seed(), kCurves);
  const uint64_t before = gallery.Checksum();
  const auto alone = RunTable(gallery, 0);
  std::vector<std::vector<uint64_t>> together(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i)
    threads.emplace_back(
        [&, i] { together[i] = RunTable(gallery, i * Table().size() / kThreads); });
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < kThreads; ++i)
    for (std::size_t f = 0; f < Table().size(); ++f)
      EXPECT_EQ(together[i][f], alone[f]) << Table()[f].name << " in thread " << i;
  EXPECT_EQ(gallery.Checksum(), before) << "shared curves changed";
}

}  // namespace
}  // namespace kurvo_test
