// Division of a curve in two and in many. Random curves are divided by the laws and the
// differential.
#include "support/curve_text.h"
#include "support/oracle.h"

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
      {"still inside", "B 0 0 1 1 2 2 2 2 2 2 2 2 3 1 4 0 | 0 0 0 0 1 2 3 4 5 5 5 5", 2.5, {0, 0, 0, 0, 1. / 3, 2. / 3, 1, 1, 1, 1}, {0, 0, 0, 0, .5, 1, 1, 1, 1}},
      {"still at the start", "B 1 1 1 1 1 1 2 2 3 0 | 0 0 0 1 2 3 3 3", .5, quadratic, {0, 0, 0, .5, 1, 1, 1}},
      {"still at the end", "B 0 3 2 2 1 1 1 1 1 1 | 0 0 0 1 2 3 3 3", 2.5, {0, 0, 0, .5, 1, 1, 1}, quadratic},
      {"still everywhere", "B 1 1 1 1 1 1 | 0 0 0 1 1 1", .5, quadratic, quadratic},
      {"weights differ", "R 0 0 1 1 1 1 2 2 1 2 2 2 2 2 1 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5", 2.5, {0, 0, 0, .4, .8, 1, 1, 1}, {}},
      {"they do not", "R 0 0 1 1 1 1 2 2 2 2 2 2 2 2 2 3 1 1 4 0 1 | 0 0 0 1 2 3 4 5 5 5", 2.5, {0, 0, 0, 1. / 3, 2. / 3, 1, 1, 1}, {}},
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
      {"c 1 1 (b 0 0 1 1 2 2 3 3 4 4 5 5 6 6)(l 6 6 8 8)", .5, "c 1 (b 0 0 .5 .5 1 1 1.5 1.5 2 2 2.5 2.5 3 3)", "c .33333333333333333 .66666666666666667 (b 3 3 3.5 3.5 4 4 4.5 4.5 5 5 5.5 5.5 6 6)(l 6 6 8 8)"},
      {"c 1 1 (b 0 0 1 1)(c .5 .5 (l 1 1 2 2)(r 2 2 1 3 3 1))", 1.75, "c .5714285714285714 .42857142857142855 (b 0 0 1 1)(c .66666666666666667 .33333333333333333 (l 1 1 2 2)(r 2 2 1 2.5 2.5 1))", "c 1 (c 1 (r 2.5 2.5 1 3 3 1))"},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Owned source = Make(row.curve);
    const auto [first, second] = Divide(*source, row.t, g);
    SCOPED_TRACE(std::string(row.curve) + " at " + std::to_string(row.t));
    EXPECT_EQ(KurvoErrGet(&g), 0);
    if (!row.first) {
      const Oracle all(*source), before(*first), behind(*second);
      for (const double s : {.1, .4, .8}) {
        EXPECT_LE(Gap(before.PointAt(s), all.PointAt(s * row.t)), 2e-11);
        EXPECT_LE(Gap(behind.PointAt(s), all.PointAt(row.t + s * (1 - row.t))), 2e-11);
      }
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

// ---- at several parameters

Chain Divide(const Curve& cv, Numbers cuts, GlobalVar& g) {
  const CvParam list = {static_cast<int32_t>(cuts.size()), cuts.data()};
  Chain pieces;
  *pieces = {7, nullptr};  // to be emptied
  KurvocvNDivide(&cv, &list, pieces.get(), &g);
  return pieces;
}

TEST(NDivide, KnotsOfSplinePieces) {
  const Numbers line = {0, 0, 1, 1}, quadratic = {0, 0, 0, 1, 1, 1};
  const char* const corner = "B 0 0 1 5 2 2 | 0 0 .5 1 1";
  // clang-format off
  const struct {
    const char *name, *curve;
    Numbers cuts;
    std::vector<Numbers> want;
  } rows[] = {
      {"a needless knot goes", "B 0 0 1 1 2 2 | 0 0 .5 1 1", {.25}, {line, line}},
      {"a needed one stays", corner, {.25}, {line, {0, 0, 1. / 3, 1, 1}}},
      {"several cuts in one span", "B 0 0 1 5 2 2 | 0 0 0 1 1 1", {.25, .5}, {quadratic, quadratic, quadratic}},
      {"at a knot within epsilon", corner, {.5 + 9e-7}, {line, line}},
      {"twice at a knot", corner, {.5 - 3e-7, .5 + 3e-7}, {line, line, line}},
      {"at both ends", corner, {0, .5, 1}, {line, line, line, line}},
      {"nothing but an end", corner, {1}, {{0, 0, .5, 1, 1}, line}},
      {"of order 1", "B 0 0 1 5 | 0 .5 1", {.25}, {{0, 1}, {0, 1. / 3, 1}}},
      {"values are knots", "B 0 0 1 5 2 2 | 0 0 2 4 4", {.5, 1}, {line, line, {0, 0, 1. / 3, 1, 1}}},
      {"no cuts", "B 0 0 1 1 2 2 | 2 2 3 4 4", {}, {{2, 2, 3, 4, 4}}},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Chain pieces = Divide(*Make(row.curve), row.cuts, g);
    ASSERT_EQ(pieces.count(), static_cast<int>(row.want.size())) << row.name;
    for (int i = 0; i < pieces.count(); ++i)
      EXPECT_LE(LargestGap(Knots(pieces[i]), row.want[static_cast<std::size_t>(i)]), 1e-15)
          << row.name << ", piece " << i;
  }
}

// Point curves at ends and between close cuts; composites are cut in their own parameter, at the
// ends of pieces, several times in one piece, and where a piece has no width.
TEST(NDivide, Pieces) {
  const char* const two = "c .5 .5 (b 0 0 2 2)(r 2 2 1 4 0 1)";
  // clang-format off
  const struct {
    const char* curve;
    Numbers cuts;
    const char* want;
  } rows[] = {
      {"l 0 0 8 4", {0, .25, .5, 1}, "(l 0 0 0 0)(l 0 0 2 1)(l 2 1 4 2)(l 4 2 8 4)(l 8 4 8 4)"},
      {"b 0 0 4 4 8 0", {0, .5, .5 + 4e-7}, "(b 0 0 0 0 0 0)(b 0 0 2 2 4 2)(b 4 2 4 2 4 2)(b 4 2 6 2 8 0)"},
      {"b 0 0 4 4 8 0", {.5, 1 - 4e-7, 1}, "(b 0 0 2 2 4 2)(b 4 2 6 2 8 0)(b 8 0 8 0 8 0)(b 8 0 8 0 8 0)"},
      // after a cut at 1/2 the tolerance is half as wide, but for the end of a composite
      {"b 0 0 4 4 8 0", {.5, 1 - 7e-7}, "(b 0 0 2 2 4 2)(b 4 2 5.9999972 2 7.9999944 5.6e-6)(b 7.9999944 5.6e-6 7.9999972 2.8e-6 8 0)"},
      {two, {.5, 1 - 7e-7}, "(c 1 (b 0 0 2 2))(c 1 (r 2 2 1 4 0 1))(r 4 0 1 4 0 1 4 0 1)"},
      {two, {0, .5, 1}, "(b 0 0 0 0 0 0)(c 1 (b 0 0 2 2))(c 1 (r 2 2 1 4 0 1))(r 4 0 1 4 0 1 4 0 1)"},
      {"r 0 0 2 4 4 1 8 0 3", {0}, "(r 0 0 1 0 0 1 0 0 1)(r 0 0 2 4 4 1 8 0 3)"},
      {"B 0 0 4 4 8 0 | 0 0 0 1 1 1", {5e-7, .5}, "(B 0 0 0 0 0 0 | 0 0 0 1 1 1)(B 0 0 2 2 4 2 | 0 0 0 1 1 1)(B 4 2 6 2 8 0 | 0 0 0 1 1 1)"},
      {"c .5 0 1 .5 (l 0 0 1 0)(l 1 0 1 0)(B 1 0 2 4 3 0 | 0 0 .5 1 1)(l 3 0 9 6)", {.25, .5, .75, .875, 1}, "(c 1 (l 0 0 .5 0))(c 1 (l .5 0 1 0))(c 0 1 (l 1 0 1 0)(B 1 0 1.5 2 | 0 0 1 1))(c 1 (B 1.5 2 1.75 3 | 0 0 1 1))" "(c 1 (B 1.75 3 2 4 | 0 0 1 1))(c .5 .5 (B 2 4 3 0 | 0 0 1 1)(l 3 0 9 6))"},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Chain pieces = Divide(*Make(row.curve), row.cuts, g), want(row.want);
    ASSERT_EQ(pieces.count(), want.count()) << row.curve;
    for (int i = 0; i < pieces.count(); ++i)
      EXPECT_TRUE(IsCurve(pieces[i], want[i], 2e-9)) << row.curve << ", piece " << i;
  }
}

}  // namespace
}  // namespace kurvo_test
