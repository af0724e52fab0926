// Flattening and fitting, 64 seeded inputs in turn, CPU time.
#include <benchmark/benchmark.h>
#include <kurvo_outline.h>

#include <string>

#include "curves.h"

namespace {

using bench::OwnCurve;

// Chains of one curve each: points in a square of 100 units.
class Chains {
 public:
  template <class Make>
  explicit Chains(const Make& make) : curves_(64) {
    bench::Random random;
    for (OwnCurve& own : curves_) make(own.curve, random);
  }
  Cvseq Next() { return {1, &curves_[next_++ % curves_.size()].curve}; }

 private:
  std::vector<OwnCurve> curves_;
  std::size_t next_ = 0;
};

void Put(double* p, bench::Random& random) {
  p[0] = random.Between(0, bench::kSize);
  p[1] = random.Between(0, bench::kSize);
  p[2] = 0;
}

void MakeBezier(Curve& curve, bench::Random& random, int32_t degree) {
  auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&curve, CV_BEZIER, degree));
  for (int32_t i = 0; i <= degree; ++i) Put(block->points[i], random);
}

void MakeRational(Curve& curve, bench::Random& random, int32_t degree) {
  auto* block = static_cast<KurvoRBezier*>(KurvocvMallocCurve(&curve, CV_RBEZIER, degree));
  for (int32_t i = 0; i <= degree; ++i) {
    Put(block->points[i], random);
    block->points[i][3] = random.Between(.5, 2);
  }
}

// A smooth stroke of `count` points with cubic pieces.
void MakeSpline(Curve& curve, bench::Random& random, int32_t count) {
  auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&curve, CV_BSPLINE, 4, count));
  for (int32_t i = 0; i < count; ++i) {
    Put(block->points[i], random);
    block->points[i][0] = bench::kSize * i / count;
  }
  for (int32_t i = 0; i < count + 4; ++i)
    block->knots[i] = std::clamp((i - 3.0) / (count - 3), 0.0, 1.0);
}

template <class Make>
void Flatten(benchmark::State& state, const Make& make, double deviation) {
  Chains chains(make);
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  int64_t vertices = 0;
  for (auto _ : state) {
    const Cvseq chain = chains.Next();
    Coord* points;
    int32_t count;
    KurvoChainFlatten(&chain, deviation, &points, nullptr, &count, &g);
    vertices += count;
    KurvoFree(points);
  }
  state.counters["vertices"] =
      benchmark::Counter(static_cast<double>(vertices), benchmark::Counter::kAvgIterations);
  if (!KurvoOk(&g)) state.SkipWithError("error pending");
}

template <class Make>
void Fit(benchmark::State& state, const Make& make, int32_t form, double deviation) {
  Chains chains(make);
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  int64_t pieces = 0;
  for (auto _ : state) {
    const Cvseq chain = chains.Next();
    Cvseq out;
    KurvoChainFit(&chain, form, deviation, &out, &g);
    pieces += out.count;
    KurvocvFreeCvseq(&out);
  }
  state.counters["pieces"] =
      benchmark::Counter(static_cast<double>(pieces), benchmark::Counter::kAvgIterations);
  if (!KurvoOk(&g)) state.SkipWithError("error pending");
}

constexpr const char* kForms[] = {"arcs", "quadratics", "cubics"};

const auto kKinds = {
    std::pair<const char*, std::function<void(Curve&, bench::Random&)>>{
        "quadratic", [](Curve& c, bench::Random& r) { MakeBezier(c, r, 2); }},
    {"cubic", [](Curve& c, bench::Random& r) { MakeBezier(c, r, 3); }},
    {"bezier_7", [](Curve& c, bench::Random& r) { MakeBezier(c, r, 7); }},
    {"rational_3", [](Curve& c, bench::Random& r) { MakeRational(c, r, 3); }},
    {"spline_100", [](Curve& c, bench::Random& r) { MakeSpline(c, r, 100); }},
};

const int kRegistered = [] {
  for (const auto& [name, make] : kKinds) {
    for (const double deviation : {1e-1, 1e-2, 1e-4}) {
      const std::string tail = std::string(name) + '/' + std::to_string(deviation).substr(0, 6);
      benchmark::RegisterBenchmark(
          ("flatten/" + tail).c_str(),
          [make = make, deviation](benchmark::State& state) { Flatten(state, make, deviation); });
      for (int32_t form = KURVO_FIT_ARCS; form <= KURVO_FIT_CUBICS; ++form)
        benchmark::RegisterBenchmark((std::string(kForms[form]) + '/' + tail).c_str(),
                                     [make = make, form, deviation](benchmark::State& state) {
                                       Fit(state, make, form, deviation);
                                     });
    }
  }
  return 0;
}();

}  // namespace
