// Whether two curves are the same, control point by control point.
#pragma once

#include <cstddef>

#include "records/views.h"

namespace kurvo {

// True when the control points agree within the tolerances, after the curve of lower degree has
// been raised to the degree of the other. Throws std::bad_alloc when the degrees differ.
template <std::size_t kDim>
bool SameBezier(const BezierView<kDim>& a, const BezierView<kDim>& b, const GlobalVar& g);

}  // namespace kurvo
