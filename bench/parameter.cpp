// The parameter of a point: on the curve, where the first agreeing roots end the search, and off
// it, where the nearest point has to be found. Names are parameter/where/type/size.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

#include "curves.h"

namespace {

using bench::OwnCurve;

constexpr int kPoints = 256;  // a power of two

// Points of the curve, moved by `offset` to one side.
void Search(benchmark::State& state, OwnCurve& own, double offset) {
  bench::Random random;
  std::array<std::array<double, 3>, kPoints> points;
  for (auto& p : points) {
    KurvocvPosition(&own.curve, random.Unit(), p.data(), &own.g);
    p[1] += offset;
  }
  unsigned i = 0;
  double t = 0.0;
  for (auto _ : state) {
    int result = KurvocvParameter(&own.curve, points[i++ % kPoints].data(), &t, &own.g);
    benchmark::DoNotOptimize(result);
    benchmark::DoNotOptimize(t);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
}

constexpr double kOn = 0.0;
constexpr double kOff = 0.05;

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

void Line(benchmark::State& state) {
  OwnCurve own;
  bench::MakeLine(own);
  Search(state, own, kOn);
}
BENCHMARK(Line)->Name("parameter/on/line");

void Arc(benchmark::State& state) {
  OwnCurve own;
  bench::MakeArc(own);
  Search(state, own, kOn);
}
BENCHMARK(Arc)->Name("parameter/on/arc");

void Bezier(benchmark::State& state, double offset) {
  OwnCurve own;
  bench::MakeBezier(own, Size(state));
  Search(state, own, offset);
}
BENCHMARK_CAPTURE(Bezier, on, kOn)
    ->Name("parameter/on/bezier")
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(13)
    ->Arg(20);
BENCHMARK_CAPTURE(Bezier, off, kOff)
    ->Name("parameter/off/bezier")
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(13)
    ->Arg(20);

void RationalBezier(benchmark::State& state, double offset) {
  OwnCurve own;
  bench::MakeRationalBezier(own, Size(state));
  Search(state, own, offset);
}
BENCHMARK_CAPTURE(RationalBezier, on, kOn)->Name("parameter/on/rbezier")->Arg(2)->Arg(3)->Arg(13);
BENCHMARK_CAPTURE(RationalBezier, off, kOff)
    ->Name("parameter/off/rbezier")
    ->Arg(2)
    ->Arg(3)
    ->Arg(13);

void BSpline(benchmark::State& state, double offset) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Search(state, own, offset);
}
BENCHMARK_CAPTURE(BSpline, on, kOn)
    ->Name("parameter/on/bspline")
    ->RangeMultiplier(10)
    ->Range(10, 10000);
BENCHMARK_CAPTURE(BSpline, off, kOff)
    ->Name("parameter/off/bspline")
    ->RangeMultiplier(10)
    ->Range(10, 10000);

}  // namespace
