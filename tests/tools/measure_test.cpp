// Curvature combs, what lies inside and links, against closed forms, angles and all pairs.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numbers>
#include <random>
#include <tuple>

#include "geometry/comb.h"
#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "geometry/links.h"
#include "geometry/locate.h"
#include "support.h"

namespace kurvo::tools {
namespace {

// A quarter of the ellipse with half axes 4 and 1.
Curve EllipseQuarter() { return ConicOf({4, 0}, {4, 1}, M_SQRT1_2, {0, 1}); }

// Teeth point away from the centre and are as long as the curve is bent.
TEST(Comb, TeethOfAnEllipseQuarter) {
  constexpr double kExtent = 100;
  constexpr double kLongest = 8;
  Context context;
  Drawing drawing;
  drawing.shapes.emplace_back();
  drawing.shapes[0].outlines.emplace_back();
  auto& curves = drawing.shapes[0].outlines[0].curves;
  curves.push_back(Curve::Line({0, 0}, {4, 0}).value());
  curves.push_back(EllipseQuarter());
  const std::vector<Comb> combs = CombsOf(context, drawing, kExtent);
  ASSERT_EQ(combs.size(), 1u);
  ASSERT_EQ(combs[0].feet.size(), combs[0].tips.size());
  double scale = 0;
  for (std::size_t i = 0; i < combs[0].feet.size(); ++i) {
    const Point foot = combs[0].feet[i];
    const Point tooth = combs[0].tips[i] - foot;
    const double x = foot.x / 16, y = foot.y;  // the gradient of the ellipse
    const double curvature = 1 / (16 * std::pow(x * x + y * y, 1.5));
    const double size = Size(tooth);
    EXPECT_NEAR(Cross(tooth, {x, y}), 0, 1e-9 * size) << i;
    EXPECT_GT(Dot(tooth, {x, y}), 0) << i;
    if (size > kLongest - 1e-9) {
      EXPECT_NEAR(size, kLongest, 1e-9) << i;
      continue;
    }
    if (scale == 0) scale = size / curvature;
    EXPECT_NEAR(size, scale * curvature, 1e-9 * size) << i;
  }
  EXPECT_GT(scale, 0);
}

// ---- what lies inside, beside the angles under which it sees the outlines

// Closed and open paths through points of a lattice, by segments of every kind.
std::string RandomPath(std::mt19937& random) {
  const auto number = [&] { return " " + std::to_string(random() % 13); };
  const auto point = [&] { return number() + number(); };
  std::string data;
  for (int outline = 0; outline < 3; ++outline) {
    data += "M" + point();
    for (int i = 0; i < 4; ++i) {
      const std::string segments[] = {"L" + point(),
                                      "H" + number(),
                                      "V" + number(),
                                      "Q" + point() + point(),
                                      "C" + point() + point() + point(),
                                      "A" + std::string(random() % 2 == 0 ? "5 5 0" : "7 3 30") +
                                          (random() % 2 == 0 ? " 0" : " 1") +
                                          (random() % 2 == 0 ? " 0" : " 1") + point()};
      data += segments[random() % std::size(segments)];
    }
    if (random() % 2 == 0) data += "Z";
  }
  return data;
}

// What fills a point, by the angles under which it sees small steps along the outlines, which is
// told only where none comes near.
Where PlaceByAngles(const std::vector<std::vector<Point>>& outlines, bool even_odd, Point p) {
  constexpr double kNear = 0.02;
  int turns = 0;
  for (const std::vector<Point>& outline : outlines) {
    double angle = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
      const Point from = outline[i] - p;
      const Point to = outline[(i + 1) % outline.size()] - p;
      if (Size(from) < kNear) return Where::kOn;
      angle += std::atan2(Cross(from, to), Dot(from, to));
    }
    turns += static_cast<int>(std::lround(angle / (2 * std::numbers::pi)));
  }
  return (even_odd ? turns % 2 : turns) != 0 ? Where::kInside : Where::kOutside;
}

TEST(Locator, AgreesWithAngles) {
  constexpr int kSteps = 1500;  // along a curve: each is shorter than what is near
  std::mt19937 random(20261121);
  for (int i = 0; i < 24; ++i) {
    const bool even_odd = i % 2 == 1;
    const std::string path = RandomPath(random);
    Context context;
    const Drawing drawing =
        ReadText(context, std::string("<g fill-rule='") + (even_odd ? "evenodd" : "nonzero") +
                              "'>" + Path(path) + "</g>");
    std::vector<std::vector<Point>> outlines;
    for (const Outline& outline : drawing.shapes.at(0).outlines) {
      std::vector<Point>& points = outlines.emplace_back();
      const auto add = [&](const Curve& curve) {
        for (int k = 0; k < kSteps; ++k)
          points.push_back(PositionOf(context, curve, static_cast<double>(k) / kSteps));
      };
      for (const Curve& curve : outline.curves) add(curve);
      add(Curve::Line(EndOf(context, outline.curves.back()), points.front()).value());  // closes it
    }
    const Locator locator(context, drawing);
    std::vector<Point> points(60);
    for (Point& p : points) {
      p.x = 0.5 * static_cast<double>(random() % 27);
      p.y = 0.5 * static_cast<double>(random() % 27);
    }
    const std::vector<Where> places = locator.InDrawing(points, 1);
    EXPECT_EQ(places, locator.InDrawing(points, 1 + random() % 8)) << path;
    for (std::size_t k = 0; k < points.size(); ++k) {
      const Point p = points[k];
      const Where expected = PlaceByAngles(outlines, even_odd, p);
      if (expected == Where::kOn) continue;
      EXPECT_EQ(PlaceName(places[k]), PlaceName(expected))
          << path << (even_odd ? " evenodd" : "") << " at " << p.x << "," << p.y;
    }
  }
}

// The shortest link of each outline is that of all its pairs of curves, on any number of threads.
TEST(FindLinks, AreTheShortestOfAllPairs) {
  std::mt19937 random(20261122);
  for (int i = 0; i < 60; ++i) {
    std::string body[2];
    for (std::string& text : body) {
      for (std::size_t k = 0; k < 1 + random() % 4; ++k)
        text += "<g transform='translate(" + std::to_string(random() % (i < 30 ? 20 : 90)) + " " +
                std::to_string(random() % 40) + ")'>" + Path(RandomPath(random)) + "</g>";
    }
    Context context;
    const Drawing a = ReadText(context, body[0]), b = ReadText(context, body[1]);
    const CurveList first = ListCurves(context, a), second = ListCurves(context, b);
    std::vector<double> expected(first.outlines.size(), HUGE_VAL);
    for (const ListedCurve& p : first.curves) {
      for (const ListedCurve& q : second.curves)
        expected[p.outline] =
            std::min(expected[p.outline], (*p.curve).ClosestTo(*q.curve, context).value().distance);
    }
    std::atomic<std::size_t> done = 0;
    const auto links = FindLinks(
        first, second, [&] { ++done; }, 1);
    const auto again = FindLinks(
        first, second, [] {}, 1 + random() % 8);
    ASSERT_EQ(links.size(), expected.size());
    EXPECT_EQ(done, first.curves.size());
    for (std::size_t k = 0; k < links.size(); ++k) {
      EXPECT_NEAR(links[k].at.distance, expected[k], 1e-12) << i << " " << first.outlines[k];
      EXPECT_NEAR(Size(links[k].to - links[k].from), expected[k], 1e-9) << i;
      EXPECT_EQ(std::tie(links[k].first, links[k].second, links[k].at.a),
                std::tie(again[k].first, again[k].second, again[k].at.a));
    }
  }
}

TEST(ParallelFor, ThrowsWhatTheFirstStepThrows) {
  for (const std::size_t threads : {1u, 2u, 7u}) {
    std::vector<int> runs(1000);
    const auto step = [&](std::size_t i, Context&) {
      ++runs[i];
      if (i % 300 == 299) throw std::runtime_error(std::to_string(i));
    };
    try {
      ParallelFor(runs.size(), step, threads);
      ADD_FAILURE();
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), "299");
    }
    EXPECT_EQ(std::count(runs.begin(), runs.begin() + 300, 1), 300);
  }
}

}  // namespace
}  // namespace kurvo::tools
