// The same source gives the same bits: digests over a fixed set of calls, whatever the compiler and
// its optimisation. scripts/digest.sh compares several builds.
//   KURVO_WRITE_DIGESTS=tests/robust/digests.txt  keeps what this build gives
//   KURVO_LIST_CALLS=calls.txt KURVO_CALLS=1000  lists the digest of each of so many calls:
//   what differs between the lists of two builds are the results that differ
#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <map>
#include <set>

#include "robust/runner.h"

namespace kurvo_test {
namespace {

constexpr int kCalls = 80;  // of each function, half of them on hostile records

struct Digests {
  Digest exact;  // of calls made of correctly rounded operations alone: the same on every machine
  Digest libm;   // of the others, which hang on the C library's sines and the like
  int exact_calls = 0, libm_calls = 0;
};

std::string Hex(uint64_t x) {
  char text[17];
  std::snprintf(text, sizeof text, "%016" PRIx64, x);
  return text;
}

// Results hang on no memory that has not been written: another filling gives the same.
Digests DigestsOf(const Entry& entry, uint64_t calls, std::ostream& list) {
  Digests digests;
  for (uint64_t number = 0; number < calls; ++number) {
    const Mode mode = HostileIf(number % 2);
    const Outcome outcome = RunNumbered(entry, number, {.mode = mode});
    EXPECT_EQ(outcome.complaint, "") << Trace(entry, number, mode);
    EXPECT_EQ(RunNumbered(entry, number, {.mode = mode, .fill = 0x3C}).digest, outcome.digest)
        << Trace(entry, number, mode);
    (outcome.libm ? digests.libm : digests.exact).Add(outcome.digest);
    ++(outcome.libm ? digests.libm_calls : digests.exact_calls);
    list << entry.name << ' ' << number << ' ' << Hex(outcome.digest) << ' ' << outcome.error
         << '\n';
  }
  return digests;
}

// The kept values, by function.
std::map<std::string, std::string> Kept() {
  std::map<std::string, std::string> kept;
  std::ifstream file(KURVO_DIGESTS);
  for (std::string name, digest; file >> name >> digest;) kept[name] = digest;
  return kept;
}

TEST(Table, HasEveryFunctionOfTheInterfaceOnce) {
  std::ifstream file(KURVO_EXPORTS);
  std::multiset<std::string> exported, entered;
  for (std::string name; file >> name;) exported.insert(name);
  ASSERT_FALSE(exported.empty());
  for (const Entry& entry : Table()) entered.insert(entry.name);
  EXPECT_EQ(entered, exported);
}

TEST(Digest, ListsCalls) {
  const char* const path = std::getenv("KURVO_LIST_CALLS");
  if (!path) GTEST_SKIP() << "for the comparison of builds";
  std::ofstream list(path);
  for (const Entry& entry : Table())
    DigestsOf(entry, static_cast<uint64_t>(Setting("KURVO_CALLS", kCalls)), list);
}

TEST(Digest, IsTheSameInEveryBuild) {
  if (std::getenv("KURVO_TEST_SEED")) GTEST_SKIP() << "kept for the default seed";
  const auto kept = Kept();
  std::ofstream renewed;
  if (const char* const path = std::getenv("KURVO_WRITE_DIGESTS")) renewed.open(path);
  Digest exact, libm;
  int exact_calls = 0, libm_calls = 0;
  for (const Entry& entry : Table()) {
    std::ofstream none;
    const Digests digests = DigestsOf(entry, kCalls, none);
    const std::string value = Hex(digests.exact.value());
    std::printf("%-24s %s %s\n", entry.name, value.c_str(), Hex(digests.libm.value()).c_str());
    if (renewed.is_open()) {
      renewed << entry.name << ' ' << value << '\n';
    } else {
      const auto found = kept.find(entry.name);
      EXPECT_EQ(found == kept.end() ? "none" : found->second, value)
          << entry.name
          << ": if its results are meant to change, KURVO_WRITE_DIGESTS=" << KURVO_DIGESTS
          << " keeps the new value";
    }
    exact.Add(digests.exact.value());
    libm.Add(digests.libm.value());
    exact_calls += digests.exact_calls;
    libm_calls += digests.libm_calls;
  }
  std::printf("exact digest %s of %d calls\n", Hex(exact.value()).c_str(), exact_calls);
  std::printf("libm digest  %s of %d calls\n", Hex(libm.value()).c_str(), libm_calls);
}

}  // namespace
}  // namespace kurvo_test
