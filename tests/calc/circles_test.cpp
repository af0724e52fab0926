// Points on circles and arcs, and circles through two points.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "support/basics.h"

namespace kurvo_test {
namespace {

TEST(RPPcirc, PassesThroughBothPointsOnTheAskedSide) {
  Rounds(2000, [&](Random& random, int) {
    Globals g;
    const Point p1 = random.Spatial(10);
    const Point p2 = random.Spatial(10);
    const double r = KurvoclDistPoint(p1, p2) * random.Uniform(.51, 10);
    for (const int side : {0, 1, -1}) {
      Point c;
      EXPECT_EQ(KurvofcRPPcirc(r, p1, p2, c, side, &g), 1);
      EXPECT_NEAR(KurvoclDistPoint(c, p1), r, 100 * kUlp * r + 1e-14);
      EXPECT_NEAR(KurvoclDistPoint(c, p2), r, 100 * kUlp * r + 1e-14);
      EXPECT_EQ(c[2], 0);
      const double left = (p2[0] - p1[0]) * (c[1] - p1[1]) - (p2[1] - p1[1]) * (c[0] - p1[0]);
      EXPECT_EQ(left > 0, side == 0);
    }
    EXPECT_EQ(KurvoErrGet(&g), 0);
  });
}

TEST(RPPcirc, Table) {
  constexpr double kHuge = 0x1p52;  // numbers from here on are whole
  const struct {
    const char* name;
    double r;
    Point p1, p2;
    int side;
    Point centre;
    int error;
  } rows[] = {
      {"left", 5, {0, 0, 0}, {6, 0, 0}, 0, {3, 4, 0}, 0},
      {"right", 5, {0, 0, 0}, {6, 0, 0}, 1, {3, -4, 0}, 0},
      {"diameter", 3, {0, 0, 0}, {6, 0, 0}, 0, {3, 0, 0}, 0},
      {"heights do not matter", 5, {0, 0, 8}, {6, 0, -8}, 0, {3, 4, 0}, 0},
      {"short", 5, {}, {0x1p-19, 0, 0}, 0, {0x1p-20, 0, 0}, KURVO_WARN_SHORT_VECTOR},
      {"rounding", 1.6, {kHuge + 4, 0, 0}, {kHuge + 7, 0, 0}, 0, {kHuge + 6, 0, 0}, 0},
  };
  for (const auto& row : rows) {
    Globals g;
    Point centre;
    EXPECT_EQ(KurvofcRPPcirc(row.r, row.p1, row.p2, centre, row.side, &g), 1) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
    EXPECT_EQ(centre, row.centre) << row.name;
  }
}

// An arc from what it should be: its own angles, in long double.
struct PlannedArc {
  long double radius, cx, cy, start, sweep;  // start a polar angle, sweep > 0
  int sign;                                  // +1 counter-clockwise, -1 clockwise

  // The point `angle` radians after the start, in the direction of the arc.
  Point At(long double angle) const {
    const long double polar = start + sign * angle;
    return {static_cast<double>(cx + radius * std::cos(polar)),
            static_cast<double>(cy + radius * std::sin(polar)), 0};
  }
  KurvoArc Record() const {
    KurvoArc arc = {static_cast<double>(radius), {}, {0, 0, 1.0 * sign}, {}, {}};
    arc.centre[0] = static_cast<double>(cx);
    arc.centre[1] = static_cast<double>(cy);
    std::copy_n(At(0).data(), 3, arc.start);
    std::copy_n(At(sweep).data(), 3, arc.end);
    return arc;
  }
  // How far t may stray for points rounded to double: their angles by |coordinates| / radius ulps,
  // the sweep likewise.
  double Bound(double t) const {
    const long double size = std::fabs(cx) + std::fabs(cy) + radius;
    return static_cast<double>((size / radius + 8) / sweep) * 8 * kUlp * (1 + std::fabs(t));
  }
};

PlannedArc RandomArc(Random& random, double least_sweep) {
  const double radius = std::pow(10.0, random.Uniform(-1, 4));
  const Point centre = random.Planar(10 * radius);
  const double start = random.Uniform(-M_PI, M_PI);
  const double sweep = random.Uniform(least_sweep, 2 * M_PI - .001);
  const int sign = random.Uniform(-1, 1) < 0 ? -1 : 1;
  return {L(radius), L(centre[0]), L(centre[1]), L(start), L(sweep), sign};
}

// Of its own points, ends moved by an ulp or two too; outside its sweep from the nearer end.
TEST(OnArc, FindsTheParameter) {
  Rounds(5000, [&](Random& random, int) {
    Globals g;
    const PlannedArc planned = RandomArc(random, .01);
    const KurvoArc arc = planned.Record();
    const double want = random.Uniform(0, 1);
    double t;
    const auto expect = [&](const Point& p, int on, double parameter) {
      EXPECT_EQ(KurvoclOnArc(p, &arc, &t, &g), on);
      EXPECT_NEAR(t, parameter, planned.Bound(t)) << planned.sign;
    };
    expect(planned.At(L(want) * planned.sweep), 1, want);
    expect({arc.start[0], arc.start[1], 0}, 1, 0);
    Point end = {arc.end[0], arc.end[1], 0};
    expect(end, 1, 1);
    for (std::size_t k = 0; k < 2; ++k) end[k] += random.Uniform(-3, 3) * kUlp * std::fabs(end[k]);
    expect(end, 1, 1);

    const long double rest = 2 * kPiL - planned.sweep;
    const long double past = L(random.Uniform(0, 1)) * (rest - 2e-4L) + 1e-4L, before = rest - past;
    // Clockwise arcs are swept from their end, so there the comparison runs the other way round.
    const bool ccw = planned.sign > 0;
    const bool wraps = ccw ? planned.sweep + past > before : planned.sweep + before > past;
    const long double angle = ccw == wraps ? -before : planned.sweep + past;
    expect(planned.At(planned.sweep + past), 0, static_cast<double>(angle / planned.sweep));
    EXPECT_EQ(KurvoErrGet(&g), 0);
  });
}

TEST(OnArc, HasAMarginOfAMillionthRadianBeyondEachEnd) {
  for (const int sign : {1, -1}) {
    for (const long double sweep : {1.0L, 4.0L, 6.0L}) {
      Globals g;
      const PlannedArc planned = {10, 3, 4, 2.5L, sweep, sign};
      const KurvoArc arc = planned.Record();
      double t;
      EXPECT_EQ(KurvoclOnArc(planned.At(sweep + .99e-6L), &arc, &t, &g), 1);
      EXPECT_NEAR(t, static_cast<double>(1 + .99e-6L / sweep), planned.Bound(t));
      EXPECT_EQ(KurvoclOnArc(planned.At(sweep + 1.01e-6L), &arc, &t, &g), 0);
      EXPECT_EQ(KurvoclOnArc(planned.At(-.99e-6L), &arc, &t, &g), 1);
      EXPECT_NEAR(t, static_cast<double>(-.99e-6L / sweep), planned.Bound(t));
      EXPECT_EQ(KurvoclOnArc(planned.At(-1.01e-6L), &arc, &t, &g), 0);
    }
  }
}

// The slack of 0.0001 before the start and the margin of 1e-6 differ: of an arc that falls short of
// a full turn by less than the slack, the last stretch counts as lying before the start.
TEST(OnArc, TakesTheLastStretchOfANearlyFullTurnForBeforeTheStart) {
  Globals g;
  const PlannedArc planned = {1, 0, 0, .5L, 2 * kPiL - .5e-4L, 1};
  const KurvoArc arc = planned.Record();
  double t;
  EXPECT_EQ(KurvoclOnArc(planned.At(2 * kPiL - 1.1e-4L), &arc, &t, &g), 1);
  EXPECT_EQ(KurvoclOnArc(planned.At(2 * kPiL - .9e-4L), &arc, &t, &g), 0);
  EXPECT_NEAR(t, static_cast<double>(-.9e-4L / planned.sweep), planned.Bound(t));
}

TEST(OnArc, RefusesWhatIsNotOnTheCircle) {
  Globals g;
  const KurvoArc arc = {1, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {-1, 0, 0}},
                 full = {1, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {1, 0, 0}};
  const struct {
    const KurvoArc* arc;
    Point p;
    int on_circle, on_arc;
    double t;
  } rows[] = {
      {&arc, {0, 1.1, 0}, 0, 0, 0},
      {&arc, {0, -1, 0}, 1, 0, kNaN},
      {nullptr, {0, 1, 0}, 0, 0, 0},
      {&arc, {0, 1, .5}, 1, 0, .5},  // above the circle: t all the same
      {&full, {1, 0, 0}, 1, 1, kNaN},
      {&full, {-1, 0, 0}, 1, 0, kInfinity},
  };
  for (const auto& row : rows) {
    double t = 9;
    EXPECT_EQ(KurvoclOnCirc(row.p, row.arc, &g), row.on_circle) << row.p[0] << ' ' << row.p[1];
    EXPECT_EQ(KurvoclOnArc(row.p, row.arc, &t, &g), row.on_arc) << row.p[0] << ' ' << row.p[1];
    EXPECT_TRUE(std::isnan(row.t) || t == row.t) << t;
  }
}

}  // namespace
}  // namespace kurvo_test
