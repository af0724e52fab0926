// The distance between two curves by dense sampling in long double.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "query/reference.h"

namespace kurvo_test {

using LongPoint = Reference::LongPoint;

// A part of a curve that is smooth, with the stretch of the whole curve's parameters it covers.
struct Leaf {
  double start, end;
  std::function<LongPoint(long double)> at;  // by the whole curve's parameter
};

inline void Collect(const Curve& cv, double offset, double scale, std::vector<Leaf>& leaves) {
  if (cv.type == CV_SEGCV) {
    const auto& block = *static_cast<const KurvoSegcv*>(cv.data);
    double before = 0;
    for (int i = 0; i < block.count; before += block.widths[i++])
      Collect(block.curves[i], offset + before * scale, block.widths[i] * scale, leaves);
    return;
  }
  const auto own = [=](long double t) { return (t - L(offset)) / L(scale); };
  if (cv.type == CV_LINE) {
    const auto& line = *static_cast<const KurvoLine*>(cv.data);
    leaves.push_back({offset, offset + scale, [=](long double t) {
                        const long double u = own(t);
                        return LongPoint{
                            L(line.start[0]) + u * (L(line.end[0]) - L(line.start[0])),
                            L(line.start[1]) + u * (L(line.end[1]) - L(line.start[1]))};
                      }});
  } else if (cv.type == CV_ARC) {
    const auto& arc = *static_cast<const KurvoArc*>(cv.data);
    const auto angle = [&](const Coord p) {
      return std::atan2(L(p[1]) - L(arc.centre[1]), L(p[0]) - L(arc.centre[0]));
    };
    const long double from = angle(arc.start);
    long double sweep = angle(arc.end) - from;
    if (arc.normal[2] < 0 && sweep > 0) sweep -= 2 * kPiL;
    if (arc.normal[2] >= 0 && sweep < 0) sweep += 2 * kPiL;
    leaves.push_back({offset, offset + scale, [=](long double t) {
                        const long double at = from + own(t) * sweep;
                        return LongPoint{L(arc.centre[0]) + L(arc.radius) * std::cos(at),
                                         L(arc.centre[1]) + L(arc.radius) * std::sin(at)};
                      }});
  } else {
    const Reference reference(cv);
    leaves.push_back({offset + reference.start() * scale, offset + reference.end() * scale,
                      [=](long double t) { return reference.PointAt(own(t)); }});
  }
}

class Oracle {
 public:
  explicit Oracle(const Curve& cv) {
    Collect(cv, 0, 1, leaves_);
    for (const Leaf& leaf : leaves_)
      for (int i = 0; i <= kSamples; ++i) {
        const long double t = leaf.start + (L(leaf.end) - L(leaf.start)) * i / kSamples;
        samples_.push_back({t, leaf.at(t), &leaf});
      }
  }

  // The points at t: where a composite jumps from one piece to the next there are two.
  std::vector<LongPoint> At(double t) const {
    std::vector<LongPoint> points;
    for (const Leaf& leaf : leaves_)
      if (leaf.start - 1e-12 <= t && t <= leaf.end + 1e-12) points.push_back(leaf.at(t));
    return points;
  }

  static long double Gap(const LongPoint& p, const LongPoint& q) {
    return std::hypot(p.x - q.x, p.y - q.y);
  }

  // The least distance, from the nearest samples by search on ever smaller grids.
  static long double Distance(const Oracle& a, const Oracle& b) {
    std::vector<Seed> seeds;
    for (const Sample& p : a.samples_) {
      Seed nearest{HUGE_VALL, &p, nullptr};
      for (const Sample& q : b.samples_) {
        const long double x = p.p.x - q.p.x, y = p.p.y - q.p.y, square = x * x + y * y;
        if (square < nearest.square) nearest = {square, &p, &q};
      }
      seeds.push_back(nearest);
    }
    std::sort(seeds.begin(), seeds.end(),
              [](const Seed& x, const Seed& y) { return x.square < y.square; });
    long double least = HUGE_VALL;
    for (std::size_t i = 0; i < seeds.size() && i < 12; ++i)
      least = std::min(least, Refine(*seeds[i].a, *seeds[i].b));
    return least;
  }

 private:
  static constexpr int kSamples = 160;

  struct Sample {
    long double t;
    LongPoint p;
    const Leaf* leaf;
  };
  struct Seed {
    long double square;
    const Sample *a, *b;
  };

  static long double Refine(const Sample& a, const Sample& b) {
    const Leaf &on_a = *a.leaf, &on_b = *b.leaf;
    long double s = a.t, t = b.t, least = Gap(a.p, b.p);
    long double ds = (L(on_a.end) - L(on_a.start)) / kSamples,
                dt = (L(on_b.end) - L(on_b.start)) / kSamples;
    for (int round = 0; round < 40; ++round, ds *= 0.6L, dt *= 0.6L) {
      const long double s0 = s, t0 = t;
      for (int i = -2; i <= 2; ++i)
        for (int j = -2; j <= 2; ++j) {
          const auto u = std::clamp<long double>(s0 + ds * i / 2, on_a.start, on_a.end);
          const auto v = std::clamp<long double>(t0 + dt * j / 2, on_b.start, on_b.end);
          const long double gap = Gap(on_a.at(u), on_b.at(v));
          if (gap < least) {
            least = gap;
            s = u;
            t = v;
          }
        }
    }
    return least;
  }

  std::vector<Leaf> leaves_;
  std::vector<Sample> samples_;
};

}  // namespace kurvo_test
