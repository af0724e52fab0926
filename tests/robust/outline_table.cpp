// The table of the second library's functions.
#include <cmath>

#include "robust/outline_roles.h"

namespace kurvo_test {
namespace {

#define ROW(function, ...) OutlineRow(#function, function __VA_OPT__(, ) __VA_ARGS__)

// 1 when it was done, 0 when the record says why not.
void JudgeDone(Call& c, int done) {
  c.Code(done, {0, 1});
  c.Expect(done == KurvoOk(&c.g), "result and code disagree");
}
constexpr auto kDone = [](Call& c, int done, auto...) { JudgeDone(c, done); };

template <class Return, class... Args, class Judge, class... Roles>
Called OutlineRow(const char* name, Return (*function)(Args...) noexcept, Gives<Judge> gives,
                  Roles... roles) {
  return {name, Drawn(function, gives, roles...), {}, true};
}
template <class Return, class... Args, class... Roles>
Called OutlineRow(const char* name, Return (*function)(Args...) noexcept, Roles... roles) {
  return OutlineRow(name, function, Gives{kDone}, roles...);
}

// One that the library may free.
KurvoRegion OwnedRegion(Call& c) {
  const KurvoRegion* const source = c.AnyRegion();
  KurvoRegion region = {};
  Globals g;
  if (!KurvoRegionCopy(source, &region, &g) && source && source->count < 1)
    region = {source->count, source->rule, nullptr, nullptr};
  return region;
}

void CallFree(Call& c) {
  KurvoRegion region = OwnedRegion(c);
  const bool null = c.in().OneIn(16);
  c.Run([&] { KurvoRegionFree(null ? nullptr : &region); });
  if (null) KurvoRegionFree(&region);
  c.Expect(region.count == 0 && !region.loops && !region.origins && region.rule == 0, "not empty");
}

void CallAdd(Call& c) {
  KurvoRegion region = OwnedRegion(c);
  const KurvoRegion before = region;
  const Cvseq* const loop =
      region.loops && c.hostile() && c.in().OneIn(16) ? region.loops : c.AnySequence();
  const double gap = Choice({0, .01, 100, kInfinity}, 4)(c);
  const int done = c.Run([&] { return KurvoRegionAdd(&region, loop, gap, &c.g); });
  JudgeDone(c, done);
  c.Expect(region.count == before.count + done && region.rule == before.rule, "another region");
  c.Expect(done || region.loops == before.loops, "changed although it failed");
  if (region.rule < 0 || region.rule > 3) region.rule = 0;  // that it was given
  if (region.count < 0) region = {};
  c.Afterwards([region, &c]() mutable { TakeRegion(c, region); });
}

// What another region packs to, some of it changed.
void CallUnpack(Call& c) {
  const KurvoRegion* const source = c.AnyRegion();
  int32_t *words = nullptr, word_count = 0, number_count = 0;
  double* numbers = nullptr;
  Globals g;
  KurvoRegionPack(source, &words, &word_count, &numbers, &number_count, &g);
  auto* const all_words = c.store().Zeroed<int32_t>(std::size_t(word_count + word_count % 2));
  double* const all_numbers = c.store().Numbers(std::size_t(number_count));
  std::copy(words, words + word_count, all_words);
  std::copy(numbers, numbers + number_count, all_numbers);
  KurvoFree(words);
  KurvoFree(numbers);
  for (int spoiled = c.hostile() ? c.in().Between(0, 3) : 0; spoiled > 0 && word_count > 0;
       --spoiled) {
    const auto at = c.in().Below(static_cast<uint32_t>(word_count));
    all_words[at] = c.in().Pick({-1, 0, 1, 2, 3, 5, 16, 48, 64, 80, 1008, INT32_MIN, INT32_MAX});
    if (number_count > 0) all_numbers[c.in().Below(uint32_t(number_count))] = c.Number();
  }
  if (c.hostile() && c.in().OneIn(8)) word_count -= c.in().Between(0, word_count);
  if (c.hostile() && c.in().OneIn(8)) number_count -= c.in().Between(0, number_count);
  KurvoRegion* const out = NewRegion(c);
  JudgeDone(c, c.Run([&] {
    return KurvoRegionUnpack(all_words, word_count, all_numbers, number_count, out, &c.g);
  }));
}

// clang-format off
std::vector<Entry> Rows() {
  const auto operation = Choice({KURVO_UNION, KURVO_INTERSECTION, KURVO_DIFFERENCE, KURVO_XOR}, {-1, 4}, 16);
  const auto form = Choice({KURVO_FIT_ARCS, KURVO_FIT_QUADRATICS, KURVO_FIT_CUBICS}, {-1, 3}, 16);
  const auto distance = Choice({.5, -.5, 0, 2}, 4), width = Choice({.5, 0, 2}, 4);
  return {
      {ROW(KurvoOutlineVersion, Gives{[](Call& c, int32_t version) { c.Expect(version > 0, "no version"); }})},
      {ROW(KurvoRegionInit, Gives{[](Call&, auto...) {}}, OrNull(NewRegion))}, {{"KurvoRegionFree", CallFree, {}}},
      {ROW(KurvoRegionCopy, OneRegion, NewRegion)}, {{"KurvoRegionAdd", CallAdd, {}, true}},
      {ROW(KurvoRegionPack, Gives{[](Call& c, int done, auto, int32_t** words, int32_t* word_count, double** numbers, int32_t* number_count, auto) {
          JudgeDone(c, done), TakeList(c, words, word_count), TakeList(c, numbers, number_count); }}, OneRegion, OutList<int32_t>, OutCount, OutList<double>, OutCount)},
      {{"KurvoRegionUnpack", CallUnpack, {}, true}},

      {ROW(KurvoRegionCombine, operation, OneRegion, OneRegion, SomeOptions, NewRegion, NewReport), {}, kHeavy | kRecords},
      {ROW(KurvoRegionCombineMany, operation, SomeRegions, RegionCount, SomeOptions, NewRegion, NewReport), {}, kHeavy | kRecords},
      {ROW(KurvoRegionSimplify, OneRegion, SomeOptions, NewRegion, NewReport), {}, kHeavy | kRecords},
      {ROW(KurvoRegionOffset, OneRegion, distance, SomeOptions, NewRegion, NewReport), {}, kSquare | kRecords},
      {ROW(KurvoRegionClip, OneRegion, SomeChains, Count, SomeOptions, NewRegion, NewRegion, NewReport), {}, kHeavy},
      {ROW(KurvoChainStroke, SomeChains, Count, width, width, SomeOptions, NewRegion, NewReport), {}, kSquare | kRecords},
      {ROW(KurvoRegionLocate, OneRegion, Points, Count, OrNull(OutMany<int32_t>), OrNull(OutMany<int32_t>))},
      {ROW(KurvoRegionNesting, OneRegion, OutLoops)}, {ROW(KurvoRegionMoments, OneRegion, OutRecord<KurvoMoments>)},

      {ROW(KurvoChainLength, OneChain, OutOne<double>)}, {ROW(KurvoChainPlaces, OneChain, SomeLengths, Count, OutMany<KurvoPlace>)},
      {ROW(KurvoChainLengths, OneChain, SomePlaces, Count, OutMany<double>)},
      {ROW(KurvoChainNearest, OneChain, Points, Count, OrNull(OutMany<KurvoPlace>), OrNull(OutMany<double>))},
      {ROW(KurvoChainMoments, OneChain, OutRecord<KurvoMoments>)}, {ROW(KurvoChainTightBox, OneChain, OutBox)},
      {ROW(KurvoChainMeetings, Gives{[](Call& c, int done, auto, auto, auto, KurvoMeeting** list, int32_t* count, auto) {
          JudgeDone(c, done), TakeList(c, list, count); }}, OneChain, OrNull(OneChain), SomeOptions, OutList<KurvoMeeting>, OutCount), {}, kHeavy},
      {ROW(KurvoChainFlatten, Gives{[](Call& c, int done, auto, double, Coord** points, KurvoPlace** places, int32_t* count, auto) {
          JudgeDone(c, done), TakeList(c, points, count), TakeList(c, places, count); }}, OneChain, Deviation, OrNull(OutList<Coord>), OrNull(OutList<KurvoPlace>), OutCount)},
      {ROW(KurvoChainFit, OneChain, form, Deviation, NewChain)}, {ROW(KurvoChainTrim, OneChain, SomePlaces, SomePlaces, NewChain)},
      {ROW(KurvoChainJoin, SomeCurves, Count, SomeOptions, NewRegion, NewRegion, NewReport)}};
}
// clang-format on

}  // namespace

const std::vector<Entry>& Table() {
  static const std::vector<Entry> kTable = Rows();
  return kTable;
}

}  // namespace kurvo_test
