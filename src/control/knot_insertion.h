// Parts of a B-spline, cut out and continued by knot insertion.
#pragma once

#include <optional>

#include "control/knot_spans.h"
#include "records/owned_curve.h"

namespace kurvo {

// The place of a parameter c among the knots: u[left] is the last knot before c, u[right] the first
// one after it, and the knots between them are c. Outside the domain they are the ends of the span
// whose polynomials are continued to c.
struct KnotCut {
  double c;
  int32_t left;   // from order - 1 on
  int32_t right;  // to the number of control points

  int32_t multiplicity() const { return right - left - 1; }
};

// Nothing for NaN, for a domain without length, and where the knots around c are not ascending.
std::optional<KnotCut> FindCut(const KnotVector& knots, double c);

// The part of a B-spline from one cut to another, an end of the curve as it is where there is none:
// clamped at each cut by Boehm's insertion (Computer-Aided Design 12, 1980) of its knot up to full
// multiplicity. Knots keep their values. Control points whose polynomials do not change stay to
// the bit. Empty for knots not in order. Cost: O(part + order^2), however long the curve is.
template <std::size_t kDim>
OwnedCurve SplinePart(const SplineView<kDim>& spline, const std::optional<KnotCut>& start,
                      const std::optional<KnotCut>& end);

}  // namespace kurvo
