// Centre and sense of chains, and chains joined into one composite.
#include "support/generator.h"

namespace kurvo_test {
namespace {

struct Orientation {
  Point centre, normal;
  int error;
};

Orientation OrientationOf(const Chain& chain) {
  Globals g;
  Orientation o{{-77, -77, -77}, {-77, -77, -77}, 0};
  KurvocvCvseqNormal(chain.get(), o.centre, o.normal, &g);
  o.error = KurvoErrGet(&g);
  return o;
}

#define PI "3.14159265358979323846"

TEST(CvseqNormal, Table) {
  const struct {
    const char *name, *chain;
    double z, x, y;
  } rows[] = {
      // clang-format off
      {"square", "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)", 1, 2, 2},
      {"square, clockwise", "(l 0 0 0 4)(l 0 4 4 4)(l 4 4 4 0)(l 4 0 0 0)", -1, 2, 2},
      {"open: closing vertex counted", "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)", 1, 2, 2},
      {"open angle", "(l 0 0 3 0)(l 3 0 3 3)", 1, 2, 1},
      {"points at every corner", "(l 0 0 0 0)(l 0 0 4 0)(b 4 0 4 0)(l 4 0 4 4)(l 4 4 4 4)(l 4 4 0 4)(a 0 4 0 0 1)(l 0 4 0 0)", 1, 2, 2},
      {"two half circles", "(a 0 0 2 0 " PI ")(a 0 0 2 " PI " " PI ")", 1, 0, 0},
      {"two half circles, clockwise", "(a 0 0 2 0 -" PI ")(a 0 0 2 -" PI " -" PI ")", -1, 0, 0},
      {"half circle first, mean on the line", "(a 0 0 2 0 " PI ")(l -2 0 2 0)", 1, 0, 0},
      {"line first", "(l -2 0 2 0)(a 0 0 2 0 " PI ")", 1, 0, 0},
      {"three quarters of a circle, mean outside its centre", "(a 0 0 2 0 4.71238898038468985769)(l 0 -2 2 0)", 1, 1, -1},
      {"crescent, mean outside", "(a 0 0 1 -1.57079632679489661923 " PI ")(a -.75 0 1.25 .92729521800161223 -1.85459043600322446)", 1, 0, 0},
      {"crescent, clockwise", "(a -.75 0 1.25 -.92729521800161223 1.85459043600322446)(a 0 0 1 1.57079632679489661923 -" PI ")", -1, 0, 0},
      {"open arc", "(a 0 0 2 0 1)", 1, 1 + .5403023058681397174, .84147098480789650665},
      {"open arc, clockwise", "(a 0 0 2 0 -1)", -1, 1 + .5403023058681397174, -.84147098480789650665},
      {"drop of one curve, mean on it", "(b 0 0 3 0 0 3 0 0)", 1, 0, 0},
      {"drop of one rational curve, clockwise", "(r 0 0 1 0 3 2 3 0 3 0 0 1)", -1, 0, 0},
      {"composite of arcs only", "(c 1 1 (a 0 0 2 0 " PI ")(a 0 0 2 " PI " " PI "))", 1, 2, 0},
      {"composite of lines only", "(c 1 1 (l 0 0 3 0)(l 3 0 3 3))", 1, 1.5, 1.5},
      {"an empty composite in between", "(l 0 0 3 0)(c)(l 3 0 3 3)", 1, 2.25, .75},
      // clang-format on
  };
  for (const auto& row : rows) {
    const Chain chain(row.chain);
    for (const Curve& cv : chain) {  // an arc without a sign runs counter-clockwise
      if (cv.type != CV_ARC) continue;
      double& z = static_cast<KurvoArc*>(cv.data)->normal[2];
      z = std::min(z, 0.);
    }
    const Orientation o = OrientationOf(chain);
    EXPECT_EQ(o.error, 0) << row.name;
    EXPECT_EQ(o.normal, (Point{0, 0, row.z})) << row.name;
    EXPECT_NEAR(o.centre[0], row.x, 1e-14) << row.name;
    EXPECT_NEAR(o.centre[1], row.y, 1e-14) << row.name;
  }
}

// A chain that runs ten times around its centre and once, the other way, around a larger area.
TEST(CvseqNormal, DecisiveWindingBeatsTheArea) {
  std::string chain;
  for (int i = 0; i < 10; ++i) chain += "(l 1 -1 1 1)(l 1 1 -1 1)(l -1 1 -1 -1)(l -1 -1 1 -1)";
  chain += "(l 1 -1 11 -11)(l 11 -11 -9 -11)(l -9 -11 1 -1)";
  EXPECT_EQ(OrientationOf(Chain(chain)).normal[2], 1);
}

// ---- Random simple closed outlines, counter-clockwise ----

XY Polar(double r, double angle) { return {r * std::cos(angle), r * std::sin(angle)}; }

// Around the origin; control points in the order of their directions keep a curve in that order.
std::vector<Owned> Star(Random& random) {
  constexpr int32_t kTypes[] = {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE};
  const int n = RandomInt(random, 3, 9);
  const double first = random.Uniform(-4, 4);
  const auto radial = [&](double i) {
    return Polar(random.Uniform(.3, 3), first + 2 * M_PI * i / n);
  };
  std::vector<Owned> curves;
  const XY start = radial(0);
  XY p = start;
  for (int i = 1; i <= n; ++i) {
    const int32_t type = kTypes[RandomInt(random, 0, 3)];
    const int inner = RandomInt(random, 0, 4), order = std::min(inner + 2, 3);
    Numbers points, knots;
    const auto add = [&](XY q) {
      points.insert(points.end(), {q.x, q.y});
      if (IsRational(type)) points.push_back(random.Uniform(.2, 5));
    };
    add(p);
    for (int j = 1; j <= inner; ++j) add(radial(i - 1 + j / (inner + 1.)));
    add(p = i == n ? start : radial(i));
    for (int j = 0; IsSpline(type) && j < inner + 2 + order; ++j)
      knots.push_back(std::clamp(j - order + 1, 0, inner + 3 - order));
    curves.push_back(MakeFreeForm(type, points, knots));
  }
  return curves;
}

// Some curves that follow each other, or all, become one composite.
void Gather(Random& random, std::vector<Owned>& curves) {
  const int n = static_cast<int>(curves.size());
  const int from = Chance(random, .3) ? 0 : RandomInt(random, 0, n - 1);
  const int to = from == 0 && Chance(random, .5) ? n : RandomInt(random, from + 1, n);
  const auto first = curves.begin() + from, last = curves.begin() + to;
  std::vector<Owned> pieces;
  std::move(first, last, std::back_inserter(pieces));
  *first = MakeComposite(Numbers(pieces.size(), 1), std::move(pieces));
  curves.erase(first + 1, last);
}

TEST(CvseqNormal, OfSimpleClosedChainsIsTheirSense) {
  Rounds(4000, [](Random& random, int) {
    std::vector<Owned> curves = Star(random);
    if (Chance(random, .3)) Gather(random, curves);
    const int first = RandomInt(random, 0, static_cast<int>(curves.size()) - 1);
    std::rotate(curves.begin(), curves.begin() + first, curves.end());
    const bool clockwise = Chance(random, .5);
    Globals g;
    if (clockwise) std::reverse(curves.begin(), curves.end());
    for (Owned& cv : curves)
      if (clockwise) KurvocvChgOrder(cv.get(), &g);
    const Orientation o = OrientationOf(Chain(std::move(curves)));
    EXPECT_EQ(o.error, 0);
    EXPECT_EQ(o.normal[2], clockwise ? -1 : 1);
  });
}

// ---- joined into one composite

Owned Segmented(const Chain& chain) {
  Globals g;
  Owned out(CV_LINE);
  KurvocvCvseqToSegcv(chain.get(), out.get(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  EXPECT_EQ(out->type, out->data ? CV_SEGCV : 0);
  return out;
}

// Widths and degrees of the pieces; rational ones have the degree negated.
TEST(CvseqToSegcv, Table) {
  const struct {
    const char *name, *chain;
    Numbers widths;
    std::vector<int> degrees;
  } rows[] = {
      // clang-format off
      {"lines of length 1 and 3", "(l 0 0 1 0)(l 1 0 1 3)", {.25, .75}, {1, 1}},
      {"line and quarter circle", "(l 0 0 3.14159265358979323846 0)(a 3.14159265358979323846 2 2 -1.57079632679489661923 1.57079632679489661923)", {.5, .5}, {1, -2}},
      {"B-spline in its own pieces", "(l -5 0 0 0)(B 0 0 1 0 2 0 3 0 5 0 | 3 3 5 9 11 13 13)", {.5, .1, .2, .1, .1}, {1, 1, 1, 1, 1}},
      {"composite whose widths do not add up to 1", "(c 3 6 9 (l 0 0 1 0)(b 1 0 2 0)(b 2 0 4 0))(l 4 0 8 0)", {1. / 12, 2. / 12, 3. / 12, .5}, {0, 1, 1, 1}},
      {"composite whose widths add up to nothing", "(l 0 0 2 0)(c 0 0 (b 2 0 3 0)(b 3 0 4 0))(l 2 0 4 0)", {.5, 0, 0, .5}, {1, 1, 1, 1}},
      {"first curve degenerate", "(l 0 0 0 0)(l 0 0 0 2)", {0, 1}, {1, 1}},
      {"last curve degenerate", "(l 1 1 0 0)(l 0 0 0 2)(b 0 2 0 2)", {M_SQRT2 / (2 + M_SQRT2), 2 / (2 + M_SQRT2), 0}, {1, 1, 1}},
      {"ends within epsilon", "(l 0 0 1 0)(l 1.0000009 0 2.0000009 0)", {.5, .5}, {1, 1}},
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Owned out = Segmented(Chain(row.chain));
    ASSERT_TRUE(out->data);
    const auto& c = out.block<KurvoSegcv>();
    ASSERT_EQ(static_cast<std::size_t>(c.count), row.widths.size());
    double sum = 0;
    for (int i = 0; i < c.count; ++i) {
      const auto at = static_cast<std::size_t>(i);
      EXPECT_NEAR(c.widths[i], row.widths[at], 1e-15) << i;
      const int degree = row.degrees[at];
      EXPECT_EQ(c.curves[i].type, degree > 0 ? CV_BEZIER : degree < 0 ? CV_RBEZIER : CV_LINE) << i;
      if (degree != 0) {
        EXPECT_EQ(FreeForm(c.curves[i]).order, std::abs(degree) + 1) << i;
      }
      sum += c.widths[i];
    }
    EXPECT_EQ(sum, 1.0);
  }
}

}  // namespace
}  // namespace kurvo_test
