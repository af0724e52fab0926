// Reversal, and the normalisation of knot vectors.
#include <gtest/gtest.h>

#include "build/curves.h"

namespace kurvo_test {
namespace {

const char* const kCurves[] = {
    "l 1 2 4 -3",
    "a 1 2 3 .4 1.3",
    "a 1 2 3 .4 -4",
    "b 3 4",
    "b 0 0 1 2 3 2",
    "b 0 0 1 2 3 2 7 8",
    "r 0 0 1 1 2 3 3 2 .5 4 9 8",
    "B 0 0 1 2 3 2 5 0 7 9 2 1 4 4 | 0 0 0 .1 .25 .25 .5 1 1 1",
    "R 0 0 1 1 2 3 3 2 4 5 0 2 7 9 1 2 1 9 4 4 5 | 1 2 2 3 4 4 5 5 6 9 9",
    "c .2 .3 .5 (b 0 0 1 2 3 2)(r 0 0 1 1 2 3)(c .4 .6 (b 5 5 1 3)(l 1 2 3 4))",
};

TEST(ChgOrder, MirrorsTheParameterAndTwiceRestoresTheCurve) {
  for (const char* text : kCurves) {
    const Owned source = Make(text);
    Owned reversed = Make(text);
    Owned twice = Make(text);
    Globals g;
    EXPECT_EQ(KurvocvChgOrder(reversed.get(), &g), 0);
    KurvocvChgOrder(twice.get(), &g);
    KurvocvChgOrder(twice.get(), &g);
    const bool spline = source->type == CV_BSPLINE || source->type == CV_RBSPLINE;
    for (int i = 1; i < 30; ++i) {
      const double f = i / 30.0 + 1e-3;  // off the joints, which belong to one side
      const Point p = PointAt(*source, f), q = PointAt(*reversed, 1 - f), r = PointAt(*twice, f);
      EXPECT_LE(KurvoclDistPoint(p, q), 1e-12) << text << " at " << f;
      EXPECT_LE(KurvoclDistPoint(p, r), spline ? 1e-12 : 0) << text << " at " << f;
    }
  }
}

TEST(ChgOrder, Knots) {
  Owned cv = Make("B 0 0 1 0 2 0 3 0 | 0 0 0 .25 1 1 1");
  Owned at_zero = Make("B 0 0 1 0 | -1 -1 0 0");
  Globals g;
  KurvocvChgOrder(cv.get(), &g);
  KurvocvChgOrder(at_zero.get(), &g);
  const double* knots = FreeForm(*cv).knots;
  EXPECT_EQ(Numbers(knots, knots + 7), (Numbers{0, 0, 0, .75, 1, 1, 1}));
  EXPECT_FALSE(std::signbit(FreeForm(*at_zero).knots[0]));
}

TEST(NormalizeKnot, Table) {
  const struct {
    Numbers knots;
    int count;
    int order;
    Numbers want;
  } rows[] = {
      {{2, 2, 2, 3, 4, 4, 4}, 7, 3, {0, 0, 0, .5, 1, 1, 1}},
      {{0, 0, 1, 1}, 4, 2, {0, 0, 1, 1}},
      {{5, 5, 5, 5}, 4, 2, {5, 5, 5, 5}},
      {{-1, 0, 2, 3}, 4, 2, {-.5, 0, 1, 1.5}},  // unclamped: outer knots leave [0, 1]
      {{-1, 0, 1, 3}, 4, 2, {-1, 0, 1, 3}},     // the domain is [0, 1] already
      {{4, 2}, 2, 1, {0, 1}},                   // descending
      {{2, 3, 4}, 3, 2, {2, 3, 4}},             // fewer points than the order
      {{2, 3}, 2, 0, {2, 3}},
      {{2, 3}, 2, -1, {2, 3}},
      {{2, 3}, -1, 1, {2, 3}},
      {{2, 3}, INT32_MIN, INT32_MAX, {2, 3}},
      {{2, 3}, 2, INT32_MAX, {2, 3}},
  };
  for (const auto& row : rows) {
    Numbers knots = row.knots;
    KurvoclNormalizeKnot(knots.data(), row.count, row.order);
    EXPECT_EQ(knots, row.want) << "count " << row.count << ", order " << row.order;
  }
  KurvoclNormalizeKnot(nullptr, 4, 2);
}

}  // namespace
}  // namespace kurvo_test
