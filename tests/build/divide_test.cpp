// Division of a curve in two.
#include <gtest/gtest.h>

#include "build/division.h"

namespace kurvo_test {
namespace {

struct Halves {
  Owned first, second;
};

Halves Divide(const Curve& cv, double t, GlobalVar& g) {
  Halves halves;
  halves.first.get()->type = halves.second.get()->type = CV_ARC;  // to be emptied
  KurvocvDivide(&cv, t, halves.first.get(), halves.second.get(), &g);
  return halves;
}

void ExpectEmpty(const Curve& cv) {
  EXPECT_EQ(cv.type, 0);
  EXPECT_EQ(cv.data, nullptr);
}

// Identities D1 and D2 of the header.
TEST(Divide, HalvesFollowTheCurve) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int32_t type : kAllTypes) {
    for (int round = 0; round < 60; ++round) {
      const Owned source = RandomCurve(random, type, 4);
      const double t = RandomCut(random, .01, .99);
      Globals g;
      const auto [first, second] = Divide(*source, t, g);
      SCOPED_TRACE(testing::Message() << "type " << type << ", round " << round);
      ExpectStretch(*first, *source, 0, t);
      ExpectStretch(*second, *source, t, 1);
      EXPECT_EQ(KurvoErrGet(&g), 0);
      Point end{}, start{};
      KurvocvEndPoint(first.get(), end, &g);
      KurvocvStartPoint(second.get(), start, &g);
      EXPECT_EQ(end, start);
    }
  }
}

TEST(Divide, TakesTheSplinesOwnParameter) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 100; ++round) {
    const int order = 2 + round % 7;
    const Owned source = RandomSplineOver(random, round % 2 == 1, order, 2, 5, order);
    const double t = 2 + 3 * RandomCut(random, 0, 1);
    Globals g;
    const auto [first, second] = Divide(*source, t, g);
    ExpectStretch(*first, *source, 2, t);
    ExpectStretch(*second, *source, t, 5);
  }
}

TEST(Divide, KnotsAndControlPoints) {
  const std::string points = " 0 0 1 4 3 5 6 0 8 2";
  const struct {
    const char* name;
    std::string curve;
    double t;
    Numbers first, second;  // knots
  } rows[] = {
      {"at a knot", "B" + points + "| 0 0 0 0 .5 1 1 1 1", .5, {0, 0, 0, 0, 1, 1, 1, 1}, {}},
      {"at it by six decimals",
       "B" + points + "| 0 0 0 0 .5 1 1 1 1",
       .5 + 4e-7,
       {0, 0, 0, 0, 1, 1, 1, 1},
       {}},
      {"just beside it",
       "B" + points + "| 0 0 0 0 .5 1 1 1 1",
       .500002,
       {0, 0, 0, 0, .5 / .500002, 1, 1, 1, 1},
       {0, 0, 0, 0, 1, 1, 1, 1}},
      {"at the nearer of two",
       "B" + points + " 9 3 | 0 0 0 0 .4999996 .5000004 1 1 1 1",
       .4999999,
       {0, 0, 0, 0, 1, 1, 1, 1},
       {}},
      {"at the nearer of two, the second",
       "B" + points + " 9 3 | 0 0 0 0 .4999996 .5000004 1 1 1 1",
       .5000001,
       {0, 0, 0, 0, .4999996 / .5000004, 1, 1, 1, 1},
       {0, 0, 0, 0, 1, 1, 1, 1}},
      {"between knots",
       "B" + points + "| 0 0 0 0 .5 1 1 1 1",
       .75,
       {0, 0, 0, 0, 2. / 3, 1, 1, 1, 1},
       {0, 0, 0, 0, 1, 1, 1, 1}},
      {"unclamped",
       "B" + points + "| -1 0 1 2 3 4 5 6",
       2.5,
       {-4. / 3, -2. / 3, 0, 2. / 3, 1, 1, 1},
       {}},
      {"still inside",
       "B 0 0 1 1 2 2 2 2 2 2 2 2 3 1 4 0 | 0 0 0 0 1 2 3 4 5 5 5 5",
       2.5,
       {0, 0, 0, 0, 1. / 3, 2. / 3, 1, 1, 1, 1},
       {0, 0, 0, 0, .5, 1, 1, 1, 1}},
      {"still at the start",
       "B 1 1 1 1 1 1 2 2 3 0 | 0 0 0 1 2 3 3 3",
       .5,
       {0, 0, 0, 1, 1, 1},
       {0, 0, 0, .5, 1, 1, 1}},
      {"still at the end",
       "B 0 3 2 2 1 1 1 1 1 1 | 0 0 0 1 2 3 3 3",
       2.5,
       {0, 0, 0, .5, 1, 1, 1},
       {0, 0, 0, 1, 1, 1}},
      {"still everywhere",
       "B 1 1 1 1 1 1 | 0 0 0 1 1 1",
       .5,
       {0, 0, 0, 1, 1, 1},
       {0, 0, 0, 1, 1, 1}},
      {"weights differ",
       "R 0 0 1 1 1 1 2 2 1 2 2 2 2 2 1 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5",
       2.5,
       {0, 0, 0, .4, .8, 1, 1, 1},
       {}},
      {"they do not",
       "R 0 0 1 1 1 1 2 2 2 2 2 2 2 2 2 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5",
       2.5,
       {0, 0, 0, 1. / 3, 2. / 3, 1, 1, 1},
       {}},
      {"a point until the cut",
       "B 1 1 1 1 1 1 1 1 1 1 2 5 | 0 0 0 1 2 3 4 4 4",
       2,
       {0, 0, 0, 1, 1, 1},
       {0, 0, 0, .5, 1, 1, 1}},
      {"a point for a while", "B 1 1 1 1 1 1 1 1 2 5 | 0 0 0 1 2 3 3 3", 1, {0, 0, 0, 1, 1, 1}, {}},
  };
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    Globals g;
    const auto [first, second] = Divide(*source, row.t, g);
    ASSERT_NE(first->data, nullptr) << row.name;
    ASSERT_NE(second->data, nullptr) << row.name;
    EXPECT_LE(LargestGap(Knots(*first), row.first), 1e-15) << row.name;
    if (!row.second.empty()) {
      EXPECT_LE(LargestGap(Knots(*second), row.second), 1e-15) << row.name;
    }
    const Numbers before = ControlPoints(*first), after = ControlPoints(*second);
    const auto stride = FreeForm(*source).stride;
    EXPECT_TRUE(std::equal(before.end() - stride, before.end(), after.begin())) << row.name;
    const Numbers whole = ControlPoints(*source);
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + 3, whole.begin())) << row.name;
    EXPECT_TRUE(std::equal(after.end() - 3, after.end(), whole.end() - 3)) << row.name;
  }
}

// Points are compared with one tolerance, weights with the other.
TEST(Divide, AtAStandstillOfWeights) {
  const Owned source =
      Make("R 0 0 1 1 1 1 2 2 2 2 2 2.0005 2 2 2 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5");
  for (const bool wide : {false, true}) {
    Globals g;
    if (wide) KurvoclSetEpsilon0(1e-3, &g);
    const auto [first, second] = Divide(*source, 2.5, g);
    EXPECT_EQ(Knots(*first).size(), 8u) << wide;
    EXPECT_NEAR(Knots(*first)[4], wide ? 2. / 3 : .8, 1e-15);
  }
}

// Where a knot of full multiplicity lets the curve jump, each half keeps its own end.
TEST(Divide, LeavesAJumpOpen) {
  const Owned source = Make("B 0 0 1 1 2 0 5 5 6 6 7 5 | 0 0 0 1 1 1 2 2 2");
  Globals g;
  const auto [first, second] = Divide(*source, 1, g);
  EXPECT_EQ(ControlPoints(*first), ControlPoints(*Make("b 0 0 1 1 2 0")));
  EXPECT_EQ(ControlPoints(*second), ControlPoints(*Make("b 5 5 6 6 7 5")));
}

TEST(Divide, AtAnEndGivesAPointAndACopy) {
  const struct {
    const char* curve;
    const char* start;  // the point curves, empty for none
    const char* end;
  } rows[] = {
      {"l 1 2 3 4", "l 1 2 1 2", "l 3 4 3 4"},
      {"b 1 2 3 4 5 7", "b 1 2 1 2 1 2", "b 5 7 5 7 5 7"},
      {"b 1 2 3 4 5 7 1 1 2 2 9 8", "b 1 2 1 2 1 2 1 2 1 2 1 2", "b 9 8 9 8 9 8 9 8 9 8 9 8"},
      {"r 1 2 3 3 4 2", "r 1 2 1 1 2 1", "r 3 4 1 3 4 1"},
      {"B 1 2 3 4 5 6 7 9 | 2 2 2 3 4 4 4", "B 1 2 1 2 1 2 | 0 0 0 1 1 1",
       "B 7 9 7 9 7 9 | 0 0 0 1 1 1"},
      {"R 1 2 3 3 4 3 5 6 3 | 2 2 3 4 4", "R 1 2 1 1 2 1 | 0 0 1 1", "R 5 6 1 5 6 1 | 0 0 1 1"},
      {"c 1 3 (b 1 2 3 4)(r 3 4 2 5 6 2 7 8 1)", "b 1 2 1 2 1 2", "r 7 8 1 7 8 1 7 8 1 7 8 1"},
      {"c 1 3 (l 1 2 3 4)(B 3 4 5 6 | 0 0 1 1)", "", ""},
  };
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    const auto [start, length] = Domain(*source);
    for (const bool at_end : {false, true}) {
      for (const double off : {-9e-10, 0., 1e-12, 9e-10}) {
        Globals g(1e-9);
        const auto [first, second] = Divide(*source, start + (at_end ? length : 0) + off, g);
        const Curve& point = at_end ? *second : *first;
        const Curve& copy = at_end ? *first : *second;
        const std::string text = at_end ? row.end : row.start;
        if (text.empty()) {
          ExpectEmpty(point);
        } else {
          const Owned want = Make(text);
          ASSERT_EQ(point.type, want->type) << row.curve;
          EXPECT_EQ(KurvocvDegree(&point, &g), KurvocvDegree(want.get(), &g)) << row.curve;
          EXPECT_EQ(KurvocvMatch(&point, want.get(), &g), KURVO_MATCH_SAME) << row.curve;
        }
        EXPECT_EQ(KurvocvMatch(&copy, source.get(), &g), KURVO_MATCH_SAME) << row.curve;
      }
    }
  }
}

TEST(Divide, PointOfAnArcKeepsTheCircle) {
  const Owned source = Make("a 1 2 3 .4 -1");
  Globals g;
  const auto [first, second] = Divide(*source, 0, g);
  const auto& arc = first.block<KurvoArc>();
  EXPECT_EQ(arc.radius, 3);
  EXPECT_EQ(arc.normal[2], -1);
  EXPECT_NEAR(arc.start[0], 1 + 3 * std::cos(.4), 1e-15);
  EXPECT_EQ(arc.start[0], arc.end[0]);
}

TEST(Divide, WidthsOfCompositesAddUpToOne) {
  const struct {
    const char* curve;
    double t;
    Numbers first, second;
  } rows[] = {
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 2, {1}, {.375, .625}},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 2 + 9e-7, {1}, {.375, .625}},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 2 - 9e-7, {1}, {.375, .625}},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 4, {.5, .5}, {1. / 6, 5. / 6}},
      {"c 1 0 0 1 (b 0 0 1 0)(b 1 0 1 0)(b 1 0 1 0)(l 1 0 4 4)", 1, {1}, {0, 0, 1}},
      {"c 1 1 (b 0 0 1 1 2 0 3 3 4 4 5 5 6 7)(l 6 7 8 8)", .5, {1}, {1. / 3, 2. / 3}},
      {"c 1 1 (b 0 0 1 1)(c .5 .5 (l 1 1 2 2)(r 2 2 1 3 3 1))", 1.75, {4. / 7, 3. / 7}, {1}},
  };
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    Globals g;
    const auto [first, second] = Divide(*source, row.t, g);
    double width = 0;
    for (const auto& [half, want] : {std::pair{&first, &row.first}, {&second, &row.second}}) {
      ASSERT_EQ((*half)->type, CV_SEGCV) << row.curve << " at " << row.t;
      const auto& c = half->block<KurvoSegcv>();
      EXPECT_LE(LargestGap({c.widths, c.widths + c.count}, *want), 1e-6) << row.curve;
      double sum = 0;
      for (int i = 0; i < c.count; ++i) sum += c.widths[i];
      EXPECT_EQ(sum, 1.);
      width += sum;
    }
    EXPECT_EQ(width, 2.) << row.curve;
  }
}

TEST(Divide, ThenJoinedIsTheSameCubic) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 50; ++round) {
    Owned source = RandomBezier(random, false, 3);
    const double t = random.Uniform(.2, .8);
    Globals g;
    auto [first, second] = Divide(*source, t, g);
    std::vector<Owned> pieces;
    pieces.push_back(std::move(first));
    pieces.push_back(std::move(second));
    const Owned composite = MakeComposite({t, 1 - t}, std::move(pieces));
    Owned joined(CV_BSPLINE), whole, again(CV_BEZIER);
    ASSERT_EQ(KurvocvConvert(composite.get(), joined.get(), &g), KURVO_CONVERTED);
    KurvocvBsplRemoveKnots(joined.get(), whole.get(), &g);
    ASSERT_EQ(KurvocvConvert(whole.get(), again.get(), &g), KURVO_CONVERTED);
    EXPECT_LE(LargestGap(ControlPoints(*again), ControlPoints(*source)), 1e-11);
  }
}

TEST(Divide, DeepNestingAndKnotsWithoutOrderEnd) {
  const Owned deepest = Nested(64);
  Globals g;
  const auto [first, second] = Divide(*deepest, .25, g);
  Point p;
  KurvocvEndPoint(first.get(), p, &g);
  EXPECT_EQ(p[1], .5);
  for (const Numbers& knots :
       {Numbers{0, 1, 0, 1, 0, 1, 0, 1}, Numbers{5, 4, 3, 2, 1, 0, -1, -2},
        Numbers{0, 0, kNaN, .2, .9, .1, 1, 1}, Numbers{0, 0, 0, 7, -7, 1, 1}}) {
    Numbers points(2 * (knots.size() - 3), 1.);
    points[2] = 4;
    const Owned source = MakeFreeForm(CV_BSPLINE, points, knots);
    for (const double t : {.1, .5, .9, 3.}) Divide(*source, t, g);
  }
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

}  // namespace
}  // namespace kurvo_test
