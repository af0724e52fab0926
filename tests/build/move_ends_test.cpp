// Moving the start or the end point of a curve.
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

constexpr Point kDelta = {.25, -4, 2};

void Move(Curve* cv, bool start) {
  Globals g;
  start ? KurvocvMvStartPoint(cv, kDelta, &g) : KurvocvMvEndPoint(cv, kDelta, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

Point End(const Curve* cv, bool start) {
  Globals g;
  Point p{};
  start ? KurvocvStartPoint(cv, p, &g) : KurvocvEndPoint(cv, p, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return p;
}

// Which of the points differ, as in "10010"; weights, knots and widths stay.
std::string Moved(const Curve& a, const Curve& b) {
  std::vector<const double*> before, behind;
  const auto none = [](double) {};
  ForEachPoint(
      a, [&](const double* p) { before.push_back(p); }, none);
  ForEachPoint(
      b, [&](const double* p) { behind.push_back(p); }, none);
  std::string text;
  int coordinates = 0, numbers = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    text += std::equal(before[i], before[i] + 3, behind[i]) ? '0' : '1';
    for (int c = 0; c < 3; ++c) coordinates += before[i][c] != behind[i][c];
  }
  const Numbers p = AllNumbers(a), q = AllNumbers(b);
  for (std::size_t i = 0; i < p.size(); ++i) numbers += p[i] != q[i];
  EXPECT_EQ(numbers, coordinates) << "more than points has changed";
  return text;
}

TEST(MoveEndPoint, MovesJustTheControlPointsThatActThere) {
  // clang-format off
  const struct {
    const char *curve, *start, *end;
  } rows[] = {
      {"l 1 2 4 -3", "10", "01"},
      {"b 3 4", "1", "1"},
      {"b 0 0 1 2 3 2 7 8", "1000", "0001"},
      {"r 0 0 1 1 2 3 3 2 .5", "100", "001"},
      {"B 0 0 1 2 3 2 5 0 7 9 | 0 0 0 0 1 2 2 2 2", "10000", "00001"},
      {"B 0 0 1 2 3 2 5 0 7 9 | 0 1 2 3 4 5 6 7 8", "11100", "00111"},
      {"B 0 0 1 2 3 2 5 0 7 9 | 0 1 3 3 4 5 5 7 8", "11000", "00011"},
      {"B 0 0 1 2 3 2 5 0 7 9 | 0 3 3 3 4 5 5 5 8", "10000", "00001"},
      {"B 0 0 1 2 3 2 5 0 7 9 | 3 3 3 3 4 5 6 7 8", "10000", "00111"},
      {"B 0 0 1 2 3 2 5 0 7 9 2 1 | 0 0 0 0 0 1 2 2 2 2", "010000", "000001"},  // the first idles
      {"B 0 0 1 2 3 2 | 0 1 2 3", "100", "001"},                                // steps
      {"B 0 0 1 2 3 2 | 2 2 2 2 2 2", "100", "001"},                            // no span
      {"R 0 0 2 1 2 1 3 2 3 5 0 .5 7 9 4 | 0 1 2 3 4 5 6 7 8", "11100", "00111"},
      {"R 0 0 2 1 2 0 3 2 3 5 0 0 7 9 4 | 0 1 2 3 4 5 6 7 8", "10100", "00101"},  // weight 0
      {"R 0 0 1 1 2 1 3 2 1 5 0 1 7 9 1 | 0 1 2 3 4 5 6 7 8", "11100", "00111"},
      {"R 0 0 1 1 2 -.25 3 2 1 5 0 -.25 7 9 1 | -3 -2 -1 0 1 2 3 4 5", "11100", "00111"},
      {"c 2 1 (l 1 2 3 4)(a 0 0 1 0 1)", "10000", nullptr},
      {"c 1 1 (c 3 (b 0 0 1 1 2 0))(c 1 2 (l 0 0 1 1)(l 1 1 3 2))", "1000000", "0000001"},
  };
  // clang-format on
  for (const auto& row : rows) {
    for (const bool start : {true, false}) {
      if (!(start ? row.start : row.end)) continue;
      const Owned source = Make(row.curve);
      Owned cv = Make(row.curve);
      Move(cv.get(), start);
      const Point p = End(source.get(), start), q = End(cv.get(), start);
      const bool rational = cv->type == CV_RBSPLINE;  // whose evaluated points have z = 0
      for (std::size_t i = 0; i < (rational ? 2 : 3); ++i)
        EXPECT_NEAR(q[i] - p[i], kDelta[i], 1e-13) << row.curve << (start ? " start" : " end");
      EXPECT_EQ(Moved(*cv, *source), start ? row.start : row.end) << row.curve;
    }
  }
}

// With shares 1/6, 2/3 and 1/6 in the end the least change is 1/3, 4/3 and 1/3 of the displacement;
// any other, such as 1, 1 and 1, has a greater sum of squares.
TEST(MoveEndPoint, ChangesAsLittleAsItCan) {
  for (const char* text :
       {"B 1 0 1 0 1 0 1 0 | 0 1 2 3 4 5 6 7", "R 1 0 2 1 0 2 1 0 2 1 0 2 | 0 1 2 3 4 5 6 7"}) {
    for (const bool start : {true, false}) {
      Owned cv = Make(text);
      Move(cv.get(), start);
      const double want[] = {1. / 3, 4. / 3, 1. / 3};
      for (int i = 0; i < 3; ++i) {
        const double* p = FreeForm(*cv).point(start ? i : i + 1);
        for (std::size_t c = 0; c < 3; ++c)
          EXPECT_NEAR(p[c] - (c == 0), want[i] * kDelta[c], 1e-14) << text << ' ' << i;
      }
    }
  }
}

// The displacement may be a point of the curve itself.
TEST(MoveEndPoint, DeltaInsideTheCurve) {
  Owned line = Make("l 1 2 4 -3");
  auto& block = line.block<KurvoLine>();
  Globals g;
  KurvocvMvEndPoint(line.get(), block.end, &g);
  EXPECT_TRUE(IsCurve(*line, "l 1 2 8 -6"));
}

}  // namespace
}  // namespace kurvo_test
