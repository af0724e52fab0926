// Where points lie in a region.
#include <kurvo_outline.h>

#include <algorithm>
#include <limits>

#include "base/refusal.h"
#include "region/check_region.h"
#include "region/crossings.h"
#include "region/many_points.h"
#include "strand/glance.h"
#include "strand/spans.h"
#include "sweep/winding.h"

namespace kurvo::outline {
namespace {

constexpr double kOnShare = 0x1p-30;  // of the region's size: as near as that is on a loop

struct Field {
  Frame frame;
  double band;  // in the frame
};

// ---- One point: one more look at each record ----

class OnePoint {
 public:
  OnePoint(const Field& field, const double* point)
      : frame_(field.frame),
        band_(field.band),
        at_{point[0], point[1]},
        q_(frame_.Inwards(at_)),
        reach_(frame_.LengthOutwards(field.band)) {}

  Turns Around(const KurvoRegion& region) {
    for (int i = 0; i < region.count && !is_on_; ++i) Loop(region.loops[i]);
    return is_on_ ? Turns() : Turns(turns_);
  }

 private:
  // Of curves to the left nothing counts, of those beside and above and below only the ends.
  void Loop(const Cvseq& loop) {
    Glances again(kInfinite);
    Vec2 first = {};
    bool is_first = true;
    again.ForEach(loop, [&](int i, const Glance& glance) {
      if (!glance.has_ends || is_on_) return;
      const Vec2 low = glance.low.both(), high = glance.high.both();
      if (is_first) Jump(first = frame_.Inwards(glance.start.both()));
      is_first = false;
      if (PassesBy(low, high)) return;
      Enter(frame_.Inwards(glance.start.both()));
      const Vec2 end = frame_.Inwards(glance.end.both());
      if (low.x - reach_ > at_.x) {
        turns_ += Rise(above_, IsAbove(end));
        Jump(end);
      } else {
        Spans(loop.curves[i], i);
        Enter(end);
      }
    });
    if (!is_first) Enter(first);
    has_last_ = false;
  }

  void Spans(const Curve& curve, int index) {
    const bool is_unbroken = IsUnbroken(curve, reach_);
    ForEachSpan(
        curve, index, frame_,
        [&](const Stretch& stretch) {
          if (is_on_ || !is_unbroken) return !is_on_;
          const Bounds box = stretch.Box();
          return !PassesBy(box.low, box.high);
        },
        [this](const Span& span) {
          Enter(span.Start());
          Count(span, IsAbove(span.End()));
        });
  }

  bool IsAbove(Vec2 p) const { return p.y > q_.y; }

  // Begins anew, at a point.
  void Jump(Vec2 to) {
    last_ = to;
    has_last_ = true;
    above_ = IsAbove(to);
  }

  // What lies to the left counts nothing, nor does what lies above or below, whose ends are all on
  // one side: what follows begins there, but for a joint that does so too.
  bool PassesBy(Vec2 low, Vec2 high) {
    const bool is_left = high.x + reach_ < at_.x;
    if (!is_left && !(low.y - reach_ > at_.y) && !(high.y + reach_ < at_.y)) return false;
    has_last_ = false;
    return true;
  }

  // To the start of the next curve, by a line if that is elsewhere.
  void Enter(Vec2 start) {
    if (is_on_) return;
    if (has_last_ && last_ != start) {
      const Vec2 ends[] = {last_, start};
      Span bridge;
      bridge.points = ends;
      Count(bridge, IsAbove(start));
    }
    Jump(start);
  }

  void Count(const Span& span, bool end_above) {
    if (is_on_) return;
    const Turns turns = CrossingsOf(span, q_, band_, above_, end_above);
    is_on_ = !turns;
    turns_ += turns.value_or(0);
    above_ = end_above;
    last_ = span.End();
  }

  static constexpr double kInfinite = std::numeric_limits<double>::infinity();

  const Frame& frame_;
  const double band_;
  const Vec2 at_, q_;
  const double reach_;     // the band in the caller's unit
  Vec2 last_ = {};         // where the loop has come to,
  bool above_ = false;     // whether that is above q
  bool has_last_ = false;  // and whether it counts
  bool is_on_ = false;
  int turns_ = 0;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoRegionLocate(const KurvoRegion* region, const double* points, int32_t n,
                                 int32_t* where, int32_t* turns, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    Require(n >= 0 && (n == 0 || points), KURVO_ERR_OPTION);
    CheckRegionRecord(region);
    for (std::ptrdiff_t i = 0; i < n; ++i) {
      RequireFinite(points[3 * i]);
      RequireFinite(points[3 * i + 1]);
    }
    const double epsilon = GetEpsilon(g);
    const Bounds box = CheckLoops(*region, epsilon);
    Field field = {Frame(box), 0};
    field.band = field.frame.LengthInwards(std::max(epsilon, kOnShare * field.frame.size()));
    const auto write = [&](std::ptrdiff_t i, const Turns& around) {
      if (turns) turns[i] = around.value_or(0);
      if (!where) return;
      where[i] = !around                                  ? KURVO_REGION_ON
                 : FillRule::Fills(region->rule, *around) ? KURVO_REGION_INSIDE
                                                          : KURVO_REGION_OUTSIDE;
    };
    if (n == 1) return write(0, OnePoint(field, points).Around(*region));
    const ManyPoints many(LoopsOf(*region), field.frame);
    for (std::ptrdiff_t i = 0; i < n; ++i)
      write(i, many.Around(field.frame.Inwards(points + 3 * i), field.band));
  });
}
