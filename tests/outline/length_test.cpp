// Lengths of chains against closed forms and long double, at every size, and places along them.
#include <kurvo_outline.h>

#include <complex>

#include "outline/wide.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

double LengthOf(const Chain& chain) {
  Globals g;
  double length = kNaN;
  EXPECT_EQ(KurvoChainLength(chain.get(), &length, &g), 1) << KurvoErrGet(&g);
  return length;
}

Chain One(Owned curve) {
  std::vector<Owned> curves;
  curves.push_back(std::move(curve));
  return Chain(std::move(curves));
}

testing::AssertionResult Near(Wide got, Wide want, Wide bound) {
  if (bound >= std::fabs(got - want)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << static_cast<double>(got) << " is off by "
                                     << static_cast<double>((got - want) / want) << " of itself";
}

TEST(ChainLength, ClosedForms) {
  struct Row {
    const char* chain;
    Wide length;
  };
  // clang-format off
  const Row rows[] = {
      {"",                                              0},
      {"(l 1 1 1 1)",                                   0},
      {"(b 2 3)",                                       0},
      {"(c)",                                           0},
      {"(l 0 0 3 4)(l 3 4 3 5)",                        6},
      {"(a 7 1 2 .3 -1.5)",                             3},
      {"(b 0 0 1 0 1 0 0 0)",                           1.5L},                 // there and back
      {"(b 0 0 2 0 0 0)",                               2},
      {"(b 0 0 0 0 0 0 1 0)",                           1},                    // handles of length 0
      {"(b 0 0 0 0 1 0 1 0)",                           1},
      {"(b 0 0 0 0 .3333333333333333 0 1 1)",           (13 * std::sqrt(13.L) - 8) / 27},
      {"(b 0 0 .5 0 1 1)",                              (std::sqrt(5.L) + std::asinh(2.L) / 2) / 2},
      {"(r 1 0 1 1 1 .70710678118654752 0 1 1)",        kPiL / 2},
      {"(r 1 0 1 1 1 -.70710678118654752 0 1 1)",       3 * kPiL / 2},
      {"(R 1 0 1 1 1.7320508075688772 .5 -.5 .8660254037844386 1 -2 0 .5 -.5 -.8660254037844386 1"
       " 1 -1.7320508075688772 .5 1 0 1 | 0 0 0 .3333333333333333 .3333333333333333 .6666666666666666 .6666666666666666 1 1 1)",
       2 * kPiL},
      {"(c .25 .75 (l 0 0 1 0)(c .5 .5 (a 1 1 1 -1.5707963267948966 1.5)(l 2 1 2 1)))", 2.5L},
  };
  // clang-format on
  for (const Row& row : rows) {
    SCOPED_TRACE(row.chain);
    Globals g(9);  // joints of the rows are no matter
    double length = kNaN;
    EXPECT_EQ(KurvoChainLength(Chain(row.chain).get(), &length, &g), 1) << KurvoErrGet(&g);
    EXPECT_TRUE(Near(length, row.length, 4e-15L * row.length));
  }
}

TEST(ChainLength, FullCircle) {
  Chain circle("(a 3 4 5 1 1)");
  auto& arc = *static_cast<KurvoArc*>(circle[0].data);
  KurvoclCopyVector(arc.start, arc.end);
  EXPECT_TRUE(Near(LengthOf(circle), 10 * kPiL, 1e-14L));
}

// Every kind up to degree 63, from 1e-9 to 1e9 and far from the origin.
TEST(ChainLength, LongDouble) {
  Rounds(Cases(400), [](Random& random, int round) {
    const int degree = round % 20 == 0 ? 63 : round % 4 == 0 ? RandomInt(random, 8, 30) : 7;
    Owned cv = RandomCurve(random, kAllTypes[RandomInt(random, 0, 6)], degree);
    const double size = std::pow(10, RandomInt(random, -9, 9));
    const double x = Chance(random, .3) ? 1e6 * size : 0;
    ForEachPoint(
        *cv, [&](double* p) { KurvoclSetCoord(p, size * p[0] + x, size * p[1] - x, 0); },
        [&](double& radius) { radius *= size; });
    const Wide want = WideLength(*cv);
    // Arcs far away are no longer consistent in themselves: their ends hold 1e-10 of the radius.
    const bool has_arcs = cv->type == CV_ARC || cv->type == CV_SEGCV;
    Globals g(kInfinity);
    double got = kNaN;
    ASSERT_EQ(KurvoChainLength(One(std::move(cv)).get(), &got, &g), 1);
    EXPECT_TRUE(Near(got, want, (has_arcs && x > 0 ? 1e-9L : 1e-12L) * want));
  });
}

// Cubics from the zeros of x' + i y', ever nearer to the axis and to each other.
TEST(ChainLength, NearCusps) {
  using Complex = std::complex<Wide>;
  Rounds(Cases(400), [](Random& random, int round) {
    const auto tiny = [&random] { return Wide{std::pow(10., random.Uniform(-17, 0))}; };
    const Complex first = {random.Uniform(-.2, 1.2), round % 5 == 0 ? 0 : tiny()};
    const Complex second = round % 2 == 0 ? std::conj(first) + Complex{tiny(), tiny()}
                                          : Complex{random.Uniform(-.2, 1.2), tiny()};
    // Bezier legs of (t - first) (t - second), and the points that they lead to.
    const Complex legs[] = {first * second, first * second - (first + second) / Wide{2},
                            (Wide{1} - first) * (Wide{1} - second)};
    Numbers points = {0, 0};
    Complex at = 0;
    for (const Complex& leg : legs) {
      at += leg;
      points.insert(points.end(), {static_cast<double>(at.real()), static_cast<double>(at.imag())});
    }
    Owned cv = MakeFreeForm(CV_BEZIER, points);
    const Wide want =
        WideLength(*cv, {std::clamp(first.real(), 0.L, 1.L), std::clamp(second.real(), 0.L, 1.L)});
    EXPECT_TRUE(Near(LengthOf(One(std::move(cv))), want, 1e-13L * want))
        << static_cast<double>(first.real()) << ' ' << static_cast<double>(first.imag()) << ' '
        << static_cast<double>(second.real()) << ' ' << static_cast<double>(second.imag());
  });
}

}  // namespace
}  // namespace kurvo_test
