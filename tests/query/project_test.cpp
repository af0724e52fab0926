// Projection of a point onto the carrier of a curve.
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

TEST(POntoCurve, Table) {
  const char* const kTwo = "c 1 1 (b -1 1 1 1)(b -1 -1 1 -1)";
  const char* const kQuarter = "a 0 0 2 0 1.5707963267948966";
  // clang-format off
  const struct {
    const char *name, *curve;
    Point p, want;
    int error = 0;
  } rows[] = {
      {"line, inside", "l 1 1 5 1", {2, 3, 7}, {2, 1}},
      {"line, beyond its end", "l 1 1 5 1", {9, 3}, {9, 1}},
      {"line, before its start", "l 0 0 1 1", {-3, -1}, {-2, -2}},
      {"line without length", "l 1 2 1 2", {9, 3}, {1, 2}, KURVO_WARN_SHORT_VECTOR},
      {"arc", kQuarter, {3, 3, 5}, {M_SQRT2, M_SQRT2}},
      {"arc, far side of its circle", kQuarter, {-3, -3}, {-M_SQRT2, -M_SQRT2}},
      {"arc, clockwise", "a 1 0 2 0 -1", {1, .5}, {1, 2}},
      {"arc, its centre", "a 1 3 2 0 1", {1, 3, 1}, {1, 3}, KURVO_WARN_SHORT_VECTOR},
      {"Bezier", "b 0 0 0 4 4 4 4 0", {2, 9}, {2, 3}},
      {"Bezier, before", "b 0 0 1 0 2 0 3 0", {-3, 4}, {0, 0}},
      {"Bezier, beyond", "b 0 0 1 0 2 0 3 0", {6, -4}, {3, 0}},
      // y = x^2 over [-2, 2], from a point on it with another foot before
      {"Bezier, first foot", "b -2 4 0 -4 2 4", {1.5, 2.25}, {-1, 1}},
      {"rational, unit circle", "r 1 0 1 1 1 .70710678118654752 0 1 1", {3, 3}, {M_SQRT1_2, M_SQRT1_2}},
      {"spline, corner", "B 0 0 3 3 6 0 | 0 0 .5 1 1", {3, 7}, {3, 3}},
      {"spline, beyond", "B 0 0 3 3 6 0 | 0 0 .5 1 1", {9, -4}, {6, 0}},
      {"rational spline", "R 0 0 1 3 3 2 6 0 1 | 0 0 .5 1 1", {6, 3}, {4.5, 1.5}},
      // parameters of all spans agree to six decimals
      {"spline on a tiny domain", "B 0 0 3 3 6 0 | 0 0 1e-8 2e-8 2e-8", {0, 3}, {1.5, 1.5}},
      {"spline, before a jump", "B 0 0 2 0 4 9 6 9 | 0 0 1 1 2 2", {3, 0}, {2, 0}},
      {"composite, nearer piece", kTwo, {.5, -9}, {.5, -1}},
      {"composite, tie goes to the earlier", kTwo, {.5, 0}, {.5, 1}},
      {"composite, other types pass", "c 1 1 1 (l 0 0 4 0)(B 0 0 4 0 | 0 0 1 1)(r 0 9 1 4 9 1)", {2, 0}, {2, 9}},
      {"composite, nested ones pass", "c 1 1 (c 1 (b 0 0 4 0))(b 0 9 4 9)", {2, 0}, {2, 9}},
      {"composite, nothing to take part", "c 1 (l 0 0 4 0)", {2, 3, 4}, {2, 3, 4}},
      {"composite without pieces", "c", {2, 3, 4}, {2, 3, 4}},
      {"empty", "e", {2, 3, 4}, {2, 3, 4}, KURVO_ERR_CURVE},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Owned cv = Make(row.curve);
    Point p = row.p;
    KurvofcPOntoCurve(cv.get(), p, &g);
    EXPECT_NEAR(std::hypot(p[0] - row.want[0], p[1] - row.want[1]), 0, 1e-9) << row.name;
    EXPECT_EQ(p[2], row.want[2]) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
  }
}

TEST(POntoCurve, TakesWhatIsSound) {
  Globals g;
  const Owned highest = MakeFreeForm(CV_BEZIER, Numbers(42, 1.0));
  Point p = {2, 3, 4};
  KurvofcPOntoCurve(highest.get(), p, &g);
  EXPECT_EQ(p, (Point{1, 1, 0}));

  const Owned ends = Make("b 0 0 1 0");
  ends.block<KurvoBezier>().points[0][2] = 5;
  p = {-1, 1, 4};
  KurvofcPOntoCurve(ends.get(), p, &g);
  EXPECT_EQ(p, (Point{0, 0, 0})) << "z is not that of the end";

  // A piece that fails or is no number does not keep another one from winning.
  const Owned cv = Make("c 1 1 1 1 (b 0 0 1 1)(b 0 0 1 1)(b 0 9 4 9)(b 0 0 1 1)");
  const auto& pieces = cv.block<KurvoSegcv>();
  static_cast<KurvoBezier*>(pieces.curves[0].data)->points[1][0] = kNaN;
  static_cast<KurvoBezier*>(pieces.curves[1].data)->degree = 21;
  static_cast<KurvoBezier*>(pieces.curves[3].data)->points = nullptr;
  p = {1, 1, 0};
  KurvofcPOntoCurve(cv.get(), p, &g);
  EXPECT_EQ(p, (Point{1, 9, 0}));
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_CURVE);
  static_cast<KurvoBezier*>(pieces.curves[1].data)->degree = 1;
}

}  // namespace
}  // namespace kurvo_test
