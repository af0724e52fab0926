// Offsets: names are operation/type/size, the size being degree, number of spans, units an em, or
// the tolerance as a power of ten below the size of the curve. Results are freed, as a caller does;
// "pieces" is how many there are of one curve.
#include <benchmark/benchmark.h>

#include <initializer_list>

#include "curves.h"

namespace {

using bench::Kind;

constexpr Coord kNormal = {0.0, 0.0, 1.0};
constexpr double kDistance = 0.02, kTolerance = 1e-4;  // of the size

void Offset(benchmark::State& state, const Kind& kind, double distance, double tolerance) {
  bench::Family family(kind);
  std::size_t i = 0, pieces = 0;
  for (auto _ : state) {
    Cvseq result;
    const double side = i & family.size() ? -distance : distance;
    KurvocvOffsetCurve(family[i++], kNormal, side, tolerance, &result, &family.g);
    if (result.count == 0) state.SkipWithError("no offset");
    benchmark::DoNotOptimize(result);
    pieces += static_cast<std::size_t>(result.count);
    KurvocvFreeCvseq(&result);
  }
  using benchmark::Counter;
  state.counters["pieces"] = Counter(static_cast<double>(pieces), Counter::kAvgIterations);
  state.SetItemsProcessed(state.iterations() * kind.points);
}

// Curves like one of the unit square, stretched by up to a tenth and turned.
Kind Like(std::initializer_list<double> xy, double size) {
  const std::vector<double> like(xy);
  const auto degree = static_cast<int32_t>(like.size() / 2) - 1;
  return {[=](Curve& curve, bench::Random& random) {
            const bench::Place place(random, size);
            const double wide = random.Between(0.9, 1.1), high = random.Between(0.9, 1.1);
            auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&curve, CV_BEZIER, degree));
            const double* p = like.data();
            for (int32_t j = 0; j <= degree; ++j, p += 2)
              place.Put(block->points[j], wide * p[0], high * p[1]);
          },
          degree + 1};
}

// An arch with both sides and the top in one cubic.
Kind Arches(double size) { return Like({0, 0, 0.1, 1, 0.9, 1, 1, 0}, size); }

[[maybe_unused]] const bool kRegistered = [] {
  using bench::Name;
  const auto add = [](const std::string& name, const Kind& kind, double size = bench::kSize,
                      double distance = kDistance, double tolerance = kTolerance) {
    benchmark::RegisterBenchmark(("offset/" + name).c_str(), Offset, kind, distance * size,
                                 tolerance * size);
  };
  add("line", bench::Lines());
  add("arc", bench::Arcs());
  // Quarters of an oval, as outlines of letters have them: a stroke of 40 units, half a unit of
  // tolerance, of a thousand units an em.
  for (const double em : {100.0, 1000.0}) {
    const std::string name = "glyph-piece-" + std::to_string(static_cast<int>(em));
    add(name + "/2", Like({0, 0, 0, .25, .2, .25}, em), em, 0.02, 0.5e-3);
    add(name + "/3", Like({0, 0, 0, .138, .09, .25, .2, .25}, em), em, 0.02, 0.5e-3);
  }
  add("straight-cubic", Like({0, 0, 1, 1, 2, 2, 3, 3}, bench::kSize));
  // Ten times as exact takes about three times as many pieces.
  for (const int power : {2, 4, 6, 8})
    add(Name("tolerance", power), Arches(bench::kSize), bench::kSize, 0.1, std::pow(10.0, -power));
  for (const int32_t degree : {2, 3, 5, 10, 38})
    add(Name("bezier", degree), bench::Beziers(degree));
  for (const double size : bench::kSizes)
    add(Name("cubic-of-size", size), bench::Beziers(3, size), size);
  for (const int32_t degree : {2, 3, 5, 10})
    add(Name("rbezier", degree), bench::RationalBeziers(degree));
  for (const int32_t spans : {10, 100, 1000, 10000, 100000})  // linear in the spans
    add(Name("bspline", spans), bench::BSplines(4, spans + 3));
  // A cusp: halved until halving ends.
  add("cusp", Like({0, 0, 1, 1, 0, 1, 1, 0.01}, bench::kSize), bench::kSize, 0.1);
  // The worst case: no piece is exact enough, so that their number ends the work.
  add("tolerance-0", Arches(bench::kSize), bench::kSize, 0.1, 0.0);
  return true;
}();

}  // namespace
