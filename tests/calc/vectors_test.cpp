// Vector arithmetic, lengths and directions.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>

#include "support/basics.h"

namespace kurvo_test {
namespace {

TEST(Vectors, ArithmeticUsesEveryComponent) {
  const Point a = {2, 3, 5};
  const Point b = {7, 11, 17};
  Point out;
  KurvoclCopyVector(a, out);
  EXPECT_EQ(out, a);
  KurvoclSubVector(a, b, out);
  EXPECT_EQ(out, (Point{-5, -8, -12}));
  KurvoclSclVector(-3, a, out);
  EXPECT_EQ(out, (Point{-6, -9, -15}));
  KurvoclOuterProduct(a, b, out);
  EXPECT_EQ(out, (Point{3 * 17 - 5 * 11, 5 * 7 - 2 * 17, 2 * 11 - 7 * 3}));
  EXPECT_EQ(KurvoclInnerProduct(a, b), 2 * 7 + 3 * 11 + 5 * 17);
  EXPECT_EQ(KurvoclVectorSize(Point{2, -3, 6}), 7);
  EXPECT_EQ(KurvoclDistPoint(Point{0, 0, 5}, Point{3, 4, -5}), 5);
  KurvoclSetCoord(out, 1, 2, 3);
  EXPECT_EQ(out, (Point{1, 2, 3}));
  std::array<double, 4> weighted;
  KurvoclSetHCoord(weighted.data(), 1, 2, 3, 4);
  EXPECT_EQ(weighted, (std::array<double, 4>{1, 2, 3, 4}));
}

TEST(Vectors, MayBeReplacedInPlace) {
  Point a = {2, 3, 5};
  KurvoclSubVector(a, Point{1, 1, 1}, a);
  EXPECT_EQ(a, (Point{1, 2, 4}));
  KurvoclSubVector(Point{1, 1, 1}, a, a);
  EXPECT_EQ(a, (Point{0, -1, -3}));
  KurvoclSclVector(2, a, a);
  EXPECT_EQ(a, (Point{0, -2, -6}));
  KurvoclSubVector(a, a, a);
  EXPECT_EQ(a, (Point{0, 0, 0}));
}

TEST(Fabs, ClearsTheSignBitAndNothingElse) {
  const uint64_t rows[] = {0x8000000000000000, 0xBFF0000000000000, 0xFFF8000000ABCDEF,
                           0xFFF0000000000000, 0x7FF8000000001234, 1};
  for (const uint64_t bits : rows) {
    const double result = KurvoclFabs(std::bit_cast<double>(bits));
    EXPECT_EQ(std::bit_cast<uint64_t>(result), bits & 0x7FFFFFFFFFFFFFFFu);
  }
}

TEST(UnitVector, DividesAndDoesNotMultiplyByAReciprocal) {
  Globals g;
  Point v = {3, 4, 0}, small = {.8e-6, -.8e-6, 0};  // longer than epsilon, but in no component
  KurvoclUnitVector(v, &g);
  EXPECT_EQ(v, (Point{.6, .8, 0}));
  EXPECT_EQ(KurvoErrGet(&g), 0);
  KurvoclUnitVector(small, &g);
  EXPECT_EQ(small, (Point{0, 0, 0}));
  EXPECT_EQ(KurvoErrGet(&g), KURVO_WARN_SHORT_VECTOR);
}

TEST(VectorAngle, IsTheUnsignedPlanarAngle) {
  Globals g;
  EXPECT_EQ(KurvoclVectorAngle(Point{1, 0, 0}, Point{-1, 0, 0}, &g), M_PI);
  EXPECT_EQ(KurvoclVectorAngle(Point{-1, -0.0, 0}, Point{-1, 0, 0}, &g), 0);
  Rounds(2000, [&](Random& random, int) {
    const Point a = random.Spatial(3), b = random.Spatial(1e3), back = {-2 * a[0], -2 * a[1], 9},
                across = {-a[1], a[0], 0};
    const auto want = static_cast<double>(
        std::atan2(std::fabs(L(a[0]) * b[1] - L(a[1]) * b[0]), L(a[0]) * b[0] + L(a[1]) * b[1]));
    EXPECT_NEAR(KurvoclVectorAngle(a, b, &g), want, 16 * kUlp);
    EXPECT_EQ(KurvoclParaVector(a, b, &g), int{want < 1e-6 || want > M_PI - 1e-6});
    for (const Point& v : {a, back}) {
      EXPECT_EQ(KurvoclParaVector(a, v, &g), 1);
      EXPECT_EQ(KurvoclParaVector(v, a, &g), 1);
      EXPECT_EQ(KurvoclParaVector(v, across, &g), 0);
    }
  });
  for (const Point& axis : {Point{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {-1, -0.0, 0}})
    EXPECT_EQ(KurvoclParaVector(axis, Point{-axis[0], -axis[1], 0}, &g), 1) << axis[0];
}

// With a wide epsilon a clockwise angle beyond 0.0001 counts as nearly a full turn, so only the
// counter-clockwise one is within epsilon; VectorAngle takes epsilon for the same step.
TEST(ParaVector, KeepsItsOwnSlackBelowZero) {
  Globals g(.01);
  const Point x = {1, 0, 0};
  EXPECT_EQ(KurvoclParaVector(x, Point{1, .005, 0}, &g), 1);
  EXPECT_EQ(KurvoclParaVector(x, Point{1, -.005, 0}, &g), 0);
  EXPECT_EQ(KurvoclParaVector(x, Point{1, -.00009, 0}, &g), 1);
  EXPECT_EQ(KurvoclParaVector(x, Point{1, -.00011, 0}, &g), 0);
  EXPECT_LT(KurvoclVectorAngle(x, Point{1, -.005, 0}, &g), 0);
}

}  // namespace
}  // namespace kurvo_test
