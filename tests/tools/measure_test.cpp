// Direction, curvature, turning and arc length against closed forms.
#include "geometry/measure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "geometry/arc_length.h"
#include "geometry/comb.h"

namespace kurvo::tools {
namespace {

// The parabola y = x^2 over [-1, 1].
OwnedCurve Parabola() { return OwnedCurve::Quadratic({-1, 1}, {0, -1}, {1, 1}); }

// A quarter of the ellipse with half axes 4 and 1.
OwnedCurve EllipseQuarter() {
  return OwnedCurve::RationalQuadratic({4, 0}, {4, 1}, M_SQRT1_2, {0, 1});
}

TEST(Bending, ClosedForms) {
  const struct {
    const char* name;
    OwnedCurve curve;
    double least, least_at, greatest, greatest_at, turning;
  } rows[] = {
      {"line", OwnedCurve::Line({0, 0}, {3, 4}), 0, 0, 0, 0, 0},
      {"arc", OwnedCurve::Arc({0, 0}, 2, true, {2, 0}, {0, -2}), .5, 0, .5, 0, 1.5 * M_PI},
      {"clockwise arc", OwnedCurve::Arc({0, 0}, 2, false, {2, 0}, {0, -2}), -.5, 0, -.5, 0,
       -.5 * M_PI},
      {"y = x^2", Parabola(), 2 / std::pow(5, 1.5), 0, 2, .5, 2 * std::atan(2)},
      {"ellipse", EllipseQuarter(), 1. / 16, 1, 4, 0, .5 * M_PI},
      {"loop: right and up, left, right and down",
       OwnedCurve::Cubic({0, 0}, {30, 30}, {-10, 30}, {20, 0}), NAN, NAN, NAN, NAN, 1.5 * M_PI},
      {"S", OwnedCurve::Cubic({0, 0}, {1, 3}, {2, -3}, {3, 0}), NAN, NAN, NAN, NAN, 0},
      {"first handle of length 0", OwnedCurve::Cubic({0, 0}, {0, 0}, {1, 1}, {2, 0}), NAN, NAN, NAN,
       NAN, -.5 * M_PI},
      {"last handle of length 0", OwnedCurve::Cubic({2, 0}, {1, 1}, {0, 0}, {0, 0}), NAN, NAN, NAN,
       NAN, .5 * M_PI},
  };
  Library library;
  for (const auto& row : rows) {
    const Bending bending = BendingOf(library, row.curve);
    EXPECT_NEAR(bending.turning, row.turning, 1e-9) << row.name;
    ASSERT_TRUE(bending.least && bending.greatest) << row.name;
    if (std::isnan(row.least)) continue;
    EXPECT_NEAR(bending.least->curvature, row.least, 1e-9) << row.name;
    EXPECT_NEAR(bending.greatest->curvature, row.greatest, 1e-9) << row.name;
    EXPECT_NEAR(bending.least->parameter, row.least_at, 1e-6) << row.name;
    EXPECT_NEAR(bending.greatest->parameter, row.greatest_at, 1e-6) << row.name;
  }
}

TEST(Bending, OfAPointIsNothing) {
  Library library;
  const Bending bending = BendingOf(library, OwnedCurve::Cubic({1, 2}, {1, 2}, {1, 2}, {1, 2}));
  EXPECT_FALSE(bending.least || bending.greatest || bending.start_direction);
  EXPECT_EQ(bending.turning, 0);
  library.Check();  // nothing is pending
}

// Of the parabola from the vertex to x: (2 x sqrt(1 + 4 x^2) + asinh(2 x)) / 4.
TEST(ArcLength, BothWaysAlongAParabola) {
  Library library;
  const OwnedCurve curve = Parabola();
  const ArcLength length(library, curve);
  const auto to = [](double x) {
    return (2 * x * std::sqrt(1 + 4 * x * x) + std::asinh(2 * x)) / 4;
  };
  EXPECT_NEAR(length.Total(), 2 * to(1), 1e-4);
  for (const double x : {-.9, -.3, 0., .25, .8})
    EXPECT_NEAR(length.ParameterAt(to(1) + to(x)), (x + 1) / 2, 1e-4) << x;
  EXPECT_EQ(length.ParameterAt(-1), 0);
  EXPECT_EQ(length.ParameterAt(9), 1);
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
    const double size = std::hypot(tooth.x, tooth.y);
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

}  // namespace
}  // namespace kurvo::tools
