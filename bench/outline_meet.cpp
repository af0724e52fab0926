// Where chains meet, and chains of loose curves.
#include <benchmark/benchmark.h>
#include <kurvo_outline.h>

#include <cmath>
#include <numbers>
#include <utility>

#include "curves.h"

namespace {

using bench::Family;

void Meet(benchmark::State& state, const bench::Kind& first, const bench::Kind& second) {
  Family a(first), b(second);
  std::size_t i = 0;
  int64_t meetings = 0;
  for (auto _ : state) {
    const Cvseq one = {1, a[i]}, other = {1, b[i / a.size() + 1]};
    KurvoMeeting* list;
    int32_t count;
    KurvoChainMeetings(&one, &other, nullptr, &list, &count, &a.g);
    KurvoFree(list);
    meetings += count;
    ++i;
  }
  state.counters["meetings"] =
      benchmark::Counter(double(meetings), benchmark::Counter::kAvgIterations);
}
BENCHMARK_CAPTURE(Meet, line_cubic, bench::Lines(), bench::Beziers(3))->Name("meet/line/cubic");
BENCHMARK_CAPTURE(Meet, arc_cubic, bench::Arcs(), bench::Beziers(3))->Name("meet/arc/cubic");
BENCHMARK_CAPTURE(Meet, cubics, bench::Beziers(3), bench::Beziers(3))->Name("meet/cubic/cubic");
BENCHMARK_CAPTURE(Meet, rational, bench::RationalBeziers(3), bench::RationalBeziers(3))
    ->Name("meet/rational_cubic/rational_cubic");
BENCHMARK_CAPTURE(Meet, splines, bench::BSplines(4, 100), bench::BSplines(4, 100))
    ->Name("meet/bspline/100");
BENCHMARK_CAPTURE(Meet, outlines, bench::Outlines(1000), bench::Outlines(1000))
    ->Name("meet/outline/1000");

// A chain that goes to and fro across a disc, so that all its curves cross each other, most of them
// once: by degree.
void MeetAll(benchmark::State& state) {
  constexpr int kCurves = 1000;
  const auto degree = static_cast<int32_t>(state.range(0));
  bench::Random random;
  Cvseq chain;
  KurvocvMallocCvseq(&chain, kCurves);
  const auto end = [](int i) {
    const double angle = std::numbers::pi * (1 + 1.0 / kCurves) * i;
    return std::pair(100 * std::cos(angle), 100 * std::sin(angle));
  };
  for (int i = 0; i < kCurves; ++i) {
    auto* bezier =
        static_cast<KurvoBezier*>(KurvocvMallocCurve(chain.curves + i, CV_BEZIER, degree));
    const auto [x0, y0] = end(i);
    const auto [x1, y1] = end(i + 1);
    for (int32_t k = 0; k <= degree; ++k) {
      const double share = double(k) / degree, bend = k % degree == 0 ? 0 : 40;
      KurvoclSetCoord(bezier->points[k], x0 + (x1 - x0) * share + random.Between(-bend, bend),
                      y0 + (y1 - y0) * share + random.Between(-bend, bend), 0);
    }
  }
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  int32_t count = 0;
  for (auto _ : state) {
    KurvoMeeting* list;
    KurvoChainMeetings(&chain, nullptr, nullptr, &list, &count, &g);
    KurvoFree(list);
  }
  KurvocvFreeCvseq(&chain);
  state.counters["meetings"] = count;
}
BENCHMARK(MeetAll)
    ->Name("meet/all-cross/1000")
    ->Arg(1)
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(9)
    ->Unit(benchmark::kMillisecond);

// Squares, their sides in any order.
void Join(benchmark::State& state) {
  const auto squares = static_cast<std::size_t>(state.range(0)) / 4;
  bench::Random random;
  std::vector<Curve> sides;
  for (std::size_t i = 0; i < squares; ++i) {
    const double x = random.Between(0, 1000), y = random.Between(0, 1000);
    const double corners[][2] = {{x, y}, {x + 1, y}, {x + 1, y + 1}, {x, y + 1}};
    for (int k = 0; k < 4; ++k) {
      sides.emplace_back();
      auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&sides.back(), CV_LINE));
      const double *from = corners[k], *to = corners[(k + 1) % 4];
      KurvoclSetCoord(line->start, from[0], from[1], 0);
      KurvoclSetCoord(line->end, to[0], to[1], 0);
    }
  }
  std::shuffle(sides.begin(), sides.end(), std::mt19937(bench::kSeed));
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  for (auto _ : state) {
    KurvoRegion closed, open;
    KurvoChainJoin(sides.data(), static_cast<int32_t>(sides.size()), nullptr, &closed, &open,
                   nullptr, &g);
    KurvoRegionFree(&closed);
    KurvoRegionFree(&open);
  }
  for (Curve& side : sides) KurvocvFreeCurve(&side);
}
BENCHMARK(Join)->Name("join/lines")->Arg(100)->Arg(10000)->Arg(100000);

}  // namespace
