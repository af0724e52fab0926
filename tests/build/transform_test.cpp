// Translation, rotation, mirroring and scaling of curves in place. That they commute with
// evaluation is a law of tests/laws; what they do to points is tested with them.
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

}  // namespace
}  // namespace kurvo_test
