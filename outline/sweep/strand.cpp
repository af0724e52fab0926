#include "sweep/strand.h"

#include "strand/arc_sweep.h"
#include "strand/bernstein.h"
#include "sweep/rising_cubic.h"

namespace kurvo::outline {
namespace {

constexpr int kMostSteps = 60;

}  // namespace

double Strand::At(double height) const {
  if (height <= y_low) return x_low;
  if (height >= y_high) return x_high;
  if (kind == Span::Kind::kArc) return SideOfArc(height);
  return SideAt(ParameterAt(height));
}

// From the lower end: with rises d and d0 over the centre and sides s and s0 of it, s - s0 is
// (d0^2 - d^2) / (s + s0), which loses nothing on circles far larger than the drawing.
double Strand::SideOfArc(double height) const {
  const double rise = height - centre.y, rise_low = y_low - centre.y;
  const double sum = std::sqrt(std::max((radius - rise) * (radius + rise), 0.0)) + half_low;
  if (!(sum > 0)) return x_low;
  return x_low + bulge * ((y_low - height) * (rise_low + rise) / sum);
}

double Strand::SideAt(double v) const {
  if (v >= 1) return x_high;
  if (kind == Span::Kind::kLine)
    return v < 0.5 ? x_low + v * (x_high - x_low) : x_high - (1 - v) * (x_high - x_low);
  if (kind == Span::Kind::kBezier && degree <= 3) return x_low + v * (x1 + v * (x2 + v * x3));
  const double side = BernsteinSum(degree, v, [this](int i) { return x[i]; });
  if (kind == Span::Kind::kBezier) return side;
  return side / BernsteinSum(degree, v, [this](int i) { return w[i]; });
}

StrandPlace Strand::PlaceAt(double height) const {
  if (kind == Span::Kind::kLine) return {0, At(height), chord_slope};
  if (kind == Span::Kind::kArc) {
    const double side = SideOfArc(height);
    return {0, side, (centre.y - height) / (side - centre.x)};
  }
  const double v = ParameterAt(height);
  const double run = x1 + v * (2 * x2 + 3 * v * x3), rise = y1 + v * (2 * y2 + 3 * v * y3);
  return {v, SideAt(v), run / rise};
}

double Strand::HeightAt(double v, double& slope) const {
  if (kind == Span::Kind::kBezier && degree <= 3) {
    slope = y1 + v * (2 * y2 + 3 * v * y3);
    return y_low + v * (y1 + v * (y2 + v * y3));
  }
  const int n = degree;
  const double value = BernsteinSum(n, v, [this](int i) { return y[i]; });
  const double first = n * BernsteinSum(n - 1, v, [this](int i) { return y[i + 1] - y[i]; });
  if (kind == Span::Kind::kBezier) {
    slope = first;
    return value;
  }
  const double weight = BernsteinSum(n, v, [this](int i) { return w[i]; });
  const double change = n * BernsteinSum(n - 1, v, [this](int i) { return w[i + 1] - w[i]; });
  slope = (first - change * (value / weight)) / weight;
  return value / weight;
}

// Newton's method from the chord in a bracket, to the last bits: one that stops at 1e-9 orders
// neighbours differently at the two ends of a slab.
double Strand::ParameterAt(double height) const {
  if (height <= y_low) return 0;
  if (height >= y_high) return 1;
  if (kind == Span::Kind::kLine) return (height - y_low) / (y_high - y_low);
  if (kind == Span::Kind::kArc) return TurnTo({SideOfArc(height), height});
  if (kind == Span::Kind::kBezier && degree == 2) {
    // The root of y2 v^2 + y1 v = rise that does not cancel.
    const double half = 0.5 * y1, rise = height - y_low;
    const double root = half + std::sqrt(std::max(half * half + y2 * rise, 0.0));
    return root > 0 ? std::min(1.0, rise / root) : 1;
  }
  const double rise = height - y_low, top = y_high - y_low;
  if (kind == Span::Kind::kBezier && degree == 3) {
    const RisingCubic cubic = {y1, y2, y3};
    return cubic.Solve(rise, 0, 1, cubic.Guess(rise, top));
  }
  return Solve(height, 0, 1, rise / top);
}

double Strand::LevelAt(double height, KnownLevel below, KnownLevel above, double) const {
  const bool is_found = kind != Span::Kind::kBezier && kind != Span::Kind::kRational;
  if (is_found || height <= y_low || height >= y_high || degree == 2) return LevelAt(height);
  const double share = (height - below.height) / (above.height - below.height);
  const double v = below.s + share * (above.s - below.s);
  if (kind == Span::Kind::kBezier && degree == 3)
    return RisingCubic{y1, y2, y3}.Solve(height - y_low, below.s, above.s, v);
  return Solve(height, below.s, above.s, v);
}

double Strand::Solve(double height, double least, double most, double v) const {
  for (int step = 0; step < kMostSteps; ++step) {
    double slope;
    const double miss = HeightAt(v, slope) - height;
    if (miss == 0) return v;
    (miss > 0 ? most : least) = v;
    double next = slope > 0 ? v - miss / slope : -1;
    if (!(next > least && next < most)) next = 0.5 * (least + most);
    if (std::fabs(next - v) <= 0x1p-53) return next;
    v = next;
  }
  return v;
}

// The whole turn of an arc, at most half of one: its sign is that of the bulge, whatever rounding
// makes of half a turn.
double Strand::Turn() const {
  const Vec2 from = {x_low - centre.x, y_low - centre.y};
  const Vec2 to = {x_high - centre.x, y_high - centre.y};
  return std::fabs(std::atan2(Cross(from, to), Dot(from, to)));
}

double Strand::TurnTo(Vec2 point) const {
  const Vec2 from = {x_low - centre.x, y_low - centre.y}, here = point - centre;
  const double along = Dot(from, here);
  const double turn = bulge * std::atan2(Cross(from, here), along);
  if (turn < 0) return along > 0 ? 0 : 1;
  return std::min(turn / Turn(), 1.0);
}

Stretch Strand::Between(double from, double to, double v_from, double v_to) const {
  Stretch part(from, to);
  if (kind == Span::Kind::kLine || kind == Span::Kind::kArc) {
    part.at_low = At(from);
    part.at_high = At(to);
    if (kind == Span::Kind::kArc) part.BendAsArc(radius, bulge);
    return part;
  }
  part.Cut(degree, x, y, w, v_from, v_to);
  part.height[0] = from;
  part.height[degree] = to;
  part.at_low = part.side[0];
  part.at_high = part.side[degree];
  part.BendAsControls();
  return part;
}

Vec2 Strand::PointAt(double v) const {
  if (v <= 0) return {x_low, y_low};
  if (v >= 1) return {x_high, y_high};
  if (kind == Span::Kind::kLine) return {SideAt(v), y_low + v * (y_high - y_low)};
  if (kind == Span::Kind::kArc) {
    const Vec2 from = {x_low - centre.x, y_low - centre.y};
    const double turn = v * bulge * Turn();
    const double c = std::cos(turn), s = std::sin(turn);
    return centre + Vec2{c * from.x - s * from.y, s * from.x + c * from.y};
  }
  double unused;
  return {SideAt(v), HeightAt(v, unused)};
}

}  // namespace kurvo::outline
