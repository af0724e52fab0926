#include <gtest/gtest.h>

#include <cmath>

#include "query/reference.h"

namespace kurvo_test {
namespace {

struct Found {
  int result;
  double t;
  int error;
};

Found Parameter(const Curve& cv, const Point& p, double before = -77) {
  Globals g;
  Found found{0, before, 0};
  found.result = KurvocvParameter(&cv, p, &found.t, &g);
  found.error = KurvoErrGet(&g);
  return found;
}

// Coordinates from -size to size, moved by `far` along both axes.
Owned RandomCurve(Random& random, int32_t type, int degree, double size, double far = 0) {
  const bool rational = type == CV_RBEZIER || type == CV_RBSPLINE;
  const bool spline = type == CV_BSPLINE || type == CV_RBSPLINE;
  const int count = degree + 1 + (spline ? static_cast<int>(random.Uniform(0, 8)) : 0);
  Numbers points = RandomPoints(random, count, rational), knots;
  const std::size_t stride = rational ? 3 : 2;
  for (std::size_t i = 0; i < points.size(); ++i)
    if (i % stride < 2) points[i] = far + points[i] * (size / kSize);
  if (!spline) return MakeFreeForm(type, points);
  for (int i = 0; i <= degree; ++i) knots.push_back(-1);
  for (int i = degree + 1; i < count; ++i) knots.push_back(random.Uniform(-1, 3));
  for (int i = 0; i <= degree; ++i) knots.push_back(3);
  std::sort(knots.begin(), knots.end());
  return MakeFreeForm(type, points, knots);
}

TEST(Parameter, OwnPointsAreOnTheCurve) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int32_t type : {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE}) {
    for (int degree = 1; degree <= 13; ++degree) {
      for (int round = 0; round < 40; ++round) {
        const double size = std::pow(10., random.Uniform(-2, 2));
        const double far = round % 4 == 0 ? 1e4 * size : 0;
        const Owned cv = RandomCurve(random, type, degree, size, far);
        for (int i = 0; i < 10; ++i) {
          const double f = i < 2 ? i : random.Uniform(0, 1);
          const Point p = PointAt(*cv, f);
          const Found found = Parameter(*cv, p);
          ASSERT_EQ(found.result, KURVO_ON_CURVE) << type << ' ' << degree << ' ' << f;
          Globals g;
          Point q;
          KurvocvPosition(cv.get(), found.t, q, &g);
          // Roots that agree within 1e-6 in both coordinates may be that far apart along the curve.
          ASSERT_LE(KurvoclDistPoint(p, q), 1e-6 * std::max(1., 40 * size * degree))
              << type << ' ' << degree << ' ' << f << " -> " << found.t;
        }
      }
    }
  }
}

TEST(Parameter, OffTheCurveIsTheFirstFootOrAnEnd) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 300; ++round) {
    const Owned cv = RandomCurve(random, CV_BEZIER, 2 + round % 5, kSize);
    const Reference reference(*cv);
    const Point p = random.Planar(kSize);
    const Found found = Parameter(*cv, p);
    ASSERT_EQ(found.result, KURVO_OFF_CURVE);
    // The first sign change of the slope of the distance, by a fine scan that begins where the
    // search for roots does. Beyond an end it leads to the nearer one.
    const auto dist = [&](long double t) { return reference.DistanceAt(t, p); };
    constexpr int kSteps = 4000;
    double foot = dist(1) > dist(0) ? 0 : 1;
    const auto slope = [&](int i) { return dist(i / L(kSteps) + 1e-8L) - dist(i / L(kSteps)); };
    for (int i = 1 - kSteps / 1000; i <= kSteps; ++i) {
      if (slope(i - 1) * slope(i) <= 0) {
        if (i > 0) foot = (i - .5) / kSteps;
        break;
      }
    }
    ASSERT_NEAR(found.t, foot, 1.5 / kSteps) << round;
  }
}

TEST(Parameter, Table) {
  const std::string line = "(l 0 0 1 0)", next = "(l 1 0 1 2)";
  struct Row {
    std::string curve;
    Point p;
    int result;
    double t;
  };
  const Row rows[] = {
      {"l 0 0 4 0", {1, 0, 0}, KURVO_ON_CURVE, .25},
      {"l 0 0 4 0", {4 + 2e-6, 0, 0}, KURVO_ON_CURVE, 1 + .5e-6},
      {"l 0 0 4 0", {-8e-6, 0, 0}, KURVO_OFF_CURVE, -2e-6},
      {"l 0 0 4 0", {1, 2e-6, 0}, KURVO_OFF_CURVE, .25},
      {"b 0 0 1 1 2 0", {2, 0, 0}, KURVO_ON_CURVE, 1},
      {"b 0 0 1 1 2 0", {0, 0, 0}, KURVO_ON_CURVE, 0},
      {"b 0 0 1 1 2 0", {-1, -1, 0}, KURVO_OFF_CURVE, 0},
      {"b 1 1 1 1", {1, 1, 0}, KURVO_ON_CURVE, 1},
      {"a 0 0 1 0 1.5707963267948966", {1, 0, 0}, KURVO_ON_CURVE, 0},
      {"a 0 0 1 0 1.5707963267948966", {0, 1, 0}, KURVO_ON_CURVE, 1},
      {"a 0 0 1 0 -1.5707963267948966", {0, -1, 0}, KURVO_ON_CURVE, 1},
      {"a 0 0 1 0 1.5707963267948966", {.1, -1, 0}, KURVO_OFF_CURVE, -.9365489651388929},
      {"c 1 2 " + line + next, {1, 0, 0}, KURVO_ON_CURVE, 1},
      {"c 1 2 " + line + next, {1, 1, 0}, KURVO_ON_CURVE, 2},
      {"c 1 2 " + line + next, {1.5, 1.5, 0}, KURVO_OFF_CURVE, 2.5},
      {"c 1 2 " + line + next, {.25, .25, 0}, KURVO_OFF_CURVE, .25},
      {"c", {0, 0, 0}, KURVO_ON_CURVE, -77},
      {"c 3 (c 1 2 " + line + next + ")", {1, 1, 0}, KURVO_ON_CURVE, 6},
  };
  for (const Row& row : rows) {
    const Found found = Parameter(*Make(row.curve), row.p);
    EXPECT_EQ(found.result, row.result) << row.curve << " at " << row.p[0] << ' ' << row.p[1];
    EXPECT_NEAR(found.t, row.t, 1e-9) << row.curve << " at " << row.p[0] << ' ' << row.p[1];
    EXPECT_EQ(found.error, 0) << row.curve;
  }
  const Found point = Parameter(*Make("l 1 1 1 1"), {5, 5, 0});
  EXPECT_EQ(point.result, KURVO_ON_CURVE);
  EXPECT_EQ(point.t, 0);
  EXPECT_EQ(point.error, KURVO_WARN_SHORT_VECTOR);
}

// Rounding never puts an arc's own ends off it, nor gives them a parameter one turn away.
TEST(Parameter, EndsOfArcsAreZeroAndOne) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 3000; ++round) {
    const double sweep = random.Uniform(1e-3, 6.28) * (round % 2 ? 1 : -1);
    const Owned arc = Arc(random.Uniform(-9, 9), random.Uniform(-9, 9), random.Uniform(.5, 9),
                          random.Uniform(-3.2, 3.2), sweep);
    const auto& block = arc.block<KurvoArc>();
    const Found start = Parameter(*arc, {block.start[0], block.start[1], 0});
    const Found end = Parameter(*arc, {block.end[0], block.end[1], 0});
    ASSERT_EQ(start.result, KURVO_ON_CURVE) << sweep;
    ASSERT_EQ(end.result, KURVO_ON_CURVE) << sweep;
    ASSERT_NEAR(start.t, 0, 1e-9) << sweep;
    ASSERT_NEAR(end.t, 1, 1e-9) << sweep;
  }
}

}  // namespace
}  // namespace kurvo_test
