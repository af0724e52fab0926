// Division of a curve in two. Random curves on [0, 1] are divided by the laws and the differential.
#include "build/stretch.h"

namespace kurvo_test {
namespace {

struct Halves {
  Owned first, second;
};

Halves Divide(const Curve& cv, double t, GlobalVar& g) {
  Halves halves;
  halves.first->type = halves.second->type = CV_ARC;  // to be emptied
  KurvocvDivide(&cv, t, halves.first.get(), halves.second.get(), &g);
  return halves;
}

TEST(Divide, TakesTheSplinesOwnParameter) {
  Rounds(100, [&](Random& random, int round) {
    const int order = 2 + round % 7;
    const Owned source = RandomSplineOver(random, round % 2 == 1, order, 2, 5, order);
    const double t = 2 + 3 * RandomCut(random, 0, 1);
    Globals g;
    const auto [first, second] = Divide(*source, t, g);
    ExpectStretch(*first, *source, 2, t);
    ExpectStretch(*second, *source, t, 5);
  });
}

TEST(Divide, KnotsAndControlPoints) {
  const std::string five = "B 0 0 1 4 3 5 6 0 8 2", half = five + " | 0 0 0 0 .5 1 1 1 1",
                    two = five + " 9 3 | 0 0 0 0 .4999996 .5000004 1 1 1 1";
  const Numbers cubic = {0, 0, 0, 0, 1, 1, 1, 1}, quadratic = {0, 0, 0, 1, 1, 1};
  // clang-format off
  const struct {
    const char* name;
    std::string curve;
    double t;
    Numbers first, second;  // knots; none where they do not matter
  } rows[] = {
      {"at a knot", half, .5, cubic, {}},
      {"at it by six decimals", half, .5 + 4e-7, cubic, {}},
      {"just beside it", half, .500002, {0, 0, 0, 0, .5 / .500002, 1, 1, 1, 1}, cubic},
      {"at the nearer of two", two, .4999999, cubic, {}},
      {"at the nearer of two, the second", two, .5000001, {0, 0, 0, 0, .4999996 / .5000004, 1, 1, 1, 1}, cubic},
      {"between knots", half, .75, {0, 0, 0, 0, 2. / 3, 1, 1, 1, 1}, cubic},
      {"unclamped", five + " | -1 0 1 2 3 4 5 6", 2.5, {-4. / 3, -2. / 3, 0, 2. / 3, 1, 1, 1}, {}},
      {"still inside", "B 0 0 1 1 2 2 2 2 2 2 2 2 3 1 4 0 | 0 0 0 0 1 2 3 4 5 5 5 5", 2.5,
       {0, 0, 0, 0, 1. / 3, 2. / 3, 1, 1, 1, 1}, {0, 0, 0, 0, .5, 1, 1, 1, 1}},
      {"still at the start", "B 1 1 1 1 1 1 2 2 3 0 | 0 0 0 1 2 3 3 3", .5, quadratic, {0, 0, 0, .5, 1, 1, 1}},
      {"still at the end", "B 0 3 2 2 1 1 1 1 1 1 | 0 0 0 1 2 3 3 3", 2.5, {0, 0, 0, .5, 1, 1, 1}, quadratic},
      {"still everywhere", "B 1 1 1 1 1 1 | 0 0 0 1 1 1", .5, quadratic, quadratic},
      {"weights differ", "R 0 0 1 1 1 1 2 2 1 2 2 2 2 2 1 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5", 2.5, {0, 0, 0, .4, .8, 1, 1, 1}, {}},
      {"they do not", "R 0 0 1 1 1 1 2 2 2 2 2 2 2 2 2 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5", 2.5,
       {0, 0, 0, 1. / 3, 2. / 3, 1, 1, 1}, {}},
      {"a point until the cut", "B 1 1 1 1 1 1 1 1 1 1 2 5 | 0 0 0 1 2 3 4 4 4", 2, quadratic, {0, 0, 0, .5, 1, 1, 1}},
      {"a point for a while", "B 1 1 1 1 1 1 1 1 2 5 | 0 0 0 1 2 3 3 3", 1, quadratic, {}},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    Globals g;
    const auto [first, second] = Divide(*source, row.t, g);
    ASSERT_TRUE(first->data && second->data) << row.name;
    EXPECT_LE(LargestGap(Knots(*first), row.first), 1e-15) << row.name;
    EXPECT_TRUE(row.second.empty() || LargestGap(Knots(*second), row.second) <= 1e-15) << row.name;
    const Numbers before = ControlPoints(*first), after = ControlPoints(*second),
                  whole = ControlPoints(*source);
    EXPECT_TRUE(std::equal(before.end() - FreeForm(*source).stride, before.end(), after.begin()))
        << row.name;
    EXPECT_TRUE(std::equal(before.begin(), before.begin() + 3, whole.begin())) << row.name;
    EXPECT_TRUE(std::equal(after.end() - 3, after.end(), whole.end() - 3)) << row.name;
  }
}

// Points are compared with one tolerance, weights with the other.
TEST(Divide, AtAStandstillOfWeights) {
  const Owned source =
      Make("R 0 0 1 1 1 1 2 2 1 2 2 1.0005 2 2 1 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5");
  for (const bool wide : {false, true}) {
    Globals g;
    if (wide) KurvoclSetEpsilon0(1e-3, &g);
    const auto [first, second] = Divide(*source, 2.5, g);
    EXPECT_EQ(Knots(*first).size(), 8u) << wide;
    EXPECT_NEAR(Knots(*first)[4], wide ? 2. / 3 : .8, 1e-15);
  }
}

// Parts are given where they are known to the bit, or nearly.
TEST(Divide, Parts) {
  // clang-format off
  const struct {
    const char* curve;
    double t;
    const char *first, *second;  // null: as the source is there
    double bound = 1e-15;
  } rows[] = {
      // where a knot of full multiplicity lets the curve jump each half keeps its own end
      {"B 0 0 1 1 2 0 5 5 6 6 7 5 | 0 0 0 1 1 1 2 2 2", 1, "B 0 0 1 1 2 0 | 0 0 0 1 1 1", "B 5 5 6 6 7 5 | 0 0 0 1 1 1"},
      // a control point whose weights cancel lies at infinity, in the direction of either axis
      {"r 0 2 1 0 4 -1 3 5 4", .5, nullptr, nullptr},
      {"r 2 0 1 4 0 -1 5 3 4", .5, nullptr, nullptr},
      {"deep 64", .25, nullptr, nullptr},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 2, "c 1 (l 0 0 1 0)", "c .375 .625 (b 1 0 2 0)(l 2 0 4 4)"},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 2 + 9e-7, "c 1 (l 0 0 1 0)", "c .375 .625 (b 1 0 2 0)(l 2 0 4 4)", 1e-6},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 2 0)(l 2 0 4 4)", 2 - 9e-7, "c 1 (l 0 0 1 0)", "c .375 .625 (b 1 0 2 0)(l 2 0 4 4)", 1e-6},
      {"c 2 3 5 (l 0 0 1 0)(b 1 0 4 0)(l 4 0 4 4)", 4, "c .5 .5 (l 0 0 1 0)(b 1 0 3 0)", "c .16666666666666666 .83333333333333333 (b 3 0 4 0)(l 4 0 4 4)"},
      {"c 1 0 0 1 (b 0 0 1 0)(b 1 0 1 0)(b 1 0 1 0)(l 1 0 4 4)", 1, "c 1 (b 0 0 1 0)", "c 0 0 1 (b 1 0 1 0)(b 1 0 1 0)(l 1 0 4 4)"},
      {"c 1 1 (b 0 0 1 1 2 2 3 3 4 4 5 5 6 6)(l 6 6 8 8)", .5, "c 1 (b 0 0 .5 .5 1 1 1.5 1.5 2 2 2.5 2.5 3 3)",
       "c .33333333333333333 .66666666666666667 (b 3 3 3.5 3.5 4 4 4.5 4.5 5 5 5.5 5.5 6 6)(l 6 6 8 8)"},
      {"c 1 1 (b 0 0 1 1)(c .5 .5 (l 1 1 2 2)(r 2 2 1 3 3 1))", 1.75,
       "c .5714285714285714 .42857142857142855 (b 0 0 1 1)(c .66666666666666667 .33333333333333333 (l 1 1 2 2)(r 2 2 1 2.5 2.5 1))",
       "c 1 (c 1 (r 2.5 2.5 1 3 3 1))"},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Owned source = Make(row.curve);
    const auto [first, second] = Divide(*source, row.t, g);
    SCOPED_TRACE(std::string(row.curve) + " at " + std::to_string(row.t));
    EXPECT_EQ(KurvoErrGet(&g), 0);
    if (!row.first) {
      ExpectStretch(*first, *source, 0, row.t);
      ExpectStretch(*second, *source, row.t, 1);
      continue;
    }
    EXPECT_TRUE(IsCurve(*first, row.first, row.bound));
    EXPECT_TRUE(IsCurve(*second, row.second, row.bound));
    if (first->type == CV_SEGCV) {
      EXPECT_EQ(Domain(*first).second, 1.);
      EXPECT_EQ(Domain(*second).second, 1.);
    }
  }
}

TEST(Divide, AtAnEndGivesAPointAndACopy) {
  // clang-format off
  const struct {
    const char *curve, *start, *end;  // the point curves, empty for none
  } rows[] = {
      {"l 1 2 3 4", "l 1 2 1 2", "l 3 4 3 4"},
      {"b 1 2 3 4 5 7", "b 1 2 1 2 1 2", "b 5 7 5 7 5 7"},
      {"b 1 2 3 4 5 7 1 1 2 2 9 8", "b 1 2 1 2 1 2 1 2 1 2 1 2", "b 9 8 9 8 9 8 9 8 9 8 9 8"},
      {"r 1 2 3 3 4 2", "r 1 2 1 1 2 1", "r 3 4 1 3 4 1"},
      {"B 1 2 3 4 5 6 7 9 | 2 2 2 3 4 4 4", "B 1 2 1 2 1 2 | 0 0 0 1 1 1", "B 7 9 7 9 7 9 | 0 0 0 1 1 1"},
      {"R 1 2 3 3 4 3 5 6 3 | 2 2 3 4 4", "R 1 2 1 1 2 1 | 0 0 1 1", "R 5 6 1 5 6 1 | 0 0 1 1"},
      {"c 1 3 (b 1 2 3 4)(r 3 4 2 5 6 2 7 8 1)", "b 1 2 1 2 1 2", "r 7 8 1 7 8 1 7 8 1 7 8 1"},
      {"c 1 3 (l 1 2 3 4)(B 3 4 5 6 | 0 0 1 1)", "", ""},
      {"a 1 2 3 0 2", "a 1 2 3 0 0", nullptr},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    const auto [start, length] = Domain(*source);
    for (const bool at_end : {false, true}) {
      const char* const want = at_end ? row.end : row.start;
      if (!want) continue;
      for (const double off : {-9e-10, 0., 1e-12, 9e-10}) {
        Globals g(1e-9);
        const auto [first, second] = Divide(*source, start + (at_end ? length : 0) + off, g);
        const Curve &point = at_end ? *second : *first, &copy = at_end ? *first : *second;
        EXPECT_TRUE(*want ? IsCurve(point, want) : IsCurve(point, Curve{})) << row.curve;
        EXPECT_TRUE(IsCurve(copy, *source)) << row.curve;
      }
    }
  }
}

}  // namespace
}  // namespace kurvo_test
