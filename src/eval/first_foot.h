// The first foot point on a plain Bezier curve of low degree, without the others.
#pragma once

#include "foundation/point.h"
#include "records/views.h"

namespace kurvo {

struct FirstFoot {
  enum { kAt, kNowhere, kInDoubt } found = kInDoubt;
  double t = 0.0;  // in [0, 1]
};

// Where the vector from p to the curve is normal to it first, as FootRoots() finds it: in doubt
// where rounding, a multiple root, another root next to it or one next to an end of [0, 1] could
// make a difference, and for degrees other than 2 and 3.
FirstFoot FirstFootOn(const BezierView<3>& bezier, Vec2 p);
FirstFoot FirstFootOn(const BezierView<4>& bezier, Vec2 p) = delete;

}  // namespace kurvo
