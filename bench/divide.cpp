// Division, extension and knot removal: names are operation/type/size, the size being degree or
// number of control points. Results are freed, as a caller does.
#include <benchmark/benchmark.h>

#include <vector>

#include "curves.h"

namespace {

using bench::OwnCurve;

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

void Divide(benchmark::State& state, OwnCurve& own, double t) {
  for (auto _ : state) {
    Curve first, second;
    KurvocvDivide(&own.curve, t, &first, &second, &own.g);
    if (!first.data || !second.data) state.SkipWithError("not divided");
    benchmark::DoNotOptimize(first);
    KurvocvFreeCurve(&first);
    KurvocvFreeCurve(&second);
  }
}

void DivideLine(benchmark::State& state) {
  OwnCurve own;
  bench::MakeLine(own);
  Divide(state, own, 0.4);
}
BENCHMARK(DivideLine)->Name("divide/line");

void DivideArc(benchmark::State& state) {
  OwnCurve own;
  bench::MakeArc(own);
  Divide(state, own, 0.4);
}
BENCHMARK(DivideArc)->Name("divide/arc");

void DivideBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBezier(own, Size(state));
  Divide(state, own, 0.4);
}
BENCHMARK(DivideBezier)->Name("divide/bezier")->DenseRange(1, 4);

void DivideRationalBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeRationalBezier(own, Size(state));
  Divide(state, own, 0.4);
}
BENCHMARK(DivideRationalBezier)->Name("divide/rbezier")->DenseRange(2, 4);

void DivideBSpline(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Divide(state, own, 0.4001);
}
BENCHMARK(DivideBSpline)->Name("divide/bspline")->RangeMultiplier(10)->Range(10, 100000);

void DivideRationalBSpline(benchmark::State& state) {
  OwnCurve own;
  bench::MakeRationalBSpline(own, 4, Size(state));
  Divide(state, own, 0.4001);
}
BENCHMARK(DivideRationalBSpline)->Name("divide/rbspline")->RangeMultiplier(10)->Range(10, 100000);

// A B-spline as a chain of its Bezier pieces.
void MakePieces(OwnCurve& own, int32_t count) {
  OwnCurve spline;
  bench::MakeBSpline(spline, 4, count + 3);
  own.curve.type = CV_SEGCV;
  KurvocvConvert(&spline.curve, &own.curve, &own.g);
}

void DivideComposite(benchmark::State& state) {
  OwnCurve own;
  MakePieces(own, Size(state));
  Divide(state, own, 0.4001);
}
BENCHMARK(DivideComposite)->Name("divide/composite")->RangeMultiplier(10)->Range(10, 10000);

void NDivide(benchmark::State& state, OwnCurve& own, int32_t cuts) {
  std::vector<double> values;
  for (int32_t i = 1; i <= cuts; ++i) values.push_back((i - 0.3) / (cuts + 0.6));
  const CvParam list = {cuts, values.data()};
  for (auto _ : state) {
    Cvseq pieces;
    KurvocvNDivide(&own.curve, &list, &pieces, &own.g);
    if (pieces.count != cuts + 1) state.SkipWithError("not divided");
    benchmark::DoNotOptimize(pieces);
    KurvocvFreeCvseq(&pieces);
  }
  state.SetItemsProcessed(state.iterations() * cuts);
}

// As many parameters as the curve has control points: linear, as items per second show.
void NDivideBSpline(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  NDivide(state, own, Size(state));
}
BENCHMARK(NDivideBSpline)->Name("n-divide/bspline")->RangeMultiplier(10)->Range(10, 100000);

void NDivideBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBezier(own, 3);
  NDivide(state, own, Size(state));
}
BENCHMARK(NDivideBezier)->Name("n-divide/bezier-cuts")->RangeMultiplier(10)->Range(1, 10000);

void NDivideComposite(benchmark::State& state) {
  OwnCurve own;
  MakePieces(own, Size(state));
  NDivide(state, own, Size(state));
}
BENCHMARK(NDivideComposite)->Name("n-divide/composite")->RangeMultiplier(10)->Range(10, 10000);

void RemoveKnots(benchmark::State& state, OwnCurve& own) {
  for (auto _ : state) {
    Curve result;
    KurvocvBsplRemoveKnots(&own.curve, &result, &own.g);
    if (!result.data) state.SkipWithError("no result");
    benchmark::DoNotOptimize(result);
    KurvocvFreeCurve(&result);
  }
  state.SetItemsProcessed(state.iterations() * Size(state));
}

void RemoveNone(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  RemoveKnots(state, own);
}
BENCHMARK(RemoveNone)->Name("remove-knots/none")->RangeMultiplier(10)->Range(10, 100000);

void RemoveAll(benchmark::State& state) {  // a straight line: the worst case
  OwnCurve own;
  bench::MakeBSpline(own, 2, Size(state));
  auto* block = static_cast<KurvoBSpline*>(own.curve.data);
  for (int32_t i = 0; i < block->count; ++i) block->points[i][1] = 0.0;
  RemoveKnots(state, own);
}
BENCHMARK(RemoveAll)->Name("remove-knots/all")->RangeMultiplier(10)->Range(10, 100000);

void Extend(benchmark::State& state, OwnCurve& own, double a, double b) {
  for (auto _ : state) {
    Curve result;
    KurvocvExtendCurve(&own.curve, a, b, &result, &own.g);
    if (!result.data) state.SkipWithError("not extended");
    benchmark::DoNotOptimize(result);
    KurvocvFreeCurve(&result);
  }
}

void ExtendBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBezier(own, Size(state));
  Extend(state, own, 0.1, 0.2);
}
BENCHMARK(ExtendBezier)->Name("extend/bezier")->Arg(3)->Arg(10);

void ExtendBSpline(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Extend(state, own, 0.1, 0.2);
}
BENCHMARK(ExtendBSpline)->Name("extend/bspline")->RangeMultiplier(10)->Range(10, 10000);

void TrimToASpan(benchmark::State& state) {  // O(part): flat
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Extend(state, own, -0.4, -0.5999);
}
BENCHMARK(TrimToASpan)->Name("extend/bspline-trimmed")->RangeMultiplier(10)->Range(10, 100000);

}  // namespace
