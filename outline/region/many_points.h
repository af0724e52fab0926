// How often loops go around points: a tree over the boxes of their spans.
#pragma once

#include <kurvo.h>

#include <limits>
#include <optional>
#include <span>

#include "base/memory.h"
#include "strand/box_tree.h"
#include "strand/frame.h"
#include "strand/span.h"

namespace kurvo::outline {

// How often loops go around a point; nothing when it is on one.
using Turns = std::optional<int>;

inline int Rise(bool from_above, bool to_above) { return int{to_above} - int{from_above}; }

// The spans of all loops, with lines across their joints.
class LoopSpans {
 public:
  LoopSpans(std::span<const Cvseq> loops, const Frame& frame);

  const Array<Span>& spans() const { return spans_; }

 private:
  void Bridge(Vec2 from, Vec2 to);

  Array<Span> spans_;
  Arena arena_;
};

class ManyPoints {
 public:
  // Of checked loops.
  ManyPoints(std::span<const Cvseq> loops, const Frame& frame);

  // Points no farther from a loop than the band are on it; both in the frame.
  Turns Around(Vec2 q, double band) const;

 private:
  // What a run of spans crosses of a ray that starts to the left of them all: for each y in `up`
  // that is above it one, for each y in `down` one less. The ends of neighbours cancel, so that at
  // most two of either are left: of a loop that the run cuts at its beginning, and of one at its
  // end.
  struct Rises {
    static constexpr double kNone = -std::numeric_limits<double>::infinity();  // never above
    double up[2] = {kNone, kNone}, down[2] = {kNone, kNone};

    int At(double y) const { return Rise(down[0] > y, up[0] > y) + Rise(down[1] > y, up[1] > y); }
  };
  static Rises Joined(const Rises* runs);

  const LoopSpans loops_;
  const BoxTree tree_;
  Array<Rises> rises_;  // of the children of every node
};

}  // namespace kurvo::outline
