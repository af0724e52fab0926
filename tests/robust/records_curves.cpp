// Random curves of all types.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <iterator>

#include "robust/records.h"

namespace kurvo_test {
namespace {

constexpr int kDeepNest = 10000;
constexpr int32_t kLongArray = 100000;

// Points of the unit circle: exact where they are scaled by the denominator.
struct Direction {
  int x, y, length;
};
constexpr Direction kDirections[] = {{1, 0, 1},   {0, 1, 1},   {3, 4, 5},   {4, 3, 5},
                                     {5, 12, 13}, {12, 5, 13}, {8, 15, 17}, {15, 8, 17}};

std::size_t Size(int32_t count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

// Clears a pointer in a block header: free-form kinds have the points at byte 8 and the knots at
// byte 16, composites the pieces and the widths.
void ClearPointer(void* block, std::size_t offset) {
  constexpr void* kNull = nullptr;
  std::memcpy(static_cast<char*>(block) + offset, &kNull, sizeof kNull);
}

}  // namespace

// The blocks of the four free-form kinds are laid out alike: sizes, points, knots.
Curve Maker::FreeForm(int32_t type, int32_t size, int32_t count, double* points, double* knots) {
  auto* const block = store_.Zeroed<KurvoRBSpline>();
  *block = {size, count, reinterpret_cast<HCoord*>(points), knots, {}};
  return {type, block, 0, 0, 0};
}

bool IsWanted(int32_t type, unsigned wanted) {
  for (std::size_t i = 0; i < std::size(kTypes); ++i)
    if (kTypes[i] == type) return wanted >> i & 1;
  return false;
}

Curve Maker::CurveOf(unsigned wanted, int level) {
  ChooseTaint();
  int32_t type = kTypes[in_.Below(level < 2 ? 7 : 6)];
  for (int tries = in_.Below(8) ? 20 : 0; tries > 0 && !IsWanted(type, wanted); --tries)
    type = kTypes[in_.Below(7)];
  if (hostile() && level == 0 && in_.OneIn(64)) return Unknown();
  if (hostile() && level == 0 && in_.OneIn(64))
    return Nest(in_.OneIn(16) ? kDeepNest : in_.Between(60, 70));
  ::Curve curve = type == CV_LINE     ? Line()
                  : type == CV_ARC    ? Arc()
                  : type == CV_SEGCV  ? Composite(level)
                  : type < CV_BSPLINE ? Bezier(type == CV_RBEZIER)
                                      : Spline(type == CV_RBSPLINE);
  if (hostile() && in_.OneIn(32)) Misname(curve);
  return curve;
}

// A header whose type code is none, or that has no block.
Curve Maker::Unknown() {
  ::Curve curve{};
  curve.type =
      in_.Below(2) ? in_.Pick(kTypes) : in_.Pick({0, 1, 17, -16, 1007, 1009, INT32_MAX, INT32_MIN});
  const bool known = curve.type == CV_LINE || curve.type == CV_ARC;
  if (in_.Below(2) && (known || curve.type % 16 != 0 || curve.type <= 0))
    curve.data = store_.Zeroed<KurvoArc>();
  curve.attr = static_cast<int32_t>(in_.Below(3));
  return curve;
}

// Takes the block away, or an array that the header counts.
void Maker::Misname(::Curve& curve) {
  if (!curve.data || in_.OneIn(3)) {
    curve.data = nullptr;
    return;
  }
  if (curve.type == CV_BEZIER || curve.type == CV_RBEZIER) ClearPointer(curve.data, 8);
  if (curve.type == CV_BSPLINE || curve.type == CV_RBSPLINE || curve.type == CV_SEGCV)
    ClearPointer(curve.data, in_.Below(2) ? 8 : 16);
}

double Maker::Weight() {
  constexpr double kWeights[] = {1, 1, 1, .5, 2, .70703125, 3, .25};
  if (hostile() && taint_ != Taint::kNone && in_.OneIn(3)) {
    constexpr double kBad[] = {0., -0., -1, 1e-7, -1e-7, 1e-300, 1e300, NAN, INFINITY, 5e-324};
    return in_.Pick(kBad);
  }
  return in_.Below(4) ? in_.Pick(kWeights) : .125 + 2 * in_.Fraction();
}

int32_t Maker::Degree() {
  if (!hostile() || in_.Below(16) < 10) return in_.Pick({3, 3, 2, 1, 3, 4, 5, 3, 2, 7});
  if (in_.OneIn(40)) return in_.Pick({1000, 1023, 1024, 4095, 4096, 4097, kLongArray});
  return in_.Pick({0,  1,  6,  12, 13, 14, 15, 16, 19,  20, 21, 23,        24,
                   25, 38, 39, 40, 41, 63, 64, 65, 128, -1, -2, INT32_MIN, 3});
}

double* Maker::Points(int32_t count, int size) {
  double* const points = store_.Numbers(Size(count) * static_cast<std::size_t>(size));
  const bool flat = !hostile() || in_.Below(2);
  for (std::size_t i = 0; i < Size(count); ++i) {
    double* const p = points + i * static_cast<std::size_t>(size);
    p[0] = Coordinate();
    p[1] = Coordinate();
    p[2] = flat ? 0 : Coordinate();
    if (size == 4) p[3] = Weight();
    if (i > 0 && in_.OneIn(16)) std::memcpy(p, p - size, 3 * sizeof(double));
  }
  return points;
}

Curve Maker::Line() {
  auto* const line = store_.Zeroed<KurvoLine>();
  for (int i = 0; i < 3; ++i) {
    line->start[i] = i < 2 || hostile() ? Coordinate() : 0;
    line->end[i] = i < 2 || hostile() ? Coordinate() : 0;
  }
  if (in_.OneIn(32)) std::memcpy(line->end, line->start, sizeof line->end);
  return {CV_LINE, line, 0, 0, 0};
}

Curve Maker::Arc() {
  auto* const arc = store_.Zeroed<KurvoArc>();
  const double scale = in_.Between(1, 16) / 8.;
  const Direction from = in_.Pick(kDirections);
  const int signs[] = {in_.Below(2) ? 1 : -1, in_.Below(2) ? 1 : -1};
  Direction to = in_.Pick(kDirections);
  arc->radius = scale * from.length * to.length;
  for (int i = 0; i < 2; ++i) arc->centre[i] = Coordinate();
  arc->normal[2] = in_.Below(2) ? 1 : -1;
  arc->start[0] = arc->centre[0] + scale * to.length * from.x;
  arc->start[1] = arc->centre[1] + scale * to.length * from.y;
  arc->end[0] = arc->centre[0] + signs[0] * scale * from.length * to.x;
  arc->end[1] = arc->centre[1] + signs[1] * scale * from.length * to.y;
  if (taint_ != Taint::kNone) {  // a coordinate or all of them
    double* const numbers = &arc->radius;
    const bool all = in_.Below(2);
    for (int i = 0; i < 13; ++i)
      if (all || in_.OneIn(8)) numbers[i] = Coordinate();
  }
  return {CV_ARC, arc, 0, 0, 0};
}

Curve Maker::Bezier(bool rational) {
  const int32_t degree = Degree();
  const int32_t count = degree < 0 ? 1 : degree + 1;
  return FreeForm(rational ? CV_RBEZIER : CV_BEZIER, degree, 0, Points(count, rational ? 4 : 3));
}

void Maker::SoundKnots(double* knots, int32_t order, int32_t count) {
  const double width = in_.Below(4) ? 1 : in_.Between(1, 12) / 4.;
  const double from = in_.Below(4) ? 0 : in_.Between(-8, 8) / 4.;
  const bool clamped = in_.Below(4) != 0;
  const int32_t spans = count - order + 1;
  int32_t at = 0;  // breaks passed
  for (int32_t i = 0; i < order + count; ++i) {
    if (i < order)
      at = clamped ? 0 : i - order + 1;
    else if (i >= count)
      at = clamped ? spans : i - order + 1;
    else if (!in_.OneIn(6))
      at = i - order + 1;  // otherwise that of the knot before, once more
    knots[i] = from + width * at / (spans > 0 ? spans : 1);
  }
}

void Maker::SpoilKnots(double* knots, int32_t total) {
  const uint32_t kind = in_.Below(6);
  if (kind == 3) return std::reverse(knots, knots + total);
  for (int32_t i = 0; i < total; ++i) {
    if (kind == 1)
      knots[i] = one_value_;
    else if (kind == 2)
      knots[i] = in_.Fraction();  // unsorted
    else if (kind == 0 || in_.OneIn(8))
      knots[i] = Malicious();
  }
}

double* Maker::Knots(int32_t order, int32_t count) {
  const std::size_t total = Size(order) + Size(count);
  double* const knots = store_.Numbers(total);
  if (order > 0 && count > 0) SoundKnots(knots, order, count);
  if (hostile() && in_.OneIn(3)) SpoilKnots(knots, static_cast<int32_t>(total));
  return knots;
}

Curve Maker::Spline(bool rational) {
  const int32_t degree = Degree();
  int32_t order = degree < 0 ? degree : degree + 1;
  int32_t count = order < 0 ? 3 : order + in_.Between(0, 6);
  if (hostile() && in_.OneIn(8)) {
    count = order < 0 ? INT32_MAX : in_.Pick({0, 1, order - 1, -1, INT32_MIN});
    if (count < 0 && in_.Below(2)) order = INT32_MAX;
  }
  if (hostile() && in_.OneIn(100) && count > 0 && count <= 100)
    count = in_.Below(2) ? long_counts_.some : long_counts_.few;
  const int32_t held = count == INT32_MAX ? 1 : count;
  const int32_t held_order = order == INT32_MAX ? 1 : order;
  double* const knots = Knots(held_order, held);
  double* const points = Points(held, rational ? 4 : 3);
  return FreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, order, count, points, knots);
}

double* Maker::Widths(int32_t count) {
  double* const widths = store_.Numbers(Size(count));
  const bool unit = in_.Below(2);
  for (int32_t i = 0; i < count; ++i) widths[i] = unit ? 1. / count : .25 + in_.Fraction();
  if (!hostile() || !in_.OneIn(4)) return widths;
  for (int32_t i = 0; i < count; ++i)
    if (in_.Below(2)) widths[i] = in_.Pick({0., -1., double{NAN}, double{INFINITY}, 1e-9, 1e308});
  return widths;
}

Curve Maker::Composite(int level) {
  auto* const block = store_.Zeroed<KurvoSegcv>();
  const ::Curve curve = {CV_SEGCV, block, 0, 0, 0};
  if (hostile() && in_.OneIn(16)) {
    block->count = in_.Pick({0, -1, INT32_MIN});
    return curve;
  }
  const int count = hostile() && in_.OneIn(64) ? long_composite_ : in_.Between(1, 4);
  block->count = count;
  block->curves = store_.Zeroed<::Curve>(static_cast<std::size_t>(count));
  const bool sound = !hostile() || in_.Below(2);
  double from[2] = {Plain(), Plain()};
  for (int i = 0; i < count; ++i) {
    const double to[2] = {Plain(), Plain()};
    block->curves[i] = sound ? Between(from, to) : Curve(level + 1);
    std::memcpy(from, to, sizeof from);
  }
  block->widths = Widths(count);
  return curve;
}

// Composites of one piece, one in the other, around a line.
Curve Maker::Nest(int levels) {
  ::Curve curve = Line();
  for (int i = 0; i < levels; ++i) {
    auto* const block = store_.Zeroed<KurvoSegcv>();
    block->count = 1;
    block->curves = store_.Zeroed<::Curve>();
    block->curves[0] = curve;
    block->widths = store_.Numbers(1);
    block->widths[0] = 1;
    curve = {CV_SEGCV, block, 0, 0, 0};
  }
  return curve;
}

Curve Maker::HalfCircle(const double* from, const double* to) {
  auto* const arc = store_.Zeroed<KurvoArc>();
  for (int i = 0; i < 2; ++i) {
    arc->start[i] = from[i];
    arc->end[i] = to[i];
    arc->centre[i] = (from[i] + to[i]) / 2;
  }
  const double x = to[0] - from[0], y = to[1] - from[1];
  arc->radius = std::sqrt(x * x + y * y) / 2;
  arc->normal[2] = in_.Below(2) ? 1 : -1;
  return {CV_ARC, arc, 0, 0, 0};
}

// A sound curve of any type but composites, from one point to another.
Curve Maker::Between(const double* from, const double* to) {
  taint_ = Taint::kNone;
  const bool rational = in_.Below(2);
  const int size = rational ? 4 : 3;
  const uint32_t kind = in_.Below(8);
  if (kind == 0) return HalfCircle(from, to);
  const int32_t degree = kind == 1 ? 1 : in_.Between(2, 4);
  const int32_t count = kind < 6 ? degree + 1 : degree + 1 + in_.Between(0, 3);
  double* const points = Points(count, size);
  std::memcpy(points, from, 2 * sizeof(double));
  std::memcpy(points + size * (count - 1), to, 2 * sizeof(double));
  if (kind == 1) {
    auto* const line = store_.Zeroed<KurvoLine>();
    std::memcpy(line->start, from, 2 * sizeof(double));
    std::memcpy(line->end, to, 2 * sizeof(double));
    return {CV_LINE, line, 0, 0, 0};
  }
  if (kind < 6) return FreeForm(rational ? CV_RBEZIER : CV_BEZIER, degree, 0, points);
  double* const knots = store_.Numbers(Size(degree + 1 + count));
  for (int32_t i = 0; i < degree + 1 + count; ++i)
    knots[i] = i <= degree ? 0 : i >= count ? 1 : double(i - degree) / (count - degree);
  return FreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, degree + 1, count, points, knots);
}

}  // namespace kurvo_test
