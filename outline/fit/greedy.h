// The longest piece that fits, then the next one.
#pragma once

#include <algorithm>
#include <cmath>

namespace kurvo::outline {

// How a piece over a stretch did: whether it keeps the deviation, and about what it needs; 0 where
// that is not known.
struct Attempt {
  bool fits;
  double error;
};

// Covers [0, end]: attempt(from, to, piece) tries a piece, take(piece, to) takes the longest found
// to fit, by steps that grow or shrink as its error foretells, which goes with the step to the
// power of `order`, then between the longest that fits and the shortest that does not. The attempt
// must fit where the stretch is a point but for rounding.
template <class Piece, class Try, class Take>
void FitGreedily(double end, double deviation, double order, const Try& attempt, const Take& take) {
  constexpr double kNear = 0.96;     // of the deviation: a piece that needs it is long enough
  constexpr double kAim = 0.98;      // of the deviation, for the next step
  constexpr double kPrecise = 0.01;  // of a step
  constexpr double kSnap = 0.05;     // of a step: an end so near is tried itself
  constexpr int kMostGrowing = 12;   // tries that look for a longer piece
  constexpr int kMostTries = 64;     // in all
  constexpr double kLeastStep = 0x1p-44;
  constexpr int kMostPieces = 1 << 17;  // then pieces are taken that are long enough to end soon
  double step = 1;
  int pieces = 0;
  for (double from = 0; from < end;) {
    Piece best{}, piece{};
    double low = from, high = 2 * end + 1;
    double low_error = 0, high_error = 0;
    double to = std::min(end, from + step);
    for (int tries = 0; tries < (low > from ? kMostGrowing : kMostTries); ++tries) {
      const double width = to - from;
      const Attempt result = attempt(from, to, piece);
      double power = order, factor = result.fits ? 2 : 0.5;
      if (result.fits) {
        best = piece;
        low = to;
        low_error = result.error;
        if (to >= end || result.error >= kNear * deviation) break;
      } else {
        high = to;
        high_error = result.error;
      }
      // Between two errors by the power that they show.
      if (low_error > 0 && high_error > low_error)
        power = std::log(high_error / low_error) / std::log((high - from) / (low - from));
      if (result.error > 0)
        factor = std::clamp(std::pow(kAim * deviation / result.error, 1 / power), 0.2, 4.0);
      factor = result.fits ? std::max(factor, 1 + kPrecise) : std::min(factor, 1 - kPrecise);
      double next = from + factor * width;
      if (low > from && high <= end) {
        if (kPrecise * (low - from) >= high - low) break;
        const double margin = 0.1 * (high - low);
        next =
            result.error > 0 ? std::clamp(next, low + margin, high - margin) : 0.5 * (low + high);
      }
      to = next >= end - kSnap * width && high > end ? end : std::min(next, end);
    }
    if (!(low > from)) {
      best = piece;
      low = std::min(end, std::max(to, from + kLeastStep));
    }
    if (++pieces > kMostPieces && low < end) {
      low = std::min(end, std::max(low, from + end / kMostPieces));
      attempt(from, low, best);
    }
    take(best, low);
    step = std::max(low - from, kLeastStep);
    from = low;
  }
}

}  // namespace kurvo::outline
