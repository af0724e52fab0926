// The same source gives the same bits: digests over a fixed set of calls, whatever the compiler and
// its optimisation. scripts/digest.sh compares several builds.
//   KURVO_WRITE_DIGESTS=tests/robust/digests.txt  keeps what this build gives
#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <map>

#include "robust/runner.h"

namespace kurvo_test {
namespace {

constexpr uint64_t kCalls = 80;  // of each function, half of them on hostile records

struct Digests {
  Digest exact;  // of calls made of correctly rounded operations alone: the same on every machine
  Digest libm;   // of the others, which hang on the C library's sines and the like
  int exact_calls = 0, libm_calls = 0;
};

Digests DigestsOf(const Entry& entry) {
  Digests digests;
  for (uint64_t number = 0; number < kCalls; ++number) {
    RunOptions options;
    options.mode = number % 2 ? Mode::kHostile : Mode::kBenign;
    const Outcome outcome = RunNumbered(entry, number, options);
    EXPECT_EQ(outcome.complaint, "") << Trace(entry, number, options.mode);
    (outcome.libm ? digests.libm : digests.exact).Add(outcome.digest);
    ++(outcome.libm ? digests.libm_calls : digests.exact_calls);
  }
  return digests;
}

std::string Hex(uint64_t x) {
  char text[17];
  std::snprintf(text, sizeof text, "%016" PRIx64, x);
  return text;
}

// The kept values, by function.
std::map<std::string, std::string> Kept() {
  std::map<std::string, std::string> kept;
  std::ifstream file(KURVO_DIGESTS);
  for (std::string name, digest; file >> name >> digest;) kept[name] = digest;
  return kept;
}

TEST(Digest, IsTheSameInEveryBuild) {
  if (std::getenv("KURVO_TEST_SEED")) GTEST_SKIP() << "kept for the default seed";
  const auto kept = Kept();
  std::ofstream renewed;
  if (const char* const path = std::getenv("KURVO_WRITE_DIGESTS")) renewed.open(path);
  Digest exact, libm;
  int exact_calls = 0, libm_calls = 0;
  for (const Entry& entry : Table()) {
    const Digests digests = DigestsOf(entry);
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
