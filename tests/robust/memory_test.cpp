// Every function of the interface when memory runs out: each request for memory fails, once, and
// with all that follow it.
//   KURVO_MEMORY_CALLS=10000  calls of each function, of each of which every request fails
#include <gtest/gtest.h>

#include <cstdio>

#include "robust/runner.h"

namespace kurvo_test {
namespace {

constexpr int64_t kShortForm = 150;
constexpr int64_t kManyRequests = 200;  // above it only some of them fail

Mode ModeOf(uint64_t number) { return HostileIf(number % 4 == 0); }

class FailingMemory : public testing::TestWithParam<Entry> {
 protected:
  // The call with one failure, and the same call right after it.
  void Fail(uint64_t number, const Outcome& untroubled, const MemoryFailure& failure) {
    const Entry& entry = GetParam();
    const Mode mode = ModeOf(number);
    const Outcome outcome = RunNumbered(entry, number, {.mode = mode, .failure = failure});
    const std::string trace = Trace(entry, number, mode) + ", request " +
                              std::to_string(failure.granted) + (failure.from_then ? " on" : "");
    EXPECT_EQ(outcome.complaint, "") << trace;
    EXPECT_GT(outcome.memory.refused, 0) << trace;
    // The last failure wins: one that the arguments bring about may come after that of the memory.
    const bool fails_anyway = KurvoErrSeverity(untroubled.error) > KURVO_SEVERITY_WARNING &&
                              outcome.error == untroubled.error;
    if (outcome.memory.refused == outcome.memory.dispensable)
      EXPECT_EQ(outcome.digest, untroubled.digest) << trace;
    else if (entry.traits & kSilent)
      EXPECT_EQ(outcome.error, untroubled.error) << trace;
    else
      EXPECT_TRUE(outcome.error == KURVO_ERR_MEMORY || fails_anyway)
          << trace << ", error " << std::hex << outcome.error;
    ++failures_;
    EXPECT_EQ(RunNumbered(entry, number, {.mode = mode}).digest, untroubled.digest) << trace;
  }
  int64_t failures_ = 0;
};

TEST_P(FailingMemory, IsReportedAndHarmless) {
  const Entry& entry = GetParam();
  const auto calls = static_cast<uint64_t>(Setting("KURVO_MEMORY_CALLS", kShortForm));
  int64_t most = 0;
  for (uint64_t number = 0; number < calls && !HasFailure(); ++number) {
    const Outcome untroubled = RunNumbered(entry, number, {.mode = ModeOf(number)});
    const int64_t requests = untroubled.memory.requests;
    most = std::max(most, requests);
    if (untroubled.memory.refused > 0) continue;  // more than there is
    const int64_t step = 1 + requests / kManyRequests;
    for (int64_t granted = 0; granted < requests; granted += step)
      for (const bool from_then : {false, true}) Fail(number, untroubled, {granted, from_then});
  }
  std::printf("%s: %lld failures, up to %lld requests in a call\n", entry.name,
              static_cast<long long>(failures_), static_cast<long long>(most));
}

INSTANTIATE_TEST_SUITE_P(All, FailingMemory, testing::ValuesIn(Table()),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
}  // namespace kurvo_test
