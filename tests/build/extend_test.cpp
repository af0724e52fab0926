// Extension of a curve at its ends.
#include <gtest/gtest.h>

#include "build/division.h"

namespace kurvo_test {
namespace {

Owned Extend(const Curve& cv, double a, double b, GlobalVar& g) {
  Owned result(CV_ARC);  // to be emptied
  KurvocvExtendCurve(&cv, a, b, result.get(), &g);
  return result;
}

// Ranges that grow, shrink and leave the curve on either side.
constexpr double kRanges[][2] = {{.3, .4},   {.3, 0},    {0, .4},   {-.3, -.4}, {-.3, 0},
                                 {0, -.4},   {.3, -.4},  {-.3, .4}, {-.97, .5}, {.5, -.97},
                                 {.3, -1.1}, {-1.2, .5}, {-1, .5},  {.5, -1},   {-.5, -.49}};

// Identity D3 of the header: a polynomial identity, checked in long double at the source. Weights
// are near 1, so that the continuation stays positive.
TEST(ExtendCurve, IsTheSameCurveOverTheRange) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int32_t type : {CV_LINE, CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE}) {
    for (int round = 0; round < 60; ++round) {
      const Owned source = RandomCurve(random, type, 5);
      if (type == CV_RBEZIER || type == CV_RBSPLINE) {
        const FreeForm form(*source);
        const int count = type == CV_RBEZIER ? form.order : SplineCount(*source);
        for (int i = 0; i < count; ++i) form.points[4 * i + 3] = random.Uniform(.999, 1.001);
      }
      const auto& [a, b] = kRanges[round % 15];
      Globals g;
      const Owned result = Extend(*source, a, b, g);
      SCOPED_TRACE(testing::Message() << "type " << type << ", round " << round);
      if (KurvoErrGet(&g) == KURVO_ERR_WEIGHT) continue;
      // Outside, coordinates grow by powers of the continuation, most on the shortest end span.
      const bool inside = a <= 0 && b <= 0;
      double size = 10;
      for (const double s : {0., 1.}) {
        const LongPoint p = ExactPoint(*source, -a + s * (1 + a + b));
        size = std::max({size, std::fabs(double(p.x)), std::fabs(double(p.y))});
      }
      ExpectStretch(*result, *source, -a, 1 + b, inside ? kExact : 1e-9 * size);
      EXPECT_EQ(KurvoErrGet(&g), 0);
    }
  }
}

TEST(ExtendCurve, MeasuresSplinesAsIfOverZeroToOne) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 60; ++round) {
    const Owned source = RandomSplineOver(random, false, 1 + round % 5, 2, 10, 2);
    const auto& [a, b] = kRanges[round % 15];
    Globals g;
    const Owned result = Extend(*source, a, b, g);
    ExpectStretch(*result, *source, 2 - 8 * a, 10 + 8 * b, 1e-6);
  }
}

TEST(ExtendCurve, Table) {
  const struct {
    const char* name;
    const char* curve;
    double a, b;
    const char* want;
  } rows[] = {
      {"line", "l 0 0 1 0", 1, 2, "l -1 0 3 0"},
      {"nothing", "B 0 0 1 1 | 2 2 3 3", 4e-7, -4e-7, "B 0 0 1 1 | 2 2 3 3"},
      {"quarter", "a 0 0 1 0 1.5707963267948966", .4, .4,
       "a 0 0 1 -.62831853071795865 2.8274333882308138"},
      {"clockwise", "a 0 0 1 0 -1.5707963267948966", .4, -.4,
       "a 0 0 1 .62831853071795865 -1.5707963267948966"},
      {"cubic", "b 0 0 0 0 0 0 1 1", 0, 1, "b 0 0 0 0 0 0 8 8"},
      {"constant", "b 3 4", 1, 1, "b 3 4"},
      {"spline, three spans", "B 0 0 1 1 2 0 3 1 | 0 0 .25 .5 1 1", .25, .5,
       "B -1 -1 1 1 2 0 4 2 | 0 0 .2857142857142857 .4285714285714286 1 1"},
      {"spline cut at a knot by six decimals", "B 0 0 1 1 2 0 3 1 | 0 0 .25 .5 1 1", -.2500004, 0,
       "B 1 1 2 0 3 1 | 0 0 .3333333333333333 1 1"},
      {"composite", "c .5 .5 (l 0 0 1 0)(b 1 0 2 0)", .5, 1, "c .4 .6 (l -1 0 1 0)(b 1 0 4 0)"},
      {"composite, trimmed", "c .5 .5 (l 0 0 1 0)(b 1 0 2 0)", -.25, -.25,
       "c .5 .5 (l .5 0 1 0)(b 1 0 1.5 0)"},
      {"composite, widths of sum 4", "c 2 2 (l 0 0 1 0)(b 1 0 2 0)", -3, 4, "c 1 (b 1.5 0 4 0)"},
      {"composite, a piece less", "c .5 .5 (l 0 0 1 0)(b 1 0 2 0)", -.5, .5, "c 1 (b 1 0 3 0)"},
      {"composite, one piece", "c 1 (b 0 0 0 0 1 1)", 1, 1, "c 1 (b 1 1 -2 -2 4 4)"},
      {"composite, beyond its end", "c .5 .5 (b 0 0 9 9)(b 1 0 2 0)", -1.5, 1, "c 1 (b 3 0 4 0)"},
      {"composite, before its start", "c .5 .5 (b 0 0 1 0)(b 1 1 2 2)", 1, -1.5,
       "c 1 (b -2 0 -1 0)"},
      {"composite, arc piece", "c .5 .5 (a 0 0 1 0 1)(l 0 0 1 1)", .5, 0,
       "c .6666666666666667 .3333333333333333 (a 0 0 1 -1 2)(l 0 0 1 1)"},
      {"composite, long arc trimmed", "c .5 .5 (a 0 0 1 0 5)(l 0 0 1 1)", -.1, 0,
       "c .4444444444444444 .5555555555555556 (a 0 0 1 1 4)(l 0 0 1 1)"},
      {"nested", "c .5 .5 (c .5 .5 (l 0 0 1 0)(l 1 0 2 0))(l 2 0 3 0)", .25, 0,
       "c .6 .4 (c .6666666666666667 .3333333333333333 (l -1 0 1 0)(l 1 0 2 0))(l 2 0 3 0)"},
      {"closed, of lines", "c .5 .5 (l 0 0 1 0)(l 1 0 0 0)", .5, 0,
       "c .6666666666666667 .3333333333333333 (l -1 0 1 0)(l 1 0 0 0)"},
      {"closed, of Beziers, trimmed", "c .5 .5 (b 0 0 1 0)(b 1 0 0 0)", -.25, 0,
       "c .3333333333333333 .6666666666666667 (b .5 0 1 0)(b 1 0 0 0)"},
  };
  for (const auto& row : rows) {
    Globals g;
    const Owned result = Extend(*Make(row.curve), row.a, row.b, g);
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
    EXPECT_EQ(KurvocvMatch(result.get(), Make(row.want).get(), &g), KURVO_MATCH_SAME) << row.name;
    if (result->type != CV_SEGCV) continue;
    const auto& c = result.block<KurvoSegcv>();
    double sum = 0;
    for (int i = 0; i < c.count; ++i) sum += c.widths[i];
    EXPECT_EQ(sum, 1.) << row.name;
  }
}

TEST(ExtendCurve, OverOneParameterIsThePointThere) {
  const struct {
    const char* curve;
    double a, b;
    const char* point;
  } rows[] = {
      {"l 0 0 1 2", -.5, -.5, "l .5 1 .5 1"},
      {"l 0 0 1 2", 1, -2, "l -1 -2 -1 -2"},
      {"B 0 0 2 2 | 4 4 8 8", -.25, -.75, "B .5 .5 .5 .5 | 0 0 1 1"},
      {"c 2 2 (b 0 0 2 2)(l 2 2 3 3)", -1, -3, "b 1 1 1 1 1 1"},
  };
  for (const auto& row : rows) {
    Globals g;
    const Owned result = Extend(*Make(row.curve), row.a, row.b, g);
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_RANGE) << row.curve;
    KurvoErrReset(&g);
    EXPECT_EQ(KurvocvMatch(result.get(), Make(row.point).get(), &g), KURVO_MATCH_SAME) << row.curve;
  }
}

// Each piece of a random composite by the rule of its type, over the whole.
TEST(ExtendCurve, CompositesFollowTheirEndPieces) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 100; ++round) {
    const Owned source = RandomCurve(random, CV_SEGCV, 3, 1);
    const double a = RandomCut(random, -.2, .05), b = RandomCut(random, -.2, .05);
    Globals g;
    const Owned result = Extend(*source, a, b, g);
    if (KurvoErrGet(&g) == KURVO_ERR_WEIGHT) continue;
    SCOPED_TRACE(testing::Message() << "round " << round << ", by " << a << ", " << b);
    ExpectStretch(*result, *source, -a, 1 + b, 1e-9);
  }
}

// Bezier curves of degree 4095 and B-splines of order 4096 are the highest that are worked on.
TEST(ExtendCurve, WorksUpToDegree4095) {
  for (const int degree : {4095, 4096}) {
    Numbers points, knots;
    for (int i = 0; i <= degree; ++i) points.insert(points.end(), {1.0 * i, 0.0});
    for (int i = 0; i < 2 * (degree + 1); ++i) knots.push_back(i > degree);
    for (const Owned& cv :
         {MakeFreeForm(CV_BEZIER, points), MakeFreeForm(CV_BSPLINE, points, knots)}) {
      Globals g;
      Owned trimmed;
      KurvocvExtendCurve(cv.get(), -.25, 0, trimmed.get(), &g);
      EXPECT_EQ(KurvoErrGet(&g), degree == 4095 ? 0 : KURVO_ERR_CURVE) << cv->type;
      if (degree > 4095) continue;
      EXPECT_NEAR(PointAt(*trimmed, 0)[0], .25 * degree, 1e-9 * degree) << cv->type;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
