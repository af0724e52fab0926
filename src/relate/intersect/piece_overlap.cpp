// Whether two Bezier pieces run together along a stretch.
#include "relate/intersect/piece_overlap.h"

#include <algorithm>
#include <array>

namespace kurvo {
namespace {

constexpr int kMaxSamples = 40;

// A point of both pieces.
struct Shared {
  double on_a;
  double on_b;
};

// The ends of either piece that lie on the other one, ascending on `a`.
class SharedEnds {
 public:
  void Add(Shared end) {
    std::size_t at = count_++;
    for (; at > 0 && ends_[at - 1].on_a > end.on_a; --at) ends_[at] = ends_[at - 1];
    ends_[at] = end;
  }
  std::size_t count() const { return count_; }
  const Shared& operator[](std::size_t i) const { return ends_[i]; }

 private:
  std::array<Shared, 4> ends_;
  std::size_t count_ = 0;
};

bool IsAt(const BezierPiece& piece, double t, Vec2 p, double tol) {
  return tol >= Length(PointAt(piece, t) - p);
}

SharedEnds FindSharedEnds(const BezierPiece& a, const BezierPiece& b, double tol) {
  SharedEnds shared;
  for (const double end : {0.0, 1.0}) {
    const Vec2 end_a = PointAt(a, end), end_b = PointAt(b, end);
    const double near_b = NearestParameter(b, end_a);
    if (IsAt(b, near_b, end_a, tol)) shared.Add({end, near_b});
    if (end == 1.0 && shared.count() == 0) break;  // the last end alone bounds no stretch
    const double near_a = NearestParameter(a, end_b);
    if (IsAt(a, near_a, end_b, tol)) shared.Add({near_a, end});
  }
  return shared;
}

// True when `a` stays within tol of `b` between two shared points, and does go somewhere.
bool StretchOn(const BezierPiece& a, const BezierPiece& b, Shared from, Shared to, double tol) {
  const int samples = std::min(a.degree * b.degree + 1, kMaxSamples);
  const Vec2 start = PointAt(a, from.on_a);
  bool moves = false;
  for (int i = 1; i <= samples; ++i) {
    const double share = static_cast<double>(i) / (samples + 1);
    const Vec2 p = PointAt(a, from.on_a + share * (to.on_a - from.on_a));
    // Next to where it is expected, or else, when the parameters run differently, anywhere.
    const double expected = from.on_b + share * (to.on_b - from.on_b);
    if (!IsAt(b, RefineNearest(b, p, expected), p, tol) && !IsAt(b, NearestParameter(b, p), p, tol))
      return false;
    moves = moves || Length(p - start) > tol;
  }
  return moves;
}

}  // namespace

bool RunTogether(const BezierPiece& a, const BezierPiece& b, double tol) {
  const SharedEnds shared = FindSharedEnds(a, b, tol);
  for (std::size_t i = 1; i < shared.count(); ++i)
    if (StretchOn(a, b, shared[i - 1], shared[i], tol)) return true;
  return false;
}

}  // namespace kurvo
