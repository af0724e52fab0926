// The nearest point of a curve beside the nearest of many points of it.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support.h"
#include "svg/writer.h"

namespace kurvo::tools {
namespace {

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

TEST(NearestOn, IsTheNearestOfAllPoints) {
  constexpr unsigned kSeed = 11;
  for (const double scale : {0.01, 1.0, 1000.0}) {
    std::mt19937 random(kSeed);
    const auto number = [&] {
      return std::uniform_real_distribution<double>(-scale, scale)(random);
    };
    const auto point = [&] { return " " + ExactNumber(number()) + " " + ExactNumber(number()); };
    const std::string wide = ExactNumber(3 * scale), narrow = ExactNumber(scale);
    Library library;
    for (int round = 0; round < 25; ++round) {
      for (const std::string& segment :
           {"L" + point(), "Q" + point() + point(), "C" + point() + point() + point(),
            "A" + wide + " " + wide + " 0 0 1" + point(),
            "A" + wide + " " + narrow + " 30 0 1" + point()}) {
        ExpectNearest(library, "M" + point() + segment, {number(), number()}, scale, 1e-12 * scale);
      }
    }
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

// From (0.2, 2) the parabola y = x^2 has feet at the roots of 2 x^3 - 3 x - 0.2 = 0, the nearest of
// which is the last. The library's distance takes the first.
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

}  // namespace
}  // namespace kurvo::tools
