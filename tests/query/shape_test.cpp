// End points, degree, straightness, collapse, boxes and lengths.
#include "support/generator.h"
#include "support/oracle.h"

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

// ---- lengths

double LengthOf(const Curve& cv, double t0, double t1) {
  Globals g;
  double length = -77;
  KurvocvCurveLen(&cv, t0, t1, &length, &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return length;
}

TEST(CurveLen, Table) {
  constexpr double kHuge = 1e300;
  // clang-format off
  const struct {
    const char *name, *curve;
    double t0, t1, length;
  } rows[] = {
      {"line", "l 1 1 4 5", 0, 1, 5},
      {"line, part", "l 1 1 4 5", .2, .6, 2},
      {"line, backwards", "l 1 1 4 5", 1, 0, -5},
      {"line, beyond its ends", "l 1 1 4 5", -1, 3, 20},
      {"within epsilon", "l 0 0 1e6 0", .5, .5 + 9e-7, 0},
      {"just beyond epsilon", "l 0 0 1e6 0", .5, .5 + 1.1e-6, 1.1},
      {"within epsilon, backwards", "b 0 0 1e6 0", .5 + 9e-7, .5, 0},
      {"arc", "a 1 2 2 0 1.5", 0, 1, 3},
      {"arc of three quarters, part", "a 1 2 2 1 4.5", .25, .5, 2.25},
      {"clockwise arc, part", "a 1 2 2 0 -1.5", .25, .5, .75},
      {"clockwise arc, backwards", "a 1 2 2 0 -1.5", 1, 0, -3},
      {"full circle, whose sweep is 0", "a 1 2 2 0 6.283185307179586476925", 0, 1, 0},
      {"degree 0", "b 1 2", 0, 1, 0},
      {"straight Bezier, evenly spaced", "b 0 0 3 4 6 8 9 12", 0, 1, 15},
      {"straight Bezier, part", "b 0 0 3 4 6 8 9 12", .2, .6, 6},
      {"straight Bezier, beyond its end", "b 0 0 3 4 6 8 9 12", .5, 2, 22.5},
      {"straight Bezier, the whole to six decimals", "b 0 0 3 4 6 8 9 12", 4e-7, 1 - 4e-7, 15},
      {"straight rational Bezier", "r 0 0 2 3 4 5 6 8 2", 0, 1, 10},
      {"control point of weight 0", "r 0 0 1 5 7 0 2 0 1", 0, 1, 2},
      {"rational Bezier, half by symmetry", "r 0 0 2 3 4 5 6 8 2", .5, 1, 5},
      {"B-spline over its own domain", "B 0 0 3 4 | 20 20 50 50", 20, 50, 5},
      {"B-spline, part", "B 0 0 3 4 | 20 20 50 50", 44, 32, -2},
      {"B-spline of many spans, part", "B 0 0 1 0 2 0 3 0 4 0 | 1 1 2 3 4 5 5", 1.5, 4.25, 2.75},
      {"B-spline, within one span", "B 0 0 1 0 2 0 3 0 4 0 | 1 1 2 3 4 5 5", 2.25, 2.75, .5},
      {"B-spline, beyond both ends", "B 0 0 1 0 2 0 3 0 4 0 | 1 1 2 3 4 5 5", 0, 7, 7},
      {"B-spline with knots of full multiplicity", "B 0 0 1 0 5 0 6 0 | 0 0 1 1 2 2", 0, 2, 2},
      {"B-spline without a span", "B 0 0 1 0 | 3 3 3 3", 3, 4, 0},
      {"unclamped quadratic, straight", "B 0 0 1 0 2 0 3 0 | 0 1 2 3 4 5 6", 2, 4, 2},
      {"composite of lines", "c 2 3 (l 0 0 2 0)(l 2 0 2 6)", 0, 5, 8},
      {"composite of lines, part", "c 2 3 (l 0 0 2 0)(l 2 0 2 6)", 1, 3, 3},
      {"composite of lines, beyond its ends", "c 2 3 (l 0 0 2 0)(l 2 0 2 6)", -1, 6, 11},
      {"composite of arcs", "c 1 1 (a 0 0 1 0 2)(a 0 0 1 2 -2)", .5, 1.5, 2},
      {"composite of Beziers", "c .5 .5 (b 0 0 3 4)(b 3 4 3 8 3 12)", 0, 1, 13},
      {"closed composite, part", "c .5 .5 (b 0 0 3 0 6 0)(l 6 0 0 0)", .25, 1, 9},
      {"composite of other kinds", "c 1 1 1 (b 0 0 3 4)(B 3 4 6 8 | 0 0 1 1)(c 1 (l 6 8 9 12))", 0, 3, 15},
      {"piece without a width", "c 1 0 1 (l 0 0 1 0)(l 1 0 1 5)(l 1 5 2 5)", 0, 2, 7},
      {"piece without a width, before the stretch", "c 1 0 1 (l 0 0 1 0)(l 1 0 1 5)(l 1 5 2 5)", 1.5, 2, .5},
      {"composite without pieces", "c", 0, 1, 0},
      {"not finite in between", "b 0 0 1e200 1e200 0 0", 0, 1, kHuge},
  };
  // clang-format on
  for (const auto& row : rows) {
    const double length = LengthOf(*Make(row.curve), row.t0, row.t1);
    EXPECT_TRUE(row.length == kHuge ||
                2e-9 * std::fabs(row.length) + 1e-14 >= std::fabs(length - row.length))
        << row.name << ": " << length;
  }
}

// ---- The rule, in long double and by recursion ----

using Polygon = std::vector<WidePoint>;

// The pieces of a curve after `depth` halvings.
std::vector<Polygon> Halved(const Polygon& polygon, int depth) {
  if (depth == 0) return {polygon};
  Polygon left, right = polygon;
  for (std::size_t n = polygon.size(); n > 0; --n) {
    left.push_back(right[0]);
    for (std::size_t i = 0; i + 1 < n; ++i) right[i] = Between(right[i], right[i + 1], .5L);
  }
  auto pieces = Halved(left, depth - 1);
  for (auto& piece : Halved(right, depth - 1)) pieces.push_back(std::move(piece));
  return pieces;
}

Wide PolygonLength(const Polygon& polygon, int depth) {
  Wide sum = 0;
  for (const Polygon& piece : Halved(polygon, depth))
    for (std::size_t i = 1; i < piece.size(); ++i) {
      const auto &a = piece[i - 1], &b = piece[i];
      sum += Gap({a.x / a.w, a.y / a.w}, {b.x / b.w, b.y / b.w});
    }
  return sum;
}

Wide ByRule(const Polygon& polygon) {
  Wide length = PolygonLength(polygon, 0);
  for (int pass = 1; pass <= 10; ++pass) {
    const Wide before = length;
    length = PolygonLength(polygon, pass);
    if (std::fabs(length - before) <= .001L) break;
  }
  return length;
}

void Scale(const Curve& cv, double factor) {
  ForEachPoint(
      cv, [=](double* p) { p[0] *= factor, p[1] *= factor; }, [](double) {});
}

// Small and large curves: some settle at once, some not in ten passes.
TEST(CurveLen, FollowsItsRule) {
  Rounds(60, [&](Random& random, int round) {
    const bool rational = round % 2 == 1;
    const int count = round < 4 ? 31 : RandomInt(random, 2, 8);
    const double scale = round < 4 ? 10 : std::pow(10, random.Uniform(-4, 5));
    const Owned alone = RandomBezier(random, rational, count - 1);
    Scale(*alone, scale);
    const Polygon polygon = Oracle(*alone).Parts()[0].points;
    const Wide want = ByRule(polygon);
    EXPECT_NEAR(static_cast<double>(LengthOf(*alone, 0, 1) / want), 1, 1e-12) << round;
    if (scale > 1e3) return;  // ten passes on 16 parts take the recursion too long

    std::vector<Owned> pieces;
    pieces.push_back(Copy(*alone));
    const double member = LengthOf(*MakeComposite({1}, std::move(pieces)), 0, 1);
    Wide sum = 0;
    for (const Polygon& part : Halved(polygon, 4)) sum += ByRule(part);
    EXPECT_NEAR(static_cast<double>(member / sum), 1, 1e-12) << round;

    Owned span(rational ? CV_RBSPLINE : CV_BSPLINE);
    Globals g;
    ASSERT_EQ(KurvocvConvert(alone.get(), span.get(), &g), KURVO_CONVERTED);
    for (int i = 0; i < 2 * count; ++i) FreeForm(*span).knots[i] = i < count ? 3 : 5;
    EXPECT_EQ(LengthOf(*span, 3, 5), member) << round;
  });
}

}  // namespace
}  // namespace kurvo_test
