// The nearest point of a chain.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>

#include "base/memory.h"
#include "base/refusal.h"
#include "chain/foot.h"
#include "chain/place.h"
#include "strand/box_tree.h"
#include "strand/glance.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// Squares of lengths within these, in the caller's unit, neither overflow nor vanish.
constexpr double kLeastScale = 0x1p-400, kGreatestScale = 0x1p400;
// In a frame: from farther away all of a chain is equally far.
constexpr double kFarthest = 0x1p400;
constexpr double kSamePoint = 0x1p-46;  // in a frame: the ends of neighbours that share them

struct Nearest {
  KurvoPlace place = {};
  double distance = 0;
};

bool IsFar(Vec2 q) { return !(kFarthest >= std::fabs(q.x) && kFarthest >= std::fabs(q.y)); }

// The place of a foot, which is handed the spans from that of the foot on, one after the other: at
// a joint the later one is named, and a span that is a point ends where it starts.
class LaterPlace {
 public:
  LaterPlace(const Frame& frame, double u) : frame_(frame), u_(u) {}

  // Result: whether the next span may matter.
  bool Offer(const Span& span) {
    if (has_place_ && !(kSamePoint >= Length(span.Start() - point_))) return false;
    place_ = PlaceAt(frame_, span, u_);
    point_ = PointAt(span, u_);
    const bool at_end = u_ >= 1 || (span.kind == Span::Kind::kLine && span.Start() == span.End());
    has_place_ = true;
    u_ = 0;
    return at_end;
  }
  Vec2 point() const { return point_; }
  Nearest Of(Vec2 q) const { return {place_, frame_.LengthOutwards(Length(point_ - q))}; }

 private:
  const Frame& frame_;
  double u_;
  KurvoPlace place_ = {};
  Vec2 point_ = {};
  bool has_place_ = false;
};

// From a point so far away that squares overflow the first point is as near as any.
Nearest FromFarAway(const Frame& frame, const Span& first, const double* point) {
  Nearest answer = {PlaceAt(frame, first, 0), 0};
  answer.distance = std::hypot(point[0] - answer.place.point[0], point[1] - answer.place.point[1]);
  return answer;
}

// ---- One point: one look at each record ----

class OnePoint {
 public:
  OnePoint(const Cvseq& chain, const double* point) : chain_(chain), at_{point[0], point[1]} {}

  // Looks at every curve: checks it and its joint, and how near its box comes. Throws Refusal.
  // Result: whether Find may be asked.
  bool Look(double epsilon) {
    bounds_ = arena_.New<double>(static_cast<std::size_t>(chain_.count));
    Glances glances(epsilon);
    double least = std::numeric_limits<double>::infinity();
    int nearest = -1;
    glances.ForEach(chain_, [&least, &nearest, bounds = bounds_, at = Pair(at_), none = Pair(0.0)](
                                int i, const Glance& glance) {
      const Pair outside = Most(Most(glance.low - at, at - glance.high), none);
      const double bound = SquaredLength(outside);
      bounds[i] = bound;
      if (bound < least) {
        least = bound;
        nearest = i;
      }
    });
    nearest_ = nearest;
    frame_ = Frame(glances.box());
    const double scale = frame_.LengthOutwards(1);
    inverse_square_ = 1 / (scale * scale);
    q_ = frame_.Inwards(at_);
    return nearest_ >= 0 && scale >= kLeastScale && scale <= kGreatestScale && !IsFar(q_);
  }

  Nearest Find() {
    Search(nearest_);
    for (int i = 0; (i = NextWithin(feet_.limit(), i)) < chain_.count; ++i)
      if (i != nearest_) Search(i);

    const Foot& foot = feet_.First();
    LaterPlace later(frame_, foot.u);
    bool is_there = false, goes_on = true;
    for (int i = foot.curve; i < chain_.count && goes_on; ++i)
      ForEachSpan(
          chain_.curves[i], i, frame_,
          [&](const Stretch& stretch) { return goes_on && (is_there || stretch.to > foot.from); },
          [&](const Span& span) {
            is_there = is_there || span.from == foot.from;
            if (is_there && goes_on) goes_on = later.Offer(span);
          });
    return later.Of(q_);
  }

 private:
  // The first curve from `i` on whose box is within the limit, a squared length.
  int NextWithin(double limit, int i) const {
    const double *const bounds = bounds_, scale = inverse_square_;
    const int count = chain_.count;
    while (i < count && !(bounds[i] * scale <= limit)) ++i;
    return i;
  }

  // Of a curve with many spans the nearest box goes first, so that most others need no look.
  void Search(int index) {
    const Curve& curve = chain_.curves[index];
    const auto visit = [this](const Span& span) { SearchSpan(span, 0, q_, feet_); };
    if (curve.type < CV_BSPLINE) return ForEachSpan(curve, index, frame_, visit);
    stretches_.clear();
    const auto look = [this](const Stretch& stretch) {
      stretches_.push_back(SquaredDistance(stretch.Box(), at_) * inverse_square_);
      return false;
    };
    ForEachSpan(curve, index, frame_, look, visit);
    const auto nearest = static_cast<std::size_t>(
        std::min_element(stretches_.begin(), stretches_.end()) - stretches_.begin());
    const auto search = [&](const auto& is_wanted) {
      std::size_t i = 0;
      ForEachSpan(
          curve, index, frame_, [&](const Stretch&) { return is_wanted(i++); }, visit);
    };
    search([nearest](std::size_t i) { return i == nearest; });
    const auto may_be_nearer = [&](std::size_t i) {
      return i != nearest && stretches_[i] <= feet_.limit();
    };
    bool others = false;
    for (std::size_t i = 0; i < stretches_.size() && !others; ++i) others = may_be_nearer(i);
    if (others) search(may_be_nearer);
  }

  const Cvseq& chain_;
  const Vec2 at_;
  Vec2 q_ = {};
  Frame frame_;
  double inverse_square_ = 1;
  double* bounds_ = nullptr;  // the squared distance of each curve's box, in the caller's unit
  int nearest_ = -1;          // of all boxes; -1: there are no curves
  Array<double> stretches_;   // the same of the stretches of one curve, in the frame
  Feet feet_;
  Arena arena_;
};

// ---- Many points: a tree over boxes ----

class ManyPoints {
 public:
  ManyPoints(const Cvseq& chain, double epsilon)
      : tree_((Collect(chain, epsilon), HullsOf(list_.spans))) {}

  Nearest Find(const double* point) {
    const Array<Span>& spans = list_.spans;
    if (spans.empty()) return {};
    const Vec2 q = list_.frame.Inwards(point);
    if (IsFar(q)) return FromFarAway(list_.frame, spans[0], point);
    Feet feet;
    if (has_last_) feet.Assume(SquaredLength(last_ - q));
    tree_.ForEachNear(
        q, [&feet] { return feet.limit(); },
        [&](std::size_t i) { SearchSpan(spans[i], i, q, feet); });
    const Foot& foot = feet.First();
    LaterPlace later(list_.frame, foot.u);
    for (std::size_t i = foot.span; i < spans.size() && later.Offer(spans[i]);) ++i;
    last_ = later.point();
    has_last_ = true;
    return later.Of(q);
  }

 private:
  void Collect(const Cvseq& chain, double epsilon) {
    Glances glances(epsilon);
    glances.ForEach(chain, [](int, const Glance&) {});
    list_.frame = Frame(glances.box());
    list_.spans.reserve(static_cast<std::size_t>(chain.count));
    ForEachSpan(chain, list_.frame,
                [this](const Span& span) { list_.spans.push_back(Kept(span, list_.arena)); });
  }

  SpanList list_;
  const BoxTree tree_;
  Vec2 last_ = {};  // of the chain, nearest to the last point: a point is often near the one before
  bool has_last_ = false;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainNearest(const Cvseq* chain, const double* points, int32_t n,
                                 KurvoPlace* places, double* distances, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    Require(n >= 0 && (n == 0 || points), KURVO_ERR_OPTION);
    RequireChain(chain);
    for (int i = 0; i < n; ++i) {
      RequireFinite(points[3 * std::ptrdiff_t{i}]);
      RequireFinite(points[3 * std::ptrdiff_t{i} + 1]);
    }
    const auto write = [&](int i, const Nearest& nearest) {
      if (places) places[i] = nearest.place;
      if (distances) distances[i] = nearest.distance;
    };
    if (n == 1) {
      OnePoint one(*chain, points);
      if (one.Look(GetEpsilon(g))) return write(0, one.Find());
    }
    ManyPoints many(*chain, GetEpsilon(g));
    for (int i = 0; i < n; ++i) write(i, many.Find(points + 3 * std::ptrdiff_t{i}));
  });
}
