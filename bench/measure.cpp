// Derivatives, curvature, length, and the segmentation and the sense of chains: names are
// operation/type/size, the size being degree, number of control points or number of curves.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <string>

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

void Length(benchmark::State& state, OwnCurve& own) {
  double length = 0.0;
  for (auto _ : state) {
    KurvocvCurveLen(&own.curve, 0.0, 1.0, &length, &own.g);
    benchmark::DoNotOptimize(length);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
}

// The worst case: too large to settle, so that all ten passes are made.
void MakeLargeBezier(OwnCurve& own, int32_t degree) {
  bench::MakeBezier(own, degree);
  auto* block = static_cast<KurvoBezier*>(own.curve.data);
  for (int32_t i = 0; i <= degree; ++i)
    for (int c = 0; c < 2; ++c) block->points[i][c] *= 1e6;
}

// Lines, Bezier curves and B-splines in turn.
void Segmentation(benchmark::State& state) {
  const int32_t count = Size(state);
  OwnCurve own;
  Cvseq chain;
  KurvocvMallocCvseq(&chain, count);
  for (int32_t i = 0; i < count; ++i) {
    Curve* curve = chain.curves + i;
    if (i % 3 == 0) {
      auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(curve, CV_LINE));
      KurvoclSetCoord(line->start, i, 0.0, 0.0);
      KurvoclSetCoord(line->end, i + 1.0, 0.0, 0.0);
    } else if (i % 3 == 1) {
      auto* bezier = static_cast<KurvoBezier*>(KurvocvMallocCurve(curve, CV_BEZIER, 3));
      for (int32_t j = 0; j < 4; ++j)
        KurvoclSetCoord(bezier->points[j], i + j / 3.0, j % 3 == 0 ? 0.0 : 1.0, 0.0);
    } else {
      auto* spline = static_cast<KurvoBSpline*>(KurvocvMallocCurve(curve, CV_BSPLINE, 4, 8));
      for (int32_t j = 0; j < 8; ++j)
        KurvoclSetCoord(spline->points[j], i + j / 7.0, j % 7 == 0 ? 0.0 : 1.0, 0.0);
      bench::UniformKnots(spline->knots, 4, 8);
    }
  }
  for (auto _ : state) {
    Curve composite;
    KurvocvCvseqToSegcv(&chain, &composite, &own.g);
    benchmark::DoNotOptimize(composite);
    KurvocvFreeCurve(&composite);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
  state.SetItemsProcessed(state.iterations() * count);
  KurvocvFreeCvseq(&chain);
}
BENCHMARK(Segmentation)->Name("segmentation/chain")->RangeMultiplier(10)->Range(10, 10000);

// The sense of a regular polygon.
void Normal(benchmark::State& state) {
  const int32_t count = Size(state);
  OwnCurve own;
  Cvseq chain;
  KurvocvMallocCvseq(&chain, count);
  for (int32_t i = 0; i < count; ++i) {
    const double from = 2.0 * M_PI * i / count;
    const double to = 2.0 * M_PI * (i + 1) / count;
    auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(chain.curves + i, CV_LINE));
    KurvoclSetCoord(line->start, std::cos(from), std::sin(from), 0.0);
    KurvoclSetCoord(line->end, std::cos(to), std::sin(to), 0.0);
  }
  Coord centre, normal;
  for (auto _ : state) {
    KurvocvCvseqNormal(&chain, centre, normal, &own.g);
    benchmark::DoNotOptimize(normal);
  }
  if (normal[2] != 1.0) state.SkipWithError("wrong sense");
  state.SetItemsProcessed(state.iterations() * count);
  KurvocvFreeCvseq(&chain);
}
BENCHMARK(Normal)->Name("normal/polygon")->RangeMultiplier(10)->Range(10, 10000);

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
  AllTypes<Length>("length");
  benchmark::RegisterBenchmark("length/bezier-large", Of<Length, MakeLargeBezier>)->Arg(3)->Arg(20);
  return true;
}();

}  // namespace
