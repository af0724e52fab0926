#include "region/strip_union.h"

#include <algorithm>
#include <cmath>

#include "base/owned.h"
#include "base/refusal.h"
#include "strand/check.h"
#include "strand/glance.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr int32_t kRun = 16;                // curves of one run
constexpr double kMany = 32;                // sharp corners whose strips meet
constexpr double kPoint = 0x1p-40;          // of the size: curves so small are points
constexpr double kOperationShare = 0x1p-5;  // of a clean-up's tolerance: unions in one another

// Where a chain turns, and the squared sine of half the turn.
struct Corner {
  Vec2 at;
  double sharpness;
};

// Those between curves, and for each curve what it turns from its start to its end.
Array<Corner> CornersOf(const Cvseq& chain, const Frame& frame) {
  Array<Corner> corners;
  Vec2 start = {}, end = {};
  int32_t curve = -1;
  const auto turn = [&](Vec2 at, Vec2 from, Vec2 to) {
    corners.push_back({at, 0.5 - 0.5 * Dot(from, to)});
  };
  ForEachSpan(chain, frame, [&](const Span& span) {
    const Vec2 leaves = TangentAt(span, 0);
    if (span.curve != curve) {
      if (curve >= 0) turn(span.Start(), end, leaves);
      curve = span.curve;
      start = leaves;
    }
    end = span.kind == Span::Kind::kLine ? leaves : TangentAt(span, 1);
    if (span.kind != Span::Kind::kLine) turn(span.End(), start, end);
  });
  return corners;
}

// How many corners lie within the distance of one, in the mean of some.
double Crowding(const Array<Corner>& corners, double distance) {
  constexpr std::size_t kSamples = 16;
  const std::size_t step = corners.size() / kSamples + 1;
  double sum = 0, samples = 0;
  for (std::size_t i = 0; i < corners.size(); i += step, ++samples)
    for (const Corner& corner : corners)
      if (distance * distance >= SquaredLength(corner.at - corners[i].at)) sum += corner.sharpness;
  return samples > 0 ? sum / samples : 0;
}

bool AreArcs(const Cvseq& loop) {
  return std::all_of(loop.curves, loop.curves + loop.count, [](const Curve& curve) {
    return curve.type == CV_LINE || curve.type == CV_ARC;
  });
}

}  // namespace

// Strips meet whose corners are no farther from each other than twice their length.
bool IsRough(const Cvseq& chain, double distance) {
  if (chain.count <= kRun) return false;
  Bounds box;
  CheckChain(&chain, box);
  const Frame frame(box);
  return Crowding(CornersOf(chain, frame), 2 * frame.LengthInwards(std::fabs(distance))) > kMany;
}

bool IsRough(const KurvoRegion& simple, double distance) {
  const auto is_rough = [distance](const Cvseq& loop) { return IsRough(loop, distance); };
  const Cvseq *const first = simple.loops, *const last = first + simple.count;
  return std::all_of(first, last, AreArcs) && std::any_of(first, last, is_rough);
}

StripUnion::StripUnion(Composition& work, const Frame& frame, const Pen& pen, const GlobalVar& g)
    : work_(work), frame_(frame), options_(work.OptionsOfPart(kOperationShare)), pen_(pen), g_(g) {
  KurvoErrReset(&g_);
}

StripUnion::~StripUnion() {
  for (Part& part : parts_) FreeRegion(part.region);
}

// Neighbouring runs share a curve that is no point, so that each joint lies within one.
void StripUnion::Add(const Cvseq& chain, int32_t index, const StrokeJoints& joints, bool is_rough,
                     Progress& progress) {
  made_.extra = 0;
  if (!is_rough || chain.count <= kRun)
    return Add({chain, chain, index, 0, joints.is_closed, true, true}, joints);
  const auto is_point = [this](const Curve& curve) {
    return !(BoxOf(curve).LongerSide() > kPoint * frame_.size());
  };
  Array<Curve> ring(chain.curves, chain.curves + chain.count);
  int32_t begin = 0;
  if (joints.is_closed) {
    while (begin + 1 < chain.count && is_point(chain.curves[begin])) ++begin;
    std::rotate(ring.begin(), ring.begin() + begin, ring.end());
    ring.push_back(ring.front());
  }
  const int32_t last = CountOf(ring.size()) - 1;
  for (int32_t first = 0, next; first < last; first = next) {
    progress.Tell(static_cast<double>(first) / chain.count);
    next = std::min(first + kRun, last);
    while (next < last && is_point(ring[static_cast<std::size_t>(next)])) ++next;
    const bool begins = !joints.is_closed && first == 0, ends = !joints.is_closed && next == last;
    const Cvseq curves = {next - first + 1, ring.data() + first};
    Add({curves, chain, index, begin + first, false, begins, ends}, joints);
  }
}

void StripUnion::Add(const Run& run, const StrokeJoints& joints) {
  Pen pen = pen_;
  pen.extra = made_.extra;
  if (!run.begins) pen.start_cap = KURVO_CAP_BUTT;
  if (!run.ends) pen.end_cap = KURVO_CAP_BUTT;
  RawRegion raw;
  const Made made = AppendStrokeLoops(run.curves, run.index, frame_,
                                      {joints.epsilon, joints.gap, run.is_closed}, pen, gaps_, raw);
  made_.capped += made.capped;
  made_.off = std::max(made_.off, made.off);
  made_.extra = made.extra;
  for (KurvoOrigin& origin : raw.origins) Rename(run, origin);
  const KurvoRegion loops = raw.View();
  KeptRegion strips;
  KurvoReport report;
  Require(KurvoRegionSimplify(&loops, &options_, strips.Get(), &report, &g_) != 0,
          KurvoErrGet(&g_));
  const KurvoRegion* const sources[] = {&loops};
  NameThrough(*strips.Get(), sources);
  Keep(strips, report, 0);
  while (parts_.size() > 1 && parts_.back().unions == parts_[parts_.size() - 2].unions) Unite();
}

// From curves of the run to those of the chain. Where a run ends and the chain does not is a joint,
// named after the curve that begins there.
void StripUnion::Rename(const Run& run, KurvoOrigin& origin) {
  const int32_t curve = origin.curve;
  origin.curve = (run.first + curve) % run.chain.count;
  if (origin.kind != KURVO_ORIGIN_CAP) return;
  const bool at_start = curve == 0 && origin.from == DomainOf(run.curves.curves[0]).from;
  if (at_start ? run.begins : run.ends) return;
  origin.kind = KURVO_ORIGIN_JOIN;
  if (at_start) return;
  origin.curve = (run.first + curve + 1) % run.chain.count;
  origin.from = origin.to = DomainOf(run.chain.curves[origin.curve]).from;
}

void StripUnion::Keep(KeptRegion& made, const KurvoReport& report, int unions) {
  report_.unresolved += report.unresolved;
  report_.capped += report.capped;
  moved_ = std::max(moved_, report.moved);
  parts_.push_back({{}, unions});
  parts_.back().region = made.Release();
}

// The last two.
void StripUnion::Unite() {
  const Part& before = parts_[parts_.size() - 2];
  const Part& last = parts_.back();
  const int unions = std::max(before.unions, last.unions) + 1;
  const KurvoRegion* const sources[] = {&before.region, &last.region};
  KeptRegion both;
  KurvoReport report;
  Require(KurvoRegionCombine(KURVO_UNION, sources[0], sources[1], &options_, both.Get(), &report,
                             &g_) != 0,
          KurvoErrGet(&g_));
  NameThrough(*both.Get(), sources);
  for (int i = 0; i < 2; ++i) {
    FreeRegion(parts_.back().region);
    parts_.pop_back();
  }
  Keep(both, report, unions);
}

void StripUnion::Finish(KeptRegion& all) {
  while (parts_.size() > 1) Unite();
  report_.capped += made_.capped;
  report_.moved = frame_.LengthOutwards(made_.off);
  if (!parts_.empty()) {
    report_.moved += (parts_.back().unions + 1) * moved_;
    *all.Get() = std::exchange(parts_.back().region, KurvoRegion{});
  }
  work_.Count(report_);
}

}  // namespace kurvo::outline
