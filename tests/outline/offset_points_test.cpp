// Points inside and outside of regions grown and shrunk, told by distances and by what a pen
// covers. A long run: KURVO_TEST_CASES=2000 asks a million questions.
#include <span>

#include "outline/offsets.h"
#include "outline/pen_model.h"

namespace kurvo_test {
namespace {

// Points everywhere, and beside the result's own curves.
TEST(RegionOffset, PointsAreInsideByTheirDistance) {
  constexpr double kTol = 1e-4;
  Random random;
  for (int round = 0; round < Cases(60); ++round) {
    SCOPED_TRACE(round);
    // Distances are measured to what is left at the tolerance that offsets leave to that.
    const Star star(random, kTol / 8, round % 4 == 3);
    const Region& region = star.simple;
    const double distance = random.Uniform(-1.5, 3);
    const Offset offset = OffsetOf(star.crossed, distance, OptionsOf(kTol));
    ASSERT_EQ(offset.code, 0);
    EXPECT_EQ(offset.report.capped, 0);
    for (int k = 0; k < 60; ++k) {
      const XY place = k % 2 ? PlaceBeside(random, *offset.region, kTol) : RandomPlace(random, 10);
      const Point q = {place.x, place.y, 0};
      const double beyond = DistanceTo(*region, q) - std::fabs(distance);
      if (3 * kTol >= std::fabs(beyond)) continue;
      const bool inside = Where(*region, q) == KURVO_REGION_INSIDE;
      const bool want = distance > 0 ? inside || beyond < 0 : inside && beyond > 0;
      EXPECT_EQ(Where(*offset.region, q) == KURVO_REGION_INSIDE, want)
          << q[0] << " " << q[1] << " distance " << distance << " beyond " << beyond;
    }
  }
}

Chain RandomPolygon(Random& random, bool is_on_grid) {
  std::vector<Owned> lines;
  const auto place = [&] {
    const XY p = RandomPlace(random, 5);
    return is_on_grid ? XY{std::round(p.x), std::round(p.y)} : p;
  };
  const XY first = place();
  XY at = first;
  for (int n = RandomInt(random, 2, 8); n >= 0; --n) {
    const XY next = n == 0 ? first : place();
    lines.push_back(Line(at.x, at.y, next.x, next.y));
    at = next;
  }
  return Chain(std::move(lines));
}

// Teeth all around, so many and so sharp that strips are put together by runs.
Chain ManyTeeth(Random& random, bool has_arcs) {
  const int n = RandomInt(random, 360, 400);
  std::vector<XY> points;
  for (int i = 0; i < n; ++i) {
    const double angle = 2 * kPi * i / n, r = random.Uniform(4.5, 6);
    points.push_back({r * std::cos(angle), r * std::sin(angle)});
  }
  std::vector<Owned> curves;
  for (int i = 0; i < n; ++i) {
    const XY a = points[static_cast<std::size_t>(i)],
             b = points[static_cast<std::size_t>((i + 1) % n)];
    curves.push_back(has_arcs && Chance(random, .3) ? ArcBetween(a, b, random.Uniform(-.5, .5))
                                                    : Line(a.x, a.y, b.x, b.y));
  }
  return Chain(std::move(curves));
}

// A loop as a polygon within `off` of it, whose edges grow from the ends of each curve, so that
// they tell its directions there.
PenModel ModelOf(const Cvseq& loop, double off, double distance, const KurvoOptions& options,
                 bool to_centres) {
  constexpr double kShort = 1e-6;
  Polygon corners;
  std::vector<bool> smooth;
  const auto add = [&](const Point& p, bool is_smooth) {
    corners.push_back({p[0], p[1]});
    smooth.push_back(is_smooth);
  };
  for (const Curve& curve : std::span(loop.curves, static_cast<std::size_t>(loop.count))) {
    add(PointAt(curve, 0), false);
    if (curve.type == CV_LINE) continue;
    add(PointAt(curve, kShort), true);
    std::vector<double> ends;
    for (double from_end = kShort; from_end < .5; from_end *= 2) ends.push_back(1 - from_end);
    for (double from_start = .25; from_start > kShort; from_start /= 2) ends.push_back(from_start);
    for (double at = kShort; !ends.empty();) {
      const Point p = PointAt(curve, at), q = PointAt(curve, ends.back()),
                  m = PointAt(curve, .5 * (at + ends.back()));
      if (std::hypot(m[0] - .5 * (p[0] + q[0]), m[1] - .5 * (p[1] + q[1])) > off) {
        ends.push_back(.5 * (at + ends.back()));
        continue;
      }
      add(q, true);
      at = ends.back();
      ends.pop_back();
    }
  }
  return PenModel(corners, true, std::max(-distance, 0.), std::max(distance, 0.), options, smooth,
                  to_centres);
}

// All joins, both signs: what the pen covers of the loops is added, or taken away. Beyond that, but
// within the distance, are a few points beside the centres of tight bends.
TEST(RegionOffset, GrowsByWhatAPenCovers) {
  Random random;
  for (int round = 0; round < Cases(100); ++round) {
    SCOPED_TRACE(round);
    const bool is_rough = round % 20 > 17, has_arcs = round % 20 == 19;
    const bool is_polygon = round % 5 > 0 && !has_arcs;
    const double tol = is_polygon ? 1e-5 : 1e-3;
    Region crossed;
    const bool is_on_grid = round % 10 == 4;  // where slots are as wide as pens
    crossed.Add(is_rough     ? ManyTeeth(random, has_arcs)
                : is_polygon ? RandomPolygon(random, is_on_grid)
                             : RandomStar(random, false, true),
                1e-6);
    const Region simple = SimpleOf(crossed, tol / 8);
    KurvoOptions options = OptionsOf(tol);
    options.join = round % 3;
    options.miter_limit = random.Uniform(1, 9);
    double distance = random.Uniform(-1, 2) * (is_polygon && Chance(random, .1) ? 20 : 1);
    if (is_rough) distance = Chance(random, .5) ? random.Uniform(4, 30) : random.Uniform(-4.4, -4);
    if (is_on_grid) distance = distance < 0 ? -.5 : .5 * std::ceil(distance);
    const Offset offset = OffsetOf(crossed, distance, options);
    ASSERT_EQ(offset.code, 0);
    std::vector<PenModel> all, to_centres;
    for (int i = 0; i < simple->count; ++i) {
      all.push_back(ModelOf(simple->loops[i], tol / 4, distance, options, false));
      to_centres.push_back(ModelOf(simple->loops[i], tol / 4, distance, options, true));
    }
    for (int k = 0; k < 100; ++k) {
      const XY q = k % 2 ? PlaceBeside(random, *offset.region, 3 * tol) : RandomPlace(random, 9);
      const auto covers = [&](const std::vector<PenModel>& models) {
        int covered = 0;
        for (const PenModel& model : models) {
          const int holds = model.Holds({q.x, q.y}, 3 * tol);
          covered = holds < 0 || covered < 0 ? -1 : covered + holds;
        }
        return covered;
      };
      const Point p = {q.x, q.y, 0};
      const double from_loops = DistanceTo(*simple, p);
      const int most = covers(all), least = covers(to_centres);
      if (most < 0 || least < 0 || 3 * tol >= from_loops) continue;
      const bool is_near = !is_polygon && std::fabs(distance) + 3 * tol > from_loops;
      if (least == 0 && (most > 0 || is_near)) continue;
      const bool inside = Where(*simple, p) == KURVO_REGION_INSIDE;
      EXPECT_EQ(Where(*offset.region, p) == KURVO_REGION_INSIDE,
                distance > 0 ? inside || least : inside && !least)
          << q.x << " " << q.y << " by " << distance << " join " << options.join;
    }
  }
}

// A spike on a block, or a slit in it, from 5 + foot to 5 - foot: a cubic, or lines through points
// which are `half` times these off its middle and its end.
std::string TipOf(const Numbers& points, double foot, double half, double height) {
  const double end = 5 + height, far = 5 + height * 4 / 3;
  if (points.empty())
    return Text("(b", {5 + foot, 5, 5 + half, far, 5 - half, far, 5 - foot, 5}) + ")";
  std::string text;
  Numbers at = {5 + foot, 5};
  for (std::size_t i = 0; i <= points.size(); i += 2) {
    Numbers next = {5 - foot, 5};
    if (i < points.size())
      next = {5 + half * points[i], end - std::copysign(half, height) * points[i + 1]};
    text += Text("(l", {at[0], at[1], next[0], next[1]}) + ")";
    at = next;
  }
  return text;
}

// The disc goes as far as the tip does, also where this is narrower than the tolerance and turned
// inside out. Where nothing is left of the tip, it ends before.
TEST(RegionOffset, NarrowTips) {
  constexpr double kTol = 1e-4, kLength = 40, kSpeed = 8;
  const Numbers kinds[] = {
      {}, {1, 0, -1, 0}, {1, 0, 0, 1, -1, 0}, {1, 1, 1, .4, .4, 0, -.4, 0, -1, .4, -1, 1}};
  const struct {
    double height, distance, area, slope;
    Point beyond;
  } shapes[] = {{4, 1, 50 + 30 + kPi + 6 + kPi / 2, -2, {5, 10, 0}},
                {-2, -1, 24 - 2 - kPi / 2, 2, {5, 2, 0}}};
  for (const auto& shape : shapes)
    for (const Numbers& kind : kinds)
      for (const double foot : {1e-4, 1e-3, 1e-2})
        for (const double share : {1e-3, .03, .1, .5, 1.001, 1.003, 1.01, 1.03, 1.1, 2.})
          for (const double half : {share * foot, -share * foot}) {
            const std::string tip = TipOf(kind, foot, half, shape.height);
            const Region region({"(l 0 0 10 0)(l 10 0 10 5)" + Text("(l", {10, 5, 5 + foot, 5}) +
                                 ")" + tip + Text("(l", {5 - foot, 5, 0, 5}) + ")(l 0 5 0 0)"},
                                KURVO_FILL_EVENODD);
            const Offset offset = OffsetOf(region, shape.distance, OptionsOf(kTol));
            EXPECT_EQ(offset.report.capped, 0) << tip;
            const double lost = DistanceTo(*SimpleOf(region, kTol / 8), shape.beyond) - 1;
            EXPECT_NEAR(AreaOfLoops(*offset.region), shape.area + shape.slope * lost,
                        kTol * kLength + kSpeed * (foot + std::fabs(half)))
                << tip;
          }
}

}  // namespace
}  // namespace kurvo_test
