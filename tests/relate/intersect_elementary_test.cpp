// Intersections of lines and arcs among themselves, and of curves that are points.
#include "relate/intersection.h"

namespace kurvo_test {
namespace {

#define UNIT "l 0 0 1 0"
#define TWO "l 0 0 2 0"

const double kAngle345 = std::atan2(4, 3);
// Half the chord that a line 1.01e-6 inside a circle of radius 100 has, and half the height of the
// lens of two circles of radius 100 and 200 that are as deep in each other.
const double kDeep = std::sqrt(2 * 100 * 1.01e-6);
const double kLens = std::sqrt(2 * 1.01e-6 / (1. / 100 + 1. / 200));
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
    {"just within epsilon of a large one", "l -1 100.00000099 1 100.00000099", Text("a 0 0 100 0", {kPi}), {{.5, .5}}, "", 1e-6},
    {"just beyond", "l -1 100.00000101 1 100.00000101", Text("a 0 0 100 0", {kPi}), {}},
    {"just less than epsilon deep", "l -1 99.99999901 1 99.99999901", Text("a 0 0 100 0", {kPi}), {{.5, .5}}, "", 1e-6},
    {"just deeper", "l -1 99.99999899 1 99.99999899", Text("a 0 0 100 0", {kPi}), {{(1 + kDeep) / 2, .5 - kDeep / 100 / kPi}, {(1 - kDeep) / 2, .5 + kDeep / 100 / kPi}}, "", 1e-7},
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
    {"just within epsilon", "a 0 0 100 -1 2", Text("a 300.00000099 0 200", {kPi - 1, 2}), {{.5, .5}}, "", 1e-6},
    {"just beyond it", "a 0 0 100 -1 2", Text("a 300.00000101 0 200", {kPi - 1, 2}), {}},
    {"just less than it deep", "a 0 0 100 -1 2", Text("a 299.99999901 0 200", {kPi - 1, 2}), {{.5, .5}}, "", 1e-6},
    {"just deeper than it", "a 0 0 100 -1 2", Text("a 299.99999899 0 200", {kPi - 1, 2}), {{.5 + kLens / 200, .5 - kLens / 400}, {.5 - kLens / 200, .5 + kLens / 400}}, "", 1e-7},
    {"inside, just within it", "a 0 0 200 -1 2", "a 99.99999901 0 100 -1 2", {{.5, .5}}, "", 1e-6},
    {"inside, just beyond it", "a 0 0 200 -1 2", "a 99.99999899 0 100 -1 2", {}},
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

// ---- curves that are collapsed to a point

TEST(IntersectCollapsed, MeetsACurveThatPassesThroughIt) {
  const struct {
    const char* name;
    std::string point, curve;
    std::vector<Hit> hits;
  } rows[] = {
      // clang-format off
      {"line on a line", "l 1 1 1 1", "l 0 0 4 4", {{0, .25}}},
      {"line off a line", "l 1 1.1 1 1.1", "l 0 0 4 4", {}},
      {"line shorter than epsilon", "l 1 1 1.0000005 1", "l 0 0 4 4", {{0, .25}}},
      {"Bezier on an arc", "b 0 1 0 1 0 1", "a 0 0 1 0 2", {{0, kPi / 4}}},
      {"full circle, a point to intersection", Text("a 1 0 1 0", {2 * kPi}), "l 2 -1 2 1", {{0, .5}}},
      {"rational Bezier on a Bezier", "r 1 .5 1 1 .5 3", "b 0 0 1 1 2 0", {{0, .5}}},
      {"B-spline on a B-spline", "B 2 0 2 0 2 0 | 2 2 2 5 5 5", "B 2 -1 2 0 2 1 | 0 0 0 1 1 1", {{2, .5}}},
      {"composite on a composite", "c 1 2 (b 1 1 1 1)(b 1 1 1 1)", "c 2 2 (b 0 0 0 1)(b 0 1 4 1)", {{0, 2.5}}},
      {"composite off a composite", "c 1 2 (b 1 1 1 1)(b 1 1 1 1)", "c 2 2 (b 0 0 0 1)(b 0 2 4 2)", {}},
      {"two at one place", "l 1 1 1 1", "b 1 1 1 1", {}},
      // degrees without a polynomial of foot points
      {"on a Bezier of degree 21", "l 7 0 7 0", Even('b', 21), {{0, 1 / 3.}}},
      {"on a Bezier of degree 39", "l 39 0 39 0", Even('b', 39), {{0, 1}}},
      {"off a Bezier of degree 21", "l 7 1e-5 7 1e-5", Even('b', 21), {}},
      {"on a rational Bezier of degree 14", "a 7 1 1 -1.57079632679489662 0", Even('r', 14), {{0, .5}}},
      {"on a B-spline of order 26", "b 5 0 5 0", Even('B', 25), {{0, .2}}},
      {"on a rational B-spline of order 15", "l 7 0 7 0", Even('R', 14), {{0, .5}}},
      {"on a composite", "l 7 0 7 0", "c 1 1 (b 0 1 0 0)(" + Even('b', 21) + ")", {{0, 1 + 1 / 3.}}},
      // clang-format on
  };
  for (const auto& row : rows) {
    const Owned point = Make(row.point), curve = Make(row.curve);
    for (int mode = 0; mode < 8; ++mode) {
      Globals g;
      const Answer got = mode % 2 == 0 ? Intersect(*point, *curve, mode / 2, g)
                                       : Intersect(*curve, *point, mode / 2, g);
      ASSERT_EQ(got.hits.size(), row.hits.size()) << row.name << ", mode " << mode / 2;
      EXPECT_EQ(got.result, static_cast<uint32_t>(row.hits.empty() ? KURVO_NOTHING : KURVO_FOUND))
          << row.name;
      for (const Hit& hit : got.hits) {
        EXPECT_EQ(mode % 2 == 0 ? hit.a : hit.b, row.hits[0].a) << row.name;
        EXPECT_NEAR(mode % 2 == 0 ? hit.b : hit.a, row.hits[0].b, 1e-9) << row.name;
      }
    }
  }
}

}  // namespace
}  // namespace kurvo_test
