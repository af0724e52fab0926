// Chains of loose curves.
#include <kurvo_outline.h>

#include <algorithm>

#include "base/options.h"
#include "base/owned.h"
#include "base/refusal.h"
#include "chain/duplicates.h"
#include "chain/loose_ends.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastReach = 0x1p-40;  // of the size: ends that are the same but for rounding

// The directions that point out of a curve at its ends. Result: that at the end.
Vec2 Beyond(const Curve& curve, const Frame& frame, Vec2& at_start) {
  bool is_first = true;
  Vec2 at_end = {0, 0};
  at_start = {0, 0};
  ForEachSpan(curve, 0, frame, [&](const Span& span) {
    if (is_first) at_start = -TangentAt(span, 0);
    is_first = false;
    at_end = TangentAt(span, 1);
  });
  return at_end;
}

OwnedCurve Turned(const Curve& curve) {
  OwnedCurve turned = CopyOf(curve);
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  KurvocvChgOrder(turned.Get(), &g);
  Require(KurvoOk(&g), KurvoErrGet(&g));
  return turned;
}

class Joiner {
 public:
  Joiner(const Curve* curves, int32_t count, const Frame& frame, double epsilon)
      : curves_(curves),
        count_(static_cast<std::size_t>(count)),
        frame_(frame),
        epsilon_(epsilon) {}

  void Match(double tol, double gap, Progress& progress) {
    done_ = FindDuplicates(curves_, static_cast<int32_t>(count_), frame_, tol);
    dropped_ = static_cast<int32_t>(std::count(done_.begin(), done_.end(), true));
    progress.Tell(0.2);
    Collect();
    progress.Tell(0.4);
    const double same = std::max(frame_.LengthInwards(epsilon_), kLeastReach);
    partners_ = MatchEnds(loose_, is_free_, same, std::max(frame_.LengthInwards(gap), same));
    progress.Tell(0.6);
  }

  void Chains(OwnedRegion& closed, OwnedRegion& open) {
    for (std::size_t i = 0; i < count_; ++i) {
      if (done_[i]) continue;
      if (!has_ends_[i] || closes_itself_[i]) {
        done_[i] = true;
        OwnedChain alone;
        alone.Add(CopyOf(curves_[i]));
        (has_ends_[i] && closes_itself_[i] ? closed : open).Add(std::move(alone));
        continue;
      }
      Follow(i, closed, open);
    }
  }

  int32_t gaps() const { return gaps_; }
  int32_t dropped() const { return dropped_; }

 private:
  // Ends, and which of them are to be joined: not those of a curve that is closed by itself, as
  // chains are (IsClosed).
  void Collect() {
    ends_.resize(count_);
    has_ends_.resize(count_, false);
    closes_itself_.resize(count_, false);
    loose_.points.resize(2 * count_, Vec2{0, 0});
    loose_.outwards.resize(2 * count_, Vec2{0, 0});
    is_free_.resize(2 * count_, false);
    for (std::size_t i = 0; i < count_; ++i) {
      if (done_[i]) continue;
      has_ends_[i] = EndsOf(curves_[i], ends_[i]);
      if (!has_ends_[i]) continue;
      Bounds box;
      CheckCurve(curves_[i], box);
      Curve only = curves_[i];
      closes_itself_[i] = IsClosed({1, &only}, box.LongerSide(), epsilon_);
      loose_.points[2 * i] = frame_.Inwards(ends_[i].start);
      loose_.points[2 * i + 1] = frame_.Inwards(ends_[i].end);
      loose_.outwards[2 * i + 1] = Beyond(curves_[i], frame_, loose_.outwards[2 * i]);
      is_free_[2 * i] = is_free_[2 * i + 1] = !closes_itself_[i];
    }
  }

  int32_t PartnerOf(std::size_t end) const { return partners_[end]; }
  Vec2 PointOf(std::size_t end) const {
    return end % 2 ? ends_[end / 2].end : ends_[end / 2].start;
  }

  // The chain that holds curve i, the first of its curves, which runs as it was given.
  void Follow(std::size_t i, OwnedRegion& closed, OwnedRegion& open) {
    // Back to where an open chain begins.
    std::size_t first = 2 * i;  // the end at which the chain comes in
    bool is_closed = false;
    while (PartnerOf(first) != kNoEnd) {
      first = static_cast<std::size_t>(PartnerOf(first)) ^ 1;
      if (first == 2 * i) {
        is_closed = true;
        break;
      }
    }
    OwnedChain chain;
    std::size_t in = first;
    while (true) {
      const std::size_t curve = in / 2;
      done_[curve] = true;
      chain.Add(in % 2 ? Turned(curves_[curve]) : CopyOf(curves_[curve]));
      const std::size_t out = in ^ 1;
      if (PartnerOf(out) == kNoEnd) break;
      in = static_cast<std::size_t>(PartnerOf(out));
      Bridge(PointOf(out), PointOf(in), chain);
      if (in == first) break;
    }
    (is_closed ? closed : open).Add(std::move(chain));
  }

  void Bridge(Vec2 from, Vec2 to, OwnedChain& chain) {
    if (Meet(from, to, epsilon_)) return;
    chain.Add(LineBetween(from, to));
    ++gaps_;
  }

  const Curve* curves_;
  const std::size_t count_;
  const Frame& frame_;
  const double epsilon_;
  Array<bool> done_;  // in a chain, or dropped
  Array<Ends> ends_;
  Array<bool> has_ends_, closes_itself_;
  LooseEnds loose_;
  Array<bool> is_free_;
  Array<int32_t> partners_;
  int32_t gaps_ = 0, dropped_ = 0;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainJoin(const Curve* curves, int32_t n, const KurvoOptions* options,
                              KurvoRegion* closed, KurvoRegion* open, KurvoReport* report,
                              GlobalVar* g) noexcept {
  KurvoRegionInit(closed);
  KurvoRegionInit(open);
  if (report) *report = {};
  return Answer(g, [&] {
    Require(closed && open && closed != open && n >= 0 && (curves || n == 0), KURVO_ERR_OPTION);
    Bounds box;
    for (int32_t i = 0; i < n; ++i) CheckCurve(curves[i], box);
    const Frame frame(box);
    const double epsilon = GetEpsilon(g);
    Settings settings = ReadOptions(options, frame.size(), epsilon);
    settings.progress.Tell(0);
    Joiner joiner(curves, n, frame, epsilon);
    OwnedRegion loops, chains;
    if (n > 0) {
      joiner.Match(std::max(frame.LengthInwards(settings.tol), kLeastReach), settings.gap,
                   settings.progress);
      joiner.Chains(loops, chains);
    }
    settings.progress.Tell(1);
    KurvoRegion made = loops.Release(KURVO_FILL_NONZERO);
    try {
      *open = chains.Release(KURVO_FILL_NONZERO);
    } catch (...) {
      FreeRegion(made);
      throw;
    }
    *closed = made;
    if (report) {
      report->gaps = joiner.gaps();
      report->dropped = joiner.dropped();
    }
  });
}
