// How a curve turns around a point.
#pragma once

#include "foundation/point.h"
#include "foundation/work_budget.h"

namespace kurvo {

// For the curves of one chain: some hundredths of a second. Beyond
// it the chord stands for the curve, and the first quadrature for the area.
constexpr int64_t kWindingWork = int64_t{1} << 25;

// Both of curves other than composites, which count as 0. They record the bad-curve error, and are
// 0, for a record that cannot be right and a degree above 4095. Throw std::bad_alloc.

// The angle, in radians, that the direction from q to a point of the curve turns by from the start
// to the end of the curve, counter-clockwise positive. On the curve itself the turn there is left
// out.
double WindingAngle(const Curve& curve, Vec2 q, WorkBudget& work, GlobalVar& g);

// The area that the line from q to a point of the curve sweeps over, counter-clockwise positive.
double SweptArea(const Curve& curve, Vec2 q, WorkBudget& work, GlobalVar& g);

}  // namespace kurvo
