// Offsets: names are operation/type/size, the size being degree, number of spans, or the tolerance
// as a power of ten below the size of the curve. Results are freed, as a caller does; "pieces"
// counts them.
#include <benchmark/benchmark.h>

#include <cmath>
#include <initializer_list>

#include "curves.h"

namespace {

using bench::OwnCurve;

constexpr Coord kNormal = {0.0, 0.0, 1.0};
constexpr double kDistance = 0.02;  // of curves of unit size
constexpr double kTolerance = 1e-4;

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

void Offset(benchmark::State& state, OwnCurve& own, double distance, double tolerance) {
  int32_t pieces = 0;
  for (auto _ : state) {
    Cvseq result;
    KurvocvOffsetCurve(&own.curve, kNormal, distance, tolerance, &result, &own.g);
    if (result.count == 0) state.SkipWithError("no offset");
    benchmark::DoNotOptimize(result);
    pieces = result.count;
    KurvocvFreeCvseq(&result);
  }
  state.counters["pieces"] = pieces;
}

void MakeCubicOrQuadratic(OwnCurve& own, std::initializer_list<double> xy) {
  const auto degree = static_cast<int32_t>(xy.size() / 2) - 1;
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&own.curve, CV_BEZIER, degree));
  const double* p = xy.begin();
  for (int32_t i = 0; i <= degree; ++i)
    KurvoclSetCoord(block->points[i], p[2 * i], p[2 * i + 1], 0);
}

void OffsetLine(benchmark::State& state) {
  OwnCurve own;
  bench::MakeLine(own);
  Offset(state, own, kDistance, kTolerance);
}
BENCHMARK(OffsetLine)->Name("offset/line");

void OffsetArc(benchmark::State& state) {
  OwnCurve own;
  bench::MakeArc(own);
  Offset(state, own, kDistance, kTolerance);
}
BENCHMARK(OffsetArc)->Name("offset/arc");

// Quarters of an oval, as outlines of letters have them: 500 units high, a stroke of 40 units, half
// a unit of tolerance.
void OffsetQuadraticGlyphPiece(benchmark::State& state) {
  OwnCurve own;
  MakeCubicOrQuadratic(own, {0, 0, 0, 250, 200, 250});
  Offset(state, own, 20.0, 0.5);
}
BENCHMARK(OffsetQuadraticGlyphPiece)->Name("offset/glyph-piece/2");

void OffsetCubicGlyphPiece(benchmark::State& state) {
  OwnCurve own;
  MakeCubicOrQuadratic(own, {0, 0, 0, 138, 90, 250, 200, 250});
  Offset(state, own, 20.0, 0.5);
}
BENCHMARK(OffsetCubicGlyphPiece)->Name("offset/glyph-piece/3");

void OffsetStraightCubic(benchmark::State& state) {
  OwnCurve own;
  MakeCubicOrQuadratic(own, {0, 0, 1, 1, 2, 2, 3, 3});
  Offset(state, own, kDistance, kTolerance);
}
BENCHMARK(OffsetStraightCubic)->Name("offset/straight-cubic");

// An arch with both sides and the top in one cubic.
void MakeArch(OwnCurve& own) { MakeCubicOrQuadratic(own, {0, 0, 0.1, 1, 0.9, 1, 1, 0}); }

// Ten times as exact takes about three times as many pieces.
void OffsetByTolerance(benchmark::State& state) {
  OwnCurve own;
  MakeArch(own);
  Offset(state, own, 0.1, std::pow(10.0, -static_cast<double>(state.range(0))));
}
BENCHMARK(OffsetByTolerance)->Name("offset/tolerance")->DenseRange(2, 8, 2);

void OffsetBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBezier(own, Size(state));
  Offset(state, own, kDistance, kTolerance);
}
BENCHMARK(OffsetBezier)->Name("offset/bezier")->Arg(2)->Arg(3)->Arg(5)->Arg(10)->Arg(38);

void OffsetRationalBezier(benchmark::State& state) {
  OwnCurve own;
  bench::MakeRationalBezier(own, Size(state));
  Offset(state, own, kDistance, kTolerance);
}
BENCHMARK(OffsetRationalBezier)->Name("offset/rbezier")->Arg(2)->Arg(3)->Arg(5)->Arg(10);

// Linear in the spans.
void OffsetBSpline(benchmark::State& state) {
  OwnCurve own;
  const int32_t spans = Size(state);
  bench::MakeBSpline(own, 4, spans + 3);
  Offset(state, own, kDistance, kTolerance);
  state.SetItemsProcessed(state.iterations() * spans);
}
BENCHMARK(OffsetBSpline)->Name("offset/bspline")->RangeMultiplier(10)->Range(10, 100000);

// A cusp: halved until halving ends.
void OffsetCusp(benchmark::State& state) {
  OwnCurve own;
  MakeCubicOrQuadratic(own, {0, 0, 1, 1, 0, 1, 1, 0.01});
  Offset(state, own, 0.1, kTolerance);
}
BENCHMARK(OffsetCusp)->Name("offset/cusp");

// The worst case: no piece is exact enough, so that their number ends the work.
void OffsetExact(benchmark::State& state) {
  OwnCurve own;
  MakeArch(own);
  Offset(state, own, 0.1, 0.0);
}
BENCHMARK(OffsetExact)->Name("offset/tolerance-0");

}  // namespace
