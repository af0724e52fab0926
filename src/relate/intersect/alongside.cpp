// Two Bezier pieces that run alongside each other, closer than parts of them are long.
#include "relate/intersect/alongside.h"

#include <algorithm>
#include <cmath>

#include "control/reparametrise.h"
#include "eval/segment.h"
#include "eval/turning_points.h"
#include "relate/piece_bounds.h"

namespace kurvo {
namespace {

// Of the size of the pieces: a difference above it would seldom tell anything.
constexpr double kLargestDifference = 1.0 / 16.0;
// Of the tolerance: how far the curve may be from straight over the length of the difference.
constexpr double kStraightShare = 0.25;

void Reverse(double (*points)[3], int32_t n) {
  for (int32_t i = 0; i < n - i; ++i) std::swap_ranges(points[i], points[i] + 3, points[n - i]);
}

// The control points of a plain piece over [from, to], which may run backwards.
void CopyStretch(const double (*points)[3], int32_t n, double from, double to, double (*out)[3]) {
  std::copy_n(points[0], 3 * (n + 1), out[0]);
  Reparametrise(out, n, std::min(from, to), std::max(from, to));
  if (from > to) Reverse(out, n);
}

struct Powers {
  Powers(const double (*points)[3], int32_t n) {
    const auto load = [points](int32_t i, std::array<double, 2>& p) {
      p = {points[i][0], points[i][1]};
    };
    SetPowerBasis<2>(static_cast<std::size_t>(n), load, {&x, &y});
  }

  Polynomial x;
  Polynomial y;
};

Polynomial CrossProduct(const Polynomial& ax, const Polynomial& ay, const Powers& b) {
  return SumScaled(Product(ax, b.y), -1.0, Product(ay, b.x));
}

}  // namespace

Alongside::Alongside(const BezierPiece& a, const BezierPiece& b, double tol)
    : tol_(tol), degree_(a.degree) {
  if (a.rational || b.rational || a.degree != b.degree || degree_ > kMaxPowerBasisDegree) return;
  start_ = NearestParameter(a, Planar(b.points[0]));
  end_ = NearestParameter(a, Planar(b.points[degree_]));
  if (start_ == end_) return;
  for (int32_t i = 0; i <= degree_; ++i) {
    points_[i][0] = a.points[i].x;
    points_[i][1] = a.points[i].y;
    points_[i][2] = 0.0;
  }
  CopyStretch(points_, degree_, start_, end_, beside_);
  double largest = 0.0;
  for (int32_t i = 0; i <= degree_; ++i) {
    difference_[i][0] = b.points[i].x - beside_[i][0];
    difference_[i][1] = b.points[i].y - beside_[i][1];
    difference_[i][2] = 0.0;
    largest = std::max({largest, std::fabs(difference_[i][0]), std::fabs(difference_[i][1])});
  }
  applies_ = kLargestDifference * b.extent() >= largest;
}

// With A taken over the range of phi, the gap across the tangent is h / |A'|, where h = A' x D. It
// turns where h' |A'|^2 - h (A' . A'') = 0.
RootList Alongside::ClosestPlaces() const {
  RootList places;
  if (!applies_) return places;
  const Powers a(beside_, degree_), d(difference_, degree_);
  const Polynomial ax = Derivative(a.x), ay = Derivative(a.y);
  const Polynomial h = CrossProduct(ax, ay, d), slope = Derivative(h);
  const Polynomial speed2 = SumScaled(Product(ax, ax), 1.0, Product(ay, ay));
  const Polynomial bend = SumScaled(Product(ax, Derivative(ax)), 1.0, Product(ay, Derivative(ay)));
  const RootList turning = SignChanges(SumScaled(Product(slope, speed2), -1.0, Product(h, bend)));
  double left = 0.0;
  for (std::size_t i = 0; i <= turning.size(); ++i) {
    const double right = i < turning.size() ? turning[i] : 1.0;
    const double at_left = Value(h, left), at_right = Value(h, right);
    if ((at_left < 0.0 && at_right > 0.0) || (at_left > 0.0 && at_right < 0.0))
      places.Append(BracketedRoot(h, slope, left, right));
    if (i < turning.size()) places.Append(right);
    left = right;
  }
  return places;
}

bool Alongside::Settles(const BezierPiece& part_a, const BezierPiece& part_b, double slack) const {
  if (!applies_) return false;
  const double from = ToFirst(part_b.start), to = ToFirst(part_b.end());
  Points on_a, d;
  CopyStretch(points_, degree_, std::min({part_a.start, from, to}),
              std::max({part_a.end(), from, to}), on_a);
  const TangentCone cone = ConeOf(on_a, degree_);
  if (!cone.narrow) return false;
  CopyStretch(difference_, degree_, part_b.start, part_b.end(), d);
  if (GapTells(on_a, d)) return true;
  const double margin_low = slack * Length(cone.low), margin_high = slack * Length(cone.high);
  bool left = true, right = true;  // of the cone and of the one opposite
  for (int32_t i = 0; i <= degree_ && (left || right); ++i) {
    const double low = Cross(cone.low, Planar(d[i])), high = Cross(cone.high, Planar(d[i]));
    left = left && low > margin_low && high > margin_high;
    right = right && -margin_low > low && -margin_high > high;
  }
  return left || right;
}

// Over a length l a curve of second derivative A'' and a speed of v or more leaves its tangent by
// at most |A''| (l / v)^2 / 2.
bool Alongside::GapTells(const Points& on_a, const Points& d) const {
  const Vec2 chord = Planar(on_a[degree_]) - Planar(on_a[0]);
  double speed = HUGE_VAL, bend = 0.0, length = 0.0;  // speed in units of the chord's length
  Vec2 last;
  for (int32_t i = 0; i <= degree_; ++i) {
    length = std::max(length, Length(Planar(d[i])));
    if (i == degree_) break;
    const Vec2 leg = Planar(on_a[i + 1]) - Planar(on_a[i]);
    speed = std::min(speed, Dot(chord, leg));
    if (i > 0) bend = std::max(bend, Length(leg - last));
    last = leg;
  }
  const double n = degree_;
  const double way = (length + tol_) * Length(chord) / (n * speed);
  return kStraightShare * tol_ >= 0.5 * n * (n - 1.0) * bend * way * way;
}

}  // namespace kurvo
