// Cubics one after the other alongside a stretch of a cubic.
#pragma once

#include "base/function_ref.h"
#include "fit/offset_breaks.h"
#include "fit/offset_cubic.h"

namespace kurvo::outline {

// Cubics, each between two stops.
struct SideRow {
  Breaks stops;
  SideFit fits[Breaks::kMost];
  bool fit_all = false;  // each is within the tolerance

  std::size_t count() const { return stops.count - 1; }
};

// Fits a cubic between any two neighbours of the stops; look(u) is what the side is there.
void FitBetween(const CubicSide& side, const Breaks& stops, FunctionRef<CubicSide::At(double)> look,
                double tol, SideRow& row);

// How many cubics would do in place of one that is so far off, by an error that falls with the
// sixth power; below 1 where it does for more than it is.
double CubicsFor(double off, double tol);

// As many stops as a row's errors foretell, so that those between them would be alike.
Breaks Spread(const SideRow& row, double tol);

}  // namespace kurvo::outline
