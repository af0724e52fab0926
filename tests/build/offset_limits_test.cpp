// KurvocvOffsetCurve where there is no true offset: cusps, folds, no tolerance, bad input.
#include "build/offsets.h"

namespace kurvo_test {
namespace {

// Cusps and folds end at some depth, and what lies beyond the centre of curvature is no further
// from the curve than the distance.
TEST(OffsetCurve, EndsAtCuspsAndFolds) {
  const struct {
    const char* name;
    const char* curve;
    double distance;
    double jump;  // to the other side of a cusp
    int most_pieces;
  } rows[] = {{"cusp", "b 0 0 10 10 0 10 10 0", 1, 2, 20},
              {"cusp, other side", "b 0 0 10 10 0 10 10 0", -1, 2, 20},
              {"cusp off the middle", "b 0 0 10 10 0 10 10 .1", 1, 0, 40},
              {"cusp off the middle, other side", "b 0 0 10 10 0 10 10 .1", -1, 0, 40},
              {"round cusp", "b 0 0 10 10 0 10 10 .01", -1, 0, 40},
              {"sharper", "b 0 0 10 10 0 10 10 .0001", -1, 0, 60},
              {"loop", "b 0 0 10 10 -4 10 6 0", 3, 0, 80},
              {"beyond the radius", "b 0 0 1 5 8 5 9 0", -6, 0, 80},
              {"straight fold", "b 0 0 10 0 -5 0 5 0", 1, 0, 60},
              {"fold in the middle", "b 0 0 10 0 0 0", 1, 2, 20},
              {"fold at the end", "b 0 0 10 0 9 0", 1, 0, 40},
              {"hairpin", "b 0 0 10 0 0 1e-5", 1, 0, 80}};
  constexpr double kTolerance = 1e-3;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Owned cv = Make(row.curve);
    const Offset pieces(*cv, row.distance, kTolerance);
    EXPECT_GT(pieces.size(), 1);
    EXPECT_LE(pieces.size(), row.most_pieces);
    EXPECT_NEAR(LargestJump(pieces), row.jump, 1e-6);
    Polyline source;
    AddSamples(*cv, kChords, source);
    for (const PlanePoint& p : Samples(pieces))
      ASSERT_LE(Nearest(source, p), std::fabs(row.distance) + 2 * kTolerance);
  }
}

// Whatever the polygon: the number of pieces is bounded, and none lies far off.
TEST(OffsetCurve, OfWildCurvesStaysNear) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    const int degree = 1 + round % 9;
    Numbers points = RandomPoints(random, degree + 1, false);
    for (std::size_t i = 2; i < points.size(); ++i)  // repeated points, legs that turn back
      if (random.Uniform(0, 1) < .4) points[i] = points[i - 2] + random.Uniform(0, 1e-6);
    const Owned cv = MakeFreeForm(CV_BEZIER, points);
    const double d = random.Uniform(-3, 3);
    const Offset pieces(*cv, d, 1e-3);
    EXPECT_LE(pieces.size(), 800);
    Polyline source;
    AddSamples(*cv, kChords, source);
    for (int i = 0; i < pieces.size(); ++i)
      for (const double s : {0., .25, .5, .75, 1.})
        ASSERT_LE(Nearest(source, Rounded(ExactPoint(pieces[i], s))), 1.16 * std::fabs(d)) << i;
  }
}

TEST(OffsetCurve, OfNoToleranceEnds) {
  const Owned arch = Make("b 0 0 1 5 8 5 9 0");
  const Offset pieces(*arch, 1, 0);
  EXPECT_EQ(pieces.size(), 4096);
  EXPECT_LE(LargestJump(pieces), 1e-9);
  ExpectAtDistance(*arch, pieces, 1, 1e-6);

  Random random;  // every span gets its share
  constexpr int kSpans = 100;
  Numbers knots = {0, 0, 0};
  for (int i = 0; i <= kSpans; ++i) knots.push_back(i);
  knots.insert(knots.end(), 3, kSpans);
  const Owned spline = MakeFreeForm(CV_BSPLINE, RandomPoints(random, kSpans + 3, false), knots);
  const Offset all(*spline, .1, 0);
  EXPECT_GT(all.size(), 32 * kSpans);
  EXPECT_LE(all.size(), 64 * kSpans);
  EXPECT_LE(Distance(ExactPoint(all[all.size() - 1], 1), ExactPoint(*spline, kSpans)), .1 + 1e-9);
}

// Composites end at the first piece that is no Bezier curve, and keep what was made before it.
TEST(OffsetCurve, OfCompositesEndsAtOtherTypes) {
  const struct {
    const char* curve;
    int pieces;
  } rows[] = {{"c .5 .5 (b 0 0 9 0)(r 9 0 1 9 9 2)", 2},
              {"c .5 .3 .2 (b 0 0 9 0)(l 9 0 9 9)(b 9 9 0 9)", 1},
              {"c .5 .3 .2 (b 0 0 9 0)(r 9 0 1 9 9 1)(a 8 9 1 0 1)", 2},
              {"c 1 (B 0 0 9 0 | 0 0 1 1)", 0},
              {"c .5 .5 (c 1 (b 0 0 9 0))(b 9 0 9 9)", 0},
              {"c .5 .5 (b 0 0 9 0)(e)", 1},
              {"c", 0}};
  for (const auto& row : rows) {
    const Owned cv = Make(row.curve);
    Globals g;
    Cvseq pieces{7, nullptr};
    KurvocvOffsetCurve(cv.get(), kUp, 1, 1e-3, &pieces, &g);
    EXPECT_EQ(pieces.count, row.pieces) << row.curve;
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.curve;
    KurvocvFreeCvseq(&pieces);
  }
}

}  // namespace
}  // namespace kurvo_test
