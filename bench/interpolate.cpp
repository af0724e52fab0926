// Splines through points: names are interpolate/order/points. The points wave as an outline does;
// the uneven ones lie in clusters a thousandth as far apart as their neighbours.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "curves.h"

namespace {

std::vector<double> Points(int32_t count, bool uneven, bench::Random& random) {
  std::vector<double> points;
  double x = 0.0;
  for (int32_t i = 0; i < count; ++i) {
    points.insert(points.end(), {x, std::sin(x) + 0.1 * random.Unit(), 0.0});
    x += uneven && i % 3 != 0 ? 1e-3 : 1.0;
  }
  return points;
}

void Interpolate(benchmark::State& state, int32_t order, bool uneven) {
  const auto count = static_cast<int32_t>(state.range(0));
  constexpr int32_t kMost = 64, kPoints = 1 << 16;
  bench::Random random;
  std::vector<std::vector<double>> sets;
  for (int32_t i = 0; i < std::min(kMost, std::max(kPoints / count, 1)); ++i)
    sets.push_back(Points(count, uneven, random));
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  std::size_t i = 0;
  for (auto _ : state) {
    Curve curve;
    KurvocvGenBspl(sets[i++ % sets.size()].data(), count, order, &curve, &g);
    benchmark::DoNotOptimize(curve.data);
    KurvocvFreeCurve(&curve);
  }
  if (!KurvoOk(&g)) state.SkipWithError("error pending");
  state.SetItemsProcessed(state.iterations() * count);
}

void Growth(benchmark::internal::Benchmark* b) { b->RangeMultiplier(10)->Range(10, 1000000); }
BENCHMARK_CAPTURE(Interpolate, o2, 2, false)->Name("interpolate/order2")->Apply(Growth);
BENCHMARK_CAPTURE(Interpolate, o3, 3, false)->Name("interpolate/order3")->Apply(Growth);
BENCHMARK_CAPTURE(Interpolate, o4, 4, false)->Name("interpolate/order4")->Apply(Growth);
BENCHMARK_CAPTURE(Interpolate, u4, 4, true)->Name("interpolate/order4-uneven")->Apply(Growth);
BENCHMARK_CAPTURE(Interpolate, o6, 6, false)->Name("interpolate/order6")->Apply(Growth);
BENCHMARK_CAPTURE(Interpolate, o20, 20, false)
    ->Name("interpolate/order20")
    ->Arg(100)
    ->Arg(10000)
    ->Arg(100000);

}  // namespace
