// Combining where much meets in little room; gaps and refusals.
#include "outline/combine.h"

namespace kurvo_test {
namespace {

Region Polygon(const std::vector<XY>& points) {
  Region region;
  std::vector<Owned> lines;
  for (std::size_t i = 0; i < points.size(); ++i)
    lines.push_back(LineBetween(points[i], points[(i + 1) % points.size()]));
  region.Add(Chain(std::move(lines)));
  return region;
}
void AddSquare(Region& region, double x, double y, double side) {
  const Region square = Polygon({{x, y}, {x + side, y}, {x + side, y + side}, {x, y + side}});
  Chain loop;
  Globals g;
  KurvocvCopyCvseq(&square->loops[0], loop.get(), &g);
  region.Add(loop);
}

Region Fan(int count) {  // leaves that all begin and end in one point
  Region region;
  for (int i = 0; i < count; ++i) {
    const double angle = 6.283185307179586 * i / count, wide = .4;
    region.Add(
        Chain(Text("(b 0 0", {9 * std::cos(angle), 9 * std::sin(angle), 9 * std::cos(angle + wide),
                              9 * std::sin(angle + wide), 0, 0}) +
              ')'));
  }
  return region;
}
Region Spokes(int count) {  // triangles through a point
  Region region;
  for (int i = 0; i < count; ++i) {
    const double angle = 3.14159265358979324 * (i + .1) / count, x = std::cos(angle),
                 y = std::sin(angle);
    region.Add(Chain(Text("(l", {-x, -y, x, y}) + Text(")(l", {x, y, x + .3 * y, y - .3 * x}) +
                     Text(")(l", {x + .3 * y, y - .3 * x, -x, -y}) + ')'));
  }
  return region;
}
Region Ladder(int count, double step) {  // copies of a letter
  Region region;
  for (int i = 0; i < count; ++i) {
    const Region copy = GlyphRegion(kGlyphs[1], {0, i * step, i * step / 3});
    for (int k = 0; k < copy->count; ++k) {
      Chain loop;
      Globals g;
      KurvocvCopyCvseq(&copy->loops[k], loop.get(), &g);
      region.Add(loop);
    }
  }
  return region;
}
Region Squares(int side, double gap) {
  Region region;
  for (int i = 0; i < side * side; ++i)
    AddSquare(region, (i % side) * (1 + gap), (i / side) * (1 + gap), 1);
  return region;
}
Region Stairs(int steps, double shift) {
  std::vector<XY> points = {{shift, 0}};
  for (int i = 0; i < steps; ++i)
    points.insert(points.end(), {{i + 1 + shift, 1. * i}, {i + 1 + shift, i + 1.}});
  points.push_back({shift, 1. * steps});
  return Polygon(points);
}
Region Nest(int count) {
  Region region;
  for (int i = 0; i < count; ++i)
    region.Add(Chain(Text("(a", {0, 0, 1. + i, .3, 3}) +
                     Text(")(a", {0, 0, 1. + i, 3.3, 3.283185307179586}) + ')'),
               1e-9);
  return region;
}

TEST(RegionCombine, HardArrangements) {
  struct Row {
    const char* name;
    Region a, b;
    double off, area;  // of the union by even-odd or non-zero; 0: unknown
    int loops;         // -1: unknown
    int32_t rule = KURVO_FILL_NONZERO;
  };
  const auto circles = [](int n) {
    return 3.14159265358979324 * n * (n + 1) / 2;
  };  // r^2 - (r - 1)^2 + ...
  // clang-format off
  Row rows[] = {
      {"a fan of leaves",                 Fan(64),         {},               1e-4, 0,    -1},
      {"a fan of leaves, twice",          Fan(64),         Fan(64),          1e-4, 0,    -1},
      {"spokes",                          Spokes(64),      {},               1e-5, 0,    -1},
      {"a ladder",                        Ladder(24, 7),   {},               .01,  0,    -1},
      {"a narrow ladder",                 Ladder(24, 2e-6), {},              .01,  0,    -1},
      {"touching squares",                Squares(12, 0),  {},               1e-4, 144,  1},
      {"squares apart by little",         Squares(8, 1e-5), {},              1e-6, 64,   64},
      {"squares shifted onto each other", Squares(8, 0),   Squares(8, 1e-3), 1e-5, 0,    -1},
      {"squares by even-odd",             Squares(12, 0),  {},               1e-4, 144,  1, KURVO_FILL_EVENODD},
      {"stairs",                          Stairs(50, 0),   Stairs(50, .5),   1e-3, 0,    1},
      {"stairs beside themselves",        Stairs(50, 0),   Stairs(50, 1e-7), 1e-3, 1275, 1},
      {"kites between two points",        Polygon({{0, 0}, {1, .5}, {0, 1}, {-1, .5}}), Polygon({{0, 0}, {2, .5}, {0, 1}, {-.5, .5}}), 1e-5, 1.5, 1},
      {"twice around between two points", Polygon({{0, 0}, {1, .5}, {0, 1}, {-1, .5}, {0, 0}, {2, .5}, {0, 1}, {-.5, .5}}), {}, 1e-5, 1.5, 1},
      {"a nest",                          Nest(1000),      {},               .2,   circles(1000), 1000, KURVO_FILL_EVENODD},
  };
  // clang-format on
  for (Row& row : rows) {
    SCOPED_TRACE(row.name);
    row.a->rule = row.rule;
    const Inputs inputs = {row.a.get(), row.b.get()};
    Random random;
    Probes probes(random, inputs, row.off, 200);
    const Stopwatch watch;
    const Combined made = Combine(KURVO_UNION, inputs);
    EXPECT_LT(watch.Seconds(), 2);
    EXPECT_EQ(Judge(probes, KURVO_UNION, inputs, made, row.off), "");
    if (row.area > 0) {
      EXPECT_NEAR(AreaOf(*made.region), row.area, 1e-6 * row.area);
    }
    if (row.loops >= 0) {
      EXPECT_EQ(made.region->count, row.loops);
    }
    if (row.b->count == 0) continue;
    for (const int32_t operation : {KURVO_INTERSECTION, KURVO_DIFFERENCE, KURVO_XOR})
      EXPECT_EQ(Judge(probes, operation, inputs, Combine(operation, inputs), row.off), "")
          << kOperationNames[operation];
  }
}

// ---- On a small grid, where vertices coincide, curves overlap and lie level

// A curve whose control points lie on the grid, or an arc between two of its points.
Owned GridCurve(Random& random, XY a, XY b, int side) {
  const auto some = [&] { return double(RandomInt(random, 0, side)); };
  switch (RandomInt(random, 0, 7)) {
    case 0:
      return ArcBetween(
          a, b, 1.5707963267948966 * RandomInt(random, 1, 2) * (Chance(random, .5) ? 1 : -1));
    case 1:
      return MakeFreeForm(CV_BEZIER, {a.x, a.y, some(), some(), b.x, b.y});
    case 2:
      return MakeFreeForm(CV_BEZIER, {a.x, a.y, some(), some(), some(), some(), b.x, b.y});
    default:
      return LineBetween(a, b);
  }
}
Region OnGrid(Random& random, int side, bool straight) {
  Region region;
  for (int loops = RandomInt(random, 1, 3); loops > 0; --loops) {
    std::vector<XY> points;
    for (int i = RandomInt(random, 2, 7); i > 0; --i)
      points.push_back({double(RandomInt(random, 0, side)), double(RandomInt(random, 0, side))});
    std::vector<Owned> curves;
    for (std::size_t i = 0; i < points.size(); ++i) {
      const XY a = points[i], b = points[(i + 1) % points.size()];
      if (a == b) continue;
      curves.push_back(straight ? LineBetween(a, b) : GridCurve(random, a, b, side));
    }
    region.Add(Chain(std::move(curves)), 1e-9);
  }
  region->rule = RandomInt(random, 0, 3);
  return region;
}

TEST(RegionCombine, OnAGrid) {
  Rounds(Cases(300), [](Random& random, int round) {
    const int side = 2 + round % 5;
    const bool straight = round % 2;
    const Region a = OnGrid(random, side, straight), b = OnGrid(random, side, straight);
    const Inputs inputs = {a.get(), b.get()};
    Probes probes(random, inputs, 1e-3, 60);
    for (const int32_t operation : kOperations)
      EXPECT_EQ(Judge(probes, operation, inputs, Combine(operation, inputs), 1e-3), "")
          << kOperationNames[operation];
  });
}

// ---- Gaps, reports, refusals

TEST(RegionCombine, GapsAreBridgedAndTold) {
  const Region loose = [] {
    Region region;
    *region.get() = {1, 0, nullptr, nullptr};
    region->loops = static_cast<Cvseq*>(KurvoMalloc(sizeof(Cvseq), nullptr));
    *region->loops = Chain("(l 0 0 4 0)(l 4 .01 4 4)(l 4 4 0 4)(l 0 4 0 .02)").Release();
    return region;
  }();
  for (const double gap : {0., .015, .03, kInfinity}) {
    const Combined made = Combine(kSimplify, {loose.get()}, gap);
    EXPECT_EQ(made.code, gap > .02 ? 0 : KURVO_ERR_CHAIN_ENDS) << gap;
    EXPECT_EQ(made.report.gaps, gap > .02 ? 2 : 0);
    if (made.code) {
      EXPECT_EQ(made.region->count, 0);
      continue;
    }
    EXPECT_NEAR(AreaOf(*made.region), 16, 1e-12);
    EXPECT_EQ(Strays(*made.region, {loose.get()}, 1e-8), "");
  }
  // A sliver narrower than the tolerance goes, and is told.
  const Region sliver("(l 0 0 4 0)(l 4 0 4 1e-4)(l 4 1e-4 0 1e-4)(l 0 1e-4 0 0)");
  const Combined made = Combine(kSimplify, {sliver.get()}, 0, 1e-3);
  EXPECT_EQ(made.region->count, 0);
  EXPECT_EQ(Combine(kSimplify, {sliver.get()}).region->count, 1);
}

// Splines with knots of full multiplicity within jump there, and with more than that at their ends.
TEST(RegionCombine, JumpsOfCurvesAreBridged) {
  for (const char* knots : {"0 0 0 1 2 2", "0 0 1 2 2 2", "0 0 1 1 2 2", "0 0 0 1 1 1"}) {
    SCOPED_TRACE(knots);
    const Region square(("(B 0 0 4 0 4 4 0 4 | " + std::string(knots) + ")(l 0 4 0 0)").c_str());
    const Combined made = Combine(kSimplify, {square.get()});
    ASSERT_EQ(made.code, 0);
    EXPECT_NEAR(AreaOf(*made.region), 16, 1e-12);
    EXPECT_LT(made.report.moved, 1e-9);
  }
}

TEST(RegionCombine, Refuses) {
  const Region square("(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)");
  KurvoOptions wrong = {}, stop = {};
  wrong.size = stop.size = sizeof wrong;
  wrong.tol = -1;
  stop.proceed = [](double, void*) { return 0; };
  KurvoRegion unknown = *square;
  unknown.rule = 4;
  struct Row {
    int32_t operation;
    const KurvoRegion* b;
    const KurvoOptions* options;
    bool aliased;
    int code;
  };
  const Row rows[] = {{4, square.get(), nullptr, false, KURVO_ERR_OPTION},
                      {-1, square.get(), nullptr, false, KURVO_ERR_OPTION},
                      {0, nullptr, nullptr, false, KURVO_ERR_OPTION},
                      {0, &unknown, nullptr, false, KURVO_ERR_OPTION},
                      {0, square.get(), nullptr, true, KURVO_ERR_OPTION},
                      {0, square.get(), &wrong, false, KURVO_ERR_TOLERANCE},
                      {0, square.get(), &stop, false, KURVO_ERR_STOPPED}};
  for (const Row& row : rows) {
    Globals g;
    Region aliased = square.Copied(), other;
    KurvoReport report = {9, 9, 9, 9, 9, 9, {}};
    KurvoRegion* const out = row.aliased ? aliased.get() : other.get();
    EXPECT_EQ(
        KurvoRegionCombine(row.operation, aliased.get(), row.b, row.options, out, &report, &g), 0);
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    EXPECT_EQ(out->count, row.aliased ? 1 : 0);
    EXPECT_EQ(report.gaps, 0);
  }
}

// Parts may have no length of their own between ends that were moved.
TEST(RegionCombine, CoarseTolerances) {
  Rounds(Cases(300), [](Random& random, int round) {
    const Region a = RandomRegion(random, 1), b = RandomRegion(random, 1);
    const Inputs ab = {a.get(), b.get()};
    const double tol = SizeOf(ab) * random.Uniform(.001, .03);
    const Combined made = Combine(kOperations[round % 4], ab, 0, tol);
    ASSERT_EQ(made.code, 0);
    EXPECT_EQ(Strays(*made.region, ab, 4 * tol + 2 * made.report.moved), "");
  });
}

}  // namespace
}  // namespace kurvo_test
