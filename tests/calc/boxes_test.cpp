// Boxes and distances to them.
#include <gtest/gtest.h>

#include <cmath>

#include "support/basics.h"

namespace kurvo_test {
namespace {

struct BoxValue : std::array<double, 6> {
  operator const double*() const { return data(); }
};

BoxValue RandomBox(Random& random) {
  const Point a = random.Spatial(10);
  const Point b = random.Spatial(3);
  return {a[0], a[1], a[2], a[0] + std::fabs(b[0]), a[1] + std::fabs(b[1]), a[2]};
}

// The gap between two intervals, negative by their overlap.
double Gap(double min1, double max1, double min2, double max2) {
  return std::max(min2 - max1, min1 - max2);
}

TEST(DistBoxBox, IsTheLengthOfTheGapsInXAndY) {
  Globals g;
  Rounds(5000, [&](Random& random, int) {
    const BoxValue a = RandomBox(random);
    const BoxValue b = RandomBox(random);
    const double x = Gap(a[0], a[3], b[0], b[3]);
    const double y = Gap(a[1], a[4], b[1], b[4]);
    EXPECT_NEAR(KurvoclDistBoxBox(a, b), std::hypot(std::max(x, 0.0), std::max(y, 0.0)), 1e-14);
    EXPECT_NEAR(KurvoclDistBoxBox(b, a), KurvoclDistBoxBox(a, b), 1e-14);
    EXPECT_EQ(KurvoclBoxBox(a, b, &g), int{x <= 0 && y <= 0});
    const Point p = {b[0], b[1], 7};
    const double px = Gap(a[0], a[3], p[0], p[0]);
    const double py = Gap(a[1], a[4], p[1], p[1]);
    EXPECT_NEAR(KurvoclDistBoxPoint(a, p), std::hypot(std::max(px, 0.0), std::max(py, 0.0)), 1e-14);
    EXPECT_EQ(KurvoclBoxPoint(a, p, &g), int{px <= 0 && py <= 0});
  });
}

TEST(DistBoxPoint, HasNoToleranceAndIsZeroForNaN) {
  const BoxValue unit = {0, 0, 0, 1, 1, 0};
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{1, 1, 5}), 0);
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{1 + 0x1p-30, .5, 0}), 0x1p-30);
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{-3, -4, 0}), 5);
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{kNaN, .5, 0}), 0);
  const BoxValue everything = {-kInfinity, -kInfinity, 0, kInfinity, kInfinity, 0};
  EXPECT_EQ(KurvoclDistBoxPoint(everything, Point{1, 1, 0}), 0);
}

}  // namespace
}  // namespace kurvo_test
