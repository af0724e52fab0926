// Whether two curves are the same.
#include <gtest/gtest.h>

#include "support/curve_text.h"

namespace kurvo_test {
namespace {

const std::string kLine = "l 0 0 1 2";
const std::string kQuadratic = "0 0 3 6 6 0";
const std::string kCubic = "0 0 2 4 4 4 6 0";  // the quadratic, raised
// Two quadratic spans with a corner, and the same raised.
const std::string kCorner = "B 0 0 3 6 6 0 6 3 9 3 | 2 2 2 3 3 4 4 4";
const std::string kRaisedCorner = "B 0 0 2 4 4 4 6 0 6 2 7 3 9 3 | 2 2 2 2 3 3 3 4 4 4 4";

const struct {
  const char* name;
  std::string a, b;
  uint32_t want;
} kRows[] = {
    // clang-format off
    {"line", kLine, kLine, 2},
    {"line, backwards", kLine, "l 1 2 0 0", 0},
    {"line within epsilon", kLine, "l 0 0 1.0000009 2", 2},
    {"line beyond epsilon", kLine, "l 0 0 1.0000011 2", 0},
    {"arc", "a 0 0 1 0 1", "a 0 0 1 0 1", 2},
    {"arc, clockwise", "a 0 0 1 0 1", "a 0 0 1 1 -1", 0},
    {"line and arc", kLine, "a 0 0 1 0 1", 0},
    {"Bezier", "b " + kQuadratic, "b " + kQuadratic, 2},
    {"Bezier, raised", "b " + kQuadratic, "b " + kCubic, 2},
    {"Bezier, raised and moved", "b " + kQuadratic, "b 0 0 2 4 4 4.000002 6 0", 0},
    {"rational Bezier", "r 0 0 1 3 6 2 6 0 4", "r 0 0 1 3 6 2 6 0 4", 2},
    // P0, (P0 + 4 P1) / 3, (4 P1 + 4 P2) / 3 and 4 P2 in homogeneous form
    {"rational Bezier, raised", "r 0 0 1 3 6 2 6 0 4", "r 0 0 1 2.4 4.8 1.66666666666666667 4.5 3 2.66666666666666667 6 0 4", 2},
    {"weight within epsilon0", "r 0 0 1 3 6 1", "r 0 0 1 3 6 1.0000009", 2},
    {"weight beyond epsilon0", "r 0 0 1 3 6 1", "r 0 0 1 3 6 1.0000011", 0},
    {"B-spline", kCorner, kCorner, 2},
    {"B-spline, raised", kCorner, kRaisedCorner, 2},
    {"B-spline, other count", kRaisedCorner, "B " + kCubic + " | 2 2 2 2 3 3 3 3", 0},
    {"B-spline, other knot", kCorner, "B 0 0 3 6 6 0 6 3 9 3 | 2 2 2 3.000002 3.000002 4 4 4", 0},
    {"B-spline, last knot but one", kCorner, "B 0 0 3 6 6 0 6 3 9 3 | 2 2 2 3 3 4 5 5", 0},
    {"B-spline, last knot", kCorner, "B 0 0 3 6 6 0 6 3 9 3 | 2 2 2 3 3 4 4 5", 2},
    {"rational B-spline, weight", "R 0 0 1 3 6 1 | 0 0 1 1", "R 0 0 1 3 6 1.000002 | 0 0 1 1", 0},
    {"rational B-spline, raised", "R 0 0 1 3 6 1 | 0 0 1 1", "R 0 0 1 1.5 3 1 3 6 1 | 0 0 0 1 1 1", 2},
    {"composite", "c 1 2 (b " + kQuadratic + ")(l 6 0 7 0)", "c 1 2 (b " + kCubic + ")(l 6 0 7 0)", 2},
    {"composite, width", "c 1 (" + kLine + ")", "c 1.000002 (" + kLine + ")", 0},
    {"composite, types", "c 1 (b " + kQuadratic + ")", "c 1 (B " + kQuadratic + " | 0 0 0 1 1 1)", 0},
    {"composite, empty piece", "c 1 (e)", "c 1 (e)", 0},
    {"composite, count", "c 1 (" + kLine + ")", "c", 0},
    {"no pieces", "c", "c", 2},
    {"Bezier and B-spline", "b " + kQuadratic, "B " + kCubic + " | 0 0 0 0 1 1 1 1", 1},
    {"Bezier and two spans", "b " + kQuadratic, kCorner, 0},
    {"line and Bezier", "l 0 0 2 4", "b 0 0 1 2 2 4", 1},
    {"line and bent Bezier", "l 0 0 6 0", "b " + kQuadratic, 0},
    {"arc and rational Bezier", "a 0 0 1 0 1.5707963267948966", "r 1 0 1 1 1 .70710678118654752 0 1 1", 1},
    {"Bezier and composite of it", "b " + kQuadratic, "c 1 (b " + kQuadratic + ")", 0},
    {"B-spline and composite", "B " + kQuadratic + " | 0 0 0 1 1 1", "c 2 (b " + kQuadratic + ")", 1},
    // clang-format on
};

TEST(Match, Table) {
  for (const auto& row : kRows) {
    Globals g;
    const Owned a = Make(row.a), b = Make(row.b);
    EXPECT_EQ(KurvocvMatch(a.get(), b.get(), &g), row.want) << row.name;
    EXPECT_EQ(KurvocvMatch(b.get(), a.get(), &g), row.want) << row.name << ", exchanged";
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
  }
  Owned line = Make(kLine), raised = Make(kLine);
  raised.block<KurvoLine>().end[2] = 1;
  Globals g;
  EXPECT_EQ(KurvocvMatch(line.get(), raised.get(), &g), KURVO_MATCH_NONE) << "height";
}

TEST(Match, RaisesUpToDegree4096) {
  const Owned low = Make("b 0 0 3 6");
  for (const auto& [degree, want] : {std::pair(4096, 2u), std::pair(4097, 0u)}) {
    Numbers points;
    for (int i = 0; i <= degree; ++i)
      points.insert(points.end(), {3.0 * i / degree, 6.0 * i / degree});
    Globals g;
    EXPECT_EQ(KurvocvMatch(low.get(), MakeFreeForm(CV_BEZIER, points).get(), &g), want);
  }
}

}  // namespace
}  // namespace kurvo_test
