#include "fit/side_row.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {

void FitBetween(const CubicSide& side, const Breaks& stops, FunctionRef<CubicSide::At(double)> look,
                double tol, SideRow& row) {
  row.stops = stops;
  row.fit_all = true;
  CubicSide::At before = look(stops.at[0]);
  for (std::size_t i = 0; i < row.count(); ++i) {
    const CubicSide::At after = look(stops.at[i + 1]);
    row.fits[i] = FitSide(side, before, stops.at[i], after, stops.at[i + 1], tol);
    row.fit_all = row.fit_all && tol >= row.fits[i].off;
    before = after;
  }
}

double CubicsFor(double off, double tol) {
  constexpr double kAim = 0.8;  // of the tolerance
  constexpr double kLeast = 0.1, kMost = 8, kUnknown = 2;
  if (!std::isfinite(off)) return kUnknown;
  return std::clamp(std::pow(off / (kAim * tol), 1.0 / 6), kLeast, kMost);
}

Breaks Spread(const SideRow& row, double tol) {
  Breaks needed, stops;
  needed.Add(0);  // cubics up to each stop
  for (std::size_t i = 0; i < row.count(); ++i)
    needed.Add(needed.at[i] + CubicsFor(row.fits[i].off, tol));
  const double all = needed.at[row.count()], last = row.stops.at[row.count()];
  const int count = static_cast<int>(std::min(std::ceil(all), Breaks::kMost - 1.0));
  stops.Add(row.stops.at[0]);
  std::size_t i = 1;
  for (int k = 1; k < count; ++k) {
    const double want = all * k / count;
    while (i < row.count() && needed.at[i] < want) ++i;
    const double share = (want - needed.at[i - 1]) / (needed.at[i] - needed.at[i - 1]);
    const double before = row.stops.at[i - 1];
    const double stop = before + share * (row.stops.at[i] - before);
    if (stop > stops.at[stops.count - 1] && stop < last) stops.Add(stop);
  }
  stops.Add(last);
  return stops;
}

}  // namespace kurvo::outline
