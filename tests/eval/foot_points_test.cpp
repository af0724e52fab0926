// Roots of polynomials on [0, 1], what tells where to look for them, and the foot points of
// B-splines.
#include <gtest/gtest.h>

#include <cmath>

#include "eval/root_finder.h"
#include "eval/sign_variations.h"
#include "eval/spline_queries.h"
#include "eval/spline_span.h"
#include "eval/turning_points.h"
#include "support/generator.h"

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

// ---- the nearest point of a B-spline against an examination of every span: the bounds that spare
// most spans must not change a bit of the result

using kurvo::Length;
using kurvo::Planar;
using kurvo::SplineFoot;
using kurvo::SplineView;
using kurvo::Vec2;

// The candidates of every span in the order in which ties are decided, then the ends.
template <std::size_t kDim>
SplineFoot ExamineAllSpans(const SplineView<kDim>& spline, Vec2 p, double tol) {
  const Vec2 end = Planar(kurvo::EndOfSpline(spline));
  const double last = spline.knots[spline.count];
  SplineFoot best{{last, kInfinity}, end};
  const auto offer = [&](double t, Vec2 q) {
    if (Length(p - q) < best.nearest.dist) best = {{t, Length(p - q)}, q};
  };
  for (int32_t i = spline.order - 1; i < spline.count; ++i) {
    if (!(spline.knots[i] < spline.knots[i + 1])) continue;
    const kurvo::SplineSpan<kDim> span(spline, i, kurvo::EvaluatesPlain(spline, tol));
    for (const double s : kurvo::FootPoints(kurvo::FootRoots(span.ToSegment(p)), tol))
      offer(span.ToDomain(s), span.Position(s));
    if (span.CornerAtLeft()) offer(span.ToDomain(0.0), span.Position(0.0));
    if (span.CornerAtRight()) offer(span.ToDomain(1.0), span.Position(1.0));
  }
  offer(spline.knots[spline.order - 1], Planar(kurvo::StartOfSpline(spline)));
  offer(last, end);
  if (best.nearest.dist == kInfinity) best.nearest.dist = Length(p - end);
  return best;
}

bool SameBits(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

template <std::size_t kDim>
void Compare(const SplineView<kDim>& spline, Vec2 p, double tol) {
  const SplineFoot want = ExamineAllSpans(spline, p, tol);
  const SplineFoot got = kurvo::FootOnSpline(spline, p, tol);
  EXPECT_TRUE(SameBits(got.nearest.t, want.nearest.t) &&
              SameBits(got.nearest.dist, want.nearest.dist) &&
              SameBits(got.point.x, want.point.x) && SameBits(got.point.y, want.point.y))
      << "point " << p.x << ", " << p.y << ": t " << got.nearest.t << " at " << got.nearest.dist
      << ", must be " << want.nearest.t << " at " << want.nearest.dist;
}

// Some spline of any order, scale and knot vector, one in eight with coordinates and weights that
// no caller should pass.
Owned RandomSpline(Random& random, double size) {
  const bool rational = Chance(random, .5), hostile = Chance(random, 1. / 8);
  const int order =
      Chance(random, 1. / 3) ? RandomInt(random, 1, rational ? 14 : 21) : RandomInt(random, 2, 5);
  const int spans = Chance(random, .25) ? RandomInt(random, 5, 60) : 0;
  Owned cv = RandomSplineOver(random, rational, order, -5,
                              5 * std::pow(10., RandomInt(random, 0, 3)), order, false, spans);
  const FreeForm form(*cv);
  for (int i = 0; i < form.count; ++i) {
    double* const p = form.point(i);
    for (int c = 0; c < 2; ++c) {
      p[c] *= size / kSize;
      if (Chance(random, .1)) p[c] = i > 0 ? p[c - form.stride] : size;
      if (hostile && Chance(random, 1. / 40)) p[c] = Chance(random, .5) ? kNaN : 1e308;
    }
    if (Chance(random, 1. / 3)) p[0] = i * size / 5;
    if (rational && hostile && Chance(random, .25)) p[3] = random.Uniform(-1, 1);
  }
  return cv;
}

void Compare(const Owned& cv, Vec2 p) {
  if (cv->type == CV_RBSPLINE) {
    const auto& b = cv.block<KurvoRBSpline>();
    Compare(SplineView<4>{b.order, b.count, b.points, b.knots}, p, 1e-6);
  } else {
    const auto& b = cv.block<KurvoBSpline>();
    Compare(SplineView<3>{b.order, b.count, b.points, b.knots}, p, 1e-6);
  }
}

TEST(FootOnSpline, IsThatOfAnExaminationOfEverySpan) {
  Rounds(1500, [&](Random& random, int) {
    const double size = std::pow(10.0, RandomInt(random, -8, 9));
    const Owned cv = RandomSpline(random, size);
    const auto near = [&](double by) {
      return Vec2{random.Uniform(-by, by), random.Uniform(-by, by)};
    };
    const Vec2 on = Planar(PointAt(*cv, random.Uniform(0, 1)).data());
    for (const Vec2 p : {near(size), near(9 * size), on, on + near(.05 * size)}) Compare(cv, p);
  });
}

// Many spans at the same distance, up to the last bit: the first one wins.
TEST(FootOnSpline, OfEqualSpansIsOnTheFirst) {
  Numbers points, knots = {0};
  for (int i = 0; i < 200; ++i) {
    points.insert(points.end(), {i % 2 ? -1.0 : 1.0, i % 4 < 2 ? -1.0 : 1.0});
    knots.push_back(i);
  }
  knots.push_back(199);
  const Owned polyline = MakeFreeForm(CV_BSPLINE, points, knots);
  for (const Vec2 p : {Vec2{0, 0}, Vec2{0, 3}, Vec2{-2, -2}, Vec2{.25, .25}}) Compare(polyline, p);
  const auto& b = polyline.block<KurvoBSpline>();
  const SplineView<3> view{b.order, b.count, b.points, b.knots};
  EXPECT_EQ(kurvo::NearestOnSpline(view, {0, 0}, 1e-6).t, 1.5);
}

}  // namespace
}  // namespace kurvo_test
