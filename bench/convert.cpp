// Conversion, reversal and matching: names are operation/kinds/size, the size being degree or
// number of control points (pieces, where composites are joined).
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

using bench::Kind;

constexpr int32_t kGrowth[] = {10, 100, 1000, 10000, 100000};

// Converts and frees, as a caller does. An item is a span: its time is 1 / items per second.
void Convert(benchmark::State& state, const Kind& kind, int32_t type, int32_t spans) {
  bench::Family family(kind);
  std::size_t i = 0;
  for (auto _ : state) {
    Curve target{};
    target.type = type;
    if (KurvocvConvert(family[i++], &target, &family.g) != KURVO_CONVERTED)
      state.SkipWithError("not converted");
    benchmark::DoNotOptimize(target);
    KurvocvFreeCurve(&target);
  }
  state.SetItemsProcessed(state.iterations() * spans);
}

// Arcs of less than half a turn, as rational Bezier curves.
void MakeRationalArc(Curve& curve, bench::Random& random) {
  bench::OwnCurve arc;
  const auto sweep_is_short = [&] {
    const auto* a = static_cast<const KurvoArc*>(arc.curve.data);
    const double cross = (a->start[0] - a->centre[0]) * (a->end[1] - a->centre[1]) -
                         (a->start[1] - a->centre[1]) * (a->end[0] - a->centre[0]);
    return cross * a->normal[2] > 0.1 * a->radius * a->radius;
  };
  do {
    KurvocvFreeCurve(&arc.curve);
    bench::Arcs().make(arc.curve, random);
  } while (!sweep_is_short());
  curve.type = CV_RBEZIER;
  KurvocvConvert(&arc.curve, &curve, &arc.g);
}

void Reverse(benchmark::State& state, const Kind& kind) {
  bench::Family family(kind);
  std::size_t i = 0;
  for (auto _ : state) KurvocvChgOrder(family[i++], &family.g);
}

// Of copies: nothing ends the comparison early.
void Match(benchmark::State& state, const Kind& kind) {
  bench::Family family(kind), copies(kind);
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KurvocvMatch(family[i], copies[i], &family.g));
    ++i;
  }
}

void MatchRaised(benchmark::State& state, int32_t degree) {  // degree 1 raised
  bench::Family low(bench::Beziers(1)), high(bench::Beziers(degree));
  std::size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(KurvocvMatch(low[i], high[i], &low.g));
    ++i;
  }
}

template <class Run, class... Args>
void Register(const std::string& name, Run* run, const Args&... args) {
  benchmark::RegisterBenchmark(name.c_str(), run, args...);
}

[[maybe_unused]] const bool kRegistered = [] {
  using bench::Name;
  Register("convert/line-to-bezier", Convert, bench::Lines(), CV_BEZIER, 1);
  Register("convert/arc-to-rbezier", Convert, bench::Arcs(), CV_RBEZIER, 1);
  Register("convert/rbezier-to-arc", Convert, Kind{MakeRationalArc}, CV_ARC, 1);
  for (const int32_t count : kGrowth)
    Register(Name("convert/bspline-to-pieces", count), Convert, bench::BSplines(4, count), CV_SEGCV,
             count - 3);
  for (const int32_t count : kGrowth)
    Register(Name("convert/rbspline-to-pieces", count), Convert, bench::RationalBSplines(4, count),
             CV_SEGCV, count - 3);
  for (const int32_t order : {2, 3, 4, 8, 16, 64})
    Register(Name("convert/bspline-order-to-pieces", order), Convert, bench::BSplines(order, 1000),
             CV_SEGCV, 1001 - order);
  // The pieces of a B-spline with as many spans, put together again.
  for (const int32_t spans : kGrowth)
    Register(Name("convert/pieces-to-bspline", spans), Convert, bench::Composites(spans),
             CV_BSPLINE, spans);
  for (const int32_t count : kGrowth)
    Register(Name("reverse/bspline", count), Reverse, bench::BSplines(4, count));
  for (const int32_t count : kGrowth)
    Register(Name("match/bspline", count), Match, bench::BSplines(4, count));
  for (const int32_t degree : {2, 3, 10, 100, 4096})
    Register(Name("match/bezier-raised", degree), MatchRaised, degree);
  return true;
}();

}  // namespace
