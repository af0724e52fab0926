// Calls long enough for several threads, where the build has them.
#include "robust/long_loops.h"

#include <thread>

#include "robust/allocation.h"
#include "robust/records.h"
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

Owned LongSpline(Random& random, int32_t order, int32_t count) {
  std::vector<double> points(3 * static_cast<std::size_t>(count));
  for (std::size_t i = 0; i < points.size(); ++i)
    points[i] = i % 3 == 0 ? static_cast<double>(i) : i % 3 == 1 ? random.Uniform(0, .5) : 0;
  Globals g;
  Owned curve;
  KurvocvGenBspl(points.data(), count, order, curve.get(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return curve;
}

}  // namespace

uint64_t LongLoopsDigest() {
  Random random;
  Digest digest;
  for (const auto& [order, count] : {std::pair(3, 420000), {6, 120000}, {16, 12000}}) {
    const Owned curve = LongSpline(random, order, count);
    for (const double x : Knots(*curve)) digest.Add(x);
    for (const double x : ControlPoints(*curve)) digest.Add(x);
  }
  for (const int32_t count : {600, 3000}) {
    const Owned a = LongSpline(random, 4, count), b = LongSpline(random, 5, count / 2);
    Globals g;
    double ta = 0, tb = 0;
    digest.Add(KurvocvDistCurve(a.get(), b.get(), &ta, &tb, &g));
    digest.Add(ta);
    digest.Add(tb);
  }
  return digest.value();
}

namespace {

#ifdef KURVO_PARALLEL
constexpr bool kParallel = true;
#else
constexpr bool kParallel = false;
#endif

// First this thread finds no memory, then the others: whichever of them takes part, the call says
// so once it has ended everywhere.
TEST(LongLoops, RunOutOfMemoryOnAnyThread) {
  Random random;
  const Owned a = LongSpline(random, 4, 3000), b = LongSpline(random, 4, 3000);
  Globals g;
  const auto distance = [&] { return KurvocvDistCurve(a.get(), b.get(), nullptr, nullptr, &g); };
  const double dist = distance();
  const auto failures = [&](bool here, int rounds) {
    int failed = 0;
    for (int round = 0; round < rounds && failed == 0; ++round) {
      WatchMemory({.granted = here ? 0 : -1, .from_then = true}, 0);
      FailUnwatched(!here);
      const double got = distance();
      FailUnwatched(false);
      UnwatchMemory();
      failed += KurvoErrGet(&g) == KURVO_ERR_MEMORY;
      EXPECT_TRUE(failed || (KurvoErrGet(&g) == 0 && got == dist));
      KurvoErrReset(&g);
    }
    return failed;
  };
  EXPECT_EQ(failures(true, 1000), 1);
  // A second processor may be busy elsewhere, but not all the time.
  EXPECT_EQ(failures(false, kParallel ? 1000 : 20),
            kParallel && std::thread::hardware_concurrency() > 1 ? 1 : 0);
  EXPECT_EQ(distance(), dist);
}

}  // namespace
}  // namespace kurvo_test
