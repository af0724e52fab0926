// Integrals along curves in long double.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "support/basics.h"
#include "support/oracle.h"

namespace kurvo_test {

struct WideAt {
  Wide x, y, dx, dy;
};

// Point, from an origin, and velocity of a part: de Casteljau's algorithm.
inline WideAt AtPart(const Oracle::Part& part, Wide s, LongPoint origin = {0, 0}) {
  if (part.points.empty()) {
    const Wide angle = part.angle + s * part.sweep;
    const Wide x = part.r * std::cos(angle), y = part.r * std::sin(angle);
    return {part.cx - origin.x + x, part.cy - origin.y + y, -part.sweep * y, part.sweep * x};
  }
  std::vector<WidePoint> d = part.points;
  for (WidePoint& p : d) p = {p.x - p.w * origin.x, p.y - p.w * origin.y, p.w};
  const Wide n = static_cast<Wide>(d.size() - 1);
  if (d.size() == 1) return {d[0].x / d[0].w, d[0].y / d[0].w, 0, 0};
  for (; d.size() > 2; d.pop_back())
    for (std::size_t i = 0; i + 1 < d.size(); ++i) d[i] = Between(d[i], d[i + 1], s);
  const WidePoint p = Between(d[0], d[1], s);
  const Wide x = p.x / p.w, y = p.y / p.w, dw = d[1].w - d[0].w;
  return {x, y, n * (d[1].x - d[0].x - dw * x) / p.w, n * (d[1].y - d[0].y - dw * y) / p.w};
}

// The integral of f over [from, to] by 20 nodes, halved until both agree; at least `least` times.
template <class F>
Wide WideIntegral(const F& f, Wide from, Wide to, int least = 4, int most = 50) {
  constexpr int kNodes = 20;
  static const auto rule = [] {
    std::array<std::array<Wide, 2>, kNodes> nodes;
    for (int i = 0; i < kNodes; ++i) {
      Wide x = std::cos(kPiL * (i + .75L) / (kNodes + .5L)), slope = 1;
      for (int step = 0; step < 9; ++step) {
        Wide before = 1, now = x;
        for (int k = 2; k <= kNodes; ++k) {
          const Wide next = ((2 * k - 1) * x * now - (k - 1) * before) / k;
          before = now;
          now = next;
        }
        slope = kNodes * (x * now - before) / (x * x - 1);
        x -= now / slope;
      }
      nodes[static_cast<std::size_t>(i)] = {x, 2 / ((1 - x * x) * slope * slope)};
    }
    return nodes;
  }();
  const auto sum = [&f](Wide a, Wide b) {
    Wide total = 0;
    for (const auto& [x, weight] : rule) total += weight * f((a + b) / 2 + (b - a) / 2 * x);
    return total * (b - a) / 2;
  };
  struct Halver {
    const decltype(sum)& rule;
    Wide operator()(Wide a, Wide b, Wide whole, Wide scale, int must, int may) const {
      const Wide middle = (a + b) / 2, low = rule(a, middle), high = rule(middle, b);
      const bool agree = 1e-15L * scale >= std::fabs(low + high - whole);
      if (may == 0 || (must <= 0 && agree)) return low + high;
      return (*this)(a, middle, low, scale, must - 1, may - 1) +
             (*this)(middle, b, high, scale, must - 1, may - 1);
    }
  };
  const Wide whole = sum(from, to);
  const auto size = [&f](Wide s) { return std::fabs(f(s)); };
  Wide scale = 0;
  for (const auto& [x, weight] : rule)
    scale += weight * size((from + to) / 2 + (to - from) / 2 * x);
  return Halver{sum}(from, to, whole, scale * (to - from) / 2, least, most);
}

// The length of a curve; `breaks` are parameters of the parts at which they may have cusps.
inline Wide WideLength(const Curve& curve, std::vector<Wide> breaks = {}) {
  const bool has_cusps = !breaks.empty();
  breaks.insert(breaks.end(), {0, 1});
  for (const Wide b : std::vector<Wide>(breaks))  // ever finer towards cusps
    for (Wide step = .5L; has_cusps && step > 1e-16L; step /= 2)
      for (const Wide t : {b - step, b + step})
        if (t > 0 && t < 1 && b > 0 && b < 1) breaks.push_back(t);
  std::sort(breaks.begin(), breaks.end());
  Wide length = 0;
  for (const Oracle::Part& part : Oracle(curve).Parts()) {
    LongPoint origin = {part.cx, part.cy};
    if (!part.points.empty())
      origin = {part.points[0].x / part.points[0].w, part.points[0].y / part.points[0].w};
    for (std::size_t i = 0; i + 1 < breaks.size(); ++i) {
      const auto speed = [&](Wide s) {
        const WideAt at = AtPart(part, s, origin);
        return std::hypot(at.dx, at.dy);
      };
      length += part.points.empty() ? std::fabs(part.r * part.sweep) * (breaks[i + 1] - breaks[i])
                                    : WideIntegral(speed, breaks[i], breaks[i + 1],
                                                   has_cusps ? 0 : 3, has_cusps ? 0 : 22);
    }
  }
  return length;
}

}  // namespace kurvo_test
