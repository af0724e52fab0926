// Regions combined. Names are combine/operation/what/count; the counter tells the curves of the
// results. Pairs are asked in turn, every operation of each.
#include "regions.h"

namespace {

using namespace bench;

struct Pairs {
  Some a, b;
};
using MakePairs = Pairs (*)();

template <class Place>
Pairs PairsOf(bool same, const Place& place) {
  Pairs pairs;
  bench::Random random;
  for (std::size_t i = 0; i < 64; ++i) {
    pairs.a.push_back(Letter(i, 0, 0, 0));
    pairs.b.push_back(place(same ? i : 7 * i + 3, random));
  }
  return pairs;
}
Pairs Shifted() {
  return PairsOf(false, [](std::size_t i, bench::Random& random) {
    return Letter(i, 0, random.Between(100, 500), random.Between(-300, 300));
  });
}
Pairs Overlaid() {
  return PairsOf(false, [](std::size_t i, bench::Random&) { return Letter(i, 0, 0, 0); });
}
Pairs Slid() {
  return PairsOf(true, [](std::size_t i, bench::Random&) { return Letter(i, 0, 1e-3, -7e-4); });
}
Pairs Turned() {
  return PairsOf(true, [](std::size_t i, bench::Random&) { return Letter(i, 1e-7, 0, 0); });
}
Pairs Identical() {
  return PairsOf(true, [](std::size_t i, bench::Random&) { return Letter(i, 0, 0, 0); });
}
// Waving rings of arcs, one beside the middle of the other.
template <int kArcs>
Pairs ArcChains() {
  Pairs pairs;
  bench::Random random;
  for (int i = 0; i < 64; ++i)
    for (Some* some : {&pairs.a, &pairs.b}) some->push_back(ArcRing(random, kArcs));
  return pairs;
}

void CombinePairs(benchmark::State& state, MakePairs make) {
  const Pairs pairs = make();
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  std::size_t i = 0;
  int64_t curves = 0;
  for (auto _ : state) {
    const std::size_t pair = i / 4 % pairs.a.size();
    KurvoRegion out;
    if (!KurvoRegionCombine(static_cast<int32_t>(i % 4), pairs.a[pair]->get(), pairs.b[pair]->get(),
                            nullptr, &out, nullptr, &g))
      return state.SkipWithError("refused");
    curves += CurvesOf(out);
    KurvoRegionFree(&out);
    ++i;
  }
  Count(state, curves);
}
BENCHMARK_CAPTURE(CombinePairs, shifted, Shifted)->Name("combine/each/letters/shifted");
BENCHMARK_CAPTURE(CombinePairs, overlaid, Overlaid)->Name("combine/each/letters/overlaid");
BENCHMARK_CAPTURE(CombinePairs, slid, Slid)->Name("combine/each/letters/slid_1e-3");
BENCHMARK_CAPTURE(CombinePairs, turned, Turned)->Name("combine/each/letters/turned_1e-7");
BENCHMARK_CAPTURE(CombinePairs, same, Identical)->Name("combine/each/letters/identical");
BENCHMARK_CAPTURE(CombinePairs, arcs_16, ArcChains<16>)->Name("combine/each/arcs/16");
BENCHMARK_CAPTURE(CombinePairs, arcs_256, ArcChains<256>)->Name("combine/each/arcs/256");

void Simplify(benchmark::State& state, const Some& some) {
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  std::size_t i = 0;
  int64_t curves = 0;
  for (auto _ : state) {
    KurvoRegion out;
    if (!KurvoRegionSimplify(some[i++ % some.size()]->get(), nullptr, &out, nullptr, &g))
      return state.SkipWithError("refused");
    curves += CurvesOf(out);
    KurvoRegionFree(&out);
  }
  Count(state, curves);
}

// All letters, those with contours that overlap or cross themselves among them.
void SimplifyLetters(benchmark::State& state) { Simplify(state, Letters()); }
BENCHMARK(SimplifyLetters)->Name("simplify/letters");
void SimplifyOverlaps(benchmark::State& state) {
  Simplify(state, Letters(kurvo_test::kSimpleGlyphCount));
}
BENCHMARK(SimplifyOverlaps)->Name("simplify/letters_with_overlaps");

// Circles anywhere, as many in any square: of radius 20 around 1000 of them in a square of 1000.
void Circles(benchmark::State& state) {
  const double size = 1000 * std::sqrt(double(state.range(0)) / 1000);
  bench::Random random;
  Some one;
  one.push_back(std::make_unique<Region>());
  for (int64_t i = 0; i < state.range(0); ++i) {
    const double x = random.Between(0, size);
    one[0]->Circle({x, random.Between(0, size)}, random.Between(10, 30));
  }
  Simplify(state, one);
}
BENCHMARK(Circles)
    ->Name("simplify/circles")
    ->Arg(250)
    ->Arg(1000)
    ->Arg(4000)
    ->Arg(16000)
    ->Unit(benchmark::kMillisecond);

// Discs of two arcs that touch nothing; the argument counts arcs.
void Apart(benchmark::State& state) {
  Some one;
  one.push_back(std::make_unique<Region>());
  const auto side = static_cast<int64_t>(std::sqrt(double(state.range(0)) / 2)) + 1;
  for (int64_t i = 0; i < state.range(0) / 2; ++i)
    one[0]->Circle({2.5 * double(i % side), 2.5 * double(i / side)}, 1);
  Simplify(state, one);
}
BENCHMARK(Apart)
    ->Name("simplify/apart")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
