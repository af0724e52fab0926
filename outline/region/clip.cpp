// The parts of chains inside and outside of a region. Where chains meet the loops only says where
// to cut; which side a part is on is told by how often the loops go around points of it.
#include <kurvo_outline.h>

#include <algorithm>
#include <iterator>

#include "base/refusal.h"
#include "chain/trimmer.h"
#include "region/bridged.h"
#include "region/chain_cuts.h"
#include "region/chain_sides.h"
#include "region/check_region.h"
#include "region/raw_result.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/place_order.h"

namespace kurvo::outline {
namespace {

constexpr double kExact = 0x1p-44;       // of the size: what rounding makes of equal curves
constexpr double kCoordinate = 0x1p-50;  // of the largest coordinate: what its rounding makes

// The chains of one side.
class Side {
 public:
  // Adds a part of a chain that `number` of the caller's became by bridging.
  void Add(const Cvseq& chain, const Frame& frame, const Stop* from, const Stop* to,
           bool passes_start, int32_t number, const Array<int32_t>& curves) {
    Trimmer trimmer(chain, frame);
    if (passes_start) {
      trimmer.Add(from, nullptr);
      trimmer.Add(nullptr, to);
    } else {
      trimmer.Add(from, to);
    }
    if (trimmer.size() == 0) return;
    for (const Trimmer::Source& source : trimmer.sources()) {
      const int32_t curve =
          curves.empty() ? source.curve : curves[static_cast<std::size_t>(source.curve)];
      if (curve < 0)
        origins_.push_back({-1, number, -1, KURVO_ORIGIN_BRIDGE, 0, 0});
      else
        origins_.push_back({-1, number, curve, KURVO_ORIGIN_PART, source.from, source.to});
    }
    chains_.Add(trimmer.Take());
  }

  void Release(bool with_origins, KeptRegion& out) {
    std::unique_ptr<KurvoOrigin, FreeBlock> origins;
    if (with_origins && !origins_.empty()) origins.reset(Handed<KurvoOrigin>(origins_).Release());
    *out.Get() = chains_.Release(KURVO_FILL_NONZERO);
    out.Get()->origins = origins.release();
  }

 private:
  OwnedRegion chains_;
  Array<KurvoOrigin> origins_;
};

class Clipper {
 public:
  Clipper(const KurvoRegion* region, const Cvseq* chains, int32_t n, const KurvoOptions* options,
          double epsilon)
      : epsilon_(epsilon) {
    Bounds box;
    CheckRegionRecord(region);
    rule_ = region->rule;
    for (const Cvseq& loop : LoopsOf(*region)) loop_boxes_.push_back(Checked(loop, box));
    for (int32_t i = 0; i < n; ++i) sizes_.push_back(Checked(chains[i], box).LongerSide());
    frame_ = Frame(box);
    settings_ = ReadOptions(options, box.LongerSide(), epsilon);
    settings_.progress.Tell(0);
    const double rounding = frame_.LengthInwards(kCoordinate * box.Farthest());
    tol_ = std::max(frame_.LengthInwards(settings_.tol), rounding);
    nearness_ = {tol_, std::min(std::max(kExact, rounding), tol_)};
    TakeLoops(*region);
    TakeChains(chains, n);
  }

  void Run(KeptRegion& inside, KeptRegion& outside) {
    const auto count = static_cast<int32_t>(chains_.size());
    const Track track(chains_, closed_, frame_);
    const Track loops(loops_, Array<uint8_t>(loops_.size(), 1), frame_, tol_);
    SearchLimit limit;
    const Array<ChainCuts> cuts = CutsOf(track, count, loops, nearness_, settings_.progress, limit);
    const Field field(loops_, rule_, frame_, tol_);
    ChainSides sides_of(track, field, tol_);
    Side sides[2];
    constexpr double kFound = 0.6;  // of all that the call does
    for (int32_t i = 0; i < count; ++i) {
      settings_.progress.Tell(kFound + (1 - kFound) * i / count);
      for (const ChainPart& part : sides_of.Divide(i, cuts[static_cast<std::size_t>(i)]))
        Emit(track, i, part, sides[part.is_inside ? 0 : 1]);
    }
    const bool with_origins = (settings_.flags & KURVO_WITH_ORIGINS) != 0;
    sides[0].Release(with_origins, inside);
    sides[1].Release(with_origins, outside);
    settings_.progress.Tell(1);
    report_.unresolved = sides_of.unresolved();
    report_.capped = limit.is_used_up ? 1 : 0;
  }

  const KurvoReport& report() const { return report_; }

 private:
  static Bounds Checked(const Cvseq& chain, Bounds& all) {
    Bounds own;
    CheckChain(&chain, own);
    if (!own.IsEmpty()) all.Join(own);
    return own;
  }

  // In an order that keeps neighbours together, which trees over them want.
  void TakeLoops(const KurvoRegion& region) {
    for (Bounds& box : loop_boxes_)
      if (!box.IsEmpty()) box = {frame_.Inwards(box.low), frame_.Inwards(box.high)};
    for (const int32_t i : InPlaceOrder(loop_boxes_)) {
      loops_.push_back(region.loops[i]);
      report_.gaps += WideJoints(region.loops[i], epsilon_, settings_.gap, true);
    }
  }

  void TakeChains(const Cvseq* chains, int32_t n) {
    OwnedRegion bridged;
    Array<int32_t> numbers;
    curves_.resize(static_cast<std::size_t>(n));
    for (int32_t i = 0; i < n; ++i) {
      const auto k = static_cast<std::size_t>(i);
      chains_.push_back(chains[i]);
      closed_.push_back(IsClosed(chains[i], sizes_[k], epsilon_));
      const int32_t gaps = WideJoints(chains[i], epsilon_, settings_.gap, false);
      report_.gaps += gaps;
      if (gaps == 0) continue;
      bridged.Add(Bridged(chains[i], epsilon_, settings_.gap, false, &curves_[k]));
      numbers.push_back(i);
    }
    *bridged_.Get() = bridged.Release(KURVO_FILL_NONZERO);
    for (std::size_t i = 0; i < numbers.size(); ++i)
      chains_[static_cast<std::size_t>(numbers[i])] = (*bridged_).loops[i];
  }

  // Both sides of a cut within a curve have the same point; one at a jump is two.
  void Emit(const Track& track, int32_t chain, const ChainPart& part, Side& side) const {
    const auto number = static_cast<std::size_t>(chain);
    const Cvseq& source = chains_[number];
    const Position first = {track.FirstOf(chain), 0}, last = {track.EndOf(chain) - 1, 1};
    const Position begin = track.OnSide(part.from, true), end = track.OnSide(part.to, false);
    const bool is_from_start = part.from == first, is_to_end = end == last;
    KurvoPlace from = track.PlaceOn(begin), to = track.PlaceOn(end);
    const Position after = track.OnSide(part.to, true);
    const KurvoPlace next = track.PlaceOn(after);
    if (next.index == to.index && Length(track.PointAt(after) - track.PointAt(end)) <= tol_)
      std::copy(next.point, std::end(next.point), to.point);
    const Stop start = StopOf(source, from), stop = StopOf(source, to);
    const bool passes_start = !(part.from < part.to) && !is_from_start && !is_to_end;
    side.Add(source, frame_, is_from_start ? nullptr : &start, is_to_end ? nullptr : &stop,
             passes_start, chain, curves_[number]);
  }

  const double epsilon_;
  int32_t rule_ = 0;
  Settings settings_ = {};
  Frame frame_;
  double tol_ = 0;  // in the frame
  Nearness nearness_ = {};
  Array<Bounds> loop_boxes_;
  Array<double> sizes_;           // of the chains
  Array<Cvseq> loops_, chains_;   // not owned
  Array<uint8_t> closed_;         // of the chains
  Array<Array<int32_t>> curves_;  // of bridged chains: which curve of the caller's each is
  KeptRegion bridged_;
  KurvoReport report_ = {};
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionClip(const KurvoRegion* region, const Cvseq* chains, int32_t n,
                               const KurvoOptions* options, KurvoRegion* inside,
                               KurvoRegion* outside, KurvoReport* report, GlobalVar* g) noexcept {
  const bool is_input = inside == region || outside == region;
  if (inside != region) KurvoRegionInit(inside);
  if (outside != region) KurvoRegionInit(outside);
  if (report) *report = {};
  return Answer(g, [&] {
    Require(inside && outside && inside != outside && !is_input, KURVO_ERR_OPTION);
    Require(n >= 0 && (chains || n == 0), KURVO_ERR_OPTION);
    Clipper clipper(region, chains, n, options, GetEpsilon(g));
    KeptRegion in, out;
    clipper.Run(in, out);
    *inside = in.Release();
    *outside = out.Release();
    if (report) *report = clipper.report();
  });
}
