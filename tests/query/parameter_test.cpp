// The parameter of a point.
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

struct Found {
  int result;
  double t;
  int error;
};

Found Parameter(const Curve& cv, const Point& p, double eps = 1e-6) {
  Globals g(eps);
  Found found{0, -77, 0};
  found.result = KurvocvParameter(&cv, p, &found.t, &g);
  found.error = KurvoErrGet(&g);
  return found;
}

TEST(Parameter, OwnPointsAreOnTheCurve) {
  Rounds(2000, [&](Random& random, int round) {
    const bool rational = round % 2 == 1;
    const int degree = 1 + round / 4 % 13;
    const double size = std::pow(10., random.Uniform(-2, 2)), far = round % 16 < 4 ? 1e4 * size : 0;
    const Owned cv = round % 4 < 2 ? RandomBezier(random, rational, degree)
                                   : RandomSplineOver(random, rational, degree + 1, -1, 3, degree);
    const auto place = [&](double* p) {
      for (int c = 0; c < 2; ++c) p[c] = far + p[c] * (size / kSize);
    };
    ForEachPoint(*cv, place, [](double) {});
    for (int i = 0; i < 10; ++i) {
      const double f = i < 2 ? i : random.Uniform(0, 1);
      const Point p = PointAt(*cv, f);
      const Found found = Parameter(*cv, p);
      ASSERT_EQ(found.result, KURVO_ON_CURVE) << round << ' ' << f;
      // Roots that agree within 1e-6 in both coordinates may be that far apart along the curve.
      ASSERT_LE(KurvoclDistPoint(p, At(*cv, found.t)), 1e-6 * std::max(1., 40 * size * degree))
          << round << ' ' << f << " -> " << found.t;
    }
  });
}

TEST(Parameter, Table) {
  const std::string two = "c 1 2 (l 0 0 1 0)(l 1 0 1 2)";
  constexpr int on = KURVO_ON_CURVE, off = KURVO_OFF_CURVE;
  // clang-format off
  const struct {
    std::string curve;
    Point p;
    int result;
    double t, reach = 1e-9;
    int error = 0;
  } rows[] = {
      {"l 0 0 4 0", {1, 0, 0}, on, .25},
      {"l 0 0 4 0", {4 + 2e-6, 0, 0}, on, 1 + .5e-6},
      {"l 0 0 4 0", {-8e-6, 0, 0}, off, -2e-6},
      {"l 0 0 4 0", {1, 2e-6, 0}, off, .25},
      {"l 1 1 1 1", {5, 5, 0}, on, 0, 0, KURVO_WARN_SHORT_VECTOR},
      {"b 0 0 1 1 2 0", {2, 0, 0}, on, 1},
      {"b 0 0 1 1 2 0", {0, 0, 0}, on, 0},
      {"b 0 0 1 1 2 0", {-1, -1, 0}, off, 0},
      {"b 1 1 1 1", {1, 1, 0}, on, 1},
      // beyond a turning point in one coordinate only the other one tells
      {"b 0 0 1 1 2 0", {1, .5 + 5e-7, 0}, on, .5},
      {"b 0 0 1 1 0 2", {.5 + 5e-7, 1, 0}, on, .5},
      {"b 0 0 1 1 2 0", {1, .5 + 2e-6, 0}, off, .5},
      {"a 0 0 1 0 1.5707963267948966", {1, 0, 0}, on, 0},
      {"a 0 0 1 0 1.5707963267948966", {0, 1, 0}, on, 1},
      {"a 0 0 1 0 -1.5707963267948966", {0, -1, 0}, on, 1},
      {"a 0 0 1 0 1.5707963267948966", {.1, -1, 0}, off, -.9365489651388929},
      {two, {1, 0, 0}, on, 1},
      {two, {1, 1, 0}, on, 2},
      {two, {1.5, 1.5, 0}, off, 2.5},
      {two, {.25, .25, 0}, off, .25},
      {"c", {0, 0, 0}, on, -77},
      {"c 3 (" + two + ")", {1, 1, 0}, on, 6},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Found found = Parameter(*Make(row.curve), row.p);
    EXPECT_EQ(found.result, row.result) << row.curve << " at " << row.p[0] << ' ' << row.p[1];
    EXPECT_NEAR(found.t, row.t, row.reach) << row.curve << " at " << row.p[0] << ' ' << row.p[1];
    EXPECT_EQ(found.error, row.error) << row.curve;
  }
  // The root of the other coordinate, which is not the foot.
  EXPECT_NEAR(Parameter(*Make("b 0 0 1 1 2 0"), {1.05, .503, 0}, .01).t, .525, 1e-9);
  EXPECT_NEAR(Parameter(*Make("b 0 0 1 1 0 2"), {.503, 1.05, 0}, .01).t, .525, 1e-9);
}

}  // namespace
}  // namespace kurvo_test
