// Every function of the interface, called at random.
//   KURVO_CALLS=1000000             hostile calls of each function, 10000 unless told otherwise
//   KURVO_FIRST_CALL=500000         the number of the first of them
//   KURVO_CALL=name:number:hostile  that call alone, as a failure names it
//   KURVO_MEMORY_CALLS=10000        calls of each, of each of which every request for memory fails
// The same source gives the same bits: digests over a fixed set of calls, whatever the compiler and
// its optimisation. scripts/digest.sh compares several builds.
//   KURVO_WRITE_DIGESTS=tests/robust/digests.txt  keeps what this build gives
//   KURVO_LIST_CALLS=calls.txt KURVO_CALLS=1000  lists the digest of each of so many calls:
//   what differs between the lists of two builds are the results that differ
#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <iomanip>
#include <map>
#include <set>

#include "robust/long_loops.h"
#include "robust/table.h"

namespace kurvo_test {
namespace {

constexpr int64_t kHostileCalls = 10000, kMemoryCalls = 150, kDigestCalls = 80;
constexpr int64_t kManyRequests = 200;  // above it only some of them fail
constexpr int64_t kManyOfRecords = 40;  // the same of calls that make many records,
constexpr int64_t kManyOfMost = 12;     // and of square ones with more than:
constexpr int64_t kMostRequests = 600;

TEST(Table, HasEveryFunctionOfTheInterfaceOnce) {
  std::ifstream file(KURVO_EXPORTS);
  std::multiset<std::string> exported, entered;
  for (std::string name; file >> name;) exported.insert(name);
  ASSERT_FALSE(exported.empty());
  for (const Entry& entry : Table()) entered.insert(entry.name);
  EXPECT_EQ(entered, exported);
}

// The call that KURVO_CALL names, for a debugger.
TEST(NamedCall, Runs) {
  const char* const named = std::getenv("KURVO_CALL");
  if (!named) GTEST_SKIP() << "no call is named";
  const std::string text = named;
  const auto colon = text.find(':');
  const auto number = std::strtoull(text.c_str() + colon + 1, nullptr, 10);
  const Mode mode = HostileIf(text.find(":hostile") != std::string::npos);
  for (const Entry& entry : Table())
    if (text.substr(0, colon) == entry.name) {
      const Outcome outcome = RunNumbered(entry, number, {.mode = mode});
      std::printf("error 0x%X, %g s, %" PRId64 " bytes, digest %016" PRIx64 "\n",
                  static_cast<unsigned>(outcome.error), outcome.seconds, outcome.memory.peak,
                  outcome.digest);
    }
}

// ---- records that no sane caller makes, and sound ones

class Hostile : public testing::TestWithParam<Entry> {
 protected:
  static void SetUpTestSuite() {
    std::printf("%-24s %9s %9s %9s %9s %11s %11s %11s %9s\n", "function", "calls", "warnings",
                "errors", "requests", "mean us", "slowest us", "most bytes", "slowest");
  }
};

// One call in eight is a sound one, so that these come first in line for every limit too.
TEST_P(Hostile, RecordsDoNoHarm) {
  const Entry& entry = GetParam();
  const auto first = static_cast<uint64_t>(Setting("KURVO_FIRST_CALL", 0));
  const int64_t calls = Setting("KURVO_CALLS", kHostileCalls);
  int64_t complaints = 0, warnings = 0, errors = 0, requests = 0, most = 0;
  double seconds = 0, slowest = 0;
  uint64_t slowest_call = 0, number = first;
  for (; number < first + static_cast<uint64_t>(calls) && complaints < 5; ++number) {
    const Outcome outcome = RunNumbered(entry, number, {.mode = HostileIf(number % 8)});
    complaints += !outcome.complaint.empty();
    const int severity = KurvoErrSeverity(outcome.error);
    warnings += severity == KURVO_SEVERITY_WARNING;
    errors += severity > KURVO_SEVERITY_WARNING;
    requests += outcome.memory.requests;
    most = std::max(most, outcome.memory.peak);
    seconds += outcome.seconds;
    if (outcome.seconds > slowest) slowest_call = number;
    slowest = std::max(slowest, outcome.seconds);
  }
  EXPECT_LT(errors, calls * 19 / 20) << "the calls hardly get past the checks";
  std::printf("%-24s %9" PRId64 " %9" PRId64 " %9" PRId64 " %9" PRId64 " %11.2f %11.1f %11" PRId64
              " %9" PRIu64 "\n",
              entry.name, calls, warnings, errors, requests,
              1e6 * seconds / static_cast<double>(calls), 1e6 * slowest, most, slowest_call);
}

const auto kName = [](const auto& row) { return std::string(row.param.name); };
INSTANTIATE_TEST_SUITE_P(All, Hostile, testing::ValuesIn(Table()), kName);

// ---- memory that runs out: each request fails, once, and with all that follow it

class FailingMemory : public testing::TestWithParam<Entry> {};

// The call with one failure, and the same call right after it.
void Fail(const Entry& entry, uint64_t number, const Outcome& untroubled, RunOptions options) {
  SCOPED_TRACE(Trace(entry, number, options));
  const Outcome outcome = RunNumbered(entry, number, options);
  EXPECT_GT(outcome.memory.refused, 0);
  // The last failure wins: one that the arguments bring about may come after that of the memory.
  const bool fails_anyway = KurvoErrSeverity(untroubled.error) > KURVO_SEVERITY_WARNING &&
                            outcome.error == untroubled.error;
  if (outcome.memory.refused == outcome.memory.dispensable)
    EXPECT_EQ(outcome.digest, untroubled.digest);
  else if (entry.traits & kSilent)
    EXPECT_EQ(outcome.error, untroubled.error);
  else
    EXPECT_TRUE(outcome.error == KURVO_ERR_MEMORY || fails_anyway) << std::hex << outcome.error;
  options.failure = {};
  EXPECT_EQ(RunNumbered(entry, number, options).digest, untroubled.digest);
}

TEST_P(FailingMemory, IsReportedAndHarmless) {
  const Entry& entry = GetParam();
  const auto calls = static_cast<uint64_t>(Setting("KURVO_MEMORY_CALLS", kMemoryCalls));
  int64_t most = 0, failures = 0;
  for (uint64_t number = 0; number < calls && !HasFailure(); ++number) {
    RunOptions options{.mode = HostileIf(number % 4 == 0)};
    const Outcome untroubled = RunNumbered(entry, number, options);
    const int64_t requests = untroubled.memory.requests;
    most = std::max(most, requests);
    if (untroubled.memory.refused > 0) continue;  // more than there is
    const int64_t many = !(entry.traits & kRecords)                           ? kManyRequests
                         : entry.traits & kSquare && requests > kMostRequests ? kManyOfMost
                                                                              : kManyOfRecords;
    const int64_t step = 1 + requests / many;
    for (int64_t granted = 0; granted < requests; granted += step)
      for (const bool from_then : {false, true}) {
        options.failure = {granted, from_then};
        Fail(entry, number, untroubled, options);
        ++failures;
      }
  }
  std::printf("%s: %" PRId64 " failures, up to %" PRId64 " requests in a call\n", entry.name,
              failures, most);
}

INSTANTIATE_TEST_SUITE_P(All, FailingMemory, testing::ValuesIn(Table()), kName);

// ---- the same bits in every build

std::string Hexadecimal(uint64_t digest) {
  char text[17];
  std::snprintf(text, sizeof text, "%016" PRIx64, digest);
  return text;
}

// Of calls made of correctly rounded operations alone: the same on every machine; and of the
// others, which hang on the C library's sines and the like.
struct Digests {
  Digest of[2];
  int calls[2] = {0, 0};

  std::string Text(int libm) const { return Hexadecimal(of[libm].value()); }
};

// Results hang on no memory that has not been written: another filling gives the same.
Digests DigestsOf(const Entry& entry, int64_t calls, std::ostream& list) {
  Digests digests;
  for (uint64_t number = 0; number < static_cast<uint64_t>(calls); ++number) {
    RunOptions options{.mode = HostileIf(number % 2)};
    const Outcome outcome = RunNumbered(entry, number, options);
    options.fill = 0x3C;
    EXPECT_EQ(RunNumbered(entry, number, options).digest, outcome.digest)
        << Trace(entry, number, options);
    digests.of[outcome.libm].Add(outcome.digest);
    ++digests.calls[outcome.libm];
    list << entry.name << ' ' << std::dec << number << ' ' << std::hex << std::setfill('0')
         << std::setw(16) << outcome.digest << ' ' << std::dec << outcome.error << '\n';
  }
  return digests;
}

TEST(Digest, ListsCalls) {
  const char* const path = std::getenv("KURVO_LIST_CALLS");
  if (!path) GTEST_SKIP() << "for the comparison of builds";
  std::ofstream list(path);
  for (const Entry& entry : Table()) DigestsOf(entry, Setting("KURVO_CALLS", kDigestCalls), list);
}

TEST(Digest, IsTheSameInEveryBuild) {
  if (std::getenv("KURVO_TEST_SEED")) GTEST_SKIP() << "kept for the default seed";
  std::map<std::string, std::string> kept;
  std::ifstream file(KURVO_DIGESTS);
  for (std::string name, digest; file >> name >> digest;) kept[name] = digest;
  const char* const path = std::getenv("KURVO_WRITE_DIGESTS");
  std::ofstream renewed(path ? path : ""), none;
  const auto keep = [&](const std::string& name, const std::string& digest) {
    renewed << name << ' ' << digest << '\n';
    EXPECT_TRUE(path || kept[name] == digest)
        << name << ": if its results are meant to change, KURVO_WRITE_DIGESTS=" << KURVO_DIGESTS
        << " keeps the new value";
  };
  Digests all;
  for (const Entry& entry : Table()) {
    const Digests digests = DigestsOf(entry, kDigestCalls, none);
    std::printf("%-24s %s %s\n", entry.name, digests.Text(0).c_str(), digests.Text(1).c_str());
    keep(entry.name, digests.Text(0));
    for (const int libm : {0, 1}) {
      all.of[libm].Add(digests.of[libm].value());
      all.calls[libm] += digests.calls[libm];
    }
  }
  if (LongLoopsDigest != nullptr) {
    const std::string long_loops = Hexadecimal(LongLoopsDigest());
    keep("LongLoops", long_loops);
    std::printf("long loops digest %s\n", long_loops.c_str());
  }
  std::printf("exact digest %s of %d calls\n", all.Text(0).c_str(), all.calls[0]);
  std::printf("libm digest  %s of %d calls\n", all.Text(1).c_str(), all.calls[1]);
}

}  // namespace
}  // namespace kurvo_test
