// Transforms and end-point moves, in place: names are operation/type/size, the size being the
// number of control points or pieces. Each transform is followed by its inverse, so that numbers
// stay as they are; an item is one point transformed.
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

using bench::OwnCurve;

int32_t Size(const benchmark::State& state) { return static_cast<int32_t>(state.range(0)); }

constexpr Coord kCentre = {0.3, 0.4, 0.0};
constexpr Coord kAxis = {0.0, 0.0, 1.0};
constexpr Coord kNone = {0.0, 0.0, 0.0};
constexpr Coord kDir = {0.6, 0.8, 0.0};
constexpr Coord kDelta = {0.25, 0.5, 0.0};
constexpr Coord kBack = {-0.25, -0.5, 0.0};

template <class There, class Back>
void Run(benchmark::State& state, OwnCurve& own, There&& there, Back&& back) {
  for (auto _ : state) {
    there(&own.curve, &own.g);
    back(&own.curve, &own.g);
    benchmark::ClobberMemory();
  }
  if (own.g.error != 0) state.SkipWithError("refused");
  state.SetItemsProcessed(2 * state.iterations() * Size(state));
}

void Move(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Run(
      state, own, [](Curve* cv, GlobalVar* g) { KurvocvMove(cv, kDelta, g); },
      [](Curve* cv, GlobalVar* g) { KurvocvMove(cv, kBack, g); });
}
BENCHMARK(Move)->Name("move/bspline")->RangeMultiplier(10)->Range(10, 100000);

void Rotate(benchmark::State& state) {
  OwnCurve own;
  bench::MakeRationalBSpline(own, 4, Size(state));
  Run(
      state, own, [](Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, 0.7, g); },
      [](Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, -0.7, g); });
}
BENCHMARK(Rotate)->Name("rotate/rbspline")->RangeMultiplier(10)->Range(10, 100000);

void Mirror(benchmark::State& state) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  const auto mirror = [](Curve* cv, GlobalVar* g) { KurvocvMirror(cv, kCentre, kDir, g); };
  Run(state, own, mirror, mirror);
}
BENCHMARK(Mirror)->Name("mirror/bspline")->RangeMultiplier(10)->Range(10, 100000);

void Scale(benchmark::State& state, const double* dir) {
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  Run(
      state, own, [=](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, dir, 2.0, g); },
      [=](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, dir, 0.5, g); });
}
void ScaleUniformly(benchmark::State& state) { Scale(state, kNone); }
BENCHMARK(ScaleUniformly)->Name("scale/bspline")->RangeMultiplier(10)->Range(10, 100000);
void ScaleAlong(benchmark::State& state) { Scale(state, kDir); }
BENCHMARK(ScaleAlong)->Name("scale-along/bspline")->RangeMultiplier(10)->Range(10, 100000);

void MoveComposite(benchmark::State& state) {  // of lines
  OwnCurve own;
  auto* block = static_cast<KurvoSegcv*>(KurvocvMallocCurve(&own.curve, CV_SEGCV, Size(state)));
  for (int32_t i = 0; i < block->count; ++i) {
    auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&block->curves[i], CV_LINE));
    KurvoclSetCoord(line->start, i, i % 2, 0.0);
    KurvoclSetCoord(line->end, i + 1, (i + 1) % 2, 0.0);
    block->widths[i] = 1.0;
  }
  Run(
      state, own, [](Curve* cv, GlobalVar* g) { KurvocvMove(cv, kDelta, g); },
      [](Curve* cv, GlobalVar* g) { KurvocvMove(cv, kBack, g); });
}
BENCHMARK(MoveComposite)->Name("move/composite")->RangeMultiplier(10)->Range(10, 10000);

void MoveStart(benchmark::State& state) {  // unclamped; flat but for the search of the span
  OwnCurve own;
  bench::MakeBSpline(own, 4, Size(state));
  auto* block = static_cast<KurvoBSpline*>(own.curve.data);
  for (int32_t i = 0; i < block->count + block->order; ++i) block->knots[i] = i;
  Run(
      state, own, [](Curve* cv, GlobalVar* g) { KurvocvMvStartPoint(cv, kDelta, g); },
      [](Curve* cv, GlobalVar* g) { KurvocvMvStartPoint(cv, kBack, g); });
  state.SetItemsProcessed(2 * state.iterations());
}
BENCHMARK(MoveStart)->Name("move-start/bspline")->RangeMultiplier(100)->Range(10, 100000);

}  // namespace
