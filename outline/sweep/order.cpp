#include "sweep/order.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {
namespace {

// Of tol:
constexpr double kWrong = 2;        // strands that stand further the wrong way round changed places
constexpr double kAtBeam = 0.5;     // where that happens so near to a beam, it happens there
constexpr double kExact = 0x1p-6;   // of the height of the change
constexpr double kBeside = 0x1p-3;  // heights over which the steeper strand is told
constexpr int kMostSteps = 100;

}  // namespace

void OrderCheck::CheckRow(int32_t k, bool is_top, const Row& row, const Misfit& misfit) {
  const Beam& beam = stage_.beams[k];
  if (misfit.by > kWrong * stage_.tol()) Bisect(row, misfit, is_top ? beam.low : beam.high, k);
}

// The height at which left and right change places, between one at which they have not and one at
// which they have.
bool OrderCheck::FindSwap(const Strand& left, const Strand& right, double ordered, double swapped,
                          double& height) const {
  const auto is_swapped = [&](double y) { return left.At(y) > right.At(y); };
  if (is_swapped(ordered)) {
    // Their common end on that side is the farthest that can be looked at.
    ordered = swapped >= ordered ? std::max(left.y_low, right.y_low)
                                 : std::min(left.y_high, right.y_high);
    if (left.At(ordered) >= right.At(ordered)) return false;
  }
  for (int step = 0; step < kMostSteps && std::fabs(swapped - ordered) > kExact * stage_.tol();
       ++step) {
    height = 0.5 * (ordered + swapped);
    (is_swapped(height) ? swapped : ordered) = height;
  }
  height = 0.5 * (ordered + swapped);
  return true;
}

void OrderCheck::Bisect(const Row& row, const Misfit& misfit, double height, int32_t k) {
  // The two strands that are farthest the wrong way round.
  const Bundle &a = row.bundles[misfit.left], &b = row.bundles[misfit.right];
  int32_t left = -1, right = -1;
  double most = 0;
  for (const int32_t i : row.MembersOf(a))
    for (const int32_t j : row.MembersOf(b)) {
      const double by = stage_.strand(i).At(height) - stage_.strand(j).At(height);
      if (!(by > most)) continue;
      most = by;
      left = i;
      right = j;
    }
  double swap;
  const double ordered = std::max(a.middle, b.middle);
  if (left < 0 || !FindSwap(stage_.strand(left), stage_.strand(right), ordered, height, swap)) {
    ++unresolved_;
    return;
  }
  const Beam& beam = stage_.beams[k];
  const double near =
      std::min({std::fabs(swap - height), std::fabs(swap - beam.low), std::fabs(swap - beam.high)});
  if (kAtBeam * stage_.tol() >= near) {
    ++unresolved_;
    return;
  }
  AddMissed(swap, left, right);
}

void OrderCheck::CheckPair(int32_t left, int32_t right, double from, int32_t k) {
  Beams& beams = stage_.beams;
  const int32_t next = std::min(beams.NextOf(left, k), beams.NextOf(right, k));
  const double tol = stage_.tol();
  const Strand &a = stage_.strand(left), &b = stage_.strand(right);
  double to = beams[next].low;
  if (!(to > from)) return;
  double by = a.At(to) - b.At(to);
  if (kWrong * tol >= std::fabs(by)) {
    to = 0.5 * (from + to);
    by = a.At(to) - b.At(to);
  }
  double swap;
  if (!(by > kWrong * tol && to - from > tol) || !FindSwap(a, b, from, to, swap)) return;
  if (kAtBeam * tol >= std::min(to - swap, std::fabs(swap - beams[k].high))) return;
  AddMissed(swap, left, right);
}

void OrderCheck::AddMissed(double height, int32_t left, int32_t right) {
  const Strand &a = stage_.strand(left), &b = stage_.strand(right);
  const double e = kBeside * stage_.tol();
  const double run_a = std::fabs(a.At(height + e) - a.At(height - e));
  const double run_b = std::fabs(b.At(height + e) - b.At(height - e));
  missed_.push_back(
      {height, (run_a <= run_b ? a : b).At(height), std::min(left, right), std::max(left, right)});
}

}  // namespace kurvo::outline
