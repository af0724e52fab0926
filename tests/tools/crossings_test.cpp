// Crossings and overlaps of small drawings whose common points are known in closed form.
#include "geometry/crossings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <random>
#include <set>
#include <span>
#include <tuple>

#include "geometry/box_sweep.h"
#include "geometry/curve_ask.h"
#include "support.h"

namespace kurvo::tools {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kLengthTol = 1e-6;  // what the library promises for points on both curves
constexpr double kParameterTol = 1e-6;

// Curves are counted from 1 over all outlines of a drawing.
struct KnownCrossing {
  std::size_t first;
  double t_first;
  std::size_t second;
  double t_second;
  Point point;
};

struct KnownOverlap {
  std::size_t first;
  double from_first, to_first;
  std::size_t second;
  double from_second, to_second;
};

struct Known {
  std::vector<KnownCrossing> crossings;
  std::vector<KnownOverlap> overlaps;
};

// Maps of the plane that keep circles, as attributes and as numbers.
const std::pair<const char*, Affine> kMotions[] = {
    {"translate(0 0)", {}},
    {"translate(1300 -70.5)", Translation(1300, -70.5)},
    {"rotate(31)", Rotation(31)},
    {"scale(-3 3) translate(2 1)", Scaling(-3, 3) * Translation(2, 1)}};

void ExpectOn(Context& context, const CurveList& list, std::size_t curve, double t, Point p) {
  EXPECT_LE(Size(p - PositionOf(context, *list.curves[curve].curve, t)), kLengthTol);
}

// Of two drawings, or of the first one alone where `joints` says how, moved in some ways.
void Check(const std::string& name, const std::string& first_body, const std::string& second_body,
           std::optional<bool> joints, const Known& known, std::size_t ways = 4) {
  for (const auto& [motion, map] : std::span(kMotions, ways)) {
    SCOPED_TRACE(name + ", " + motion);
    Context context;
    const std::string group = std::string("<g transform='") + motion + "'>";
    const auto read = [&](const std::string& body) {
      return ReadText(context, group + body + "</g>");
    };
    const Drawing drawings[] = {read(first_body), read(second_body)};
    const CurveList first = ListCurves(context, drawings[0]);
    const CurveList other = ListCurves(context, drawings[1]);
    const CurveList& second = joints ? first : other;
    const Crossings found = joints ? FindCrossings(context, first, *joints, [] {})
                                   : FindCrossings(context, first, second, [] {});
    if (!joints) {
      const Crossings swapped = FindCrossings(context, second, first, [] {});
      EXPECT_EQ(swapped.crossings.size(), known.crossings.size());
      EXPECT_EQ(swapped.overlaps.size(), known.overlaps.size());
    }
    ASSERT_EQ(found.crossings.size(), known.crossings.size());
    ASSERT_EQ(found.overlaps.size(), known.overlaps.size());
    for (std::size_t i = 0; i < known.crossings.size(); ++i) {
      SCOPED_TRACE("crossing " + std::to_string(i + 1));
      const auto& [a, b, at, point] = found.crossings[i];
      const KnownCrossing& each = known.crossings[i];
      EXPECT_EQ(std::pair(a + 1, b + 1), std::pair(each.first, each.second));
      EXPECT_NEAR(at.first, each.t_first, kParameterTol);
      EXPECT_NEAR(at.second, each.t_second, kParameterTol);
      EXPECT_LE(Size(point - map.Apply(each.point)), kLengthTol);
      ExpectOn(context, second, b, at.second, point);
    }
    for (std::size_t i = 0; i < known.overlaps.size(); ++i) {
      SCOPED_TRACE("overlap " + std::to_string(i + 1));
      const Overlap& overlap = found.overlaps[i];
      const KnownOverlap& each = known.overlaps[i];
      const auto& [from, to] = overlap.stretch;
      EXPECT_TRUE(overlap.has_ends);
      EXPECT_EQ(std::pair(overlap.first + 1, overlap.second + 1),
                std::pair(each.first, each.second));
      const double got[] = {from.first, to.first, from.second, to.second};
      const double want[] = {each.from_first, each.to_first, each.from_second, each.to_second};
      for (int k = 0; k < 4; ++k) EXPECT_NEAR(got[k], want[k], kParameterTol) << k;
      ExpectOn(context, first, overlap.first, from.first, overlap.from);
      ExpectOn(context, second, overlap.second, from.second, overlap.from);
      ExpectOn(context, second, overlap.second, to.second, overlap.to);
    }
  }
}

TEST(FindCrossings, OfTwoDrawings) {
  const double turn = std::atan2(4, 3) / kPi;  // of (3, 4), in halves of the circle
  // The point (10 cos a, 5 sin a) of a quarter from 0, with cos a = 0.6: the rational quarter with
  // weights 1, w, 1, w = cos 45 degrees, is at the angle 2 atan(t sin 45 / (1 - t + t w)).
  const double half = std::tan(std::acos(0.6) / 2), w = std::sqrt(0.5);
  const std::string circle = "<circle r='5'/>", rect = "<rect width='4' height='3'/>";
  const std::string quarter = Path("M10 0A10 10 0 0 1 0 10"), root = "7.0710678118654755";
  const std::string cubic = "M0 0C10 20 20 -20 30 0", loop = Path("M0 0C30 20 -30 20 0 0");
  // clang-format off
  const struct {
    const char* name;
    std::string first, second;
    Known known;
  } rows[] = {
      {"circles", circle, "<circle cx='6' r='5'/>", {{{1, turn, 1, 1 - turn, {3, 4}}, {2, 1 - turn, 2, turn, {3, -4}}}, {}}},
      // through both ends of its halves: two crossings, not four
      {"circle and line", circle, Path("M-10 0H10"), {{{1, 0, 1, .75, {5, 0}}, {1, 1, 1, .25, {-5, 0}}}, {}}},
      // Each at a joint of both; the middle of the contact is at 5 + 0.
      {"circles that touch", circle, "<circle cx='10' r='5'/>", {{{1, 0, 1, 1, {5, 0}}}, {}}},
      {"circles apart whose boxes meet", circle, "<circle cx='8' cy='8' r='5'/>", {}},
      // x = 27 t^2 - 18 t^3, y = 27 t (1 - t) (1 - 2 t)
      {"cubic and line", Path("M0 0C0 9 9 -9 9 0"), Path("M-1 0H11"), {{{1, 0, 1, 1. / 12, {0, 0}}, {1, 0.5, 1, 5.5 / 12, {4.5, 0}}, {1, 1, 1, 10. / 12, {9, 0}}}, {}}},
      // y = x^2 and x = y^2, both from -1 to 1 in their parameters.
      {"parabolas", Path("M-1 1Q0 -1 1 1"), Path("M1 -1Q-1 0 1 1"), {{{1, 0.5, 1, 0.5, {0, 0}}, {1, 1, 1, 1, {1, 1}}}, {}}},
      {"ellipse and line", Path("M10 0A10 5 0 0 1 0 5"), Path("M6 0V10"), {{{1, half / (w + half * (1 - w)), 1, 0.4, {6, 4}}}, {}}},
      {"lines along each other", Path("M0 0H10"), Path("M15 0H4"), {{}, {{1, 0.4, 1, 1, 1, 5. / 11}}}},
      {"lines end to end", Path("M0 0H10"), Path("M15 0H10"), {{{1, 1, 1, 1, {10, 0}}}, {}}},
      {"arcs along each other", quarter, Path("M0 10A10 10 0 0 0 10 0"), {{}, {{1, 0, 1, 1, 1, 0}}}},
      {"quarters half along each other", quarter, Path("M" + root + " " + root + "A10 10 0 0 1 -" + root + " " + root), {{}, {{1, 0.5, 1, 1, 0, 0.5}}}},
      {"a cubic and its reverse", Path(cubic), Path("M30 0C20 -20 10 20 0 0"), {{}, {{1, 0, 1, 1, 1, 0}}}},
      {"a loop and itself", loop, loop, {{}, {{1, 0, 1, 1, 0, 1}}}},
      {"a loop and its reverse", loop, Path("M0 0C-30 20 30 20 0 0"), {{}, {{1, 0, 1, 1, 1, 0}}}},
      {"a rectangle and itself", rect, rect, {{}, {{1, 0, 1, 1, 0, 1}, {2, 0, 1, 2, 0, 1}, {3, 0, 1, 3, 0, 1}, {4, 0, 1, 4, 0, 1}}}},
      // The sides left and right only touch the line where the overlap ends.
      {"a line along a side", Path("M-4 0H16"), rect, {{}, {{1, 0.2, 0.4, 1, 0, 1}}}},
      {"corner to corner", Path("M0 0H5V5"), Path("M10 -5L5 0L10 5"), {{{1, 1, 1, 1, {5, 0}}}, {}}},
      {"through a corner", Path("M0 0L5 5L10 0"), Path("M5 0V10"), {{{1, 1, 1, 0.5, {5, 5}}}, {}}},
      {"nothing to cross", "", Path("M5 0V10"), {}},
  };
  // clang-format on
  for (const auto& row : rows) Check(row.name, row.first, row.second, {}, row.known);
}

TEST(FindCrossings, OfOneDrawing) {
  // Mirror images; both are at the origin half way.
  const std::string eight = Path("M0 -10C20 -5 -20 5 0 10C20 5 -20 -5 0 -10Z");
  // clang-format off
  const struct {
    const char* name;
    std::string body;
    bool joints;
    Known known;
  } rows[] = {
      {"figure eight of two curves", eight, false, {{{1, 0.5, 2, 0.5, {0, 0}}}, {}}},
      {"figure eight with its joints", eight, true, {{{1, 0, 2, 1, {0, -10}}, {1, 0.5, 2, 0.5, {0, 0}}, {1, 1, 2, 0, {0, 10}}}, {}}},
      {"twice through one corner", Path("M-5 -5L0 0L5 5V-5L0 0L-5 5Z"), false, {{{1, 1, 4, 1, {0, 0}}}, {}}},
      {"circle", "<circle r='5'/>", false, {}},
      {"rounded rectangle", "<rect width='40' height='30' rx='7.3'/>", false, {}},
      {"ellipse", "<ellipse rx='40' ry='30'/>", false, {}},
      {"back at the start without being closed", Path("M0 0H5V5L0 0"), false, {}},
      {"joint of a triangle", Path("M0 0H6V8Z"), true, {{{1, 1, 2, 0, {6, 0}}, {1, 0, 3, 1, {0, 0}}, {2, 1, 3, 0, {6, 8}}}, {}}},
      {"back on itself", Path("M0 0H10H5"), false, {{}, {{1, 0.5, 1, 2, 1, 0}}}},
      // The arc turns off the line so slowly that their contact is a thousandth away from the
      // joint, within the tolerance of both.
      {"joint at a cusp", Path("M9.999 10L10 0A10 10 0 0 1 0 10"), false, {}},
      {"two outlines that share a corner", Path("M0 0H5V5M5 0H9"), false, {{{1, 1, 3, 0, {5, 0}}}, {}}},
  };
  // clang-format on
  for (const auto& row : rows) Check(row.name, row.body, "", row.joints, row.known);
}

// The tolerance is a millionth.
TEST(FindCrossings, GapsWithinTheTolerance) {
  const auto check = [](const char* name, const char* a, const char* b, const Known& known) {
    Check(name, Path(a), Path(b), {}, known, 1);
  };
  check("a gap below", "M0 0H9.9999991", "M10 -5V5", {{{1, 1, 1, 0.5, {10, 0}}}, {}});
  check("a gap above", "M0 0H9.9999989", "M10 -5V5", {});
  // The reader drops the short line, which leaves a gap of 1.3 millionths across the diagonal.
  check("a joint with a gap", "M0 0H5L5.0000009 -0.0000009V5", "M4 -1L6 1",
        {{{1, 1, 1, 0.5, {5, 0}}}, {}});
}

// A straight curve that turns back within a line: they share a stretch that no end bounds.
TEST(FindCrossings, OverlapWithoutKnownEnds) {
  Context context;
  const Drawing drawing = ReadText(context, Path("M0 0H10") + Path("M5 -9V0C8 0 2 0 5 0V9"));
  const CurveList list = ListCurves(context, drawing);
  const Crossings found = FindCrossings(context, list, false, [] {});
  ASSERT_EQ(found.overlaps.size(), 1u);
  EXPECT_EQ(found.overlaps[0].first, 0u);
  EXPECT_EQ(found.overlaps[0].second, 2u);
}

// ---- the sweep, beside a comparison of every box with every other

using Pairs = std::set<std::pair<std::size_t, std::size_t>>;

bool Meet(const Bounds& a, const Bounds& b) {
  return a.min_x <= b.max_x && b.min_x <= a.max_x && a.min_y <= b.max_y && b.min_y <= a.max_y;
}

TEST(SweepBoxes, FindsEachPairOnce) {
  constexpr unsigned kSeed = 7;
  std::mt19937 random(kSeed);
  // On a grid, so that many sides agree; `wide` and `tall` are the largest sizes.
  const auto boxes = [&](int count, int wide, int tall) {
    const auto upto = [&](int most) { return std::uniform_int_distribution<>(0, most)(random); };
    std::vector<Bounds> all;
    for (int i = 0; i < count; ++i) {
      const int x = upto(60), y = upto(60);
      all.push_back({1. * x, 1. * y, 1. * x + upto(wide), 1. * y + upto(tall)});
    }
    return all;
  };
  const struct {
    int count, wide, tall;
  } rows[] = {{0, 1, 1}, {1, 1, 1}, {100, 5, 5}, {100, 60, 2}, {100, 2, 60}, {60, 0, 0}};
  for (const auto& row : rows) {
    const std::vector<Bounds> first = boxes(row.count, row.wide, row.tall);
    const std::vector<Bounds> second = boxes(row.count / 2, row.tall, row.wide);
    Pairs expected_one, expected_two, one, two;
    for (std::size_t i = 0; i < first.size(); ++i) {
      for (std::size_t k = i + 1; k < first.size(); ++k) {
        if (Meet(first[i], first[k])) expected_one.emplace(i, k);
      }
      for (std::size_t k = 0; k < second.size(); ++k) {
        if (Meet(first[i], second[k])) expected_two.emplace(i, k);
      }
    }
    const auto collect = [](Pairs& pairs) {
      return [&pairs](std::size_t i, std::size_t k) {
        EXPECT_TRUE(pairs.emplace(i, k).second) << i << ", " << k << " comes twice";
      };
    };
    std::size_t done = 0;
    SweepBoxes(first, collect(one), [&] { ++done; });
    EXPECT_EQ(done, first.size());
    SweepBoxes(first, second, collect(two), [&] { ++done; });
    EXPECT_EQ(done, 2 * first.size() + second.size());
    EXPECT_EQ(one, expected_one) << row.wide << " by " << row.tall << ", seed " << kSeed;
    EXPECT_EQ(two, expected_two) << row.wide << " by " << row.tall << ", seed " << kSeed;
  }
}

}  // namespace
}  // namespace kurvo::tools
