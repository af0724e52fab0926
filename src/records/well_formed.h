// The check of a whole curve before it is taken apart.
#pragma once

#include "records/views.h"

namespace kurvo {

// False for a record that cannot be right or evaluated, also as a piece: unknown type, missing
// data, impossible sizes, a B-spline of too high an order, composites nested too deep. Cost: linear
// in the pieces of composites.
bool WellFormed(const Curve& curve);

}  // namespace kurvo
