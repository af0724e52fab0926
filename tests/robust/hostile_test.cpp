// Every function of the interface on records that no sane caller makes, and on sound ones.
//   KURVO_CALLS=1000000             calls of each function, 10000 unless told otherwise
//   KURVO_FIRST_CALL=500000         the number of the first of them
//   KURVO_CALL=name:number:hostile  that call alone, as a failure names it
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <map>

#include "robust/runner.h"

namespace kurvo_test {
namespace {

// What the calls of one function came to.
struct Tally {
  int64_t calls = 0, warnings = 0, errors = 0, requests = 0;
  double slowest = 0, seconds = 0;
  int64_t most = 0;
  uint64_t slowest_call = 0;

  void Count(const Outcome& outcome, uint64_t number) {
    ++calls;
    const int severity = KurvoErrSeverity(outcome.error);
    warnings += severity == KURVO_SEVERITY_WARNING;
    errors += severity > KURVO_SEVERITY_WARNING;
    requests += outcome.memory.requests;
    seconds += outcome.seconds;
    if (outcome.seconds > slowest) slowest_call = number;
    slowest = std::max(slowest, outcome.seconds);
    most = std::max(most, outcome.memory.peak);
  }
};

// Prints what all functions came to, at the very end.
class Report : public testing::Environment {
 public:
  void SetUp() override { NameCallsThatDie(); }
  void TearDown() override {
    if (tallies.empty()) return;
    std::printf("%-24s %9s %9s %9s %9s %11s %11s %11s %9s\n", "function", "calls", "warnings",
                "errors", "requests", "mean us", "slowest us", "most bytes", "slowest");
    int64_t calls = 0;
    for (const auto& [name, t] : tallies) {
      std::printf("%-24s %9lld %9lld %9lld %9lld %11.2f %11.1f %11lld %9llu\n", name.c_str(),
                  static_cast<long long>(t.calls), static_cast<long long>(t.warnings),
                  static_cast<long long>(t.errors), static_cast<long long>(t.requests),
                  1e6 * t.seconds / static_cast<double>(t.calls), 1e6 * t.slowest,
                  static_cast<long long>(t.most), static_cast<unsigned long long>(t.slowest_call));
      calls += t.calls;
    }
    std::printf("%zu functions, %lld calls\n", tallies.size(), static_cast<long long>(calls));
  }
  static std::map<std::string, Tally> tallies;
};
std::map<std::string, Tally> Report::tallies;
const auto* const kReport = testing::AddGlobalTestEnvironment(new Report);

constexpr int64_t kShortForm = 10000;

class Hostile : public testing::TestWithParam<Entry> {};

// One call in eight is a sound one, so that these come first in line for every limit too.
Mode ModeOf(uint64_t number) { return HostileIf(number % 8); }

TEST_P(Hostile, RecordsDoNoHarm) {
  const Entry& entry = GetParam();
  const auto first = static_cast<uint64_t>(Setting("KURVO_FIRST_CALL", 0));
  const auto end = first + static_cast<uint64_t>(Setting("KURVO_CALLS", kShortForm));
  Tally tally;
  int complaints = 0;
  for (uint64_t number = first; number < end && complaints < 5; ++number) {
    const Outcome outcome = RunNumbered(entry, number, {.mode = ModeOf(number)});
    tally.Count(outcome, number);
    if (outcome.complaint.empty()) continue;
    ++complaints;
    ADD_FAILURE() << entry.name << ": " << outcome.complaint << "; error 0x" << std::hex
                  << outcome.error << std::dec << ", " << outcome.seconds << " s, "
                  << outcome.memory.peak << " bytes, largest request " << outcome.memory.largest
                  << "\n"
                  << Trace(entry, number, ModeOf(number));
  }
  EXPECT_LT(tally.errors, tally.calls * 19 / 20) << "the calls hardly get past the checks";
  Report::tallies[entry.name] = tally;
}

INSTANTIATE_TEST_SUITE_P(All, Hostile, testing::ValuesIn(Table()),
                         [](const auto& row) { return std::string(row.param.name); });

// The call that KURVO_CALL names, for a debugger.
TEST(NamedCall, Runs) {
  const char* const named = std::getenv("KURVO_CALL");
  if (!named) GTEST_SKIP() << "no call is named";
  const std::string text = named;
  const auto colon = text.find(':');
  for (const Entry& entry : Table()) {
    if (text.substr(0, colon) != entry.name) continue;
    const Mode mode = HostileIf(text.find(":hostile") != std::string::npos);
    const auto number = std::strtoull(text.c_str() + colon + 1, nullptr, 10);
    const Outcome outcome = RunNumbered(entry, number, {.mode = mode});
    std::printf("error 0x%X, %g s, %lld bytes, digest %016llx\n",
                static_cast<unsigned>(outcome.error), outcome.seconds,
                static_cast<long long>(outcome.memory.peak),
                static_cast<unsigned long long>(outcome.digest));
    EXPECT_EQ(outcome.complaint, "");
  }
}

}  // namespace
}  // namespace kurvo_test
