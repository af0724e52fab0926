// Questions to chains as wholes: length, places, moments, boxes. Names are question/kind/size.
#include <benchmark/benchmark.h>
#include <kurvo_outline.h>

#include <memory>
#include <vector>

#include "curves.h"

namespace {

constexpr std::size_t kChains = 64;  // a power of two

// Asks each of the chains that each curve of a family is by itself.
template <class Ask>
void AskCurves(benchmark::State& state, const bench::Kind& kind, const Ask& ask) {
  bench::Family family(kind);
  std::size_t i = 0;
  for (auto _ : state) {
    const Cvseq chain = {1, family[i++]};
    ask(chain, family.g);
  }
  if (!KurvoOk(&family.g)) state.SkipWithError("error pending");
}

class Chain {
 public:
  explicit Chain(int32_t count) { KurvocvMallocCvseq(&seq, count); }
  ~Chain() { KurvocvFreeCvseq(&seq); }
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;

  Cvseq seq{};
};

// Rings that wave, closed, of `count` Bezier curves of this degree.
std::vector<std::unique_ptr<Chain>> Rings(int32_t degree, int32_t count) {
  bench::Random random;
  std::vector<std::unique_ptr<Chain>> rings;
  for (std::size_t i = 0; i < kChains; ++i) {
    rings.push_back(std::make_unique<Chain>(count));
    const double turn = 2.0 * std::numbers::pi, phase = random.Between(0.0, turn);
    const double high = random.Between(0.02, 0.2);
    const auto at = [&](int32_t k, double* p) {
      const double angle = turn * (k % (degree * count)) / (degree * count) + phase;
      const double radius = bench::kSize * (1.0 + high * std::cos(7.0 * angle));
      KurvoclSetCoord(p, radius * std::cos(angle), radius * std::sin(angle), 0.0);
    };
    for (int32_t k = 0; k < count; ++k) {
      auto* curve = static_cast<KurvoBezier*>(
          KurvocvMallocCurve(rings.back()->seq.curves + k, CV_BEZIER, degree));
      for (int32_t j = 0; j <= degree; ++j) at(degree * k + j, curve->points[j]);
    }
  }
  return rings;
}

template <class Ask>
void AskRings(benchmark::State& state, int32_t degree, int32_t count, const Ask& ask) {
  const auto rings = Rings(degree, count);
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  std::size_t i = 0;
  for (auto _ : state) ask(rings[i++ % kChains]->seq, g);
  if (!KurvoOk(&g)) state.SkipWithError("error pending");
}

void Length(const Cvseq& chain, GlobalVar& g) {
  double length = 0;
  KurvoChainLength(&chain, &length, &g);
  benchmark::DoNotOptimize(length);
}

void Moments(const Cvseq& chain, GlobalVar& g) {
  KurvoMoments moments;
  KurvoChainMoments(&chain, &moments, &g);
  benchmark::DoNotOptimize(moments);
}

void TightBox(const Cvseq& chain, GlobalVar& g) {
  Box box;
  KurvoChainTightBox(&chain, box, &g);
  benchmark::DoNotOptimize(box);
}

void EqualSteps(const Cvseq& chain, GlobalVar& g) {
  constexpr int32_t kSteps = 100;
  double length = 0, lengths[kSteps];
  KurvoPlace places[kSteps];
  KurvoChainLength(&chain, &length, &g);
  for (int32_t i = 0; i < kSteps; ++i) lengths[i] = i * (length / kSteps);
  KurvoChainPlaces(&chain, lengths, kSteps, places, &g);
  benchmark::DoNotOptimize(places);
}

void Places(const Cvseq& chain, GlobalVar& g) {
  constexpr int32_t kSteps = 100;
  double lengths[kSteps];
  KurvoPlace places[kSteps];
  for (int32_t i = 0; i < kSteps; ++i) lengths[i] = 6 * i;
  KurvoChainPlaces(&chain, lengths, kSteps, places, &g);
  benchmark::DoNotOptimize(places);
}

[[maybe_unused]] const bool kRegistered = [] {
  const auto curves = [](const std::string& name, const bench::Kind& kind, const auto& ask) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State& state) { AskCurves(state, kind, ask); });
  };
  const auto rings = [](const std::string& name, int32_t degree, int32_t count, const auto& ask) {
    benchmark::RegisterBenchmark(
        name.c_str(), [=](benchmark::State& state) { AskRings(state, degree, count, ask); });
  };
  curves("outline-length/line", bench::Lines(), Length);
  curves("outline-length/arc", bench::Arcs(), Length);
  for (const int32_t degree : {2, 3, 5, 9, 25})
    curves(bench::Name("outline-length/bezier", degree), bench::Beziers(degree), Length);
  for (const int32_t degree : {2, 3, 9})
    curves(bench::Name("outline-length/rational", degree), bench::RationalBeziers(degree), Length);
  curves("outline-length/spline/100", bench::BSplines(4, 100), Length);
  rings("outline-length/cubics/256", 3, 256, Length);
  rings("outline-places/100-of-cubics/256", 3, 256, Places);
  rings("outline-places/equal-steps/256", 3, 256, EqualSteps);
  rings("outline-moments/glyph-of-quadratics/30", 2, 30, Moments);
  rings("outline-moments/glyph-of-cubics/30", 3, 30, Moments);
  curves("outline-moments/spline/100", bench::BSplines(4, 100), Moments);
  curves("outline-moments/rational/3", bench::RationalBeziers(3), Moments);
  rings("outline-box/glyph-of-cubics/30", 3, 30, TightBox);
  for (const int32_t degree : {3, 9})
    curves(bench::Name("outline-box/bezier", degree), bench::Beziers(degree), TightBox);
  curves("outline-box/rational/3", bench::RationalBeziers(3), TightBox);
  return true;
}();

}  // namespace
