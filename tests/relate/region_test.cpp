// Points on, inside and outside closed chains.
#include <cstring>

#include "support/generator.h"

namespace kurvo_test {
namespace {

constexpr uint32_t kOn = KURVO_REGION_ON, kIn = KURVO_REGION_INSIDE, kOut = KURVO_REGION_OUTSIDE;

#define PI "3.14159265358979323846"

// The chain read both ways, from every one of its curves on, and as one composite.
template <class Check>
void AllWays(const std::string& text, const Check& check) {
  Globals g;
  for (const bool reversed : {false, true}) {
    Chain chain(text);
    if (reversed) std::reverse(chain.begin(), chain.end());
    for (Curve& cv : chain)
      if (reversed) KurvocvChgOrder(&cv, &g);
    std::vector<Owned> pieces, whole;
    for (int i = 0; i < chain.count(); ++i) {
      std::rotate(chain.begin(), chain.begin() + 1, chain.end());
      check(chain);
    }
    for (const Curve& cv : chain) pieces.push_back(Copy(cv));
    const Numbers widths(pieces.size(), .25);
    whole.push_back(MakeComposite(widths, std::move(pieces)));
    check(Chain(std::move(whole)));
  }
}

// Each row's points share a height with a vertex, a horizontal run or a turning point.
TEST(PntBoundForPlane, Table) {
  const struct {
    const char* chain;
    std::vector<XY> inside, outside, on;
  } rows[] = {
      // clang-format off
      {"(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)", {{2, 2}, {1e-5, 2}, {3.99999, 3.99999}}, {{-1, 0}, {5, 0}, {5, 4}, {-1e-5, 4}, {2, 4.00001}, {2, 9}}, {{0, 0}, {4, 4}, {2, 0}, {-5e-7, 2}, {4 + 5e-7, 4 + 5e-7}}},
      // a diamond, then a W: the ray runs through tips and valleys
      {"(l 2 0 0 2)(l 0 2 -2 0)(l -2 0 0 -2)(l 0 -2 2 0)", {{0, 0}, {-1, 0}, {1.9999, 0}}, {{3, 0}, {-3, 0}, {1, 2}, {-1, -2}}, {{2, 0}, {1, 1}}},
      {"(l 0 0 8 0)(l 8 0 8 4)(l 8 4 6 2)(l 6 2 4 4)(l 4 4 2 2)(l 2 2 0 4)(l 0 4 0 0)", {{1, 2}, {4, 2}, {7, 2}, {.00001, 2}}, {{2, 4}, {6, 4}, {2, 3}, {6, 2.1}, {-1, 2}, {9, 2}, {-1, 4}, {9, 4}, {-1, 0}}, {{2, 2}, {4, 4}}},
      // steps along the ray, with the interior above, below and on both sides
      {"(l 0 0 2 0)(l 2 0 2 -1)(l 2 -1 4 -1)(l 4 -1 4 0)(l 4 0 6 0)(l 6 0 6 1)(l 6 1 5 1)(l 5 1 5 2)(l 5 2 1 2)(l 1 2 1 1)(l 1 1 0 1)(l 0 1 0 0)", {{3, 0}, {.5, .5}, {3, 1}, {2.5, -.5}}, {{-1, 0}, {7, 0}, {1, -1}, {5, -1}, {.5, 2}, {-1, 1}, {7, 1}, {5.5, 1.5}}, {{1, 0}, {5, 0}, {.5, 1}}},
      {"(a 0 0 2 0 " PI ")(a 0 0 2 " PI " " PI ")", {{0, 0}, {1.9999, 0}, {-1.9999, 0}, {0, 1.9999}, {0, -1.9999}}, {{3, 0}, {-3, 0}, {1, 2}, {-1, 2}, {1, -2}, {1.5, 1.5}}, {{2, 0}, {0, 2}, {0, 2 + 5e-7}, {1.2, 1.6}}},
      // arcs only, of more than half a turn: two lenses side by side around one waist
      {"(a 0 0 2 .5 5.28318530717958647692)(a 3.5103302475614909 0 2 3.64159265358979323846 5.28318530717958647692)", {{0, 0}, {3.5, 0}, {1.7551651237807455, 0}, {-1.9, 0}}, {{1.755, 1.5}, {1.755, 2}, {-3, 0}, {6, 0}}, {{-2, 0}, {0, 2}}},
      // a drop of one curve, and a lens of two whose turning points lie on the ray
      {"(b 0 0 3 0 0 3 0 0)", {{.5, .5}, {1, .4}}, {{1.5, 1.5}, {-1, 0}, {1, 0}}, {{0, 0}}},
      {"(b -2 0 0 -3 2 0)(b 2 0 0 3 -2 0)", {{0, 0}, {0, 1.4999}, {0, -1.4999}, {1.9, 0}}, {{1, 1.5}, {-1, 1.5}, {0, 1.50001}, {1, -1.5}, {-3, 0}, {3, 0}}, {{0, 1.5}, {-2, 0}}},
      {"(r 2 0 1 2 4 .5 -2 0 1)(R -2 0 1 -2 -4 .5 2 0 1 | 0 0 0 1 1 1)", {{0, 0}, {1.9, 0}, {-1.9, 0}}, {{-3, 0}, {3, 0}, {-1.9, 4}}, {{2, 0}}},
      // a sliver
      {"(l 0 0 1000 .01)(l 1000 .01 0 .02)(l 0 .02 0 0)", {{1, .01}, {500, .01}, {900, .01}}, {{500, .004}, {500, .016}, {-1, .01}, {1001, .01}}, {{1000, .01}, {500, .005}}},
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.chain);
    AllWays(row.chain, [&](const Chain& chain) {
      Globals g;
      for (const auto& [points, want] :
           {std::pair(row.inside, kIn), std::pair(row.outside, kOut), std::pair(row.on, kOn)})
        for (const XY p : points) EXPECT_EQ(Locate(chain, p, g), want) << p.x << ' ' << p.y;
      EXPECT_EQ(KurvoErrGet(&g), 0);
    });
  }
}

// Polygons on a lattice, crossing themselves as often as not: every side in another disguise, every
// answer exact. A side that is missing, in part or altogether, is boundary all the same.
TEST(PntBoundForPlane, LatticePolygons) {
  constexpr int kGrid = 6;
  const auto side = [](Random& random, XY a, XY b) {
    const XY u = {(2 * a.x + b.x) / 3, (2 * a.y + b.y) / 3};
    const XY v = {(a.x + 2 * b.x) / 3, (a.y + 2 * b.y) / 3};
    switch (RandomInt(random, 0, 5)) {
      case 4: {
        std::vector<Owned> ends;
        ends.push_back(LineBetween(a, u));
        ends.push_back(MakeFreeForm(CV_BEZIER, {v.x, v.y, b.x, b.y}));
        return MakeComposite({.5, .5}, std::move(ends));
      }
      case 5: {  // jumps along the side, before a span or behind it
        Numbers points;
        for (const double f : {0., .1, .3, .6, 1.})
          points.insert(points.end(), {(1 - f) * a.x + f * b.x, (1 - f) * a.y + f * b.y});
        const double jump = Chance(random, .5) ? .3 : .6;
        return MakeFreeForm(CV_BSPLINE, points, {0, 0, .3, jump, .6, 1, 1});
      }
      case 0:
        return LineBetween(a, b);
      case 1:
        return MakeFreeForm(CV_BEZIER, {a.x, a.y, u.x, u.y, u.x, u.y, b.x, b.y});
      case 2:
        return MakeFreeForm(CV_RBEZIER, {a.x, a.y, 1, u.x, u.y, 2, b.x, b.y, 3});
      default:
        return MakeFreeForm(CV_BSPLINE, {a.x, a.y, u.x, u.y, u.x, u.y, b.x, b.y},
                            {0, 0, 0, .3, 1, 1, 1});
    }
  };
  Rounds(Cases(150), [&](Random& random, int) {
    std::vector<XY> corners(static_cast<std::size_t>(RandomInt(random, 3, 9)));
    for (XY& c : corners) c = {1. * RandomInt(random, 0, kGrid), 1. * RandomInt(random, 0, kGrid)};
    std::vector<Owned> sides;
    bool missing = true;  // never two in a row, nor the first or the last
    for (std::size_t i = 0; i < corners.size(); ++i) {
      missing = !missing && i + 1 < corners.size() && Chance(random, .4);
      if (!missing) sides.push_back(side(random, corners[i], corners[(i + 1) % corners.size()]));
    }
    Chain chain(std::move(sides));
    for (int i = -2; i <= 2 * kGrid + 1; ++i)
      for (int j = -1; j <= 2 * kGrid + 1; ++j) {
        const XY p = {i < -1 ? -1000 : i / 2., j / 2.};
        const View view = ViewFrom(p, corners);  // exact on half a grid, but for the distance
        Globals g;
        const uint32_t want = view.dist < 1e-9 ? kOn : view.turns != 0 ? kIn : kOut;
        EXPECT_EQ(Locate(chain, p, g), want) << p.x << ' ' << p.y;
      }
  });
}

TEST(PntBoundForPlane, RandomChainsOfAllKinds) {
  int answers[5] = {};
  Rounds(Cases(150), [&](Random& random, int round) {
    std::vector<XY> corners(static_cast<std::size_t>(RandomInt(random, 1, 6)));
    for (XY& c : corners) c = RandomPlace(random);
    std::vector<Owned> curves;
    for (std::size_t i = 0; i < corners.size(); ++i)
      curves.push_back(RandomBetween(random, corners[i], corners[(i + 1) % corners.size()]));
    if (corners.size() == 1) curves[0] = MakeFreeForm(CV_BEZIER, {1, 1, 9, 2, 3, 8, -5, 4, 1, 1});
    if (round % 4 == 0 && curves.size() > 2) curves.erase(curves.begin() + 1);  // a gap
    Chain chain(std::move(curves));
    const std::vector<XY> polygon = Polyline(chain, 400);
    for (int i = 0; i < 60; ++i) {
      XY p = RandomPlace(random);
      if (i % 3 == 0) p.y = corners[static_cast<std::size_t>(i) % corners.size()].y;
      View view = ViewFrom(p, polygon);
      if (view.dist < .1) continue;  // between the polygon and the curve
      Globals g;
      const uint32_t got = Locate(chain, p, g);
      const bool differs = got != (view.turns != 0 ? kIn : kOut);
      if (differs) view = ViewFrom(p, Polyline(chain, 40000));  // at a narrow bend
      EXPECT_TRUE(got == (view.turns != 0 ? kIn : kOut) && view.dist > .001) << p.x << ' ' << p.y;
      EXPECT_LT(KurvoErrSeverity(KurvoErrGet(&g)), 2);  // some chains are a line there and back
      if (got < 5) ++answers[got];
    }
  });
  EXPECT_GT(answers[kIn], 1000);
  EXPECT_GT(answers[kOut], 1000);
}

TEST(PntBoundForPlane, LeavesAFullStackAsItWas) {
  Chain chain("(l 0 0 0 4)(b 0 4 5 5 4 0)(l 4 0 0 0)");
  Globals g;
  while (g.depth < KURVO_STACK_SIZE) KurvoclPushEpsilon(1e-5, &g);
  Globals full = g;
  EXPECT_EQ(Locate(chain, {1, 1}, g), kIn);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_STACK_EMPTY) << "there was nowhere to save the tolerance";
  full.error = KURVO_ERR_STACK_EMPTY;
  EXPECT_EQ(std::memcmp(&g, &full, sizeof g), 0);
  KurvoErrReset(&g);
  EXPECT_EQ(Locate(chain, {-1, 1}, g), kOut);
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

}  // namespace
}  // namespace kurvo_test
