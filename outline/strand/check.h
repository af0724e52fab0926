// Records of the caller, looked at once before anything reads them.
#pragma once

#include <kurvo.h>

#include <limits>

#include "base/bounds.h"

namespace kurvo::outline {

inline constexpr int kMostDegree = 63;   // of a curve in an outline
inline constexpr int kMostNesting = 64;  // composites within composites, as the kernel allows
// Far below what could overflow in a difference of two, far above any drawing.
inline constexpr double kGreatestCoordinate = 0.25 * std::numeric_limits<double>::max();

// Adds the control points of a curve to the box; of an arc what AddArc adds. Throws Refusal:
// KURVO_ERR_CURVE for a record that cannot be right (no data, unknown type, counts that contradict
// each other, a degree above kMostDegree, knots that do not ascend, a piece of a composite that
// does not run over [0, 1]), KURVO_ERR_NOT_FINITE for a number that is not finite and
// KURVO_ERR_WEIGHT for a weight of 0 at an end.
void CheckCurve(const Curve& curve, Bounds& box);

// The same of every curve; a null chain, or one with a count and no array, cannot be right.
void CheckChain(const Cvseq* chain, Bounds& box);

// What is refused of the record of a chain itself.
void RequireChain(const Cvseq* chain);

// The parameters over which a checked curve runs.
struct Domain {
  double from, to;
};
Domain DomainOf(const Curve& curve);

template <class T>
const T& BlockOf(const Curve& curve) {
  return *static_cast<const T*>(curve.data);
}

}  // namespace kurvo::outline
