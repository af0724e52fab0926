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

struct Task {
  const Entry* entry;
  uint64_t calls;
  int complaints;
};

void* RunEntry(void* argument) {
  Task& task = *static_cast<Task*>(argument);
  for (uint64_t number = 0; number < task.calls; ++number)
    task.complaints +=
        !RunNumbered(*task.entry, number, {.mode = HostileIf(number % 2)}).complaint.empty();
  return nullptr;
}

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

  // Runs body(argument) in a thread on it. Result: bytes used.
  std::size_t Run(void* (*body)(void*), void* argument) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    EXPECT_EQ(pthread_attr_setstack(&attributes, bottom(), kStackBytes), 0);
    pthread_t thread;
    EXPECT_EQ(pthread_create(&thread, &attributes, body, argument), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
    const unsigned char* const top = bottom() + kStackBytes;
    return static_cast<std::size_t>(top -
                                    std::find_if(static_cast<const unsigned char*>(bottom()), top,
                                                 [](unsigned char c) { return c != kPaint; }));
  }

 private:
  unsigned char* bottom() const { return guard_ + kGuardBytes; }
  unsigned char* guard_;
};

TEST(SmallStack, IsEnough) {
  if (kWiderFrames) GTEST_SKIP() << "instrumented frames are several times as large";
  NameCallsThatDie();
  std::size_t most = 0;
  const char* hungriest = "";
  for (const Entry& entry : Table()) {
    Task task = {&entry, uint64_t(Setting("KURVO_STACK_CALLS", kShortForm)), 0};
    const std::size_t used = PaintedStack().Run(RunEntry, &task);
    EXPECT_EQ(task.complaints, 0) << entry.name;
    if (used > most) hungriest = entry.name;
    most = std::max(most, used);
    if (used > kStackBytes / 8) std::printf("%-24s %zu bytes\n", entry.name, used);
  }
  std::printf("at most %zu bytes, in %s\n", most, hungriest);
}

}  // namespace
}  // namespace kurvo_test
