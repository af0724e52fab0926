// Regions grown and shrunk, against areas in closed form and by the laws of offsets.
#include "outline/offsets.h"

namespace kurvo_test {
namespace {

const char kSquare[] = "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)";
const char kBackwards[] = "(l 0 0 0 4)(l 0 4 4 4)(l 4 4 4 0)(l 4 0 0 0)";
const char kHole[] =
    "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0);(l 1 1 1 3)(l 1 3 3 3)(l 3 3 3 1)(l 3 1 1 1)";
const char kEll[] = "(l 0 0 4 0)(l 4 0 4 2)(l 4 2 2 2)(l 2 2 2 4)(l 2 4 0 4)(l 0 4 0 0)";
const char kTriangle[] = "(l 0 0 4 0)(l 4 0 0 3)(l 0 3 0 0)";
const char kCircle[] = "(a 0 0 2 0 6.283185307179586)";
const char kWaist[] =  // two squares and a slot of width 1 between them
    "(l 0 0 2 0)(l 2 0 2 1)(l 2 1 4 1)(l 4 1 4 0)(l 4 0 6 0)(l 6 0 6 3)(l 6 3 4 3)(l 4 3 4 2)(l 4 "
    "2 2 2)(l 2 2 2 3)(l 2 3 0 3)(l 0 3 0 0)";
const char kLens[] =
    "(a 0 -1 1.4142135623730951 0.7853981633974483 1.5707963267948966)"
    "(a 0 1 1.4142135623730951 -2.356194490192345 1.5707963267948966)";

TEST(RegionOffset, AreasInClosedForm) {
  struct Row {
    const char* region;
    double distance;
    int join;
    double limit;
    int loops;
    double area;
  };
  const double legs = 3 + 4 + 5;
  const double bevelled = 6 + legs / 2 + .125 * (1 + .8 + .6);  // sines of the turns
  // clang-format off
  const Row rows[] = {
      {kSquare, 1, KURVO_JOIN_ROUND, 0, 1, 32 + kPi},
      {kBackwards, 1, KURVO_JOIN_ROUND, 0, 1, 32 + kPi},
      {kSquare, 1, KURVO_JOIN_MITER, 0, 1, 36},
      {kSquare, 1, KURVO_JOIN_MITER, 1.4, 1, 34},
      {kSquare, 1, KURVO_JOIN_BEVEL, 0, 1, 34},
      {kSquare, -1, KURVO_JOIN_ROUND, 0, 1, 4},
      {kSquare, -2.5, KURVO_JOIN_ROUND, 0, 0, 0},
      {kSquare, -1e9, KURVO_JOIN_ROUND, 0, 0, 0},
      {kSquare, 4000, KURVO_JOIN_ROUND, 0, 1, 16 + 16 * 4000. + kPi * 16e6},
      {kHole, .5, KURVO_JOIN_ROUND, 0, 2, 24 + kPi / 4 - 1},
      {kHole, 1.5, KURVO_JOIN_MITER, 0, 1, 49},
      {kHole, -.25, KURVO_JOIN_MITER, 0, 2, 3.5 * 3.5 - 2.5 * 2.5},
      {kHole, -.25, KURVO_JOIN_ROUND, 0, 2, 3.5 * 3.5 - (4 + 2 + kPi / 16)},
      {kHole, -.6, KURVO_JOIN_ROUND, 0, 0, 0},
      {kEll, 1, KURVO_JOIN_ROUND, 0, 1, 12 + 16 + 5 * kPi / 4 - 1},
      {kEll, -.5, KURVO_JOIN_ROUND, 0, 1, 12 - 8 + 5 * .25 - kPi / 16},
      {kTriangle, .5, KURVO_JOIN_ROUND, 0, 1, 6 + legs / 2 + kPi / 4},
      {kTriangle, .5, KURVO_JOIN_MITER, 9, 1, 13.5},  // similar, inradius 1.5 of 1
      {kTriangle, -.5, KURVO_JOIN_BEVEL, 0, 1, 1.5},
      {kCircle, 1, KURVO_JOIN_ROUND, 0, 1, 9 * kPi},
      {kCircle, -1, KURVO_JOIN_ROUND, 0, 1, kPi},
      {kCircle, -2.5, KURVO_JOIN_ROUND, 0, 0, 0},
      {kWaist, -.6, KURVO_JOIN_MITER, 0, 2, 2 * .8 * 1.8},
      {kWaist, .5, KURVO_JOIN_MITER, 0, 1, 3 * 4 * 2 + 2},
      {kWaist, 1.5, KURVO_JOIN_MITER, 0, 1, 9 * 6},
      {kLens, .5, KURVO_JOIN_ROUND, 0, 1, kPi - 2 + std::sqrt(.5) * kPi + kPi / 4},
      {"(l 0 0 4 0)(l 4 0 0 0)", 1, KURVO_JOIN_ROUND, 0, 0, 0},
      // Sharp corners within a composite and at a knot of a spline are corners too.
      {"(c .5 .5 (l 0 3 0 0)(l 0 0 4 0))(l 4 0 0 3)", .5, KURVO_JOIN_BEVEL, 0, 1, bevelled},
      {"(c .25 .75 (l 4 0 0 3)(l 0 3 0 0))(l 0 0 4 0)", .5, KURVO_JOIN_MITER, 1, 1, bevelled},
      {"(B 0 0 4 0 0 3 0 0 | 0 0 1 2 3 3)", .5, KURVO_JOIN_BEVEL, 0, 1, bevelled},
  };
  // clang-format on
  for (const Row& row : rows) {
    KurvoOptions options = OptionsOf();
    options.join = row.join;
    options.miter_limit = row.limit;
    const Offset offset = OffsetOf(Region(row.region), row.distance, options);
    SCOPED_TRACE(std::string(row.region) + " by " + std::to_string(row.distance) + " join " +
                 std::to_string(row.join));
    EXPECT_EQ(offset.code, 0);
    EXPECT_EQ(offset.region->count, row.loops);
    EXPECT_NEAR(AreaOfLoops(*offset.region), row.area, 1e-7 * std::max(1.0, row.area));
  }
}

void ExpectAlongside(const Curve& curve, const Curve& source, const KurvoOrigin& origin,
                     double distance) {
  EXPECT_EQ(curve.attr, source.attr);
  for (const double share : {0., .3, 1.}) {
    const Point p = PointAt(curve, share);
    const Point q = PointAt(source, origin.from + share * (origin.to - origin.from));
    EXPECT_NEAR(std::hypot(p[0] - q[0], p[1] - q[1]), distance, 1e-8);
  }
}

// Teeth whose strips are put together by runs, whichever way they go around.
TEST(RegionOffset, OriginsOfRoughLoops) {
  Random random;
  std::vector<XY> points;
  for (int i = 0; i < 200; ++i) {
    const double angle = kPi * i / 100, r = random.Uniform(2, 6);
    points.push_back({r * std::cos(angle), r * std::sin(angle)});
  }
  for (const int join : {KURVO_JOIN_MITER, KURVO_JOIN_BEVEL, KURVO_JOIN_MITER}) {
    std::reverse(points.begin(), points.end());
    std::vector<Owned> lines;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const XY a = points[i], b = points[(i + 1) % points.size()];
      lines.push_back(Line(a.x, a.y, b.x, b.y));
      lines.back()->attr = static_cast<int32_t>(i) + 1;
    }
    Region region;
    region.Add(Chain(std::move(lines)), 1e-6);
    KurvoOptions options = OptionsOf();
    options.join = join;
    options.miter_limit = 1.05;  // longer ones would cover all sides
    const Offset offset = OffsetOf(region, 9, options);
    const KurvoOrigin* origin = offset.region->origins;
    int sides = 0;
    ForEachCurve(*offset.region, [&](const Curve& curve) {
      if (origin->kind == KURVO_ORIGIN_OFFSET) {
        ++sides;
        ExpectAlongside(curve, region->loops[0].curves[origin->curve], *origin, 9);
      } else {
        EXPECT_EQ(origin->kind, KURVO_ORIGIN_JOIN);
      }
      ++origin;
    });
    EXPECT_GT(sides, 4);
  }
}

TEST(RegionOffset, OriginsAndAttributes) {
  const char clover[] =  // arcs of 150 degrees that meet at inner corners of 120
      "(a 0 -.7320508075688772 1.035276180410083 -2.8797932657906435 2.6179938779914944)"
      "(a .7320508075688772 0 1.035276180410083 -1.308996938995747 2.6179938779914944)"
      "(a 0 .7320508075688772 1.035276180410083 .2617993877991494 2.6179938779914944)"
      "(a -.7320508075688772 0 1.035276180410083 1.832595714594046 2.6179938779914944)";
  const struct {
    const char* region;
    int loops, joins;
  } rows[] = {{kHole, 2, 4}, {clover, 1, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.region);
    Region region(row.region);
    for (int i = 0; i < row.loops; ++i)
      for (int k = 0; k < 4; ++k) region->loops[i].curves[k].attr = 10 * i + k + 1;
    const Offset offset = OffsetOf(region, .25, OptionsOf());
    ASSERT_EQ(offset.region->count, row.loops);
    const KurvoOrigin* origin = offset.region->origins;
    ASSERT_NE(origin, nullptr);
    int joins = 0;
    for (int i = 0; i < row.loops; ++i)
      for (int k = 0; k < offset.region->loops[i].count; ++k, ++origin) {
        const Curve& curve = offset.region->loops[i].curves[k];
        EXPECT_EQ(origin->loop, i);
        if (origin->kind == KURVO_ORIGIN_JOIN) {
          ++joins;
          EXPECT_EQ(curve.attr, 0);
          EXPECT_EQ(origin->from, origin->to);
          continue;
        }
        EXPECT_EQ(origin->kind, KURVO_ORIGIN_OFFSET);
        EXPECT_EQ(curve.attr, 10 * i + origin->curve + 1);
        ExpectAlongside(curve, region->loops[i].curves[origin->curve], *origin, .25);
      }
    EXPECT_EQ(joins, row.joins);
  }
}

TEST(RegionOffset, CubicsAreFew) {
  struct Row {
    const char* region;
    int most, most_coarse;  // at 1e-3 and at 0.1
  };
  const Row rows[] = {
      // A letter of four-point curves, size 1000, six of them: quarters of ellipses most.
      {"(b 412 118 380 40 310 -12 225 -12)(b 225 -12 140 -12 30 80 30 225)(b 30 225 30 370 110 482 "
       "232 482)(b 232 482 354 482 415 395 415 262)(l 415 262 415 240)(l 415 240 128 240)(b 128 "
       "240 "
       "130 120 178 48 258 48)(b 258 48 315 48 358 78 388 132)(l 388 132 412 118)",
       12, 6},
      // An ellipse of four conics.
      {"(r 500 0 1 500 250 .7071067811865476 0 250 1)(r 0 250 1 -500 250 .7071067811865476 -500 0 "
       "1)(r -500 0 1 -500 -250 .7071067811865476 0 -250 1)(r 0 -250 1 500 -250 .7071067811865476 "
       "500 0 1)",
       22, 12}};
  for (const Row& row : rows)
    for (const auto& [distance, tol] :
         {std::pair(10., 1e-3), std::pair(-10., 1e-3), std::pair(10., 0.1), std::pair(-10., 0.1)}) {
      const Offset offset = OffsetOf(Region(row.region), distance, OptionsOf(tol));
      int cubics = 0;
      ASSERT_EQ(offset.region->count, 1);
      ForEachCurve(*offset.region, [&](const Curve& curve) { cubics += curve.type == CV_BEZIER; });
      EXPECT_LE(cubics, tol < 0.1 ? row.most : row.most_coarse) << distance;
      EXPECT_LE(offset.report.moved, tol);
    }
}

TEST(RegionOffset, OutwardTwiceIsOutwardOnce) {
  const KurvoOptions options = OptionsOf(1e-6);
  for (const char* text : {kSquare, kHole, kEll, kLens}) {
    const Offset once = OffsetOf(Region(text), .4, options);
    const Offset twice = OffsetOf(OffsetOf(Region(text), .15, options).region, .25, options);
    EXPECT_NEAR(AreaOfLoops(*once.region), AreaOfLoops(*twice.region), 1e-4) << text;
  }
}

double LengthOf(const KurvoRegion& region) {
  Globals g;
  KurvoMoments moments = {};
  EXPECT_EQ(KurvoRegionMoments(&region, &moments, &g), 1);
  return moments.length;
}

// What is left of one region without another, as an area.
double Without(const Region& a, const Region& b) {
  Globals g;
  Region rest;
  EXPECT_EQ(
      KurvoRegionCombine(KURVO_DIFFERENCE, a.get(), b.get(), nullptr, rest.get(), nullptr, &g), 1);
  return AreaOfLoops(*rest);
}

// In and out again loses what is narrow, out and in again fills it; out by both ways is out by
// their sum; a convex region grows by its length times the distance and a disc (Steiner).
TEST(RegionOffset, OpeningClosingAndSteinersFormula) {
  constexpr double kTol = 1e-5;
  const KurvoOptions options = OptionsOf(kTol);
  Random random;
  for (int round = 0; round < Cases(12); ++round) {
    SCOPED_TRACE(round);
    const Star star(random, kTol);
    const Region& region = star.simple;
    const double d = random.Uniform(.05, 1.5), more = random.Uniform(.05, 1.5);
    const auto by = [&](const Region& a, double distance) {
      return OffsetOf(a, distance, options).region;
    };
    const double slack = 20 * kTol * LengthOf(*by(region, d));
    EXPECT_LE(Without(by(by(region, -d), d), region), slack) << "opening";
    EXPECT_LE(Without(region, by(by(region, d), -d)), slack) << "closing";
    const Region once = by(region, d + more), twice = by(by(region, d), more);
    EXPECT_LE(Without(once, twice) + Without(twice, once), slack) << "sum";
  }
  for (const char* convex : {kSquare, kTriangle, kCircle, kLens, "(b 0 0 4 0 4 3 0 3)(l 0 3 0 0)"})
    for (const double d : {.01, .7, 30.}) {
      const Region region(convex);
      const double want = AreaOfLoops(*region) + d * LengthOf(*region) + kPi * d * d;
      EXPECT_NEAR(AreaOfLoops(*OffsetOf(region, d, options).region), want,
                  10 * kTol * (LengthOf(*region) + 2 * kPi * d))
          << convex << " by " << d;
    }
}

TEST(RegionOffset, PowersOfTwoChangeNoBits) {
  const Offset plain = OffsetOf(Region(kEll), .3, OptionsOf());
  const Offset larger = OffsetOf(
      Region("(l 0 0 64 0)(l 64 0 64 32)(l 64 32 32 32)(l 32 32 32 64)(l 32 64 0 64)(l 0 64 0 0)"),
      16 * .3, OptionsOf());
  ASSERT_EQ(plain.region->count, larger.region->count);
  ASSERT_EQ(plain.region->loops[0].count, larger.region->loops[0].count);
  for (int k = 0; k < plain.region->loops[0].count; ++k) {
    Numbers small = AllNumbers(plain.region->loops[0].curves[k]);
    const Numbers large = AllNumbers(larger.region->loops[0].curves[k]);
    if (plain.region->loops[0].curves[k].type == CV_ARC) continue;  // whose normals do not grow
    for (double& number : small) number *= 16;
    EXPECT_EQ(small, large) << k;
  }
}

TEST(RegionOffset, Refusals) {
  struct Row {
    double distance;
    void (*set)(KurvoOptions&);
    int code;
  };
  // clang-format off
  const Row rows[] = {
      {NAN, [](KurvoOptions&) {}, KURVO_ERR_NOT_FINITE},
      {kInfinity, [](KurvoOptions&) {}, KURVO_ERR_NOT_FINITE},
      {1, [](KurvoOptions& o) { o.join = 3; }, KURVO_ERR_OPTION},
      {1, [](KurvoOptions& o) { o.join = -1; }, KURVO_ERR_OPTION},
      {1, [](KurvoOptions& o) { o.miter_limit = .5; }, KURVO_ERR_RANGE},
      {1, [](KurvoOptions& o) { o.miter_limit = kInfinity; }, KURVO_ERR_NOT_FINITE},
      {1, [](KurvoOptions& o) { o.tol = -1; }, KURVO_ERR_TOLERANCE},
      {1, [](KurvoOptions& o) { o.flags = 2; }, KURVO_ERR_OPTION},
      {1, [](KurvoOptions& o) { o.proceed = [](double, void*) { return 0; }; }, KURVO_ERR_STOPPED},
      {1, [](KurvoOptions& o) { o.proceed = [](double done, void*) { return done < .5 ? 1 : 0; }; }, KURVO_ERR_STOPPED},
  };
  // clang-format on
  for (const Row& row : rows) {
    KurvoOptions options = OptionsOf();
    row.set(options);
    const Offset offset = OffsetOf(Region(kSquare), row.distance, options);
    EXPECT_EQ(offset.code, row.code) << &row - rows;
    EXPECT_EQ(offset.region->count, 0);
  }
  Globals g;
  Region square(kSquare);
  EXPECT_FALSE(KurvoRegionOffset(square.get(), 1, nullptr, square.get(), nullptr, &g));
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_OPTION);
  EXPECT_EQ(square->count, 1);
}

TEST(RegionOffset, ProceedIsToldOfProgress) {
  KurvoOptions options = OptionsOf();
  std::vector<double> told;
  options.user = &told;
  options.proceed = [](double done, void* user) {
    static_cast<std::vector<double>*>(user)->push_back(done);
    return 1;
  };
  EXPECT_EQ(OffsetOf(Region(kHole), .1, options).code, 0);
  ASSERT_FALSE(told.empty());
  EXPECT_TRUE(std::is_sorted(told.begin(), told.end()));
  EXPECT_GE(told.front(), 0);
  EXPECT_LE(told.back(), 1);
}

}  // namespace
}  // namespace kurvo_test
