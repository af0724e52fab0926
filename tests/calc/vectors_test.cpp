// Vector arithmetic, lengths and directions; rotation, scaling, mirroring and matrices, against
// vector formulas in long double.
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

struct Exact {
  explicit Exact(const Point& p) : x(p[0]), y(p[1]), z(p[2]) {}
  Exact(long double px, long double py, long double pz) : x(px), y(py), z(pz) {}
  long double x, y, z;
};
Exact operator+(Exact a, Exact b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Exact operator-(Exact a, Exact b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Exact operator*(long double s, Exact a) { return {s * a.x, s * a.y, s * a.z}; }
long double Dot(Exact a, Exact b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Exact Cross(Exact a, Exact b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

// v cos + (k x v) sin + k (k . v) (1 - cos): the vector form of a rotation about the unit vector k.
Exact Rotated(Exact k, long double angle, Exact v) {
  return std::cos(angle) * v + std::sin(angle) * Cross(k, v) +
         (1 - std::cos(angle)) * Dot(k, v) * k;
}

void ExpectNear(const Point& got, Exact want, double bound) {
  EXPECT_NEAR(got[0], static_cast<double>(want.x), bound);
  EXPECT_NEAR(got[1], static_cast<double>(want.y), bound);
  EXPECT_NEAR(got[2], static_cast<double>(want.z), bound);
}

Point UnitAxis(Random& random) {
  Globals g;
  Point axis = random.Spatial(1);
  KurvoclUnitVector(axis, &g);
  return axis;
}

TEST(Rotation, TurnsAboutAnyUnitAxis) {
  Rounds(1000, [&](Random& random, int) {
    const Point axis = UnitAxis(random), v = random.Spatial(100), centre = random.Spatial(100);
    const double angle = random.Uniform(-10, 10);
    Point out;
    EXPECT_EQ(KurvoclRotatePoint(centre, axis, angle, v, out), out.data());
    const Exact c(centre);
    ExpectNear(out, c + Rotated(Exact(axis), L(angle), Exact(v) - c), 4000 * kUlp);
    KurvoclRotateVector(axis, angle, v, out);
    ExpectNear(out, Rotated(Exact(axis), L(angle), Exact(v)), 2000 * kUlp);
    EXPECT_NEAR(KurvoclVectorSize(out), KurvoclVectorSize(v), 2000 * kUlp);
    KurvofcRotateVector(v, angle, out);
    ExpectNear(out, Rotated({0, 0, 1}, L(angle), Exact(v)), 1000 * kUlp);
  });
  Point out;
  KurvoclRotateVector(Point{0, 0, 2}, M_PI / 2, Point{1, 1, 1}, out);  // the axis as it is
  ExpectNear(out, {-2, 2, 4}, 8 * kUlp);
}

TEST(ScalePoint, ScalesUniformlyOrAlongADirectionAndMirrors) {
  Globals g;
  Rounds(1000, [&](Random& random, int) {
    const Point centre = random.Spatial(100);
    const Point p = random.Spatial(100);
    const Point dir = UnitAxis(random);
    const double s = random.Uniform(-3, 3);
    const Exact offset = Exact(p) - Exact(centre);
    Point out;
    EXPECT_EQ(KurvoclScalePoint(centre, Point{}, s, p, out, &g), out.data());
    Exact want = Exact(centre) + L(s) * offset;
    want.z = 0;
    ExpectNear(out, want, 4000 * kUlp);
    KurvoclScalePoint(centre, dir, s, p, out, &g);
    want = Exact(p) + L(s - 1) * Dot(offset, Exact(dir)) * Exact(dir);
    want.z = 0;
    ExpectNear(out, want, 8000 * kUlp);
    const Point normal = random.Planar(5);  // mirroring: the offset along the normal turns back
    const Exact n(normal);
    want = Exact(p) - 2 * Dot(offset, n) / Dot(n, n) * n;
    want.z = 0;
    KurvoclMirrorPoint(centre, normal, p, out, &g);
    ExpectNear(out, want, 8000 * kUlp);
  });
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

TEST(MirrorPoint, DropsZAndWarnsOfAZeroNormal) {
  Globals g;
  Point out;
  KurvoclMirrorPoint(Point{}, Point{0, 2, 0}, Point{1, 1, 7}, out, &g);
  EXPECT_EQ(out, (Point{1, -1, 0}));
  KurvoclMirrorPoint(Point{}, Point{0, 1e-7, 0}, Point{1, 1, 7}, out, &g);
  EXPECT_EQ(out, (Point{1, 1, 0}));
  EXPECT_EQ(KurvoErrGet(&g), KURVO_WARN_SHORT_VECTOR);
}

TEST(TransPoint, ReadsThreeRowsOfAMatrixStoredByColumns) {
  const double matrix[16] = {2, 3, 5, kNaN, 7, 11, 13, kNaN, 17, 19, 23, kNaN, 29, 31, 37, kNaN};
  Point out;
  KurvoclTransPoint(matrix, Point{1, 10, 100}, out);
  EXPECT_EQ(out, (Point{2 + 70 + 1700 + 29, 3 + 110 + 1900 + 31, 5 + 130 + 2300 + 37}));
}

// Each makes out from p, which stands for any of its inputs that may be replaced.
TEST(Transforms, MayReplaceTheirPoint) {
  using V = const double*;
  using G = GlobalVar*;
  static constexpr Point kA = {1, 2, 0}, kB = {4, 5, 6}, kUnit = {.6, .8, 0};
  static constexpr double kLine[6] = {1, 2, 3, 7, 5, 4};
  // clang-format off
  void (*const in_place[])(V p, double* out, G g) = {
      [](V p, double* out, G) { KurvoclSubVector(p, kA, out); },
      [](V p, double* out, G) { KurvoclSubVector(kA, p, out); },
      [](V p, double* out, G) { KurvoclSubVector(p, p, out); },
      [](V p, double* out, G) { KurvoclSclVector(2, p, out); },
      [](V p, double* out, G g) { KurvoclScalePoint(kA, Point{}, 3, p, out, g); },
      [](V p, double* out, G g) { KurvoclScalePoint(kA, kUnit, 3, p, out, g); },
      [](V p, double* out, G g) { KurvoclScalePoint(p, kUnit, 3, kA, out, g); },
      [](V p, double* out, G g) { KurvoclScalePoint(kA, p, 3, kB, out, g); },
      [](V p, double* out, G g) { KurvoclMirrorPoint(kA, kUnit, p, out, g); },
      [](V p, double* out, G g) { KurvoclMirrorPoint(kA, p, kB, out, g); },
      [](V p, double* out, G g) { KurvoclMirrorPoint(p, kUnit, kA, out, g); },
      [](V p, double* out, G g) { KurvoclProjLine(p, kLine, out, g); },
      [](V p, double* out, G g) { KurvofcRPPcirc(50, p, kA, out, 0, g); },
      [](V p, double* out, G g) { KurvofcRPPcirc(50, kA, p, out, 0, g); },
  };
  // clang-format on
  for (const auto transform : in_place) {
    Globals g;
    const Point p = {11, -7, 5};
    Point apart = {kNaN, kNaN, kNaN}, same = p;
    transform(p, apart, &g);
    transform(same, same, &g);
    EXPECT_EQ(same, apart) << "transform " << (&transform - in_place);
  }
}

}  // namespace
}  // namespace kurvo_test
