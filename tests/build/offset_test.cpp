// KurvocvOffsetCurve where the distance is below the radius of curvature.
#include "build/offsets.h"

namespace kurvo_test {
namespace {

TEST(OffsetCurve, IsAtTheDistance) {
  const struct {
    const char* name;
    const char* curve;
    double distance;  // below the radius of curvature, to either side
    int32_t type;
    int degree;
  } rows[] = {
      {"quadratic", "b 0 0 4 6 9 0", 1, CV_BEZIER, 3},
      {"cubic", "b 0 0 1 5 8 5 9 0", 1, CV_BEZIER, 4},
      {"S", "b 0 0 5 6 4 -6 9 0", .8, CV_BEZIER, 4},
      {"zero first handle", "b 0 0 0 0 6 5 9 0", .5, CV_BEZIER, 4},
      {"zero last handle", "b 0 0 3 5 9 0 9 0", .5, CV_BEZIER, 4},
      {"both handles zero", "b 0 0 0 0 9 3 9 3", 1, CV_BEZIER, 4},
      {"handle shorter than epsilon", "b 0 0 1e-7 -3e-7 6 5 9 0", .5, CV_BEZIER, 4},
      {"double inner point", "b 0 0 3 4 3 4 7 4 9 0", .5, CV_BEZIER, 5},
      {"degree 8", "b 0 0 1 3 2 5 3 6 4 6 5 6 6 5 7 3 9 0", 1, CV_BEZIER, 9},
      {"degree 38", nullptr, 1, CV_BEZIER, 39},
      {"quarter circle", "r 5 0 1 5 5 .70710678118654752 0 5 1", 2, CV_RBEZIER, 3},
      {"rational cubic", "r 0 0 2 1 6 .5 7 6 .7 9 0 3", 1, CV_RBEZIER, 4},
      {"B-spline", "B 0 0 2 5 5 6 9 4 12 -1 15 0 | 0 0 0 0 .3 .5 1 1 1 1", 1, CV_BEZIER, 4},
      {"unclamped", "B 0 0 4 6 8 6 12 0 | -2 -1 0 1 3 4 5", 1, CV_BEZIER, 3},
      {"closed", "B 4 0 4 4 -4 4 -4 -4 4 -4 4 0 | 0 0 0 1 2 3 4 4 4", 1, CV_BEZIER, 3},
      {"rational B-spline", "R 0 0 1 3 6 .6 7 6 2 9 0 1 | 0 0 0 .4 1 1 1", .6, CV_RBEZIER, 3},
      {"composite", "c .2 .8 (b 0 0 1 5 8 5 9 0)(r 9 0 1 10 -5 .7 15 -6 1)", .5, 0, 0}};
  for (const auto& row : rows) {
    Numbers arch;  // of degree 38
    for (int i = 0; i <= 38; ++i)
      arch.insert(arch.end(), {.3 * i, 6 * std::sin(static_cast<double>(kPiL) * i / 38)});
    const Owned cv = row.curve ? Make(row.curve) : MakeFreeForm(CV_BEZIER, arch);
    for (const double tolerance : {1e-2, 1e-4}) {
      for (const double distance : {row.distance, -row.distance}) {
        SCOPED_TRACE(std::string(row.name) + ' ' + std::to_string(distance));
        const Offset pieces(*cv, distance, tolerance);
        ASSERT_GT(pieces.size(), 0);
        EXPECT_LT(pieces.size(), tolerance < 1e-3 ? 200 : 25);
        ExpectAtDistance(*cv, pieces, distance, tolerance);
        for (int i = 0; row.type != 0 && i < pieces.size(); ++i) {
          EXPECT_EQ(pieces[i].type, row.type);
          EXPECT_EQ(FreeForm(pieces[i]).order, row.degree + 1);
        }
        if (row.type != 0) {
          EXPECT_LE(LargestJump(pieces), 1e-9);
        }
        const Offset mirrored(*cv, -distance, tolerance, {0, 0, -3});  // its length has no effect
        ASSERT_EQ(mirrored.size(), pieces.size());
        EXPECT_EQ(ControlPoints(mirrored[0]), ControlPoints(pieces[0]));
      }
    }
  }
}

// Wavy, but without points where the curve bends more sharply than the distance.
TEST(OffsetCurve, OfRandomCurvesIsAtTheDistance) {
  Random random;
  SCOPED_TRACE(random.Trace());
  int tested = 0;
  for (int round = 0; round < 60; ++round) {
    const int degree = 2 + round % 4;
    const bool rational = round % 8 > 3;
    Numbers points;
    for (int i = 0; i <= degree; ++i) {
      points.insert(points.end(), {4. * i + random.Uniform(-1, 1), random.Uniform(-3, 3)});
      if (rational) points.push_back(random.Uniform(.5, 2));
    }
    const Owned cv = MakeFreeForm(rational ? CV_RBEZIER : CV_BEZIER, points);
    const double distance = random.Uniform(.02, .4), tolerance = random.Uniform(1e-4, 1e-2);
    SCOPED_TRACE(round);
    Polyline source;
    AddSamples(*cv, kChords, source);
    if (SharpestBend(source) < 1.05 * distance) continue;
    ++tested;
    ExpectAtDistance(*cv, Offset(*cv, distance, tolerance), distance, tolerance);
    ExpectAtDistance(*cv, Offset(*cv, -distance, tolerance), -distance, tolerance);
  }
  EXPECT_GT(tested, 40);
}

// What the exact kinds become; empty for nothing.
TEST(OffsetCurve, OfLinesAndArcsIsExact) {
  const Point left = kUp, right = kDown, twice{0, 0, 2}, tilted{5e-7, -5e-7, 1};
  const double pi = static_cast<double>(kPiL);
  const struct {
    Owned curve;
    Point normal;
    double distance;
    Owned expected;
  } rows[] = {{Make("l 0 0 10 0"), left, 2, Make("l 0 2 10 2")},
              {Make("l 0 0 10 0"), right, 2, Make("l 0 -2 10 -2")},
              {Make("l 0 0 10 0"), left, -2, Make("l 0 -2 10 -2")},
              {Make("l 1 1 4 5"), twice, 5, Make("l -7 7 -4 11")},
              {Make("l 0 0 10 0"), tilted, 2, Make("l 0 2 10 2")},
              {Make("l 3 3 3 3"), left, 2, Owned()},
              {Arc(1, 2, 5, .3, 2), left, 2, Arc(1, 2, 3, .3, 2)},
              {Arc(1, 2, 5, .3, 2), left, -2, Arc(1, 2, 7, .3, 2)},
              {Arc(1, 2, 5, .3, 2), right, 2, Arc(1, 2, 7, .3, 2)},
              {Arc(1, 2, 5, .3, -2), left, 2, Arc(1, 2, 7, .3, -2)},
              {Arc(1, 2, 5, .3, -2), right, 2, Arc(1, 2, 3, .3, -2)},
              {Arc(1, 2, 5, .3, -2), twice, 2, Arc(1, 2, 7, .3, -2)},
              {Arc(1, 2, 5, 0, 2 * pi), left, 4.5, Arc(1, 2, .5, 0, 2 * pi)},
              {Arc(1, 2, 5, .3, 2), left, 5, Owned()},
              {Arc(1, 2, 5, .3, 2), left, 6, Owned()},
              {Arc(1, 2, 5, .3, -2), left, -6, Owned()},
              {Arc(1, 2, 0, .3, 2), left, -1, Owned()},
              {Make("b 3 3"), left, 1, Owned()},
              {Make("b 3 3 3 3 3.0000005 3"), left, 1, Owned()},
              {Make("b 0 0 3 4"), left, 5, Make("b -4 3 -2.5 5 -1 7")},
              {Make("b 0 0 1 0 2 0 3 0"), left, 5, Make("b 0 5 .75 5 1.5 5 2.25 5 3 5")},
              {Make("B 0 0 3 4 | 0 0 1 1"), right, 5, Make("b 4 -3 5.5 -1 7 1")},
              {Make("r 0 0 2 3 4 2"), left, 5, Make("r -4 3 2 -2.5 5 2 -1 7 2")}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    const Offset pieces(*row.curve, row.distance, 0, row.normal);
    ASSERT_EQ(pieces.size(), row.expected->data ? 1 : 0);
    if (pieces.size() == 0) continue;
    ASSERT_EQ(pieces[0].type, row.expected->type);
    const Globals g;
    if (row.expected->type == CV_LINE || row.expected->type == CV_ARC) {
      const auto* got = static_cast<const double*>(pieces[0].data);
      const auto* want = static_cast<const double*>(row.expected->data);
      const int size = row.expected->type == CV_LINE ? 6 : 13;
      for (int i = 0; i < size; ++i) EXPECT_NEAR(got[i], want[i], 1e-14 * 16) << i;
    } else {
      EXPECT_LE(LargestGap(ControlPoints(pieces[0]), ControlPoints(*row.expected)), 1e-14 * 16);
    }
  }
}

// The leg between the repeated points has no direction of its own: it goes up, as the one behind
// it.
TEST(OffsetCurve, GivesShortLegsTheDirectionFurtherIn) {
  const Owned curve = Make("b 0 0 5 0 5 0 5 0 5 6 5 12");
  const Offset pieces(*curve, 1, 1e9);
  ASSERT_EQ(pieces.size(), 1);
  const Owned expected = Make("b 0 1 4.16666666666666667 1 4 1 4 0 4 2 4 7 4 12");
  EXPECT_LE(LargestGap(ControlPoints(pieces[0]), ControlPoints(*expected)), 1e-14 * 16);
}

constexpr double kCrossed = 75e-12;  // coordinates of the moved legs are up to 75

// With a tolerance that takes anything, the one piece shows the moved polygon: its inner points are
// where the moved legs intersect as unbounded lines, at most 4 times the distance away.
TEST(OffsetCurve, MovesLegsOfThePolygonToWhereTheyCross) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 300; ++round) {
    Numbers q = RandomPoints(random, 4, false);
    for (int i = 0; i < 4; ++i) q[static_cast<std::size_t>(2 * i)] += 15 * i;  // no sharp turns
    const Owned cubic = MakeFreeForm(CV_BEZIER, q);
    const double d = random.Uniform(-5, 5);
    Owned legs[4];
    Numbers raised;
    for (int i = 0; i <= 4; ++i)
      for (int c = 0; c < 2; ++c) {
        const double* p = FreeForm(*cubic).points + c;
        raised.push_back(i == 0   ? p[0]
                         : i == 4 ? p[9]
                                  : i / 4. * p[3 * i - 3] + (1 - i / 4.) * p[3 * i]);
      }
    Globals g;
    for (std::size_t i = 0; i < 4; ++i) {
      const double *p = &raised[2 * i], dx = p[2] - p[0], dy = p[3] - p[1], l = std::hypot(dx, dy);
      legs[i] = Make("l 0 0 0 0");
      auto& line = legs[i].block<KurvoLine>();
      KurvoclSetCoord(line.start, p[0] - d * dy / l, p[1] + d * dx / l, 0);
      KurvoclSetCoord(line.end, p[2] - d * dy / l, p[3] + d * dx / l, 0);
    }
    const Offset pieces(*cubic, d, 1e9);
    ASSERT_EQ(pieces.size(), 1);
    for (int i = 1; i < 4; ++i) {
      CvParam pa, pb;
      Point want;
      ASSERT_EQ(KurvocrCurveCurve(legs[i - 1].get(), legs[i].get(), &pa, &pb, 0, &g), KURVO_FOUND);
      KurvocvPosition(legs[i - 1].get(), pa.values[0], want, &g);
      KurvocrFreeCvParam(&pa);
      KurvocrFreeCvParam(&pb);
      const double *got = FreeForm(pieces[0]).points + 3 * i, *from = &raised[2 * std::size_t(i)];
      if (std::hypot(want[0] - from[0], want[1] - from[1]) > 3.8 * std::fabs(d)) {
        EXPECT_LE(std::hypot(got[0] - from[0], got[1] - from[1]), 4 * std::fabs(d));
        continue;
      }
      EXPECT_LE(std::hypot(got[0] - want[0], got[1] - want[1]), kCrossed) << round << ' ' << i;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
