// Points of curves: names are position/type/size, the size being degree or number of control
// points.
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

void Evaluate(benchmark::State& state, const bench::Kind& kind) {
  bench::Family family(kind);
  const auto parameters = bench::Parameters();
  std::size_t i = 0;
  Coord point;
  for (auto _ : state) {
    KurvocvPosition(family[i], parameters[i % bench::kQuestions], point, &family.g);
    benchmark::DoNotOptimize(point);
    ++i;
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

void Register(const std::string& name, const bench::Kind& kind) {
  benchmark::RegisterBenchmark(("position/" + name).c_str(), Evaluate, kind);
}

[[maybe_unused]] const bool kRegistered = [] {
  Register("line", bench::Lines());
  Register("arc", bench::Arcs());
  for (const int32_t degree : {2, 3, 5, 9, 10, 39, 1000})
    Register(bench::Name("bezier", degree), bench::Beziers(degree));
  for (const int32_t degree : {2, 3, 9, 10})
    Register(bench::Name("rbezier", degree), bench::RationalBeziers(degree));
  for (const int32_t count : {10, 100, 1000, 10000, 100000})
    Register(bench::Name("bspline", count), bench::BSplines(4, count));
  for (const int32_t count : {10, 100, 1000, 10000, 100000})
    Register(bench::Name("rbspline", count), bench::RationalBSplines(4, count));
  for (const int32_t order : {2, 4, 8, 16, 64, 128})
    Register(bench::Name("bspline-order", order), bench::BSplines(order, 1000));
  return true;
}();

}  // namespace
