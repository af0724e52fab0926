// Offsets of tests, and random outlines for them.
#pragma once

#include <kurvo_outline.h>

#include <algorithm>
#include <numbers>

#include "support/generator.h"
#include "support/region.h"

namespace kurvo_test {

constexpr double kPi = std::numbers::pi;

struct Offset {
  Region region;
  KurvoReport report;
  int code;
};

inline Offset OffsetOf(const Region& region, double distance, const KurvoOptions& options) {
  Offset offset;
  Globals g;
  KurvoRegionOffset(region.get(), distance, &options, offset.region.get(), &offset.report, &g);
  offset.code = KurvoErrGet(&g);
  return offset;
}

// A star about the origin, of curves of all types between points on rays, or only of those that
// have no corners within; loops of such curves cross themselves as often as not. A rough one has
// many, shorter than usual distances.
inline Chain RandomStar(Random& random, bool is_rough, bool is_smooth = false) {
  const int n = is_rough ? RandomInt(random, 20, 120) : RandomInt(random, 3, 8);
  const double least = is_rough ? random.Uniform(1, 6) : 1;
  std::vector<XY> points;
  for (int i = 0; i < n; ++i) {
    const double angle = 2 * kPi * i / n, r = random.Uniform(least, 6);
    points.push_back({r * std::cos(angle), r * std::sin(angle)});
  }
  std::vector<Owned> curves;
  for (int i = 0; i < n; ++i) {
    do {
      if (std::ssize(curves) > i) curves.pop_back();
      curves.push_back(RandomBetween(random, points[static_cast<std::size_t>(i)],
                                     points[static_cast<std::size_t>((i + 1) % n)]));
    } while (is_smooth && (IsSpline(curves.back()->type) || curves.back()->type == CV_SEGCV));
  }
  return Chain(std::move(curves));
}

// What is left of a region when nothing crosses.
inline Region SimpleOf(const Region& region, double tol) {
  Globals g;
  Region simple;
  const KurvoOptions options = OptionsOf(tol);
  EXPECT_TRUE(KurvoRegionSimplify(region.get(), &options, simple.get(), nullptr, &g));
  return simple;
}

struct Star {
  Star(Random& random, double tol, bool is_rough = false) {
    crossed.Add(RandomStar(random, is_rough), 1e-6);
    simple = SimpleOf(crossed, tol);
  }

  Region crossed, simple;
};

inline double DistanceTo(const KurvoRegion& region, const Point& q) {
  Globals g;
  double least = kInfinity;
  for (int i = 0; i < region.count; ++i) {
    KurvoPlace place;
    double distance;
    EXPECT_TRUE(KurvoChainNearest(&region.loops[i], q.data(), 1, &place, &distance, &g));
    least = std::min(least, distance);
  }
  return least;
}

}  // namespace kurvo_test
