// Reversal, and the normalisation of knot vectors. Random curves are reversed by the laws.
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

TEST(ChgOrder, Table) {
  // clang-format off
  const struct {
    const char *curve, *want;
  } rows[] = {
      {"l 1 2 4 -3", "l 4 -3 1 2"},
      {"a 1 2 3 0 1.5", "a 1 2 3 1.5 -1.5"},
      {"b 3 4", "b 3 4"},
      {"b 0 0 1 2 3 2 7 8", "b 7 8 3 2 1 2 0 0"},
      {"r 0 0 1 1 2 3 3 2 .5", "r 3 2 .5 1 2 3 0 0 1"},
      {"B 0 0 1 0 2 0 3 0 | 0 0 0 .25 1 1 1", "B 3 0 2 0 1 0 0 0 | 0 0 0 .75 1 1 1"},
      {"B 0 0 1 0 | -1 -1 0 0", "B 1 0 0 0 | 0 0 1 1"},
      {"R 0 0 1 1 2 3 3 2 4 5 0 2 | 1 2 2 4 6 8", "R 5 0 2 3 2 4 1 2 3 0 0 1 | -.5 0 .5 1 1 1.25"},
      {"c .25 .75 (b 0 0 1 2)(c .5 .125 (r 1 2 1 3 4 2)(l 1 2 3 4))", "c .75 .25 (c .125 .5 (l 3 4 1 2)(r 3 4 2 1 2 1))(b 1 2 0 0)"},
  };
  // clang-format on
  for (const auto& row : rows) {
    Owned cv = Make(row.curve);
    Globals g;
    EXPECT_EQ(KurvocvChgOrder(cv.get(), &g), 0);
    EXPECT_TRUE(IsCurve(*cv, row.want)) << row.curve;
    for (const double x : AllNumbers(*cv)) EXPECT_FALSE(x == 0 && std::signbit(x)) << row.curve;
  }
}

TEST(NormalizeKnot, Table) {
  // clang-format off
  const struct {
    Numbers knots;
    int count, order;
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
  // clang-format on
  for (const auto& row : rows) {
    Numbers knots = row.knots;
    KurvoclNormalizeKnot(knots.data(), row.count, row.order);
    EXPECT_EQ(knots, row.want) << "count " << row.count << ", order " << row.order;
  }
  KurvoclNormalizeKnot(nullptr, 4, 2);
}

}  // namespace
}  // namespace kurvo_test
