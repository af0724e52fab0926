// Point classification: names are region/boundary/size, the size being the number of
// curves or, for glyphs of 18 curves, the units an em.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <vector>

#include "curves.h"

namespace {

class Chain {
 public:
  explicit Chain(int32_t count) { KurvocvMallocCvseq(&seq, count); }
  ~Chain() { KurvocvFreeCvseq(&seq); }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;

  Cvseq seq{};
};

// A ring of cubics that waves between 0.8 and 1 times the size.
void MakeRing(Chain& ring, bench::Random& random) {
  const int32_t count = ring.seq.count;
  const double phase = random.Between(0.0, 2.0 * std::numbers::pi);
  const auto at = [&](int32_t i, double* p) {
    const double angle = 2.0 * std::numbers::pi * (i % (3 * count)) / (3 * count) + phase;
    const double radius = bench::kSize * (0.9 + 0.1 * std::cos(7.0 * angle));
    KurvoclSetCoord(p, radius * std::cos(angle), radius * std::sin(angle), 0.0);
  };
  for (int32_t i = 0; i < count; ++i) {
    auto* cubic = static_cast<KurvoBezier*>(KurvocvMallocCurve(ring.seq.curves + i, CV_BEZIER, 3));
    for (int32_t j = 0; j <= 3; ++j) at(3 * i + j, cubic->points[j]);
  }
}

// The letter S in the manner of a font, a little different each time: quadratic Bezier curves.
void MakeGlyph(Chain& glyph, bench::Random& random, double em) {
  constexpr double kOutline[][2] = {
      {.15, .20}, {.15, .05}, {.25, -.02}, {.50, -.10}, {.75, -.02}, {.86, .06},
      {.86, .22}, {.86, .36}, {.75, .42},  {.66, .48},  {.50, .53},  {.34, .58},
      {.30, .66}, {.30, .80}, {.50, .84},  {.68, .84},  {.72, .70},  {.78, .70},
      {.84, .70}, {.84, .82}, {.75, .88},  {.62, .96},  {.50, .96},  {.16, .94},
      {.16, .66}, {.16, .50}, {.32, .42},  {.44, .38},  {.56, .34},  {.72, .28},
      {.72, .18}, {.72, .02}, {.50, .02},  {.28, .04},  {.28, .20},  {.22, .20}};
  std::array<std::array<double, 2>, std::size(kOutline)> outline;
  for (std::size_t i = 0; i < outline.size(); ++i)
    for (std::size_t c = 0; c < 2; ++c)
      outline[i][c] = em * (kOutline[i][c] + random.Between(-0.01, 0.01));
  const int32_t count = glyph.seq.count;
  for (int32_t i = 0; i < count; ++i) {
    auto* piece = static_cast<KurvoBezier*>(KurvocvMallocCurve(glyph.seq.curves + i, CV_BEZIER, 2));
    for (int32_t j = 0; j <= 2; ++j) {
      const auto& p = outline[static_cast<std::size_t>((2 * i + j) % (2 * count))];
      KurvoclSetCoord(piece->points[j], p[0], p[1], 0.0);
    }
  }
}

// Points in the box of the chains, which goes from `low` to `high`.
void Locate(benchmark::State& state, const std::vector<std::unique_ptr<Chain>>& chains, double low,
            double high) {
  bench::Random random;
  bench::Points points(bench::kQuestions);
  for (auto& p : points) p = {random.Between(low, high), random.Between(low, high), 0.0};
  const Coord normal = {0.0, 0.0, 1.0};
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  std::size_t i = 0;
  uint32_t result = 0;
  for (auto _ : state) {
    KurvosfPntBoundForPlane(normal, &chains[i % chains.size()]->seq,
                            points[i % bench::kQuestions].data(), &result, &g);
    benchmark::DoNotOptimize(result);
    ++i;
  }
  if (!KurvoOk(&g)) state.SkipWithError("error pending");
}

// 64 chains of `count` curves, or fewer when they would be more than 16 384 curves.
template <class Make>
std::vector<std::unique_ptr<Chain>> Chains(int32_t count, Make make) {
  constexpr int32_t kMost = 64, kCurves = 1 << 14;
  bench::Random random;
  std::vector<std::unique_ptr<Chain>> chains;
  for (int32_t i = 0; i < std::min(kMost, std::max(kCurves / count, 1)); ++i) {
    chains.push_back(std::make_unique<Chain>(count));
    make(*chains.back(), random);
  }
  return chains;
}

[[maybe_unused]] const bool kRegistered = [] {
  for (const double em : {100.0, 1000.0})
    benchmark::RegisterBenchmark(
        bench::Name("region/glyph-of-em", em).c_str(), [em](benchmark::State& state) {
          const auto make = [em](Chain& c, bench::Random& random) { MakeGlyph(c, random, em); };
          Locate(state, Chains(18, make), 0.0, em);
        });
  for (const int32_t count : {4, 16, 64, 256, 1024, 4096, 16384})
    benchmark::RegisterBenchmark(
        bench::Name("region/ring", count).c_str(), [count](benchmark::State& state) {
          Locate(state, Chains(count, MakeRing), -bench::kSize, bench::kSize);
        });
  return true;
}();

}  // namespace
