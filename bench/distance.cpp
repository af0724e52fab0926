// The nearest point of a curve, the projection onto it, and the distance of two curves: names are
// distance/type/size, projection/type/size and curve-distance/pair/size. Points lie near the
// curves, among them, around them and far away. Splines come in three shapes: a wave whose every
// span is as high as the whole curve, an outline as drawings have them, and the worst case, a
// circle asked from its centre, where no span is nearer than another. Then the growth of a chain by
// insertions.
#include <benchmark/benchmark.h>

#include "curves.h"

namespace {

using bench::Kind;
using bench::Points;

void Ask(benchmark::State& state, bench::Family& family, const Points& points) {
  std::size_t i = 0;
  double t = 0.0;
  for (auto _ : state) {
    double dist = KurvocvDistPoint(family[i], points[i % bench::kQuestions].data(), &t, &family.g);
    benchmark::DoNotOptimize(dist);
    benchmark::DoNotOptimize(t);
    ++i;
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

void Distance(benchmark::State& state, const Kind& kind, double size) {
  bench::Family family(kind);
  Ask(state, family, bench::PointsAround(family, size));
}

// Rings of one radius, asked from their middle.
void FromCentre(benchmark::State& state, int32_t count) {
  bench::Family family({[count](Curve& curve, bench::Random& random) {
                          bench::Outlines(count).make(curve, random);
                          auto* block = static_cast<KurvoBSpline*>(curve.data);
                          for (int32_t i = 0; i < count; ++i) {
                            const double angle = 2.0 * std::numbers::pi * i / (count - 1);
                            KurvoclSetCoord(block->points[i], bench::kSize * std::cos(angle),
                                            bench::kSize * std::sin(angle), 0.0);
                          }
                        },
                        count});
  Points points(bench::kQuestions);
  bench::Random random;
  for (auto& p : points) p = {0.1 * random.Unit(), 0.1 * random.Unit(), 0.0};
  Ask(state, family, points);
}

void Projection(benchmark::State& state, const Kind& kind) {
  bench::Family family(kind);
  const Points points = bench::PointsAround(family);
  std::size_t i = 0;
  for (auto _ : state) {
    std::array<double, 3> p = points[i % bench::kQuestions];
    KurvofcPOntoCurve(family[i], p.data(), &family.g);
    benchmark::DoNotOptimize(p);
    ++i;
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

// A chain of n lines built by n insertions at its end, or each at its front.
void Chain(benchmark::State& state, bool at_front, int32_t size) {
  bench::OwnCurve own;
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&own.curve, CV_LINE));
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

// ---- Two curves ----

// The second curve of a pair is the one after the first of its family, or a copy of the first; it
// is moved by `by` times the size in a direction of its own.
enum class Second { kNext, kCopy };

void Between(benchmark::State& state, const Kind& a, const Kind& b, Second second, double by,
             double size) {
  bench::Family as(a), others(b);
  bench::Random random(bench::kSeed + 2);
  std::vector<Curve> bs(as.size());
  for (std::size_t i = 0; i < bs.size(); ++i) {
    const double angle = random.Between(0.0, 2.0 * std::numbers::pi), far = by * size;
    const Coord delta = {far * std::cos(angle), far * std::sin(angle), 0.0};
    KurvocvCopyCurve(second == Second::kNext ? others[i + 1] : as[i], &bs[i], &as.g);
    KurvocvMove(&bs[i], delta, &as.g);
  }
  std::size_t i = 0;
  double ta = 0.0, tb = 0.0;
  for (auto _ : state) {
    double dist = KurvocvDistCurve(as[i], &bs[i % bs.size()], &ta, &tb, &as.g);
    benchmark::DoNotOptimize(dist);
    benchmark::DoNotOptimize(ta);
    benchmark::DoNotOptimize(tb);
    ++i;
  }
  if (!KurvoOk(&as.g)) state.SkipWithError("error pending");
  for (Curve& curve : bs) KurvocvFreeCurve(&curve);
}

template <class Run, class... Args>
void Register(const std::string& name, Run* run, const Args&... args) {
  benchmark::RegisterBenchmark(name.c_str(), run, args...);
}

[[maybe_unused]] const bool kRegistered = [] {
  using bench::Name;
  const auto distance = [](const std::string& name, const Kind& kind, double size = bench::kSize) {
    Register("distance/" + name, Distance, kind, size);
  };
  distance("line", bench::Lines());
  distance("arc", bench::Arcs());
  for (const int32_t degree : {2, 3, 5, 13, 20})
    distance(Name("bezier", degree), bench::Beziers(degree));
  for (const double size : bench::kSizes)
    distance(Name("cubic-of-size", size), bench::Beziers(3, size), size);
  for (const int32_t degree : {2, 3, 5, 13})
    distance(Name("rbezier", degree), bench::RationalBeziers(degree));
  for (const int32_t count : {20, 100, 200, 1000, 10000}) {
    distance(Name("bspline-wave", count), bench::BSplines(4, count));
    distance(Name("bspline-outline", count), bench::Outlines(count));
    distance(Name("rbspline-wave", count), bench::RationalBSplines(4, count));
  }
  for (const int32_t count : {20, 200})
    Register(Name("distance/bspline-centre", count), FromCentre, count);

  Register("projection/line", Projection, bench::Lines());
  Register("projection/arc", Projection, bench::Arcs());
  Register("projection/bezier/3", Projection, bench::Beziers(3));
  for (const int32_t count : {20, 200})
    Register(Name("projection/bspline-outline", count), Projection, bench::Outlines(count));

  for (const int32_t size : {10, 100, 1000, 10000}) {
    Register(Name("sequence/append", size), Chain, false, size);
    Register(Name("sequence/front", size), Chain, true, size);
  }

  const auto pair = [](const std::string& name, const Kind& a, const Kind& b, Second second,
                       double by, double size = bench::kSize) {
    Register("curve-distance/" + name, Between, a, b, second, by, size);
  };
  pair("line-arc", bench::Lines(), bench::Arcs(), Second::kNext, 0.0);
  for (const double size : bench::kSizes) {
    const Kind cubics = bench::Beziers(3, size);
    pair(Name("bezier3-apart", size), cubics, cubics, Second::kNext, 2.0, size);
    pair(Name("bezier3-alongside", size), cubics, cubics, Second::kCopy, 0.01, size);
  }
  for (const int32_t count : {20, 100, 500, 1000, 2000, 5000}) {
    const Kind outlines = bench::Outlines(count), waves = bench::BSplines(4, count);
    pair(Name("outline-apart", count), outlines, outlines, Second::kNext, 1.5);
    pair(Name("outline-crossing", count), outlines, outlines, Second::kNext, 0.25);
    pair(Name("wave-apart", count), waves, waves, Second::kNext, 1.5);
    pair(Name("wave-alongside", count), waves, waves, Second::kCopy, 0.001);
  }
  return true;
}();

}  // namespace
