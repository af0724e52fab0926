// Arc length, curvature combs, nearest points and what lies inside, against closed forms and
// search.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "geometry/arc_length.h"
#include "geometry/comb.h"
#include "geometry/locate.h"
#include "support.h"
#include "svg/writer.h"

namespace kurvo::tools {
namespace {

// A quarter of the ellipse with half axes 4 and 1.
OwnedCurve EllipseQuarter() {
  return OwnedCurve::RationalQuadratic({4, 0}, {4, 1}, M_SQRT1_2, {0, 1});
}

TEST(ArcLength, ExactOnLinesAndArcsOfAComposite) {
  Library library;
  const OwnedCurve line = OwnedCurve::Line({0, 0}, {3, 4});
  const OwnedCurve arc = OwnedCurve::Arc({}, 10, true, {10, 0}, {0, 10});
  const OwnedCurve curve = OwnedCurve::Quadratic({0, 0}, {5, 5}, {10, 0});
  const OwnedCurve composite = OwnedCurve::Composite(library, {&line, &curve, &arc});
  const ArcLength length(library, composite);
  EXPECT_DOUBLE_EQ(length.ParameterAt(2), .4);
  EXPECT_DOUBLE_EQ(length.ParameterAt(length.Total() - M_PI), 2.8);
  EXPECT_NEAR(length.ParameterAt((length.Total() + 5 - 5 * M_PI) / 2), 1.5, 1e-4);
}

// Teeth point away from the centre and are as long as the curve is bent.
TEST(Comb, TeethOfAnEllipseQuarter) {
  constexpr double kExtent = 100;
  constexpr double kLongest = 8;
  Library library;
  Drawing drawing;
  drawing.shapes.emplace_back();
  drawing.shapes[0].outlines.emplace_back();
  auto& curves = drawing.shapes[0].outlines[0].curves;
  curves.push_back(OwnedCurve::Line({0, 0}, {4, 0}));
  curves.push_back(EllipseQuarter());
  const std::vector<Comb> combs = CombsOf(library, drawing, kExtent);
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

// The least of the distances at many parameters, each local minimum followed down by halving the
// step around it.
double LeastDistance(Library& library, const OwnedCurve& curve, Point p) {
  constexpr int kSamples = 200;
  const auto distance_at = [&](double t) {
    return t < 0 || t > 1 ? HUGE_VAL : Size(PositionOf(library, curve, t) - p);
  };
  double least = HUGE_VAL;
  for (int i = 0; i <= kSamples; ++i) {
    double t = static_cast<double>(i) / kSamples, step = 1.0 / kSamples, here = distance_at(t);
    if (distance_at(t - step) < here || distance_at(t + step) < here) continue;
    for (; step > 1e-10; step /= 2) {
      for (const double side : {t - step, t + step}) {
        if (distance_at(side) < here) here = distance_at(t = side);
      }
    }
    least = std::min(least, here);
  }
  return least;
}

// `bound` is a length, for the distance.
void ExpectNearest(Library& library, const std::string& data, Point p, double scale, double bound) {
  for (const OwnedCurve& curve : ReadPath(library, data)) {
    const auto [t, point, distance] = NearestOn(library, curve, p);
    const std::string what =
        data + " from " + ExactNumber(p.x) + ", " + ExactNumber(p.y) + " at t = " + ExactNumber(t);
    EXPECT_NEAR(distance, LeastDistance(library, curve, p), bound) << what;
    EXPECT_NEAR(Size(point - p), distance, 1e-12 * scale) << what;
    EXPECT_NEAR(Size(PositionOf(library, curve, t) - point), 0, 1e-12 * scale) << what;
    EXPECT_TRUE(t >= 0 && t <= 1) << what;
  }
}

// From points on all sides, on the curve and where two of its points are equally near.
TEST(NearestOn, OfCurvesWithCorners) {
  // On a curve of size 10 the search above resolves a distance of 0 to its last step, 1e-10 of the
  // domain. At a cusp the foot point is a triple root, known to 1e-5 or so; its square counts.
  constexpr double kBound = 1e-9;
  Library library;
  for (const char* data : {"M0 0C10 10 0 10 10 0",      // a cusp
                           "M0 0C20 10 -10 10 10 0",    // a loop
                           "M0 0C10 20 -10 20 0 0",     // ends where it starts
                           "M0 0C0 0 10 10 10 10",      // straight, its handles of no length
                           "M0 0C15 0 -5 0 10 0",       // straight, back and forth
                           "M0 0Q5 10 10 0",            // symmetric
                           "M0 0Q10 0 2 0",             // straight, turning back
                           "M10 0A10 1 0 0 1 0 1",      // a flat ellipse
                           "M10 0A10 10 0 0 1 -10 0"})  // half a circle
  {
    for (const double x : {-3.0, 0.0, 5.0, 10.0, 1e4}) {
      for (const double y : {-2.0, 0.0, 5.0, 7.5, 100.0})
        ExpectNearest(library, data, {x, y}, std::max(10.0, x), kBound);
    }
  }
}

// From (0.2, 2) the parabola has feet at the roots of 2 x^3 - 3 x - 0.2 = 0, the nearest of which
// is the last. The library's distance takes the first.
TEST(NearestOn, IsNotTheFirstFootPoint) {
  Library library;
  const OwnedCurve curve = OwnedCurve::Quadratic({-2, 4}, {0, -4}, {2, 4});
  const Coord p = {0.2, 2, 0};
  double t = 0;
  EXPECT_GT(KurvocvDistPoint(curve.Get(), p, &t, library.State()), 1.4);
  const NearestPoint nearest = NearestOn(library, curve, {0.2, 2});
  const double x = nearest.point.x;
  EXPECT_GT(x, 0);
  EXPECT_NEAR(2 * x * x * x - 3 * x - 0.2, 0, 1e-12);
  EXPECT_NEAR(nearest.parameter, (x + 2) / 4, 1e-12);
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
Place PlaceByAngles(const std::vector<std::vector<Point>>& outlines, bool even_odd, Point p) {
  constexpr double kNear = 0.02;
  int turns = 0;
  for (const std::vector<Point>& outline : outlines) {
    double angle = 0;
    for (std::size_t i = 0; i < outline.size(); ++i) {
      const Point from = outline[i] - p;
      const Point to = outline[(i + 1) % outline.size()] - p;
      if (Size(from) < kNear) return Place::kOn;
      angle += std::atan2(Cross(from, to), Dot(from, to));
    }
    turns += static_cast<int>(std::lround(angle / (2 * std::numbers::pi)));
  }
  return (even_odd ? turns % 2 : turns) != 0 ? Place::kInside : Place::kOutside;
}

TEST(Locator, AgreesWithAngles) {
  constexpr int kSteps = 1500;  // along a curve: each is shorter than what is near
  std::mt19937 random(20261121);
  for (int i = 0; i < 24; ++i) {
    const bool even_odd = i % 2 == 1;
    const std::string path = RandomPath(random);
    Library library;
    const Drawing drawing =
        ReadText(library, std::string("<g fill-rule='") + (even_odd ? "evenodd" : "nonzero") +
                              "'>" + Path(path) + "</g>");
    std::vector<std::vector<Point>> outlines;
    for (const Outline& outline : drawing.shapes.at(0).outlines) {
      std::vector<Point>& points = outlines.emplace_back();
      const auto add = [&](const OwnedCurve& curve) {
        for (int k = 0; k < kSteps; ++k)
          points.push_back(PositionOf(library, curve, static_cast<double>(k) / kSteps));
      };
      for (const OwnedCurve& curve : outline.curves) add(curve);
      add(OwnedCurve::Line(EndOf(library, outline.curves.back()), points.front()));  // closes it
    }
    const Locator locator(library, drawing);
    for (int k = 0; k < 60; ++k) {
      const Point p = {0.5 * static_cast<double>(random() % 27),
                       0.5 * static_cast<double>(random() % 27)};
      const Place expected = PlaceByAngles(outlines, even_odd, p);
      if (expected == Place::kOn) continue;
      EXPECT_EQ(PlaceName(locator.InDrawing(p)), PlaceName(expected))
          << path << (even_odd ? " evenodd" : "") << " at " << p.x << "," << p.y;
    }
  }
}

}  // namespace
}  // namespace kurvo::tools
