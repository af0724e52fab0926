// End points, degree, straightness, collapse and boxes.
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

constexpr double kUntouched = -77;

struct Ends {
  Point start{kUntouched, kUntouched, kUntouched}, end = start;
};

Ends EndsOf(const Curve& cv) {
  Globals g;
  Ends ends;
  KurvocvStartPoint(&cv, ends.start, &g);
  KurvocvEndPoint(&cv, ends.end, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return ends;
}

TEST(EndPoints, Table) {
  constexpr double u = kUntouched;
  // clang-format off
  const struct {
    const char* curve;
    Point start, end;
  } rows[] = {
      {"l 1 2 3 4", {1, 2, 0}, {3, 4, 0}},
      {"b 1 2 9 9 3 4", {1, 2, 0}, {3, 4, 0}},
      {"r 1 2 5 9 9 1 3 4 2", {1, 2, 0}, {3, 4, 0}},
      {"B 0 1 1 5 2 0 3 4 9 9 | 0 0 0 0 1 2 2 2 2", {0, 1, 0}, {9, 9, 0}},
      {"B 0 0 6 6 12 0 | 0 1 2 3 4 5", {3, 3, 0}, {9, 3, 0}},  // unclamped: mid points of the legs
      {"R 0 0 2 6 6 2 12 0 2 | 0 1 2 3 4 5", {3, 3, 0}, {9, 3, 0}},
      {"R 0 0 1 8 0 3 | 0 1 2 3", {0, 0, 0}, {8, 0, 0}},
      {"c 1 2 (l 1 2 5 5) (c 1 (b 5 5 6 6 7 8))", {1, 2, 0}, {7, 8, 0}},
      {"c", {u, u, u}, {u, u, u}},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Ends ends = EndsOf(*Make(row.curve));
    EXPECT_EQ(ends.start, row.start) << row.curve;
    EXPECT_EQ(ends.end, row.end) << row.curve;
  }
}

TEST(EndPoints, OfArcsAreMovedOntoTheCircle) {
  const Owned arc = Arc(1, 1, 2, 0, 1);
  KurvoclSetCoord(arc.block<KurvoArc>().start, 3.5, 1, 4);
  EXPECT_EQ(EndsOf(*arc).start[2], 0);
  EXPECT_NEAR(EndsOf(*arc).start[0], 1 + 2 * 2.5 / std::hypot(2.5, 4), 1e-15);
  KurvoclSetCoord(arc.block<KurvoArc>().start, 3 + 5e-7, 1, 4);  // on it in the plane: as stored
  EXPECT_EQ(EndsOf(*arc).start, (Point{3 + 5e-7, 1, 4}));
  KurvoclSetCoord(arc.block<KurvoArc>().start, 1, 1, 0);  // at the centre: no direction
  EXPECT_EQ(EndsOf(*arc).start, (Point{1, 1, 0}));
}

TEST(Shape, Table) {
  // clang-format off
  const struct {
    const char* curve;
    int degree, shape, collapsed;
  } rows[] = {
      {"l 0 0 1 1", 1, KURVO_SHAPE_LINE, 0},
      {"l 2 3 2.0000005 3", 1, KURVO_SHAPE_LINE, 1},
      {"a 0 0 1 0 1", 2, KURVO_SHAPE_BENT, 0},
      {"a 0 0 1 0 6.283185307179586", 2, KURVO_SHAPE_BENT, 1},  // a full circle counts
      {"b 0 0", 0, KURVO_SHAPE_STRAIGHT, 1},
      {"b 0 0 5 1", 1, KURVO_SHAPE_STRAIGHT, 0},
      {"b 0 0 1 1 2 2 3 3", 3, KURVO_SHAPE_STRAIGHT, 0},
      {"b 0 0 1 1 -1 -1 3 3", 3, KURVO_SHAPE_BENT, 0},  // back behind the start
      {"b 0 0 2 2 1 1 3 3", 3, KURVO_SHAPE_STRAIGHT, 0},
      {"b 0 0 1 0.1 2 0", 2, KURVO_SHAPE_BENT, 0},
      {"r 0 0 1 1 1 5 2 2 .1", 2, KURVO_SHAPE_STRAIGHT, 0},
      {"B 0 0 1 0 2 0 3 1e-3 | 0 0 0 0 1 1 1 1", 3, KURVO_SHAPE_BENT, 0},
      {"R 4 4 1 4 4 9 4 4 2 | 0 0 0 1 1 1", 2, KURVO_SHAPE_STRAIGHT, 1},
      {"c 1 1 (b 0 0 1 1) (b 1 1 2 2 3 3)", 2, KURVO_SHAPE_STRAIGHT, 0},
      {"c 1 1 (b 0 0 1 1) (b 1 1 2 3)", 1, KURVO_SHAPE_BENT, 0},
      {"c 1 1 (b 0 0 1 1) (l 1 1 2 9)", 1, KURVO_SHAPE_STRAIGHT, 0},  // only Bezier pieces are read
      // Weighted in a composite and nowhere else: (1, 1) and 2 (1, 1) / 2 (1.5, 1.5).
      {"c 1 (r 1 0 1 2 0 1 3 0 .1)", 2, KURVO_SHAPE_BENT, 0},
      {"r 1 0 1 2 0 1 3 0 .1", 2, KURVO_SHAPE_STRAIGHT, 0},
      {"c 1 1 (l 0 0 0 0) (l 5 6 5 6)", 1, KURVO_SHAPE_STRAIGHT, 1},
      {"c 1 1 (l 0 0 0 0) (l 5 6 5 7)", 1, KURVO_SHAPE_STRAIGHT, 0},
      {"c 1 1 1 (l 0 0 1 0) (a 0 0 1 0 1) (B 0 0 1 1 2 0 3 3 | 0 0 0 0 1 1 1 1)", 3, KURVO_SHAPE_STRAIGHT, 0},
      {"c", 0, KURVO_SHAPE_STRAIGHT, 0},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Owned cv = Make(row.curve);
    Globals g;
    Point point;
    EXPECT_EQ(KurvocvDegree(cv.get(), &g), row.degree) << row.curve;
    EXPECT_EQ(KurvocvIsLine(cv.get(), &g), row.shape) << row.curve;
    EXPECT_EQ(KurvocvDegenerate(cv.get(), point, &g), row.collapsed) << row.curve;
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.curve;
    EXPECT_TRUE(row.collapsed || point == (Point{0, 0, 0})) << row.curve;
    EXPECT_TRUE(!row.collapsed || cv->type != CV_SEGCV || point == (Point{5, 6, 0}));
  }
}

using PlaneBox = std::array<double, 4>;  // min x, min y, max x, max y

PlaneBox BoxOf(const Curve& cv) {
  Globals g;
  std::array<double, 6> box;
  box.fill(kUntouched);
  KurvocvBoundBox(&cv, box.data(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return {box[0], box[1], box[3], box[4]};
}

TEST(BoundBox, Table) {
  constexpr double u = kUntouched;
  // clang-format off
  const struct {
    const char* curve;
    PlaneBox box;
  } rows[] = {
      {"l 3 1 0 2", {0, 1, 3, 2}},
      {"a 0 0 1 0 1.5707963267948966", {0, 0, 1, 1}},
      {"a 0 0 1 0 -4.71238898038469", {-1, -1, 1, 1}},
      // up to 0.0001 radians before its start an arc is taken to reach an axis
      {"a 0 0 1 9e-5 1", {std::cos(1 + 9e-5), 0, 1, std::sin(1 + 9e-5)}},
      {"a 0 0 1 1.1e-4 1", {std::cos(1 + 1.1e-4), std::sin(1.1e-4), std::cos(1.1e-4), std::sin(1 + 1.1e-4)}},
      {"a 0 0 1 1 -.99991", {std::cos(1), 0, 1, std::sin(1)}},  // clockwise: before its end
      {"a 0 0 1 1 -.99989", {std::cos(1), std::sin(1.1e-4), std::cos(1.1e-4), std::sin(1)}},
      {"b 0 0 1 5 2 -3", {0, -3, 2, 5}},  // of the control polygon
      {"R 0 0 1 1 5 9 2 -3 1 | 0 0 0 1 1 1", {0, -3, 2, 5}},
      {"c 1 1 (l 0 0 1 1) (b 1 1 2 8)", {0, 0, 2, 8}},
      {"c 1 (l 0 0 1 1)", {u, u, u, u}},
      {"c 1 (c 1 1 (l 9 9 8 8)(l 0 0 1 1))", {u, u, u, u}},
      // one piece has no box of its own, but within another composite
      {"c 1 1 (c 1 (l 9 9 8 8)) (l 0 0 1 1)", {0, 0, 9, 9}},
      {"c 1 1 (c 1 (b 0 0 1 1 2 0))(b 2 0 3 1 4 0)", {0, 0, 4, 1}},
      {"c 1 1 (l 0 0 1 1)(c 1 (c 1 (c 1 (l 9 9 8 8))))", {0, 0, 9, 9}},
      {"c", {u, u, u, u}},
      {"e", {u, u, u, u}},
  };
  // clang-format on
  for (const auto& row : rows)
    for (std::size_t i = 0; i < 4; ++i)
      EXPECT_NEAR(BoxOf(*Make(row.curve))[i], row.box[i], 2e-15) << row.curve;
}

TEST(BoundBox, OfArcsIsTight) {
  Rounds(300, [&](Random& random, int round) {
    const double sweep = random.Uniform(.01, 6.2) * (round % 2 ? 1 : -1);
    const Owned arc = Arc(3, -1, 2, random.Uniform(-3.2, 3.2), sweep);
    PlaneBox seen = {9, 9, -9, -9};
    for (int i = 0; i <= 2000; ++i) {
      const Point p = PointAt(*arc, i / 2000.);
      seen = {std::min(seen[0], p[0]), std::min(seen[1], p[1]), std::max(seen[2], p[0]),
              std::max(seen[3], p[1])};
    }
    for (std::size_t i = 0; i < 4; ++i) ASSERT_NEAR(BoxOf(*arc)[i], seen[i], 1e-5) << sweep;
  });
}

}  // namespace
}  // namespace kurvo_test
