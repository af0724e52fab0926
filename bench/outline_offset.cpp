// Regions grown and shrunk, chains stroked. Names are operation/what/count; the counter tells the
// curves of the results. What results is freed inside the timing.
#include "regions.h"

namespace {

using namespace bench;

KurvoOptions Options(double tol) {
  KurvoOptions options = {};
  options.size = sizeof options;
  options.tol = tol;
  return options;
}

// Asks each region in turn, outwards and inwards.
void Offset(benchmark::State& state, const Some& some, double distance, double tol) {
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  const KurvoOptions options = Options(tol);
  std::size_t i = 0;
  int64_t curves = 0;
  for (auto _ : state) {
    KurvoRegion out;
    if (!KurvoRegionOffset(some[i / 2 % some.size()]->get(), i % 2 ? -distance : distance, &options,
                           &out, nullptr, &g))
      return state.SkipWithError("refused");
    curves += CurvesOf(out);
    KurvoRegionFree(&out);
    ++i;
  }
  Count(state, curves);
}

void OffsetLetters(benchmark::State& state) { Offset(state, Letters(), 20, 1e-3); }
BENCHMARK(OffsetLetters)->Name("offset-region/letters/20_of_1000");

using MakeRing = std::unique_ptr<Region> (*)(bench::Random&, int);

void OffsetRings(benchmark::State& state, MakeRing make) {
  bench::Random random;
  const auto pieces = static_cast<int>(state.range(0));
  Some rings;
  for (int i = 0; i < (pieces > 1000 ? 4 : 64); ++i) rings.push_back(make(random, pieces));
  Offset(state, rings, 2, 1e-6);
}
BENCHMARK_CAPTURE(OffsetRings, arcs, ArcRing)
    ->Name("offset-region/arcs")
    ->Arg(16)
    ->Arg(256)
    ->Arg(4096);
BENCHMARK_CAPTURE(OffsetRings, lines, LineRing)
    ->Name("offset-region/lines")
    ->Arg(16)
    ->Arg(256)
    ->Arg(4096);

using Ask = int (*)(const KurvoRegion& region, const KurvoOptions& options, KurvoRegion* out,
                    GlobalVar* g);

// As wide as the outline.
void AskTeeth(benchmark::State& state, Ask ask) {
  bench::Random random;
  Region teeth;
  teeth.Contour(Teeth(random, static_cast<int>(state.range(0)), 100));
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  KurvoOptions options = Options(1e-6);
  options.join = KURVO_JOIN_MITER;
  int64_t curves = 0;
  for (auto _ : state) {
    KurvoRegion out;
    if (!ask(*teeth.get(), options, &out, &g)) return state.SkipWithError("refused");
    curves += CurvesOf(out);
    KurvoRegionFree(&out);
  }
  Count(state, curves);
}
int OffsetOf(const KurvoRegion& region, const KurvoOptions& options, KurvoRegion* out,
             GlobalVar* g) {
  return KurvoRegionOffset(&region, 100, &options, out, nullptr, g);
}
int StrokeOf(const KurvoRegion& region, const KurvoOptions& options, KurvoRegion* out,
             GlobalVar* g) {
  return KurvoChainStroke(region.loops, region.count, 100, 100, &options, out, nullptr, g);
}
BENCHMARK_CAPTURE(AskTeeth, offset, OffsetOf)->Name("offset-region/teeth")->Arg(256)->Arg(2048);
BENCHMARK_CAPTURE(AskTeeth, stroke, StrokeOf)->Name("stroke/teeth")->Arg(256)->Arg(2048);

void StrokeLetters(benchmark::State& state) {
  const Some letters = Letters();
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  const KurvoOptions options = Options(1e-3);
  std::size_t i = 0;
  int64_t curves = 0;
  for (auto _ : state) {
    const KurvoRegion& letter = *letters[i++ % letters.size()]->get();
    KurvoRegion out;
    if (!KurvoChainStroke(letter.loops, letter.count, 10, 10, &options, &out, nullptr, &g))
      return state.SkipWithError("refused");
    curves += CurvesOf(out);
    KurvoRegionFree(&out);
  }
  Count(state, curves);
}
BENCHMARK(StrokeLetters)->Name("stroke/letters/20_of_1000");

}  // namespace
