// The nearest point of a curve and the projection onto it: names are distance/type/size and
// projection/type/size. Splines come in three shapes: a wave whose every span is as high as the
// whole curve, an outline as drawings have them, and the worst case, a circle asked from its
// centre, where no span is nearer than another. Then the growth of a chain by insertions.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>

#include "curves.h"

namespace {

using bench::OwnCurve;

constexpr int kPoints = 256;  // a power of two

using Points = std::array<std::array<double, 3>, kPoints>;

// Points beside the curve, up to `reach` away in x and y.
Points PointsNear(OwnCurve& own, double reach) {
  bench::Random random;
  Points points;
  for (auto& p : points) {
    KurvocvPosition(&own.curve, random.Unit(), p.data(), &own.g);
    p[0] += reach * (2.0 * random.Unit() - 1.0);
    p[1] += reach * (2.0 * random.Unit() - 1.0);
  }
  return points;
}

constexpr double kReach = 0.05;

void Distance(benchmark::State& state, OwnCurve& own, const Points& points) {
  unsigned i = 0;
  double t = 0.0;
  for (auto _ : state) {
    double dist = KurvocvDistPoint(&own.curve, points[i++ % kPoints].data(), &t, &own.g);
    benchmark::DoNotOptimize(dist);
    benchmark::DoNotOptimize(t);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
}

void Distance(benchmark::State& state, OwnCurve& own) {
  Distance(state, own, PointsNear(own, kReach));
}

void Projection(benchmark::State& state, OwnCurve& own) {
  const Points points = PointsNear(own, kReach);
  unsigned i = 0;
  for (auto _ : state) {
    std::array<double, 3> p = points[i++ % kPoints];
    KurvofcPOntoCurve(&own.curve, p.data(), &own.g);
    benchmark::DoNotOptimize(p);
  }
  if (!KurvoOk(&own.g)) state.SkipWithError("error pending");
}

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

template <void (*make)(OwnCurve&)>
void DistanceTo(benchmark::State& state) {
  OwnCurve own;
  make(own);
  Distance(state, own);
}
template <void (*make)(OwnCurve&, int32_t)>
void DistanceTo(benchmark::State& state) {
  OwnCurve own;
  make(own, Size(state));
  Distance(state, own);
}

BENCHMARK(DistanceTo<bench::MakeLine>)->Name("distance/line");
BENCHMARK(DistanceTo<bench::MakeArc>)->Name("distance/arc");
BENCHMARK(DistanceTo<bench::MakeBezier>)
    ->Name("distance/bezier")
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(13)
    ->Arg(20);
BENCHMARK(DistanceTo<bench::MakeRationalBezier>)
    ->Name("distance/rbezier")
    ->Arg(2)
    ->Arg(3)
    ->Arg(5)
    ->Arg(13);

void MakeWave(OwnCurve& own, int32_t count) { bench::MakeBSpline(own, 4, count); }
void MakeRationalWave(OwnCurve& own, int32_t count) { bench::MakeRationalBSpline(own, 4, count); }

// A closed curve about the origin, the radius of its control points between 1 - waviness and 1.
void MakeRing(OwnCurve& own, int32_t count, double waviness) {
  bench::Random random;
  auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&own.curve, CV_BSPLINE, 4, count));
  for (int32_t i = 0; i < count; ++i) {
    const double angle = 2.0 * M_PI * i / (count - 1);
    const double radius = 1.0 - waviness * random.Unit();
    KurvoclSetCoord(block->points[i], radius * std::cos(angle), radius * std::sin(angle), 0.0);
  }
  KurvoclCopyVector(block->points[0], block->points[count - 1]);
  bench::UniformKnots(block->knots, 4, count);
}
void MakeOutline(OwnCurve& own, int32_t count) { MakeRing(own, count, 1.0 / count); }

template <void (*make)(OwnCurve&, int32_t)>
void Growth(const char* name) {
  benchmark::RegisterBenchmark(name, DistanceTo<make>)
      ->Arg(20)
      ->Arg(100)
      ->Arg(200)
      ->Arg(1000)
      ->Arg(10000);
}

void FromCentre(benchmark::State& state) {
  OwnCurve own;
  MakeRing(own, Size(state), 0.0);
  Points points;
  bench::Random random;
  for (auto& p : points) p = {1e-3 * random.Unit(), 1e-3 * random.Unit(), 0.0};
  Distance(state, own, points);
}
BENCHMARK(FromCentre)->Name("distance/bspline-centre")->Arg(20)->Arg(200);

template <void (*make)(OwnCurve&)>
void ProjectionTo(benchmark::State& state) {
  OwnCurve own;
  make(own);
  Projection(state, own);
}
template <void (*make)(OwnCurve&, int32_t)>
void ProjectionTo(benchmark::State& state) {
  OwnCurve own;
  make(own, Size(state));
  Projection(state, own);
}

BENCHMARK(ProjectionTo<bench::MakeLine>)->Name("projection/line");
BENCHMARK(ProjectionTo<bench::MakeArc>)->Name("projection/arc");
BENCHMARK(ProjectionTo<bench::MakeBezier>)->Name("projection/bezier")->Arg(3);
BENCHMARK(ProjectionTo<MakeOutline>)->Name("projection/bspline-outline")->Arg(20)->Arg(200);

// A chain of n lines built by n insertions at its end, or each at its front.
void Chain(benchmark::State& state, bool at_front) {
  OwnCurve own;
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&own.curve, CV_LINE));
  const int32_t size = Size(state);
  for (auto _ : state) {
    Cvseq seq;
    KurvocvInitCvseq(&seq);
    for (int32_t i = 0; i < size; ++i) {
      const double from = at_front ? -i : i;
      KurvoclSetCoord(line->start, from, 0.0, 0.0);
      KurvoclSetCoord(line->end, from + 1.0, 0.0, 0.0);
      KurvocvCvseqInsert(&own.curve, &seq, at_front ? 0 : seq.count, &own.g);
    }
    if (seq.count != size) state.SkipWithError("insertion refused");
    KurvocvFreeCvseq(&seq);
  }
  state.SetItemsProcessed(state.iterations() * size);
}
BENCHMARK_CAPTURE(Chain, append, false)
    ->Name("sequence/append")
    ->RangeMultiplier(10)
    ->Range(10, 10000);
BENCHMARK_CAPTURE(Chain, front, true)
    ->Name("sequence/front")
    ->RangeMultiplier(10)
    ->Range(10, 10000);

// Two curves of a kind, the second moved aside: apart, or alongside the first all the way.
void Between(benchmark::State& state, OwnCurve& a, OwnCurve& b) {
  double ta = 0.0, tb = 0.0;
  for (auto _ : state) {
    double dist = KurvocvDistCurve(&a.curve, &b.curve, &ta, &tb, &a.g);
    benchmark::DoNotOptimize(dist);
    benchmark::DoNotOptimize(ta);
    benchmark::DoNotOptimize(tb);
  }
  if (!KurvoOk(&a.g)) state.SkipWithError("error pending");
}

template <class Block>
void MoveUp(OwnCurve& own, int32_t count, double by) {
  auto* block = static_cast<Block*>(own.curve.data);
  for (int32_t i = 0; i < count; ++i) block->points[i][1] += by;
}

void LineToArc(benchmark::State& state) {
  OwnCurve a, b;
  bench::MakeLine(a);
  bench::MakeArc(b);
  Between(state, a, b);
}
BENCHMARK(LineToArc)->Name("curve-distance/line-arc");

void Cubics(benchmark::State& state, double by) {
  OwnCurve a, b;
  bench::MakeBezier(a, 3);
  bench::MakeBezier(b, 3);
  MoveUp<KurvoBezier>(b, 4, by);
  Between(state, a, b);
}
BENCHMARK_CAPTURE(Cubics, apart, 2.0)->Name("curve-distance/bezier3-apart");
BENCHMARK_CAPTURE(Cubics, alongside, 0.01)->Name("curve-distance/bezier3-alongside");

// Outlines of `count` points, `by` apart where they are nearest, or one across the other.
template <void (*make)(OwnCurve&, int32_t)>
void Splines(benchmark::State& state, double by) {
  OwnCurve a, b;
  make(a, Size(state));
  make(b, Size(state));
  MoveUp<KurvoBSpline>(b, Size(state), by);
  Between(state, a, b);
}
template <void (*make)(OwnCurve&, int32_t)>
void GrowthOfPairs(const char* name, double by) {
  benchmark::RegisterBenchmark(name, [by](benchmark::State& state) { Splines<make>(state, by); })
      ->Arg(20)
      ->Arg(100)
      ->Arg(500)
      ->Arg(5000);
}

const bool kRegistered = [] {
  Growth<MakeWave>("distance/bspline-wave");
  Growth<MakeOutline>("distance/bspline-outline");
  Growth<MakeRationalWave>("distance/rbspline-wave");
  GrowthOfPairs<MakeOutline>("curve-distance/outline-apart", 2.5);
  GrowthOfPairs<MakeOutline>("curve-distance/outline-crossing", 0.5);
  GrowthOfPairs<MakeWave>("curve-distance/wave-apart", 1.5);
  GrowthOfPairs<MakeWave>("curve-distance/wave-alongside", 0.001);
  return true;
}();

}  // namespace
