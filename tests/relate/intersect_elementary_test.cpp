// Intersections of lines and arcs among themselves.
#include "relate/brute_force.h"
#include "relate/cases.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

#define UNIT "l 0 0 1 0"
#define TWO "l 0 0 2 0"

const double kAngle345 = std::atan2(4, 3);
const std::string kUpperHalf = Text("a 0 0 1 0", {kPi});
const std::string kLowerHalf = Text("a 0 0 1", {kPi, kPi});

// clang-format off
const Case kCases[] = {
    // Lines.
    {"cross", TWO, "l 1 -1 1 3", {{.5, .25}}},
    {"cross beyond both ends", UNIT, "l 3 1 3 2", {{3, -1}}},
    {"cross beyond one end", UNIT, "l 3 -1 3 1", {{3, .5}}},
    {"meet at ends", UNIT, "l 1 0 3 5", {{1, 0}}},
    {"one ends on the other", TWO, "l .5 0 .5 7", {{.25, 0}}},
    {"just beyond an end, within epsilon of it", UNIT, "l 1.0000008 -1 1.0000008 1", {{1.0000008, .5}}},
    {"further beyond", UNIT, "l 1.000003 -1 1.000003 1", {{1.000003, .5}}},
    {"beyond the end of a long one, within its slack", "l 0 0 100 0", "l 100.00005 -1 100.00005 1", {{1.0000005, .5}}, "1117", 1e-9, false},  // mode 3 looks at the boxes first
    {"parallel", UNIT, "l 0 2 5 2", {}},
    {"parallel, just apart", UNIT, "l 0 .0000015 1 .0000015", {}},
    {"half of epsilon to each other", UNIT, "l 0 0 1 5e-7", {}, "2222", 1e-9, false},
    {"half of epsilon, opposite ways", UNIT, "l 1 0 0 5e-7", {}, "2222", 1e-9, false},
    {"twice epsilon to each other", UNIT, "l 0 0 1 2e-6", {{0, 0}}, "", 1e-9, false},
    {"same", UNIT, UNIT, {}, "2222"},
    {"overlap", TWO, "l 1 0 3 0", {}, "2222"},
    {"inside", "l 0 0 5 0", "l 2 0 3 0", {}, "2222"},
    {"share a start and more", TWO, UNIT, {}, "2222"},
    {"share an end and more", TWO, "l 1 0 2 0", {}, "2222"},
    {"touch end to start", UNIT, "l 1 0 2 0", {{1, 0}}, "2221"},
    {"touch end to end", UNIT, "l 2 0 1 0", {{1, 1}}, "2221"},
    {"touch within epsilon", UNIT, "l 1.0000005 0 2 0", {{1, 0}}, "2221"},
    {"overlap by less than epsilon", UNIT, "l .9999995 0 2 0", {{1, 0}}, "2221"},
    {"apart on one line", UNIT, "l 1.5 0 2 0", {}, "2227"},
    {"just apart on one line", UNIT, "l 1.000002 0 2 0", {}, "2227"},
    {"tiny touches long", "l 0 0 1000 0", "l 1000 0 1000.00001 0", {{1, 0}}, "2221", 1e-9, false},
    {"side by side within epsilon", TWO, "l 1 5e-7 3 5e-7", {}, "2222", 1e-9, false},

    // A line and an arc.
    {"two places", "l -2 0 2 0", Text("a 0 0 1 -1", {2 * kPi - 1}), {{.25, (kPi + 1) / (2 * kPi - 1)}, {.75, 1 / (2 * kPi - 1)}}},
    {"one on the sweep", "l 0 -2 0 2", kUpperHalf, {{.25, -.5}, {.75, .5}}},
    {"inside the circle", "l 0 0 0 .5", kUpperHalf, {{-2, -.5}, {2, .5}}},
    {"beside", "l -2 1.1 2 1.1", kUpperHalf, {}},
    {"touches from outside", "l -1 1 1 1", kUpperHalf, {{.5, .5}}},
    {"5e-7 short of it", "l -1 1.0000005 1 1.0000005", kUpperHalf, {{.5, .5}}},
    {"5e-7 too deep", "l -1 .9999995 1 .9999995", kUpperHalf, {{.5, .5}}},
    {"1.5e-6 short of it", "l -1 1.0000015 1 1.0000015", kUpperHalf, {}},
    {"ends on it", "l 0 1 0 5", kUpperHalf, {{0, .5}, {-.5, -.5}}},
    {"meets its end", "l 1 0 1 2", kUpperHalf, {{0, 0}}, "", 1e-7},
    {"meets both ends", "l -1 0 1 0", kUpperHalf, {{0, 1}, {1, 0}}},
    {"far from its start", "l -1e4 0 1e4 0", kUpperHalf, {{.50005, 0}, {.49995, 1}}},

    // Arcs.
    {"two circles", "a 0 0 5 -1 2", "a 6 0 5 2 2.4", {{(kAngle345 + 1) / 2, (kPi - kAngle345 - 2) / 2.4}, {(1 - kAngle345) / 2, (kPi + kAngle345 - 2) / 2.4}}},
    {"outside each other", kUpperHalf, "a 3 0 1 0 3", {}},
    {"inside each other", kUpperHalf, "a .1 0 .5 0 3", {}},
    {"touch outside", Text("a 0 0 1 -1", {2}), Text("a 3 0 2", {kPi - 1, 2}), {{.5, .5}}},
    {"5e-7 apart", Text("a 0 0 1 -1", {2}), Text("a 3.0000005 0 2", {kPi - 1, 2}), {{.5, .5}}},
    {"5e-7 into each other", Text("a 0 0 1 -1", {2}), Text("a 2.9999995 0 2", {kPi - 1, 2}), {{.5, .5}}},
    {"2e-6 apart", Text("a 0 0 1 -1", {2}), Text("a 3.000002 0 2", {kPi - 1, 2}), {}},
    {"touch inside", "a 0 0 2 -1 2", "a 1 0 1 -1 2", {{.5, .5}}},
    {"touch inside, 5e-7 apart", "a 0 0 2 -1 2", "a .9999995 0 1 -1 2", {{.5, .5}}},
    {"touch inside, 5e-7 too far", "a 0 0 2 -1 2", "a 1.0000005 0 1 -1 2", {{.5, .5}}},
    {"one centre", kUpperHalf, "a 0 0 2 0 3", {}},
    {"halves of one circle", kUpperHalf, kLowerHalf, {{0, 1}, {1, 0}}, "2221"},
    {"stretch of one circle", kUpperHalf, "a 0 0 1 2 3", {}, "2222"},
    {"stretch around the start", "a 0 0 1 -1 2", "a 0 0 1 .5 5", {}, "2222"},
    {"touch at one end", "a 0 0 1 0 1", "a 0 0 1 1 2", {{1, 0}}, "2221", 1e-7},
    {"apart on one circle", "a 0 0 1 0 1", "a 0 0 1 2 1", {}, "2227"},
    {"one inside the other", "a 0 0 1 0 3", "a 0 0 1 1 1", {}, "2222"},
    {"same circle, clockwise", "a 0 0 1 0 3", "a 0 0 1 3 -3", {}, "2222"},
};
// clang-format on

TEST(IntersectElementary, Table) {
  for (const Case& row : kCases) CaseCheck(row).Run();
}

// What a circle has in common with a line or another circle, from their records in long double.
struct WideChord {
  Wide gap;       // between them, negative where they run into each other
  WideJet touch;  // where they are closest
  WideJet foot;   // middle of the chord, and half of it as direction
  Wide radius;    // of the smaller circle
};

constexpr double kFar = 1e4, kTol = 1e-6;

// Two ends of the chord, one point where the gap is within the tolerance, none beyond it.
void ExpectChord(const Owned& a, const Owned& b, const WideChord& want) {
  constexpr Wide kRounding = 1e-11L;  // of points, and of gaps between them
  constexpr Wide kGapRounding = 4e-12L;
  if (kRounding >= std::fabs(std::fabs(want.gap) - kTol)) return;  // too close to call
  SCOPED_TRACE(testing::Message() << "gap " << want.gap << " of radius " << want.radius);
  Globals g;
  const Answer got = Intersect(*a, *b, 0, g);
  const std::size_t count = want.gap > kTol ? 0 : (want.gap >= -kTol ? 1 : 2);
  ASSERT_EQ(got.hits.size(), count);
  if (count == 0) return;
  const WidePiece on_a = Pieces(*a)[0], on_b = Pieces(*b)[0];
  const WideJet& foot = want.foot;
  // The ends move along the circle by what rounding does to the gap, magnified.
  const Wide magnified = kGapRounding * want.radius / std::hypot(foot.dx, foot.dy);
  for (const Wide side : {-1, 1}) {
    const WideJet end = {foot.x + side * foot.dx, foot.y + side * foot.dy, 0, 0};
    const WideJet& expected = count == 2 ? end : want.touch;
    Wide off = HUGE_VALL;
    for (const Hit& hit : got.hits) {
      const WideJet p = on_a(hit.a), q = on_b(hit.b);
      off = std::min(off, std::max(Gap(p, expected), Gap(q, expected)));
      EXPECT_LE(Gap(p, q), count == 2 ? 2 * kRounding : kTol);
    }
    EXPECT_LE(off, count == 2 ? kRounding + magnified : kTol);
  }
}

// Between -1e-3 and 1e-3, mostly small, often next to the tolerance.
double RandomGap(Random& random) {
  const int kind = RandomInt(random, 0, 3);
  if (kind < 2) return kTol * (kind == 0 ? 1 : -1) * (1 + random.Uniform(-1e-4, 1e-4));
  return kind == 2 ? random.Uniform(-3 * kTol, 3 * kTol) : random.Uniform(-1e-3, 1e-3);
}

TEST(IntersectElementary, LineAndCircleNearlyTangentFarOut) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int i = 0; i < 300; ++i) {
    const auto [x, y] = RandomPlace(random, kFar);
    const double r = std::pow(10, random.Uniform(-2, 4)), angle = random.Uniform(-3, 3);
    const double dist = r + RandomGap(random), half = random.Uniform(.5, 5) * r;
    const double nx = std::cos(angle), ny = std::sin(angle);
    const double fx = x + dist * nx, fy = y + dist * ny;
    const Owned a = Line(fx + half * ny, fy - half * nx, fx - half * ny, fy + half * nx);
    const auto& ends = a.block<KurvoLine>();
    const Wide dx = L(ends.end[0]) - ends.start[0], dy = L(ends.end[1]) - ends.start[1];
    const Wide length = std::hypot(dx, dy), ux = dx / length, uy = dy / length;
    const Wide sx = L(ends.start[0]) - x, sy = L(ends.start[1]) - y;
    const Wide aside = sx * uy - sy * ux, d = std::fabs(aside);
    const Wide chord = d < r ? std::sqrt((r - d) * (r + d)) : 0;
    const WideJet foot = {x + aside * uy, y - aside * ux, chord * ux, chord * uy};
    ExpectChord(a, Arc(x, y, r, angle - 1, 2), {d - r, foot, foot, r});
  }
}

TEST(IntersectElementary, CirclesNearlyTangentFarOut) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int i = 0; i < 300; ++i) {
    const auto [x, y] = RandomPlace(random, kFar);
    const double r = std::pow(10, random.Uniform(-2, 4)), s = r * random.Uniform(1.1, 4);
    const double angle = random.Uniform(-3, 3), apart = RandomGap(random);
    const bool inside = i % 2 == 0;
    const double dist = inside ? s - r - apart : s + r + apart;
    const double u = x + dist * std::cos(angle), v = y + dist * std::sin(angle);
    const Wide dx = L(u) - x, dy = L(v) - y, d = std::hypot(dx, dy), ux = dx / d, uy = dy / d;
    // Of the triangle with the sides r, s, d: its foot on d, and its height.
    const Wide gap = inside ? (L(s) - r) - d : d - (L(s) + r);
    const Wide foot = (d + (L(r) - s) * ((L(r) + s) / d)) / 2;
    const Wide height = std::sqrt(std::max(0.0L, (L(r) - foot) * (L(r) + foot)));
    const Wide out = inside ? -r : r;
    ExpectChord(Arc(x, y, r, angle - 1, 2), Arc(u, v, s, angle + 2, 2),
                {gap,
                 {x + out * ux, y + out * uy, 0, 0},
                 {x + foot * ux, y + foot * uy, -height * uy, height * ux},
                 r});
  }
}

TEST(IntersectElementary, EndsReachAsFarAsEpsilonInXAndInY) {
  for (const double beyond : {9e-7, 1.1e-6}) {
    const double reach = .1 + beyond;
    Globals g;
    EXPECT_EQ(Intersect(*Make("l 0 0 .1 .1"), *Line(0, 2 * reach, 2 * reach, 0), 3, g).result,
              beyond < 1e-6 ? KURVO_FOUND : KURVO_NOTHING);
  }
}

// Epsilon counts as an angle for lines: below it they run together. Clockwise that holds only down
// to 0.0001 radians, where the angle counts as nearly a full turn.
TEST(IntersectElementary, LinesAtSmallAnglesWithAWideEpsilon) {
  constexpr std::pair<double, uint32_t> kRows[] = {{.011, KURVO_FOUND},     {.009, KURVO_OVERLAP},
                                                   {1.1e-4, KURVO_OVERLAP}, {9e-5, KURVO_OVERLAP},
                                                   {-9e-5, KURVO_OVERLAP},  {-1.1e-4, KURVO_FOUND},
                                                   {-.009, KURVO_FOUND}};
  for (const auto& [angle, result] : kRows) {
    Globals g(.01);
    EXPECT_EQ(Intersect(*Make(UNIT), *Line(0, -angle / 2, 1, angle / 2), 0, g).result, result)
        << angle;
  }
}

}  // namespace
}  // namespace kurvo_test
