// Where two graphs come near each other: the search, for whatever is a graph.
#pragma once

#include <algorithm>
#include <cmath>

#include "base/memory.h"
#include "pair/alongside.h"
#include "pair/graph.h"

namespace kurvo::outline {

// Heights between which two graphs are near.
struct NearHeights {
  double low, high;
};

// A height, and where two graphs have it.
struct CommonLevel {
  double height, a, b;
};

// What a search goes by, lengths.
struct NearLimits {
  SideReach sides;      // when sides are apart, and when near
  double least_rise;    // stretches that are no higher are near, and closer ones are one
  double pad;           // heights that cuts leave beside what they keep
  double height_error;  // of a graph at a level
};

// Heights are halved, and cut back to where the chords and the ranges of the bends allow it (a fat
// line for functions; Sederberg and Nishita, Curve intersection using Bezier clipping, 1990), until
// a stretch is near as a whole. Curves that run alongside each other are compared as formulas, so
// that near ones need no flattening. G has LevelAt, also between known levels, Between and
// circle(), as Graph does; Rules has
//   bool TakeWork()                  whether one more stretch may be looked at
//   bool NearAtLimit()               whether all of a stretch that may not is near, or its ends
//   bool Decide(a, b, difference)    whether more is known of a stretch
template <class G, class Rules>
class NearSearch {
 public:
  NearSearch(const G& a, const G& b, const NearLimits& limits, Rules& rules,
             Array<NearHeights>& found)
      : a_(a), b_(b), limits_(limits), rules_(rules), found_(found), first_(found.size()) {}

  void Run(const CommonLevel& bottom, const CommonLevel& top) { Run(bottom, top, kMostDepth); }

  void Add(double low, double high) {
    if (found_.size() > first_ && low <= found_.back().high + limits_.least_rise) {
      found_.back().high = std::max(found_.back().high, high);
    } else {
      found_.push_back({low, high});
    }
  }

 private:
  static constexpr int kMostDepth = 90;
  static constexpr double kUseful = 0.6;  // of the heights: a cut that leaves more is a halving

  void Run(const CommonLevel& bottom, const CommonLevel& top, int depth) {
    const double low = bottom.height, high = top.height;
    const Stretch a = a_.Between(low, high, bottom.a, top.a);
    const Stretch b = b_.Between(low, high, bottom.b, top.b);
    const SideDifference d(a, b);
    if (d.Low() > limits_.sides.apart || d.High() < -limits_.sides.apart) return;
    const double rise = high - low;
    const bool is_near = d.High() <= limits_.sides.near && d.Low() >= -limits_.sides.near;
    if (is_near || rise <= limits_.least_rise || depth == 0) return Add(low, high);
    if (!rules_.TakeWork()) return AddAtLimit(low, high);
    const Relation known = Alongside(a_.circle(), a, b_.circle(), b, limits_.sides);
    if (known.verdict == Verdict::kApart) return;
    if (known.verdict == Verdict::kNear) return Add(low, high);
    if (rules_.Decide(a, b, d, *this)) return;

    // Where the chords' difference, in shares of the rise, lies within what the bends allow.
    double from = 0, to = 1;
    const double change = d.at_high - d.at_low;
    if (change != 0) {
      const double t0 = (-limits_.sides.apart - d.most - d.at_low) / change;
      const double t1 = (limits_.sides.apart - d.least - d.at_low) / change;
      from = std::max(from, std::min(t0, t1));
      to = std::min(to, std::max(t0, t1));
    }
    from = std::max(from, (known.low - low) / rise);
    to = std::min(to, (known.high - low) / rise);
    const double pad = 0x1p-44 + limits_.pad / rise;  // rounding of what was just computed
    from = std::max(from - pad, 0.0);
    to = std::min(to + pad, 1.0);
    if (from > to) return;
    if (to - from < kUseful) {
      return Run(from > 0 ? Between(bottom, top, low + from * rise) : bottom,
                 to < 1 ? Between(bottom, top, low + to * rise) : top, depth - 1);
    }
    const double height = 0.5 * (low + high);
    if (!(height > low && height < high)) return Add(low, high);
    const CommonLevel middle = Between(bottom, top, height);
    Run(bottom, middle, depth - 1);
    Run(middle, top, depth - 1);
  }

  CommonLevel Between(const CommonLevel& bottom, const CommonLevel& top, double height) const {
    return {
        height,
        a_.LevelAt(height, {bottom.height, bottom.a}, {top.height, top.a}, limits_.height_error),
        b_.LevelAt(height, {bottom.height, bottom.b}, {top.height, top.b}, limits_.height_error)};
  }

  void AddAtLimit(double low, double high) {
    if (rules_.NearAtLimit()) return Add(low, high);
    Add(low, low);
    Add(high, high);
  }

  const G& a_;
  const G& b_;
  const NearLimits limits_;
  Rules& rules_;
  Array<NearHeights>& found_;
  const std::size_t first_;
};

}  // namespace kurvo::outline
