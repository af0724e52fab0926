// The nearest place of chains and where points lie in regions. Names are nearest/kind/curves/points
// and locate/kind/loops/points: `alone` is one point a call, else a call asks that many, and the
// time is that of one point.
#include <benchmark/benchmark.h>
#include <kurvo_outline.h>

#include "curves.h"

namespace {

using bench::Family;
using bench::Kind;
using bench::Points;

// Chains that are the pieces of one curve each.
class Chains {
 public:
  explicit Chains(const Kind& kind) : curves_(kind) {
    for (std::size_t i = 0; i < curves_.size(); ++i) {
      const Curve& curve = *curves_[i];
      const auto* block = static_cast<const KurvoSegcv*>(curve.data);
      chains_.push_back(curve.type == CV_SEGCV ? Cvseq{block->count, block->curves}
                                               : Cvseq{1, curves_[i]});
    }
  }
  const Cvseq& operator[](std::size_t i) const { return chains_[i & (chains_.size() - 1)]; }
  Family& curves() { return curves_; }

 private:
  Family curves_;
  std::vector<Cvseq> chains_;
};

// A ring of cubics.
Kind Rings(int32_t cubics) {
  return {[cubics](Curve& curve, bench::Random& random) {
            bench::OwnCurve spline;
            bench::Outlines(cubics + 3).make(spline.curve, random);
            curve.type = CV_SEGCV;
            KurvocvConvert(&spline.curve, &curve, &spline.g);
          },
          4 * cubics};
}

// Each question about one chain in turn, or batches of the next chain's questions.
void Nearest(benchmark::State& state, const Kind& kind, int32_t batch) {
  Chains chains(kind);
  const Points points = bench::PointsAround(chains.curves());
  std::vector<KurvoPlace> places(static_cast<std::size_t>(batch));
  std::vector<double> asked, distances(places.size());
  bench::Random random(bench::kSeed + 2);
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  for (int32_t i = 0; i < batch; ++i)
    for (const double c : points[static_cast<std::size_t>(i) % bench::kQuestions])
      asked.push_back(c);
  std::size_t i = 0;
  for (auto _ : state) {
    const double* at = batch == 1 ? points[i % bench::kQuestions].data() : asked.data();
    KurvoChainNearest(&chains[i], at, batch, places.data(), distances.data(), &g);
    benchmark::DoNotOptimize(places.data());
    benchmark::DoNotOptimize(distances.data());
    ++i;
  }
  if (!KurvoOk(&g)) state.SkipWithError("refused");
  state.counters["point"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * batch,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// Glyphs: rings of cubics within each other or beside, as many loops as wanted, two to a letter.
void Locate(benchmark::State& state, int32_t cubics, int32_t loops, int32_t batch) {
  constexpr std::size_t kRegions = 16;
  Chains rings(Rings(cubics));
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  std::vector<KurvoRegion> regions(kRegions);
  for (std::size_t r = 0; r < kRegions; ++r) {
    KurvoRegionInit(&regions[r]);
    for (int32_t i = 0; i < loops; ++i) {
      KurvoRegionAdd(&regions[r], &rings[r + static_cast<std::size_t>(i)], 1.0, &g);
      Cvseq& loop = regions[r].loops[i];
      const double scale = i % 2 ? 0.5 : 1.0, by = 0.25 * bench::kSize * (i % 2);
      for (int32_t k = 0; k < loop.count; ++k) {
        const auto* block = static_cast<const KurvoBezier*>(loop.curves[k].data);
        for (int32_t c = 0; loop.curves[k].type == CV_BEZIER && c <= block->degree; ++c)
          KurvoclSetCoord(block->points[c], scale * block->points[c][0] + by + i / 2 * bench::kSize,
                          scale * block->points[c][1] + by, 0.0);
      }
    }
  }
  bench::Random random(bench::kSeed + 3);
  Points points(std::max<std::size_t>(bench::kQuestions, static_cast<std::size_t>(batch)));
  for (auto& p : points)
    p = {random.Between(0.0, bench::kSize * (loops + 1) / 2), random.Between(0.0, bench::kSize), 0};
  std::vector<int32_t> where(static_cast<std::size_t>(batch));
  std::size_t i = 0;
  for (auto _ : state) {
    const double* at = points[batch == 1 ? i % bench::kQuestions : 0].data();
    KurvoRegionLocate(&regions[i % kRegions], at, batch, where.data(), nullptr, &g);
    benchmark::DoNotOptimize(where.data());
    ++i;
  }
  if (!KurvoOk(&g)) state.SkipWithError("refused");
  for (KurvoRegion& region : regions) KurvoRegionFree(&region);
  state.counters["point"] =
      benchmark::Counter(static_cast<double>(state.iterations()) * batch,
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void Register() {
  const auto nearest = [](const std::string& name, const Kind& kind, int32_t batch) {
    const std::string how = batch == 1 ? "alone" : std::to_string(batch);
    benchmark::RegisterBenchmark(("nearest/" + name + '/' + how).c_str(),
                                 [=](benchmark::State& state) { Nearest(state, kind, batch); });
  };
  nearest("line", bench::Lines(), 1);
  nearest("arc", bench::Arcs(), 1);
  nearest("quadratic", bench::Beziers(2), 1);
  nearest("cubic", bench::Beziers(3), 1);
  nearest("bezier/7", bench::Beziers(7), 1);
  nearest("rational/3", bench::RationalBeziers(3), 1);
  nearest("bspline/1000", bench::Outlines(1000), 1);
  for (const int32_t count : {10, 100, 1000, 10000}) {
    nearest("cubics/" + std::to_string(count), Rings(count), 1);
    nearest("cubics/" + std::to_string(count), Rings(count), 1000);
  }
  for (const auto& [cubics, loops] : {std::pair{20, 2}, std::pair{20, 50}, std::pair{1000, 2}})
    for (const int32_t batch : {1, 1000}) {
      const std::string name = "locate/cubics/" + std::to_string(cubics) + '/' +
                               std::to_string(loops) + '/' +
                               (batch == 1 ? "alone" : std::to_string(batch));
      benchmark::RegisterBenchmark(
          name.c_str(), [cubics = cubics, loops = loops, batch](benchmark::State& state) {
            Locate(state, cubics, loops, batch);
          });
    }
}

const bool kRegistered = (Register(), true);

}  // namespace
