// Which touches are contacts of their own.
#include "relate/touches.h"

#include <algorithm>
#include <cmath>

namespace kurvo {
namespace {

constexpr int kSteps = 8;  // of the way between two points; the middle is looked at first

// The last piece that begins at or before t, else the first.
const FreeFormPiece& PieceAt(const FreeFormPieces& pieces, double t) {
  const auto* after = std::upper_bound(
      pieces.begin(), pieces.end(), t,
      [](double value, const FreeFormPiece& piece) { return value < piece.start; });
  return after == pieces.begin() ? *after : *(after - 1);
}

double ToPiece(const FreeFormPiece& piece, double t) {
  return std::clamp((t - piece.start) / piece.width, 0.0, 1.0);
}

Vec2 PointAt(const FreeFormPieces& pieces, double t) {
  const FreeFormPiece& piece = PieceAt(pieces, t);
  return PointAt(piece.bezier, ToPiece(piece, t));
}

class Runs {
 public:
  Runs(const FreeFormPieces& a, const FreeFormPieces& b, double tol) : a_(a), b_(b), tol_(tol) {}

  double Gap(const Crossing& at) const {
    const double gap = Length(PointAt(b_, at.second) - PointAt(a_, at.first));
    return tol_ >= gap ? gap : tol_;  // NaN cannot be sorted
  }

  // True when the curves stay together on the way from one common point to another.
  bool Join(const Crossing& from, const Crossing& to) const {
    for (int stride = kSteps / 2; stride >= 1; stride /= 2)
      for (int i = stride; i < kSteps; i += 2 * stride)
        if (!TogetherAt(from, to, static_cast<double>(i) / kSteps)) return false;
    return true;
  }

 private:
  bool TogetherAt(const Crossing& from, const Crossing& to, double share) const {
    const Vec2 p = PointAt(a_, from.first + share * (to.first - from.first));
    const double t = from.second + share * (to.second - from.second);
    const FreeFormPiece& piece = PieceAt(b_, t);
    if (NearPiece(piece, p, ToPiece(piece, t))) return true;
    // The point next to p may lie across a joint.
    return (&piece != b_.begin() && NearPiece(*(&piece - 1), p, 1.0)) ||
           (&piece + 1 != b_.end() && NearPiece(*(&piece + 1), p, 0.0));
  }

  bool NearPiece(const FreeFormPiece& piece, Vec2 p, double t) const {
    return tol_ >= Length(PointAt(piece.bezier, RefineNearest(piece.bezier, p, t)) - p);
  }

  const FreeFormPieces& a_;
  const FreeFormPieces& b_;
  const double tol_;
};

}  // namespace

void DropRepeatedTouches(const FreeFormPieces& a, const FreeFormPieces& b, double tol,
                         Crossings& found) {
  const auto touches = std::stable_partition(found.begin(), found.end(),
                                             [](const Crossing& at) { return !at.touch; });
  if (touches == found.end()) return;
  const Runs runs(a, b, tol);
  std::stable_sort(touches, found.end(),
                   [&](const Crossing& x, const Crossing& y) { return runs.Gap(x) < runs.Gap(y); });
  auto kept = touches;
  for (auto touch = touches; touch != found.end(); ++touch) {
    const bool repeated = std::any_of(
        found.begin(), kept, [&](const Crossing& known) { return runs.Join(known, *touch); });
    if (!repeated) *kept++ = *touch;
  }
  found.erase(kept, found.end());
}

}  // namespace kurvo
