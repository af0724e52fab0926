// The surroundings of one inner knot of a B-spline, and the removal of its occurrences.
#include "control/knot_window.h"

#include <algorithm>

#include "control/knot_spans.h"

namespace kurvo {
namespace {

std::size_t At(int32_t i) { return static_cast<std::size_t>(i); }

}  // namespace

template <std::size_t kDim>
typename KnotWindow<kDim>::ControlPoint KnotWindow<kDim>::Lifted(const double (&stored)[kDim]) {
  ControlPoint point;
  std::copy_n(stored, kDim, point.stored);
  std::copy_n(stored, kDim, point.lifted);
  for (int c = 0; c < 3; ++c) point.lifted[c] *= WeightOf(stored);
  return point;
}

// a p + b q
template <std::size_t kDim>
typename KnotWindow<kDim>::ControlPoint KnotWindow<kDim>::Combined(double a, const ControlPoint& p,
                                                                   double b,
                                                                   const ControlPoint& q) {
  ControlPoint point;
  for (std::size_t c = 0; c < kDim; ++c) point.lifted[c] = a * p.lifted[c] + b * q.lifted[c];
  std::copy_n(point.lifted, kDim, point.stored);
  for (int c = 0; c < 3; ++c) point.stored[c] /= WeightOf(point.lifted);
  return point;
}

template <std::size_t kDim>
void KnotWindow<kDim>::Load(const double* u, const double (*points)[kDim], int32_t last, int32_t s,
                            int32_t tail) {
  multiplicity_ = s;
  first_ = last - s - degree_;
  knots_.assign(u + first_, u + last + 1);
  knots_.insert(knots_.end(), u + tail, u + tail + degree_);
  points_.clear();
  for (int32_t i = first_; i <= last; ++i) points_.push_back(Lifted(points[i]));
}

// Tiller's formulas (Computer-Aided Design 24, 1992) for one insertion of u,
//   Q_i = a_i P_i + (1 - a_i) P_(i-1),  s <= i <= p,  a_i = (u - u_i) / (u_(i+p+1) - u_i),
// solved for the points P before it: from the left for the first half of them and from the right
// for the second; the one in the middle of an odd number is the mean of both. At full multiplicity
// p + 1 there is nothing to solve: the two points that meet in u become their mean.
template <std::size_t kDim>
void KnotWindow<kDim>::LoadWithoutOne(const KnotWindow& other) {
  const int32_t p = degree_;
  const int32_t s = other.multiplicity_;
  const auto& q = other.points_;
  const auto& u = other.knots_;
  multiplicity_ = s - 1;
  first_ = other.first_;
  knots_.assign(u.begin(), u.end());
  knots_.erase(knots_.begin() + p + s);
  points_.assign(q.begin(), q.end());
  points_.erase(points_.begin() + std::min(s, p));

  if (s > p) {
    points_[At(p)] = Combined(0.5, q[At(p)], 0.5, q[At(p + 1)]);
    return;
  }
  const double knot = u[At(p + s)];
  const auto share = [&](int32_t i) { return (knot - u[At(i)]) / (u[At(i + p + 1)] - u[At(i)]); };
  const auto from_left = [&](int32_t i) {  // P_i
    const double a = share(i);
    return Combined(1.0 / a, q[At(i)], (a - 1.0) / a, points_[At(i - 1)]);
  };
  const auto from_right = [&](int32_t i) {  // P_(i-1)
    const double a = share(i);
    return Combined(1.0 / (1.0 - a), q[At(i)], -a / (1.0 - a), points_[At(i)]);
  };
  int32_t left = s;
  int32_t right = p;
  for (; left + 1 < right; ++left, --right) {
    points_[At(left)] = from_left(left);
    points_[At(right - 1)] = from_right(right);
  }
  if (left + 1 == right) points_[At(left)] = Combined(0.5, from_left(left), 0.5, from_right(right));
}

template <std::size_t kDim>
Vec2 KnotWindow<kDim>::Point(int32_t span, double t) const {
  const BasisValues basis({knots_.data(), degree_ + 1, 0}, span, t);
  const ControlPoint* points = points_.data() + (span - degree_);
  Vec2 sum;
  double weight = 0.0;
  for (int32_t j = 0; j <= degree_; ++j) {
    const auto& stored = points[j].stored;
    const double n = basis[j] * WeightOf(stored);
    if (basis[j] == 0.0) continue;
    sum = sum + n * Planar(stored);
    weight += n;
  }
  if (kDim == 4 && weight != 0.0) return {sum.x / weight, sum.y / weight};
  return sum;
}

template <std::size_t kDim>
void KnotWindow<kDim>::Store(double (*points)[kDim]) const {
  for (std::size_t i = 0; i < points_.size(); ++i)
    std::copy_n(points_[i].stored, kDim, points[At(first_) + i]);
}

template class KnotWindow<3>;
template class KnotWindow<4>;

}  // namespace kurvo
