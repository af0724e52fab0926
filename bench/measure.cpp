// Derivatives, curvature, length, and the segmentation and the sense of chains: names are
// operation/type/size, the size being degree, number of control points or number of curves.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

#include "curves.h"

namespace {

using bench::Kind;
using bench::OwnCurve;

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

template <class Query>
void AtParameters(benchmark::State& state, const Kind& kind, Query&& query) {
  bench::Family family(kind);
  const auto parameters = bench::Parameters();
  std::size_t i = 0;
  Coord vector;
  for (auto _ : state) {
    query(family[i], parameters[i % bench::kQuestions], vector, &family.g);
    benchmark::DoNotOptimize(vector);
    ++i;
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

void Derivative(benchmark::State& state, const Kind& kind) {
  AtParameters(state, kind, KurvocvDeriv);
}
void Curvature(benchmark::State& state, const Kind& kind) {
  AtParameters(state, kind, KurvocvCurvature);
}
template <int kOrder>
void OfOrder(benchmark::State& state, const Kind& kind) {
  AtParameters(state, kind, [](const Curve* curve, double t, double* out, GlobalVar* g) {
    KurvocvNDeriv(curve, t, out, kOrder, g);
  });
}

void Length(benchmark::State& state, const Kind& kind) {
  bench::Family family(kind);
  std::size_t i = 0;
  double length = 0.0;
  for (auto _ : state) {
    KurvocvCurveLen(family[i++], 0.0, 1.0, &length, &family.g);
    benchmark::DoNotOptimize(length);
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

// Lines, Bezier curves and B-splines in turn, each some ten units long.
void Segmentation(benchmark::State& state) {
  const int32_t count = Size(state);
  OwnCurve own;
  Cvseq chain;
  KurvocvMallocCvseq(&chain, count);
  bench::Random random;
  const bench::Place place(0.7, 10.0 * count);
  const auto put = [&](double* p, double x, double y) { place.Put(p, x / count, y / count); };
  double end = 0.0;
  for (int32_t i = 0; i < count; ++i) {
    const double start = end;
    end = random.Unit();
    const auto fill = [&](Coord* points, int32_t last) {
      for (int32_t j = 0; j <= last; ++j) {
        const double y = j == 0 ? start : j == last ? end : random.Between(-1.0, 1.0);
        put(points[j], i + double(j) / last, y);
      }
    };
    Curve* curve = chain.curves + i;
    if (i % 3 == 0) {
      auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(curve, CV_LINE));
      put(line->start, i, start);
      put(line->end, i + 1.0, end);
    } else if (i % 3 == 1) {
      fill(static_cast<KurvoBezier*>(KurvocvMallocCurve(curve, CV_BEZIER, 3))->points, 3);
    } else {
      auto* spline = static_cast<KurvoBSpline*>(KurvocvMallocCurve(curve, CV_BSPLINE, 4, 8));
      fill(spline->points, 7);
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

using Measure = void(benchmark::State&, const Kind&);

void AllTypes(const std::string& operation, Measure* measure) {
  const auto add = [&](const std::string& type, const Kind& kind) {
    benchmark::RegisterBenchmark((operation + '/' + type).c_str(), measure, kind);
  };
  add("line", bench::Lines());
  add("arc", bench::Arcs());
  for (const int32_t degree : {2, 3, 5, 20, 39, 1000})
    add(bench::Name("bezier", degree), bench::Beziers(degree));
  for (const int32_t degree : {2, 3, 5, 20})
    add(bench::Name("rbezier", degree), bench::RationalBeziers(degree));
  for (const int32_t count : {10, 100, 1000, 10000})
    add(bench::Name("bspline", count), bench::BSplines(4, count));
  for (const int32_t count : {10, 100, 1000})
    add(bench::Name("rbspline", count), bench::RationalBSplines(4, count));
}

[[maybe_unused]] const bool kRegistered = [] {
  AllTypes("derivative", Derivative);
  AllTypes("derivative-2", OfOrder<2>);
  AllTypes("curvature", Curvature);
  AllTypes("length", Length);
  const auto add = [](const std::string& name, const Kind& kind) {
    benchmark::RegisterBenchmark(("length/" + name).c_str(), Length, kind);
  };
  for (const double size : bench::kSizes)
    add(bench::Name("cubic-of-size", size), bench::Beziers(3, size));
  for (const double size : bench::kSizes)
    add(bench::Name("outline-of-size", size), bench::Outlines(100, size));
  // The worst case: too large to settle, so that all ten passes are made.
  constexpr double kLarge = 1e6;
  for (const int32_t degree : {3, 20})
    add(bench::Name("bezier-large", degree), bench::Beziers(degree, kLarge));
  return true;
}();

}  // namespace
