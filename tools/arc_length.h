// Arc length along a curve, both ways.
#pragma once

#include <array>

#include "library.h"

namespace kurvo::tools {

class ArcLength {
 public:
  ArcLength(Library& library, const OwnedCurve& curve);  // which must outlive it

  double Total() const { return lengths_.back(); }
  // The parameter that is `length` from the start; an end beyond it.
  double ParameterAt(double length) const;

 private:
  // Measured one by one: the library stops at a thousandth of a unit, which is much for a short
  // curve and little for a short stretch of it.
  static constexpr int kStretches = 128;

  Library& library_;
  const OwnedCurve& curve_;
  std::array<double, kStretches + 1> lengths_;  // from the start to the end of each stretch
};

}  // namespace kurvo::tools
