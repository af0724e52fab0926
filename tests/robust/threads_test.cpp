// Sixteen threads with a record each run the whole table on the same curves, and give what one
// thread gives.
//   KURVO_THREAD_CALLS=1000  calls of each function in each thread
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "robust/runner.h"

namespace kurvo_test {
namespace {

constexpr int kThreads = 16;
constexpr int kCurves = 200;  // of each mode, in the gallery
constexpr int64_t kShortForm = 16;

class SharedCurves : public testing::Test {
 protected:
  // The digests of all calls, function by function from the one with index `first` on, so that
  // threads are at different functions at any time.
  std::vector<uint64_t> RunTable(std::size_t first) {
    std::vector<uint64_t> digests(Table().size());
    for (std::size_t i = 0; i < Table().size(); ++i) {
      const std::size_t index = (first + i) % Table().size();
      Digest digest;
      for (uint64_t number = 0; number < calls_; ++number) {
        const RunOptions options{.mode = HostileIf(number % 2), .gallery = &gallery_};
        const Outcome outcome = RunNumbered(Table()[index], number, options);
        complaints_ += !outcome.complaint.empty();
        digest.Add(outcome.digest);
      }
      digests[index] = digest.value();
    }
    return digests;
  }

  const uint64_t calls_ = uint64_t(Setting("KURVO_THREAD_CALLS", kShortForm));
  const Gallery gallery_{Seed(), kCurves};
  std::atomic<int64_t> complaints_ = 0;
};

TEST_F(SharedCurves, GiveEveryThreadTheSameBits) {
  const uint64_t before = gallery_.Checksum();
  const auto alone = RunTable(0);
  std::vector<std::vector<uint64_t>> together(kThreads);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < kThreads; ++i)
    threads.emplace_back([&, i] { together[i] = RunTable(i * Table().size() / kThreads); });
  for (std::thread& thread : threads) thread.join();
  for (std::size_t i = 0; i < kThreads; ++i)
    for (std::size_t f = 0; f < Table().size(); ++f)
      EXPECT_EQ(together[i][f], alone[f]) << Table()[f].name << " in thread " << i;
  EXPECT_EQ(complaints_, 0);
  EXPECT_EQ(gallery_.Checksum(), before) << "shared curves changed";
}

}  // namespace
}  // namespace kurvo_test
