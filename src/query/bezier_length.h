// The length of a Bezier curve by halving.
#pragma once

#include "records/views.h"

namespace kurvo {

// A pass of halving costs O(degree^2) for each piece: degrees above this are refused, so that none
// takes minutes.
constexpr int32_t kMaxHalvedDegree = 1023;

// What a Bezier curve is measured as: as it is, or, being a member of a longer curve, as 16 pieces,
// each of which settles by itself. Fixed behaviour: the two differ. Do not unify.
enum class Measure { kWhole, kSixteenths };

// The length over [0, 1]. Up to degree 6, rational ones 4, nothing is allocated; higher degrees
// need memory for up to 1024 pieces, as many as it takes. Throws std::bad_alloc. Requires degree <=
// kMaxHalvedDegree.
template <std::size_t kDim>
double BezierLength(const BezierView<kDim>& bezier, Measure measure);

}  // namespace kurvo
