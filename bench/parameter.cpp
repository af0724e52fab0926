// The parameter of a point: on the curve, where the first agreeing roots end the search, and off
// it, where the nearest point has to be found. Names are parameter/where/type/size.
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

void Search(benchmark::State& state, const bench::Kind& kind, bool on, double size) {
  bench::Family family(kind);
  const bench::Points points = on ? bench::PointsOn(family) : bench::PointsAround(family, size);
  std::size_t i = 0;
  double t = 0.0;
  for (auto _ : state) {
    int result = KurvocvParameter(family[i], points[i % bench::kQuestions].data(), &t, &family.g);
    benchmark::DoNotOptimize(result);
    benchmark::DoNotOptimize(t);
    ++i;
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

void Register(const std::string& name, const bench::Kind& kind, double size = bench::kSize) {
  for (const bool on : {true, false}) {
    const std::string whole = std::string("parameter/") + (on ? "on/" : "off/") + name;
    benchmark::RegisterBenchmark(whole.c_str(), Search, kind, on, size);
  }
}

[[maybe_unused]] const bool kRegistered = [] {
  Register("line", bench::Lines());
  Register("arc", bench::Arcs());
  for (const int32_t degree : {2, 3, 5, 13, 20})
    Register(bench::Name("bezier", degree), bench::Beziers(degree));
  for (const double size : bench::kSizes)
    Register(bench::Name("cubic-of-size", size), bench::Beziers(3, size), size);
  for (const int32_t degree : {2, 3, 13})
    Register(bench::Name("rbezier", degree), bench::RationalBeziers(degree));
  for (const int32_t count : {10, 100, 1000, 10000})
    Register(bench::Name("bspline", count), bench::BSplines(4, count));
  return true;
}();

}  // namespace
