// Intersections with free-form curves: contacts, overlaps, joints and other hard places.
#include "relate/intersection.h"

namespace kurvo_test {
namespace {

#define UNIFORM " | 0 1 2 3 4 5 6 7 8 9 10 11"

// Polynomials in s over [-1, 1]; see Poly.
const std::string kParabola = Poly({0, 1}, {0, 0, 1});       // y = x^2
const std::string kCubic = Poly({0, 1}, {0, 0, 0, 1});       // y = x^3
const std::string kQuartic = Poly({0, 1}, {0, 0, 0, 0, 1});  // y = x^4
const std::string kQuintic = Poly({0, 1}, {0, 0, 0, 0, 0, 1});
// Of Chebyshev polynomials of degrees 12 and 11: up and down eleven times.
const std::string kStrands = Poly({1, 0, -72, 0, 840, 0, -3584, 0, 6912, 0, -6144, 0, 2048},
                                  {0, -11, 0, 220, 0, -1232, 0, 2816, 0, -2816, 0, 1024});
const std::string kTwelfth = Poly({0, 1}, {0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
const std::string kStraight = Poly({0, 1}, {0, 0, 0, 0});    // the x axis, as a cubic
const std::string kGoesBack = Poly({0, -3, 0, 4}, {0});      // three times along the x axis
const std::string kCusp = Poly({0, 0, 1}, {0, 0, 0, 1});     // (s^2, s^3)
const std::string kLoop = Poly({0, 0, 1}, {0, -.25, 0, 1});  // crosses itself at s = +-1/2
const Numbers kT3 = {0, -3, 0, 4}, kT4 = {1, 0, -8, 0, 8}, kT5 = {0, 5, 0, -20, 0, 16};

const std::string kTinyLoop = Poly({0, 0, 1}, {0, -1.6e-5, 0, 1});  // the same at s = +-.004
const std::string kDrop = "b 0 0 2 2 -2 2 0 0";                     // closes at a corner

// Where the loop meets y = (x - 1/4)^2 besides its double point: s = (1 - sqrt 2) / 2.
constexpr double kLoopAgain = .75 - std::numbers::sqrt2 / 4;

const std::string kNested = "c 2 (c .25 .75 (b -1 0 0 0)(b 0 0 1 0))";
const std::string kWave = "b 0 0 2 4 4 -4 6 0";
const std::string kRoof = "B 0 0 1 1 2 0 | 0 0 1 2 2";

constexpr double kQuarterWeight = std::numbers::sqrt2 / 2;
const std::string kQuarter = Text("r 1 0 1 1 1", {kQuarterWeight, 0, 1, 1});
// The whole unit circle as four quarters, one rational B-spline over [0, 4].
const std::string kCircle =
    Text("R 1 0 1 1 1", {kQuarterWeight, 0, 1,  1, -1, 1,  kQuarterWeight, -1, 0, 1, -1, -1,
                         kQuarterWeight, 0, -1, 1, 1,  -1, kQuarterWeight, 1,  0, 1}) +
    " | 0 0 0 1 1 2 2 3 3 4 4 4";

constexpr double kTouch = 1e-5;  // of parameters where curves touch
constexpr double kOsculate = .04;

std::vector<Hit> Grid(int m, int n);

// Crosses the axis at x = -.01 and .01 at this angle, and dips below it by less than epsilon.
std::string Dip(double angle) { return Poly({0, 1}, {-angle * .01 / 2, 0, angle / .02}); }
// Runs along the axis for a share of its size.
std::string Bent(double share) {
  const double x = share * std::hypot(2, 1) / 2;
  return Text("B", {-1, 1, -x, 0, x, 0, 1, 1}) + " | 0 0 1 2 3 3";
}

// The spokes of a star, to and fro through its centre: passing a place again is no repetition.
constexpr int kSpokes = 60;
std::string Star() {
  std::string spokes;
  for (int i = 0; i < kSpokes; ++i) {
    const double angle = 3.1 * i / kSpokes + (i % 2 ? kPi : 0) + .01;
    const double x = std::cos(angle), y = std::sin(angle);
    spokes += Text("(b", {-x, -y, x, y}) + ")";
  }
  return Text("c", Numbers(kSpokes, 1)) + spokes;
}
std::vector<Hit> OnAllSpokes() {
  std::vector<Hit> hits;
  for (int i = 0; i < kSpokes; ++i) hits.push_back({.5, i + .5});
  return hits;
}

// clang-format off
const Case kLines[] = {
    {"touches", "l -1 0 1 0", kParabola, {{.5, .5}}, "", kTouch},
    {"5e-7 short of a touch", "l -1 -5e-7 1 -5e-7", kParabola, {{.5, .5}}, "", kTouch},
    {"5e-6 short of a touch", "l -1 -5e-6 1 -5e-6", kParabola, {}},
    {"rounding deep", "l -1 1e-12 1 1e-12", kParabola, {{.5, .5}}, "", kTouch},
    {"4e-6 deep", "l -1 4e-6 1 4e-6", kParabola, {{.501, .501}, {.499, .499}}, "", 1e-8},
    {"along an inflection", "l -1 0 1 0", kCubic, {{.5, .5}}, "", 1e-3},
    {"three times at an inflection", "l -1 -.01 1 .01", Poly({0, 1}, {0, 0, 0, 4}), {{.5, .5}, {.525, .525}, {.475, .475}}},
    {"quadruple root", "l -1 0 1 0", kQuartic, {{.5, .5}}, "", kOsculate},
    {"quintuple root", "l -1 0 1 0", kQuintic, {{.5, .5}}, "", .07},
    {"through a cusp", "l -1 0 1 0", kCusp, {{.5, .5}}, "", 6e-3},
    {"before a cusp", "l 0 -1 0 1", kCusp, {{.5, .5}}, "", 1e-3},
    {"across a loop", "l .16 -1 .16 1", kLoop, {{.482, .7}, {.518, .3}}},
    {"through a double point", "l .25 -1 .25 1", kLoop, {{.5, .25}, {.5, .75}}},
    {"at an end", "l 1 0 1 2", kParabola, {{.5, 1}}},
    {"5e-7 beyond an end", "l 1.0000005 0 1.0000005 2", kParabola, {{.5, 1}}, "", kTouch, false},
    {"5e-6 beyond an end", "l 1.000005 0 1.000005 2", kParabola, {}},
    {"along", "l -.5 0 3 0", kStraight, {}, "2222"},
    {"along and to and fro", "l -.5 0 3 0", kGoesBack, {}, "2222"},
    {"along within epsilon", "l -.5 5e-7 3 5e-7", kStraight, {}, "2222", 0, false},
    {"along, all of it at epsilon", "l 0 0 1 0", "b 0 1e-6 .5 1e-6 1 1e-6", {}, "2222", 0, false},
    {"along, behind the end", "l 2 0 3 0", kStraight, {}, "2727"},
    {"along, touching the end", "l 1 0 3 0", kStraight, {{0, 1}}, "2121"},
    {"along, touching the start", "l -1 0 -3 0", kStraight, {{0, 0}}, "2121"},
    {"along, a little inside", "l .99999 0 3 0", kStraight, {}, "2222", 0, false},
    {"across what goes back", "l .5 -1 .5 1", kGoesBack, {{.5, .5 + std::cos(kPi / 9) / 2}, {.5, .5 + std::cos(5 * kPi / 9) / 2}, {.5, .5 + std::cos(7 * kPi / 9) / 2}}},
    {"along a straight B-spline", "l 0 0 9 0", "B 1 0 2 0 4 0 5 0 6 0 | 0 0 0 1 1.5 2 2 2", {}, "2222"},
    {"along one span", "l 0 0 9 0", "B 1 0 2 0 3 0 4 0 5 3 6 3 | 0 0 0 0 1 2 3 3 3 3", {}, "2222"},
    {"through a joint", "l 1.5 -1 1.5 1", "B 0 0 1 0 2 0 4 5 | 2 2 2 3 4 4 4", {{.5, 3}}},
    {"through a corner", "l 1 -1 1 2", kRoof, {{2. / 3, 1}}},
    {"touches a corner", "l -1 1 3 1", kRoof, {{.5, 1}}},
    {"5e-7 off a corner", "l -1 1.0000005 3 1.0000005", kRoof, {{.5, 1}}, "", kTouch},
    {"through the closing joint", "l 0 0 2 0", kCircle, {{.5, 0}, {-.5, 2}}},
    {"touches the closing joint", "l 1 -1 1 1", kCircle, {{.5, 0}}, "", kTouch},
    {"touches the joint of one piece", "l -1 0 1 0", kDrop, {{.5, 0}}},
    {"5e-7 off that joint", "l -1 -5e-7 1 -5e-7", kDrop, {{.5, 0}}, "", kTouch},
    {"through that joint", "l -1 -.5 1 .5", kDrop, {{.5, 0}}},
    {"through that joint and across", "l 0 -1 0 3", kDrop, {{.25, 0}, {.625, .5}}},
    {"across a loop of 16 epsilons", "l 1.6e-5 -1 1.6e-5 1", kTinyLoop, {{.5, .502}, {.5, .498}}},
    {"two crossings within epsilon", "l -1 0 1 0", Poly({0, 1e-3}, {-1.6e-10, 0, 1e-3}), {{.5, .5}}, "", 1e-3},
    {"two further apart", "l -1 0 1 0", Poly({0, 1e-3}, {-6.4e-10, 0, 1e-3}), {{.5 - 4e-7, .4996}, {.5 + 4e-7, .5004}}, "", kTouch},
    {"domain of its own", "l 0 .25 1 .25", "B -1 1 0 -1 1 1 | 2 2 2 5 5 5", {{.5, 4.25}, {-.5, 2.75}}},
    {"composite", "l 1 -1 1 5", "c .5 3 2 (b 0 0 2 2)(l 2 2 0 2)(b 0 2 2 4)", {{1. / 3, .25}, {2. / 3, 4.5}}},
    {"composite of one", "l 1 -1 1 5", "c 4 (b 0 0 2 2)", {{1. / 3, 2}}},
    {"composite without Bezier pieces", "l 1 -1 1 5", "c 1 1 (l 0 0 2 2)(c 1 (b 2 2 0 2))", {}},
    {"handles of length 0", "l .5 -1 .5 2", "b 0 0 0 0 1 1 1 1", {{.5, .5}}},
    {"handles of length 1e-11", "l .5 -1 .5 2", "b 0 0 1e-11 0 1 1 1 1", {{.5, .5}}},
    {"degree 1", "l 0 1 1 0", "b 0 0 1 1", {{.5, .5}}},
    {"degree 39", "l 13 -1 13 1", Even('b', 39), {{.5, 1. / 3}}},
    {"degree 39 over a domain of its own, rational", "l 13 -1 13 1", Even('R', 39), {{.5, 1. / 3}}},
    // at less than 1e-4 radians the two crossings are one contact
    {"two crossings at .8e-4 radians", "l -2 0 2 0", Dip(.8e-4), {{.5, .5}}, "", .006},
    {"at 1.2e-4 radians", "l -2 0 2 0", Dip(1.2e-4), {{.4975, .495}, {.5025, .505}}, "", 1e-6},
    // a shorter stretch may be the neighbourhood of a contact
    {"along for 12 thousandths of the size", "l -5 0 5 0", Bent(.012), {}, "2222"},
    {"for 8 thousandths", "l -5 0 5 0", Bent(.008), {{.5, 1.5}}, "", .51},
    {"through the centre of a star", "l -1 0 1 0", Star(), OnAllSpokes()},
};

const Case kArcs[] = {
    {"touches from outside", "a 0 -1 1 1 1.5", kParabola, {{(kPi / 2 - 1) / 1.5, .5}}, "", kTouch},
    {"touches from inside", "a 0 .25 .25 -2 1", kParabola, {{2 - kPi / 2, .5}}, "", kTouch},
    {"5e-7 short of a touch", "a 0 -1.0000005 1 1 1", kParabola, {{kPi / 2 - 1, .5}}, "", kTouch},
    {"5e-6 short of a touch", "a 0 -1.000005 1 1 1", kParabola, {}},
    {"osculates", "a 0 .5 .5 -2 1", kParabola, {{2 - kPi / 2, .5}}, "", kOsculate},
    {"crosses", "a 0 0 1 0 3", "b 0 0 2 2", {{kPi / 12, std::sqrt(.125)}}},
    {"touches a circle", "a 3 0 2 2.5 1", kCircle, {{kPi - 2.5, 0}}, "", kTouch},
    {"along a quarter", "a 0 0 1 .3 1", kQuarter, {}, "2222"},
    {"along, behind the end", "a 0 0 1 2 1", kQuarter, {}, "2727"},
    {"along, touching the end", Text("a 0 0 1", {kPi / 2, 1}), kQuarter, {{0, 1}}, "2121", 1e-7},
    {"along one quarter of a circle", "a 0 0 1 3.5 .5", kCircle, {}, "2222"},
    {"through the closing joint", "a 1 1 1 -2 1", kCircle, {{2 - kPi / 2, 0}, {kPi + 2, 1}}},
    {"beyond the sweep", "a 0 0 1 0 1", "b 0 0 0 4", {{kPi / 2, .25}}},
    {"degree 19", "a 5 0 1 1 1", Even('b', 19), {{kPi - 1, 4. / 19}, {-1, 6. / 19}}},
};

const Case kPairs[] = {
    {"touch", kParabola, Poly({0, 1}, {0, 0, -1}), {{.5, .5}}, "", kTouch},
    {"touch on one side", kParabola, Poly({0, 1}, {0, 0, 2}), {{.5, .5}}, "", kTouch},
    {"5e-7 apart", kParabola, Poly({0, 1}, {-5e-7, 0, -1}), {{.5, .5}}, "", kTouch},
    {"5e-6 apart", kParabola, Poly({0, 1}, {-5e-6, 0, -1}), {}},
    {"rounding deep", kParabola, Poly({0, 1}, {1e-12, 0, -1}), {{.5, .5}}, "", kTouch},
    {"5e-7 deep", kParabola, Poly({0, 1}, {5e-7, 0, -1}), {{.50025, .50025}, {.49975, .49975}}, "", 1e-8},
    {"touch at an end", "b 0 0 1 0 2 1", "b -1 1 0 -1 1 1", {{0, .5}}, "", kTouch},
    {"touch at both ends", "b 0 0 1 0 2 1", "b 0 0 1 0 2 -1", {{0, 0}}},
    {"osculate, order 3", kParabola, Poly({0, 1}, {0, 0, 1, 1}), {{.5, .5}}, "", kOsculate},
    {"osculate, order 4", kParabola, Poly({0, 1}, {0, 0, 1, 0, 1}), {{.5, .5}}, "", kOsculate},
    {"osculate, order 5", kParabola, Poly({0, 1}, {0, 0, 1, 0, 0, 1}), {{.5, .5}}, "", .07},
    {"inflections along each other", kCubic, Poly({0, 1}, {0, 0, 0, -1}), {{.5, .5}}, "", 6e-3},
    {"smooth continuation", kParabola, "b 1 1 2 3 3 5", {{1, 0}}},
    {"continuation of one curve", Part(kWave, 0, .4), Part(kWave, .4, 1), {{1, 0}}},
    {"parts that share 1e-7", Part(kWave, 0, .4), Part(kWave, .39999999, 1), {{1, 0}}, "", kTouch},
    {"shared start", "b 0 0 1 2 3 3", "b 0 0 2 1 3 -1", {{0, 0}}},
    {"shared ends", "b 0 0 1 2 3 0", "b 3 0 1 -2 0 0", {{0, 1}, {1, 0}}},
    {"shared ends and more", "b 0 0 1 2 2 -2 3 0", "b 0 0 1 -2 2 2 3 0", {{0, 0}, {1, 1}, {.5, .5}}},
    {"starts 5e-7 apart", "b 0 0 1 2 3 3", "b 5e-7 0 2 1 3 -1", {{0, 0}}, "", kTouch},
    {"starts part slowly", "b 0 0 1 0 2 0 3 1", "b 0 0 1 0 2 0 3 2", {{0, 0}}},
    {"ends within epsilon of a crossing", "b 0 0 1e-3 0 2e-3 0", "b .0019994 0 .0019994 5e-4 1e-3 1e-3", {{1, 0}}},
    {"through the joint of one piece", kDrop, "b -1 -.5 0 0 1 .5", {{0, .5}}},
    {"joints of one piece on each other", kDrop, "b 0 0 2 -2 -2 -2 0 0", {{0, 0}}},
    {"across a loop of 16 epsilons", "b 1.6e-5 -1 1.6e-5 1", kTinyLoop, {{.5, .502}, {.5, .498}}},
    {"end on the other", "b 0 0 0 1 0 2", Poly({0, 1}, {0, 0, -1}), {{0, .5}}},
    {"end 5e-7 short", "b 0 5e-7 0 1 0 2", Poly({0, 1}, {0, 0, -1}), {{0, .5}}, "", kTouch},
    {"end 5e-6 short", "b 0 5e-6 0 1 0 2", Poly({0, 1}, {0, 0, -1}), {}},
    {"three by three", Poly({0, 1}, kT3), Poly(kT3, {0, 1}), Grid(3, 3), "", 1e-8},
    {"four by four", Poly({0, 1}, kT4), Poly(kT4, {0, 1}), Grid(4, 4), "", 1e-8},
    {"five by three", Poly({0, 1}, kT5), Poly(kT3, {0, 1}), Grid(5, 3), "", 1e-8},
    {"neighbours .006 apart", kParabola, Poly({0, 1}, {7.2e-5, 0, -1}), {{.503, .503}, {.497, .497}}},
    {"neighbours 1e-4 apart", Poly({0, 1}, {-1e-6, 0, 100}), kStraight, {{.50005, .50005}, {.49995, .49995}}, "", 1e-8},
    {"cusp on a parabola", kCusp, Poly({0, 0, -1}, {0, 1}), {{.5, .5}}, "", 6e-3},
    {"cusp across a parabola", kCusp, kParabola, {{.5, .5}, {1, 1}}, "", 6e-3},
    {"through a double point", kLoop, Poly({.25, 1}, {0, 0, 1}), {{.75, .5}, {.25, .5}, {kLoopAgain, kLoopAgain}}},
    {"double points on each other", kLoop, Poly({.5, 0, -1}, {0, -.25, 0, 1}), {{.25, .25}, {.25, .75}, {.75, .25}, {.75, .75}}, "", kTouch},
    {"same", kWave, kWave, {}, "2222"},
    {"same loop", kLoop, kLoop, {}, "2222"},
    {"same, raised", kParabola, Poly({0, 1}, {0, 0, 1, 0, 0}), {}, "2222"},
    {"same, of degree 12", kTwelfth, Part(kTwelfth, .1, .9), {}, "2222"},
    {"raised to degree 12", kParabola, Poly({0, 1}, {0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), {}, "2222"},
    {"parts of degree 12", Part(kTwelfth, 0, .6), Part(kTwelfth, .3, 1), {}, "2222"},
    {"parts of degree 12 with eleven strands", Part(kStrands, 0, .6), Part(kStrands, .3, 1), {}, "2222"},
    {"5e-7 apart all along", kWave, "b 0 5e-7 2 4.0000005 4 -3.9999995 6 5e-7", {}, "2222", 0, false},
    {"parts", Part(kWave, 0, .6), Part(kWave, .3, 1), {}, "2222"},
    {"part of a loop", kLoop, Part(kLoop, .3, .31), {}, "2222"},
    {"parts, a hundredth together", Part(kWave, 0, .5), Part(kWave, .49, 1), {}, "2222"},
    {"parts, apart", Part(kWave, 0, .5), Part(kWave, .6, 1), {}},
    {"straight, overlapping", "b 0 0 1 0 2 0", "b 1 0 2 0 5 0", {}, "2222"},
    {"straight, end to end", "b 0 0 1 0 2 0", "b 2 0 3 0 5 0", {{1, 0}}},
    {"straight, apart", "b 0 0 1 0 2 0", "b 3 0 4 0 5 0", {}},
    {"parts of a quarter", kQuarter, Part(kQuarter, .2, .7), {}, "2222"},
    {"quarter and circle", kQuarter, kCircle, {}, "2222"},
    {"touches a circle's closing joint", kCircle, "c 1 (b 3 -1 -1 0 3 1)", {{0, .5}}, "", kTouch},
    {"closing joints on each other", kCircle, "B 1 0 2 1 2 -1 1 0 | 0 0 0 .5 1 1 1", {{0, 0}}},
    {"B-splines share a span", "B 0 0 1 2 2 0 3 2 4 0 5 2 6 0 7 9" UNIFORM, "B 0 9 1 9 2 0 3 2 4 0 5 2 6 9 7 9" UNIFORM, {}, "2222"},
    {"B-splines of degree 1", "B 0 0 2 2 | 2 2 5 5", "B 0 2 2 0 | -1 -1 1 1", {{3.5, 0}}},
    {"joint on a joint", "B 0 0 1 0 2 0 4 5 | 2 2 2 3 4 4 4", "B 1.5 -2 1.5 -1 1.5 1 1.5 2 | 0 0 0 1 2 2 2", {{3, 1}}},
    {"corner on a corner", kRoof, "B 0 2 1 1 2 2 | 0 0 1 2 2", {{1, 1}}},
    {"composites", "c .5 2 (b 0 0 2 2)(b 2 2 4 0)", "c 3 (c .5 .5 (l 0 0 1 0)(B 0 1 4 1 | 0 0 1 1))", {{.25, 1.875}, {1.5, 2.625}}},
    {"degree 63", "b 21 -1 21 1", Even('b', 63), {{.5, 1. / 3}}},
    {"two crossings at .8e-4 radians", "b -2 0 2 0", Dip(.8e-4), {{.5, .5}}, "", .006},
    {"at 1.2e-4 radians", "b -2 0 2 0", Dip(1.2e-4), {{.4975, .495}, {.5025, .505}}, "", 1e-6},
    {"through the centre of a star", "b -1 0 1 0", Star(), OnAllSpokes()},
    {"5e-7 beyond the end of a nested composite", kNested, "b 1.0000005 -1 1.0000005 1", {{2, .5}}, "", kTouch, false},
    {"5e-6 beyond it", kNested, "b 1.000005 -1 1.000005 1", {}},
    {"5e-7 before its start", kNested, "b -1.0000005 -1 -1.0000005 1", {{0, .5}}, "", kTouch, false},
    {"handles of length 0", "b 0 0 0 0 1 1 1 1", "b 0 1 0 1 1 0 1 0", {{.5, .5}}},
    {"handles of length 1e-11", "b 0 0 0 1e-11 1 1 1 1", "b 0 1 0 1 1 1e-11 1 0", {{.5, .5}}},
};
// clang-format on

// Chebyshev polynomials: y = T_m(x) and x = T_n(y) meet where T_mn(x) = x, at the cosines of
// 2 pi k / (mn - 1) and 2 pi k / (mn + 1).
std::vector<Hit> Grid(int m, int n) {
  std::vector<Hit> hits;
  for (const int parts : {m * n - 1, m * n + 1}) {
    for (int k = parts == m * n - 1 ? 0 : 1; 2 * k <= parts; ++k) {
      if (parts == m * n + 1 && 2 * k == parts) break;
      const double angle = 2 * kPi * k / parts;
      hits.push_back({(1 + std::cos(angle)) / 2, (1 + std::cos(m * angle)) / 2});
    }
  }
  return hits;
}

TEST(IntersectFreeForm, Lines) {
  for (const Case& row : kLines) CaseCheck(row).Run();
}

TEST(IntersectFreeForm, Arcs) {
  for (const Case& row : kArcs) CaseCheck(row).Run();
}

TEST(IntersectFreeForm, Pairs) {
  for (const Case& row : kPairs) CaseCheck(row).Run();
}

// A curve of size 1000 slid by a thousandth crosses itself where its tangent has the direction of
// the slide, at an angle of about a millionth, and nowhere else.
TEST(IntersectFreeForm, CloselyAlongside) {
  Rounds(100, [](Random& random, int round) {
    const double angle = random.Uniform(-kPi, kPi);
    const LongPoint along{std::cos(angle), std::sin(angle)};
    const int degree = 2 + round % 3;
    Numbers here, there;
    for (int i = 0; i <= degree; ++i) {
      const Point p = random.Planar(500);
      here.insert(here.end(), {p[0], p[1]});
      there.insert(there.end(), {p[0] + 1e-3 * std::cos(angle), p[1] + 1e-3 * std::sin(angle)});
    }
    const Owned a = Make(Text("b", here)), b = Make(Text("b", there));
    const Oracle oracle(*a);
    const auto across = [&](int i) {
      const LongPoint d = oracle.JetAt<4>(i / 4000.0L).Derivative(1);
      return d.x * along.y - d.y * along.x;
    };
    std::vector<double> wanted;
    for (int i = 1; i <= 4000; ++i)
      if ((across(i) > 0) != (across(i - 1) > 0)) wanted.push_back((i - .5) / 4000);
    Globals g;
    std::vector<double> found;
    for (const Hit& hit : Intersect(*a, *b, 3, g).hits)
      if (std::fabs(hit.a - hit.b) < .01) found.push_back(hit.a);  // not where it crosses its loop
    ASSERT_EQ(found.size(), wanted.size());
    for (std::size_t i = 0; i < wanted.size(); ++i) EXPECT_NEAR(found[i], wanted[i], 2e-3);
  });
}

// Of the parameters 0 and 1 of a closing joint the first is listed, on either side of a call.
TEST(IntersectFreeForm, ClosingJointsCountAtTheStart) {
  const std::string closed[] = {kDrop,
                                "r 0 0 1 2 2 2 -2 2 .5 0 0 1",
                                "B 0 0 2 2 -2 2 0 0 | 0 0 0 0 1 1 1 1",
                                "B 0 0 2 2 0 3 -2 2 0 0 | 0 0 0 0 1 2 2 2 2",
                                "R 0 0 1 2 2 2 -2 2 .5 0 0 1 | 0 0 0 0 1 1 1 1",
                                "c 4 (" + kDrop + ")",
                                "c 1 2 (b 0 0 1 1 0 2)(b 0 2 -1 1 0 0)"};
  for (const std::string& text : closed)
    for (const char* other : {"l -1 -.5 1 .5", "l -1 0 1 0", "l 1 -7e-7 -1 -7e-7", "a 0 -1 1 1 1.5",
                              "b -1 -.5 0 0 1 .5", "b -1 0 0 0 1 0"})
      for (const bool swap : {false, true}) {
        const Owned a = Make(text), b = Make(other);
        Globals g;
        const auto hits = (swap ? Intersect(*b, *a, 3, g) : Intersect(*a, *b, 3, g)).hits;
        ASSERT_EQ(hits.size(), 1U) << text << '\n' << other << ' ' << swap;
        EXPECT_NEAR(swap ? hits[0].b : hits[0].a, 0, 1e-6) << text << '\n' << other << ' ' << swap;
      }
}

}  // namespace
}  // namespace kurvo_test
