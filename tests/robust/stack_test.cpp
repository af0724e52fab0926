// The whole table on a thread with a small stack.
//   KURVO_STACK_CALLS=10000  calls of each function
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/mman.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "robust/runner.h"

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
constexpr int64_t kShortForm = 300;

// A stack of its own, painted, so that what was used of it shows.
class PaintedStack {
 public:
  PaintedStack() {
    void* const memory = mmap(nullptr, kGuardBytes + kStackBytes, PROT_READ | PROT_WRITE,
                              MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    EXPECT_NE(memory, MAP_FAILED);
    guard_ = static_cast<unsigned char*>(memory);
    EXPECT_EQ(mprotect(guard_, kGuardBytes, PROT_NONE), 0);
    std::memset(bottom(), kPaint, kStackBytes);
  }
  PaintedStack(const PaintedStack&) = delete;
  PaintedStack& operator=(const PaintedStack&) = delete;
  ~PaintedStack() { munmap(guard_, kGuardBytes + kStackBytes); }

  // Runs the body in a thread on it. Result: bytes used.
  template <class Body>
  std::size_t Run(Body body) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstack(&attributes, bottom(), kStackBytes), 0);
    pthread_t thread;
    const auto run = [](void* given) -> void* { return (*static_cast<Body*>(given))(), nullptr; };
    EXPECT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    std::size_t clean = 0;
    while (clean < kStackBytes && bottom()[clean] == kPaint) ++clean;
    return kStackBytes - clean;
  }

 private:
  unsigned char* bottom() const { return guard_ + kGuardBytes; }
  unsigned char* guard_;
};

TEST(SmallStack, IsEnough) {
  if (kWiderFrames) GTEST_SKIP() << "instrumented frames are several times as large";
  NameCallsThatDie();
  const auto calls = uint64_t(Setting("KURVO_STACK_CALLS", kShortForm));
  std::size_t most = 0;
  const char* hungriest = "";
  for (const Entry& entry : Table()) {
    const std::size_t used = PaintedStack().Run([&] {
      for (uint64_t number = 0; number < calls; ++number)
        EXPECT_EQ(RunNumbered(entry, number, {.mode = HostileIf(number % 2)}).complaint, "")
            << entry.name;
    });
    if (used > most) hungriest = entry.name;
    most = std::max(most, used);
    if (used > kStackBytes / 8) std::printf("%-24s %zu bytes\n", entry.name, used);
  }
  std::printf("at most %zu bytes, in %s\n", most, hungriest);
}

}  // namespace
}  // namespace kurvo_test
