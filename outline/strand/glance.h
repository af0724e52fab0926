// Curves at one look: checks, boxes and ends without the spans.
#pragma once

#include <kurvo.h>

#include <limits>

#include "base/bounds.h"
#include "base/pair.h"
#include "base/refusal.h"
#include "strand/check.h"
#include "strand/joints.h"

namespace kurvo::outline {

// A box that holds a checked curve, in the caller's coordinates: of its control points, of an arc
// the circle; the whole plane where weights of both signs let a curve leave its polygon.
Bounds BoxOf(const Curve& curve);

struct Glance {
  Pair low, high;  // the box
  Pair start, end;
  bool has_ends;
};

// Looks at the curves of a chain one after the other, at little more than the cost of reading them
// where they are Bezier curves, as those of drawings are. Checks them (CheckChain) and their joints
// (RequireJoined), when the last one has been looked at.
class Glances {
 public:
  explicit Glances(double epsilon) : epsilon_(epsilon) {}

  // Calls use(index, glance); boxes of a chain that is refused in the end may hold anything.
  template <class Use>
  void ForEach(const Cvseq& chain, const Use& use) {
    Pair low = low_, high = high_, sum(0.0), before(0.0);
    bool joined = true, has_before = false;
    for (int i = 0; i < chain.count; ++i) {
      const Curve& curve = chain.curves[i];
      Glance glance;
      if (GlanceAtBezier(curve, sum, glance)) {
        low = Least(glance.low, low);
        high = Most(glance.high, high);
      } else {
        const Other other = GlanceAtOther(curve);
        glance = other.glance;
        low = Least(other.low, low);
        high = Most(other.high, high);
      }
      use(i, glance);
      if (!glance.has_ends) continue;
      joined = joined && (!has_before || Meets(before, glance.start));
      if (!has_before) first_ = glance.start.both();
      has_before = true;
      before = glance.end;
    }
    low_ = low;
    high_ = high;
    last_ = before.both();
    has_ends_ = has_before;
    if (!IsSound(sum.x() + sum.y())) CheckAgain(chain);
    Require(joined, KURVO_ERR_CHAIN_ENDS);
  }

  // Of all chains: that of CheckChain.
  Bounds box() const;
  // Whether the last chain closes.
  bool IsClosed() const { return !has_ends_ || Meet(last_, first_, epsilon_); }

 private:
  // Squares that vanish or overflow fail, and the slow way tells.
  bool Meets(Pair a, Pair b) const {
    return SquaredLength(a - b) < epsilon_ * epsilon_ || Meet(a.both(), b.both(), epsilon_);
  }

  // Adds the coordinates to the sum: it is not a number where one of them is not.
  static bool GlanceAtBezier(const Curve& curve, Pair& sum, Glance& glance) {
    if (curve.type != CV_BEZIER || !curve.data) return false;
    const auto& bezier = BlockOf<KurvoBezier>(curve);
    if (!bezier.points || bezier.degree < 0 || bezier.degree > kMostDegree) return false;
    const double* last = bezier.points[bezier.degree];
    glance.start = Pair(*bezier.points);
    glance.end = Pair(last);
    glance.low = Least(glance.end, glance.start);
    glance.high = Most(glance.end, glance.start);
    Pair own = glance.start + glance.end;
    for (const double* p = *bezier.points + 3; p < last; p += 3) {
      const Pair point(p);
      glance.low = Least(point, glance.low);
      glance.high = Most(point, glance.high);
      own = own + point;
    }
    sum = sum + own;
    glance.has_ends = true;
    return true;
  }

  struct Other {
    Glance glance;
    Pair low, high;  // of the control points, whatever holds the curve
  };
  static Other GlanceAtOther(const Curve& curve);
  bool IsSound(double sum) const;
  static void CheckAgain(const Cvseq& chain);

  const double epsilon_;
  Pair low_ = Pair(std::numeric_limits<double>::infinity());
  Pair high_ = Pair(-std::numeric_limits<double>::infinity());
  Vec2 first_ = {}, last_ = {};
  bool has_ends_ = false;
};

}  // namespace kurvo::outline
