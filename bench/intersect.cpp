// The intersection of two curves: names are intersect/<kind>x<kind>/size, the size being the number
// of control points where it varies. Pairs are asked in turn and lie as they fall, those that cross
// often as many as those that cross seldom or not at all.
#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "curves.h"

namespace {

using bench::Family;
using bench::Kind;
using bench::OwnCurve;
using bench::Random;

constexpr double kTurn = 2.0 * std::numbers::pi;

// Intersects and frees; the mean number of points is shown beside the time.
class Run {
 public:
  explicit Run(benchmark::State& state) : state_(state) { KurvoInitGlobalVar(&g_); }
  ~Run() {
    using benchmark::Counter;
    state_.counters["points"] = Counter(points_, Counter::kAvgIterations);
    if (!KurvoOk(&g_)) state_.SkipWithError("error pending");
  }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  uint32_t operator()(const Curve* a, const Curve* b) {
    CvParam on_a, on_b;
    const uint32_t result = KurvocrCurveCurve(a, b, &on_a, &on_b, kBothEnd, &g_);
    points_ += on_a.count;
    KurvocrFreeCvParam(&on_a);
    KurvocrFreeCvParam(&on_b);
    return result;
  }

 private:
  static constexpr int32_t kBothEnd = 3;

  benchmark::State& state_;
  GlobalVar g_;
  double points_ = 0.0;
};

// ---- Curves of every kind ----

constexpr double kHeights[] = {.3, .9, -.1, .6, .2, .8, .1, .7};
constexpr double kChebyshev[] = {0.0, 3.0, -2.0, 1.0};  // of a cubic: against its like, nine times

// A line of points that swings up and down across the unit square, turned by about `angle`; the
// farther it strays from that, the fewer are its crossings with another one.
template <class Point>
void Swing(Point* points, int32_t count, Random& random, double angle, double size) {
  const double stray = random.Unit();
  const bench::Place place(angle + stray * random.Between(-0.7, 0.7), size);
  for (int32_t i = 0; i < count; ++i) {
    const double x = double(i) / (count - 1) + 0.5 * stray * random.Between(-1.0, 1.0);
    place.Put(points[i], x,
              (count == 4 ? kChebyshev[i] : kHeights[i % 8]) + stray * random.Between(-0.7, 0.7));
  }
}

void Line(Curve& curve, Random& random, double angle, double size) {
  double ends[2][3];
  Swing(ends, 2, random, angle, size);
  auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&curve, CV_LINE));
  KurvoclCopyVector(ends[0], line->start);
  KurvoclCopyVector(ends[1], line->end);
}

void Arc(Curve& curve, Random& random, double, double size) {
  bench::Arcs(size).make(curve, random);
}

void Cubic(Curve& curve, Random& random, double angle, double size) {
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&curve, CV_BEZIER, 3));
  Swing(block->points, 4, random, angle, size);
}

void RationalCubic(Curve& curve, Random& random, double angle, double size) {
  auto* block = static_cast<KurvoRBezier*>(KurvocvMallocCurve(&curve, CV_RBEZIER, 3));
  Swing(block->points, 4, random, angle, size);
  for (int i = 0; i < 4; ++i) block->points[i][3] = bench::Weight(random);
}

void Spline(Curve& curve, Random& random, double angle, double size) {
  auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&curve, CV_BSPLINE, 4, 8));
  Swing(block->points, 8, random, angle, size);
  bench::UniformKnots(block->knots, 4, 8);
}

void RationalSpline(Curve& curve, Random& random, double angle, double size) {
  auto* block = static_cast<KurvoRBSpline*>(KurvocvMallocCurve(&curve, CV_RBSPLINE, 4, 8));
  Swing(block->points, 8, random, angle, size);
  for (int i = 0; i < 8; ++i) block->points[i][3] = bench::Weight(random);
  bench::UniformKnots(block->knots, 4, 8);
}

void Composite(Curve& curve, Random& random, double angle, double size) {
  OwnCurve spline;
  Spline(spline.curve, random, angle, size);
  curve.type = CV_SEGCV;
  KurvocvConvert(&spline.curve, &curve, &spline.g);
}

using Make = void(Curve&, Random&, double angle, double size);

struct NamedKind {
  const char* name;
  Make* make;
};
constexpr NamedKind kKinds[] = {
    {"line", Line},           {"arc", Arc},
    {"cubic", Cubic},         {"rcubic", RationalCubic},
    {"bspline", Spline},      {"rbspline", RationalSpline},
    {"composite", Composite},
};

// Pairs of two kinds, drawn until there are 64, of every number of crossings as many as of any
// other. The numbers that come up rarely run out, and the others make up for them.
class Pairs {
 public:
  Pairs(Make* make_a, Make* make_b, double size) {
    constexpr int kDraws = 2048;
    Random random;
    GlobalVar g;
    KurvoInitGlobalVar(&g);
    std::vector<std::vector<Two>> by_count(kMostCrossings + 1);
    for (int i = 0; i < kDraws; ++i) {
      Two two{};
      const double angle = random.Between(0.0, kTurn);
      make_a(two.a, random, angle, size);
      make_b(two.b, random, angle + 0.25 * kTurn, size);
      CvParam on_a, on_b;
      KurvocrCurveCurve(&two.a, &two.b, &on_a, &on_b, 3, &g);
      by_count[static_cast<std::size_t>(std::min(on_a.count, kMostCrossings))].push_back(two);
      KurvocrFreeCvParam(&on_a);
      KurvocrFreeCvParam(&on_b);
    }
    for (std::size_t i = 0; i < kDraws; ++i)
      for (auto& some : by_count)
        if (i < some.size()) (pairs_.size() < kPairs ? pairs_ : spare_).push_back(some[i]);
  }
  ~Pairs() {
    for (auto* all : {&pairs_, &spare_})
      for (Two& two : *all) {
        KurvocvFreeCurve(&two.a);
        KurvocvFreeCurve(&two.b);
      }
  }
  Pairs(const Pairs&) = delete;
  Pairs& operator=(const Pairs&) = delete;

  void Intersect(benchmark::State& state) const {
    Run run(state);
    std::size_t i = 0;
    for (auto _ : state) {
      const Two& two = pairs_[i++ % kPairs];
      run(&two.a, &two.b);
    }
  }

 private:
  struct Two {
    Curve a, b;
  };
  static constexpr std::size_t kPairs = 64;
  static constexpr int32_t kMostCrossings = 20;
  std::vector<Two> pairs_, spare_;
};

void KindByKind(benchmark::State& state, Make* a, Make* b, double size) {
  Pairs(a, b, size).Intersect(state);
}

// ---- Growth with their number of points ----

void Of(benchmark::State& state, const Kind& a, const Kind& b) {
  Family as(a), bs(b);
  Run run(state);
  std::size_t i = 0;
  for (auto _ : state) {
    run(as[i], bs[i + 1]);
    ++i;
  }
}

// Two tangles: nearly every box meets every other one.
Kind Tangles(int32_t count) {
  return {[count](Curve& curve, Random& random) {
            auto* block =
                static_cast<KurvoBSpline*>(KurvocvMallocCurve(&curve, CV_BSPLINE, 4, count));
            for (int32_t i = 0; i < count; ++i) {
              const double x = bench::kSize * random.Unit();
              KurvoclSetCoord(block->points[i], x, bench::kSize * random.Unit(), 0.0);
            }
            bench::UniformKnots(block->knots, 4, count);
          },
          count};
}

// Cubics of 1000 units and themselves, turned by 1e-7 and slid by a thousandth of a unit.
void NearlyCoincident(benchmark::State& state) {
  constexpr double kLarge = 1000.0, kAngle = 1e-7, kSlide = 1e-3;
  const Kind kind = bench::Beziers(3, kLarge);
  Family as(kind), bs(kind);
  Random random(bench::kSeed + 1);
  for (std::size_t i = 0; i < bs.size(); ++i) {
    const double angle = random.Between(0.0, kTurn);
    const Coord centre = {kLarge * random.Unit(), kLarge * random.Unit(), 0.0};
    const Coord axis = {0.0, 0.0, 1.0};
    const Coord slide = {kSlide * std::cos(angle), kSlide * std::sin(angle), 0.0};
    KurvocvRotate(bs[i], centre, axis, kAngle, &bs.g);
    KurvocvMove(bs[i], slide, &bs.g);
  }
  Run run(state);
  std::size_t i = 0;
  for (auto _ : state) {
    run(as[i], bs[i]);
    ++i;
  }
}

[[maybe_unused]] const bool kRegistered = [] {
  using bench::Name;
  const auto add = [](const std::string& name, auto* run, const auto&... args) {
    benchmark::RegisterBenchmark(("intersect/" + name).c_str(), run, args...);
  };
  for (const NamedKind& a : kKinds)
    for (const NamedKind& b : kKinds)
      add(std::string(a.name) + 'x' + b.name, KindByKind, a.make, b.make, bench::kSize);
  for (const double size : bench::kSizes) {
    add(Name("linexcubic-of-size", size), KindByKind, Line, Cubic, size);
    add(Name("arcxcubic-of-size", size), KindByKind, Arc, Cubic, size);
    add(Name("cubicxcubic-of-size", size), KindByKind, Cubic, Cubic, size);
  }
  for (const int32_t count : {20, 100, 500, 2500, 12500})
    add(Name("outlinexoutline", count), Of, bench::Outlines(count), bench::Outlines(count));
  for (const int32_t count : {20, 100, 500, 2500}) {
    add(Name("linexoutline", count), Of, bench::Lines(), bench::Outlines(count));
    add(Name("arcxoutline", count), Of, bench::Arcs(), bench::Outlines(count));
  }
  for (const int32_t count : {20, 100, 500})
    add(Name("tanglextangle", count), Of, Tangles(count), Tangles(count));
  add("nearly-coincident", NearlyCoincident);
  return true;
}();

// ---- Worst cases: one pair each ----

void One(benchmark::State& state, const OwnCurve& a, const OwnCurve& b,
         uint32_t expected = KURVO_FOUND) {
  Run run(state);
  for (auto _ : state)
    if (run(&a.curve, &b.curve) != expected) state.SkipWithError("unexpected result");
}

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
  One(state, a, b);
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
  One(state, a, b);
}
BENCHMARK(Tangency)->Name("intersect/cubicxcubic/tangency");

void NearMiss(benchmark::State& state) {
  OwnCurve a, b;
  Parabola(a, 0.0, 1.0);
  Parabola(b, -2e-6, -1.0);
  One(state, a, b, KURVO_NOTHING);
}
BENCHMARK(NearMiss)->Name("intersect/cubicxcubic/near-miss");

void Osculation(benchmark::State& state) {  // x^2 and x^2 + x^3
  OwnCurve a, b;
  Parabola(a, 0.0, 1.0);
  Parabola(b, 0.0, 1.0);
  auto* points = static_cast<KurvoBezier*>(b.curve.data)->points;
  const double cube[] = {-1.0, 1.0, -1.0, 1.0};
  for (int i = 0; i < 4; ++i) points[i][1] += cube[i];
  One(state, a, b);
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
  One(state, a, b, KURVO_OVERLAP);
}
BENCHMARK(Overlap)->Name("intersect/cubicxcubic/overlap");

}  // namespace
