// Where strands cross, when all of them do so clearly.
#pragma once

#include "sweep/events.h"

namespace kurvo::outline {

// How a strand runs: heights, or of a level one sides, times the sign ascend along its source.
struct Course {
  double sign, start, end;

  explicit Course(const Strand& s) {
    const bool rises = s.direction > 0;
    const double low = s.is_flat ? s.x_low : s.y_low, high = s.is_flat ? s.x_high : s.y_high;
    sign = (high > low) == rises ? 1 : -1;
    start = sign * (rises ? low : high);
    end = sign * (rises ? high : low);
  }
};

// A crossing as one of its two strands has it.
struct Cut {
  int32_t strand;
  int32_t other;  // the cut of the other strand
  int32_t turn;   // seen along the source the other one goes to the right (1) or to the left (-1)
  double at;      // on the course of the strand
  Vec2 point;
};

// The crossings of a scene, in order along its loops. False where two strands meet in another way,
// crossings lie near each other or near ends, and where a curve is no longer than some tolerances.
// Cost: O(n + k log k) for k crossings.
bool FindCuts(const Scene& scene, const Array<Strand>& strands, const Events& events,
              Array<Cut>& cuts);

}  // namespace kurvo::outline
