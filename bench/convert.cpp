// Conversion, reversal and matching: names are operation/kinds/size, the size being degree or
// number of control points (pieces, where composites are joined).
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

using bench::OwnCurve;

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

// Converts and frees, as a caller does.
void Convert(benchmark::State& state, OwnCurve& source, int32_t type) {
  for (auto _ : state) {
    Curve target{};
    target.type = type;
    if (KurvocvConvert(&source.curve, &target, &source.g) != KURVO_CONVERTED)
      state.SkipWithError("not converted");
    benchmark::DoNotOptimize(target);
    KurvocvFreeCurve(&target);
  }
}

void ConvertPieces(benchmark::State& state, OwnCurve& source, int32_t spans) {
  Convert(state, source, CV_SEGCV);
  state.SetItemsProcessed(state.iterations() *
                          spans);  // the time of one span: 1 / items per second
}

void Line(benchmark::State& state) {
  OwnCurve source;
  bench::MakeLine(source);
  Convert(state, source, CV_BEZIER);
}
BENCHMARK(Line)->Name("convert/line-to-bezier");

void Arc(benchmark::State& state) {
  OwnCurve source;
  bench::MakeArc(source);
  Convert(state, source, CV_RBEZIER);
}
BENCHMARK(Arc)->Name("convert/arc-to-rbezier");

void RecognisedArc(benchmark::State& state) {
  OwnCurve arc;
  bench::MakeArc(arc);
  OwnCurve source;
  source.curve.type = CV_RBEZIER;
  KurvocvConvert(&arc.curve, &source.curve, &source.g);
  Convert(state, source, CV_ARC);
}
BENCHMARK(RecognisedArc)->Name("convert/rbezier-to-arc");

void BSpline(benchmark::State& state) {
  OwnCurve source;
  bench::MakeBSpline(source, 4, Size(state));
  ConvertPieces(state, source, Size(state) - 3);
}
BENCHMARK(BSpline)->Name("convert/bspline-to-pieces")->RangeMultiplier(10)->Range(10, 100000);

void RationalBSpline(benchmark::State& state) {
  OwnCurve source;
  bench::MakeRationalBSpline(source, 4, Size(state));
  ConvertPieces(state, source, Size(state) - 3);
}
BENCHMARK(RationalBSpline)
    ->Name("convert/rbspline-to-pieces")
    ->RangeMultiplier(10)
    ->Range(10, 100000);

void SplineOrder(benchmark::State& state) {
  OwnCurve source;
  bench::MakeBSpline(source, Size(state), 1000);
  ConvertPieces(state, source, 1001 - Size(state));
}
BENCHMARK(SplineOrder)
    ->Name("convert/bspline-order-to-pieces")
    ->Arg(2)
    ->Arg(3)
    ->Arg(4)
    ->Arg(8)
    ->Arg(16)
    ->Arg(64);

// The pieces of a B-spline with as many spans, put together again.
void Join(benchmark::State& state) {
  OwnCurve spline;
  bench::MakeBSpline(spline, 4, Size(state) + 3);
  OwnCurve source;
  source.curve.type = CV_SEGCV;
  KurvocvConvert(&spline.curve, &source.curve, &source.g);
  Convert(state, source, CV_BSPLINE);
}
BENCHMARK(Join)->Name("convert/pieces-to-bspline")->RangeMultiplier(10)->Range(10, 100000);

void Reverse(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  for (auto _ : state) KurvocvChgOrder(&own.curve, &own.g);
}
BENCHMARK(Reverse)->Name("reverse/bspline")->RangeMultiplier(10)->Range(10, 100000);

void MatchBSplines(benchmark::State& state) {  // identical: nothing ends the comparison early
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  for (auto _ : state) benchmark::DoNotOptimize(KurvocvMatch(&own.curve, &own.curve, &own.g));
}
BENCHMARK(MatchBSplines)->Name("match/bspline")->RangeMultiplier(10)->Range(10, 100000);

void MatchRaised(benchmark::State& state) {  // degree 1 raised to the size
  OwnCurve low;
  OwnCurve high;
  bench::MakeBezier(low, 1);
  bench::MakeBezier(high, Size(state));
  for (auto _ : state) benchmark::DoNotOptimize(KurvocvMatch(&low.curve, &high.curve, &low.g));
}
BENCHMARK(MatchRaised)->Name("match/bezier-raised")->Arg(2)->Arg(3)->Arg(10)->Arg(100)->Arg(4096);

}  // namespace
