#include "support/oracle.h"

#include <algorithm>

#include "support/curve_text.h"

namespace kurvo_test {

WideTurn Turn(const KurvoArc& arc) {
  const auto angle = [&](const double* p) {
    return std::atan2(L(p[1]) - arc.centre[1], L(p[0]) - arc.centre[0]);
  };
  const Wide start = angle(arc.start);
  Wide sweep = angle(arc.end) - start;
  if (arc.normal[2] < 0 && sweep > 0) sweep -= 2 * kPiL;
  if (!(arc.normal[2] < 0) && sweep < 0) sweep += 2 * kPiL;
  return {start, sweep};
}

Oracle::Oracle(const Curve& cv) { Collect(cv, 0, 1, nullptr); }

void Oracle::Collect(const Curve& cv, Wide start, Wide width, const Curve* outer) {
  if (cv.type == CV_SEGCV) {
    const auto& block = *static_cast<const KurvoSegcv*>(cv.data);
    for (int i = 0; i < block.count; start += width * block.widths[i++])
      Collect(block.curves[i], start, width * block.widths[i], outer ? outer : block.curves + i);
    return;
  }
  Leaf leaf{outer ? outer : &cv, start, width, {}, {}};
  if (cv.type == CV_LINE) {
    const auto& line = *static_cast<KurvoLine*>(cv.data);
    leaf.points = {{line.start[0], line.start[1], 1}, {line.end[0], line.end[1], 1}};
    leaf.knots = {0, 0, 1, 1};
  } else if (cv.type == CV_ARC) {
    const auto& arc = *static_cast<KurvoArc*>(cv.data);
    const auto [angle, sweep] = Turn(arc);
    leaf.cx = arc.centre[0];
    leaf.cy = arc.centre[1];
    leaf.r = arc.radius;
    leaf.angle = angle;
    leaf.sweep = sweep;
  } else {
    const FreeForm form(cv);
    for (int i = 0; i < form.count; ++i) {
      const double* p = form.point(i);
      const Wide w = form.stride == 4 ? p[3] : 1;
      leaf.points.push_back({w * p[0], w * p[1], w});
    }
    for (int i = 0; i < form.order + form.count; ++i)
      leaf.knots.push_back(form.knots ? form.knots[i] : i >= form.order);
  }
  leaves_.push_back(std::move(leaf));
}

const Oracle::Leaf& Oracle::LeafAt(Wide t, Side side) const {
  const Leaf* found = &leaves_.front();
  for (const Leaf& leaf : leaves_)
    if (side == Side::kBefore ? leaf.start < t : leaf.start <= t) found = &leaf;
  return *found;
}

// The last one that begins before u, the first one for u before all.
std::size_t Oracle::Leaf::Span(Wide u, Side side) const {
  const auto first = knots.begin() + static_cast<std::ptrdiff_t>(order()),
             last = knots.begin() + static_cast<std::ptrdiff_t>(points.size());
  auto next =
      side == Side::kBefore ? std::lower_bound(first, last, u) : std::upper_bound(first, last, u);
  while (next > first && !(next[-1] < *next)) --next;
  while (next < last && !(next[-1] < *next)) ++next;
  return static_cast<std::size_t>(next - knots.begin()) - 1;
}

template <std::size_t kSize>
JetPoint<kSize> Oracle::FreeFormAt(const Leaf& leaf, Wide u, Side side) {
  using Series = Jet<kSize>;
  struct Weighted {
    Series x, y, w;
  };
  const std::size_t n = leaf.order() - 1, span = leaf.Span(u, side);
  std::vector<Weighted> d;
  for (std::size_t i = span - n; i <= span; ++i) {
    const auto [x, y, w] = leaf.points[i];
    d.push_back({{{x}}, {{y}}, {{w}}});
  }
  for (std::size_t level = 1; level <= n; ++level) {
    for (std::size_t j = n; j >= level; --j) {
      const Wide left = leaf.knots[span - n + j], width = leaf.knots[span + j - level + 1] - left;
      Series s{{(u - left) / width}};
      if constexpr (kSize > 1) s.c[1] = 1 / width;
      const Weighted& a = d[j - 1];
      Weighted& b = d[j];
      b = {a.x + s * (b.x - a.x), a.y + s * (b.y - a.y), a.w + s * (b.w - a.w)};
    }
  }
  const Weighted& q = d.back();
  return {q.x / q.w, q.y / q.w, leaf.knots[span + 1] - leaf.knots[span], leaf.outer};
}

template <std::size_t kSize>
JetPoint<kSize> Oracle::JetAt(Wide t, Side side) const {
  const Leaf& leaf = LeafAt(t, side);
  const Wide u = (t - leaf.start) / leaf.width;
  if (!leaf.points.empty()) return FreeFormAt<kSize>(leaf, u, side);
  JetPoint<kSize> p;
  p.piece = leaf.outer;
  Wide factor = leaf.r;
  for (std::size_t k = 0; k < kSize; ++k) {  // each derivative turns by a quarter
    const Wide at = leaf.angle + u * leaf.sweep + kPiL / 2 * static_cast<Wide>(k);
    p.x.c[k] = factor * std::cos(at);
    p.y.c[k] = factor * std::sin(at);
    factor *= leaf.sweep / static_cast<Wide>(k + 1);
  }
  p.x.c[0] += leaf.cx;
  p.y.c[0] += leaf.cy;
  return p;
}
template JetPoint<1> Oracle::JetAt(Wide t, Side side) const;
template JetPoint<4> Oracle::JetAt(Wide t, Side side) const;
template JetPoint<8> Oracle::JetAt(Wide t, Side side) const;

LongPoint Oracle::PointAt(Wide t, Side side) const { return JetAt<1>(t, side).Derivative(0); }

Wide Oracle::start() const {
  const Leaf& leaf = leaves_.front();
  const bool alone = leaves_.size() == 1 && !leaf.points.empty();
  return leaf.start + (alone ? leaf.width * leaf.knots[leaf.order() - 1] : 0);
}

Wide Oracle::end() const {
  const Leaf& leaf = leaves_.back();
  const bool alone = leaves_.size() == 1 && !leaf.points.empty();
  return leaf.start + leaf.width * (alone ? leaf.knots[leaf.points.size()] : 1);
}

std::vector<Oracle::Part> Oracle::Parts() const {
  std::vector<Part> parts;
  for (const Leaf& leaf : leaves_) {
    if (leaf.points.empty())
      parts.push_back(
          {{}, leaf.cx, leaf.cy, leaf.r, leaf.angle, leaf.sweep, leaf.start, leaf.width});
    const std::size_t p = leaf.order() - 1;
    for (std::size_t span = p; span < leaf.points.size(); ++span) {
      const Wide* u = &leaf.knots[span];
      if (!(u[0] < u[1])) continue;
      Part part{{}, 0, 0, 0, 0, 0, leaf.start + leaf.width * u[0], leaf.width * (u[1] - u[0])};
      for (std::size_t q = 0; q <= p; ++q) {  // the blossom at q times u[1] and p - q times u[0]
        std::vector<WidePoint> d(&leaf.points[span - p], &leaf.points[span] + 1);
        for (std::size_t r = 1; r <= p; ++r)
          for (std::size_t j = p; j >= r; --j) {
            const Wide left = leaf.knots[span - p + j], right = leaf.knots[span + j - r + 1];
            d[j] = Between(d[j - 1], d[j], ((r <= q ? u[1] : u[0]) - left) / (right - left));
          }
        part.points.push_back(d.back());
      }
      parts.push_back(std::move(part));
    }
  }
  return parts;
}

namespace {

// The length of a smooth stretch by the five-point rule of Gauss and Legendre.
template <class Speed>
Wide GaussLegendre(const Speed& speed, Wide from, Wide to) {
  constexpr Wide kNodes[] = {.538469310105683091L, .906179845938663993L};
  constexpr Wide kWeights[] = {.478628670499366468L, .236926885056189088L};
  const Wide middle = (from + to) / 2, half = (to - from) / 2;
  Wide sum = .568888888888888889L * speed(middle);
  for (std::size_t i = 0; i < 2; ++i)
    sum += kWeights[i] * (speed(middle - half * kNodes[i]) + speed(middle + half * kNodes[i]));
  return half * sum;
}

template <class Speed>
Wide SmoothLength(const Speed& speed, Wide from, Wide to, Wide whole, int depth) {
  constexpr Wide kAgreed = 1e-8L;  // far below what the library promises
  constexpr int kMaxDepth = 24;    // a cusp: the rest is shorter than a millionth
  const Wide middle = (from + to) / 2, left = GaussLegendre(speed, from, middle),
             right = GaussLegendre(speed, middle, to);
  if (std::fabs(left + right - whole) <= kAgreed || depth == kMaxDepth) return left + right;
  return SmoothLength(speed, from, middle, left, depth + 1) +
         SmoothLength(speed, middle, to, right, depth + 1);
}

}  // namespace

Wide Oracle::Length(Wide from, Wide to) const {
  if (to < from) return -Length(to, from);
  Wide sum = 0;
  for (std::size_t i = 0; i < leaves_.size(); ++i) {
    const Leaf& leaf = leaves_[i];
    const Wide low = i == 0 ? from : std::max(from, leaf.start),
               high = i + 1 == leaves_.size() ? to : std::min(to, leaves_[i + 1].start);
    if (!(low < high)) continue;
    const auto own = [&](Wide t) { return (t - leaf.start) / leaf.width; };
    std::vector<Wide> breaks = {own(low)};
    for (std::size_t k = leaf.order(); k < leaf.points.size(); ++k)
      if (leaf.knots[k] > breaks.back() && leaf.knots[k] < own(high))
        breaks.push_back(leaf.knots[k]);
    breaks.push_back(own(high));
    const auto speed = [&](Wide u) {
      return leaf.points.empty() ? std::fabs(leaf.r * leaf.sweep)
                                 : FreeFormAt<4>(leaf, u, Side::kBefore).Size(1);
    };
    for (std::size_t k = 0; k + 1 < breaks.size(); ++k)
      sum += SmoothLength(speed, breaks[k], breaks[k + 1],
                          GaussLegendre(speed, breaks[k], breaks[k + 1]), 0);
  }
  return sum;
}

}  // namespace kurvo_test
