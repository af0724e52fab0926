// Whether two Bezier pieces run together along a stretch.
#include "relate/piece_overlap.h"

#include <algorithm>
#include <array>

namespace kurvo {
namespace {

constexpr int kMaxSamples = 40;

// The parameters on `a` of the ends of either piece that lie on the other one, ascending.
class SharedEnds {
 public:
  void Add(double t) {
    std::size_t at = count_++;
    for (; at > 0 && on_a_[at - 1] > t; --at) on_a_[at] = on_a_[at - 1];
    on_a_[at] = t;
  }
  std::size_t count() const { return count_; }
  double operator[](std::size_t i) const { return on_a_[i]; }

 private:
  std::array<double, 4> on_a_;
  std::size_t count_ = 0;
};

SharedEnds FindSharedEnds(const BezierPiece& a, const BezierPiece& b, double tol) {
  SharedEnds shared;
  for (const double end : {0.0, 1.0}) {
    const Vec2 p = PointAt(a, end);
    if (tol >= Length(PointAt(b, NearestParameter(b, p)) - p)) shared.Add(end);
  }
  for (const double end : {0.0, 1.0}) {
    const Vec2 p = PointAt(b, end);
    const double on_a = NearestParameter(a, p);
    if (tol >= Length(PointAt(a, on_a) - p)) shared.Add(on_a);
  }
  return shared;
}

// True when `a` stays within tol of `b` between two of its parameters, and does go somewhere.
bool StretchOn(const BezierPiece& a, double from, double to, const BezierPiece& b, double tol) {
  const int samples = std::min(a.degree * b.degree + 1, kMaxSamples);
  const Vec2 start = PointAt(a, from);
  bool moves = false;
  for (int i = 1; i <= samples; ++i) {
    const Vec2 p = PointAt(a, from + (to - from) * i / (samples + 1));
    if (!(tol >= Length(PointAt(b, NearestParameter(b, p)) - p))) return false;
    moves = moves || Length(p - start) > tol;
  }
  return moves;
}

}  // namespace

bool RunTogether(const BezierPiece& a, const BezierPiece& b, double tol) {
  const SharedEnds shared = FindSharedEnds(a, b, tol);
  for (std::size_t i = 1; i < shared.count(); ++i)
    if (StretchOn(a, shared[i - 1], shared[i], b, tol)) return true;
  return false;
}

}  // namespace kurvo
