// Derivatives, curvature, length and the segmentation of chains: names are operation/type/size, the
// size being degree, number of control points or number of curves.
#include <benchmark/benchmark.h>

#include <array>

#include "curves.h"

namespace {

using bench::OwnCurve;

constexpr int kParameters = 1024;  // a power of two

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

template <class Query>
void AtParameters(benchmark::State& state, OwnCurve& own, Query&& query) {
  bench::Random random;
  std::array<double, kParameters> parameters;
  for (double& t : parameters) t = random.Unit();
  unsigned i = 0;
  Coord vector;
  for (auto _ : state) {
    query(&own.curve, parameters[i++ % kParameters], vector, &own.g);
    benchmark::DoNotOptimize(vector);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
}

void Derivative(benchmark::State& state, OwnCurve& own) { AtParameters(state, own, KurvocvDeriv); }
void Curvature(benchmark::State& state, OwnCurve& own) {
  AtParameters(state, own, KurvocvCurvature);
}
template <int kOrder>
void OfOrder(benchmark::State& state, OwnCurve& own) {
  AtParameters(state, own, [](const Curve* curve, double t, double* out, GlobalVar* g) {
    KurvocvNDeriv(curve, t, out, kOrder, g);
  });
}

template <void (*measure)(benchmark::State&, OwnCurve&), void (*make)(OwnCurve&)>
void Of(benchmark::State& state) {
  OwnCurve own;
  make(own);
  measure(state, own);
}
template <void (*measure)(benchmark::State&, OwnCurve&), void (*make)(OwnCurve&, int32_t)>
void Of(benchmark::State& state) {
  OwnCurve own;
  make(own, Size(state));
  measure(state, own);
}

void MakeCubicSpline(OwnCurve& own, int32_t count) { bench::MakeBSpline(own, 4, count); }
void MakeRationalCubicSpline(OwnCurve& own, int32_t count) {
  bench::MakeRationalBSpline(own, 4, count);
}

template <void (*measure)(benchmark::State&, OwnCurve&)>
void AllTypes(const std::string& operation) {
  using benchmark::RegisterBenchmark;
  const auto name = [&](const char* type) { return operation + "/" + type; };
  RegisterBenchmark(name("line").c_str(), Of<measure, bench::MakeLine>);
  RegisterBenchmark(name("arc").c_str(), Of<measure, bench::MakeArc>);
  for (const auto degree : {2, 3, 5, 20, 39, 1000})
    RegisterBenchmark(name("bezier").c_str(), Of<measure, bench::MakeBezier>)->Arg(degree);
  for (const auto degree : {2, 3, 5, 20})
    RegisterBenchmark(name("rbezier").c_str(), Of<measure, bench::MakeRationalBezier>)->Arg(degree);
  for (const auto count : {10, 100, 1000, 10000})
    RegisterBenchmark(name("bspline").c_str(), Of<measure, MakeCubicSpline>)->Arg(count);
  for (const auto count : {10, 100, 1000})
    RegisterBenchmark(name("rbspline").c_str(), Of<measure, MakeRationalCubicSpline>)->Arg(count);
}

const bool kRegistered = [] {
  AllTypes<Derivative>("derivative");
  AllTypes<OfOrder<2>>("derivative-2");
  AllTypes<Curvature>("curvature");
  return true;
}();

}  // namespace
