#include "sweep/attach.h"

#include <algorithm>
#include <limits>

namespace kurvo::outline {
namespace {

// Of tol: what fits badly is tried again with a higher beam.
constexpr double kBadly = 0x1p-3;
constexpr double kWiden = 0.25;  // above and below

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Why a bundle should pass at a place; the first that holds.
enum Reason { kGivenVertex, kVertex, kCrossing, kMiddle, kNoReason };

class Attachment {
 public:
  Attachment(const Stage& stage, int32_t k, bool is_top, double widen)
      : stage_(stage), k_(k), is_top_(is_top), beam_(stage.beams[k]) {
    beam_.low -= widen;
    beam_.high += widen;
  }

  void SetInterval(const Row& row, Bundle& bundle) {
    bundle.low = kInfinity;
    bundle.high = -kInfinity;
    reason_ = kNoReason;
    for (const int32_t member : row.MembersOf(bundle)) Join(member, bundle);
  }

 private:
  void Join(int32_t number, Bundle& bundle) {
    const Strand& strand = stage_.strand(number);
    const int32_t vertex = is_top_ ? strand.high : strand.low;
    if (stage_.beams.OfVertex(vertex) == k_) {
      const double side = is_top_ ? strand.x_high : strand.x_low;
      JoinSide(side, bundle);
      if (beam_.high > beam_.low) JoinPassage(strand, bundle);
      Prefer(stage_.scene.vertex(vertex).is_given ? kGivenVertex : kVertex, side, bundle);
      return;
    }
    const Crossing* crossing = stage_.marks.Of(number, k_);
    if (crossing && beam_.high == beam_.low) {
      JoinSide(crossing->side, bundle);
      return Prefer(kCrossing, crossing->side, bundle);
    }
    const double middle = JoinPassage(strand, bundle);
    if (crossing) return Prefer(kCrossing, crossing->side, bundle);
    Prefer(kMiddle, middle, bundle);
  }

  static void JoinSide(double side, Bundle& bundle) {
    bundle.low = std::min(bundle.low, side);
    bundle.high = std::max(bundle.high, side);
  }

  // Result: the middle of the sides between which the strand passes.
  double JoinPassage(const Strand& strand, Bundle& bundle) const {
    const double from = std::max(beam_.low, strand.y_low), to = std::min(beam_.high, strand.y_high);
    const double at_from = strand.At(from), at_to = to > from ? strand.At(to) : at_from;
    JoinSide(at_from, bundle);
    JoinSide(at_to, bundle);
    return 0.5 * (at_from + at_to);
  }

  void Prefer(Reason reason, double side, Bundle& bundle) {
    if (reason >= reason_) return;
    reason_ = reason;
    bundle.preferred = side;
  }

  const Stage& stage_;
  const int32_t k_;
  const bool is_top_;
  Beam beam_;
  Reason reason_ = kNoReason;
};

// Places that do not fall: each within the greatest low before it and the least high after it.
Misfit Assign(Array<Bundle>& bundles) {
  Misfit misfit;
  double greatest = -kInfinity;
  std::size_t at = 0;
  for (std::size_t i = 0; i < bundles.size(); ++i) {
    if (bundles[i].low > greatest) {
      greatest = bundles[i].low;
      at = i;
    }
    if (greatest - bundles[i].high > misfit.by) misfit = {greatest - bundles[i].high, at, i};
    bundles[i].place = greatest;  // for now the least that is allowed
  }
  double most = kInfinity;
  for (std::size_t i = bundles.size(); i-- > 0;) {
    Bundle& bundle = bundles[i];
    most = std::min(most, bundle.high);
    const double least = bundle.place;
    bundle.place = least > most ? 0.5 * (least + most) : std::clamp(bundle.preferred, least, most);
  }
  double before = -kInfinity;
  for (Bundle& bundle : bundles) before = bundle.place = std::max(before, bundle.place);
  return misfit;
}

}  // namespace

Misfit Attach(const Stage& stage, int32_t k, bool is_top, Row& row) {
  const auto attach = [&](double widen) {
    Attachment attachment(stage, k, is_top, widen);
    for (Bundle& bundle : row.bundles) attachment.SetInterval(row, bundle);
    return Assign(row.bundles);
  };
  const Misfit misfit = attach(0);
  return misfit.by > kBadly * stage.tol() ? attach(kWiden * stage.tol()) : misfit;
}

}  // namespace kurvo::outline
