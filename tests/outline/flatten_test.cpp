// Flattening: every point of the chain near its chord, joints are vertices, no more than needed.
#include <kurvo_outline.h>

#include "outline/moved.h"
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

struct Flat {
  Flat(const Chain& chain, double deviation, Globals& g) {
    Coord* points = nullptr;
    KurvoPlace* places = nullptr;
    made = KurvoChainFlatten(chain.get(), deviation, &points, &places, &count, &g);
    for (int i = 0; i < count; ++i) vertices.push_back({points[i][0], points[i][1], points[i][2]});
    if (count) marks.assign(places, places + count);
    KurvoFree(points);
    KurvoFree(places);
  }
  int made;
  int32_t count = -1;
  std::vector<Point> vertices;
  std::vector<KurvoPlace> marks;
};

Wide ToSegment(const LongPoint& p, const Point& a, const Point& b) {
  const Wide x = L(b[0]) - a[0], y = L(b[1]) - a[1], length = std::hypot(x, y);
  if (length == 0) return Gap(p, {a[0], a[1]});
  const Wide along = ((p.x - a[0]) * x + (p.y - a[1]) * y) / length;
  const Wide across = ((p.x - a[0]) * y - (p.y - a[1]) * x) / length;
  return std::hypot(across, along < 0 ? along : std::max(along - length, Wide{0}));
}

// The farthest that a point of the chain is from the chord of its stretch, by 32 points of each.
double Worst(const Chain& chain, const Flat& flat) {
  Wide worst = 0;
  std::vector<Oracle> curves;
  for (const Curve& curve : chain) curves.emplace_back(curve);
  for (std::size_t i = 0; i + 1 < flat.marks.size(); ++i) {
    const KurvoPlace &from = flat.marks[i], &to = flat.marks[i + 1];
    const Oracle& curve = curves[static_cast<std::size_t>(from.index)];
    const Wide last = to.index == from.index ? L(to.t) : curve.end();
    EXPECT_LE(from.t, last);
    for (int k = 1; k < 32; ++k) {
      const LongPoint p = curve.PointAt(from.t + (last - from.t) * k / 32, Side::kBehind);
      worst = std::max(worst, ToSegment(p, flat.vertices[i], flat.vertices[i + 1]));
    }
  }
  return static_cast<double>(worst);
}

// Places are on the chain, and every joint is one of them.
void ExpectPlaces(const Chain& chain, const Flat& flat, double size) {
  int joints = 0;
  for (std::size_t i = 0; i < flat.marks.size(); ++i) {
    const KurvoPlace& place = flat.marks[i];
    const Oracle curve(chain[place.index]);
    const Point& p = flat.vertices[i];
    EXPECT_LE(curve.DistanceAt(place.t, p), 1e-14 * size + 1e-15 * std::hypot(p[0], p[1]));
    EXPECT_TRUE(std::equal(p.begin(), p.end(), place.point));
    joints += static_cast<Wide>(place.t) == curve.start();
  }
  EXPECT_GE(joints, chain.count());
}

Chain RandomChain(Random& random, int count) {
  std::vector<Owned> curves;
  XY at = RandomPlace(random);
  for (int i = 0; i < count; ++i) {
    const XY next = RandomPlace(random);
    curves.push_back(RandomBetween(random, at, next));
    at = next;
  }
  return Chain(std::move(curves));
}

TEST(ChainFlatten, KeepsTheDeviationAndReachesAQuarter) {
  Globals g;
  Rounds(Cases(150), [&](Random& random, int round) {
    const Chain chain = RandomChain(random, RandomInt(random, 1, 3));
    const double deviation = std::pow(10, random.Uniform(-5, 0.3));
    const Flat flat(chain, deviation, g);
    ASSERT_EQ(flat.made, 1) << KurvoErrGet(&g);
    const double worst = Worst(chain, flat);
    EXPECT_LE(worst, deviation * (1 + 1e-9));
    // A quarter, where there are vertices besides joints and knots.
    const Numbers knots = IsSpline(chain[0].type) ? Knots(chain[0]) : Numbers();
    const auto is_own = [&](const KurvoPlace& place) {
      return place.t != 0 && place.t != 1 &&
             std::find(knots.begin(), knots.end(), place.t) == knots.end();
    };
    if (chain.count() == 1 && chain[0].type != CV_SEGCV &&
        std::any_of(flat.marks.begin(), flat.marks.end(), is_own)) {
      EXPECT_GE(worst, deviation / 4) << chain[0].type << ' ' << flat.count;
    }
    if (round < 60) ExpectPlaces(chain, flat, 20);
  });
}

TEST(ChainFlatten, CountsVertices) {
  struct Row {
    const char* chain;
    double deviation;
    int least, most;  // vertices
  };
  // clang-format off
  const Row rows[] = {
      {"(l 0 0 9 9)",                                        1e-9,  2,  2},
      {"(l 0 0 9 9)(l 9 9 0 9)(l 0 9 0 0)",                  1e-9,  4,  4},
      {"(b 3 3)",                                            1e-3,  2,  2},
      {"(a 0 0 1 0 3.1415926535897931)",                     1,     2,  2},
      {"(a 0 0 1 0 3.1415926535897931)",                     .2929, 3,  3},
      {"(a 0 0 1 0 -3.1415926535897931)",                    .292,  4,  4},
      {"(b 0 0 1 0 3 0)",                                    1e-6,  2,  2},
      {"(b 0 0 1 0 1 0 2 0 3 0)",                            1e-6,  2,  2},
      {"(b 0 0 2 0 -1 0 1 0)",                               1e-3,  2,  9},   // there and back
      {"(b 0 0 1 1 2 0)",                                    .5,    2,  2},
      {"(b 0 0 1 1 2 0)",                                    .49,   3,  3},
      {"(b 0 0 4 4 0 4 4 0)",                                1e-2,  9,  32},  // near a cusp
      {"(b 0 0 3 3 0 3 3 0)",                                1e-2,  9,  28},  // a cusp
      {"(b 0 0 1 3 -1 3 0 0)",                               1e-2,  9,  22},  // closed
      {"(b 0 0 0 0 9 0 9 9)",                                1e-2,  9,  20},  // no handle
      {"(b 0 0 0 0 9 9 9 9)",                                1e-2,  2,  2},
      {"(r 0 0 1 1 1 1e-6 2 0 1)",                           1e-3,  2,  3},
      {"(r 0 0 1 1 1 1e6 2 0 1)",                            1e-3,  3,  40},
      {"(r 0 0 1 1 1 -.5 2 0 1)",                            1e-3,  20, 60},
      {"(b^63)",                                             1e-2,  3,  200},
      {"(B 0 0 1 1 2 0 3 1 4 0 | 0 0 0 1 2 3 3 3)",          5,     2,  2},   // across knots
      {"(B 0 0 1 1 2 0 3 1 4 0 | 0 0 0 1 1 2 2 2)",          1e-1,  4,  9},
      {"(c .5 .5 (l 0 0 1 0)(c .5 .5 (l 1 0 1 1)(l 1 1 0 1)))", 1e-3, 4, 4},
  };
  // clang-format on
  for (const Row& row : rows) {
    for (const Move& move : kMoves) {
      SCOPED_TRACE(testing::Message() << row.chain << ' ' << move.scale << ' ' << move.shift);
      Globals g(EpsilonOf(move));
      const Chain chain = Moved(row.chain, move);
      const Flat flat(chain, row.deviation * move.scale, g);
      ASSERT_EQ(flat.made, 1) << KurvoErrGet(&g);
      EXPECT_GE(flat.count, row.least);
      EXPECT_LE(flat.count, row.most);
      const double rounding = 1e-15 * (move.scale + move.shift);
      EXPECT_LE(Worst(chain, flat), row.deviation * move.scale * (1 + 1e-9) + 4 * rounding);
    }
  }
}

TEST(ChainFlatten, ClosesToTheBit) {
  Globals g;
  for (const char* text : {"(b 0 0 1 3 -1 3 1e-7 0)", "(l 0 0 1 0)(l 1 0 0 1e-7)",
                           "(c .5 .5 (b 0 0 3 1 3 0)(l 3 0 0 0))"}) {
    const Chain chain(text);
    const Flat flat(chain, 1e-8, g);
    ASSERT_EQ(flat.made, 1);
    EXPECT_EQ(flat.vertices.front(), flat.vertices.back());
    EXPECT_LE(Worst(chain, flat), 1.001e-8);
  }
  Chain circle("(a 1e3 .3 .7 1 2)");
  auto& arc = *static_cast<KurvoArc*>(circle[0].data);
  std::copy(arc.start, arc.start + 3, arc.end);
  const Flat flat(circle, 1e-4, g);
  ASSERT_EQ(flat.count, 1 + std::ceil(kPiL / std::acos(1 - 1e-4L / .7L)));
  EXPECT_EQ(flat.vertices.front(), flat.vertices.back());
}

TEST(ChainFlatten, EndsForAnyDeviation) {
  Globals g;
  const Chain chain("(b 0 0 .01 .01 2 0)(a 1 0 1 0 .01)");
  const Flat fine(chain, 1e-300, g);  // no finer than rounding
  EXPECT_EQ(fine.made, 1);
  EXPECT_LE(fine.count, 1 << 25);
  const Flat coarse(chain, 1e300, g);
  EXPECT_EQ(coarse.count, 3);
  const Flat none(Chain(), 1, g);
  EXPECT_EQ(none.made, 1);
  EXPECT_EQ(none.count, 0);
}

TEST(ChainFlatten, Refuses) {
  struct Row {
    const char* chain;
    double deviation;
    int code;
  };
  const Row rows[] = {{"(l 0 0 1 1)", 0, KURVO_ERR_TOLERANCE},
                      {"(l 0 0 1 1)", -1, KURVO_ERR_TOLERANCE},
                      {"(l 0 0 1 1)", kNaN, KURVO_ERR_TOLERANCE},
                      {"(l 0 0 1 1)", kInfinity, KURVO_ERR_NOT_FINITE},
                      {"(e)", 1, KURVO_ERR_CURVE},
                      {"(l 0 0 1e308 1)", 1, KURVO_ERR_NOT_FINITE},
                      {"(r 0 0 1 1 1 -2 2 0 1)", 1, KURVO_ERR_WEIGHT},
                      {"(l 0 0 1 1)(l 1 1.1 2 2)", 1, KURVO_ERR_CHAIN_ENDS}};
  for (const Row& row : rows) {
    Globals g;
    const Flat flat(Chain(row.chain), row.deviation, g);
    EXPECT_EQ(flat.made, 0) << row.chain;
    EXPECT_EQ(KurvoErrGet(&g), row.code) << row.chain;
    EXPECT_EQ(flat.count, 0);
  }
  Globals g;
  int32_t count;
  EXPECT_EQ(KurvoChainFlatten(nullptr, 1, nullptr, nullptr, &count, &g), 0);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_CURVE);
}

}  // namespace
}  // namespace kurvo_test
