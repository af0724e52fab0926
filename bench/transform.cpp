// Transforms and end-point moves, in place: names are operation/type/size, the size being the
// number of control points or pieces. Each transform is followed by its inverse, so that numbers
// stay as they are; an item is one point transformed.
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

using bench::Kind;

constexpr int32_t kGrowth[] = {10, 100, 1000, 10000, 100000};
constexpr Coord kCentre = {30.0, 40.0, 0.0};
constexpr Coord kAxis = {0.0, 0.0, 1.0};
constexpr Coord kNone = {0.0, 0.0, 0.0};
constexpr Coord kDir = {0.6, 0.8, 0.0};
constexpr Coord kDelta = {0.25, 0.5, 0.0};
constexpr Coord kBack = {-0.25, -0.5, 0.0};

using Transform = void(Curve*, GlobalVar*);

void Move(Curve* cv, GlobalVar* g) { KurvocvMove(cv, kDelta, g); }
void MoveBack(Curve* cv, GlobalVar* g) { KurvocvMove(cv, kBack, g); }
void Rotate(Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, 0.7, g); }
void RotateBack(Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, -0.7, g); }
void Mirror(Curve* cv, GlobalVar* g) { KurvocvMirror(cv, kCentre, kDir, g); }
template <const Coord& dir>
void Scale(Curve* cv, GlobalVar* g) {
  KurvocvScale(cv, kCentre, dir, 2.0, g);
}
template <const Coord& dir>
void ScaleBack(Curve* cv, GlobalVar* g) {
  KurvocvScale(cv, kCentre, dir, 0.5, g);
}
void MoveStart(Curve* cv, GlobalVar* g) { KurvocvMvStartPoint(cv, kDelta, g); }
void MoveStartBack(Curve* cv, GlobalVar* g) { KurvocvMvStartPoint(cv, kBack, g); }

void Run(benchmark::State& state, const Kind& kind, Transform* there, Transform* back,
         int32_t items) {
  bench::Family family(kind);
  std::size_t i = 0;
  for (auto _ : state) {
    there(family[i], &family.g);
    back(family[i], &family.g);
    benchmark::ClobberMemory();
    ++i;
  }
  if (family.g.error != 0) state.SkipWithError("refused");
  state.SetItemsProcessed(2 * state.iterations() * items);
}

Kind CompositesOfLines(int32_t count) {
  return {[count](Curve& curve, bench::Random& random) {
            auto* block = static_cast<KurvoSegcv*>(KurvocvMallocCurve(&curve, CV_SEGCV, count));
            for (int32_t i = 0; i < count; ++i) {
              bench::Lines().make(block->curves[i], random);
              block->widths[i] = 1.0;
            }
          },
          2 * count};
}

Kind Unclamped(int32_t count) {
  return {[count](Curve& curve, bench::Random& random) {
            bench::BSplines(4, count).make(curve, random);
            auto* block = static_cast<KurvoBSpline*>(curve.data);
            for (int32_t i = 0; i < count + 4; ++i) block->knots[i] = i;
          },
          count};
}

[[maybe_unused]] const bool kRegistered = [] {
  const auto add = [](const std::string& name, int32_t size, const Kind& kind, Transform* there,
                      Transform* back, int32_t items) {
    benchmark::RegisterBenchmark(bench::Name(name, size).c_str(), Run, kind, there, back, items);
  };
  for (const int32_t n : kGrowth) {
    const Kind splines = bench::BSplines(4, n);
    add("move/bspline", n, splines, Move, MoveBack, n);
    add("rotate/rbspline", n, bench::RationalBSplines(4, n), Rotate, RotateBack, n);
    add("mirror/bspline", n, splines, Mirror, Mirror, n);
    add("scale/bspline", n, splines, Scale<kNone>, ScaleBack<kNone>, n);
    add("scale-along/bspline", n, splines, Scale<kDir>, ScaleBack<kDir>, n);
  }
  for (const int32_t n : {10, 100, 1000, 10000})
    add("move/composite", n, CompositesOfLines(n), Move, MoveBack, n);
  for (const int32_t n : {10, 1000, 100000})  // flat but for the search of the span
    add("move-start/bspline", n, Unclamped(n), MoveStart, MoveStartBack, 1);
  return true;
}();

}  // namespace
