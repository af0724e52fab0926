// Arc length along a curve, both ways.
#pragma once

#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

class ArcLength {
 public:
  ArcLength(Library& library, const OwnedCurve& curve);  // which must outlive it

  double Total() const { return total_; }
  // The parameter that is `length` from the start; an end beyond it. Exact on lines and arcs, also
  // where they are pieces of a composite.
  double ParameterAt(double length) const;

 private:
  struct Stretch {
    double start;  // parameters
    double end;
    double before;  // length of all that is before it
    bool is_even;   // lengths are proportional to parameters
  };

  // What the curve, a piece of curve_ or all of it, has between two parameters of curve_.
  void AddStretches(const Curve& curve, double start, double end);
  void AddStretch(double start, double end, bool is_even);

  Library& library_;
  const OwnedCurve& curve_;
  std::vector<Stretch> stretches_;
  double total_ = 0;
};

}  // namespace kurvo::tools
