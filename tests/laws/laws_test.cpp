// Laws that hold for one curve: what is done and undone, or done in two ways, comes out the same.
// KURVO_TEST_CASES sets the number of cases of each.
#include <string>

#include "laws/cases.h"
#include "relate/brute_force.h"

using namespace kurvo_test;

namespace {

constexpr int kCases = 400;
constexpr int kMaxDegree = 6;

// What rounding may amount to for coordinates of a curve of degree n.
double Rounding(const Curve& cv) { return 16 * Size(cv) * std::pow(3.0, Degree(cv)) * kUlp; }

// Calls law(curve, random) for random curves of all types.
template <class Law>
void ForRandomCurves(Law&& law) {
  Rounds(Cases(kCases), [&](Random& random, int i) {
    law(RandomCurve(random, kAllTypes[i % 7], kMaxDegree), random);
  });
}

double Gap(const Point& a, const Point& b) { return std::hypot(a[0] - b[0], a[1] - b[1]); }

// An arc without a sign has one once it is reversed.
TEST(Laws, ReversedTwiceIsTheSame) {
  ForRandomCurves([](const Owned& cv, Random& random) {
    Owned reversed = Copy(*cv);
    Globals g;
    EXPECT_EQ(KurvocvChgOrder(reversed.get(), &g), 0);
    const double s = RandomCut(random, 0, 1);
    EXPECT_LE(Gap(PointAt(*reversed, 1 - s), PointAt(*cv, s)), Rounding(*cv));
    const Owned once = Copy(*reversed);
    for (int i = 0; i < 2; ++i) EXPECT_EQ(KurvocvChgOrder(reversed.get(), &g), 0);
    const bool knots = IsSpline(cv->type) || cv->type == CV_SEGCV;
    EXPECT_TRUE(IsCurve(*reversed, *once, knots ? 64 * kUlp : 0));
    EXPECT_EQ(KurvoErrGet(&g), 0);
  });
}

// The types that hold every curve of a type, and from which there is a way back to it.
TEST(Laws, ConvertedThereAndBackIsTheSame) {
  const std::pair<int32_t, std::vector<int32_t>> kWays[] = {
      {CV_LINE, {CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE, CV_SEGCV}},
      {CV_ARC, {CV_RBEZIER, CV_RBSPLINE, CV_SEGCV}},
      {CV_BEZIER, {CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE}},
      {CV_RBEZIER, {CV_RBSPLINE, CV_SEGCV}},
      {CV_BSPLINE, {CV_RBSPLINE, CV_SEGCV}},
      {CV_RBSPLINE, {CV_SEGCV}}};
  ForRandomCurves([&](const Owned& cv, Random& random) {
    for (const auto& [type, ways] : kWays) {
      if (type != cv->type) continue;
      // A piece of degree 0 is a point, which is a line too, and B-splines that jump do not join.
      if (Degree(*cv) == 0) continue;
      for (const int32_t way : ways) {
        SCOPED_TRACE("type " + std::to_string(type) + " by " + std::to_string(way));
        Globals g;
        Owned there(way), back(type);
        ASSERT_EQ(KurvocvConvert(cv.get(), there.get(), &g), uint32_t{KURVO_CONVERTED});
        ASSERT_EQ(KurvocvConvert(there.get(), back.get(), &g), uint32_t{KURVO_CONVERTED});
        EXPECT_EQ(back->type, type);
        const double s = RandomCut(random, 0, 1);
        EXPECT_LE(Gap(PointAt(*back, s), PointAt(*cv, s)), Rounding(*cv) * WeightRatio(*cv));
        EXPECT_EQ(KurvoErrGet(&g), 0);
      }
    }
  });
}

TEST(Laws, TransformsCommuteWithEvaluation) {
  ForRandomCurves([](const Owned& cv, Random& random) {
    const double s = RandomCut(random, 0, 1), angle = random.Uniform(-7, 7),
                 factor = random.Uniform(.1, 5), tilt = random.Uniform(0, 6);
    const Point by = random.Planar(20), centre = random.Planar(20), axis = {0, 0, 1},
                normal = {random.Uniform(.1, 3) * std::cos(tilt), std::sin(tilt), 0},
                all = {0, 0, 0}, unit = {std::cos(tilt), std::sin(tilt), 0}, p = PointAt(*cv, s);
    Globals g;
    const auto expect_at = [&](double at, const char* what, auto&& curve_by,
                               const Point& expected) {
      Owned moved = Copy(*cv);
      curve_by(moved.get());
      const double bound = 64 * (Size(*cv) + 80) * std::pow(3., Degree(*cv)) * kUlp;
      EXPECT_LE(Gap(PointAt(*moved, at), expected), bound * WeightRatio(*cv)) << what;
    };
    const auto expect = [&](const char* what, auto&& curve_by, const Point& expected) {
      expect_at(s, what, curve_by, expected);
    };
    expect("move", [&](Curve* c) { KurvocvMove(c, by, &g); }, {p[0] + by[0], p[1] + by[1], 0});
    Point q;
    KurvoclRotatePoint(centre, axis, angle, p, q);
    expect(
        "rotate", [&](Curve* c) { KurvocvRotate(c, centre, axis, angle, &g); }, q);
    KurvoclMirrorPoint(centre, normal, p, q, &g);
    expect(
        "mirror", [&](Curve* c) { KurvocvMirror(c, centre, normal, &g); }, q);
    KurvoclScalePoint(centre, all, factor, p, q, &g);
    expect(
        "scale", [&](Curve* c) { KurvocvScale(c, centre, all, factor, &g); }, q);
    KurvoclScalePoint(centre, unit, factor, p, q, &g);
    if (cv->type != CV_ARC && cv->type != CV_SEGCV)  // arcs cannot follow
      expect(
          "stretch", [&](Curve* c) { KurvocvScale(c, centre, unit, factor, &g); }, q);
    if (cv->type != CV_ARC && cv->type != CV_SEGCV) {  // some ends that do not move
      const Point a = PointAt(*cv, 0), b = PointAt(*cv, 1);
      const auto start = [&](Curve* c) { KurvocvMvStartPoint(c, by, &g); };
      expect_at(0, "start", start, {a[0] + by[0], a[1] + by[1], 0});
      const auto end = [&](Curve* c) { KurvocvMvEndPoint(c, by, &g); };
      expect_at(1, "end", end, {b[0] + by[0], b[1] + by[1], 0});
    }
    EXPECT_EQ(KurvoErrGet(&g), 0);
  });
}

Chain OffsetOf(const Curve& cv, double distance, double tolerance) {
  Globals g;
  Chain chain;
  const Coord up = {0, 0, 1};
  KurvocvOffsetCurve(&cv, up, distance, tolerance, chain.get(), &g);
  EXPECT_TRUE(KurvoOk(&g));
  EXPECT_GT(chain.count(), 0);
  return chain;
}

// Right within twice the tolerance each way.
TEST(Laws, OffsetThereAndBackIsTheSame) {
  Rounds(std::max(1, Cases(kCases) / 4), [](Random& random, int i) {
    const int32_t type = kAllTypes[i % 6];
    const bool exact = type == CV_LINE || type == CV_ARC;
    const Owned cv = GentleCurve(random, type);
    const double distance = Chance(random, .5) ? -kGentle : kGentle;
    const double tolerance = std::pow(10., random.Uniform(-6, -2));
    const WideCurve source = Pieces(*cv);
    const Chain there = OffsetOf(*cv, distance, tolerance);
    for (const Curve& piece : there) {
      const Chain back = OffsetOf(piece, -distance, tolerance);
      for (const double s : {0., .3, .5, 1.}) {
        const Point p = PointAt(back[back.count() / 2], s);
        EXPECT_LE(GapFrom(source, {p[0], p[1], 0, 0}), exact ? 2e-12 : 4 * tolerance);
        if (exact) {
          EXPECT_LE(Gap(p, PointAt(*cv, s)), 2e-12);
        }
      }
    }
    EXPECT_NEAR(Gap(PointAt(there[0], 0), PointAt(*cv, 0)), kGentle, 1e-9);
    EXPECT_NEAR(Gap(PointAt(there[there.count() - 1], 1), PointAt(*cv, 1)), kGentle, 1e-9);
  });
}

}  // namespace
