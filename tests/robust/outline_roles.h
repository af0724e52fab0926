// The roles of the second library's arguments.
#pragma once

#include <cmath>
#include <new>

#include "robust/row.h"

namespace kurvo_test {

// ---- what is given

// Now and then the one before.
inline const Cvseq* OneChain(Call& c) {
  if (!c.given.chain || !c.in().OneIn(8)) c.given.chain = c.AnySequence();
  return c.given.chain;
}
inline const KurvoRegion* OneRegion(Call& c) {
  if (!c.given.region || !c.in().OneIn(8)) c.given.region = c.AnyRegion();
  return c.given.region;
}

// Whose count is given next.
inline const Cvseq* SomeChains(Call& c) {
  c.given.count = c.in().Between(0, 3);
  if (c.hostile() && c.in().OneIn(50)) return nullptr;
  auto* const chains = c.store().Zeroed<Cvseq>(static_cast<std::size_t>(c.given.count));
  for (int i = 0; i < c.given.count; ++i)
    if (const Cvseq* const chain = c.AnySequence()) chains[i] = *chain;
  return chains;
}
inline const Curve* SomeCurves(Call& c) {
  const Cvseq* const chain = c.AnySequence();
  c.given.count = chain ? chain->count : 1;
  return chain ? chain->curves : nullptr;
}
inline const KurvoRegion* const* SomeRegions(Call& c) {
  c.given.count = c.in().Between(0, 3);
  auto** const regions = c.store().Zeroed<const KurvoRegion*>(std::size_t(c.given.count));
  for (int i = 0; i < c.given.count; ++i) regions[i] = OneRegion(c);
  return regions;
}
// With another count they are no inputs, which an output may not be one of.
inline int32_t RegionCount(Call& c) {
  const int32_t count = Count(c);
  if (count != c.given.count) c.given.region = nullptr;
  return count;
}
inline const double* SomeLengths(Call& c) {
  const double* const points = Points(c);
  double* const lengths = const_cast<double*>(points);
  for (int i = 0; !c.hostile() && i < c.given.count; ++i) lengths[i] = 2 * c.in().Fraction();
  return points;
}
// On the chain before.
inline const KurvoPlace* SomePlaces(Call& c) {
  c.given.count = c.in().Between(1, 9);
  if (c.hostile() && c.in().OneIn(50)) return nullptr;
  const int curves = c.given.chain ? std::clamp(c.given.chain->count, 1, 1000) : 1;
  auto* const places = c.store().Zeroed<KurvoPlace>(std::size_t(c.given.count));
  for (KurvoPlace* place = places; place != places + c.given.count; ++place) {
    place->index = c.in().Between(0, curves - 1);
    place->t = c.in().Fraction();
    if (!c.hostile() || !c.in().OneIn(8)) continue;
    place->index = c.in().Pick({-1, INT32_MIN, INT32_MAX, curves});
    place->t = c.Parameter();
  }
  return places;
}

// So small a share of the size of the chain before that the result is not absurdly large.
inline double Deviation(Call& c) {
  Box box = {0, 0, 0, 0, 0, 0};
  Globals g;
  KurvocvCvseqBoundBox(c.given.chain, box, &g);
  if (c.hostile() && c.in().OneIn(8)) return c.in().Pick({0., -1., kNaN, kInfinity});
  const double size = std::max(box[3] - box[0], box[4] - box[1]);
  return (size > 0 ? size : 1) * c.in().Pick({.1, .01, 1e-3, c.hostile() ? 1e-7 : 1e-4});
}

// Asks a caller who may say no, and tells whether it was asked as it should be.
struct Progress {
  double last = 0;
  int32_t answers = 0;  // yes so often
  int32_t fair = 1;
};
inline int Proceed(double done, void* user) {
  auto& progress = *static_cast<Progress*>(user);
  if (!(progress.last <= done && done <= 1)) progress.fair = 0;
  progress.last = done;
  return progress.answers-- > 0;
}

inline void SpoilOptions(Call& c, KurvoOptions& options) {
  switch (c.in().Below(8)) {
    case 0:  // with 0 behind those that are known, or something else
      options.size = c.in().Pick({0U, 1U, 4U, 40U, 80U, 87U, 96U, 128U});
      return;
    case 1:
      options.flags = static_cast<uint32_t>(c.in().Bits());
      return;
    case 2:
      options.tol = c.Number();
      options.gap = c.Number();
      return;
    case 3:
      options.miter_limit = c.Number();
      options.phase = c.Number();
      return;
    case 4:
      options.join = c.in().Pick({-1, 3, INT32_MAX});
      return;
    case 5:
      options.cap = c.in().Pick({-1, 3, INT32_MIN});
      return;
    case 6:
      options.dash_count = c.in().Pick({-1, 3, INT32_MIN});
      options.dashes = c.in().Below(2) ? c.Array(3) : nullptr;
      return;
    default:
      options.reserved = 1;
  }
}
inline const KurvoOptions* SomeOptions(Call& c) {
  constexpr int kRoom = 16;  // numbers, more than the record has
  if (c.in().OneIn(4)) return nullptr;
  double* const room = c.store().Numbers(kRoom);
  room[kRoom - 1] = c.in().OneIn(2) ? 1 : 0;
  auto* const options = new (room) KurvoOptions{};
  options->size = sizeof *options;
  options->flags = c.in().Below(2);
  options->tol = c.in().Pick({0., 1e-3, .1});
  options->gap = c.in().Pick({0., .01, 100., kInfinity});
  options->miter_limit = c.in().Pick({0., 1., 4.});
  options->phase = c.in().Between(-2, 2);
  options->join = c.in().Between(0, 2);
  options->cap = c.in().Between(0, 2);
  if (c.in().OneIn(4)) {
    options->dash_count = 3;
    double* const dashes = c.Array(3);
    for (int i = 0; !c.hostile() && i < 3; ++i) dashes[i] = std::fabs(dashes[i]) + .5;
    options->dashes = dashes;
  }
  if (c.in().Below(2)) {
    auto* const progress = new (c.own_store().Zeroed<Progress>()) Progress;
    progress->answers = c.in().OneIn(8) ? c.in().Between(0, 5) : INT32_MAX;
    options->proceed = Proceed;
    options->user = progress;
    c.Afterwards([=, &c] { c.Expect(progress->fair, "asked with a share that falls"); });
  }
  if (c.hostile() && c.in().OneIn(4)) SpoilOptions(c, *options);
  return options;
}

// ---- what is made

inline void TakeRegion(Call& c, KurvoRegion& region) {  // which is freed
  c.AttributesStay();
  c.Add(double(region.count));
  c.Add(double(region.rule));
  c.Expect(region.count >= 0 && (region.count > 0) == (region.loops != nullptr), "loops");
  c.Expect(region.rule >= 0 && region.rule <= KURVO_FILL_NEGATIVE, "unknown rule");
  int curves = 0;
  for (int i = 0; i < region.count; ++i) {
    const Cvseq& loop = region.loops[i];
    c.Add(double(loop.count));
    c.Expect(loop.count >= 0 && (loop.count > 0) == (loop.curves != nullptr), "curves of a loop");
    for (int k = 0; k < loop.count; ++k) c.Read(loop.curves[k], false);
    curves += loop.count;
  }
  for (int i = 0; region.origins && i < curves; ++i) {
    const KurvoOrigin& origin = region.origins[i];
    for (const double x : {1. * origin.region, 1. * origin.loop, 1. * origin.curve,
                           1. * origin.kind, origin.from, origin.to})
      c.Add(x);
  }
  KurvoRegionFree(&region);
  c.Expect(region.count == 0 && !region.loops && !region.origins, "not emptied");
}

// Anything before it becomes a result; now and then null or the input, which is refused.
inline KurvoRegion* NewRegion(Call& c) {
  if (c.hostile() && c.in().OneIn(32))
    return c.in().Below(2) ? nullptr : const_cast<KurvoRegion*>(c.given.region);
  auto* const region = c.own_store().Zeroed<KurvoRegion>();
  *region = {9, 9, reinterpret_cast<Cvseq*>(region), reinterpret_cast<KurvoOrigin*>(region)};
  c.Afterwards([=, &c] {
    c.Neutral(region->count == 0);
    TakeRegion(c, *region);
  });
  return region;
}
inline Cvseq* NewChain(Call& c) {
  c.AttributesStay();
  if (c.hostile() && c.in().OneIn(32))
    return c.in().Below(2) ? nullptr : const_cast<Cvseq*>(c.given.chain);
  return Fresh<Cvseq>(c);
}
inline KurvoReport* NewReport(Call& c) {
  if (c.in().OneIn(4)) return nullptr;
  auto* const report = c.own_store().Zeroed<KurvoReport>();
  std::memset(report, 0xEE, sizeof *report);
  c.Afterwards([=, &c] {
    double all[sizeof *report / sizeof(double)];
    std::memcpy(all, report, sizeof all);
    c.Add(all, std::size(all));
    const bool clear = std::count(report->reserved, std::end(report->reserved), 0.) == 4;
    c.Expect(clear, "reserved room of a report");
    c.Expect(KurvoOk(&c.g) || std::count(all, std::end(all), 0.) == std::ssize(all), "a report");
  });
  return report;
}

// Room for `count` results of a type: all of them are written, or none when the call is refused.
template <class T>
T* OutRoom(Call& c, int count) {
  const int size = static_cast<int>((static_cast<std::size_t>(count) * sizeof(T) + 7) / 8);
  double* const out = c.Room(size);
  c.Afterwards([=, &c] {
    c.Add(out, size);
    if (!std::is_same_v<T, int32_t>)
      c.Expect(std::none_of(out, out + size, [](double x) { return x != x; }), "not a number");
    const auto untouched = std::count(out, out + size, Call::kUnwritten);
    c.Expect(untouched == size || (untouched == 0 && KurvoOk(&c.g)), "partly written, or refused");
  });
  return reinterpret_cast<T*>(out);
}
template <class T>
T* OutOne(Call& c) {
  return OutRoom<T>(c, 1);
}
// A record, which a refusal empties.
template <class T>
T* OutRecord(Call& c) {
  constexpr int kDoubles = sizeof(T) / sizeof(double);
  double* const out = Written(c, kDoubles);
  c.Afterwards([=, &c] {
    const bool is_empty = std::count(out, out + kDoubles, 0.) == kDoubles;
    c.Expect(KurvoOk(&c.g) || is_empty, "a record of a refused call");
    c.Expect(std::none_of(out, out + kDoubles, [](double x) { return x != x; }), "not a number");
  });
  return reinterpret_cast<T*>(out);
}
template <class T>
T* OutMany(Call& c) {
  return OutRoom<T>(c, c.given.count);
}
inline double* OutBox(Call& c) { return OutRoom<double>(c, 6); }
inline int32_t* OutLoops(Call& c) {
  return OutRoom<int32_t>(c, c.given.region ? std::clamp(c.given.region->count, 0, 1000) : 0);
}

// A pointer and a count that become an array of the library's.
template <class T>
T** OutList(Call& c) {
  T** const list = c.own_store().Zeroed<T*>();
  *list = reinterpret_cast<T*>(list);
  return c.hostile() && c.in().OneIn(64) ? nullptr : list;
}
inline int32_t* OutCount(Call& c) {
  int32_t* const count = c.own_store().Zeroed<int32_t>(2);
  *count = 9;
  return c.hostile() && c.in().OneIn(64) ? nullptr : count;
}
template <class T>
void TakeList(Call& c, T** list, const int32_t* count) {
  c.Expect(!count || *count >= 0, "a negative count");
  if (!list) return;
  c.Expect(KurvoOk(&c.g) ? count && (*list || *count == 0) : !*list && (!count || *count == 0),
           "an array that does not fit its count");
  for (int i = 0; *list && count && i < *count; ++i)
    if constexpr (std::is_same_v<T, int32_t>) {
      c.Add(double((*list)[i]));
    } else {
      double numbers[sizeof(T) / sizeof(double)];
      std::memcpy(numbers, &(*list)[i], sizeof numbers);
      c.Add(numbers, std::size(numbers));
    }
  KurvoFree(*list);
}

}  // namespace kurvo_test
