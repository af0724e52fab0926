// Curves of any type cut into pieces.
#pragma once

#include "foundation/high_order_work.h"
#include "records/owned_curve.h"

namespace kurvo {

// Writes the n + 1 pieces of a curve between n parameters, which ascend from the start to the end
// of its domain; a piece without length is a point curve. Bezier kinds are cut by de Casteljau's
// algorithm, whatever their degree up to kMaxSplitDegree. In a composite a cut within `param_tol`
// of the end of a piece falls between the pieces. `curve` is well formed and no error is pending.
// False, with whatever has been written, when some piece cannot be cut there: a B-spline whose
// knots are not in order, or whose domain as a piece is not [0, 1], too high a degree, more
// than `work` allows, widths without a sum. Throws std::bad_alloc.
bool CutCurve(const Curve& curve, const double* t, int32_t n, double param_tol, OwnedCurve* pieces,
              HighOrderWork& work, GlobalVar& g);

}  // namespace kurvo
