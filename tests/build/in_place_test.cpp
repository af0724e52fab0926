// Curves changed in place: translation, rotation, mirroring, scaling, reversal, ends that move.
// That they commute with evaluation is a law of tests/laws; what they do to points is tested with
// them.
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

using G = GlobalVar*;

constexpr Point kCentre = {2, -1, 5}, kAlong = {-3, 4, 0}, kAxis = {0, 0, 1}, kNowhere = {0, 0, 0};

const struct {
  const char* name;
  void (*apply)(Curve* cv, const double* v, G g);  // v may be a point of the curve
  double z;                                        // what 5 becomes
  int unknown_type;
} kTransforms[] = {
    // clang-format off
    {"move", [](Curve* cv, const double* v, G g) { KurvocvMove(cv, v, g); }, 8, KURVO_ERR_CURVE},
    {"rotate", [](Curve* cv, const double* v, G g) { KurvocvRotate(cv, v, kAxis, 1, g); }, 5, KURVO_ERR_ROTATED_TYPE},
    {"turn about", [](Curve* cv, const double* v, G g) { KurvocvRotate(cv, kNowhere, v, 1, g); }, kNaN, KURVO_ERR_ROTATED_TYPE},
    {"mirror", [](Curve* cv, const double* v, G g) { KurvocvMirror(cv, v, kAlong, g); }, 0, KURVO_ERR_CURVE},
    {"mirror along", [](Curve* cv, const double* v, G g) { KurvocvMirror(cv, kCentre, v, g); }, 0, KURVO_ERR_CURVE},
    {"scale", [](Curve* cv, const double* v, G g) { KurvocvScale(cv, v, kNowhere, 2, g); }, 0, KURVO_ERR_CURVE},
    {"scale along", [](Curve* cv, const double* v, G g) { KurvocvScale(cv, kCentre, v, 2, g); }, 0, KURVO_ERR_CURVE},
    // clang-format on
};

TEST(Transform, TheThirdCoordinate) {
  for (const auto& row : kTransforms) {
    for (const char* text : {"b 0 0 1 1 2 0", "R 1 2 3 4 5 6 | 0 0 1 1"}) {
      Owned cv = Make(text);
      const FreeForm form(*cv);
      form.point(1)[2] = 5;
      const double weight = form.points[3];
      Globals g;
      row.apply(cv.get(), Point{.3, -7, 3}, &g);
      EXPECT_TRUE(std::isnan(row.z) || 1e-15 >= std::fabs(form.point(1)[2] - row.z)) << row.name;
      EXPECT_TRUE(form.stride == 3 || form.points[3] == weight) << row.name;
    }
  }
}

TEST(Transform, StopsAtTheFirstPieceThatFails) {
  for (const auto& row : kTransforms) {
    Owned cv = Make("c 1 1 1 1 (l 1 2 3 4)(e)(l 5 6 7 8)(l 9 8 7 6)");
    const auto& block = cv.block<KurvoSegcv>();
    const auto start = [&](int i) { return static_cast<KurvoLine*>(block.curves[i].data)->start; };
    block.curves[2].type = 112;
    Globals g;
    row.apply(cv.get(), Point{.3, -7, 0}, &g);
    EXPECT_EQ(KurvoErrGet(&g), row.unknown_type) << row.name;
    EXPECT_NE(start(0)[1], 2) << row.name;
    EXPECT_EQ(start(2)[0], 5) << row.name;
    EXPECT_EQ(start(3)[0], 9) << row.name;
    EXPECT_EQ(block.curves[1].data, nullptr);
    block.curves[2].type = CV_LINE;
  }
}

TEST(Transform, TakesVectorsFromTheCurveItself) {
  for (const auto& row : kTransforms) {
    for (int i = 0; i < 3; ++i) {
      Owned cv = Make("b 1 2 3 5 -2 4"), apart = Make("b 1 2 3 5 -2 4");
      const double* own = FreeForm(*cv).point(i);
      const Point v = {own[0], own[1], own[2]};
      Globals g;
      row.apply(cv.get(), own, &g);
      row.apply(apart.get(), v, &g);
      EXPECT_TRUE(IsCurve(*cv, *apart)) << row.name << " " << i;
    }
  }
}

TEST(Transform, Arcs) {
  Owned arc = Make("a 0 0 1 0 1.5707963267948966");
  auto& block = arc.block<KurvoArc>();
  const auto expect = [&](const Numbers& want, const char* what) {
    EXPECT_LE(LargestGap(AllNumbers(*arc), want), 1e-15) << what;
  };
  Globals g;
  KurvocvMove(arc.get(), Point{1, 2, 3}, &g);
  expect({1, 1, 2, 3, 0, 0, 1, 2, 2, 3, 1, 3, 3}, "moved");
  KurvocvMirror(arc.get(), kNowhere, Point{0, 1, 0}, &g);
  expect({1, 1, -2, 0, 0, 0, -1, 2, -2, 0, 1, -3, 0}, "mirrored");
  block.radius = 17;  // measured again, not multiplied
  KurvocvScale(arc.get(), kNowhere, kNowhere, 2, &g);
  const Numbers twice = {2, 2, -4, 0, 0, 0, -1, 4, -4, 0, 2, -6, 0};
  expect(twice, "scaled");
  KurvocvScale(arc.get(), kNowhere, Point{1, 0, 0}, 2, &g);
  expect(twice, "not stretched");
  KurvocvRotate(arc.get(), kNowhere, Point{1, 0, 0}, M_PI, &g);  // the plane turned over
  expect({2, 2, 4, 0, 0, 0, -1, 4, 4, 0, 2, 6, 0}, "turned over");
  Owned cv = Make("c 1 1 (c 1 (b 1 2 4 -3 5 5))(R 1 2 3 4 5 6 | 0 0 1 1)");
  KurvocvScale(cv.get(), Point{1, 1, 0}, Point{0, 1, 0}, 3, &g);  // of composites too
  EXPECT_TRUE(IsCurve(*cv, "c 1 1 (c 1 (b 1 4 4 -11 5 13))(R 1 4 3 4 13 6 | 0 0 1 1)"));
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

// ---- reversal, and the normalisation of knot vectors

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

// ---- the start or the end point moved

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
