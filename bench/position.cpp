// Points of a curve: names are position/type/size, the size being degree or number of control
// points.
#include <benchmark/benchmark.h>

#include <array>

#include "curves.h"

namespace {

using bench::OwnCurve;

constexpr int kParameters = 1024;  // a power of two

// Parameters spread over the domain in random order, so that no span stays warm by accident.
std::array<double, kParameters> Parameters() {
  bench::Random random;
  std::array<double, kParameters> parameters;
  for (double& t : parameters) t = random.Unit();
  return parameters;
}

void Evaluate(benchmark::State& state, OwnCurve& own) {
  const auto parameters = Parameters();
  unsigned i = 0;
  Coord point;
  for (auto _ : state) {
    KurvocvPosition(&own.curve, parameters[i++ % kParameters], point, &own.g);
    benchmark::DoNotOptimize(point);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
}

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

void Line(benchmark::State& state) {
  OwnCurve own;
  bench::MakeLine(own);
  Evaluate(state, own);
}
BENCHMARK(Line)->Name("position/line");

void Arc(benchmark::State& state) {
  OwnCurve own;
  bench::MakeArc(own);
  Evaluate(state, own);
}
BENCHMARK(Arc)->Name("position/arc");

void Bezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBezier(own, Size(state));
  Evaluate(state, own);
}
BENCHMARK(Bezier)
    ->Name("position/bezier")
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(9)
    ->Arg(10)
    ->Arg(39)
    ->Arg(1000);

void RationalBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeRationalBezier(own, Size(state));
  Evaluate(state, own);
}
BENCHMARK(RationalBezier)->Name("position/rbezier")->Arg(2)->Arg(3)->Arg(9)->Arg(10);

void BSpline(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Evaluate(state, own);
}
BENCHMARK(BSpline)->Name("position/bspline")->RangeMultiplier(10)->Range(10, 100000);

void RationalBSpline(benchmark::State& state) {
  OwnCurve own;
  bench::MakeRationalBSpline(own, 4, Size(state));
  Evaluate(state, own);
}
BENCHMARK(RationalBSpline)->Name("position/rbspline")->RangeMultiplier(10)->Range(10, 100000);

void SplineOrder(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, Size(state), 1000);
  Evaluate(state, own);
}
BENCHMARK(SplineOrder)
    ->Name("position/bspline-order")
    ->Arg(2)
    ->Arg(4)
    ->Arg(8)
    ->Arg(16)
    ->Arg(64)
    ->Arg(128);

}  // namespace
