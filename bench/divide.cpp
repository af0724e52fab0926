// Division, extension and knot removal: names are operation/type/size, the size being degree or
// number of control points. Results are freed, as a caller does.
#include <benchmark/benchmark.h>

#include <vector>

#include "curves.h"

namespace {

using bench::Kind;

constexpr int32_t kGrowth[] = {10, 100, 1000, 10000, 100000};

void Divide(benchmark::State& state, const Kind& kind) {
  bench::Family family(kind);
  const auto parameters = bench::Parameters();
  std::size_t i = 0;
  for (auto _ : state) {
    Curve first, second;
    KurvocvDivide(family[i], parameters[i % bench::kQuestions], &first, &second, &family.g);
    if (!first.data || !second.data) state.SkipWithError("not divided");
    benchmark::DoNotOptimize(first);
    KurvocvFreeCurve(&first);
    KurvocvFreeCurve(&second);
    ++i;
  }
}

// `cuts` parameters, as evenly as random ones between them are.
void NDivide(benchmark::State& state, const Kind& kind, int32_t cuts) {
  bench::Family family(kind);
  bench::Random random;
  std::vector<double> values;
  for (int32_t i = 0; i < cuts; ++i) values.push_back((i + random.Between(0.2, 0.9)) / cuts);
  const CvParam list = {cuts, values.data()};
  std::size_t i = 0;
  for (auto _ : state) {
    Cvseq pieces;
    KurvocvNDivide(family[i++], &list, &pieces, &family.g);
    if (pieces.count != cuts + 1) state.SkipWithError("not divided");
    benchmark::DoNotOptimize(pieces);
    KurvocvFreeCvseq(&pieces);
  }
  state.SetItemsProcessed(state.iterations() * cuts);
}

void RemoveKnots(benchmark::State& state, const Kind& kind) {
  bench::Family family(kind);
  std::size_t i = 0;
  for (auto _ : state) {
    Curve result;
    KurvocvBsplRemoveKnots(family[i++], &result, &family.g);
    if (!result.data) state.SkipWithError("no result");
    benchmark::DoNotOptimize(result);
    KurvocvFreeCurve(&result);
  }
  state.SetItemsProcessed(state.iterations() * kind.points);
}

// A straight line: all inner knots go, which is the worst case.
Kind Straight(int32_t count) {
  return {[count](Curve& curve, bench::Random& random) {
            bench::BSplines(2, count).make(curve, random);
            auto* block = static_cast<KurvoBSpline*>(curve.data);
            for (int32_t i = 0; i < count; ++i)
              KurvoclSetCoord(block->points[i], bench::kSize * i / (count - 1), 0.0, 0.0);
          },
          count};
}

void Extend(benchmark::State& state, const Kind& kind, double a, double b) {
  bench::Family family(kind);
  std::size_t i = 0;
  for (auto _ : state) {
    Curve result;
    KurvocvExtendCurve(family[i++], a, b, &result, &family.g);
    if (!result.data) state.SkipWithError("not extended");
    benchmark::DoNotOptimize(result);
    KurvocvFreeCurve(&result);
  }
}

template <class Run, class... Args>
void Register(const std::string& name, Run* run, const Args&... args) {
  benchmark::RegisterBenchmark(name.c_str(), run, args...);
}

[[maybe_unused]] const bool kRegistered = [] {
  using bench::Name;
  Register("divide/line", Divide, bench::Lines());
  Register("divide/arc", Divide, bench::Arcs());
  for (const int32_t degree : {1, 2, 3, 4})
    Register(Name("divide/bezier", degree), Divide, bench::Beziers(degree));
  for (const int32_t degree : {2, 3, 4})
    Register(Name("divide/rbezier", degree), Divide, bench::RationalBeziers(degree));
  for (const int32_t count : kGrowth)
    Register(Name("divide/bspline", count), Divide, bench::BSplines(4, count));
  for (const int32_t count : kGrowth)
    Register(Name("divide/rbspline", count), Divide, bench::RationalBSplines(4, count));
  for (const int32_t spans : {10, 100, 1000, 10000})
    Register(Name("divide/composite", spans), Divide, bench::Composites(spans));

  // As many parameters as the curve has control points: linear, as items per second show.
  for (const int32_t count : kGrowth)
    Register(Name("n-divide/bspline", count), NDivide, bench::BSplines(4, count), count);
  for (const int32_t cuts : {1, 10, 100, 1000, 10000})
    Register(Name("n-divide/bezier-cuts", cuts), NDivide, bench::Beziers(3), cuts);
  for (const int32_t spans : {10, 100, 1000, 10000})
    Register(Name("n-divide/composite", spans), NDivide, bench::Composites(spans), spans);

  for (const int32_t count : kGrowth)
    Register(Name("remove-knots/none", count), RemoveKnots, bench::BSplines(4, count));
  for (const double size : bench::kSizes)
    Register(Name("remove-knots/none-of-size", size), RemoveKnots, bench::BSplines(4, 100, size));
  for (const int32_t count : kGrowth)
    Register(Name("remove-knots/all", count), RemoveKnots, Straight(count));

  for (const int32_t degree : {3, 10})
    Register(Name("extend/bezier", degree), Extend, bench::Beziers(degree), 0.1, 0.2);
  for (const int32_t count : {10, 100, 1000, 10000})
    Register(Name("extend/bspline", count), Extend, bench::BSplines(4, count), 0.1, 0.2);
  // Trimmed to a span: O(part), flat.
  for (const int32_t count : kGrowth)
    Register(Name("extend/bspline-trimmed", count), Extend, bench::BSplines(4, count), -0.4,
             -0.5999);
  return true;
}();

}  // namespace
