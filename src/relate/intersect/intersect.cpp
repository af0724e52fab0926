// The intersection of any two curves.
#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/error_codes.h"
#include "foundation/guard.h"
#include "records/domain.h"
#include "records/pieces.h"
#include "relate/intersect/merge_crossings.h"
#include "relate/intersect/pair_crossings.h"
#include "relate/intersect/within_ends.h"

namespace kurvo {
namespace {

constexpr int32_t kBothBounded = 3;

Bounded BoundedBy(int32_t mode) {
  return {mode == 1 || mode == kBothBounded, mode == 2 || mode == kBothBounded};
}

// A composite of one piece has no box of its own: its piece has one.
bool BoxOf(const Curve& curve, Box box, GlobalVar& g) {
  box[0] = std::numeric_limits<double>::quiet_NaN();
  KurvocvBoundBox(&OnlyPieceOf(curve), box, &g);
  return !std::isnan(box[0]);
}

bool BoxesMeet(const Curve& a, const Curve& b, GlobalVar& g) {
  Box box_a, box_b;
  if (!BoxOf(a, box_a, g) || !BoxOf(b, box_b, g)) return true;
  return KurvoclBoxBox(box_a, box_b, &g) != 0;
}

// The parameter at which a curve passes through a point. Above the degrees whose foot points can be
// found, that of the nearest point of the curve, when the one that has collapsed comes up to it.
bool Passes(const Curve& curve, const Curve& collapsed, const Coord point, double& t,
            GlobalVar& g) {
  const int32_t pending = g.error;
  const int incidence = KurvocvParameter(&curve, point, &t, &g);
  if (!ErrorPending(g)) return incidence == KURVO_ON_CURVE;
  g.error = pending;
  double own = 0.0;
  const double dist = KurvocvDistCurve(&collapsed, &curve, &own, &t, &g);
  return g.epsilon >= dist && !ErrorPending(g);
}

// A curve that has collapsed to `point` meets another one where that passes through the point.
Common CrossPoint(const Curve& collapsed, const Coord point, const Curve& curve, bool first,
                  GlobalVar& g, Crossings& found) {
  double t = 0.0;
  if (!Passes(curve, collapsed, point, t, g)) return Common::kNothing;
  const double own = DomainOf(collapsed).start;
  found.push_back(first ? Crossing{own, t} : Crossing{t, own});
  return Common::kPoints;
}

bool IsElementary(const Curve& curve) { return curve.type == CV_LINE || curve.type == CV_ARC; }

// The parameter on `curve` of an end of `other`; false when that lies off the curve.
bool FindEnd(const Curve& other, double end, const Curve& curve, double& t, GlobalVar& g) {
  Coord p;
  (end == 0.0 ? KurvocvStartPoint : KurvocvEndPoint)(&other, p, &g);
  return KurvocvParameter(&curve, p, &t, &g) == KURVO_ON_CURVE && !ErrorPending(g);
}

// A line and a circle, or two circles, that touch have one point in common for the many within the
// tolerance, which are far apart where the curves bend little. When that point lies beyond an end
// of a bounded arc or segment, replaces it by the nearest end that lies on the other curve, if any.
void MoveTouchToEnds(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g,
                     Crossings& found) {
  if (found.size() != 1 || !IsElementary(a) || !IsElementary(b)) return;
  const Crossing touch = found[0];
  KeepBounded(a, b, bounded, g, found);
  if (!found.empty()) return;
  const auto offer = [&](const Crossing& at) {
    const double way = std::fabs(at.first - touch.first);
    if (found.empty()) found.push_back(at);
    if (way < std::fabs(found[0].first - touch.first)) found[0] = at;
  };
  for (const double end : {0.0, 1.0}) {
    double t = 0.0;
    if (bounded.first && FindEnd(a, end, b, t, g)) offer({end, t});
    if (bounded.second && FindEnd(b, end, a, t, g)) offer({t, end});
  }
}

void Swap(Crossings& crossings) {
  for (Crossing& at : crossings) std::swap(at.first, at.second);
}

// Dispatches by the kinds of both curves. Between two elementary curves the points stay in the
// order of their construction, otherwise they are merged and ascend along the first curve.
class Pairing {
 public:
  Pairing(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g, Crossings& found)
      : a_(a), b_(b), bounded_(bounded), g_(g), found_(found) {}

  Common Run() const {
    return VisitCurve(a_, Overloaded{[&](const KurvoLine& line) { return WithLine(line); },
                                     [&](const KurvoArc& arc) { return WithArc(arc); },
                                     [&](const auto&) { return WithFreeForm(); },
                                     [&](Refused) { return Nothing(); }});
  }

 private:
  Common Nothing() const { return Refuse(g_, KURVO_ERR_CURVE, Common::kNothing); }

  Common Merged(Common common) const {
    if (common == Common::kPoints) MergeCrossings(a_, b_, g_, found_);
    return common;
  }

  Common Swapped(Common common) const {
    Swap(found_);
    return common;
  }

  Common WithLine(const KurvoLine& line) const {
    return VisitCurve(
        b_, Overloaded{[&](const KurvoLine& other) {
                         return CrossLines(line, other, bounded_, g_, found_);
                       },
                       [&](const KurvoArc& arc) { return CrossLineArc(line, arc, g_, found_); },
                       [&](const auto&) {
                         return Merged(CrossLineFreeForm(line, b_, bounded_.first, g_, found_));
                       },
                       [&](Refused) { return Nothing(); }});
  }

  Common WithArc(const KurvoArc& arc) const {
    return VisitCurve(
        b_, Overloaded{
                [&](const KurvoLine& line) { return ArcLine(line, arc); },
                [&](const KurvoArc& other) { return CrossArcs(arc, other, bounded_, g_, found_); },
                [&](const auto&) {
                  return Merged(CrossArcFreeForm(arc, b_, bounded_.first, g_, found_));
                },
                [&](Refused) { return Nothing(); }});
  }

  // Ascending along the first curve, the arc.
  Common ArcLine(const KurvoLine& line, const KurvoArc& arc) const {
    const Common common = Swapped(CrossLineArc(line, arc, g_, found_));
    if (found_.size() == 2 && found_[0].first > found_[1].first) {
      std::swap(found_[0].first, found_[1].first);
      std::swap(found_[0].second, found_[1].second);
    }
    return common;
  }

  Common WithFreeForm() const {
    return VisitCurve(
        b_, Overloaded{
                [&](const KurvoLine& line) {
                  return Merged(Swapped(CrossLineFreeForm(line, a_, bounded_.second, g_, found_)));
                },
                [&](const KurvoArc& arc) {
                  return Merged(Swapped(CrossArcFreeForm(arc, a_, bounded_.second, g_, found_)));
                },
                [&](const auto&) { return Merged(CrossFreeForms(a_, b_, g_, found_)); },
                [&](Refused) { return Nothing(); }});
  }

  const Curve& a_;
  const Curve& b_;
  const Bounded bounded_;
  GlobalVar& g_;
  Crossings& found_;
};

Common FindCommon(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g, Crossings& found) {
  if (bounded.both() && !BoxesMeet(a, b, g)) return Common::kNothing;
  Coord point_a, point_b;
  const bool collapsed_a = KurvocvDegenerate(&a, point_a, &g) != 0;
  const bool collapsed_b = KurvocvDegenerate(&b, point_b, &g) != 0;
  if (ErrorPending(g) || (collapsed_a && collapsed_b)) return Common::kNothing;
  if (collapsed_a) return CrossPoint(a, point_a, b, true, g, found);
  if (collapsed_b) return CrossPoint(b, point_b, a, false, g, found);
  const Common common = Pairing(a, b, bounded, g, found).Run();
  return ErrorPending(g) ? Common::kNothing : common;
}

bool StoreParameters(const Crossings& crossings, double Crossing::*parameter, CvParam* list) {
  if (!list) return true;
  list->count = static_cast<int32_t>(crossings.size());
  KurvocrMallocCvParam(list);
  if (!list->values) return false;
  std::transform(crossings.begin(), crossings.end(), list->values,
                 [parameter](const Crossing& at) { return at.*parameter; });
  return true;
}

uint32_t Intersect(const Curve& a, const Curve& b, CvParam* pa, CvParam* pb, int32_t mode,
                   GlobalVar& g) {
  const Bounded bounded = BoundedBy(mode);
  Crossings found;
  const Common common = FindCommon(a, b, bounded, g, found);
  if (common != Common::kPoints) return static_cast<uint32_t>(common);
  MoveTouchToEnds(a, b, bounded, g, found);
  KeepBounded(a, b, bounded, g, found);
  if (found.empty()) return KURVO_NOTHING;
  if (!StoreParameters(found, &Crossing::first, pa) ||
      !StoreParameters(found, &Crossing::second, pb)) {
    KurvocrFreeCvParam(pa);
    KurvocrFreeCvParam(pb);
    Fail(g, KURVO_ERR_MEMORY);
    return KURVO_NOTHING;
  }
  return KURVO_FOUND;
}

}  // namespace
}  // namespace kurvo

extern "C" uint32_t KurvocrCurveCurve(const Curve* a, const Curve* b, CvParam* pa, CvParam* pb,
                                      int32_t mode, GlobalVar* g) noexcept {
  KurvocrInitCvParam(pa);
  KurvocrInitCvParam(pb);
  if (kurvo::ErrorPending(*g) || !a || !b || !a->data || !b->data) return KURVO_REFUSED;
  if (!kurvo::IsTypeCode(a->type) || !kurvo::IsTypeCode(b->type)) {
    kurvo::Fail(*g, KURVO_ERR_CURVE);
    return KURVO_NOTHING;
  }
  return kurvo::Guard(*g, static_cast<uint32_t>(KURVO_NOTHING),
                      [&] { return kurvo::Intersect(*a, *b, pa, pb, mode, *g); });
}
