// The offset of the free-form evaluators.
#pragma once

#include "foundation/error_codes.h"
#include "foundation/point.h"
#include "records/owned_sequence.h"
#include "records/views.h"

namespace kurvo {

// Appends the offset of a Bezier curve, or of the Bezier piece of each span of a B-spline: the
// arguments are those of PCurve2D::Offset. False, with the bad-curve error, for a degree above
// kMaxOffsetDegree. Throws std::bad_alloc.
template <std::size_t kDim>
bool OffsetFreeForm(const BezierView<kDim>& bezier, Vec3 normal, double distance, double tolerance,
                    OwnedSequence& pieces, GlobalVar& g);
template <std::size_t kDim>
bool OffsetFreeForm(const SplineView<kDim>& spline, Vec3 normal, double distance, double tolerance,
                    OwnedSequence& pieces, GlobalVar& g);

}  // namespace kurvo
