// Random curves of all types.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "robust/records.h"
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

constexpr int kDeepNest = 10000;
constexpr int32_t kLongArray = 100000;

std::size_t Size(int32_t count) { return count > 0 ? static_cast<std::size_t>(count) : 0; }

}  // namespace

Curve Maker::Curve(int32_t wanted, int level) {
  constexpr decltype(taint_) kTaints[] = {{0, 1, {}}, {0, 1, {}}, {0, 1, {}},     {8, 1, {}},
                                          {8, 1, {}}, {1, 1, {}}, {0, 1e150, {}}, {0, 1e-9, {}}};
  taint_ = hostile() ? in_.Pick(kTaints) : kTaints[0];
  if (hostile() && in_.OneIn(9)) taint_.one_value = in_.Below(2) ? Plain() : Malicious();
  const bool top = hostile() && level == 0;
  if (top && in_.OneIn(64)) return Nest(in_.OneIn(16) ? kDeepNest : in_.Between(60, 70));
  int32_t type = kAllTypes[in_.Below(level < 2 ? 7 : 6)];
  if (wanted && in_.Below(8)) type = wanted == CV_BSPLINE && in_.Below(2) ? CV_RBSPLINE : wanted;
  ::Curve curve = type == CV_LINE    ? Line()
                  : type == CV_ARC   ? Arc()
                  : type == CV_SEGCV ? Composite(level)
                                     : FreeForm(type);
  if (hostile() && in_.OneIn(level == 0 ? 20 : 32)) Misname(curve);
  return curve;
}

// Takes the block away, or an array that the header counts, or names a type that is none.
void Maker::Misname(::Curve& curve) {
  curve.attr = static_cast<int32_t>(in_.Below(3));
  if (in_.OneIn(3)) curve.type = in_.Pick({0, 1, 17, -16, 1007, 1009, INT32_MAX, INT32_MIN});
  const bool two_arrays = IsSpline(curve.type) || curve.type == CV_SEGCV;
  if (in_.OneIn(3))
    curve.data = nullptr;
  else if (two_arrays || curve.type == CV_BEZIER || curve.type == CV_RBEZIER)
    std::memset(static_cast<char*>(curve.data) + (two_arrays && in_.Below(2) ? 16 : 8), 0, 8);
}

double Maker::Coordinate() {
  if (taint_.one_value) return *taint_.one_value;
  return taint_.rarity && in_.Below(taint_.rarity) == 0 ? Malicious() : taint_.scale * Plain();
}

double Maker::Weight() {
  if (tainted() && in_.OneIn(3))
    return in_.Pick({0., -0., -1., 1e-7, -1e-7, 1e-300, 1e300, kNaN, kInfinity, 5e-324});
  return in_.Below(4) ? in_.Pick({1., 1., 1., .5, 2., .70703125, 3., .25})
                      : .125 + 2 * in_.Fraction();
}

int32_t Maker::Degree() {
  if (!hostile() || in_.Below(16) < 10) return in_.Pick({3, 3, 2, 1, 3, 4, 5, 3, 2, 7});
  if (in_.OneIn(40)) return in_.Pick({1000, 1023, 1024, 4095, 4096, 4097, kLongArray});
  return in_.Pick({0,  1,  6,  12, 13, 14, 15, 16, 19,  20, 21, 23,        24,
                   25, 38, 39, 40, 41, 63, 64, 65, 128, -1, -2, INT32_MIN, 3});
}

// Numbers that are to ascend, or to be positive.
void Maker::Taint(double* numbers, int32_t count) {
  const uint32_t kind = in_.Below(6);
  const double value = in_.Below(2) ? Plain() : Malicious();
  if (kind == 3) return std::reverse(numbers, numbers + count);
  for (int32_t i = 0; i < count; ++i) {
    if (kind == 1 || kind == 2)
      numbers[i] = kind == 1 ? value : in_.Fraction();
    else if (kind == 0 || in_.OneIn(8))
      numbers[i] = Malicious();
  }
}

double* Maker::Points(int32_t count, int size) {
  double* const points = store_.Numbers(Size(count) * static_cast<std::size_t>(size));
  const bool flat = !hostile() || in_.Below(2);
  for (double* p = points; p != points + Size(count) * static_cast<std::size_t>(size); p += size) {
    for (int i = 0; i < 2; ++i) p[i] = Coordinate();
    if (!flat) p[2] = Coordinate();
    if (size == 4) p[3] = Weight();
    if (p != points && in_.OneIn(16)) std::memcpy(p, p - size, 3 * sizeof(double));
  }
  return points;
}

double* Maker::Knots(int32_t order, int32_t count) {
  order = std::max(order, 0);
  count = std::max(count, 0);
  double* const knots = store_.Numbers(Size(order) + Size(count));
  const double width = joined_ || in_.Below(4) ? 1 : in_.Between(1, 12) / 4.;
  const double from = joined_ || in_.Below(4) ? 0 : in_.Between(-8, 8) / 4.;
  const bool clamped = joined_ || in_.Below(4) != 0;
  const int32_t spans = std::max(count - order + 1, 1);
  for (int32_t i = 0; i < order + count; ++i) {
    const int32_t at = clamped ? std::clamp(i - order + 1, 0, spans) : i - order + 1;
    const bool repeats = order <= i && i < count && i > 0 && in_.OneIn(6);
    knots[i] = repeats ? knots[i - 1] : from + width * at / spans;
  }
  if (hostile() && in_.OneIn(3)) Taint(knots, order + count);
  return knots;
}

Curve Maker::Line() {
  const double* const points = Points(2, 3);
  KurvoLine line{};
  std::copy(points, points + 6, line.start);
  return {CV_LINE, store_.Put(line), 0, 0, 0};
}

// Its ends in directions of which the coordinates are exact where they are scaled by the
// denominator.
Curve Maker::Arc() {
  constexpr int kDirections[][3] = {{1, 0, 1},   {0, 1, 1},   {3, 4, 5},   {4, 3, 5},
                                    {5, 12, 13}, {12, 5, 13}, {8, 15, 17}, {15, 8, 17}};
  const int *const from = kDirections[in_.Below(8)], *const to = kDirections[in_.Below(8)];
  const double x = Coordinate(), y = Coordinate(), scale = in_.Between(1, 16) / 8.;
  const double over = in_.Pick({1., -1.}), up = in_.Pick({1., -1.}), side = in_.Pick({1., -1.});
  const double a = scale * to[2], b = scale * from[2];
  KurvoArc arc = {a * from[2],
                  {x, y, 0},
                  {0, 0, side},
                  {x + a * from[0], y + a * from[1], 0},
                  {x + over * b * to[0], y + up * b * to[1], 0}};
  const bool all = in_.Below(2);
  double* const numbers = &arc.radius;
  for (int i = 0; i < 13; ++i)
    if (tainted() && (all || in_.OneIn(8))) numbers[i] = Coordinate();
  return {CV_ARC, store_.Put(arc), 0, 0, 0};
}

// The blocks of the four kinds are laid out alike: sizes, points, knots.
Curve Maker::FreeForm(int32_t type) {
  const int size = IsRational(type) ? 4 : 3;
  const int32_t degree = Degree();
  const auto block = [&](int32_t first, int32_t count, double* points, double* knots) {
    const KurvoRBSpline put{first, count, reinterpret_cast<HCoord*>(points), knots, {}};
    return ::Curve{type, store_.Put(put), 0, 0, 0};
  };
  if (!IsSpline(type)) return block(degree, 0, Points(degree < 0 ? 1 : degree + 1, size), nullptr);
  int32_t order = degree < 0 ? degree : degree + 1;
  int32_t count = order < 0 ? 3 : order + in_.Between(0, 6);
  if (hostile() && in_.OneIn(8)) {
    count = order < 0 ? INT32_MAX : in_.Pick({0, 1, order - 1, -1, INT32_MIN});
    if (count < 0 && in_.Below(2)) order = INT32_MAX;
  }
  if (hostile() && in_.OneIn(100) && count > 0 && count <= 100) count = in_.Pick(long_counts_);
  const int32_t held = count == INT32_MAX ? 1 : count;
  double* const knots = Knots(order == INT32_MAX ? 1 : order, held);
  return block(order, count, Points(held, size), knots);
}

// Of so many pieces, each as wide.
Curve Maker::Composite(int32_t count, ::Curve* pieces) {
  double* const widths = store_.Numbers(Size(count));
  std::fill_n(widths, count, 1. / count);
  return {CV_SEGCV, store_.Put(KurvoSegcv{count, 0, pieces, widths, {}}), 0, 0, 0};
}

Curve Maker::Composite(int level) {
  const int count = hostile() && in_.OneIn(64) ? long_composite_ : in_.Between(1, 4);
  const ::Curve curve = Composite(count, store_.Zeroed<::Curve>(Size(count)));
  auto* const block = static_cast<KurvoSegcv*>(curve.data);
  const bool sound = !hostile() || in_.Below(2), other_widths = in_.Below(2);
  double from[2] = {Plain(), Plain()};
  for (int i = 0; i < count; ++i) {
    const double to[2] = {Plain(), Plain()};
    block->curves[i] = sound ? Between(from, to) : Curve(0, level + 1);
    if (other_widths) block->widths[i] = .25 + in_.Fraction();
    std::memcpy(from, to, sizeof from);
  }
  if (hostile() && in_.OneIn(4)) Taint(block->widths, count);
  if (hostile() && in_.OneIn(16)) block->count = in_.Pick({0, -1, INT32_MIN});
  return curve;
}

// Composites of one piece, one in the other, around a line.
Curve Maker::Nest(int levels) {
  ::Curve curve = Line();
  for (int i = 0; i < levels; ++i) curve = Composite(1, store_.Put(curve));
  return curve;
}

// A sound curve of any type but composites, from one point to another.
Curve Maker::Between(const double* from, const double* to) {
  const double x = to[0] - from[0], y = to[1] - from[1];
  const KurvoArc half_circle = {std::sqrt(x * x + y * y) / 2,
                                {(from[0] + to[0]) / 2, (from[1] + to[1]) / 2, 0},
                                {0, 0, in_.Pick({1., -1.})},
                                {from[0], from[1], 0},
                                {to[0], to[1], 0}};
  if (in_.OneIn(8)) return {CV_ARC, store_.Put(half_circle), 0, 0, 0};
  const Mode mode = std::exchange(mode_, Mode::kBenign);
  joined_ = true;
  taint_ = {0, 1, {}};
  constexpr int32_t kTypes[] = {CV_LINE,    CV_BEZIER,  CV_RBEZIER, CV_BEZIER,
                                CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE};
  const int32_t type = in_.Pick(kTypes);
  const ::Curve curve = type == CV_LINE ? Line() : FreeForm(type);
  joined_ = false;
  mode_ = mode;
  double* first = static_cast<double*>(curve.data);
  double* last = first + 3;
  if (type != CV_LINE) {
    const kurvo_test::FreeForm form(curve);
    first = form.points;
    last = form.point(form.count - 1);
  }
  std::memcpy(first, from, 2 * sizeof(double));
  std::memcpy(last, to, 2 * sizeof(double));
  return curve;
}

}  // namespace kurvo_test
