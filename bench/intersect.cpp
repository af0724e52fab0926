// The intersection of two curves: names are intersect/<kind>x<kind>/size, the size being the number
// of control points where it varies.
#include <benchmark/benchmark.h>

#include <cmath>

#include "curves.h"

namespace {

using bench::OwnCurve;
using bench::Random;

constexpr double kPi = 3.141592653589793;

// Intersects over and over; the number of points found is shown beside the time.
void Run(benchmark::State& state, OwnCurve& a, const Curve& b, uint32_t expected = KURVO_FOUND) {
  int32_t points = 0;
  for (auto _ : state) {
    CvParam on_a, on_b;
    if (KurvocrCurveCurve(&a.curve, &b, &on_a, &on_b, 3, &a.g) != expected)
      state.SkipWithError("unexpected result");
    points = on_a.count;
    KurvocrFreeCvParam(&on_a);
    KurvocrFreeCvParam(&on_b);
  }
  state.counters["points"] = points;
}

void Pair(benchmark::State& state, void (*make_a)(OwnCurve&), void (*make_b)(OwnCurve&),
          uint32_t expected = KURVO_FOUND) {
  OwnCurve a, b;
  make_a(a);
  make_b(b);
  Run(state, a, b.curve, expected);
}

// ---- Curves of every kind in the unit square. Those of the second set lie across the first. ----

template <bool kAcross, class Point>
void Put(Point& p, double x, double y) {
  p[0] = kAcross ? y : x;
  p[1] = kAcross ? x : y;
  p[2] = 0.0;
}

constexpr double kHeights[] = {.3, .9, -.1, .6, .2, .8, .1, .7};

template <bool kAcross, class Point>
void Swing(Point* points, int32_t count) {
  for (int32_t i = 0; i < count; ++i)
    Put<kAcross>(points[i], double(i) / (count - 1), kHeights[i % 8]);
}

template <bool kAcross>
void Line(OwnCurve& own) {
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&own.curve, CV_LINE));
  Put<kAcross>(line->start, 0.0, 0.45);
  Put<kAcross>(line->end, 1.0, 0.55);
}

template <bool kAcross>
void Arc(OwnCurve& own) {
  bench::MakeArc(own);
  auto* arc = static_cast<KurvoArc*>(own.curve.data);
  if (!kAcross) return;
  for (double* p : {arc->centre, arc->start, arc->end}) p[0] += 0.25;
}

template <bool kAcross>
void Cubic(OwnCurve& own) {
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&own.curve, CV_BEZIER, 3));
  Swing<kAcross>(block->points, 4);
}

template <bool kAcross>
void RationalCubic(OwnCurve& own) {
  auto* block = static_cast<KurvoRBezier*>(KurvocvMallocCurve(&own.curve, CV_RBEZIER, 3));
  Swing<kAcross>(block->points, 4);
  for (int i = 0; i < 4; ++i) block->points[i][3] = 1.0 + 0.1 * i;
}

template <bool kAcross>
void Spline(OwnCurve& own) {
  auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&own.curve, CV_BSPLINE, 4, 8));
  Swing<kAcross>(block->points, 8);
  bench::UniformKnots(block->knots, 4, 8);
}

template <bool kAcross>
void RationalSpline(OwnCurve& own) {
  auto* block = static_cast<KurvoRBSpline*>(KurvocvMallocCurve(&own.curve, CV_RBSPLINE, 4, 8));
  Swing<kAcross>(block->points, 8);
  for (int i = 0; i < 8; ++i) block->points[i][3] = 1.0 + 0.1 * i;
  bench::UniformKnots(block->knots, 4, 8);
}

template <bool kAcross>
void Composite(OwnCurve& own) {
  OwnCurve spline;
  Spline<kAcross>(spline);
  own.curve.type = CV_SEGCV;
  KurvocvConvert(&spline.curve, &own.curve, &own.g);
}

struct Kind {
  const char* name;
  void (*make)(OwnCurve&);
  void (*make_across)(OwnCurve&);
};
constexpr Kind kKinds[] = {
    {"line", Line<false>, Line<true>},
    {"arc", Arc<false>, Arc<true>},
    {"cubic", Cubic<false>, Cubic<true>},
    {"rcubic", RationalCubic<false>, RationalCubic<true>},
    {"bspline", Spline<false>, Spline<true>},
    {"rbspline", RationalSpline<false>, RationalSpline<true>},
    {"composite", Composite<false>, Composite<true>},
};

const bool kPairsRegistered = [] {
  for (const Kind& a : kKinds) {
    for (const Kind& b : kKinds) {
      const std::string name = std::string("intersect/") + a.name + 'x' + b.name;
      benchmark::RegisterBenchmark(
          name.c_str(), [&a, &b](benchmark::State& state) { Pair(state, a.make, b.make_across); });
    }
  }
  return true;
}();

// ---- Growth: closed wavy outlines that cross a dozen times, whatever their number of points ----

void Outline(OwnCurve& own, int32_t count, double waves, double phase) {
  auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&own.curve, CV_BSPLINE, 4, count));
  for (int32_t i = 0; i < count; ++i) {
    const double angle = 2.0 * kPi * i / (count - 1);
    const double r = 1.0 + 0.1 * std::cos(waves * angle + phase);
    KurvoclSetCoord(block->points[i], r * std::cos(angle), r * std::sin(angle), 0.0);
  }
  bench::UniformKnots(block->knots, 4, count);
}

void Outlines(benchmark::State& state) {
  const auto count = static_cast<int32_t>(state.range(0));
  OwnCurve a, b;
  Outline(a, count, 5.0, 0.0);
  Outline(b, count, 7.0, 1.0);
  Run(state, a, b.curve);
}
BENCHMARK(Outlines)
    ->Name("intersect/outlinexoutline")
    ->Arg(20)
    ->Arg(100)
    ->Arg(500)
    ->Arg(2500)
    ->Arg(12500);

void LineOutline(benchmark::State& state) {
  OwnCurve a, b;
  bench::MakeLine(a);
  Outline(b, static_cast<int32_t>(state.range(0)), 5.0, 0.0);
  Run(state, a, b.curve);
}
BENCHMARK(LineOutline)->Name("intersect/linexoutline")->Arg(20)->Arg(100)->Arg(500)->Arg(2500);

void ArcOutline(benchmark::State& state) {
  OwnCurve a, b;
  bench::MakeArc(a);
  Outline(b, static_cast<int32_t>(state.range(0)), 5.0, 0.0);
  Run(state, a, b.curve);
}
BENCHMARK(ArcOutline)->Name("intersect/arcxoutline")->Arg(20)->Arg(100)->Arg(500)->Arg(2500);

// ---- Worst cases ----

// Graphs of Chebyshev polynomials and their mirror images: as many crossings as the degrees allow.
void Chebyshev(OwnCurve& own, bool across) {
  const double y[] = {-1.0, 5.0, -5.0, 1.0};  // 4 x^3 - 3 x over [-1, 1]
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&own.curve, CV_BEZIER, 3));
  for (int i = 0; i < 4; ++i) {
    const double x = -1.0 + 2.0 * i / 3.0;
    KurvoclSetCoord(block->points[i], across ? y[i] : x, across ? x : y[i], 0.0);
  }
}

void NineCrossings(benchmark::State& state) {
  OwnCurve a, b;
  Chebyshev(a, false);
  Chebyshev(b, true);
  Run(state, a, b.curve);
}
BENCHMARK(NineCrossings)->Name("intersect/cubicxcubic/nine-crossings");

void Parabola(OwnCurve& own, double height, double bend) {
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&own.curve, CV_BEZIER, 3));
  const double y[] = {1.0, -1.0 / 3.0, -1.0 / 3.0, 1.0};  // x^2 over [-1, 1]
  for (int i = 0; i < 4; ++i)
    KurvoclSetCoord(block->points[i], -1.0 + 2.0 * i / 3.0, height + bend * y[i], 0.0);
}

void Tangency(benchmark::State& state) {
  OwnCurve a, b;
  Parabola(a, 0.0, 1.0);
  Parabola(b, 0.0, -1.0);
  Run(state, a, b.curve);
}
BENCHMARK(Tangency)->Name("intersect/cubicxcubic/tangency");

void NearMiss(benchmark::State& state) {
  OwnCurve a, b;
  Parabola(a, 0.0, 1.0);
  Parabola(b, -2e-6, -1.0);
  Run(state, a, b.curve, KURVO_NOTHING);
}
BENCHMARK(NearMiss)->Name("intersect/cubicxcubic/near-miss");

void Osculation(benchmark::State& state) {  // x^2 and x^2 + x^3
  OwnCurve a, b;
  Parabola(a, 0.0, 1.0);
  Parabola(b, 0.0, 1.0);
  auto* points = static_cast<KurvoBezier*>(b.curve.data)->points;
  const double cube[] = {-1.0, 1.0, -1.0, 1.0};
  for (int i = 0; i < 4; ++i) points[i][1] += cube[i];
  Run(state, a, b.curve);
}
BENCHMARK(Osculation)->Name("intersect/cubicxcubic/osculation");

void Overlap(benchmark::State& state) {  // the first and the last two thirds of one curve
  OwnCurve a, b;
  Parabola(a, 0.0, 1.0);
  Parabola(b, 0.0, 1.0);
  const double from[] = {-1.0, -1.0 / 3.0};
  for (OwnCurve* own : {&a, &b}) {
    const double u = from[own == &b], v = u + 4.0 / 3.0;  // the blossom of x^2
    auto* points = static_cast<KurvoBezier*>(own->curve.data)->points;
    const double y[] = {u * u, (u * u + 2.0 * u * v) / 3.0, (v * v + 2.0 * u * v) / 3.0, v * v};
    for (int i = 0; i < 4; ++i) KurvoclSetCoord(points[i], u + (v - u) * i / 3.0, y[i], 0.0);
  }
  Run(state, a, b.curve, KURVO_OVERLAP);
}
BENCHMARK(Overlap)->Name("intersect/cubicxcubic/overlap");

// Two tangles: nearly every box meets every other one.
void Tangle(OwnCurve& own, int32_t count, Random& random) {
  auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&own.curve, CV_BSPLINE, 4, count));
  for (int32_t i = 0; i < count; ++i)
    KurvoclSetCoord(block->points[i], random.Unit(), random.Unit(), 0.0);
  bench::UniformKnots(block->knots, 4, count);
}

void Tangles(benchmark::State& state) {
  Random random;
  OwnCurve a, b;
  Tangle(a, static_cast<int32_t>(state.range(0)), random);
  Tangle(b, static_cast<int32_t>(state.range(0)), random);
  Run(state, a, b.curve);
}
BENCHMARK(Tangles)->Name("intersect/tanglextangle")->Arg(20)->Arg(100)->Arg(500);

}  // namespace
