// Point classification: names are region/boundary/size, the size being the number of curves.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "curves.h"

namespace {

constexpr int kPoints = 1024;  // a power of two

class Chain {
 public:
  explicit Chain(int32_t count) { KurvocvMallocCvseq(&seq, count); }
  ~Chain() { KurvocvFreeCvseq(&seq); }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;

  Cvseq seq{};
};

// A ring of cubics that waves between radius 0.8 and 1.
void MakeRing(Chain& ring) {
  const int32_t count = ring.seq.count;
  const auto at = [&](int32_t i, double* p) {
    const double angle = 2.0 * std::numbers::pi * (i % (3 * count)) / (3 * count);
    const double radius = 0.9 + 0.1 * std::cos(7.0 * angle);
    KurvoclSetCoord(p, radius * std::cos(angle), radius * std::sin(angle), 0.0);
  };
  for (int32_t i = 0; i < count; ++i) {
    auto* cubic = static_cast<KurvoBezier*>(KurvocvMallocCurve(ring.seq.curves + i, CV_BEZIER, 3));
    for (int32_t j = 0; j <= 3; ++j) at(3 * i + j, cubic->points[j]);
  }
}

// The letter S in the manner of a font: quadratic Bezier curves and lines.
void MakeGlyph(Chain& glyph) {
  constexpr double kOutline[][2] = {
      {.15, .20}, {.15, .05}, {.25, -.02}, {.50, -.10}, {.75, -.02}, {.86, .06},
      {.86, .22}, {.86, .36}, {.75, .42},  {.66, .48},  {.50, .53},  {.34, .58},
      {.30, .66}, {.30, .80}, {.50, .84},  {.68, .84},  {.72, .70},  {.78, .70},
      {.84, .70}, {.84, .82}, {.75, .88},  {.62, .96},  {.50, .96},  {.16, .94},
      {.16, .66}, {.16, .50}, {.32, .42},  {.44, .38},  {.56, .34},  {.72, .28},
      {.72, .18}, {.72, .02}, {.50, .02},  {.28, .04},  {.28, .20},  {.22, .20}};
  const int32_t count = glyph.seq.count;
  for (int32_t i = 0; i < count; ++i) {
    auto* piece = static_cast<KurvoBezier*>(KurvocvMallocCurve(glyph.seq.curves + i, CV_BEZIER, 2));
    for (int32_t j = 0; j <= 2; ++j) {
      const double* p = kOutline[(2 * i + j) % (2 * count)];
      KurvoclSetCoord(piece->points[j], p[0], p[1], 0.0);
    }
  }
}

void Locate(benchmark::State& state, Chain& chain, double low, double high) {
  bench::Random random;
  std::vector<std::array<double, 3>> points(kPoints);
  for (auto& p : points)
    p = {low + (high - low) * random.Unit(), low + (high - low) * random.Unit(), 0.0};
  const Coord normal = {0.0, 0.0, 1.0};
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  unsigned i = 0;
  uint32_t result = 0;
  for (auto _ : state) {
    KurvosfPntBoundForPlane(normal, &chain.seq, points[i++ % kPoints].data(), &result, &g);
    benchmark::DoNotOptimize(result);
  }
  if (!KurvoOk(&g)) state.SkipWithError("error pending");
}

[[maybe_unused]] const bool kRegistered = [] {
  benchmark::RegisterBenchmark("region/glyph/18", [](benchmark::State& state) {
    Chain glyph(18);
    MakeGlyph(glyph);
    Locate(state, glyph, 0.0, 1.0);
  });
  for (const int32_t count : {4, 16, 64, 256, 1024, 4096, 16384}) {
    const auto run = [count](benchmark::State& state) {
      Chain ring(count);
      MakeRing(ring);
      Locate(state, ring, -1.0, 1.0);
    };
    benchmark::RegisterBenchmark(("region/ring/" + std::to_string(count)).c_str(), run);
  }
  return true;
}();

}  // namespace
