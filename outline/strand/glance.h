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
    Seen seen = {low_, high_, Pair(0.0), Pair(0.0), true};
    bool has_before = false;
    for (int i = 0; i < chain.count; ++i) {
      if (has_before) i = PassBeziers(chain, i, seen, use);
      if (i == chain.count) break;
      Glance glance;
      if (!GlanceAtBezier(chain.curves[i], seen, glance)) {
        const Other other = GlanceAtOther(chain.curves[i]);
        glance = other.glance;
        seen.Add(other.low, other.high);
      }
      use(i, glance);
      if (!glance.has_ends) continue;
      if (has_before)
        seen.Join(glance, epsilon_ * epsilon_);
      else
        first_ = glance.start.both();
      has_before = true;
      seen.before = glance.end;
    }
    low_ = seen.low;
    high_ = seen.high;
    last_ = seen.before.both();
    has_ends_ = has_before;
    if (!IsSound(seen.sum.x() + seen.sum.y())) CheckAgain(chain);
    if (!seen.joined) RequireJoined(chain, epsilon_);
  }

  // Of all chains: that of CheckChain.
  Bounds box() const;
  // Whether the last chain closes.
  bool IsClosed() const { return !has_ends_ || Meet(last_, first_, epsilon_); }

 private:
  // Of the curves so far.
  struct Seen {
    Pair low, high;  // of control points
    Pair sum;        // of their coordinates: not a number where one of them is not
    Pair before;     // the last end
    bool joined;     // false also where squares vanish or overflow

    void Add(Pair least, Pair most) {
      low = Least(least, low);
      high = Most(most, high);
    }
    void Join(const Glance& next, double square) {
      joined &= SquaredLength(before - next.start) < square;
    }
  };

  // Passes over Bezier curves. Result: the index of what comes after them. Nothing is called here,
  // so that all that is known so far stays in registers.
  template <class Use>
  int PassBeziers(const Cvseq& chain, int i, Seen& known, const Use& use) const {
    Seen seen = known;
    const double square = epsilon_ * epsilon_;
    Glance glance;
    for (; i < chain.count && GlanceAtBezier(chain.curves[i], seen, glance); ++i) {
      use(i, glance);
      seen.Join(glance, square);
      seen.before = glance.end;
    }
    known = seen;
    return i;
  }

  static bool GlanceAtBezier(const Curve& curve, Seen& seen, Glance& glance) {
    constexpr int kUsual = 3;  // degree, for which the loop is made plain
    if (curve.type != CV_BEZIER || !curve.data) return false;
    const auto& bezier = BlockOf<KurvoBezier>(curve);
    if (!bezier.points || bezier.degree < 0 || bezier.degree > kMostDegree) return false;
    const double* first = *bezier.points;
    if (bezier.degree == kUsual)
      GlanceAtPoints(first, first + 3 * kUsual, seen, glance);
    else
      GlanceAtPoints(first, first + 3 * std::ptrdiff_t{bezier.degree}, seen, glance);
    return true;
  }

  static void GlanceAtPoints(const double* first, const double* last, Seen& seen, Glance& glance) {
    glance.start = Pair(first);
    glance.end = Pair(last);
    glance.low = Least(glance.end, glance.start);
    glance.high = Most(glance.end, glance.start);
    Pair sum = glance.start + glance.end;
    for (const double* p = first + 3; p < last; p += 3) {
      const Pair point(p);
      glance.low = Least(point, glance.low);
      glance.high = Most(point, glance.high);
      sum = sum + point;
    }
    glance.has_ends = true;
    seen.sum = seen.sum + sum;
    seen.Add(glance.low, glance.high);
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
