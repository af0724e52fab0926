// Intersections of lines and arcs among themselves.
#include "relate/cases.h"

namespace kurvo_test {
namespace {

#define UNIT "l 0 0 1 0"
#define TWO "l 0 0 2 0"

const double kAngle345 = std::atan2(4, 3);
const std::string kUpperHalf = Text("a 0 0 1 0", {kPi});
const std::string kLowerHalf = Text("a 0 0 1", {kPi, kPi});

const Case kCases[] = {
    // Lines.
    {"cross", TWO, "l 1 -1 1 3", {{.5, .25}}},
    {"cross beyond both ends", UNIT, "l 3 1 3 2", {{3, -1}}},
    {"cross beyond one end", UNIT, "l 3 -1 3 1", {{3, .5}}},
    {"meet at ends", UNIT, "l 1 0 3 5", {{1, 0}}},
    {"one ends on the other", TWO, "l .5 0 .5 7", {{.25, 0}}},
    {"just beyond an end, within epsilon of it",
     UNIT,
     "l 1.0000008 -1 1.0000008 1",
     {{1.0000008, .5}}},
    {"further beyond", UNIT, "l 1.000003 -1 1.000003 1", {{1.000003, .5}}},
    {"beyond the end of a long one, within its slack",
     "l 0 0 100 0",
     "l 100.00005 -1 100.00005 1",
     {{1.0000005, .5}},
     "1117",
     1e-9,
     false},  // mode 3 looks at the boxes first
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
    {"two places",
     "l -2 0 2 0",
     Text("a 0 0 1 -1", {2 * kPi - 1}),
     {{.25, (kPi + 1) / (2 * kPi - 1)}, {.75, 1 / (2 * kPi - 1)}}},
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
    {"two circles",
     "a 0 0 5 -1 2",
     "a 6 0 5 2 2.4",
     {{(kAngle345 + 1) / 2, (kPi - kAngle345 - 2) / 2.4},
      {(1 - kAngle345) / 2, (kPi + kAngle345 - 2) / 2.4}}},
    {"outside each other", kUpperHalf, "a 3 0 1 0 3", {}},
    {"inside each other", kUpperHalf, "a .1 0 .5 0 3", {}},
    {"touch outside", Text("a 0 0 1 -1", {2}), Text("a 3 0 2", {kPi - 1, 2}), {{.5, .5}}},
    {"5e-7 apart", Text("a 0 0 1 -1", {2}), Text("a 3.0000005 0 2", {kPi - 1, 2}), {{.5, .5}}},
    {"5e-7 into each other",
     Text("a 0 0 1 -1", {2}),
     Text("a 2.9999995 0 2", {kPi - 1, 2}),
     {{.5, .5}}},
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

TEST(IntersectElementary, Table) {
  for (const Case& row : kCases) CaseCheck(row).Run();
}

// What a line and a circle, or two circles, have in common, from their records in long double.
struct WideChord {
  Wide gap;       // between them, negative where they run into each other
  WideJet touch;  // where they are closest
  WideJet foot;   // middle of the chord, and half of it as direction
  Wide radius;    // of the smaller circle
};

class NearlyTangent : public testing::Test {
 protected:
  static constexpr double kFar = 1e4;
  static constexpr double kTol = 1e-6;
  static constexpr Wide kRounding = 1e-11L;  // of points, and of gaps between them
  static constexpr Wide kGapRounding = 4e-12L;

  // Two ends of the chord, one point where the gap is within the tolerance, none beyond it.
  static void Expect(const Curve& a, const Curve& b, const WideChord& want,
                     const std::string& trace) {
    if (kRounding >= std::fabs(std::fabs(want.gap) - kTol)) return;  // too close to call
    Globals g;
    const Answer got = Intersect(a, b, 0, g);
    const std::size_t count = want.gap > kTol ? 0 : (want.gap >= -kTol ? 1 : 2);
    ASSERT_EQ(got.hits.size(), count) << trace << " gap " << want.gap;
    const WidePiece on_a = Pieces(a)[0], on_b = Pieces(b)[0];
    for (const Wide side : {-1, 1}) {
      const WideJet end = {want.foot.x + side * want.foot.dx, want.foot.y + side * want.foot.dy, 0,
                           0};
      Wide off = HUGE_VALL;
      for (const Hit& hit : got.hits) {
        const WideJet p = on_a(hit.a), q = on_b(hit.b), expected = count == 2 ? end : want.touch;
        off = std::min(off, std::max(Gap(p, expected), Gap(q, expected)));
        EXPECT_LE(Gap(p, q), count == 2 ? 2 * kRounding : kTol) << trace << " gap " << want.gap;
      }
      // The ends move along the circle by what rounding does to the gap, magnified.
      const Wide magnified = kGapRounding * want.radius / std::hypot(want.foot.dx, want.foot.dy);
      const Wide bound = count == 2 ? kRounding + magnified : kTol;
      EXPECT_TRUE(count == 0 || bound >= off) << trace << " gap " << want.gap << " off " << off;
    }
  }

  // A gap between -1e-3 and 1e-3, mostly small, often next to the tolerance.
  double RandomGap() {
    switch (static_cast<int>(random_.Uniform(0, 4))) {
      case 0:
        return random_.Uniform(-3 * kTol, 3 * kTol);
      case 1:
        return kTol * (1 + random_.Uniform(-1e-4, 1e-4));
      case 2:
        return -kTol * (1 + random_.Uniform(-1e-4, 1e-4));
      default:
        return random_.Uniform(-1e-3, 1e-3);
    }
  }

  Random random_;
};

TEST_F(NearlyTangent, LineAndCircleFarOut) {
  SCOPED_TRACE(random_.Trace());
  for (int i = 0; i < 300; ++i) {
    const double x = random_.Uniform(-kFar, kFar), y = random_.Uniform(-kFar, kFar);
    const double r = std::pow(10, random_.Uniform(-2, 4)), angle = random_.Uniform(-3, 3);
    const double dist = r + RandomGap(), half = random_.Uniform(.5, 5) * r;
    const double nx = std::cos(angle), ny = std::sin(angle);
    const double fx = x + dist * nx, fy = y + dist * ny;
    const std::string line =
        Text("l", {fx + half * ny, fy - half * nx, fx - half * ny, fy + half * nx});
    const std::string arc = Text("a", {x, y, r, angle - 1, 2});
    const Owned a = Make(line), b = Make(arc);
    const auto& ends = a.block<KurvoLine>();
    const Wide dx = L(ends.end[0]) - ends.start[0], dy = L(ends.end[1]) - ends.start[1];
    const Wide length = std::hypot(dx, dy), ux = dx / length, uy = dy / length;
    const Wide sx = L(ends.start[0]) - x, sy = L(ends.start[1]) - y;
    const Wide aside = sx * uy - sy * ux, d = std::fabs(aside);
    const Wide chord = d < r ? std::sqrt((r - d) * (r + d)) : 0;
    const WideJet foot = {x + aside * uy, y - aside * ux, chord * ux, chord * uy};
    Expect(*a, *b, {d - r, foot, foot, r}, line + '\n' + arc);
  }
}

TEST_F(NearlyTangent, CirclesFarOut) {
  SCOPED_TRACE(random_.Trace());
  for (int i = 0; i < 300; ++i) {
    const double x = random_.Uniform(-kFar, kFar), y = random_.Uniform(-kFar, kFar);
    const double r = std::pow(10, random_.Uniform(-2, 4)), s = r * random_.Uniform(1.1, 4);
    const double angle = random_.Uniform(-3, 3);
    const bool inside = i % 2 == 0;
    const double dist = inside ? s - r - RandomGap() : s + r + RandomGap();
    const double u = x + dist * std::cos(angle), v = y + dist * std::sin(angle);
    const std::string text_a = Text("a", {x, y, r, angle - 1, 2}),
                      text_b = Text("a", {u, v, s, angle + 2, 2});
    const Wide dx = L(u) - x, dy = L(v) - y, d = std::hypot(dx, dy), ux = dx / d, uy = dy / d;
    // Of the triangle with the sides r, s, d: its foot on d, and its height.
    const Wide gap = inside ? (L(s) - r) - d : d - (L(s) + r);
    const Wide foot = (d + (L(r) - s) * ((L(r) + s) / d)) / 2;
    const Wide square = (L(r) - foot) * (L(r) + foot), height = square > 0 ? std::sqrt(square) : 0;
    const WideJet touch = {x + (inside ? -r : r) * ux, y + (inside ? -r : r) * uy, 0, 0};
    Expect(*Make(text_a), *Make(text_b),
           {gap, touch, {x + foot * ux, y + foot * uy, -height * uy, height * ux}, r},
           text_a + '\n' + text_b);
  }
}

TEST(IntersectElementary, EndsReachAsFarAsEpsilonInXAndInY) {
  for (const double beyond : {9e-7, 1.1e-6}) {
    const double reach = .1 + beyond;
    const Owned a = Make("l 0 0 .1 .1"), b = Make(Text("l 0", {2 * reach, 2 * reach, 0}));
    Globals g;
    EXPECT_EQ(Intersect(*a, *b, 3, g).result, beyond < 1e-6 ? KURVO_FOUND : KURVO_NOTHING);
  }
}

// Epsilon counts as an angle for lines: below it they run together. Clockwise that holds only down
// to 0.0001 radians, where the angle counts as nearly a full turn.
TEST(IntersectElementary, LinesAtSmallAnglesWithAWideEpsilon) {
  const struct {
    double angle;
    uint32_t result;
  } rows[] = {{.011, KURVO_FOUND},   {.009, KURVO_OVERLAP},  {1.1e-4, KURVO_OVERLAP},
              {9e-5, KURVO_OVERLAP}, {-9e-5, KURVO_OVERLAP}, {-1.1e-4, KURVO_FOUND},
              {-.009, KURVO_FOUND}};
  const Owned axis = Make("l 0 0 1 0");
  for (const auto& row : rows) {
    Globals g(.01);
    const Owned line = Make(Text("l", {0, -row.angle / 2, 1, row.angle / 2}));
    EXPECT_EQ(Intersect(*axis, *line, 0, g).result, row.result) << row.angle;
  }
}

}  // namespace
}  // namespace kurvo_test
