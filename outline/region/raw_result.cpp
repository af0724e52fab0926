#include "region/raw_result.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "region/combine.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

constexpr double kUsualTolerance = 0x1p-30;  // of the reach, where the input is a point
constexpr double kLeastTolerance = 0x1p-44;  // of the size of the result

Settings SettingsOf(const KurvoOptions* given, double size, const GlobalVar& g) {
  return ReadOptions(given, size, GetEpsilon(&g));
}

// A parameter of a curve, through where the curve comes from.
double Through(const KurvoOrigin& origin, double share) {
  return share >= 1 ? origin.to : origin.from + share * (origin.to - origin.from);
}

// Indices of the first curve of each loop in arrays of origins, and of all curves.
Array<std::size_t> FirstCurves(const KurvoRegion& region) {
  Array<std::size_t> first;
  std::size_t count = 0;
  for (int i = 0; i < region.count; ++i) {
    first.push_back(count);
    count += static_cast<std::size_t>(region.loops[i].count);
  }
  first.push_back(count);
  return first;
}

// An origin that names a curve of `source`, as one that names what that comes from.
KurvoOrigin Seen(const KurvoOrigin& origin, const KurvoRegion& source,
                 const Array<std::size_t>& first) {
  const Cvseq& loop = source.loops[origin.loop];
  const KurvoOrigin& behind = source.origins[first[static_cast<std::size_t>(origin.loop)] +
                                             static_cast<std::size_t>(origin.curve)];
  const Domain domain = DomainOf(loop.curves[origin.curve]);
  const double width = domain.to - domain.from;
  return {behind.region,
          behind.loop,
          behind.curve,
          origin.kind == KURVO_ORIGIN_PART ? behind.kind : origin.kind,
          Through(behind, (origin.from - domain.from) / width),
          Through(behind, (origin.to - domain.from) / width)};
}

}  // namespace

void NameThrough(KurvoRegion& made, std::span<const KurvoRegion* const> sources) {
  if (!made.origins) return;
  Array<Array<std::size_t>> first;
  for (const KurvoRegion* source : sources) first.push_back(FirstCurves(*source));
  const std::span<KurvoOrigin> origins(made.origins, FirstCurves(made).back());
  for (KurvoOrigin& origin : origins) {
    if (origin.loop < 0 || origin.curve < 0) continue;
    const auto number = static_cast<std::size_t>(origin.region);
    if (sources[number]->origins) origin = Seen(origin, *sources[number], first[number]);
  }
}

Frame FrameFor(Bounds box, double reach) {
  constexpr double kWide = 0x1p-10;  // of the reach
  const Vec2 half = {kWide * reach, kWide * reach};
  if (!box.IsEmpty() && box.LongerSide() < kWide * reach) {
    const Vec2 middle = {0.5 * box.low.x + 0.5 * box.high.x, 0.5 * box.low.y + 0.5 * box.high.y};
    box.Add(middle - half);
    box.Add(middle + half);
  }
  return Frame(box);
}

Composition::Composition(const KurvoOptions* given, double size, double reach, const GlobalVar& g)
    : settings_(SettingsOf(given, size, g)),
      tol_(std::max(settings_.tol, kLeastTolerance * (size + reach))),
      g_(g),
      proceed_(given ? given->proceed : nullptr),
      user_(given ? given->user : nullptr) {
  if (size == 0 && !(given && given->tol > 0)) tol_ = kUsualTolerance * reach;
  KurvoErrReset(&g_);
}

int Composition::Ask(double done, void* user) {
  const auto& self = *static_cast<const Composition*>(user);
  return self.proceed_(self.from_ + done * (self.to_ - self.from_), self.user_);
}

Progress Composition::ProgressOver(double from, double to) {
  from_ = from;
  to_ = to;
  return proceed_ ? Progress(Ask, this) : Progress();
}

KurvoOptions Composition::OptionsOfPart(double share) const {
  KurvoOptions options = {};
  options.size = sizeof options;
  options.flags = settings_.flags;
  options.tol = share * kSimplifyShare * tol_;
  return options;
}

KurvoOptions Composition::OptionsOf(double gap, double from, double to) {
  from_ = from;
  to_ = to;
  KurvoOptions options = OptionsOfPart(1);
  options.gap = gap;
  if (proceed_) {
    options.proceed = Ask;
    options.user = this;
  }
  return options;
}

void Composition::Simplify(const KurvoRegion& region, double gap, double from, double to,
                           KeptRegion& out) {
  const KurvoOptions options = OptionsOf(gap, from, to);
  KurvoReport report;
  const bool made = KurvoRegionSimplify(&region, &options, out.Get(), &report, &g_) != 0;
  Require(made, KurvoErrGet(&g_));
  Count(report);
}

bool Composition::SimplifyUnlessSimple(const KurvoRegion& region, double gap, double from,
                                       double to, KeptRegion& out) {
  const KurvoOptions options = OptionsOf(gap, from, to);
  KurvoReport report = {};
  const bool made =
      outline::SimplifyUnlessSimple(region, options, GetEpsilon(&g_), *out.Get(), report);
  Count(report);
  return made;
}

void Composition::Join(const KurvoRegion& region, const KurvoRegion& strips, bool grows,
                       KeptRegion& out) {
  constexpr double kMostlyDone = 0.9, kHalf = 0.5;  // of the tolerance: the rest is the strips'
  KurvoOptions options = OptionsOf(0, kMostlyDone, 1);
  options.tol *= kHalf;
  KurvoReport report;
  const bool made = KurvoRegionCombine(grows ? KURVO_UNION : KURVO_DIFFERENCE, &region, &strips,
                                       &options, out.Get(), &report, &g_) != 0;
  Require(made, KurvoErrGet(&g_));
  Count(report);
  KurvoRegion itself = region;
  itself.origins = nullptr;
  const KurvoRegion* const sources[] = {&itself, &strips};
  NameThrough(*out.Get(), sources);
}

void Composition::Count(const KurvoReport& report) {
  report_.gaps += report.gaps;
  report_.dropped += report.dropped;
  report_.unresolved += report.unresolved;
  report_.capped += report.capped;
  report_.moved += report.moved;
  report_.dropped_area += report.dropped_area;
}

void Composition::Finish(RawRegion& raw, const Made& made, const Frame& frame,
                         const KurvoRegion* source, KeptRegion& out) {
  constexpr double kHalfDone = 0.5;
  report_.capped += made.capped;
  report_.moved += frame.LengthOutwards(made.off);
  const KurvoRegion loops = raw.View();
  Simplify(loops, 0, kHalfDone, 1, out);
  const KurvoRegion* const from_raw[] = {&loops};
  NameThrough(*out.Get(), from_raw);
  const KurvoRegion* const from_source[] = {source};
  if (source) NameThrough(*out.Get(), from_source);
}

}  // namespace kurvo::outline
