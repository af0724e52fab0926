// Roots of polynomials on [0, 1], and what tells where to look for them.
#include "eval/root_finder.h"

#include <gtest/gtest.h>

#include <cmath>

#include "eval/sign_variations.h"
#include "eval/turning_points.h"
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

using kurvo::FindRoots;
using kurvo::Polynomial;
using kurvo::RootList;

using Coefficients = std::vector<long double>;

Coefficients Times(const Coefficients& f, const Coefficients& g) {
  Coefficients product(f.size() + g.size() - 1);
  for (std::size_t i = 0; i < f.size(); ++i)
    for (std::size_t j = 0; j < g.size(); ++j) product[i + j] += f[i] * g[j];
  return product;
}

Polynomial Scaled(const Coefficients& f) {  // the largest coefficient becomes 1
  Polynomial result(f.size());
  long double largest = 0;
  for (const long double c : f) largest = std::max(largest, std::fabs(c));
  for (std::size_t i = 0; i < f.size(); ++i) result[i] = static_cast<double>(f[i] / largest);
  return result;
}

Coefficients WithRoots(const Numbers& roots) {
  Coefficients f = {1};
  for (const double root : roots) f = Times(f, {-L(root), 1});
  return f;
}

// The planted roots, then factors without roots near [0, 1] up to the degree: t^2 + 2, so that the
// largest coefficient stays comparable, and one root at -3 for odd rests.
Polynomial Planted(const Numbers& roots, std::size_t degree) {
  Coefficients f = WithRoots(roots);
  while (f.size() + 1 < degree + 1) f = Times(f, {2.0L, 0.0L, 1.0L});
  if (f.size() < degree + 1) f = Times(f, {3.0L, 1.0L});
  return Scaled(f);
}

std::string Print(const RootList& roots) { return Text("", {roots.begin(), roots.end()}); }

bool Near(const RootList& roots, double planted, double bound) {
  return std::any_of(roots.begin(), roots.end(),
                     [&](double root) { return std::fabs(root - planted) <= bound; });
}

TEST(FindRoots, FindsPlantedRootsOfEveryDegree) {
  const struct {
    const char* name;
    Numbers roots;
    double bound;  // Newton's method ends at steps of 1e-5; m-fold roots converge linearly
  } rows[] = {
      {"none", {}, 0},
      {"one", {.3}, 1e-8},
      {"start", {0}, 1e-8},
      {"end", {1}, 1e-8},
      {"ends", {0, 1}, 1e-8},
      {"just outside", {-.0005, 1.0005}, 1e-8},
      {"three", {.1, .5, .9}, 1e-8},
      {"five", {.05, .25, .5, .75, .95}, 1e-7},
      {"double", {.4, .4}, 2e-5},
      {"double in the middle", {.5, .5}, 2e-5},
      {"triple", {.4, .4, .4}, 4e-5},
      {"triple in the middle", {.5, .5, .5}, 4e-5},
      {"two doubles", {.2, .2, .7, .7}, 2e-5},
      {"double and simple", {.2, .2, .7}, 2e-5},
      {"double at the start", {0, 0}, 2e-5},
      {"cluster", {.5, .501, .502}, 2e-5},
      {"close pair", {.5, .5001}, 2e-5},
      {"closer pair", {.5, .50002}, 2e-5},
  };
  for (const auto& row : rows) {
    for (std::size_t degree = std::max<std::size_t>(1, row.roots.size()); degree <= 39; ++degree) {
      const Polynomial f = Planted(row.roots, degree);
      const RootList roots = FindRoots(f, 0, 1);
      for (const double planted : row.roots)
        EXPECT_TRUE(Near(roots, planted, row.bound))
            << row.name << " degree " << degree << ": " << planted << " not in " << Print(roots);
      for (std::size_t i = 0; i < roots.size(); ++i) {
        if (roots[i] == 0.0)
          continue;  // also what stands for a root at which Newton's method stops
        EXPECT_LE(std::fabs(kurvo::Value(f, roots[i])), 2e-6) << row.name << " degree " << degree;
        EXPECT_TRUE(i == 0 || roots[i] - roots[i - 1] > 1e-5) << row.name << " degree " << degree;
      }
    }
  }
}

// Numbers in [low, high], at least .02 apart from each other and from `ends`.
Numbers Apart(Random& random, std::size_t count, double low, double high, Numbers ends = {}) {
  const std::size_t before = ends.size();
  while (ends.size() < before + count) {
    const double next = random.Uniform(low, high);
    if (std::all_of(ends.begin(), ends.end(), [=](double x) { return std::fabs(x - next) > .02; }))
      ends.push_back(next);
  }
  return {ends.begin() + static_cast<std::ptrdiff_t>(before), ends.end()};
}

// Of polynomials with real roots alone the rule of signs gives their number, on any interval.
TEST(VariationsOn, CountsRealRoots) {
  int counted[3] = {};
  Rounds(3000, [&](Random& random, int round) {
    const double a = random.Uniform(-.5, .9), b = a + random.Uniform(.1, .6);
    const Numbers roots = Apart(random, 1 + static_cast<std::size_t>(round) % 8, -1, 2, {a, b});
    const auto inside =
        std::count_if(roots.begin(), roots.end(), [=](double x) { return a < x && x < b; });
    const kurvo::SignVariations want = inside == 0   ? kurvo::SignVariations::kNone
                                       : inside == 1 ? kurvo::SignVariations::kOne
                                                     : kurvo::SignVariations::kOpen;
    ++counted[std::min<std::ptrdiff_t>(inside, 2)];
    EXPECT_EQ(kurvo::VariationsOn(Scaled(WithRoots(roots)), a, b), want)
        << Text("roots", roots) << Text(" on", {a, b});
  });
  for (const int count : counted) EXPECT_GT(count, 200);
}

TEST(TurningPoints, AreTheRootsOfTheDerivative) {
  Rounds(2000, [&](Random& random, int round) {
    Numbers roots = Apart(random, static_cast<std::size_t>(round) % 6, -.5, 1.5, {0, 1});
    Coefficients f = {random.Uniform(-1, 1)}, derivative = WithRoots(roots);
    if (round % 3 == 0) derivative = Times(derivative, {2.0L, 0.0L, 1.0L});  // no more roots
    for (std::size_t i = 0; i < derivative.size(); ++i)
      f.push_back(derivative[i] / static_cast<long double>(i + 1));
    Numbers want;
    for (const double x : roots)
      if (x > 0 && x < 1) want.push_back(x);
    std::sort(want.begin(), want.end());
    const RootList got = kurvo::TurningPoints(Scaled(f));
    EXPECT_LE(LargestGap({got.begin(), got.end()}, want), 1e-10)
        << Print(got) << Text(", must be", want);
  });
}

// Newton's method closes in on the root of t^21 by a factor of 20 / 21 a step. From .295, the
// middle of the interval, its 150 steps just lead to one below 1e-5; from .31 they do not, and the
// root is reported as exactly 0.
TEST(FindRoots, GivesUpAfter150Steps) {
  Polynomial f = Polynomial::Zeros(22);
  f[21] = 1;
  const auto has_zero = [](const RootList& roots) {
    return std::find(roots.begin(), roots.end(), 0.0) != roots.end();
  };
  const RootList settled = FindRoots(f, 0, 2 * .295), not_settled = FindRoots(f, 0, 2 * .31);
  EXPECT_FALSE(has_zero(settled)) << Print(settled);
  EXPECT_TRUE(has_zero(not_settled)) << Print(not_settled);
}

// Leading coefficients that are noise must not hide the roots of the rest.
TEST(FindRoots, IgnoresNoiseInLeadingCoefficients) {
  Polynomial f = Planted({.25, .75}, 2);
  f.Truncate(6);
  f[3] = 1e-17;
  f[4] = -3e-17;
  f[5] = 2e-17;
  const RootList roots = FindRoots(f, 0, 1);
  ASSERT_EQ(roots.size(), 2u);
  EXPECT_NEAR(roots[0], .25, 1e-10);
  EXPECT_NEAR(roots[1], .75, 1e-10);
}

}  // namespace
}  // namespace kurvo_test
