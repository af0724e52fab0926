// Moving the start or the end point of a curve.
#include <gtest/gtest.h>

#include "query/reference.h"

namespace kurvo_test {
namespace {

constexpr Point kDelta = {.25, -4, 2};

void Move(Curve* cv, bool start, GlobalVar& g) {
  start ? KurvocvMvStartPoint(cv, kDelta, &g) : KurvocvMvEndPoint(cv, kDelta, &g);
}

Point End(const Curve* cv, bool start) {
  Globals g;
  Point p{};
  start ? KurvocvStartPoint(cv, p, &g) : KurvocvEndPoint(cv, p, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return p;
}

// Which of the control points (ends of a line) differ, as in "10010".
std::string Moved(const Curve& a, const Curve& b) {
  if (a.type == CV_SEGCV) {
    const auto& pieces = *static_cast<KurvoSegcv*>(a.data);
    const auto& others = *static_cast<KurvoSegcv*>(b.data);
    std::string text;
    for (int i = 0; i < pieces.count; ++i) text += Moved(pieces.curves[i], others.curves[i]) + ' ';
    return text;
  }
  const bool line = a.type == CV_LINE, bezier = a.type == CV_BEZIER || a.type == CV_RBEZIER;
  const double* p = line ? static_cast<double*>(a.data) : FreeForm(a).points;
  const double* q = line ? static_cast<double*>(b.data) : FreeForm(b).points;
  const int count = line ? 2 : bezier ? FreeForm(a).order : SplineCount(a);
  const int stride = line ? 3 : FreeForm(a).stride;
  std::string text;
  for (int i = 0; i < count; ++i, p += stride, q += stride) {
    text += std::equal(p, p + stride, q) ? '0' : '1';
    EXPECT_TRUE(stride == 3 || p[3] == q[3]);  // weights stay
  }
  return text;
}

TEST(MoveEndPoint, MovesJustTheControlPointsThatActThere) {
  const struct {
    const char* curve;
    const char* start;
    const char* end;
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
      {"c 2 1 (l 1 2 3 4)(a 0 0 1 0 1)", "10 ", nullptr},
      {"c 1 1 (c 3 (b 0 0 1 1 2 0))(c 1 2 (l 0 0 1 1)(l 1 1 3 2))", "100  00 00  ", "000  00 01  "},
  };
  for (const auto& row : rows) {
    for (const bool start : {true, false}) {
      if (!(start ? row.start : row.end)) continue;
      const Owned source = Make(row.curve);
      Owned cv = Make(row.curve);
      Globals g;
      Move(cv.get(), start, g);
      EXPECT_EQ(KurvoErrGet(&g), 0) << row.curve;
      const Point p = End(source.get(), start), q = End(cv.get(), start);
      const bool rational = cv->type == CV_RBSPLINE;  // whose evaluated points have z = 0
      for (std::size_t i = 0; i < (rational ? 2 : 3); ++i)
        EXPECT_NEAR(q[i] - p[i], kDelta[i], 1e-13) << row.curve << (start ? " start" : " end");
      if (cv->type == CV_SEGCV && row.end == nullptr) continue;
      EXPECT_EQ(Moved(*cv, *source), start ? row.start : row.end) << row.curve;
    }
  }
}

TEST(MoveEndPoint, UnclampedSplines) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 300; ++round) {
    const bool rational = round % 2 == 1, start = round % 4 >= 2;
    const int order = round % 50 == 0 ? 70 : static_cast<int>(random.Uniform(2, 8));
    const int count = order + static_cast<int>(random.Uniform(0, 6));
    Numbers knots(static_cast<std::size_t>(order + count));
    for (double& u : knots) u = random.Uniform(0, order + count);
    std::sort(knots.begin(), knots.end());
    const Numbers points = RandomPoints(random, count, rational);
    const int32_t type = rational ? CV_RBSPLINE : CV_BSPLINE;
    const Owned source = MakeFreeForm(type, points, knots);
    Owned cv = MakeFreeForm(type, points, knots);
    Globals g;
    Move(cv.get(), start, g);
    EXPECT_EQ(KurvoErrGet(&g), 0);
    const Reference before(*source), after(*cv);
    const double t = start ? before.start() : before.end();
    const auto p = before.PointAt(t), q = after.PointAt(t);
    EXPECT_NEAR(static_cast<double>(q.x - p.x), kDelta[0], 1e-11) << round;
    EXPECT_NEAR(static_cast<double>(q.y - p.y), kDelta[1], 1e-11) << round;
    const std::string moved(static_cast<std::size_t>(order - 1), '1'),
        still(static_cast<std::size_t>(count - order + 1), '0');
    EXPECT_EQ(Moved(*cv, *source), start ? moved + still : still + moved) << round;
  }
}

// With shares 1/6, 2/3 and 1/6 in the end the least change is 1/3, 4/3 and 1/3 of the displacement;
// any other, such as 1, 1 and 1, has a greater sum of squares.
TEST(MoveEndPoint, ChangesAsLittleAsItCan) {
  for (const char* text :
       {"B 1 0 1 0 1 0 1 0 | 0 1 2 3 4 5 6 7", "R 1 0 2 1 0 2 1 0 2 1 0 2 | 0 1 2 3 4 5 6 7"}) {
    for (const bool start : {true, false}) {
      Owned cv = Make(text);
      Globals g;
      Move(cv.get(), start, g);
      const FreeForm form(*cv);
      const double want[] = {1. / 3, 4. / 3, 1. / 3};
      for (int i = 0; i < 3; ++i) {
        const double* p = form.points + (start ? i : i + 1) * form.stride;
        EXPECT_NEAR(p[0] - 1, want[i] * kDelta[0], 1e-15) << text << ' ' << i;
        EXPECT_NEAR(p[1], want[i] * kDelta[1], 1e-14) << text << ' ' << i;
        EXPECT_NEAR(p[2], want[i] * kDelta[2], 1e-14) << text << ' ' << i;
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
  EXPECT_EQ(block.end[0], 8);
  KurvocvMove(line.get(), block.start, &g);
  EXPECT_EQ(block.start[1], 4);
  EXPECT_EQ(block.end[1], -4);
}

}  // namespace
}  // namespace kurvo_test
