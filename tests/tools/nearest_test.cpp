// The nearest point of a curve beside the nearest of many points of it.
#include "geometry/nearest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

#include "read_text.h"

namespace kurvo::tools {
namespace {

using Real = long double;

struct RealPoint {
  Real x, y;
};

// A point of a curve by its Bernstein polynomials of degree 1 to 3, or by the angle of an arc.
RealPoint At(const OwnedCurve& curve, Real t) {
  const void* data = curve.Get()->data;
  if (curve.Type() == CV_ARC) {
    const auto& arc = *static_cast<const KurvoArc*>(data);
    const Real dx = arc.start[0] - arc.centre[0], dy = arc.start[1] - arc.centre[1];
    const Real ex = arc.end[0] - arc.centre[0], ey = arc.end[1] - arc.centre[1];
    const Real sign = arc.normal[2] < 0 ? -1 : 1;
    Real sweep = sign * (std::atan2(ey, ex) - std::atan2(dy, dx));
    if (sweep <= 0) sweep += 2 * std::acos(Real(-1));
    const Real c = std::cos(sign * t * sweep), s = std::sin(sign * t * sweep);
    return {arc.centre[0] + c * dx - s * dy, arc.centre[1] + s * dx + c * dy};
  }
  std::vector<std::array<Real, 3>> points;  // w x, w y, w
  points.reserve(4);
  if (curve.Type() == CV_LINE) {
    const auto& line = *static_cast<const KurvoLine*>(data);
    points = {{line.start[0], line.start[1], 1}, {line.end[0], line.end[1], 1}};
  } else if (curve.Type() == CV_BEZIER) {
    const auto& bezier = *static_cast<const KurvoBezier*>(data);
    for (int i = 0; i <= bezier.degree; ++i) {
      points.push_back({bezier.points[i][0], bezier.points[i][1], 1});
    }
  } else {
    const auto& bezier = *static_cast<const KurvoRBezier*>(data);
    for (int i = 0; i <= bezier.degree; ++i) {
      const Real w = bezier.points[i][3];
      points.push_back({w * bezier.points[i][0], w * bezier.points[i][1], w});
    }
  }
  while (points.size() > 1) {
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
      for (std::size_t k = 0; k < 3; ++k) {
        points[i][k] = (1 - t) * points[i][k] + t * points[i + 1][k];
      }
    }
    points.pop_back();
  }
  return {points[0][0] / points[0][2], points[0][1] / points[0][2]};
}

Real DistanceAt(const OwnedCurve& curve, Real t, Point p) {
  const RealPoint q = At(curve, t);
  return std::hypot(q.x - p.x, q.y - p.y);
}

// The least of the distances at many parameters, each local minimum followed down by halving the
// step around it.
Real LeastDistance(const OwnedCurve& curve, Point p) {
  constexpr int kSamples = 200;
  std::vector<Real> distances;
  for (int i = 0; i <= kSamples; ++i) {
    distances.push_back(DistanceAt(curve, Real(i) / kSamples, p));
  }
  Real least = distances[0];
  for (std::size_t i = 0; i <= kSamples; ++i) {
    Real here = distances[i];
    if (i > 0 && distances[i - 1] < here) continue;
    if (i < kSamples && distances[i + 1] < here) continue;
    Real t = Real(i) / kSamples;
    for (Real step = Real(1) / kSamples; step > 1e-10L; step /= 2) {
      for (const Real side : {t - step, t + step}) {
        if (side < 0 || side > 1) continue;
        const Real there = DistanceAt(curve, side, p);
        if (there < here) {
          here = there;
          t = side;
        }
      }
    }
    least = std::min(least, here);
  }
  return least;
}

// `bound` is a length, for the distance.
void ExpectNearest(Library& library, const std::string& data, const OwnedCurve& curve, Point p,
                   double scale, double bound) {
  const NearestPoint nearest = NearestOn(library, curve, p);
  const Real least = LeastDistance(curve, p);
  const std::string what = data + " from " + std::to_string(p.x) + ", " + std::to_string(p.y) +
                           " at t = " + std::to_string(nearest.parameter);
  EXPECT_NEAR(nearest.distance, static_cast<double>(least), bound) << what;
  EXPECT_NEAR(std::hypot(nearest.point.x - p.x, nearest.point.y - p.y), nearest.distance,
              1e-12 * scale)
      << what;
  EXPECT_GE(nearest.parameter, 0) << what;
  EXPECT_LE(nearest.parameter, 1) << what;
  const RealPoint own = At(curve, nearest.parameter);
  EXPECT_NEAR(static_cast<double>(own.x), nearest.point.x, 1e-12 * scale) << what;
  EXPECT_NEAR(static_cast<double>(own.y), nearest.point.y, 1e-12 * scale) << what;
}

TEST(NearestOn, IsTheNearestOfAllPoints) {
  constexpr unsigned kSeed = 11;
  constexpr int kRounds = 25;
  for (const double scale : {0.01, 1.0, 1000.0}) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> coordinate(-scale, scale);
    const auto point = [&] { return Point{coordinate(random), coordinate(random)}; };
    const auto text = [](Point p) {
      char buffer[80];
      std::snprintf(buffer, sizeof buffer, " %.17g %.17g", p.x, p.y);
      return std::string(buffer);
    };
    Library library;
    for (int round = 0; round < kRounds; ++round) {
      const std::string start = "M" + text(point());
      const std::string radius = std::to_string(3 * scale) + " ";
      for (const std::string& data :
           {start + "L" + text(point()), start + "Q" + text(point()) + text(point()),
            start + "C" + text(point()) + text(point()) + text(point()),
            start + "A" + radius + radius + "0 0 1" + text(point()),
            start + "A" + radius + std::to_string(scale) + " 30 0 1" + text(point())}) {
        const Drawing drawing = ReadPath(library, data);
        for (const OwnedCurve& curve : drawing.shapes[0].outlines[0].curves) {
          ExpectNearest(library, data, curve, point(), scale, 1e-12 * scale);
        }
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
    const Drawing drawing = ReadPath(library, data);
    for (const double x : {-3.0, 0.0, 5.0, 10.0, 1e4}) {
      for (const double y : {-2.0, 0.0, 5.0, 7.5, 100.0}) {
        for (const OwnedCurve& curve : drawing.shapes[0].outlines[0].curves) {
          ExpectNearest(library, data, curve, {x, y}, std::max(10.0, x), kBound);
        }
      }
    }
  }
}

// From (0.2, 2) the parabola y = x^2 has feet at the roots of 2 x^3 - 3 x - 0.2 = 0, the nearest of
// which is the last. The library's distance takes the first.
TEST(NearestOn, IsNotTheFirstFootPoint) {
  Library library;
  const Drawing drawing = ReadPath(library, "M-2 4Q0 -4 2 4");
  const OwnedCurve& curve = drawing.shapes[0].outlines[0].curves[0];
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
