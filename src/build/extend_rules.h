// Extension of a curve, type by type.
#pragma once

#include "records/owned_curve.h"
#include "records/views.h"

namespace kurvo {

// How far a curve goes on before its start and behind its end, in its own parameter; a negative
// amount trims. A B-spline counts as running over [0, 1].
struct Extension {
  double start;
  double end;
};

// The curve over the extended range; empty, with the error recorded, when it is refused. `curve` is
// well formed and no error is pending. Throws std::bad_alloc.
OwnedCurve Extended(const Curve& curve, Extension by, GlobalVar& g);

// The same for amounts that are finite, not both 0, and leave a range with a length; `curve` is the
// record that the view shows.
template <std::size_t kDim>
OwnedCurve ExtendSpline(const SplineView<kDim>& spline, Extension by, GlobalVar& g);
OwnedCurve ExtendComposite(const Curve& curve, const CompositeView& composite, Extension by,
                           GlobalVar& g);

}  // namespace kurvo
