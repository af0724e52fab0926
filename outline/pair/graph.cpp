#include "pair/graph.h"

#include <algorithm>
#include <cmath>

#include "strand/bernstein.h"

namespace kurvo::outline {
namespace {

constexpr int kMostSteps = 60;

}  // namespace

// With heights at 22.5 degrees times 2 s for equal sectors s, in the middle between neighbours, and
// between opposite ones at the sector that follows the first: no direction of either sector is
// farther than 67.5 degrees away.
Axis AxisBetween(int first_sector, int second_sector) {
  constexpr double kCos = kCosBorder, kSin = kSinBorder;
  constexpr double kHalf = 0.70710678118654752440;
  constexpr Vec2 kAxes[] = {{1, 0}, {kCos, kSin},  {kHalf, kHalf},  {kSin, kCos},
                            {0, 1}, {-kSin, kCos}, {-kHalf, kHalf}, {-kCos, kSin}};
  const int apart = (second_sector - first_sector) & 3;
  const int turns = 2 * first_sector + (apart == 3 ? -1 : apart);
  return {kAxes[turns & 7]};
}

Graph::Graph(const Piece& piece, Axis axis)
    : kind_(piece.span.kind), degree_(std::max(piece.span.degree, 1)), axis_(axis) {
  const Span& span = piece.span;
  const Vec2 start = Turned(span.Start()), end = Turned(span.End());
  falls_ = end.y < start.y;
  low_ = falls_ ? end.y : start.y;
  high_ = falls_ ? start.y : end.y;
  if (kind_ == Span::Kind::kArc) {
    centre_ = Turned(span.centre);
    radius_ = span.radius;
    angle_ = span.angle;
    sweep_ = span.sweep;
    bulge_ = Turned(PointAt(span, 0.5)).x < centre_.x ? -1 : 1;
  }
  const int n = degree_;
  for (int i = 0; i <= n; ++i) {
    const int from = falls_ ? n - i : i;
    const Vec2 p = Turned(span.points[from]);
    side_[i] = p.x;
    height_[i] = p.y;
    if (kind_ == Span::Kind::kRational) weight_[i] = span.weights[from];
  }
}

double Graph::SideOfArc(double height) const {
  const double rise = height - centre_.y;
  const double square = (radius_ - rise) * (radius_ + rise);
  return centre_.x + bulge_ * std::sqrt(std::max(square, 0.0));
}

double Graph::HeightOfBezier(double s, double& slope) const {
  return WithDegree(degree_, [&](int n) {
    const auto height = [this](int i) { return height_[i]; };
    const auto rise = [this](int i) { return height_[i + 1] - height_[i]; };
    const bool is_plain = kind_ == Span::Kind::kBezier && n > 3;
    if (is_plain) return BernsteinSumWithSlope(n, s, height, slope);
    const double value = BernsteinSum(n, s, height);
    const double first = n * BernsteinSum(n - 1, s, rise);
    if (kind_ == Span::Kind::kBezier) {
      slope = first;
      return value;
    }
    const double w = BernsteinSum(n, s, [this](int i) { return weight_[i]; });
    const double dw =
        n * BernsteinSum(n - 1, s, [this](int i) { return weight_[i + 1] - weight_[i]; });
    slope = (first - dw * (value / w)) / w;
    return value / w;
  });
}

// Newton's method from the chord, kept in a bracket that every step narrows.
double Graph::ParameterAt(double height, KnownLevel below, KnownLevel above, double allowed) const {
  if (height <= low_) return 0;
  if (height >= high_) return 1;
  if (kind_ == Span::Kind::kLine) return (height - low_) / (high_ - low_);
  if (kind_ == Span::Kind::kArc) {
    const Vec2 out = {SideOfArc(height) - centre_.x, height - centre_.y};
    // Back from the axes of the graph to those of the frame.
    const Vec2 right = axis_.Right(), up = axis_.up;
    const Vec2 radius = {out.x * right.x + out.y * up.x, out.x * right.y + out.y * up.y};
    const Vec2 start = {std::cos(angle_), std::sin(angle_)};
    const double turn = std::atan2(Cross(start, radius), Dot(start, radius));
    const double u = std::clamp(turn / sweep_, 0.0, 1.0);
    return falls_ ? 1 - u : u;
  }
  double least = below.s, most = above.s;
  double s = least + (most - least) * (height - below.height) / (above.height - below.height);
  if (!(s > least && s < most)) s = 0.5 * (least + most);
  for (int step = 0; step < kMostSteps; ++step) {
    double slope;
    const double miss = HeightOfBezier(s, slope) - height;
    if (allowed >= std::fabs(miss)) return s;
    (miss > 0 ? most : least) = s;
    double next = s - miss / slope;
    if (!(next > least && next < most)) next = 0.5 * (least + most);
    if (!(next > least && next < most) || std::fabs(next - s) <= 0x1p-53 * s) return next;
    s = next;
  }
  return s;
}

double Graph::SideAt(double s) const {
  switch (kind_) {
    case Span::Kind::kLine:
      return (1 - s) * side_[0] + s * side_[1];
    case Span::Kind::kArc: {
      if (s <= 0) return side_[0];
      if (s >= 1) return side_[1];
      const double angle = angle_ + ToPiece(s) * sweep_;
      return centre_.x + radius_ * Dot({std::cos(angle), std::sin(angle)}, axis_.Right());
    }
    default: {
      const double value = WithDegree(
          degree_, [&](int n) { return BernsteinSum(n, s, [this](int i) { return side_[i]; }); });
      if (kind_ == Span::Kind::kBezier) return value;
      return value / BernsteinSum(degree_, s, [this](int i) { return weight_[i]; });
    }
  }
}

double Graph::SlopeAt(double s) const {
  if (kind_ == Span::Kind::kLine) return (side_[1] - side_[0]) / (high_ - low_);
  if (kind_ == Span::Kind::kArc) {
    const double angle = angle_ + ToPiece(s) * sweep_;
    const Vec2 along = {-std::sin(angle), std::cos(angle)};
    return Dot(along, axis_.Right()) / Dot(along, axis_.up);
  }
  double rise;
  const double height = HeightOfBezier(s, rise);
  static_cast<void>(height);
  const int n = degree_;
  const double dx = n * BernsteinSum(n - 1, s, [this](int i) { return side_[i + 1] - side_[i]; });
  if (kind_ == Span::Kind::kBezier) return dx / rise;
  const double w = BernsteinSum(n, s, [this](int i) { return weight_[i]; });
  const double dw =
      n * BernsteinSum(n - 1, s, [this](int i) { return weight_[i + 1] - weight_[i]; });
  return (dx - dw * SideAt(s)) / w / rise;
}

Stretch Graph::Between(double low, double high, double s_low, double s_high) const {
  Stretch stretch(low, high);
  if (kind_ == Span::Kind::kLine) {
    stretch.at_low = SideAt(s_low);
    stretch.at_high = SideAt(s_high);
  } else if (kind_ == Span::Kind::kArc) {
    stretch.at_low = SideOfArc(low);
    stretch.at_high = SideOfArc(high);
    stretch.BendAsArc(radius_, bulge_);
  } else {
    const bool is_rational = kind_ == Span::Kind::kRational;
    stretch.Cut(degree_, side_, height_, is_rational ? weight_ : nullptr, s_low, s_high);
    stretch.at_low = stretch.side[0];
    stretch.at_high = stretch.side[degree_];
    stretch.BendAsControls();
  }
  return stretch;
}

// The sagitta is (chord / 2)^2 / (r + the distance from the centre to the chord), and measured
// along the side as much more as the chord is longer than its rise.
void Stretch::BendAsArc(double radius, double bulge) {
  constexpr double kRounding = 1e-12;
  const double rise = high - low, run = at_high - at_low;
  const double quarter = 0.25 * (run * run + rise * rise);
  const double across = radius + std::sqrt(std::max(radius * radius - quarter, 0.0));
  const double bend =
      rise > 0 ? quarter * 2 * std::sqrt(quarter) / (across * rise) * (1 + kRounding) : 0;
  (bulge > 0 ? most : least) = bulge * bend;
}

void Stretch::Cut(int n, const double* x, const double* y, const double* w, double s_low,
                  double s_high) {
  degree = n;
  is_rational = w != nullptr;
  CutBernstein(x, y, n, s_low, s_high, side, height);
  if (!is_rational) return;
  CutBernstein(w, n, s_low, s_high, weight);
  for (int i = 0; i <= n; ++i) {
    side[i] /= weight[i];
    height[i] /= weight[i];
  }
}

// The hull of the control points bounds how far a Bezier piece bends.
void Stretch::BendAsControls() {
  const double rise = high - low;
  const double slope = rise > 0 ? (at_high - at_low) / rise : 0;
  for (int i = 1; i < degree; ++i) {
    const double bend = side[i] - (at_low + slope * (height[i] - low));
    least = std::min(least, bend);
    most = std::max(most, bend);
  }
}

}  // namespace kurvo::outline
