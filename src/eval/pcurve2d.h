// The evaluator of one curve record: wraps it for the duration of one call.
#pragma once

#include <cstddef>
#include <type_traits>

#include "foundation/error_codes.h"
#include "foundation/point.h"
#include "records/owned_sequence.h"

namespace kurvo {

// Whether a point lies on a curve within the length tolerance.
enum class Incidence : int { kOn = KURVO_ON_CURVE, kOff = KURVO_OFF_CURVE };

// The point of a curve nearest to a given one.
struct NearestOnCurve {
  double t = 0.0;
  double dist = 0.0;  // planar
};

// Evaluators keep references into the caller's record and `GlobalVar`, own nothing that outlives
// the call, and are never copied. They read the length tolerance from the `GlobalVar` and report
// into it.
class PCurve2D {
 public:
  PCurve2D(const PCurve2D&) = delete;
  PCurve2D& operator=(const PCurve2D&) = delete;

  // The point at parameter t of the curve's domain.
  virtual Vec3 Position(double t) const = 0;

  // Replaces p by its foot on the carrier: the unbounded line, the full circle, or a free-form
  // curve itself. When the degree is too high to find a foot point: the bad-curve error, false, p
  // as it was.
  virtual bool ProjectToCarrier(Vec3& p) const = 0;

  // The parameter of p, written also when p is off the curve. When the degree is too high to find a
  // foot point: the bad-curve error, kOn, and t as it was.
  virtual Incidence Parameter(Vec3 p, double& t) const = 0;

  // Appends the pieces of the curve at `distance` from this one, to the side of normal x tangent,
  // in order; the normal lies along z. Free-form kinds are within `tolerance` of the distance.
  // False when the curve is refused: the pieces are not to be used then. Throws std::bad_alloc.
  virtual bool Offset(Vec3 normal, double distance, double tolerance,
                      OwnedSequence& pieces) const = 0;

  // The point of the curve, within its domain, nearest to p by each kind's own rule. When the
  // degree is too high: the bad-curve error and zeros.
  virtual NearestOnCurve NearestPoint(Vec3 p) const = 0;

 protected:
  explicit PCurve2D(GlobalVar& g) : g_(g) {}
  ~PCurve2D() = default;

  double tol() const { return g_.epsilon; }

  GlobalVar& g_;
};

// Rational curves store Cartesian control points and weights, and are evaluated in homogeneous
// form.
class PRationalCurve2D : public PCurve2D {
 protected:
  explicit PRationalCurve2D(GlobalVar& g) : PCurve2D(g) {}
  ~PRationalCurve2D() = default;
};

// The base of a free-form evaluator by the number of coordinates of its control points.
template <std::size_t kDim>
using EvaluatorBase = std::conditional_t<kDim == 4, PRationalCurve2D, PCurve2D>;

}  // namespace kurvo
